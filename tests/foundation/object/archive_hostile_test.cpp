// Archives that somebody else wrote, or tore.

#include <fstream>

#include "foundation/shapes/polygon.h"
#include "foundation/shapes/xform2.h"
#include "tests/foundation/object/nodes.h"
#include "tests/foundation/support.h"

namespace {

using support::header;
using support::loadFrom;
using support::Node;
using support::Note;
using support::Pipe;
using support::stored;
using support::unhex;

using NodeHandle = gmPtrHandle<Node>;

/// Each test starts and must end without living objects: a refused load leaves nothing behind.
class ArchiveHostile : public testing::Test {
  protected:
    ArchiveHostile() { Node::alive = Note::alive = 0; }
    ~ArchiveHostile() override {
        EXPECT_EQ(Node::alive, 0);
        EXPECT_EQ(Note::alive, 0);
    }
};

/// An archive with a bit of everything.
struct Everything {
    bool flag = true;
    long number = -3;
    unsigned long count = 4;
    double real = 2.5;
    std::string text = "some text";
    gmPolygon polygon{{{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}, gmPolygon::eNonZero};
    NodeHandle tree;
    NodeHandle again;
    gmPtrHandle<gm2XformBase> xform;
    gmPersistent* note = nullptr;

    void archive(gmArchive& archive, gmPersistent* storedNote) {
        archive || flag || number || count || real || text || polygon || tree || again || xform;
        gmPersistent::serializePointer(archive, storedNote, note);
    }
};

std::string everything() {
    Everything all;
    all.tree = support::chain(3);
    all.tree->children.push_back(nullptr);
    all.tree->children.push_back(all.tree->children.front());
    all.again = all.tree->children.front();
    all.xform = gmPtrHandle<gm2XformBase>(new gm2Rigid(gmDegree(30.0), {1.0, 2.0}));
    Note note("a note");
    return stored([&](gmArchive& archive) { all.archive(archive, &note); });
}

TEST_F(ArchiveHostile, EveryTruncationIsRefused) {
    const std::string bytes = everything();
    loadFrom(bytes, [](gmArchive& archive) { Everything().archive(archive, nullptr); });
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const auto load = [](gmArchive& archive) { Everything().archive(archive, nullptr); };
        ASSERT_THROW(loadFrom(bytes.substr(0, size), load), gmArchive::Truncated) << size;
        Pipe pipe(bytes.substr(0, size));
        std::istream in(&pipe);
        ASSERT_THROW(
            {
                gmArchive archive(in);
                load(archive);
            },
            gmArchive::Truncated)
            << size << " bytes of a pipe";
        ASSERT_EQ(Node::alive, 0) << size;
        ASSERT_EQ(Note::alive, 0) << size;
    }
}

TEST_F(ArchiveHostile, EveryChangedByteIsLoadedOrRefused) {
    const std::string bytes = everything();
    int refused = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        for (const int flip : {0x01, 0x02, 0x80, 0xff}) {
            std::string changed = bytes;
            changed[i] = static_cast<char>(changed[i] ^ flip);
            try {
                loadFrom(changed, [](gmArchive& archive) { Everything().archive(archive, nullptr); });
            } catch (const gmArchive::Errors&) {
                ++refused;
            }
            ASSERT_EQ(Node::alive, 0) << i;
        }
    EXPECT_GT(refused, 200);
}

TEST_F(ArchiveHostile, RandomBytesAreLoadedOrRefused) {
    support::Random random(77);
    for (int i = 0; i < 20000; ++i) {
        std::string bytes = header;
        for (int size = random.integer(0, 60); size > 0; --size)
            bytes += static_cast<char>(random.integer(0, 3) == 0 ? random.integer(0, 255) : random.integer(0, 2));
        try {
            loadFrom(bytes, [](gmArchive& archive) { Everything().archive(archive, nullptr); });
        } catch (const gmArchive::Errors&) {
        }
        ASSERT_EQ(Node::alive, 0);
    }
}

template <class Error>
void expectRefused(const std::string& digits, NodeHandle handle = NodeHandle()) {
    EXPECT_THROW(loadFrom(header + unhex(digits), [&](gmArchive& archive) { archive || handle; }), Error) << digits;
    EXPECT_TRUE(handle.isNull());
}

const std::string nodeName = "0d 00 00 00 73 75 70 70 6f 72 74 3a 3a 4e 6f 64 65 ";  // support::Node

TEST_F(ArchiveHostile, AReferenceToWhatWasNotReadIsRefused) {
    expectRefused<gmArchive::Malformed>("02 00 00 00");
    expectRefused<gmArchive::Malformed>("ff ff ff ff");
    // A node whose child is number 3, where 2 comes next.
    expectRefused<gmArchive::Malformed>("01 00 00 00 " + nodeName + "00 05 00 00 00 01 00 00 00 03 00 00 00");
}

TEST_F(ArchiveHostile, AnObjectThatContainsItselfIsRefused) {
    expectRefused<gmArchive::Malformed>("01 00 00 00 " + nodeName + "00 05 00 00 00 01 00 00 00 01 00 00 00");
    expectRefused<gmArchive::Malformed>("01 00 00 00 " + nodeName + "00 05 00 00 00 01 00 00 00 02 00 00 00 " +
                                        nodeName + "00 06 00 00 00 01 00 00 00 01 00 00 00");
}

TEST_F(ArchiveHostile, AnUnknownClassIsRefusedByName) {
    NodeHandle handle;
    try {
        loadFrom(header + unhex("01 00 00 00 04 00 00 00 45 76 69 6c"), [&](gmArchive& archive) { archive || handle; });
        FAIL();
    } catch (const gmArchive::UnknownClass& error) {
        EXPECT_NE(error.message().find("Evil"), std::string::npos) << error.message();
    }
    expectRefused<gmArchive::UnknownClass>("01 00 00 00 00 00 00 00");
}

TEST_F(ArchiveHostile, AnUnknownVersionIsRefused) {
    expectRefused<gmArchive::UnknownVersion>("01 00 00 00 " + nodeName + "01");
    gmPolygon polygon;
    EXPECT_THROW(loadFrom(header + '\x01', [&](gmArchive& archive) { archive || polygon; }), gmArchive::UnknownVersion);
    for (const char* name :
         {"0e 00 00 00 67 6d 32 58 66 6f 72 6d 4c 69 6e 65 61 72", "08 00 00 00 67 6d 32 52 69 67 69 64"}) {
        gmPtrHandle<gm2XformBase> xform;
        EXPECT_THROW(loadFrom(header + unhex("01 00 00 00 " + std::string(name) + " 01") + std::string(64, '\0'),
                              [&](gmArchive& archive) { archive || xform; }),
                     gmArchive::UnknownVersion);
    }
}

TEST_F(ArchiveHostile, ARefusedLoadEndsTheArchive) {
    const std::string bytes = header + unhex("09 00 00 00") + std::string(100, '\0');
    loadFrom(bytes, [](gmArchive& archive) {
        NodeHandle handle;
        EXPECT_THROW(archive || handle, gmArchive::Malformed);
        EXPECT_THROW(archive || handle, gmArchive::Errors);
        unsigned char byte = 9;
        EXPECT_THROW(archive || byte, gmArchive::Errors);
        EXPECT_EQ(byte, 9);
    });
}

TEST_F(ArchiveHostile, ALyingCountTakesNoMemory) {
    const std::string bytes = header + unhex("ff ff ff ff") + std::string(64, '\x01');
    std::vector<gmVector<2>> list;
    EXPECT_THROW(loadFrom(bytes, [&](gmArchive& archive) { archiveVector(archive, list, 16); }), gmArchive::Truncated);
    EXPECT_EQ(list.capacity(), 0U);
    std::string text = "before";
    EXPECT_THROW(loadFrom(bytes, [&](gmArchive& archive) { archive || text; }), gmArchive::Truncated);
    EXPECT_EQ(text, "before");
    expectRefused<gmArchive::Truncated>("01 00 00 00 " + nodeName + "00 05 00 00 00 ff ff ff ff 00 00 00 00");
    expectRefused<gmArchive::Truncated>("01 00 00 00 ff ff ff ff 73");
}

TEST_F(ArchiveHostile, ALyingCountInAPipeTakesLittleMemory) {
    const std::string bytes = header + unhex("ff ff ff ff") + std::string(64, '\x01');
    {
        Pipe pipe(bytes);
        std::istream in(&pipe);
        gmArchive archive(in);
        std::vector<gmVector<2>> list;
        EXPECT_THROW(archiveVector(archive, list, 16), gmArchive::Truncated);
        EXPECT_LE(list.capacity(), 10000U);
        EXPECT_EQ(list[3], list[0]) << "what came before the end was read";
    }
    Pipe pipe(bytes);
    std::istream in(&pipe);
    gmArchive archive(in);
    std::string text;
    EXPECT_THROW(archive || text, gmArchive::Truncated);
    EXPECT_EQ(text, "");
}

TEST_F(ArchiveHostile, ALongListComesThroughAPipe) {
    std::vector<gmVector<2>> list;
    for (int i = 0; i < 10001; ++i)
        list.emplace_back(i, -i);
    std::string text(20000, 'x');
    Pipe pipe(stored([&](gmArchive& archive) {
        archive || text;
        archiveVector(archive, list, 16);
    }));
    std::istream in(&pipe);
    gmArchive archive(in);
    std::vector<gmVector<2>> loaded;
    std::string loadedText;
    archive || loadedText;
    archiveVector(archive, loaded, 16);
    EXPECT_EQ(loaded, list);
    EXPECT_EQ(loadedText, text);
}

TEST_F(ArchiveHostile, RoomIsMadeForWhatCanFollowOnly) {
    loadFrom(header + std::string(64, '\0'), [](gmArchive& archive) {
        EXPECT_EQ(archive.roomFor(4, 16), 4U);
        EXPECT_THROW(archive.roomFor(5, 16), gmArchive::Truncated);
        EXPECT_THROW(archive.roomFor(0xffffffff, 0), gmArchive::Truncated) << "nothing is free";
        double number = 0.0;
        archive || number;
        EXPECT_EQ(archive.roomFor(7, 8), 7U);
        EXPECT_THROW(archive.roomFor(8, 8), gmArchive::Truncated);
        EXPECT_EQ(archive.roomFor(0, 8), 0U);
    });
}

TEST_F(ArchiveHostile, AFillModeThatDoesNotExistIsRefused) {
    gmPolygon polygon({{1.0, 1.0}}, gmPolygon::eNonZero);
    EXPECT_THROW(loadFrom(header + unhex("00 02 00 00 00 00"), [&](gmArchive& archive) { archive || polygon; }),
                 gmArchive::Malformed);
    EXPECT_EQ(polygon.fillMode(), gmPolygon::eNonZero);
}

TEST(ArchiveFullDisk, IsAnErrorAndNeverAShortArchive) {
    std::string content = everything();
    for (std::size_t room = 0; room < 60; ++room) {
        support::FullDisk disk(room);
        std::ostream out(&disk);
        ASSERT_THROW(
            {
                gmArchive archive(out);
                archive || content;
            },
            gmArchive::Errors)
            << room;
    }
}

TEST(ArchiveFullDisk, IsNoticedBehindTheBufferOfAFile) {
    std::ofstream out("/dev/full", std::ios::binary);
    if (!out)
        GTEST_SKIP() << "no device that is always full";
    gmPolygon polygon;
    EXPECT_THROW(
        {
            gmArchive archive(out);
            archive || polygon;
        },
        gmArchive::Errors);
}

TEST(ArchiveFullDisk, IsNoticedThoughTheStreamFailedBefore) {
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    EXPECT_THROW(gmArchive{out}, gmArchive::Errors);
    std::ofstream nowhere("/nonexistent/archive", std::ios::binary);
    EXPECT_THROW(gmArchive{nowhere}, gmArchive::Errors);
}

TEST(ArchiveFullDisk, ForgetsThePassThatDidNotFit) {
    support::FullDisk disk(header.size());
    std::ostream out(&disk);
    gmArchive archive(out);
    NodeHandle handle(new Node(1));
    EXPECT_THROW(archive || handle, gmArchive::Errors);
    EXPECT_EQ(handle->referenceCount(), 1);
}

TEST(ArchiveFullDisk, TakesNothingAfterAPassThatFittedInPart) {
    support::FullDisk disk(header.size() + 3);
    std::ostream out(&disk);
    gmArchive archive(out);
    NodeHandle handle(new Node(1));
    EXPECT_THROW(archive || handle, gmArchive::Errors);
    disk.enlarge(1000);
    out.clear();
    EXPECT_THROW(archive || handle, gmArchive::Errors);
    long number = 1;
    EXPECT_THROW(archive || number, gmArchive::Errors);
    EXPECT_EQ(disk.taken(), header.size() + 3);
}

}  // namespace
