// Edge points, transforms that tell what is asked of them, and shapes that write down which hooks are called.
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"
#include "foundation/object/exception.h"
#include "foundation/shapes/xform2.h"
#include "tests/support/testregion.h"
#include "tests/support/text.h"

namespace support {

using Edgelets = std::vector<gmEdgelet>;
using ContourT = gmContourT<gmEdgelet>;
using RegionT = gmRegionT<gmEdgelet>;
using RegionSetT = gmRegionSetT<gmEdgelet>;
using HolesT = RegionT::Holes;
using RegionTHandle = gmPtrHandle<RegionT>;
using XformHandle = gmPtrHandle<gm2XformBase>;

inline std::string text(const gmEdgelet& edgelet) {
    return text(edgelet.position()) + " of magnitude " + std::to_string(edgelet.magnitude()) + " and angle " +
           std::to_string(edgelet.angle().value());
}

/// Edge points at these places, with magnitudes and angles that all differ and are not 0.
inline Edgelets edgelets(const std::vector<gmVector<2>>& positions, int first = 1) {
    Edgelets result;
    for (const gmVector<2>& position : positions) {
        const int number = first + static_cast<int>(result.size());
        result.emplace_back(position, static_cast<unsigned short>(1000 + number),
                            gmAngle8(static_cast<unsigned char>(1 + number % 255)));
    }
    return result;
}
inline Edgelets edgelets(const std::string& positions, int first = 1) {
    return edgelets(points(positions), first);
}
/// What is made of points: magnitude and angle 0.
inline Edgelets unmarked(const std::vector<gmVector<2>>& positions) {
    Edgelets result;
    for (const gmVector<2>& position : positions)
        result.emplace_back(position, static_cast<unsigned short>(0), gmAngle8());
    return result;
}
inline Edgelets unmarked(const std::string& positions) {
    return unmarked(points(positions));
}

inline gmXform<2> scale(double factor) {
    return gmXform<2>(gmMatrix<2>(factor, 0, 0, factor), {});
}
/// Data are `factor` times as large as points.
inline XformHandle scaling(double factor) {
    return XformHandle(new gm2XformLinear(scale(factor)));
}

inline ContourT edgeContour(const std::string& positions, double factor = 1.0) {
    return ContourT(edgelets(positions), scaling(factor));
}
inline RegionT edgeRegion(const std::string& positions, double factor = 1.0) {
    return RegionT(edgelets(positions), scaling(factor));
}
inline RegionTHandle sharedT(const std::string& positions) {
    return RegionTHandle(new RegionT(edgelets(positions)));
}

/// The plain regions that these are.
inline Holes plain(const HolesT& regions) {
    return Holes(regions.begin(), regions.end());
}

/// A square of 10 with data twice as large, a square hole of 2 among the plain ones and two triangles among the others;
/// and its data.
inline Edgelets edgePlateData() {
    return edgelets("0 0, 20 0, 20 20, 0 20");
}
inline RegionT edgePlate() {
    RegionT plate(edgePlateData(), scaling(2), 5);
    plate.holes(Holes{shared("4 4, 6 4, 6 6, 4 6")});
    plate.holes(HolesT{sharedT("1 1, 2 1, 2 2"), sharedT("7 7, 8 7, 8 8")});
    plate.data(edgePlateData());
    return plate;
}

/// What became of a transform, its clones and clones of these; and what becomes of the next request.
struct XformRequests {
    int clones = 0;
    int inversions = 0;
    int mappings = 0;

    bool refusesInversion = false;
    bool invertsToNothing = false;
    int mappingsLeft = std::numeric_limits<int>::max();
};

/// An affine transform that counts what is asked of it, and that can be made to fail.
class WatchedXform : public gm2XformBase {
  public:
    explicit WatchedXform(const gmXform<2>& xform, std::shared_ptr<XformRequests> requests = nullptr)
        : xform_(xform), requests_(requests ? std::move(requests) : std::make_shared<XformRequests>()) {}

    XformRequests& requests() const { return *requests_; }
    void become(const gmXform<2>& xform) { xform_ = xform; }

    gmPtrHandle<gm2XformBase> clone() const override {
        requests_->clones++;
        return XformHandle(new WatchedXform(xform_, requests_));
    }
    gmPtrHandle<gm2XformBase> inverseBase() const override {
        requests_->inversions++;
        if (requests_->refusesInversion)
            throw gmMathError::Singular("refused");
        return requests_->invertsToNothing ? XformHandle() : XformHandle(new gm2XformLinear(xform_.inverse()));
    }
    gmVector<2> mapPoint(const gmVector<2>& point) const override {
        if (requests_->mappingsLeft-- == 0)
            throw gmMathError::Singular("no more");
        requests_->mappings++;
        return xform_ * point;
    }
    gmPtrHandle<gm2XformBase> composeBase(const gm2XformBase&) const override { return nullptr; }
    bool isLinear() const override { return true; }
    gmXform<2> linearXform() const override { return xform_; }

  protected:
    void serialize_(gmArchive&, unsigned char) override {}

  private:
    gmXform<2> xform_;
    std::shared_ptr<XformRequests> requests_;
};

inline std::string sizes(const ContourT& contour) {
    return std::to_string(contour.points().size()) + "/" + std::to_string(contour.data().size());
}
inline std::string sizes(const RegionSetT& set) {
    return std::to_string(set.regions().size()) + "/" + std::to_string(set.regionsT().size());
}

/// Writes down which hooks are called, and how much there is on the plain side and on the other when they are done.
template <class Shape>
class HookWatcher : public Shape {
  public:
    using Shape::Shape;

    void cleanCacheInfo() override {
        Shape::cleanCacheInfo();
        calls().push_back("clean " + sizes(*this));
    }
    void makeDataConsistentWithPoints() override {
        Shape::makeDataConsistentWithPoints();
        calls().push_back("data " + sizes(*this));
    }
    void makePointsConsistentWithData() override {
        Shape::makePointsConsistentWithData();
        calls().push_back("points " + sizes(*this));
    }

    /// The calls since the last look, also those for shapes that are being constructed.
    static std::vector<std::string> take() { return std::exchange(calls(), {}); }

  private:
    static std::vector<std::string>& calls() {
        static std::vector<std::string> calls;
        return calls;
    }
};

/// Moves a vertex without a word to anyone: answers that do not follow are remembered ones.
inline void moveSecretly(gmContour& contour, std::size_t vertex, const gmVector<2>& position) {
    const_cast<std::vector<gmVector<2>>&>(contour.points())[vertex] = position;
}

/// Asks what a contour of some vertices remembers.
inline void askEverything(const gmContour& contour) {
    contour.length();
    contour.meanPosition();
    contour.lineSegs();
    contour.isSelfIntersecting();
    contour.vertexIndex({0, 0}, 1.0);
    contour.encloseRect(gmXform<2>::I);
    contour.encloseCircle(gmContourDefs::eMaxVertexPair);
    contour.encloseCircle(gmContourDefs::eFromFirstVertex);
    contour.extremalVertexIndex(gmRadian(0.5));
    gmEllipse ellipse;
    double residual = 0.0;
    contour.fitEllipse(ellipse, residual);
    gmRegion hull;
    contour.convexHull(hull);
}

/// A way to put other vertices or other data into a shape.
struct Change {
    const char* name;
    std::function<void(ContourT&)> make;

    friend void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }
};
inline std::vector<Change> changes() {
    return {{"Data", [](ContourT& c) { c.data(edgelets("0 0, 8 0, 8 6, 0 6")); }},
            {"Points", [](ContourT& c) { c.points(points("0 0, 8 0, 8 6, 0 6")); }},
            {"PointsFromData", [](ContourT& c) { c.makePointsConsistentWithData(); }},
            {"DataFromPoints", [](ContourT& c) { c.makeDataConsistentWithPoints(); }}};
}

}  // namespace support

inline void PrintTo(const gmEdgelet& value, std::ostream* out) {
    *out << support::text(value);
}
