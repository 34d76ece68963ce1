// Shapes beyond what archives and the devices below them take, and archives that go on after a pass.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <istream>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

#include "tests/support/hostile.h"
#include "tests/support/text.h"

using support::header;
using support::littleEndian;
using support::loadFrom;
using support::points;
using support::stored;
using support::unhex;

namespace {

using ArchiveNesting = support::HostileArchive;
using EdgeContour = gmContourT<gmEdgelet>;
using EdgeRegion = gmRegionT<gmEdgelet>;

// ----- Nesting

/// The archive of a region with a hole that has a hole, and so on. It is made as it is read, being far larger than what
/// may be taken to read it.
class NestedRegions : public std::streambuf {
  public:
    static constexpr std::uint32_t depth = 2000000;

    NestedRegions(std::string className, std::string before, bool measured)
        : className_(std::move(className)), before_(std::move(before)), measured_(measured) {
        piece_ = header;
        show();
    }

    std::uint32_t levels() const { return level_; }

  protected:
    int_type underflow() override {
        if (level_ == depth)
            return traits_type::eof();
        read_ += static_cast<std::streamoff>(piece_.size());
        piece_ = littleEndian(++level_) + littleEndian(static_cast<std::uint32_t>(className_.size())) + className_ +
                 unhex(before_) + unhex("01 01 00 00 00 00 00 01 00 00 00 00 00 03 00 00 00 00 01 00 00 00");
        show();
        return traits_type::to_int_type(piece_[0]);
    }
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) override {
        if (!measured_)
            return pos_type(off_type(-1));
        // Whoever measures goes to the end and back to where it was.
        if (from == std::ios_base::cur)
            return pos_type(read_ + (gptr() - eback()));
        return from == std::ios_base::end ? pos_type(off_type{1} << 40) : pos_type(offset);
    }

  private:
    void show() { setg(piece_.data(), piece_.data(), piece_.data() + piece_.size()); }

    std::string className_;
    std::string before_;
    bool measured_;
    std::string piece_;
    off_type read_ = 0;
    std::uint32_t level_ = 0;
};

TEST_F(ArchiveNesting, OfTwoMillionHolesIsNotLoaded) {
    for (const bool measured : {true, false})
        for (const bool edges : {true, false}) {
            NestedRegions buffer(edges ? "gmRegionT<gmEdgelet>" : "gmRegion", edges ? "00" : "", measured);
            std::istream in(&buffer);
            gmArchive archive(in);
            RegionCPtr region(new gmRegion);
            EXPECT_THROW(archive || region, gmArchive::OutOfRange);
            EXPECT_TRUE(region.isNull());
            EXPECT_EQ(buffer.levels(), archive.maxDepth() + 1);
        }
}

/// A region with a hole that has a hole, and so on.
template <class Region>
RegionCPtr nested(int depth) {
    gmPtrHandle<gmRegion> region(new Region);
    for (int i = 1; i < depth; ++i) {
        const gmPtrHandle<gmRegion> around(new Region);
        // Setting them would look for crossings, which takes vertices.
        const_cast<std::vector<RegionCPtr>&>(around->holes()).push_back(region);
        region = around;
    }
    return region;
}

template <class Region>
void expectStoredNestedTo(int allowed) {
    RegionCPtr deepest = nested<Region>(allowed);
    EXPECT_GT(support::contentOf(deepest).size(), 256U);
    for (const int depth : {allowed + 1, 100000}) {
        RegionCPtr deeper = nested<Region>(depth);
        EXPECT_EQ(stored([&](gmArchive& archive) { EXPECT_THROW(archive || deeper, gmArchive::OutOfRange); }), header);
    }
}

TEST_F(ArchiveNesting, OfManyHolesIsNotStored) {
    expectStoredNestedTo<gmRegion>(256);
    expectStoredNestedTo<EdgeRegion>(256);
}

TEST_F(ArchiveNesting, ThatIsStoredIsLoaded) {
    RegionCPtr deep = nested<EdgeRegion>(256);
    RegionCPtr back;
    support::transfer(deep, back);
    EXPECT_EQ(support::Description::of(*back), support::Description::of(*deep));
}

/// Regions within each other, each of which says that it has a quarter of what follows in holes.
std::string greedy(std::size_t size) {
    std::string bytes = header;
    for (std::uint32_t level = 1; level <= 250; ++level) {
        bytes += littleEndian(level) + unhex("08 00 00 00 67 6d 52 65 67 69 6f 6e") +
                 unhex("01 01 00 00 00 00 00 01 00 00 00 00 00 03 00 00 00 00");
        bytes += littleEndian(static_cast<std::uint32_t>((size - bytes.size() - 4) / 4));
    }
    return bytes + std::string(size - bytes.size(), '\0');
}

TEST_F(ArchiveNesting, CannotPromiseTheSameBytesToListsWithinEachOther) {
    const std::string bytes = greedy(4 << 20);
    std::istringstream in(bytes);
    gmArchive archive(in);
    RegionCPtr region;
    EXPECT_THROW(archive || region, gmArchive::Truncated);
}

TEST_F(ArchiveNesting, LeavesRoomForListsBehindEachOther) {
    const std::string empty = unhex("01 01 00 00 00 00 00 01 00 00 00 00 00 03 00 00 00 00");
    const std::string name = unhex("08 00 00 00 67 6d 52 65 67 69 6f 6e");
    // A region with two holes, of which the first has two as well, and nothing too much at the end.
    const std::string bytes = header + littleEndian(1) + name + empty + littleEndian(2) + littleEndian(2) + name +
                              empty + littleEndian(2) + littleEndian(0) + littleEndian(0) + littleEndian(0);
    RegionCPtr region;
    support::loadFrom(bytes, [&](gmArchive& archive) { archive || region; });
    EXPECT_EQ(region->holes().size(), 2u);
}

// ----- Devices

/// A set that shares a region and holds holes and nothing.
std::unique_ptr<gmRegionSet> someSet() {
    const gmPtrHandle<gmRegion> plate(new gmRegion(points("0 0, 10 0, 10 10, 0 10")));
    plate->holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion(points("4 4, 6 4, 6 6")))});
    return std::make_unique<gmRegionSet>(std::vector<RegionCPtr>{plate, nullptr, plate});
}

/// A device that takes so many bytes and no more, in whatever pieces they come.
class SmallDevice : public std::streambuf {
  public:
    explicit SmallDevice(std::size_t room) : room_(room) {}
    const std::string& taken() const { return taken_; }

  protected:
    int_type overflow(int_type c) override {
        if (taken_.size() == room_)
            return traits_type::eof();
        taken_ += traits_type::to_char_type(c);
        return c;
    }

  private:
    std::size_t room_;
    std::string taken_;
};

TEST(ArchiveDevice, ThatIsTooSmallIsAnErrorWhateverItTakes) {
    const auto set = someSet();
    const std::string whole = stored([&](gmArchive& archive) { archive || *set; });
    for (std::size_t room = 0; room <= whole.size(); ++room) {
        SmallDevice device(room);
        std::ostream out(&device);
        const auto store = [&] {
            gmArchive archive(out);
            archive || *set;
        };
        if (room == whole.size())
            EXPECT_NO_THROW(store());
        else
            EXPECT_THROW(store(), gmArchive::Errors) << room;
        EXPECT_EQ(device.taken(), whole.substr(0, room));
        gmRegionSet target;
        const auto load = [&] { loadFrom(device.taken(), [&](gmArchive& archive) { archive || target; }); };
        if (room == whole.size())
            EXPECT_NO_THROW(load());
        else
            EXPECT_THROW(load(), gmArchive::Truncated) << room;
    }
}

TEST(ArchiveDevice, ThatNobodyReadsAnyMoreIsAnError) {
    const std::string path = testing::TempDir() + "archive-pipe-" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(path.c_str(), S_IRUSR | S_IWUSR), 0);
    const auto ignored = std::signal(SIGPIPE, SIG_IGN);
    {
        // Both ends at once: opening one alone waits for the other.
        std::fstream reader(path, std::ios::binary | std::ios::in | std::ios::out);
        std::ofstream writer(path, std::ios::binary);
        ASSERT_TRUE(writer);
        gmArchive archive(writer);
        reader.close();
        const auto set = someSet();
        EXPECT_THROW(archive || *set, gmArchive::Errors);
        EXPECT_THROW(archive || *set, gmArchive::Errors) << "and stays one";
    }
    std::signal(SIGPIPE, ignored);
    std::filesystem::remove(path);
}

// ----- Passes

TEST(ArchivePassOfShapes, HoldsEveryTemporaryAtOnePlace) {
    const std::string bytes = stored([](gmArchive& archive) {
        for (unsigned long i = 0; i < 100; ++i) {
            EdgeContour temporary(std::vector<gmEdgelet>(i, gmEdgelet()));
            temporary.label(i);
            archive || temporary;
        }
    });
    loadFrom(bytes, [](gmArchive& archive) {
        EdgeContour target;
        for (unsigned long i = 0; i < 100; ++i) {
            archive || target;
            EXPECT_EQ(target.label(), i);
            EXPECT_EQ(target.data().size(), i);
        }
    });
}

TEST(ArchivePassOfShapes, LoadsEveryTemporaryAtOnePlace) {
    gmRegion region(points("1 2"));
    const std::string bytes = stored([&](gmArchive& archive) {
        for (unsigned long i = 0; i < 100; ++i) {
            region.label(i);
            archive || region;
        }
    });
    loadFrom(bytes, [](gmArchive& archive) {
        for (unsigned long i = 0; i < 100; ++i) {
            gmRegion temporary;
            archive || temporary;
            EXPECT_EQ(temporary.label(), i);
        }
    });
}

TEST(ArchivePassOfShapes, OfTheFirstVersionsDisturbEachOtherInNoOrder) {
    // version, legacy base and its base, vertices: version, 1, (1, -2), any byte, cachedVectorSize 5
    const std::string old =
        unhex("00 00 00 00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 ab 05 00 00 00");
    const std::string closed(1, '\1');
    const std::string bytes = header + old + closed + old + old + old + closed;
    loadFrom(bytes, [](gmArchive& archive) {
        gmContour contours[2];
        gmRegion regions[2];
        for (gmContour* target :
             {&contours[0], static_cast<gmContour*>(&regions[0]), static_cast<gmContour*>(&regions[1]), &contours[1]}) {
            archive || *target;
            EXPECT_EQ(target->points(), points("1 -2"));
            EXPECT_EQ(target->cachedVectorSize(), 5);
        }
    });
}

/// An edge contour that lacks an edge point.
class Broken : public EdgeContour {
  public:
    explicit Broken(const std::vector<gmEdgelet>& data) : EdgeContour(data) {
        gmContour::operator=(gmContour({data[0].position()}, true));
    }
};

/// Parts in one pass.
struct Parts : gmPersistent {
    std::vector<gmPersistent*> parts;
    void dispatchSerialize(gmArchive& archive) override {
        for (gmPersistent* part : parts)
            archive || *part;
    }
};

TEST(ArchivePassOfShapes, ThatFailedCanBeTriedAgain) {
    const auto set = someSet();
    gmPtrHandle<gmRegion> region(new gmRegion(points("1 2, 3 4, 5 7")));
    gmRegion holed(points("0 0, 90 0, 90 90, 0 90"));
    holed.holes(std::vector<RegionCPtr>{region});
    const std::vector<gmEdgelet> data{{{1, 2}, 3, gmAngle8(4)}, {{5, 6}, 7, gmAngle8(8)}};
    Broken broken(data);
    EdgeContour whole(data);
    Parts failing;
    failing.parts = {set.get(), &holed, &broken};
    Parts mended;
    mended.parts = {set.get(), &holed, &whole};
    const std::string again = stored([&](gmArchive& archive) {
        EXPECT_THROW(archive || failing, gmArchive::Malformed);
        archive || mended || region;
    });
    EXPECT_EQ(again, stored([&](gmArchive& archive) { archive || mended || region; }));
}

}  // namespace
