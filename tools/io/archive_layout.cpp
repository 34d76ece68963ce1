#include "tools/io/archive_layout.h"

#include <algorithm>

namespace mokshape {

namespace {

using Kind = ArchiveField::Kind;
using Fields = std::vector<ArchiveField>;

ArchiveField part(const char* className) {
    return {className, Kind::ePart, className};
}

ArchiveLayout error(const char* className) {
    return {className, true, "gmContourDefs::Errors", {Fields{part("gmContourDefs::Errors")}}};
}

/// What a contour has behind its legacy base, and before the flag that regions of that time lack.
Fields legacyOutline(const char* base) {
    return {part(base),
            {"vertices", Kind::eVertices},
            {"unused byte", Kind::eUnusedByte},
            {"cachedVectorSize", Kind::eCount}};
}

Fields legacyContour() {
    Fields fields = legacyOutline("gmContourBase");
    fields.push_back({"closed", Kind::eFlag});
    return fields;
}

std::vector<ArchiveLayout> makeLayouts() {
    const ArchiveField regions{"regions", Kind::eObjects, "gmRegion"};
    const ArchiveField edgePoints{"edge points", Kind::eEdgePoints};
    const ArchiveField xform{"transform", Kind::eObject, "gm2XformBase"};
    const Fields contour{part("gmPersistent"),
                         {"label", Kind::eUnsigned},
                         {"closed", Kind::eFlag},
                         {"vertices", Kind::eVertices},
                         {"cachedVectorSize", Kind::eCount}};
    return {
        {"gmPersistent", false, "", {Fields{}}},
        {"gmException", false, "", {Fields{{"message", Kind::eText}}}},
        {"gmContourDefs::Errors", false, "", {Fields{part("gmException")}}},
        error("gmContourDefs::BadParams"),
        error("gmContourDefs::EmptyContour"),
        error("gmContourDefs::EmptyRegionSet"),
        error("gmContourDefs::RegionCannotBeSetOpen"),
        {"gmContourBase", false, "", {Fields{part("gmPersistent")}}},
        {"gmContourBase2", false, "", {Fields{part("gmPersistent")}}},
        {"gmContour", true, "", {legacyContour(), contour}},
        {"gmRegion",
         true,
         "gmContour",
         {legacyOutline("gmContourBase2"), Fields{part("gmContour"), {"holes", Kind::eObjects, "gmRegion"}}}},
        {"gmRegionSet",
         true,
         "",
         {Fields{part("gmPersistent"), regions},
          Fields{part("gmPersistent"), regions, {"cachedVectorSize", Kind::eCount}}}},
        {"gmContourT<gmEdgelet>",
         true,
         "gmContour",
         {Fields{part("gmContour"), edgePoints}, Fields{part("gmContour"), edgePoints, xform}}},
        {"gmRegionT<gmEdgelet>", true, "gmRegion", {Fields{part("gmRegion")}}},
        {"gmRegionSetT<gmEdgelet>",
         true,
         "gmRegionSet",
         {Fields{part("gmRegionSet"), {"regions with edge points", Kind::eObjects, "gmRegionT<gmEdgelet>"}}}},
        {"gm2XformLinear",
         true,
         "gm2XformBase",
         {Fields{{"translation", Kind::ePosition}, {"row 0", Kind::ePosition}, {"row 1", Kind::ePosition}}}},
        {"gm2Rigid",
         true,
         "gm2XformBase",
         {Fields{{"angle in degrees", Kind::eNumber}, {"translation", Kind::ePosition}}}},
    };
}

}  // namespace

const std::vector<ArchiveLayout>& archiveLayouts() {
    static const std::vector<ArchiveLayout> layouts = makeLayouts();
    return layouts;
}

const ArchiveLayout* findLayout(std::string_view className) {
    const std::vector<ArchiveLayout>& layouts = archiveLayouts();
    const auto found = std::find_if(layouts.begin(), layouts.end(),
                                    [className](const ArchiveLayout& layout) { return layout.className == className; });
    return found == layouts.end() ? nullptr : &*found;
}

}  // namespace mokshape
