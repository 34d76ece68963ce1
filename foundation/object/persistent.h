#pragma once

#include <cstdint>

#include "foundation/export.h"
#include "foundation/object/archive.h"
#include "foundation/object/handle.h"

/// Virtual base of every class that archives hold and whose changes can be watched.
///
/// Archiving: a class overrides dispatchSerialize, which passes a version byte and the class's content through
/// the archive, both ways. Watching: an object that is asked to report its changes says so to the one observer
/// of the process each time it changes. Both settings belong to the object and not to its value: a copy
/// starts with reporting off, assignment leaves the target's setting.
class MOKSTD_API gmPersistent {
  public:
    gmPersistent() = default;
    gmPersistent(const gmPersistent&) noexcept {}
    gmPersistent& operator=(const gmPersistent&) noexcept { return *this; }
    virtual ~gmPersistent();

    /// Whether changes of this object are reported.
    void reportChanges(bool report) { reports_ = report; }
    bool reportsChanges() const { return reports_; }

    /// The function told of each change of a reporting object, before it happens unless the operation says otherwise;
    /// null, the default, for none.
    /// One for the process; it may be set from any thread, and is called on the thread that changes the object.
    static void changeObserver(void (*observer)(const gmPersistent&));

    /// Stores `stored` (each distinct object once, later as a reference; null allowed) or loads an object into
    /// `loaded`, made through the registry. A loaded object belongs to the archive until a handle takes it.
    /// Throws: gmArchive::Errors and the classes below it.
    static void serializePointer(gmArchive& archive, gmPersistent* stored, gmPersistent*& loaded);

    /// Marks of the current pass on this thread: which objects, by address and size, have gone through the
    /// archive. Outside a pass nothing is remembered.
    static bool haveVisited(void* object, std::uint64_t size);
    static void setVisited(void* object, std::uint64_t size);

  protected:
    /// Passes the object through the archive. The base version archives the part of gmPersistent itself: a
    /// version byte 0 and nothing else.
    virtual void dispatchSerialize(gmArchive& archive);
    /// Called on an object that the archive made, once its content is loaded. Does nothing here.
    virtual void reInit();
    /// Loads the bare content of a class that has a form without a version, and answers whether it has one.
    virtual bool loadSimple(gmArchive& archive);

    /// Every mutator calls this; one that changes in steps may call it more than once.
    void reportChange() const {
        if (reports_)
            mutating_();
    }

    /// What every dispatchSerialize is: nothing when the object was visited in this pass; otherwise the version
    /// byte, `content(version)`, and the mark. The mark comes last, because a class and its base may share
    /// address and size.
    template <class Content>
    static void archiveOnce(gmArchive& archive, void* object, std::uint64_t size, unsigned char version,
                            Content content) {
        if (haveVisited(object, size))
            return;
        archive || version;
        content(version);
        setVisited(object, size);
    }

  private:
    friend class gmArchive;
    friend MOKSTD_API gmArchive& operator||(gmArchive&, gmPersistent&);
    void mutating_() const;

    bool reports_ = false;
};

/// The shared object that the handle holds: each object once in an archive, later occurrences as references.
/// Loading lets go of the handle's object first; an object of another class than T leaves the handle empty.
template <class T>
gmArchive& operator||(gmArchive& archive, gmPtrHandle<T>& handle) {
    gmPersistent* loaded = nullptr;
    if (archive.isStoring()) {
        gmPersistent::serializePointer(archive, handle.get(), loaded);
        return archive;
    }
    handle = nullptr;
    gmPersistent::serializePointer(archive, nullptr, loaded);
    handle = gmPtrHandle<T>(dynamic_cast<T*>(loaded));
    return archive;
}

template <class T>
gmArchive& operator||(gmArchive& archive, gmPtrHandle_const<T>& handle) {
    // Storing reads the object only; the one operation for both ways asks for a pointer that could change it.
    gmPtrHandle<T> object(const_cast<T*>(handle.get()));
    if (!archive.isStoring())
        handle = nullptr;
    archive || object;
    handle = object;
    return archive;
}
