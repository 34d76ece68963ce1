// Archives of the shapes that carry edge points, and of their transforms, that are kept as files.
#pragma once

#include "tests/support/contourgoldens.h"

namespace support {

inline std::vector<gmEdgelet> awkwardEdgelets() {
    return {{{0.1, -0.0}, 0xbeef, gmAngle8(0xab)},
            {{1e300, 5e-324}, 0, gmAngle8(0)},
            {{-2.5, 1.0 / 3}, 65535, gmAngle8(255)}};
}
inline std::vector<gmVector<2>> edgePoints() {
    return {{0.1, 0.2}, {-0.0, 1e-310}, {7, -1.0 / 3}};
}

/// Puts vertices where no transform and no data led: loading is to leave them there.
inline void putPoints(gmContour& contour, const std::vector<gmVector<2>>& points) {
    const_cast<std::vector<gmVector<2>>&>(contour.points()) = points;
}

inline Object goldenEdgeContour(const gmPtrHandle_const<gm2XformBase>& xform, bool closed) {
    const auto contour = std::make_shared<gmContourT<gmEdgelet>>(awkwardEdgelets(), xform);
    contour->isClosed(closed);
    contour->label(goldenLabel);
    contour->cachedVectorSize(4);
    putPoints(*contour, edgePoints());
    return contour;
}

/// The data of an old contour, which came without a transform.
class OldEdgeContour : public gmContourT<gmEdgelet> {
  public:
    OldEdgeContour() {
        try {
            data(awkwardEdgelets());
        } catch (const gmBadPointer&) {
            // The data are there all the same.
        }
        cachedVectorSize(9);
        putPoints(*this, edgePoints());
    }
};

using EdgeRegionPtr = gmPtrHandle<gmRegionT<gmEdgelet>>;

/// An edge region as it comes back, without data.
inline EdgeRegionPtr goldenEdgeRegion(const gmContour& outline, long size, const std::vector<RegionCPtr>& holes = {}) {
    const EdgeRegionPtr region(new gmRegionT<gmEdgelet>);
    static_cast<gmContour&>(*region) = outline;
    region->cachedVectorSize(size);
    const_cast<std::vector<RegionCPtr>&>(region->gmRegion::holes()) = holes;
    return region;
}

// ----- Contour with edge points

inline const char* const contourT1 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
15 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmContourT<gmEdgelet>
01                                              # edge contour: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
00                                              # open
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
00 00 00 00 00 00 00 80 2b e6 70 8b 68 12 00 00 # -0, 1e-310
00 00 00 00 00 00 1c 40 55 55 55 55 55 55 d5 bf # 7, -0.3333333333333333
04 00 00 00                                     # cachedVectorSize
00                                              # edge points: version
03 00 00 00                                     # edge points: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 ef be ab # 0.1, -0, magnitude 48879, angle 171
9c 75 00 88 3c e4 37 7e 01 00 00 00 00 00 00 00 00 00 00 # 1e+300, 5e-324, magnitude 0, angle 0
00 00 00 00 00 00 04 c0 55 55 55 55 55 55 d5 3f ff ff ff # -2.5, 0.3333333333333333, magnitude 65535, angle 255
02 00 00 00                                     # object 2
0e 00 00 00                                     # of the class
67 6d 32 58 66 6f 72 6d 4c 69 6e 65 61 72       # gm2XformLinear
00                                              # transform: version
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 08 c0 # translation
00 00 00 00 00 00 00 40 00 00 00 00 00 00 e0 3f # matrix, row 0
00 00 00 00 00 00 d0 bf 55 55 55 55 55 55 d5 3f # matrix, row 1
)";

inline Object edgeContourUnderAffine() {
    const gmXform<2> xform(gmMatrix<2>(2, 0.5, -0.25, 1.0 / 3), {0.1, -3});
    return goldenEdgeContour(gmPtrHandle<gm2XformBase>(new gm2XformLinear(xform)), false);
}

inline const char* const contourT1Direct = R"(
4d 4f 4b 41 01                                  # archive, format 1
01                                              # edge contour: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
00 00 00 00 00 00 00 80 2b e6 70 8b 68 12 00 00 # -0, 1e-310
00 00 00 00 00 00 1c 40 55 55 55 55 55 55 d5 bf # 7, -0.3333333333333333
04 00 00 00                                     # cachedVectorSize
00                                              # edge points: version
03 00 00 00                                     # edge points: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 ef be ab # 0.1, -0, magnitude 48879, angle 171
9c 75 00 88 3c e4 37 7e 01 00 00 00 00 00 00 00 00 00 00 # 1e+300, 5e-324, magnitude 0, angle 0
00 00 00 00 00 00 04 c0 55 55 55 55 55 55 d5 3f ff ff ff # -2.5, 0.3333333333333333, magnitude 65535, angle 255
01 00 00 00                                     # object 1
08 00 00 00                                     # of the class
67 6d 32 52 69 67 69 64                         # gm2Rigid
00                                              # transform: version
66 66 66 66 66 a6 40 40                         # degrees
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 00 80 # translation
)";

inline Object edgeContourUnderRigid() {
    return goldenEdgeContour(gmPtrHandle<gm2XformBase>(new gm2Rigid(gmDegree(33.3), {1e-310, -0.0})), true);
}

inline const char* const contourT0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
15 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmContourT<gmEdgelet>
00                                              # edge contour: version
00                                              # contour: version
00                                              # old base: version
00                                              # base: version
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
00 00 00 00 00 00 00 80 2b e6 70 8b 68 12 00 00 # -0, 1e-310
00 00 00 00 00 00 1c 40 55 55 55 55 55 55 d5 bf # 7, -0.3333333333333333
80                                              # unused
09 00 00 00                                     # cachedVectorSize
01                                              # closed
00                                              # edge points: version
03 00 00 00                                     # edge points: how many
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 ef be ab # 0.1, -0, magnitude 48879, angle 171
9c 75 00 88 3c e4 37 7e 01 00 00 00 00 00 00 00 00 00 00 # 1e+300, 5e-324, magnitude 0, angle 0
00 00 00 00 00 00 04 c0 55 55 55 55 55 55 d5 3f ff ff ff # -2.5, 0.3333333333333333, magnitude 65535, angle 255
)";

inline Object edgeContourWithoutTransform() {
    return std::make_shared<gmContourT<gmEdgelet>>(OldEdgeContour());
}

// ----- Region with edge points

inline const char* const regionT0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
14 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmRegionT<gmEdgelet>
00                                              # edge region: version
01                                              # region: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
00 00 00 00 00 00 00 80 2b e6 70 8b 68 12 00 00 # -0, 1e-310
00 00 00 00 00 00 1c 40 55 55 55 55 55 55 d5 bf # 7, -0.3333333333333333
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
03 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2
14 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmRegionT<gmEdgelet>
00                                              # edge region: version
01                                              # region: version
01                                              # contour: version
00                                              # base: version
00 00 00 00                                     # label
01                                              # closed
00                                              # vertices: version
02 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
00 00 00 00 00 00 00 80 2b e6 70 8b 68 12 00 00 # -0, 1e-310
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
00 00 00 00                                     # holes: how many
03 00 00 00                                     # object 3
08 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e                         # gmRegion
01                                              # region: version
01                                              # contour: version
00                                              # base: version
03 00 00 00                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
01 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2 again
00 00 00 00                                     # no object
)";

inline Object edgeRegionOfTwoHoles() {
    const EdgeRegionPtr inner = goldenEdgeRegion(gmContour(firstTwo(edgePoints()), true), 3);
    const RegionCPtr hole = goldenRegion(gmContour(smallTriangle(), true, 3), 3, {inner});
    return alone(*goldenEdgeRegion(gmContour(edgePoints(), true, goldenLabel), 3, {inner, hole, nullptr}));
}

// ----- Region set with edge points

inline const char* const regionSetT0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
17 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 53 65 74 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmRegionSetT<gmEdgelet>
00                                              # edge set: version
01                                              # set: version
00                                              # base: version
00                                              # regions: version
04 00 00 00                                     # regions: how many
02 00 00 00                                     # object 2
14 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmRegionT<gmEdgelet>
00                                              # edge region: version
01                                              # region: version
01                                              # contour: version
00                                              # base: version
ef be ad de                                     # label
01                                              # closed
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
00 00 00 00 00 00 00 80 2b e6 70 8b 68 12 00 00 # -0, 1e-310
00 00 00 00 00 00 1c 40 55 55 55 55 55 55 d5 bf # 7, -0.3333333333333333
03 00 00 00                                     # cachedVectorSize
00                                              # holes: version
00 00 00 00                                     # holes: how many
00 00 00 00                                     # no object
03 00 00 00                                     # object 3
14 00 00 00                                     # of the class
67 6d 52 65 67 69 6f 6e 54 3c 67 6d 45 64 67 65 6c 65 74 3e # gmRegionT<gmEdgelet>
00                                              # edge region: version
01                                              # region: version
01                                              # contour: version
00                                              # base: version
01 00 00 00                                     # label
00                                              # open
00                                              # vertices: version
03 00 00 00                                     # vertices: how many
9a 99 99 99 99 99 b9 3f 9a 99 99 99 99 99 c9 3f # 0.1, 0.2
33 33 33 33 33 33 d3 3f 66 66 66 66 66 66 e6 bf # 0.3, -0.7
2b e6 70 8b 68 12 00 00 00 00 00 00 00 00 04 40 # 1e-310, 2.5
06 00 00 00                                     # cachedVectorSize
00                                              # holes: version
01 00 00 00                                     # holes: how many
02 00 00 00                                     # object 2 again
02 00 00 00                                     # object 2 again
0c 00 00 00                                     # cachedVectorSize
00                                              # edge regions: version
04 00 00 00                                     # edge regions: how many
02 00 00 00                                     # object 2 again
00 00 00 00                                     # no object
03 00 00 00                                     # object 3 again
02 00 00 00                                     # object 2 again
)";

inline Object edgeSetOfSharedRegions() {
    const EdgeRegionPtr one = goldenEdgeRegion(gmContour(edgePoints(), true, goldenLabel), 3);
    const EdgeRegionPtr two = goldenEdgeRegion(gmContour(smallTriangle(), false, 1), 6, {one});
    const auto set = std::make_shared<gmRegionSetT<gmEdgelet>>(std::vector<EdgeRegionPtr>{one, nullptr, two, one});
    set->cachedVectorSize(12);
    return set;
}

// ----- Transforms

inline const char* const xformLinear0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
0e 00 00 00                                     # of the class
67 6d 32 58 66 6f 72 6d 4c 69 6e 65 61 72       # gm2XformLinear
00                                              # transform: version
00 00 00 00 00 00 00 80 9c 75 00 88 3c e4 37 7e # translation
9a 99 99 99 99 99 b9 3f 23 01 00 00 00 00 f8 7f # matrix, row 0
00 00 00 00 00 00 f0 7f 55 55 55 55 55 55 d5 bf # matrix, row 1
)";

inline const char* const rigid0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
08 00 00 00                                     # of the class
67 6d 32 52 69 67 69 64                         # gm2Rigid
00                                              # transform: version
cd cc cc cc cc 80 86 c0                         # degrees
55 55 55 55 55 55 d5 3f 01 00 00 00 00 00 00 00 # translation
)";

inline Object awkwardXform() {
    const double infinity = std::numeric_limits<double>::infinity();
    return std::make_shared<gm2XformLinear>(
        gmXform<2>(gmMatrix<2>(0.1, goldenNaN(), infinity, -1.0 / 3), {-0.0, 1e300}));
}

inline std::vector<Golden> edgeGoldens() {
    return {
        {"gmContourT.1", contourT1, edgeContourUnderAffine},
        {"gmContourT.1.direct", contourT1Direct, edgeContourUnderRigid,
         [] { return std::make_shared<gmContourT<gmEdgelet>>(); }},
        {"gmContourT.0", contourT0, edgeContourWithoutTransform, nullptr, false},
        {"gmRegionT.0", regionT0, edgeRegionOfTwoHoles},
        {"gmRegionSetT.0", regionSetT0, edgeSetOfSharedRegions},
        {"gm2XformLinear.0", xformLinear0, awkwardXform},
        {"gm2Rigid.0", rigid0,
         [] { return std::make_shared<gm2Rigid>(gmDegree(-720.1), gmVector<2>(1.0 / 3, 5e-324)); }},
    };
}

}  // namespace support
