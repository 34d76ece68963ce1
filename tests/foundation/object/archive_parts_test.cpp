// Passes of which a piece fails, lists of parts that move, and devices that fail as the standard's do.
#include <fstream>
#include <sstream>

#include "foundation/shapes/circle.h"
#include "tests/foundation/object/nodes.h"
#include "tests/foundation/support.h"

namespace {

using support::header;
using support::inOnePass;
using support::loadFrom;
using support::Node;
using support::Pipe;
using support::stored;

using NodeHandle = gmPtrHandle<Node>;

TEST(ArchiveLists, OfPartsAreReadWholeThoughTheyMoveWhileTheyGrow) {
    constexpr std::size_t count = 9000;  // more than is made room for at once where the stream cannot be measured
    std::vector<gmCircle> first;
    std::vector<gmCircle> second;
    for (std::size_t i = 0; i < count; ++i) {
        first.emplace_back(gmVector<2>(static_cast<double>(i), 1.0), 2.0);
        second.emplace_back(gmVector<2>(static_cast<double>(i), 3.0), 4.0);
    }
    const auto bytes = stored([&](gmArchive& archive) {
        inOnePass(archive, [&](gmArchive& pass) {
            archiveVector(pass, first, 1);
            pass || first[7];  // was visited
            archiveVector(pass, second, 1);
        });
    });
    Pipe pipe(bytes);
    std::istream in(&pipe);
    gmArchive archive(in);
    std::vector<gmCircle> a;
    std::vector<gmCircle> b;
    inOnePass(archive, [&](gmArchive& pass) {
        archiveVector(pass, a, 1);
        pass || a[7];
        archiveVector(pass, b, 1);
    });
    ASSERT_EQ(a.size(), count);
    ASSERT_EQ(b.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(a[i].center(), first[i].center()) << i;
        ASSERT_EQ(b[i].center(), second[i].center()) << i;
        ASSERT_EQ(b[i].radius(), 4.0) << i;
    }
    EXPECT_EQ(in.peek(), std::istream::traits_type::eof());
}

TEST(ArchivePass, WithAPartThatWasRefusedWritesNothingThoughTheRefusalIsCaught) {
    std::ostringstream out;
    gmArchive archive(out);
    unsigned long tooLarge = 1UL << 40;
    const auto careless = [&](gmArchive& pass) {
        unsigned char before = 7;
        pass || before;
        try {
            inOnePass(pass, [&](gmArchive& part) { part || before || tooLarge; });
        } catch (const gmArchive::OutOfRange&) {
            // Goes on without it.
        }
        pass || before;
    };
    EXPECT_THROW(inOnePass(archive, careless), gmArchive::Errors);
    EXPECT_EQ(out.str(), header);
    unsigned char next = 9;
    archive || next;
    EXPECT_EQ(out.str(), header + '\x09');
}

TEST(ArchivePass, OfManyPointersOneAfterTheOtherRefersToEach) {
    std::ostringstream out;
    gmArchive archive(out);
    std::vector<NodeHandle> nodes;
    for (int i = 0; i < 30000; ++i) {
        nodes.emplace_back(new Node(i));
        archive || nodes.back();
    }
    const std::size_t before = out.str().size();
    archive || nodes.front() || nodes.back();
    EXPECT_EQ(out.str().size(), before + 8);
}

TEST(ArchiveInPlace, AnObjectThatIsLoadedOverItselfCannotContainItself) {
    NodeHandle node(new Node(1));
    const auto bytes = stored([&](gmArchive& archive) { archive || node; });
    // Then the node as a part: version, number, one child, which is object 1.
    const std::string more = support::unhex("00 01 00 00 00 01 00 00 00 01 00 00 00");
    loadFrom(bytes + more, [](gmArchive& archive) {
        NodeHandle loaded;
        archive || loaded;
        EXPECT_THROW(archive || *loaded, gmArchive::Malformed);
        loaded->children.clear();
    });
    std::ostringstream out;
    gmArchive archive(out);
    archive || node;
    node->children.push_back(node);
    const std::string before = out.str();
    EXPECT_THROW(archive || *node, gmArchive::Malformed);
    EXPECT_EQ(out.str(), before);
    node->children.clear();
}

/// A device that fails by an exception after some bytes.
class Failing : public std::stringbuf {
  public:
    explicit Failing(std::streamsize bytes, const std::string& content = "") : std::stringbuf(content), left_(bytes) {}

  protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        const std::streamsize taken = std::stringbuf::xsputn(text, std::min(size, left_));
        left_ -= taken;
        if (taken < size)
            throw std::ios_base::failure("device");
        return taken;
    }
    std::streamsize xsgetn(char* text, std::streamsize size) override {
        left_ -= size;
        if (left_ < 0)
            throw std::ios_base::failure("device");
        return std::stringbuf::xsgetn(text, size);
    }

  private:
    std::streamsize left_;
};

TEST(ArchiveDevice, ThatThrowsWhileWritingIsAnErrorAndEndsTheArchive) {
    Failing buffer(7);
    std::ostream out(&buffer);
    gmArchive archive(out);
    unsigned long value = 1;
    EXPECT_THROW(archive || value, gmArchive::Errors);
    EXPECT_THROW(archive || value, gmArchive::Errors);
    EXPECT_EQ(buffer.str().size(), 7u) << "nothing may follow a piece";
}

TEST(ArchiveDevice, ThatThrowsWhileReadingIsAnErrorAndEndsTheArchive) {
    Failing buffer(7, header + std::string(20, '\0'));
    std::istream in(&buffer);
    gmArchive archive(in);
    unsigned long value = 1;
    EXPECT_THROW(archive || value, gmArchive::Errors);
    EXPECT_THROW(archive || value, gmArchive::Errors);
    EXPECT_EQ(value, 1u);
}

TEST(ArchiveDevice, ThatThrowsWhenItIsMeasuredIsReadWithoutMeasuring) {
    struct Unseekable : std::stringbuf {
        using std::stringbuf::stringbuf;
        pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
            throw std::ios_base::failure("no");
        }
    } buffer(header + std::string(4, '\1'));
    std::istream in(&buffer);
    gmArchive archive(in);
    unsigned long value = 0;
    EXPECT_NO_THROW(archive || value);
    EXPECT_EQ(value, 0x01010101u);
}

TEST(ArchiveDevice, ThatIsADirectoryIsAnError) {
    std::ifstream directory("/");
    EXPECT_THROW(gmArchive archive(directory), gmArchive::Errors);
}

}  // namespace
