// Nothing but the description of the library's classes, for debuggers. Compilers leave it out of programs: they write
// it down where a class has its virtual functions, which is a library that may be installed without it.
#include "cntr/cntr.h"
#include "cntrtmpl/cntrtmpl.h"

namespace detail {

// What is held by value has to be complete, templates included.
struct DescribedTypes {
    gmContour contour;
    gmRegion region;
    gmRegionSet regionSet;
    gmContourT<gmEdgelet> edgeContour;
    gmRegionT<gmEdgelet> edgeRegion;
    gmRegionSetT<gmEdgelet> edgeRegionSet;

    gmPtrHandle<gmContour> contourHandle;
    gmPtrHandle_const<gmContour> contourToRead;
    gmPtrHandle<gmRegion> regionHandle;
    RegionCPtr regionToRead;
    gmPtrHandle<gmRegionSet> regionSetHandle;
    gmPtrHandle_const<gmRegionSet> regionSetToRead;
    gmPtrHandle<gmContourT<gmEdgelet>> edgeContourHandle;
    gmPtrHandle_const<gmContourT<gmEdgelet>> edgeContourToRead;
    gmPtrHandle<gmRegionT<gmEdgelet>> edgeRegionHandle;
    gmPtrHandle_const<gmRegionT<gmEdgelet>> edgeRegionToRead;
    gmPtrHandle<gm2XformBase> xformHandle;
    gmPtrHandle_const<gm2XformBase> xformToRead;

    gmPoint point;
    gmLine line;
    gmLineSeg lineSeg;
    gmRect rect;
    gmCircle circle;
    gmEllipse ellipse;
    gmPolygon polygon;
    gm2XformLinear linear;
    gm2Rigid rigid;
    gm_InertiaData inertia;
    gmColor color;
    gmSvgTablet* tablet;

    gmBadPointer badPointer;
    gmMathError::Singular singular;
    gmMathError::OutOfRange outOfRange;
    gmPel::BadWindow badWindow;
    gmArchive::UnknownVersion unknownVersion;
    gmArchive::Truncated truncated;
    gmArchive::Malformed malformed;
    gmArchive::UnknownClass unknownClass;
    gmArchive::OutOfRange archiveOutOfRange;
    gmContourDefs::EmptyContour emptyContour;
    gmContourDefs::EmptyRegionSet emptyRegionSet;
    gmContourDefs::BadParams badParams;
    gmContourDefs::RegionCannotBeSetOpen cannotBeSetOpen;
};

extern const DescribedTypes* const describedTypes;
const DescribedTypes* const describedTypes = nullptr;

}  // namespace detail
