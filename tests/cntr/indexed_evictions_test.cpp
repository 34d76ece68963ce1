// What shapes forget when their remembered boxes and vertices are too many is drawn at random, from one generator a
// thread, in the order of the questions. Whoever answers without looking into a cache, or looks once more, changes what
// is drawn from then on: of outlines and sets large enough for structures of their own, against plain maps.
#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include "cntr/detail/randomindex.h"
#include "tests/reference/keyedcache.h"
#include "tests/reference/regionset.h"
#include "tests/support/hardprobes.h"
#include "tests/support/questions.h"
#include "tests/support/setgenerators.h"
#include "tests/support/testcontour.h"

using reference::Region;
using reference::RememberingOutline;
using support::HardProbes;
using support::HardShape;
using support::Points;
using support::Random;
using support::same;
using support::TestContour;

namespace {

constexpr int shifts = 8;

/// The shift by `x`, and by `last` a stretch that remembered boxes are not told apart by.
gmXform<2> shift(int x, double last = 1.0) {
    return gmXform<2>(gmMatrix<2>(1, 0, 0, last), {static_cast<double>(x), 0});
}

/// Which shifts the contour remembers the box of: those it answers for another stretch as it did for none.
std::vector<int> rememberedShifts(const gmContour& contour) {
    TestContour copy(contour);
    copy.cachedVectorSize(1000000);
    std::vector<int> result;
    for (int x = 0; x < shifts; x++) {
        const gmRect stretched = reference::encloseRect(support::outlineOf(contour), shift(x, 7.0));
        if (!same(copy.encloseRect(shift(x, 7.0)), stretched))
            result.push_back(x);
    }
    return result;
}

std::vector<int> knownShifts(const RememberingOutline& plain) {
    std::vector<int> result;
    for (int x = 0; x < shifts; x++)
        if (plain.rects.find(shift(x)))
            result.push_back(x);
    return result;
}

/// Runs the action on a thread of its own, where the random cache index starts over, with a plain generator that does
/// as well.
void onFreshThread(const std::function<void(gmRandomUniform&)>& action) {
    std::thread([&] {
        gmRandomUniform generator(1);
        action(generator);
        EXPECT_EQ(detail::randomCacheIndex(1000000), gfIFloor(generator.next(0.0, 1000000.0)));
    }).join();
}

/// Around (20, 30), so that no two stretches have the same box.
HardShape shapeOff(Random& random, int n) {
    HardShape shape{{support::hardJittered(random, n, {20, 30}), random.chance(0.7)}, {20, 30}};
    return shape;
}

TEST(IndexedEvictions, OfContoursAreThoseOfThePlainMaps) {
    for (std::uint32_t seed = 0; seed < 20; seed++)
        onFreshThread([seed](gmRandomUniform& generator) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Random random(seed);
            const HardShape shape = shapeOff(random, random.oneOf<int>({8, 40, 100, 600}));
            const TestContour contour(shape.outline);
            RememberingOutline plain(shape.outline, generator);
            HardProbes probes(shape, random);
            const reference::EdgeTable table = reference::edgeTable(shape.outline);
            for (int i = 0; i < 120; i++) {
                const gmVector<2> p = probes.anywhere(0.2);
                switch (random.integer(0, 5)) {
                    case 0:
                    case 1: {
                        const gmXform<2> xform = shift(random.integer(0, shifts - 1));
                        EXPECT_TRUE(same(contour.encloseRect(xform), plain.encloseRect(xform)));
                        break;
                    }
                    case 2: {
                        const gmRadian angle(random.integer(0, 9));
                        EXPECT_EQ(contour.extremalVertexIndex(angle), plain.extremalVertexIndex(angle));
                        break;
                    }
                    case 3: {
                        const gmLineSeg seg(p, probes.anywhere(0.2));
                        const gmRect box = plain.encloseRect(gmXform<2>());
                        Points positions;
                        for (const auto& crossing : reference::crossings(table, box, seg, true))
                            positions.push_back(crossing.position);
                        EXPECT_TRUE(same(contour.intersections(seg, true), positions));
                        break;
                    }
                    case 4: {
                        // One question an edge of the other, and none of one that has no edge.
                        const reference::Outline other{{p, probes.anywhere(0.2)}, random.chance(0.5)};
                        plain.encloseRect(gmXform<2>());
                        EXPECT_TRUE(same(contour.intersections(TestContour(other)),
                                         reference::intersections(shape.outline, other)));
                        contour.intersections(TestContour({p}, false));
                        break;
                    }
                    default:  // ask for no box
                        EXPECT_TRUE(
                            same(contour.closestPoint(p, false), reference::closestPoint(shape.outline, p, false)));
                        EXPECT_EQ(contour.closestVertexIndex(p), reference::closestVertexIndex(shape.outline, p));
                        contour.vertexIndex(p, 1.0);
                        contour.encloseCircle(gmContourDefs::eMaxVertexPair);
                        contour.lineSegs();
                }
                ASSERT_EQ(rememberedShifts(contour), knownShifts(plain)) << "step " << i;
            }
            contour.isSelfIntersecting();  // its edges ask for the box, the first time
            plain.encloseRect(gmXform<2>());
            EXPECT_EQ(rememberedShifts(contour), knownShifts(plain));
            contour.encloseRect(shift(shifts));
            plain.encloseRect(shift(shifts));
            contour.isSelfIntersecting();
            EXPECT_EQ(rememberedShifts(contour), knownShifts(plain));
        });
}

/// With room for one box each question forgets the last: also one whose segment is nowhere near the outline.
TEST(IndexedEvictions, OfAnUnaskedContourFollowTheFirstQuestionForItsBox) {
    onFreshThread([](gmRandomUniform& generator) {
        Random random(1);
        const HardShape shape = shapeOff(random, 200);
        TestContour contour(shape.outline);
        contour.cachedVectorSize(0);
        RememberingOutline plain(shape.outline, generator);
        plain.limit = 0;
        for (int i = 0; i < 20; i++) {
            contour.encloseRect(shift(1));
            plain.encloseRect(shift(1));
            contour.intersections(gmLineSeg({-900, 0}, {-901, 1}), false);  // beside the box
            plain.encloseRect(gmXform<2>());
            EXPECT_EQ(rememberedShifts(contour), knownShifts(plain)) << i;
        }
    });
}

/// A set's regions and their holes, as far as what they remember of boxes goes.
struct RememberingRegion {
    RememberingRegion(const Region& plain, gmRandomUniform& generator)
        : region(plain), outline({plain.points, true}, generator) {
        for (const Region& hole : plain.holes)
            holes.emplace_back(hole, generator);
    }

    bool inside(const gmVector<2>& p, bool considerHoles) {
        outline.encloseRect(gmXform<2>());
        if (!reference::inside(region, p, false))
            return false;
        if (considerHoles)
            for (RememberingRegion& hole : holes)
                if (hole.inside(p, true))
                    return false;
        return true;
    }

    Region region;
    RememberingOutline outline;
    std::list<RememberingRegion> holes;
};

reference::RegionSet rowOfRegions(Random& random, int count) {
    reference::RegionSet plain;
    for (int i = 0; i < count; i++) {
        const gmVector<2> place(20 + i % 8 * 6, 30 + i / 8 * 6);
        const int n = random.oneOf<int>({6, 6, 40});
        Region region{support::placed(support::hardJittered(random, n, {}), 0.07, place), {}};
        for (int k = random.integer(0, 2); k > 0; k--)
            region.holes.push_back({support::placed(region.points, 0.3, place * 0.7 + random.point(-1, 1)), {}});
        plain.push_back(std::make_shared<Region>(region));
    }
    return plain;
}

TEST(IndexedEvictions, OfTheRegionsOfASetAreThoseOfThePlainMaps) {
    for (std::uint32_t seed = 0; seed < 16; seed++)
        onFreshThread([seed](gmRandomUniform& generator) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Random random(seed);
            const reference::RegionSet plain = rowOfRegions(random, random.oneOf<int>({2, 9, 40}));
            const support::Fresh fresh(plain);
            std::list<RememberingRegion> regions;
            for (const auto& region : plain)
                regions.emplace_back(*region, generator);
            const long limit = random.integer(0, 2);
            for (const auto& handle : fresh.handles)
                handle->cachedVectorSize(limit);
            for (auto& region : regions)
                region.outline.limit = limit;
            gmRegionSet set(fresh.handles);
            reference::KeyedCache<gmXform<2>, gmRect, reference::FirstFiveLess> known;

            for (int i = 0; i < 60; i++) {
                const gmVector<2> p = random.point(15, 85);
                const bool holes = random.chance(0.5);
                switch (random.integer(0, 3)) {
                    case 0: {
                        const gmXform<2> xform = shift(random.integer(0, shifts - 1));
                        gmRect expected;
                        if (const gmRect* box = known.find(xform)) {
                            expected = *box;
                        } else {
                            for (auto& region : regions)
                                expected = expected.enclose(region.outline.encloseRect(xform));
                            known.insert(xform, expected, set.cachedVectorSize(), generator);
                        }
                        EXPECT_TRUE(same(set.encloseRect(xform), expected));
                        break;
                    }
                    case 1: {
                        bool expected = false;
                        for (auto& region : regions)
                            if ((expected = region.inside(p, holes)))
                                break;
                        EXPECT_EQ(set.inside(p, holes), expected) << support::text(p);
                        break;
                    }
                    case 2: {
                        const bool zero = random.chance(0.5);
                        if (zero)
                            for (auto& region : regions)
                                region.inside(p, holes);
                        EXPECT_TRUE(same(set.distToPoint(p, false, holes, zero),
                                         reference::distToPoint(plain, p, false, holes, zero)));
                        break;
                    }
                    default: {
                        // One of the regions is asked by somebody else, and forgets what the set has asked of it.
                        const auto which = random.integer(0, static_cast<int>(regions.size()) - 1);
                        const gmXform<2> xform = shift(random.integer(0, shifts - 1));
                        EXPECT_TRUE(same(fresh.handles[static_cast<std::size_t>(which)]->encloseRect(xform),
                                         std::next(regions.begin(), which)->outline.encloseRect(xform)));
                    }
                }
                std::size_t k = 0;
                for (auto& region : regions) {
                    ASSERT_EQ(rememberedShifts(*fresh.handles[k]), knownShifts(region.outline))
                        << "step " << i << ", region " << k;
                    k++;
                }
            }
        });
}

}  // namespace
