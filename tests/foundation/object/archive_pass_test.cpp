#include <thread>

#include "foundation/shapes/circle.h"
#include "foundation/shapes/xform2.h"
#include "tests/foundation/object/nodes.h"
#include "tests/foundation/support.h"

namespace {

using support::contentOf;
using support::header;
using support::hex;
using support::inOnePass;
using support::Node;
using support::Note;
using support::stored;

const std::string circleBytes = "00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 08 40";

TEST(ArchivePass, HoldsAnObjectOnce) {
    gmCircle circle({1.0, 2.0}, 3.0);
    const std::string once = stored([&](gmArchive& archive) {
        inOnePass(archive, [&](gmArchive& inner) { inner || circle || circle || circle; });
    });
    EXPECT_EQ(hex(once.substr(header.size())), circleBytes);
}

TEST(ArchivePass, LoadsAnObjectOnce) {
    gmCircle circle;
    unsigned char next = 0;
    support::loadFrom(header + support::unhex(circleBytes) + '\x2a', [&](gmArchive& archive) {
        inOnePass(archive, [&](gmArchive& inner) { inner || circle || circle || next; });
    });
    EXPECT_EQ(circle, gmCircle({1.0, 2.0}, 3.0));
    EXPECT_EQ(next, 42);
}

TEST(ArchivePass, EndsWithTheOutermostObject) {
    gmCircle circle({1.0, 2.0}, 3.0);
    const std::string twice = stored([&](gmArchive& archive) { archive || circle || circle; });
    EXPECT_EQ(hex(twice.substr(header.size())), circleBytes + ' ' + circleBytes);
}

TEST(ArchivePass, TellsPartsThatShareAnAddressBySize) {
    int object = 0;
    static_cast<void>(stored([&](gmArchive& archive) {
        inOnePass(archive, [&](gmArchive&) {
            EXPECT_FALSE(gmPersistent::haveVisited(&object, 8));
            gmPersistent::setVisited(&object, 8);
            EXPECT_TRUE(gmPersistent::haveVisited(&object, 8));
            EXPECT_FALSE(gmPersistent::haveVisited(&object, 16));
        });
        EXPECT_FALSE(gmPersistent::haveVisited(&object, 8));
    }));
}

TEST(ArchivePass, ReachesTheStreamOnlyWhenItHasSucceeded) {
    std::ostringstream out;
    gmArchive archive(out);
    gmCircle circle;
    inOnePass(archive, [&](gmArchive& inner) {
        inner || circle;
        EXPECT_EQ(out.str(), header);
    });
    EXPECT_EQ(out.str().size(), header.size() + 25);
}

TEST(ArchivePass, ThatFailsWritesNotAByte) {
    std::ostringstream out;
    gmArchive archive(out);
    gmCircle circle;
    long tooLarge = 1L << 40;
    EXPECT_THROW(inOnePass(archive, [&](gmArchive& inner) { inner || circle || tooLarge; }), gmArchive::OutOfRange);
    EXPECT_EQ(out.str(), header);
    archive || circle;
    EXPECT_EQ(out.str().size(), header.size() + 25) << "the archive goes on";
}

TEST(ArchivePass, ThatFailsDropsItsMarks) {
    std::ostringstream out;
    gmArchive archive(out);
    int object = 0;
    EXPECT_THROW(inOnePass(archive,
                           [&](gmArchive&) {
                               gmPersistent::setVisited(&object, sizeof object);
                               throw std::runtime_error("no more");
                           }),
                 std::runtime_error);
    EXPECT_FALSE(gmPersistent::haveVisited(&object, sizeof object));
    inOnePass(archive, [&](gmArchive&) { EXPECT_FALSE(gmPersistent::haveVisited(&object, sizeof object)); });
}

TEST(ArchivePass, ThatFailsForgetsTheObjectsItNumbered) {
    const gmPtrHandle<Node> shared(new Node(5));
    gmPtrHandle<Node> handle = shared;
    long tooLarge = 1L << 40;
    const std::string bytes = stored([&](gmArchive& archive) {
        EXPECT_THROW(inOnePass(archive, [&](gmArchive& inner) { inner || handle || tooLarge; }), gmArchive::OutOfRange);
        EXPECT_EQ(shared->referenceCount(), 2) << "the archive lets go";
        archive || handle;
    });
    EXPECT_EQ(bytes, stored([&](gmArchive& archive) { archive || handle; }));
}

TEST(ArchivePass, OfTwoInterleavedArchivesKeepsApart) {
    std::ostringstream firstOut;
    std::ostringstream secondOut;
    gmArchive first(firstOut);
    gmArchive second(secondOut);
    gmCircle circle({1.0, 2.0}, 3.0);
    inOnePass(first, [&](gmArchive& inner) {
        inner || circle;
        second || circle;
        inOnePass(second, [&](gmArchive& other) { other || circle || circle; });
        inner || circle;
    });
    EXPECT_EQ(hex(firstOut.str().substr(header.size())), circleBytes);
    EXPECT_EQ(hex(secondOut.str().substr(header.size())), circleBytes + ' ' + circleBytes);
}

TEST(ArchivePass, ReturnsToItsOwnMarksFromWithinAnother) {
    std::ostringstream firstOut;
    std::ostringstream secondOut;
    gmArchive first(firstOut);
    gmArchive second(secondOut);
    gmCircle circle;
    inOnePass(first, [&](gmArchive& one) {
        one || circle;
        inOnePass(second, [&](gmArchive& other) {
            one || circle;  // visited in the first
            other || circle;
        });
    });
    EXPECT_EQ(firstOut.str().size(), header.size() + 25);
    EXPECT_EQ(secondOut.str().size(), header.size() + 25);
}

TEST(ArchivePass, OfAnInnerArchiveThatFailsLeavesTheOuterOneItsMarks) {
    std::ostringstream firstOut;
    gmArchive first(firstOut);
    gmCircle circle;
    inOnePass(first, [&](gmArchive& inner) {
        inner || circle;
        EXPECT_THROW(support::loadFrom(header, [&](gmArchive& in) { in || circle; }), gmArchive::Truncated);
        inner || circle;
    });
    EXPECT_EQ(firstOut.str().size(), header.size() + 25);
}

TEST(ArchivePass, OnTwoThreadsKeepsApart) {
    gmCircle circle({1.0, 2.0}, 3.0);
    std::string expected;
    for (int i = 0; i < 500; ++i)
        expected += support::unhex(circleBytes);
    std::string results[2];
    const auto work = [&circle](std::string& result) {
        gmCircle own = circle;
        result = stored([&](gmArchive& archive) {
            for (int i = 0; i < 500; ++i)
                inOnePass(archive, [&](gmArchive& inner) { inner || own || own; });
        });
    };
    std::thread first(work, std::ref(results[0]));
    std::thread second(work, std::ref(results[1]));
    first.join();
    second.join();
    EXPECT_EQ(results[0], header + expected);
    EXPECT_EQ(results[1], header + expected);
}

TEST(ArchivePass, HoldsAnObjectMetAsAPartAndThroughAPointerTwice) {
    // The loader makes a new object for the pointer, which needs a content of its own.
    const auto both = [](gmArchive& archive, Node& part, gmPtrHandle<Node>& handle) {
        inOnePass(archive, [&](gmArchive& inner) { inner || part || handle; });
    };
    gmPtrHandle<Node> node(new Node(31));
    const std::string bytes = stored([&](gmArchive& archive) { both(archive, *node, node); });
    Node part;
    gmPtrHandle<Node> shared;
    support::loadFrom(bytes, [&](gmArchive& archive) { both(archive, part, shared); });
    EXPECT_EQ(part.number, 31);
    ASSERT_FALSE(shared.isNull());
    EXPECT_EQ(shared->number, 31);
}

TEST(ArchivePass, HoldsAnObjectMetThroughAPointerAndAsAPartOnce) {
    const auto both = [](gmArchive& archive, gmPtrHandle<Node>& handle) {
        inOnePass(archive, [&](gmArchive& inner) { inner || handle || *handle; });
    };
    gmPtrHandle<Node> node(new Node(31));
    const std::string bytes = stored([&](gmArchive& archive) { both(archive, node); });
    EXPECT_EQ(bytes, stored([&](gmArchive& archive) { archive || node; }));
    gmPtrHandle<Node> loaded;
    support::loadFrom(bytes, [&](gmArchive& archive) { both(archive, loaded); });
    EXPECT_EQ(loaded->number, 31);
}

}  // namespace
