#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/support/tablet.h"
#include "tests/support/testcontour.h"

using support::contour;
using support::openContour;
using support::RecordingTablet;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Call = RecordingTablet::Call;

const gmColor orange(255, 128, 0);

std::vector<Call> calls(const gmContour& contour, gmContourDefs::DrawMode mode = gmContourDefs::eOutline,
                        const gmColor& color = orange, gmUITablet::Layers layers = gmUITablet::eOverlayLayer) {
    RecordingTablet tablet;
    contour.draw(tablet, mode, color, layers);
    return tablet.calls;
}

Call edge(double x1, double y1, double x2, double y2) {
    return {{x1, y1}, {x2, y2}, orange, gmUITablet::eOverlayLayer};
}

TEST(ContourDraw, AClosedContourStartsWithItsClosingEdge) {
    EXPECT_THAT(calls(contour("0 0, 4 0, 4 3")), ElementsAre(edge(4, 3, 0, 0), edge(0, 0, 4, 0), edge(4, 0, 4, 3)));
}

TEST(ContourDraw, AnOpenContourHasOneSegmentLess) {
    EXPECT_THAT(calls(openContour("0 0, 4 0, 4 3")), ElementsAre(edge(0, 0, 4, 0), edge(4, 0, 4, 3)));
}

TEST(ContourDraw, WithoutAnEdgeNothingIsDrawn) {
    EXPECT_THAT(calls(contour("")), IsEmpty());
    EXPECT_THAT(calls(openContour("")), IsEmpty());
    EXPECT_THAT(calls(openContour("1 2")), IsEmpty());
}

TEST(ContourDraw, DegenerateEdgesAreDrawnLikeOthers) {
    EXPECT_THAT(calls(contour("1 2")), ElementsAre(edge(1, 2, 1, 2)));
    EXPECT_THAT(calls(openContour("1 2, 1 2, 3 4")), ElementsAre(edge(1, 2, 1, 2), edge(1, 2, 3, 4)));
    EXPECT_THAT(calls(contour("0 0, 3 4")), ElementsAre(edge(3, 4, 0, 0), edge(0, 0, 3, 4)));
}

TEST(ContourDraw, EveryModeDrawsTheSame) {
    const auto shape = contour("0 0, 4 0, 4 3");
    EXPECT_EQ(calls(shape, gmContourDefs::eOutline), calls(shape, gmContourDefs::eHighlighted));
}

TEST(ContourDraw, PassesColorAndLayerOn) {
    const gmColor blue(1, 2, 255);
    const auto drawn = calls(contour("0 0, 4 0"), gmContourDefs::eOutline, blue, gmUITablet::eImageLayer);
    EXPECT_THAT(drawn, ElementsAre(Call{{4, 0}, {0, 0}, blue, gmUITablet::eImageLayer},
                                   Call{{0, 0}, {4, 0}, blue, gmUITablet::eImageLayer}));
}

TEST(ContourDraw, LetsTheErrorsOfTheTabletPass) {
    class FullTablet : public gmUITablet {
        void drawLineSeg(const gmPair<double>&, const gmPair<double>&, const gmColor&, Layers) override {
            throw gmContourDefs::BadParams("full");
        }
    } tablet;
    EXPECT_THROW(contour("0 0, 4 0").draw(tablet, gmContourDefs::eOutline, orange, gmUITablet::eImageLayer),
                 gmContourDefs::BadParams);
}

TEST(ContourDraw, DrawsWhatItWasThoughTheTabletChangesIt) {
    struct Moving : RecordingTablet {
        explicit Moving(gmContour& contour) : shape(contour) {}
        void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                         Layers layers) override {
            RecordingTablet::drawLineSeg(from, to, color, layers);
            shape.points({{9, 9}, {9, 9}, {9, 9}});
        }
        gmContour& shape;
    };
    support::TestContour shape = contour("0 0, 4 0, 4 3");
    const std::vector<Call> expected = calls(shape);
    Moving tablet(shape);
    shape.draw(tablet, gmContourDefs::eOutline, orange, gmUITablet::eOverlayLayer);
    EXPECT_EQ(tablet.calls, expected);
}

}  // namespace
