// Archives of errors and of the primitive shapes that are kept as files.
#pragma once

#include "tests/support/contourgoldens.h"

namespace support {

// ----- Errors

inline const char* const badParams0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
18 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72 44 65 66 73 3a 3a 42 61 64 50 61 72 61 6d
73                                              # gmContourDefs::BadParams
00                                              # class: version
00                                              # Errors: version
00                                              # gmException: version
12 00 00 00                                     # message, length
6e 6f 20 65 78 74 72 65 6d 61 6c 20 76 65 72 74 65 78 # message
)";

inline const char* const emptyContour0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
1b 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72 44 65 66 73 3a 3a 45 6d 70 74 79 43 6f 6e
74 6f 75 72                                     # gmContourDefs::EmptyContour
00                                              # class: version
00                                              # Errors: version
00                                              # gmException: version
00 00 00 00                                     # message, length
)";

inline const char* const emptyRegionSet0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
1d 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72 44 65 66 73 3a 3a 45 6d 70 74 79 52 65 67
69 6f 6e 53 65 74                               # gmContourDefs::EmptyRegionSet
00                                              # class: version
00                                              # Errors: version
00                                              # gmException: version
09 00 00 00                                     # message, length
74 77 6f 0a 6c 69 6e 65 73                      # message
)";

inline const char* const regionCannotBeSetOpen0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
01 00 00 00                                     # object 1
24 00 00 00                                     # of the class
67 6d 43 6f 6e 74 6f 75 72 44 65 66 73 3a 3a 52 65 67 69 6f 6e 43 61
6e 6e 6f 74 42 65 53 65 74 4f 70 65 6e          # gmContourDefs::RegionCannotBeSetOpen
00                                              # class: version
00                                              # Errors: version
00                                              # gmException: version
06 00 00 00                                     # message, length
6e 61 c3 af 76 65                               # message
)";

inline const char* const singular0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # gmException: version
0a 00 00 00                                     # message, length
6e 6f 20 69 6e 76 65 72 73 65                   # message
)";

template <class Error>
std::function<Object()> errorOf(const std::string& message) {
    return [message] { return std::make_shared<Error>(message); };
}

// ----- Primitive shapes, which are never behind pointers

inline const char* const point0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
01                                              # exists
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # position
)";

inline const char* const line0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # through
01 00 00 00 00 00 00 00 23 01 00 00 00 00 f8 7f # direction
)";

inline const char* const lineSeg0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
55 55 55 55 55 55 d5 3f 00 00 00 00 00 00 f0 ff # from
01 00 00 00 00 00 00 00 23 01 00 00 00 00 f8 7f # to
)";

inline const char* const rect0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
00 00 00 00 00 00 00 80 55 55 55 55 55 55 d5 bf # lower corner
01 00 00 00 00 00 00 00 9c 75 00 88 3c e4 37 7e # upper corner
)";

inline const char* const circle0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
00 00 00 00 00 00 00 80 9c 75 00 88 3c e4 37 7e # center
9a 99 99 99 99 99 b9 3f                         # radius
)";

inline const char* const ellipse0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # center
01 00 00 00 00 00 00 00                         # radius along x
00 00 00 00 00 00 f0 7f                         # radius along y
66 66 66 66 66 66 1c c0                         # radians
)";

inline const char* const polygon0 = R"(
4d 4f 4b 41 01                                  # archive, format 1
00                                              # version
01                                              # non-zero filled
03 00 00 00                                     # vertices
9a 99 99 99 99 99 b9 3f 00 00 00 00 00 00 00 80 # 0.1, -0
23 01 00 00 00 00 f8 7f 00 00 00 00 00 00 f0 ff # NaN, -inf
01 00 00 00 00 00 00 00 55 55 55 55 55 55 d5 3f # 5e-324, 0.3333333333333333
)";

/// A shape that is stored directly.
template <class Shape>
Golden shapeGolden(const char* file, const char* listing, const Shape& shape) {
    return {file, listing, [shape] { return alone(shape); }, [] { return std::make_shared<Shape>(); }};
}

inline gmRect awkwardRect() {
    gmRect rect;
    rect.extend({-0.0, -1.0 / 3});
    rect.extend({5e-324, 1e300});
    return rect;
}

inline gmEllipse awkwardEllipse() {
    gmEllipse::gmEllipseGeom geom;
    geom.center = {0.1, -0.0};
    geom.xRadius = 5e-324;
    geom.yRadius = std::numeric_limits<double>::infinity();
    geom.rotation = gmRadian(-7.1);
    return gmEllipse(geom);
}

inline std::vector<Golden> shapeGoldens() {
    const double infinity = std::numeric_limits<double>::infinity();
    const gmVector<2> one(0.1, -0.0);
    const gmVector<2> two(5e-324, goldenNaN());
    return {
        {"gmContourDefs-BadParams.0", badParams0, errorOf<gmContourDefs::BadParams>("no extremal vertex")},
        {"gmContourDefs-EmptyContour.0", emptyContour0, errorOf<gmContourDefs::EmptyContour>("")},
        {"gmContourDefs-EmptyRegionSet.0", emptyRegionSet0, errorOf<gmContourDefs::EmptyRegionSet>("two\nlines")},
        {"gmContourDefs-RegionCannotBeSetOpen.0", regionCannotBeSetOpen0,
         errorOf<gmContourDefs::RegionCannotBeSetOpen>("na\xc3\xafve")},
        {"gmMathError-Singular.0.direct", singular0, errorOf<gmMathError::Singular>("no inverse"),
         errorOf<gmMathError::Singular>("")},
        shapeGolden("gmPoint.0.direct", point0, gmPoint(one)),
        shapeGolden("gmLine.0.direct", line0, gmLine(one, two)),
        shapeGolden("gmLineSeg.0.direct", lineSeg0, gmLineSeg({1.0 / 3, -infinity}, two)),
        shapeGolden("gmRect.0.direct", rect0, awkwardRect()),
        shapeGolden("gmCircle.0.direct", circle0, gmCircle({-0.0, 1e300}, 0.1)),
        shapeGolden("gmEllipse.0.direct", ellipse0, awkwardEllipse()),
        shapeGolden("gmPolygon.0.direct", polygon0,
                    gmPolygon({one, {goldenNaN(), -infinity}, {5e-324, 1.0 / 3}}, gmPolygon::eNonZero)),
    };
}

}  // namespace support
