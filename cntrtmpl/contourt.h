#pragma once

#include <vector>

#include "cntr/contour.h"
#include "cntr/detail/cached.h"
#include "cntr/export.h"
#include "foundation/image/edgelet.h"
#include "foundation/shapes/xform2.h"

template <class Datum>
class MOKCNTR_API gmRegionT;

/// A contour with an edge point at every vertex: gmContourT<gmEdgelet>, which is the only one.
///
/// **Points and data.** The edge points are in data coordinates (pixels, say), the vertices in point coordinates
/// (millimetres, say). A transform leads from points to data, dataFromPointsXform(), and each side follows the other:
/// set the data, and the vertices are their positions mapped back; set the points, and the data are made anew.
/// Deliberate: a point says nothing of magnitude and angle, which are 0 afterwards.
///
/// **The transform** comes with the data when a contour is made, is a clone of what the caller passed, and is shared
/// with copies. It stays until another contour is assigned or one is loaded. A contour that is made without data has
/// none: it stays empty until then, and what needs a transform throws gmBadPointer.
///
/// **Results.** gmContour::map, gmContour::convexHull and a region's clean-up that have this contour as their result
/// make the data anew, like any other change of the points.
/// Deliberate: assigning a plain contour to the gmContour part does not; call makeDataConsistentWithPoints() then.
///
/// Everything else is as for gmContour, edge order, units, ties and caches included. Closed, unless isClosed(false).
///
///     const gmPtrHandle<gm2XformBase> pixels(new gm2XformLinear(gmXform<2>({20, 0, 0, 20}, {})));  // 20 a millimetre
///     const gmContourT<gmEdgelet> edge({{{0, 0}, 90, gmAngle8(64)}, {{80, 0}, 120, gmAngle8(64)}}, pixels);
///     gmVector<2> second = edge.points()[1];                                        // (4, 0)
template <class Datum>
class MOKCNTR_API gmContourT : public virtual gmContour {
  public:
    /// An empty, closed contour without data and without a transform.
    gmContourT();
    /// The contour of these edge points, where they are: its transform is the identity.
    explicit gmContourT(const std::vector<Datum>& data);
    /// The contour of these edge points under a clone of `xform`, or under the identity for an empty handle.
    /// Throws: what inverting and cloning the transform does, gmMathError::Singular for one.
    gmContourT(const std::vector<Datum>& data, const gmPtrHandle_const<gm2XformBase>& xform);

    /// Copies everything and shares the transform. Assignment is no change that is reported or cleaned up after.
    gmContourT(const gmContourT& other);
    gmContourT& operator=(const gmContourT& other);
    ~gmContourT() override;

    /// True when the vertices are equal (exactly) and the transform is the same object, or neither has one.
    /// Deliberate: a copy equals its source, and a contour made from the same edge points does not. Closedness, data
    /// and cachedVectorSize are not compared.
    bool operator==(const gmContourT& other) const;
    bool operator!=(const gmContourT& other) const { return !(*this == other); }
    using gmContour::operator==;
    using gmContour::operator!=;

    const std::vector<Datum>& data() const { return carried_.data; }
    /// Replaces the data, and the vertices by where they are. An observer of its changes already sees the new data.
    /// Throws: gmBadPointer without a transform, and what inverting it does; the data are replaced all the same, and
    /// the vertices as they were.
    void data(const std::vector<Datum>& data);

    /// The transform from point to data coordinates. Empty for a contour that was made without data.
    gmPtrHandle_const<gm2XformBase> dataFromPointsXform() const { return carried_.dataFromPoints; }

    /// The vertex of an edge point: its position mapped by the inverse of the transform, which is computed once.
    /// Throws: gmBadPointer without a transform, and what inverting it does.
    gmVector<2> point(const Datum& datum) const;
    /// The edge point of a vertex: where the transform maps it, with magnitude 0 and angle 0.
    /// Throws: gmBadPointer without a transform.
    Datum datum(const gmVector<2>& point) const;

    /// Deliberate: not for edge points, which cannot be made up where an operation invents vertices. They always throw
    /// gmPel::BadWindow and change nothing. gmContour::convexHull and gmContour::map give plain shapes.
    void convexHullT(gmRegionT<Datum>& out) const;
    void mapT(const gmXform<2>& xform, gmContourT& out) const;

    /// Makes the data anew from the vertices, or the vertices from the data. The setters of either do it themselves.
    /// Throws: gmBadPointer without a transform, when there is anything to map.
    void makeDataConsistentWithPoints() override;
    void makePointsConsistentWithData() override;

    /// A new, empty contour, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 1 is written, 0 (without the transform) read as well.
    void serialize_(gmArchive& archive, unsigned char version) override;

    /// What goes with the vertices.
    struct Carried {
        gmPtrHandle<gm2XformBase> dataFromPoints;
        std::vector<Datum> data;
        mutable detail::Cached<gmPtrHandle<gm2XformBase>> pointsFromData;
    };
    Carried carried_;
};

// Registered with the archive layouts, in the order of all registrations.
template <>
gm_Instantiator gmContourT<gmEdgelet>::sExemplar;

extern template class gmContourT<gmEdgelet>;
