// What the primitive shapes, the transforms and the edge point are in an archive.

#include "foundation/image/edgelet.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/point.h"
#include "foundation/shapes/polygon.h"
#include "foundation/shapes/rect.h"
#include "foundation/shapes/xform2.h"
#include "tests/foundation/support.h"

namespace {

using support::contentOf;
using support::header;
using support::hex;
using support::loadFrom;
using support::transfer;
using support::unhex;

const std::string one = " 00 00 00 00 00 00 f0 3f";
const std::string two = " 00 00 00 00 00 00 00 40";
const std::string three = " 00 00 00 00 00 00 08 40";
const std::string four = " 00 00 00 00 00 00 10 40";
const std::string five = " 00 00 00 00 00 00 14 40";
const std::string zero = " 00 00 00 00 00 00 00 00";
const std::string plus = " 00 00 00 00 00 00 f0 7f";
const std::string minus = " 00 00 00 00 00 00 f0 ff";

/// The shape has these bytes, and comes back from them.
template <class Shape>
void expectBytes(Shape shape, const std::string& digits) {
    EXPECT_EQ(hex(contentOf(shape)), digits);
    Shape loaded;
    loadFrom(header + unhex(digits), [&](gmArchive& archive) { archive || loaded; });
    EXPECT_TRUE(loaded == shape) << digits;
}

gmEllipse sampleEllipse() {
    gmEllipse::gmEllipseGeom geom;
    geom.center = {1.0, 2.0};
    geom.xRadius = 3.0;
    geom.yRadius = 4.0;
    geom.rotation = gmRadian(5.0);
    return gmEllipse(geom);
}

TEST(ShapeBytes, AreAVersionAndTheNumbers) {
    expectBytes(gmPoint({1.0, 2.0}), "00 01" + one + two);
    expectBytes(gmPoint(), "00 00" + zero + zero);
    expectBytes(gmLine({1.0, 2.0}, {3.0, 4.0}), "00" + one + two + three + four);
    expectBytes(gmLineSeg({1.0, 2.0}, {3.0, 4.0}), "00" + one + two + three + four);
    expectBytes(gmRect({1.0, 2.0}, {2.0, 2.0}), "00" + one + two + three + four);
    expectBytes(gmRect(), "00" + plus + plus + minus + minus);
    expectBytes(gmCircle({1.0, 2.0}, 3.0), "00" + one + two + three);
    expectBytes(sampleEllipse(), "00" + one + two + three + four + five);
    expectBytes(gmPolygon({{1.0, 2.0}, {3.0, 4.0}}, gmPolygon::eNonZero),
                "00 01 02 00 00 00" + one + two + three + four);
    expectBytes(gmPolygon(), "00 00 00 00 00 00");
}

TEST(ShapeBytes, OfAnEdgePointArePositionMagnitudeAngle) {
    expectBytes(gmEdgelet({1.0, 2.0}, 0x1234, gmAngle8(0xab)), (one + two + " 34 12 ab").substr(1));
}

TEST(ShapeBytes, OfTransformsAreAVersionAndTheNumbers) {
    gm2XformLinear linear(gmXform<2>(gmMatrix<2>(3.0, 4.0, 5.0, 1.0), {1.0, 2.0}));
    EXPECT_EQ(hex(contentOf(linear)), "00" + one + two + three + four + five + one);
    gm2XformLinear loaded;
    transfer(linear, loaded);
    EXPECT_EQ(loaded.linearXform(), linear.linearXform());
    gm2Rigid rigid(gmDegree(3.0), {1.0, 2.0});
    EXPECT_EQ(hex(contentOf(rigid)), "00" + three + one + two);
    gm2Rigid loadedRigid;
    transfer(rigid, loadedRigid);
    EXPECT_EQ(loadedRigid.linearXform(), rigid.linearXform());
}

TEST(ShapeRoundTrip, KeepsTheClassOfASharedTransform) {
    gmPtrHandle<gm2XformBase> stored(new gm2Rigid(gmDegree(33.0), {1.0, -2.0}));
    gmPtrHandle<gm2XformBase> loaded;
    transfer(stored, loaded);
    ASSERT_NE(dynamic_cast<gm2Rigid*>(loaded.get()), nullptr);
    EXPECT_EQ(loaded->linearXform(), stored->linearXform());
}

TEST(ShapeRoundTrip, OfARectangleKeepsItsCornersToTheBit) {
    support::Random random(61);
    for (int i = 0; i < 1000; ++i) {
        gmRect rect = gmRect(random.vector(1e6), {0.0, 0.0}).enclose(gmRect(random.vector(1e-3), {0.0, 0.0}));
        gmRect loaded;
        transfer(rect, loaded);
        ASSERT_TRUE(loaded == rect);
    }
}

TEST(ShapeRoundTrip, LoadsWhatTheShapesCannotHoldAsEmpty) {
    gmRect rect({0.0, 0.0}, {1.0, 1.0});
    loadFrom(header + unhex("00" + two + one + one + two), [&](gmArchive& archive) { archive || rect; });
    EXPECT_TRUE(rect == gmRect()) << "corners the wrong way round";
    gmPoint point({3.0, 3.0});
    loadFrom(header + unhex("00 00" + one + two), [&](gmArchive& archive) { archive || point; });
    EXPECT_TRUE(point == gmPoint()) << "a position of a point that has none";
}

TEST(ShapeRoundTrip, OverwritesWhatWasThere) {
    gmPolygon polygon({{1.0, 2.0}}, gmPolygon::eNonZero);
    gmPolygon target({{7.0, 7.0}, {8.0, 8.0}, {9.0, 9.0}}, gmPolygon::eEvenOdd);
    transfer(polygon, target);
    EXPECT_TRUE(target == polygon);
}

/// Lays loadSimple open.
class SimpleCircle : public gmCircle {
  public:
    bool load(gmArchive& archive) { return loadSimple(archive); }
};

TEST(ShapeLoadSimple, ReadsTheNumbersWithoutAVersion) {
    SimpleCircle circle;
    loadFrom(header + unhex((one + two + three).substr(1)),
             [&](gmArchive& archive) { EXPECT_TRUE(circle.load(archive)); });
    EXPECT_TRUE(circle == gmCircle({1.0, 2.0}, 3.0));
}

TEST(ShapeReporting, BelongsToTheObjectAndNotToItsValue) {
    gmCircle circle({1.0, 2.0}, 3.0);
    circle.reportChanges(true);
    EXPECT_FALSE(gmCircle(circle).reportsChanges());
    circle = gmCircle();
    EXPECT_TRUE(circle.reportsChanges());
}

}  // namespace
