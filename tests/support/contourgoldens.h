// Archives of contours, regions and region sets that are kept as files.
#pragma once

#include <limits>
#include <utility>

#include "tests/support/golden.h"

namespace support {

constexpr unsigned long goldenLabel = 0xdeadbeef;

inline double goldenNaN() {
    const std::uint64_t bits = 0x7ff8000000000123;
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Numbers that are easily lost: -0, the smallest, NaN with its bits, infinity, and those that are not what they say.
inline std::vector<gmVector<2>> awkwardPoints() {
    return {
        {0.1, -0.0}, {5e-324, 1e300}, {goldenNaN(), -std::numeric_limits<double>::infinity()}, {1.0 / 3, -123456.789}};
}
inline std::vector<gmVector<2>> smallTriangle() {
    return {{0.1, 0.2}, {0.3, -0.7}, {1e-310, 2.5}};
}
inline std::vector<gmVector<2>> firstTwo(std::vector<gmVector<2>> points) {
    points.resize(2);
    return points;
}

/// A region with holes that setting them would refuse: archives are not that particular.
inline gmPtrHandle<gmRegion> goldenRegion(const gmContour& outline, long size,
                                          const std::vector<RegionCPtr>& holes = {}) {
    const gmPtrHandle<gmRegion> region(new gmRegion(outline));
    region->cachedVectorSize(size);
    const_cast<std::vector<RegionCPtr>&>(region->holes()) = holes;
    return region;
}

/// A copy that no handle needs to hold.
template <class T>
Object alone(const T& object) {
    return std::make_shared<T>(object);
}

inline Object goldenContour(const gmContour& contour, long size) {
    const auto copy = std::make_shared<gmContour>(contour);
    copy->cachedVectorSize(size);
    return copy;
}

inline Object goldenSet(const std::vector<RegionCPtr>& regions, long size) {
    const auto set = std::make_shared<gmRegionSet>(regions);
    set->cachedVectorSize(size);
    return set;
}

// ----- Contour

inline const char* const contour1 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
09 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72                      # gmContour
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
00                                              # open
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
07 00 00 00                                     # cachedVectorSize
)";

inline const char* const contour0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
09 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72                      # gmContour
00                                              # contour: version
00                                              # old base: version
00                                              # base: version
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
ab                                              # unused
09 00 00 00                                     # cachedVectorSize
00                                              # open
)";

// ----- Region

inline const char* const region1 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
00                                              # open
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
05 00 00 00                                     # cachedVectorSize
00                                              # holes: version
04 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
01 00 00 00                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
00 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2 again
00 00 00 00                                     # no object
03 00 00 00                                     # object 3
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
02 00 00 00                                     # label
01                                              # closed
00                                              # vertices: version
02 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
ff ff ff 7f                                     # cachedVectorSize
00                                              # holes: version
01 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2 again
)";

inline Object holedRegion() {
    const RegionCPtr hole = goldenRegion(gmContour(smallTriangle(), true, 1), 3);
    const RegionCPtr holed = goldenRegion(gmContour(firstTwo(smallTriangle()), true, 2), 2147483647, {hole});
    return alone(*goldenRegion(gmContour(awkwardPoints(), false, goldenLabel), 5, {hole, hole, nullptr, holed}));
}

inline const char* const region1Direct = R"(
4d 4f 4b 41 01                                  # archive, format 1
01                                              # region: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
00                                              # open
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
05 00 00 00                                     # cachedVectorSize
00                                              # holes: version
03 00 00 00                                     # holes: how many
01 00 00 00                                     # object 1
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
01 00 00 00                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
00 00 00 00                                     # holes: how many
01 00 00 00                                     # object 1 again
00 00 00 00                                     # no object
)";

inline Object regionOfOneHole() {
    const RegionCPtr hole = goldenRegion(gmContour(smallTriangle(), true, 1), 3);
    return alone(*goldenRegion(gmContour(awkwardPoints(), false, goldenLabel), 5, {hole, hole, nullptr}));
}

inline const char* const region0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
00                                              # region: version
00                                              # old base: version
00                                              # base: version
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
ff                                              # unused
09 00 00 00                                     # cachedVectorSize
)";

// ----- Region set

inline const char* const regionSet1 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
0b 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 53 65 74                # gmRegionSet
01                                              # set: version
00                                              # base: version
00                                              # regions: version
04 00 00 00                                     # regions: how many
02 00 00 00                                     # object 2
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
00 00 00 00                                     # holes: how many
00 00 00 00                                     # no object
02 00 00 00                                     # object 2 again
03 00 00 00                                     # object 3
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
04 00 00 00                                     # label
01                                              # closed
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
00 00 00 00                                     # cachedVectorSize
00                                              # holes: version
01 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2 again
0b 00 00 00                                     # cachedVectorSize
)";

inline Object setOfSharedRegions() {
    const RegionCPtr one = goldenRegion(gmContour(smallTriangle(), true, goldenLabel), 3);
    const RegionCPtr two = goldenRegion(gmContour(awkwardPoints(), true, 4), 0, {one});
    return goldenSet({one, nullptr, one, two}, 11);
}

inline const char* const regionSet0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
0b 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 53 65 74                # gmRegionSet
00                                              # set: version
00                                              # base: version
00                                              # regions: version
04 00 00 00                                     # regions: how many
02 00 00 00                                     # object 2
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
00                                              # region: version
00                                              # old base: version
00                                              # base: version
00                                              # vertices: version
04 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # 5e-324, 1e+300
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
55 55 55 55 55 55 d5 3f c9 76 be 9f 0c 24 fe c0 # 0.3333333333333333, -123456.789
01                                              # unused
09 00 00 00                                     # cachedVectorSize
03 00 00 00                                     # object 3
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
00                                              # region: version
00                                              # old base: version
00                                              # base: version
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
02                                              # unused
04 00 00 00                                     # cachedVectorSize
04 00 00 00                                     # object 4
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
00 00 00 00                                     # holes: how many
03 00 00 00                                     # object 3 again
)";

inline Object setOfOldRegions() {
    const RegionCPtr one = goldenRegion(gmContour(awkwardPoints(), false), 9);
    const RegionCPtr two = goldenRegion(gmContour(smallTriangle(), false), 4);
    const RegionCPtr three = goldenRegion(gmContour(smallTriangle(), true, goldenLabel), 3);
    return goldenSet({one, two, three, two}, 3);
}

inline std::vector<Golden> contourGoldens() {
    return {
        {"gmContour.1", contour1, [] { return goldenContour(gmContour(awkwardPoints(), false, goldenLabel), 7); }},
        {"gmContour.0", contour0, [] { return goldenContour(gmContour(awkwardPoints(), false), 9); }, nullptr, false},
        {"gmRegion.1", region1, holedRegion},
        {"gmRegion.1.direct", region1Direct, regionOfOneHole, [] { return std::make_shared<gmRegion>(); }},
        {"gmRegion.0", region0, [] { return alone(*goldenRegion(gmContour(awkwardPoints(), false), 9)); }, nullptr,
         false},
        {"gmRegionSet.1", regionSet1, setOfSharedRegions},
        {"gmRegionSet.0", regionSet0, setOfOldRegions, nullptr, false},
    };
}

}  // namespace support
