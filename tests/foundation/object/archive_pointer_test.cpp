#include "foundation/shapes/xform2.h"
#include "tests/foundation/object/nodes.h"
#include "tests/foundation/support.h"

namespace {

using support::chain;
using support::contentOf;
using support::header;
using support::hex;
using support::loadFrom;
using support::Node;
using support::Note;
using support::stored;
using support::unhex;

using NodeHandle = gmPtrHandle<Node>;

/// Each test starts and must end without living objects, those of the archives included.
class ArchivePointer : public testing::Test {
  protected:
    ArchivePointer() {
        Node::alive = 0;
        Note::alive = 0;
    }
    ~ArchivePointer() override {
        EXPECT_EQ(Node::alive, 0);
        EXPECT_EQ(Note::alive, 0);
    }
};

TEST_F(ArchivePointer, NullIsANumber) {
    NodeHandle none;
    EXPECT_EQ(hex(contentOf(none)), "00 00 00 00");
    NodeHandle handle(new Node);
    loadFrom(header + unhex("00 00 00 00"), [&](gmArchive& archive) { archive || handle; });
    EXPECT_TRUE(handle.isNull());
}

TEST_F(ArchivePointer, FirstOccurrenceNamesTheClassAndHoldsTheContent) {
    gmPtrHandle<gm2XformBase> xform(
        new gm2XformLinear(gmXform<2>(gmMatrix<2>(1.0, 2.0, 3.0, 4.0), gmVector<2>(5.0, 6.0))));
    EXPECT_EQ(hex(contentOf(xform)),
              "01 00 00 00 "
              "0e 00 00 00 67 6d 32 58 66 6f 72 6d 4c 69 6e 65 61 72 00 "
              "00 00 00 00 00 00 14 40 00 00 00 00 00 00 18 40 "
              "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 "
              "00 00 00 00 00 00 08 40 00 00 00 00 00 00 10 40");
}

TEST_F(ArchivePointer, LaterOccurrencesAreReferences) {
    NodeHandle a(new Node(1));
    NodeHandle b(new Node(2));
    const std::string bytes = stored([&](gmArchive& archive) { archive || a || b || a || b; });
    EXPECT_EQ(hex(bytes.substr(bytes.size() - 8)), "01 00 00 00 02 00 00 00");
    NodeHandle loaded[4];
    loadFrom(bytes, [&](gmArchive& archive) { archive || loaded[0] || loaded[1] || loaded[2] || loaded[3]; });
    EXPECT_EQ(loaded[0]->number, 1);
    EXPECT_EQ(loaded[1]->number, 2);
    EXPECT_TRUE(loaded[0] == loaded[2]);
    EXPECT_TRUE(loaded[1] == loaded[3]);
    EXPECT_EQ(loaded[0]->referenceCount(), 2) << "the archive has let go";
}

TEST_F(ArchivePointer, SharedChildrenStayShared) {
    NodeHandle top(new Node(0));
    const NodeHandle shared(new Node(7));
    for (int i = 0; i < 3; ++i) {
        const NodeHandle child(new Node(i));
        child->children = {shared, nullptr, shared};
        top->children.push_back(child);
    }
    NodeHandle loaded;
    support::transfer(top, loaded);
    ASSERT_EQ(loaded->children.size(), 3U);
    const NodeHandle again = loaded->children[0]->children[0];
    EXPECT_EQ(again->number, 7);
    EXPECT_EQ(again->referenceCount(), 7);
    EXPECT_TRUE(loaded->children[2]->children[2] == again);
    EXPECT_TRUE(loaded->children[1]->children[1].isNull());
    EXPECT_EQ(Node::alive, 10);
}

TEST_F(ArchivePointer, ObjectsAreInitialisedOnceLoaded) {
    NodeHandle handle(new Node(3));
    NodeHandle loaded;
    support::transfer(handle, loaded);
    EXPECT_TRUE(loaded->initialised);
    EXPECT_FALSE(handle->initialised);
}

TEST_F(ArchivePointer, AConstHandleIsStoredAndLoadedAlike) {
    gmPtrHandle_const<Node> handle(new Node(3));
    NodeHandle plain(new Node(3));
    EXPECT_EQ(contentOf(handle), contentOf(plain));
    gmPtrHandle_const<Node> loaded(new Node(8));
    support::transfer(handle, loaded);
    EXPECT_EQ(loaded->number, 3);
    EXPECT_EQ(loaded->referenceCount(), 1);
}

TEST_F(ArchivePointer, LoadingLetsGoOfTheOldObjectFirst) {
    NodeHandle handle(new Node(1));
    gmPtrHandle_const<Node> constant(new Node(2));
    EXPECT_THROW(loadFrom(header, [&](gmArchive& archive) { archive || handle; }), gmArchive::Truncated);
    EXPECT_THROW(loadFrom(header, [&](gmArchive& archive) { archive || constant; }), gmArchive::Truncated);
    EXPECT_TRUE(handle.isNull());
    EXPECT_TRUE(constant.isNull());
    EXPECT_EQ(Node::alive, 0);
}

TEST_F(ArchivePointer, AnObjectOfAnotherClassLeavesTheHandleEmpty) {
    NodeHandle node(new Node(4));
    gmPtrHandle<gm2XformBase> xform(new gm2Rigid(gmDegree(0.0), gmVector<2>()));
    loadFrom(contentOf(node).insert(0, header), [&](gmArchive& archive) { archive || xform; });
    EXPECT_TRUE(xform.isNull());
    EXPECT_EQ(Node::alive, 1) << "what was loaded went with the archive";
}

TEST_F(ArchivePointer, AnObjectThatNobodyCountsGoesWithTheArchive) {
    Note note("words");
    gmPersistent* ignored = nullptr;
    const std::string bytes = stored([&](gmArchive& archive) {
        gmPersistent::serializePointer(archive, &note, ignored);
        gmPersistent::serializePointer(archive, nullptr, ignored);
    });
    EXPECT_EQ(ignored, nullptr);
    {
        NodeHandle handle;
        loadFrom(bytes, [&](gmArchive& archive) { archive || handle; });
        EXPECT_TRUE(handle.isNull()) << "no handle takes it";
        EXPECT_EQ(Note::alive, 1);
    }
    loadFrom(bytes, [&](gmArchive& archive) {
        gmPersistent* loaded = nullptr;
        gmPersistent::serializePointer(archive, &note, loaded);
        ASSERT_NE(dynamic_cast<Note*>(loaded), nullptr);
        EXPECT_EQ(dynamic_cast<Note*>(loaded)->text, "words");
        EXPECT_NE(loaded, &note);
        gmPersistent::serializePointer(archive, nullptr, loaded);
        EXPECT_EQ(loaded, nullptr);
    });
    EXPECT_EQ(Note::alive, 1);
}

TEST_F(ArchivePointer, AnObjectStaysKnownFromPassToPass) {
    std::ostringstream out;
    gmArchive archive(out);
    NodeHandle handle(new Node(1));
    archive || handle;
    const std::size_t size = out.str().size();
    archive || handle;
    EXPECT_EQ(hex(out.str().substr(size)), "01 00 00 00");
}

TEST_F(ArchivePointer, AStoredObjectLivesAsLongAsItsNumberMeansIt) {
    // An object that took the address of one that is gone would be mistaken for it.
    const std::string bytes = stored([](gmArchive& archive) {
        for (long i = 0; i < 50; ++i) {
            NodeHandle handle(new Node(i));
            archive || handle;
        }
        EXPECT_EQ(Node::alive, 50);
    });
    EXPECT_EQ(Node::alive, 0);
    loadFrom(bytes, [](gmArchive& archive) {
        for (long i = 0; i < 50; ++i) {
            NodeHandle handle;
            archive || handle;
            ASSERT_EQ(handle->number, i);
        }
    });
}

TEST_F(ArchivePointer, AnObjectOnTheStackIsForgottenAfterItsPass) {
    gmPersistent* ignored = nullptr;
    const std::string bytes = stored([&](gmArchive& archive) {
        for (const char* words : {"first", "second"}) {
            Note note(words);
            gmPersistent::serializePointer(archive, &note, ignored);
        }
        Node node(9);
        gmPersistent::serializePointer(archive, &node, ignored);
        EXPECT_EQ(node.referenceCount(), 0) << "counting it would destroy it";
    });
    loadFrom(bytes, [](gmArchive& archive) {
        gmPersistent* loaded[3] = {};
        for (auto& object : loaded)
            gmPersistent::serializePointer(archive, nullptr, object);
        EXPECT_EQ(dynamic_cast<Note&>(*loaded[0]).text, "first");
        EXPECT_EQ(dynamic_cast<Note&>(*loaded[1]).text, "second");
        EXPECT_EQ(dynamic_cast<Node&>(*loaded[2]).number, 9);
    });
}

TEST_F(ArchivePointer, ToAClassThatIsNotRegisteredIsNotStored) {
    class Unknown : public virtual gmPersistent, public virtual gmRepBase {};
    gmPtrHandle<Unknown> handle(new Unknown);
    std::ostringstream out;
    gmArchive archive(out);
    EXPECT_THROW(archive || handle, gmArchive::UnknownClass);
    EXPECT_EQ(out.str(), header);
    EXPECT_EQ(handle->referenceCount(), 1);
}

TEST_F(ArchivePointer, ToItselfIsNotStored) {
    NodeHandle handle(new Node(1));
    handle->children.push_back(handle);
    std::ostringstream out;
    {
        gmArchive archive(out);
        EXPECT_THROW(archive || handle, gmArchive::Malformed);
        EXPECT_THROW(archive || *handle, gmArchive::Malformed) << "met as a part first";
        handle->children.clear();
        archive || handle;
    }
    EXPECT_EQ(out.str(), stored([&](gmArchive& archive) { archive || handle; })) << "the refusals left no trace";
}

TEST_F(ArchivePointer, ToAnAncestorIsNotStored) {
    NodeHandle top = chain(5);
    Node& lowest = *top->children[0]->children[0]->children[0]->children[0];
    lowest.children.push_back(top->children[0]);
    std::ostringstream out;
    gmArchive archive(out);
    EXPECT_THROW(archive || top, gmArchive::Malformed);
    EXPECT_EQ(out.str(), header);
    lowest.children.clear();
}

TEST_F(ArchivePointer, NestsAsDeepAsTheArchiveAllows) {
    NodeHandle deepest = chain(256);
    const std::string bytes = stored([&](gmArchive& archive) {
        EXPECT_EQ(archive.maxDepth(), 256U);
        archive || deepest;
    });
    NodeHandle loaded;
    loadFrom(bytes, [&](gmArchive& archive) { archive || loaded; });
    EXPECT_EQ(loaded->number, 1);
    EXPECT_EQ(Node::alive, 512);
}

TEST_F(ArchivePointer, NestedTooDeeplyIsNotStored) {
    NodeHandle tooDeep = chain(257);
    std::ostringstream out;
    gmArchive archive(out);
    EXPECT_THROW(archive || tooDeep, gmArchive::OutOfRange);
    EXPECT_EQ(out.str(), header) << "before the first byte";
    archive.maxDepth(257);
    archive || tooDeep;
    EXPECT_GT(out.str().size(), 257 * 10U);
    NodeHandle shallow(new Node);
    archive || shallow;
    EXPECT_EQ(shallow->referenceCount(), 2) << "a refusal leaves the depth as it was";
}

TEST_F(ArchivePointer, NestedTooDeeplyIsNotLoaded) {
    NodeHandle tooDeep = chain(300);
    const std::string bytes = stored([&](gmArchive& archive) {
        archive.maxDepth(300);
        archive || tooDeep;
    });
    NodeHandle loaded;
    EXPECT_THROW(loadFrom(bytes, [&](gmArchive& archive) { archive || loaded; }), gmArchive::OutOfRange);
    EXPECT_TRUE(loaded.isNull());
    EXPECT_EQ(Node::alive, 300);
    loadFrom(bytes, [&](gmArchive& archive) {
        archive.maxDepth(300);
        archive || loaded;
    });
    EXPECT_EQ(loaded->number, 1);
}

}  // namespace
