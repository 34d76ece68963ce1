// Lists of vertices, which pass through archives many at once: the bytes, what is read and what is refused are as if
// they came one by one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <typeinfo>
#include <utility>

#include "tests/foundation/support.h"

namespace {

using support::FullDisk;
using support::header;
using support::Pipe;
using support::stored;
using support::unhex;
using Vector = gmVector<2>;
using Points = std::vector<Vector>;

constexpr std::size_t bytesEach = 16;
constexpr std::size_t countBytes = 4;
constexpr std::size_t block = 256;  // as many pass at once

/// How a list passes: at once, or vertex by vertex.
using Way = void (*)(gmArchive&, Points&);

void atOnce(gmArchive& archive, Points& points) {
    archiveVector(archive, points, bytesEach);
}

void oneByOne(gmArchive& archive, Points& points) {
    unsigned long count = points.size();
    archive || count;
    if (!archive.isStoring())
        points.resize(archive.roomFor(count, bytesEach));
    for (std::size_t i = 0; i < count; ++i) {
        if (i == points.size())
            points.resize(i + 1 + archive.roomFor(count - i - 1, bytesEach));
        archive || points[i];
    }
}

/// A source that hands over so many bytes at a time, and may say more of itself than a plain one.
class Source : public std::streambuf {
  public:
    enum class Waiting { untold, told, endTold, fails };

    Source(std::string bytes, std::size_t step, Waiting waiting = Waiting::untold)
        : bytes_(std::move(bytes)), step_(step), waiting_(waiting) {}

    /// Says that so many bytes more can be read than there are.
    void claimMore(std::streamoff bytes) {
        claimed_ = bytes;
        isMeasurable_ = true;
    }
    /// Where reading stands.
    std::size_t taken() const { return given_ - static_cast<std::size_t>(egptr() - gptr()); }

  protected:
    int_type underflow() override {
        if (given_ == bytes_.size())
            return traits_type::eof();
        const std::size_t size = std::min(step_, bytes_.size() - given_);
        char* const begin = bytes_.data() + given_;
        given_ += size;
        setg(begin, begin, begin + size);
        return traits_type::to_int_type(*begin);
    }
    std::streamsize showmanyc() override {
        switch (waiting_) {
            case Waiting::told:
                return static_cast<std::streamsize>(bytes_.size() - given_);
            case Waiting::endTold:
                return given_ == bytes_.size() ? -1 : 0;
            case Waiting::fails:
                throw std::ios_base::failure("nothing to say");
            default:
                return 0;
        }
    }
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) override {
        if (!isMeasurable_)
            return pos_type(off_type(-1));
        const auto here = static_cast<off_type>(taken());
        if (from == std::ios_base::end)
            return pos_type(static_cast<off_type>(bytes_.size()) + claimed_ + offset);
        return pos_type((from == std::ios_base::cur ? here : 0) + offset);
    }

  private:
    std::string bytes_;
    std::size_t step_;
    Waiting waiting_;
    std::size_t given_ = 0;
    std::streamoff claimed_ = 0;
    bool isMeasurable_ = false;
};

Points vertices(std::size_t n) {
    Points points;
    support::Random random(static_cast<unsigned>(n));
    for (std::size_t i = 0; i < n; ++i)
        points.push_back(random.vector(1e6));
    return points;
}

/// A double of its own bits, which arithmetic might not keep.
double ofBits(std::uint64_t bits) {
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::string bytesOf(Points points) {
    return stored([&](gmArchive& archive) { oneByOne(archive, points); });
}

/// What a list was like after its load, and how that ended.
struct Loaded {
    Points points;
    std::string error = "none";
    bool isUsable = true;  // whether the archive reads on

    friend bool operator==(const Loaded& a, const Loaded& b) {
        return a.points.size() == b.points.size() && a.error == b.error && a.isUsable == b.isUsable &&
               (a.points.empty() ||
                std::memcmp(a.points.data(), b.points.data(), a.points.size() * sizeof(Vector)) == 0);
    }
    friend std::ostream& operator<<(std::ostream& out, const Loaded& loaded) {
        return out << loaded.points.size() << " vertices, error: " << loaded.error
                   << (loaded.isUsable ? "" : ", unusable");
    }
};

Loaded load(std::streambuf& buffer, Way way) {
    Loaded loaded;
    loaded.points = {{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}};
    std::istream in(&buffer);
    gmArchive archive(in);
    try {
        way(archive, loaded.points);
    } catch (const gmArchive::Errors& error) {
        loaded.error = typeid(error).name();
    }
    try {
        unsigned char byte = 0;
        archive || byte;
    } catch (const gmArchive::Truncated&) {
        // The end of the stream, which the archive may well reach.
    } catch (const gmArchive::Errors&) {
        loaded.isUsable = false;
    }
    return loaded;
}

/// Lengths to which an archive of so many vertices is cut: every one around the ends of blocks and of the list.
std::vector<std::size_t> cuts(std::size_t vertexCount) {
    const std::size_t start = header.size() + countBytes;
    std::vector<std::size_t> lengths;
    for (std::size_t border = 0; border < vertexCount + block; border += block) {
        const std::size_t middle = start + std::min(border, vertexCount) * bytesEach;
        for (std::size_t length = middle - std::min<std::size_t>(middle - header.size(), 18); length < middle + 18;
             ++length)
            if (length <= start + vertexCount * bytesEach)
                lengths.push_back(length);
    }
    return lengths;
}

TEST(ArchiveVertices, AreTheBytesOfOneByOne) {
    for (const std::size_t n : {0U, 1U, 2U, 255U, 256U, 257U, 511U, 512U, 513U, 1000U}) {
        Points points = vertices(n);
        EXPECT_EQ(stored([&](gmArchive& archive) { atOnce(archive, points); }), bytesOf(points)) << n;
    }
}

TEST(ArchiveVertices, KeepEveryBitOfEveryDouble) {
    Points points = {{ofBits(0x7ff0000000000001), ofBits(0xfff8dead00000000)},
                     {ofBits(0x0123456789abcdef), ofBits(0xfedcba9876543210)},
                     {-0.0, 5e-324},
                     {support::infinity, -support::infinity}};
    const std::string bytes = stored([&](gmArchive& archive) { atOnce(archive, points); });
    EXPECT_EQ(support::hex(bytes.substr(header.size(), countBytes + 2 * bytesEach)),
              "04 00 00 00 01 00 00 00 00 00 f0 7f 00 00 00 00 ad de f8 ff "
              "ef cd ab 89 67 45 23 01 10 32 54 76 98 ba dc fe");
    Points loaded;
    support::loadFrom(bytes, [&](gmArchive& archive) { atOnce(archive, loaded); });
    ASSERT_EQ(loaded.size(), points.size());
    EXPECT_EQ(std::memcmp(loaded.data(), points.data(), points.size() * sizeof(Vector)), 0);
}

TEST(ArchiveVertices, AreLeftAloneByStoring) {
    const Points before = vertices(600);
    Points points = before;
    stored([&](gmArchive& archive) { atOnce(archive, points); });
    EXPECT_EQ(points, before);
}

TEST(ArchiveVertices, ReachADiskThatFillsUpAsTheyWould) {
    Points points = vertices(600);
    const std::size_t size = bytesOf(points).size();
    for (const std::size_t room : {header.size() + 2, header.size() + countBytes + block * bytesEach + 5, size - 1}) {
        FullDisk disk(room);
        std::ostream out(&disk);
        gmArchive archive(out);
        EXPECT_THROW(atOnce(archive, points), gmArchive::Errors);
        EXPECT_EQ(disk.taken(), room);
        disk.enlarge(2 * size);
        EXPECT_THROW(atOnce(archive, points), gmArchive::Errors) << "a piece is missing";
        EXPECT_EQ(disk.taken(), room);
    }
}

/// Every cut, on all kinds of sources made by `open(bytes)`, has the same effect either way.
template <class Open>
void expectSameEffectOfEveryCut(Open open) {
    for (const std::size_t n : {1U, 257U, 600U}) {
        const std::string whole = bytesOf(vertices(n));
        for (const std::size_t length : cuts(n)) {
            auto plain = open(whole.substr(0, length));
            auto buffer = open(whole.substr(0, length));
            const Loaded expected = load(*plain, oneByOne);
            ASSERT_EQ(expected.error == "none", length == whole.size());
            ASSERT_EQ(load(*buffer, atOnce), expected) << "cut to " << length << " of " << whole.size() << " bytes";
        }
    }
}

TEST(ArchiveVertices, CutShortInMemoryAreRefusedAtOnce) {
    expectSameEffectOfEveryCut([](const std::string& bytes) { return std::make_unique<std::stringbuf>(bytes); });
}

TEST(ArchiveVertices, CutShortInAPipeAreReadUpToThere) {
    expectSameEffectOfEveryCut([](const std::string& bytes) { return std::make_unique<Pipe>(bytes); });
    // By name, as both ways might be wrong alike.
    const Points points = vertices(600);
    const std::size_t length = header.size() + countBytes + 300 * bytesEach + 9;
    Pipe pipe(bytesOf(points).substr(0, length));
    const Loaded loaded = load(pipe, atOnce);
    EXPECT_EQ(loaded.error, typeid(gmArchive::Truncated).name());
    EXPECT_FALSE(loaded.isUsable);
    ASSERT_EQ(loaded.points.size(), 600U);
    EXPECT_TRUE(std::equal(points.begin(), points.begin() + 300, loaded.points.begin()));
    EXPECT_EQ(loaded.points[300], Vector());
}

TEST(ArchiveVertices, CutShortWhereMoreWasPromisedAreReadUpToThere) {
    expectSameEffectOfEveryCut([](const std::string& bytes) {
        auto source = std::make_unique<Source>(bytes, bytes.size());
        source->claimMore(100000);
        return source;
    });
}

/// Calls visit(open) for sources of all kinds, made by `open(bytes)`.
template <class Visit>
void forEachKindOfSource(Visit visit) {
    using Waiting = Source::Waiting;
    for (const Waiting waiting : {Waiting::untold, Waiting::told, Waiting::endTold, Waiting::fails})
        for (const std::size_t step : {1U, 7U, 8U, 15U, 16U, 17U, 33U, 4095U, 4096U, 4097U, 100000U}) {
            SCOPED_TRACE("steps of " + std::to_string(step) + ", kind " + std::to_string(static_cast<int>(waiting)));
            visit([=](const std::string& bytes) { return std::make_unique<Source>(bytes, step, waiting); });
        }
}

TEST(ArchiveVertices, InStepsOfAnySizeComeAsOneByOne) {
    forEachKindOfSource([](auto open) {
        for (const std::size_t n : {0U, 1U, 2U, 255U, 256U, 257U, 1000U}) {
            const Points points = vertices(n);
            const auto source = open(bytesOf(points));
            const Loaded loaded = load(*source, atOnce);
            EXPECT_EQ(loaded.points, points);
            EXPECT_EQ(loaded.error, "none");
        }
    });
}

TEST(ArchiveVertices, TakeNoByteOfWhatFollows) {
    Points points = vertices(700);
    double before = 1.5;
    double after = 2.5;
    const std::string bytes = stored([&](gmArchive& archive) {
        archive || before;
        atOnce(archive, points);
        archive || after;
    });
    forEachKindOfSource([&](auto open) {
        const auto source = open(bytes + "more");
        std::istream in(source.get());
        gmArchive archive(in);
        double number = 0.0;
        Points loaded;
        archive || number;
        atOnce(archive, loaded);
        EXPECT_EQ(loaded, points);
        EXPECT_EQ(source->taken(), bytes.size() - sizeof after);
        archive || number;
        EXPECT_EQ(number, after);
        EXPECT_EQ(source->taken(), bytes.size());
    });
}

TEST(ArchiveVertices, CutShortInStepsAreReadUpToThere) {
    forEachKindOfSource([](auto open) { expectSameEffectOfEveryCut(open); });
}

TEST(ArchiveVertices, FewerThanTheirNumberSaysAreReadUpToThere) {
    const std::string whole = bytesOf(vertices(300));
    forEachKindOfSource([&](auto open) {
        for (const char* count : {"2d 01 00 00", "00 20 00 00", "ff ff ff ff"}) {
            const std::string lying = header + unhex(count) + whole.substr(header.size() + countBytes);
            const auto source = open(lying);
            const auto plain = open(lying);
            const Loaded loaded = load(*source, atOnce);
            EXPECT_EQ(loaded, load(*plain, oneByOne)) << count;
            EXPECT_EQ(loaded.error, typeid(gmArchive::Truncated).name());
            EXPECT_LT(loaded.points.size(), 10000U);
        }
    });
}

TEST(ArchiveVertices, MoreThanTheirNumberSaysAreLeftInTheStream) {
    const Points points = vertices(300);
    const std::string whole = bytesOf(points);
    Source source(header + unhex("01 01 00 00") + whole.substr(header.size() + countBytes), 100000);
    std::istream in(&source);
    gmArchive archive(in);
    Points loaded;
    atOnce(archive, loaded);
    EXPECT_EQ(loaded, Points(points.begin(), points.begin() + 257));
    Vector next;
    archive || next;
    EXPECT_EQ(next, points[257]);
}

TEST(ArchiveVertices, LeaveAsMuchRoomAsTheirBytesDo) {
    Points points = vertices(513);
    support::loadFrom(bytesOf(points) + std::string(64, '\0'), [&](gmArchive& archive) {
        atOnce(archive, points);
        EXPECT_EQ(archive.roomFor(4, bytesEach), 4U);
        EXPECT_THROW(archive.roomFor(5, bytesEach), gmArchive::Truncated);
    });
}

TEST(ArchiveVertices, MoreThanRoomIsMadeForBlindlyComeThroughAPipe) {
    const Points points = vertices(4096 + 4096 + 300);
    Pipe pipe(bytesOf(points));
    EXPECT_EQ(load(pipe, atOnce).points, points);
    for (const std::size_t more : {0U, 1U, 255U, 256U}) {
        const std::string cut = bytesOf(points).substr(0, header.size() + countBytes + (4096 + more) * bytesEach + 3);
        Pipe plain(cut);
        Pipe buffer(cut);
        EXPECT_EQ(load(buffer, atOnce), load(plain, oneByOne)) << more;
    }
}

/// A source that breaks down, with whatever it throws, after so many bytes.
class Breaking : public std::streambuf {
  public:
    Breaking(std::string bytes, std::function<void()> breakDown)
        : bytes_(std::move(bytes)), breakDown_(std::move(breakDown)) {
        setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
    }

  protected:
    int_type underflow() override {
        breakDown_();
        return traits_type::eof();
    }

  private:
    std::string bytes_;
    std::function<void()> breakDown_;
};

TEST(ArchiveVertices, OfASourceThatBreaksDownAreReadUpToThere) {
    const Points points = vertices(600);
    const std::string whole = bytesOf(points);
    const auto fail = [] { throw std::ios_base::failure("unplugged"); };
    for (const std::size_t length : cuts(600)) {
        if (length == whole.size())
            continue;
        Breaking plain(whole.substr(0, length), fail);
        Breaking buffer(whole.substr(0, length), fail);
        const Loaded loaded = load(buffer, atOnce);
        EXPECT_EQ(loaded, load(plain, oneByOne)) << length;
        EXPECT_EQ(loaded.error, typeid(gmArchive::Errors).name());
    }
}

TEST(ArchiveVertices, AfterARefusalAreReadNoMore) {
    Source source(header + unhex("ff ff ff ff 00 00") + bytesOf(vertices(600)), 100000);
    std::istream in(&source);
    gmArchive archive(in);
    std::string text;
    EXPECT_THROW(archive || text, gmArchive::Truncated);
    Points points = {{1.0, 2.0}};
    EXPECT_THROW(atOnce(archive, points), gmArchive::Errors);
    EXPECT_EQ(points, (Points{{1.0, 2.0}}));
}

}  // namespace
