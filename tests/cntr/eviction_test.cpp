// Which transforms and angles a contour remembers, and which it forgets: against plain maps, entry by entry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "cntr/detail/randomindex.h"
#include "tests/reference/intersections.h"
#include "tests/reference/keyedcache.h"
#include "tests/support/bits.h"
#include "tests/support/random.h"
#include "tests/support/testcontour.h"

using reference::RememberingOutline;
using support::Random;
using support::same;
using support::TestContour;
using testing::ElementsAre;

namespace {

const double nan = std::nan("");

/// Runs the action on a thread of its own, where the random cache index starts over.
void onFreshThread(const std::function<void()>& action) {
    std::thread(action).join();
}

gmXform<2> shift(double x) {
    return gmXform<2>(gmMatrix<2>(1, 0, 0, 1), {x, 0});
}

reference::Outline diamond() {
    return {support::points("4 0, 0 4, -4 0, 0 -4, 3 3"), true};
}

/// A copy that remembers the same and takes any number of entries more, but has every vertex elsewhere and under
/// another number: what it does not answer as a new contour of its vertices does, it remembers.
TestContour displacedCopy(const TestContour& contour) {
    TestContour copy(contour);
    copy.cachedVectorSize(1000000);
    const std::size_t n = contour.points().size();
    for (std::size_t i = 0; i < n; i++)
        copy.moveSecretly(i, contour.points()[(i + 1) % n] + gmVector<2>(1000, 0));
    return copy;
}

/// Asked for by another transform that shares its place: the box of the identity may be known from elsewhere.
bool remembers(const TestContour& contour, const gmXform<2>& xform) {
    const gmMatrix<2> m = xform.matrix();
    const gmXform<2> sharing(gmMatrix<2>(m(0, 0), m(0, 1), m(1, 0), m(1, 1) + 1), xform.translation());
    const TestContour copy = displacedCopy(contour);
    return !same(copy.encloseRect(sharing), TestContour(copy.points(), true).encloseRect(sharing));
}

bool remembers(const TestContour& contour, const gmRadian& angle) {
    const TestContour copy = displacedCopy(contour);
    return copy.extremalVertexIndex(angle) != TestContour(copy.points(), true).extremalVertexIndex(angle);
}

/// Which of the shifts 0, 1, ... 19 the contour remembers.
std::vector<int> rememberedShifts(const TestContour& contour) {
    std::vector<int> result;
    for (int x = 0; x < 20; x++)
        if (remembers(contour, shift(x)))
            result.push_back(x);
    return result;
}

std::vector<int> rememberedAngles(const TestContour& contour) {
    std::vector<int> result;
    for (int angle = 0; angle < 20; angle++)
        if (remembers(contour, gmRadian(angle)))
            result.push_back(angle);
    return result;
}

/// The same of the plain maps.
template <class Cache, class Key>
std::vector<int> known(const Cache& cache, Key key) {
    std::vector<int> result;
    for (int i = 0; i < 20; i++)
        if (cache.find(key(i)))
            result.push_back(i);
    return result;
}

TEST(RandomCacheIndex, DrawsFromAGeneratorWithSeedOneOnEveryThread) {
    for (int thread = 0; thread < 2; thread++)
        onFreshThread([] {
            gmRandomUniform plain(1);
            for (long size = 1; size < 200; size++) {
                const long index = detail::randomCacheIndex(size);
                EXPECT_EQ(index, gfIFloor(plain.next(0.0, static_cast<double>(size))));
                EXPECT_GE(index, 0);
                EXPECT_LT(index, size);
            }
        });
}

TEST(RandomCacheIndex, GoesOnWhereTheThreadLeftOff) {
    onFreshThread([] {
        std::vector<long> first, second, plainFirst, plainSecond;
        gmRandomUniform plain(1);
        for (auto* drawn : {&first, &second})
            for (int i = 0; i < 10; i++)
                drawn->push_back(detail::randomCacheIndex(1000));
        for (auto* drawn : {&plainFirst, &plainSecond})
            for (int i = 0; i < 10; i++)
                drawn->push_back(gfIFloor(plain.next(0.0, 1000.0)));
        EXPECT_EQ(first, plainFirst);
        EXPECT_EQ(second, plainSecond);
        EXPECT_NE(first, second);
    });
}

TEST(ContourEncloseRect, RemembersOneTransformMoreThanTheLimit) {
    const TestContour contour(diamond());
    for (int x = 0; x < 4; x++)
        contour.encloseRect(shift(x));
    EXPECT_THAT(rememberedShifts(contour), ElementsAre(0, 1, 2, 3));
}

TEST(ContourExtremalVertex, RemembersOneAngleMoreThanTheLimit) {
    const TestContour contour(diamond());
    for (int angle = 0; angle < 4; angle++)
        contour.extremalVertexIndex(gmRadian(angle));
    EXPECT_THAT(rememberedAngles(contour), ElementsAre(0, 1, 2, 3));
}

TEST(ContourEncloseRect, ThenReplacesOneAtRandom) {
    onFreshThread([] {
        const TestContour contour(diamond());
        gmRandomUniform plain(1);
        for (int x = 0; x < 5; x++)
            contour.encloseRect(shift(x));
        std::vector<int> expected = {0, 1, 2, 3};
        expected.erase(expected.begin() + gfIFloor(plain.next(0.0, 4.0)));
        expected.push_back(4);
        EXPECT_EQ(rememberedShifts(contour), expected);
    });
}

TEST(ContourEncloseRect, CountsTheEntryToReplaceInKeyOrder) {
    onFreshThread([] {
        const TestContour contour(diamond());
        gmRandomUniform plain(1);
        for (const int x : {9, 2, 7, 4, 5})
            contour.encloseRect(shift(x));
        std::vector<int> expected = {2, 4, 7, 9};
        expected[static_cast<std::size_t>(gfIFloor(plain.next(0.0, 4.0)))] = 5;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(rememberedShifts(contour), expected);
    });
}

TEST(ContourEncloseRect, WithALimitOfZeroRemembersTheLastOnly) {
    TestContour contour(diamond());
    contour.cachedVectorSize(0);
    for (const int x : {3, 1, 2}) {
        contour.encloseRect(shift(x));
        EXPECT_THAT(rememberedShifts(contour), ElementsAre(x));
    }
}

TEST(ContourExtremalVertex, WithALimitOfZeroRemembersTheLastOnly) {
    TestContour contour(diamond());
    contour.cachedVectorSize(0);
    for (const int angle : {3, 1, 2}) {
        contour.extremalVertexIndex(gmRadian(angle));
        EXPECT_THAT(rememberedAngles(contour), ElementsAre(angle));
    }
}

TEST(ContourEncloseRect, ForgetsNothingWhenTheLimitIsLowered) {
    TestContour contour(diamond());
    contour.cachedVectorSize(5);
    for (int x = 0; x < 6; x++)
        contour.encloseRect(shift(x));
    contour.cachedVectorSize(1);
    EXPECT_THAT(rememberedShifts(contour), ElementsAre(0, 1, 2, 3, 4, 5));
    contour.encloseRect(shift(6));
    EXPECT_EQ(rememberedShifts(contour).size(), 6U);
    contour.cachedVectorSize(6);
    contour.encloseRect(shift(7));
    EXPECT_EQ(rememberedShifts(contour).size(), 7U);
}

TEST(ContourEncloseRect, DoesNotRememberTransformsThatAreNotNumbers) {
    onFreshThread([] {
        const TestContour contour(diamond());
        for (int x = 0; x < 4; x++)
            contour.encloseRect(shift(x));
        for (std::size_t value = 0; value < 6; value++) {
            std::vector<double> v = {0, 0, 1, 0, 0, 1};
            v[value] = nan;
            for (int ask = 0; ask < 2; ask++)
                EXPECT_TRUE(
                    contour.encloseRect(gmXform<2>(gmMatrix<2>(v[2], v[3], v[4], v[5]), {v[0], v[1]})).isEmpty())
                    << value;
        }
        EXPECT_THAT(rememberedShifts(contour), ElementsAre(0, 1, 2, 3));
        EXPECT_EQ(contour.encloseRect(shift(0)).lower(), gmVector<2>(-4, -4));
        gmRandomUniform plain(1);
        EXPECT_EQ(detail::randomCacheIndex(1000), gfIFloor(plain.next(0.0, 1000.0))) << "nothing was drawn";
    });
}

TEST(ContourExtremalVertex, DoesNotRememberAnglesThatAreNotNumbers) {
    onFreshThread([] {
        const TestContour contour(diamond());
        for (int angle = 0; angle < 4; angle++)
            contour.extremalVertexIndex(gmRadian(angle));
        for (int ask = 0; ask < 3; ask++)
            EXPECT_EQ(contour.extremalVertexIndex(gmRadian(nan)), -1);
        EXPECT_THAT(rememberedAngles(contour), ElementsAre(0, 1, 2, 3));
        EXPECT_EQ(contour.extremalVertexIndex(gmRadian(0)), 0);
        gmRandomUniform plain(1);
        EXPECT_EQ(detail::randomCacheIndex(1000), gfIFloor(plain.next(0.0, 1000.0))) << "nothing was drawn";
    });
}

TEST(ContourExtremalVertex, RemembersAnglesByTheirExactValue) {
    const TestContour contour(diamond());
    contour.extremalVertexIndex(gmRadian(1.0));
    EXPECT_TRUE(remembers(contour, gmRadian(1.0)));
    EXPECT_FALSE(remembers(contour, gmRadian(std::nextafter(1.0, 2.0))));
    EXPECT_FALSE(remembers(contour, gmRadian(1.0 + 6.283185307179586)));
}

TEST(ContourExtremalVertex, RemembersThatThereWasNone) {
    TestContour contour(support::points("nan nan"), true);
    EXPECT_EQ(contour.extremalVertexIndex(gmRadian(1.0)), -1);
    contour.moveSecretly(0, {1, 1});
    EXPECT_EQ(contour.extremalVertexIndex(gmRadian(1.0)), -1);
    EXPECT_EQ(contour.extremalVertexIndex(gmRadian(2.0)), 0);
}

TEST(ContourIntersections, RememberTheRectangleOfTheIdentity) {
    const TestContour contour(diamond());
    contour.intersections(gmLineSeg({90, 90}, {91, 91}), true);
    EXPECT_THAT(rememberedShifts(contour), ElementsAre(0));
    const TestContour other(diamond());
    other.isSelfIntersecting();
    EXPECT_THAT(rememberedShifts(other), ElementsAre(0));
    const TestContour point(support::points("1 1, 1 1"), true);
    point.isSelfIntersecting();
    EXPECT_THAT(rememberedShifts(point), testing::IsEmpty()) << "no edge, no question";
}

TEST(ContourEviction, IsReproducibleOnEveryThread) {
    const auto run = [] {
        std::vector<int> result;
        onFreshThread([&] {
            const TestContour contour(diamond());
            for (int x = 0; x < 15; x++)
                contour.encloseRect(shift(x));
            result = rememberedShifts(contour);
        });
        return result;
    };
    EXPECT_EQ(run(), run());
}

/// One random step, taken by the contour and by the plain maps alike.
void step(Random& random, TestContour& contour, RememberingOutline& plain) {
    switch (random.integer(0, 9)) {
        case 0:
        case 1:
        case 2: {
            const gmXform<2> xform = shift(random.integer(0, 19));
            EXPECT_TRUE(same(contour.encloseRect(xform), plain.encloseRect(xform)));
            break;
        }
        case 3:
        case 4:
        case 5: {
            const gmRadian angle(random.integer(0, 19));
            EXPECT_EQ(contour.extremalVertexIndex(angle), plain.extremalVertexIndex(angle));
            break;
        }
        case 6: {
            const double last = random.integer(1, 3);
            const gmXform<2> xform(gmMatrix<2>(2, 0, 0, last), {random.chance(0.2) ? nan : 1.0, 0});
            EXPECT_TRUE(same(contour.encloseRect(xform), plain.encloseRect(xform)));
            EXPECT_EQ(contour.extremalVertexIndex(gmRadian(nan)), plain.extremalVertexIndex(gmRadian(nan)));
            break;
        }
        case 7: {
            const gmLineSeg seg({-9, 1}, random.gridPoint(-9, 9));
            plain.encloseRect(gmXform<2>());
            EXPECT_TRUE(same(contour.intersections(seg, true), reference::intersections(plain.outline(), seg, true)));
            break;
        }
        case 8:
            plain.limit = random.integer(0, 6);
            contour.cachedVectorSize(plain.limit);
            break;
        default:
            if (random.chance(0.2)) {
                const reference::Outline changed{{random.gridPoint(-9, 9), {1, 2}, random.gridPoint(-9, 9)}, true};
                contour.points(changed.points);
                plain.change(changed);
            } else {
                contour = TestContour(contour);
                contour.label(contour.label() + 1);
            }
    }
}

TEST(ContourEviction, FollowsThePlainMapsThroughRandomUse) {
    for (std::uint32_t seed = 0; seed < 12; seed++)
        onFreshThread([seed] {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Random random(seed);
            gmRandomUniform generator(1);
            // Two contours draw from the one generator of their thread.
            TestContour contours[] = {TestContour(diamond()), TestContour(diamond())};
            RememberingOutline plain[] = {{diamond(), generator}, {diamond(), generator}};
            for (int i = 0; i < 150; i++) {
                const int which = random.integer(0, 1);
                step(random, contours[which], plain[which]);
                if (i % 10 != 0)
                    continue;
                ASSERT_EQ(rememberedShifts(contours[which]), known(plain[which].rects, [](int x) { return shift(x); }))
                    << "step " << i;
                ASSERT_EQ(rememberedAngles(contours[which]),
                          known(plain[which].angles, [](int a) { return double(a); }))
                    << "step " << i;
            }
            EXPECT_EQ(detail::randomCacheIndex(1000000), gfIFloor(generator.next(0.0, 1000000.0)));
        });
}

}  // namespace
