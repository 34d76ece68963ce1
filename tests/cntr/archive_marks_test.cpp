// What a pass knows of the objects that it met, and what loading makes of answers that are asked for half-way.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <future>
#include <istream>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "foundation/object/instantiator.h"
#include "foundation/shapes/circle.h"
#include "tests/support/archives.h"
#include "tests/support/edgelets.h"
#include "tests/support/testregionset.h"

using support::contentOf;
using support::Holes;
using support::shared;
using support::transfer;

namespace {

/// A pass that does something.
struct Doing : gmPersistent {
    explicit Doing(std::function<void(gmArchive&)> act) : act_(std::move(act)) {}
    void dispatchSerialize(gmArchive& archive) override { act_(archive); }

  private:
    std::function<void(gmArchive&)> act_;
};

// ----- Parts met twice

template <class Error>
Error filled(const Error*) {
    return Error("why");
}
gmContour filled(const gmContour*) {
    return gmContour(support::points("0 0, 4 0, 4 3"), false, 7);
}
gmRegion filled(const gmRegion*) {
    return support::testRegion("0 0, 10 0, 10 10, 0 10", Holes{shared("4 4, 6 4, 6 6")});
}
gmRegionSet filled(const gmRegionSet*) {
    return support::setOf({"0 0, 4 0, 4 4", "9 9, 8 9, 9 8"});
}
support::ContourT filled(const support::ContourT*) {
    return support::edgeContour("0 0, 8 0, 8 6", 2);
}
support::RegionT filled(const support::RegionT*) {
    return support::RegionT(support::edgelets("0 0, 8 0, 8 6"));
}
support::RegionSetT filled(const support::RegionSetT*) {
    return support::RegionSetT(std::vector<support::RegionTHandle>{support::sharedT("0 0, 4 0, 4 4")});
}
gm2XformLinear filled(const gm2XformLinear*) {
    return gm2XformLinear(support::scale(3));
}
gm2Rigid filled(const gm2Rigid*) {
    return gm2Rigid(gmDegree(30), {1, 2});
}

/// An application's error without a layout of its own.
class OwnError : public gmContourDefs::Errors {
  public:
    using Errors::Errors;
    long errorNumber() const override { return 1; }
    [[noreturn]] void suicideAndRethrow() override {
        const std::unique_ptr<OwnError> self(this);
        throw OwnError(*self);
    }
};

template <class T>
class ArchivedPart : public testing::Test {};

using EveryClass =
    testing::Types<gmContour, gmRegion, gmRegionSet, support::ContourT, support::RegionT, support::RegionSetT,
                   gm2XformLinear, gm2Rigid, gmContourDefs::BadParams, gmContourDefs::EmptyContour,
                   gmContourDefs::EmptyRegionSet, gmContourDefs::RegionCannotBeSetOpen, OwnError>;
struct ClassNames {
    template <class T>
    static std::string GetName(int) {
        std::string name = gm_Instantiator::className(typeid(T));
        name.erase(std::remove_if(name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }),
                   name.end());
        return name;
    }
};
TYPED_TEST_SUITE(ArchivedPart, EveryClass, ClassNames);

/// Meets its part so often in one pass; a number follows, which tells where the part ended.
template <class T>
struct Meeting : gmPersistent {
    T part;
    int times = 1;
    long number = 0;

    Meeting(T object, int often, long behind) : part(std::move(object)), times(often), number(behind) {}
    void dispatchSerialize(gmArchive& archive) override {
        for (int i = 0; i < times; ++i)
            archive || part;
        archive || number;
    }
};

TYPED_TEST(ArchivedPart, ThatIsMetTwiceInAPassIsStoredAndLoadedOnce) {
    TypeParam object = filled(static_cast<const TypeParam*>(nullptr));
    Meeting<TypeParam> once(object, 1, 77);
    Meeting<TypeParam> twice(object, 2, 77);
    TypeParam empty;
    ASSERT_NE(contentOf(object), contentOf(empty));
    EXPECT_EQ(support::hex(contentOf(twice)), support::hex(contentOf(once)));

    Meeting<TypeParam> target(empty, 2, 0);
    ASSERT_NO_THROW(transfer(twice, target));
    EXPECT_EQ(support::hex(contentOf(target.part)), support::hex(contentOf(object)));
    EXPECT_EQ(target.number, 77);
}

TYPED_TEST(ArchivedPart, ThatIsMetInTwoPassesIsStoredTwice) {
    TypeParam object = filled(static_cast<const TypeParam*>(nullptr));
    const std::string both = support::stored([&](gmArchive& archive) { archive || object || object; });
    EXPECT_GT(both.size(), (support::header + contentOf(object)).size());
}

TEST(ShapeMark, IsKeyedByTheWholeObject) {
    struct Named {
        virtual ~Named() = default;
    };
    struct NamedCircle : Named, gmCircle {
        NamedCircle() : gmCircle({1, 2}, 3) {}
    } circle;
    gmShape& shape = circle;
    void* const whole = &circle;
    ASSERT_NE(static_cast<void*>(&shape), whole);
    Doing pass([&](gmArchive& archive) {
        EXPECT_FALSE(gmPersistent::haveVisited(whole, sizeof(gmShape)));
        archive || shape;
        EXPECT_TRUE(gmPersistent::haveVisited(whole, sizeof(gmShape)));
        EXPECT_FALSE(gmPersistent::haveVisited(&shape, sizeof(gmShape)));
        archive || circle;
    });
    EXPECT_EQ(contentOf(pass).size(), 1 + 3 * sizeof(double));
}

// ----- Passes side by side

TEST(MarksOfAThread, AreUnknownToAPassOnAnotherThread) {
    int mine = 0;
    int theirs = 0;
    std::promise<void> marked;
    std::promise<void> answered;
    std::future<void> otherMarked = marked.get_future();
    std::future<void> otherAnswered = answered.get_future();
    std::future<void> other = std::async(std::launch::async, [&] {
        Doing pass([&](gmArchive&) {
            gmPersistent::setVisited(&theirs, sizeof theirs);
            marked.set_value();
            otherAnswered.wait();
            EXPECT_TRUE(gmPersistent::haveVisited(&theirs, sizeof theirs));
            EXPECT_FALSE(gmPersistent::haveVisited(&mine, sizeof mine));
        });
        contentOf(pass);
    });

    otherMarked.wait();
    EXPECT_FALSE(gmPersistent::haveVisited(&theirs, sizeof theirs)) << "outside a pass";
    Doing pass([&](gmArchive&) {
        EXPECT_FALSE(gmPersistent::haveVisited(&theirs, sizeof theirs));
        gmPersistent::setVisited(&mine, sizeof mine);
        // The other pass looks, and ends, while this one goes on.
        answered.set_value();
        other.get();
        EXPECT_TRUE(gmPersistent::haveVisited(&mine, sizeof mine));
        EXPECT_FALSE(gmPersistent::haveVisited(&theirs, sizeof theirs));
    });
    contentOf(pass);
}

// ----- Answers asked for while an object loads

/// Computes its length again as soon as the old one is dropped.
class EagerContour : public gmContour {
  public:
    using gmContour::gmContour;
    void cleanCacheInfo() override {
        gmContour::cleanCacheInfo();
        length();
    }
};

TEST(ContourThatIsAskedWhileItLoads, ForgetsTheLengthOfTheOldOutline) {
    gmContour source(support::points("0 0, 4 0, 4 3"), true);
    EagerContour target(support::points("0 0, 1 0, 1 1, 0 1"), true);
    transfer<gmContour>(source, target);
    EXPECT_EQ(target.length(), 12.0);
}

/// Computes its areas again as soon as the old ones are dropped.
class EagerRegion : public support::TestRegion {
  public:
    explicit EagerRegion(const std::vector<gmVector<2>>& points) : gmContour(points, true), TestRegion(points) {}
    void cleanCacheInfo() override {
        gmRegion::cleanCacheInfo();
        area(true);
    }
};

TEST(RegionThatIsAskedWhileItLoads, ForgetsTheAreaOfTheNewOutlineLessTheOldHoles) {
    gmRegion small = support::testRegion("0 0, 10 0, 10 10, 0 10", Holes{shared("4 4, 6 4, 6 6, 4 6")});
    EagerRegion target(support::points("0 0, 20 0, 20 20, 0 20"));
    target.holes(Holes{shared("1 1, 4 1, 4 4, 1 4")});
    transfer<gmRegion>(small, target);
    EXPECT_EQ(target.area(true), 96.0);
}

class EagerRegionSet : public gmRegionSet {
  public:
    using gmRegionSet::gmRegionSet;
    void cleanCacheInfo() override {
        gmRegionSet::cleanCacheInfo();
        area(false);
    }
};

TEST(RegionSetThatIsAskedWhileItLoads, ForgetsTheAreaOfTheOldRegions) {
    gmRegionSet source = support::setOf({"0 0, 4 0, 4 4"});
    EagerRegionSet target(support::regionsOf({"0 0, 2 0, 2 2"}));
    transfer<gmRegionSet>(source, target);
    EXPECT_EQ(target.area(false), 8.0);
}

// ----- Streams

/// What the archive says to a value that it is asked for.
template <class T>
std::string refusal(gmArchive& archive, T& value) {
    try {
        archive || value;
    } catch (const gmArchive::Errors& error) {
        return gm_Instantiator::className(typeid(error));
    }
    return "none";
}

template <class T>
void expectNothingReadAfterTruncation(const std::string& start) {
    std::stringstream stream(support::header + start, std::ios::in | std::ios::out | std::ios::ate | std::ios::binary);
    gmArchive archive(static_cast<std::istream&>(stream));
    T value{};
    EXPECT_EQ(refusal(archive, value), "gmArchive::Truncated");
    const auto read = stream.tellg();
    stream << std::string(200, '\1');
    unsigned char byte = 9;
    EXPECT_EQ(refusal(archive, byte), "gmArchive::Errors");
    EXPECT_EQ(refusal(archive, value), "gmArchive::Errors");
    EXPECT_EQ(byte, 9);
    EXPECT_EQ(value, T{});
    EXPECT_EQ(stream.tellg(), read);
}

TEST(ArchiveThatEndedOutsideAPass, ReadsNothingMoreWhenTheStreamGrows) {
    expectNothingReadAfterTruncation<long>("\1\1");
    expectNothingReadAfterTruncation<double>("\1\1\1\1\1\1\1");
    expectNothingReadAfterTruncation<unsigned char>("");
    expectNothingReadAfterTruncation<std::string>("\5");
}

/// Text in memory that seems to stand behind its end, so that what is left cannot be measured.
class BackwardStream : public std::stringbuf {
  public:
    explicit BackwardStream(const std::string& text) : std::stringbuf(text, std::ios_base::in) {}

  protected:
    pos_type seekoff(off_type, std::ios_base::seekdir from, std::ios_base::openmode) override {
        return from == std::ios_base::end ? 0 : 5;
    }
};

TEST(StreamThatEndsBeforeWhereItStands, YieldsAListAndIsNotTrustedWithMemory) {
    gmContour source(support::points("0 0, 4 0, 4 3"), true);
    BackwardStream buffer(support::header + contentOf(source));
    std::istream in(&buffer);
    gmArchive archive(in);
    EXPECT_LT(archive.roomFor(1000000000, 16), 1000000u);
    gmContour target;
    ASSERT_NO_THROW(archive || target);
    EXPECT_EQ(target.points(), source.points());
}

}  // namespace
