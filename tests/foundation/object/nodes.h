// Persistent classes for tests of archives: a tree of shared nodes, and a note that nobody counts.
#pragma once

#include <vector>

#include "foundation/object/exception.h"
#include "foundation/object/instantiator.h"
#include "foundation/object/persistent.h"
#include "foundation/object/repbase.h"

namespace support {

/// A number and shared children. In an archive: version 0, the number, the children.
class Node : public virtual gmPersistent, public virtual gmRepBase {
  public:
    explicit Node(long value = 0) : number(value) { ++alive; }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node() override { --alive; }

    static gmPersistent* make() { return new Node; }

    long number;
    std::vector<gmPtrHandle<Node>> children;
    bool initialised = false;

    static inline int alive = 0;

  protected:
    void dispatchSerialize(gmArchive& archive) override {
        archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char version) {
            if (version != 0)
                throw gmArchive::UnknownVersion("Node", 0);
            archive || number;
            archiveVector(archive, children, 4);
        });
    }
    void reInit() override { initialised = true; }
};

/// A text; not for handles. In an archive: version 0 and the text.
class Note : public virtual gmPersistent {
  public:
    explicit Note(std::string words = "") : text(std::move(words)) { ++alive; }
    Note(const Note&) = delete;
    Note& operator=(const Note&) = delete;
    ~Note() override { --alive; }

    static gmPersistent* make() { return new Note; }

    std::string text;

    static inline int alive = 0;

  protected:
    void dispatchSerialize(gmArchive& archive) override {
        archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char) { archive || text; });
    }
};

/// Archives whatever it is told to; its own part is empty.
template <class Work>
class Script : public virtual gmPersistent {
  public:
    explicit Script(Work work) : work_(std::move(work)) {}

  protected:
    void dispatchSerialize(gmArchive& archive) override { work_(archive); }

  private:
    Work work_;
};

/// One pass in which `work(archive)` runs.
template <class Work>
void inOnePass(gmArchive& archive, Work work) {
    Script<Work> script(std::move(work));
    archive || script;
}

/// A chain of `length` nodes, each the child of the one before.
inline gmPtrHandle<Node> chain(int length) {
    gmPtrHandle<Node> first;
    for (int i = 0; i < length; ++i) {
        gmPtrHandle<Node> node(new Node(length - i));
        if (!first.isNull())
            node->children.push_back(first);
        first = node;
    }
    return first;
}

inline gm_Instantiator nodeExemplar(typeid(Node), Node::make);
inline gm_Instantiator noteExemplar(typeid(Note), Note::make);

}  // namespace support
