#pragma once

#include <type_traits>
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
/// with copies. It stays until another contour is assigned or one is loaded. A default contour has none: setting either
/// side then throws gmBadPointer as soon as there is something to map. What was set stays, and the other side does not
/// follow.
///
/// **Results.** gmContour::map with this contour as its result makes the data anew, like any other change of the
/// points; for regions see gmRegionT. It throws what makeDataConsistentWithPoints() does then, with the new vertices in
/// place.
/// Deliberate: assigning a plain contour to the gmContour part leaves the data alone; call that function then.
///
/// Everything else is as for gmContour, edge order, units, ties and caches included.
///
///     const gmPtrHandle<gm2XformBase> pixels(new gm2XformLinear(gmXform<2>({20, 0, 0, 20}, {})));  // 20 a millimetre
///     const gmContourT<gmEdgelet> edge({{{0, 0}, 90, gmAngle8(64)}, {{80, 0}, 120, gmAngle8(64)}}, pixels);
///     gmVector<2> second = edge.points()[1];                                        // (4, 0)
template <class Datum>
class MOKCNTR_API gmContourT : public virtual gmContour {
    static_assert(std::is_same_v<Datum, gmEdgelet>, "contours carry edge points and nothing else");

  public:
    /// An empty, closed contour without data and without a transform.
    gmContourT();
    /// The contour of these edge points, where they are: its transform is the identity.
    explicit gmContourT(const std::vector<Datum>& data);
    /// The contour of these edge points under a clone of `xform`, or under the identity for an empty handle.
    /// Throws: what the transform does when it is cloned and, with any data, inverted: gmMathError::Singular, say.
    gmContourT(const std::vector<Datum>& data, const gmPtrHandle_const<gm2XformBase>& xform);

    /// Copies everything and shares the transform and its inverse. Assignment is no change that is reported or cleaned
    /// up after.
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
    /// Throws: what makePointsConsistentWithData() does; the data are replaced all the same, the vertices as they were.
    void data(const std::vector<Datum>& data);

    /// The transform from point to data coordinates; empty for a default contour.
    gmPtrHandle_const<gm2XformBase> dataFromPointsXform() const { return carried_.dataFromPoints; }

    /// The vertex of an edge point: its position mapped by the inverse of the transform, which is computed once.
    /// Throws: gmBadPointer without a transform or without an inverse, and what inverting does.
    gmVector<2> point(const Datum& datum) const;
    /// The edge point of a vertex: where the transform maps it, with magnitude 0 and angle 0.
    /// Throws: gmBadPointer without a transform.
    Datum datum(const gmVector<2>& point) const;

    /// Deliberate: always throw gmPel::BadWindow and change nothing: there is no hull and no mapping that would keep
    /// magnitudes and angles. gmContour::convexHull and gmContour::map look at the vertices alone.
    void convexHullT(gmRegionT<Datum>& out) const;
    void mapT(const gmXform<2>& xform, gmContourT& out) const;

    /// Makes the data anew from the vertices, or the vertices from the data. The setters of either do it themselves.
    /// Throws: what datum() and point() do, when there is anything to map. The data are there up to the vertex that
    /// failed then; the vertices are as they were.
    void makeDataConsistentWithPoints() override;
    void makePointsConsistentWithData() override;

    /// A new, empty contour, for the registry.
    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    /// The content of the version: 1 is written, 0 (without the transform) read as well.
    /// Throws: gmArchive::Malformed, both ways, unless there are as many data as vertices.
    void serialize_(gmArchive& archive, unsigned char version) override;

  private:
    friend class gmRegionT<Datum>;  // it assigns the outline once, for both its bases

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
