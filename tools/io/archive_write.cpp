#include "tools/io/archive_write.h"

#include <ostream>

#include "cntr/region.h"
#include "cntr/regionst.h"
#include "foundation/object/exception.h"
#include "tools/io/grouping.h"

namespace mokshape {

namespace {

using RegionPtr = gmPtrHandle<gmRegion>;

RegionPtr regionOf(const std::vector<Outline>& outlines, const Part& part) {
    const Outline& outer = outlines[part.first];
    std::vector<RegionPtr> holes;
    for (std::size_t i = part.first + 1; i < part.last; ++i)
        holes.emplace_back(new gmRegion(outlines[i].points));
    // An outline of one vertex meets nothing: holes are set on it that the true one would be refused with.
    const RegionPtr region(new gmRegion(std::vector<gmVector<2>>{gmVector<2>()}));
    region->holes(holes);
    region->points(outer.points);
    region->label(outer.label);
    return region;
}

template <class Shape>
void write(gmArchive& archive, const gmPtrHandle<Shape>& shape) {
    gmPersistent* nothing = nullptr;
    gmPersistent::serializePointer(archive, shape.get(), nothing);
}

void writePart(gmArchive& archive, const std::vector<Outline>& outlines, const Part& part) {
    const Outline& outline = outlines[part.first];
    if (part.isLine)
        write(archive, gmPtrHandle<gmContour>(new gmContour(outline.points, false, outline.label)));
    else
        write(archive, regionOf(outlines, part));
}

void writeSet(gmArchive& archive, const std::vector<Outline>& outlines, const Feature& feature) {
    std::vector<RegionPtr> regions;
    for (const Part& part : feature.parts)
        regions.push_back(regionOf(outlines, part));
    write(archive, gmPtrHandle<gmRegionSet>(new gmRegionSet(regions)));
}

}  // namespace

void writeArchive(std::ostream& out, const std::vector<Outline>& outlines, Notes* notes) {
    std::size_t divided = 0;
    try {
        gmArchive archive(out);
        for (const Feature& feature : groupByFeature(outlines)) {
            if (feature.parts.size() > 1 && feature.hasOnlyPolygons()) {
                writeSet(archive, outlines, feature);
                continue;
            }
            divided += feature.parts.size() > 1;
            for (const Part& part : feature.parts)
                writePart(archive, outlines, part);
        }
    } catch (const gmException& error) {
        throw FileError(error.what());
    }
    addNote(notes, divided, "feature of several lines, or of lines and polygons, becomes a feature for each of them",
            "features of several lines, or of lines and polygons, become a feature for each of them");
}

}  // namespace mokshape
