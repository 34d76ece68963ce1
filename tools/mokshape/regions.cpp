#include "tools/mokshape/regions.h"

#include <utility>

#include "tools/io/file.h"
#include "tools/io/text.h"
#include "tools/mokshape/progress.h"

namespace mokshape {

namespace {

using RegionPtr = gmPtrHandle<gmRegion>;

class Taker {
  public:
    Taker(OutlineFile file, gmContourDefs::IntersectionMode mode, Progress& progress)
        : file_(std::move(file)), mode_(mode), progress_(progress) {
        result_.file.name = file_.name;
    }

    RegionFile take() {
        for (const Feature& feature : groupByFeature(file_.outlines))
            for (const Part& part : feature.parts)
                takeShape(part);
        return std::move(result_);
    }

  private:
    void takeShape(const Part& part) {
        std::vector<Outline>& outlines = result_.file.outlines;
        Shape shape;
        shape.part = {outlines.size(), outlines.size() + part.last - part.first, part.isLine};
        const std::size_t replacedBefore = result_.replaced.size();
        if (part.isLine || file_.outlines[part.first].points.empty())
            outlines.push_back(file_.outlines[part.first]);
        else
            shape.region = takePolygon(part);
        shape.cleaned = result_.replaced.size() - replacedBefore;
        result_.shapes.push_back(std::move(shape));
        for (std::size_t i = part.first; i < part.last; ++i)
            progress_.advance(workOf(file_.outlines[i]));
    }

    RegionCPtr takePolygon(const Part& part) {
        const RegionPtr region = takeOutline(file_.outlines[part.first]);
        std::vector<RegionPtr> holes;
        for (std::size_t i = part.first + 1; i < part.last; ++i)
            holes.push_back(takeOutline(file_.outlines[i]));
        try {
            region->holes(holes);
        } catch (const gmException& error) {
            // The library does not say which hole it is.
            for (std::size_t i = 0; i < holes.size(); ++i)
                if (!region->intersections(*holes[i], false).empty())
                    refuse(file_.name, file_.outlines[part.first + 1 + i], error.what());
            refuse(file_.name, file_.outlines[part.first], error.what());
        }
        return region;
    }

    RegionPtr takeOutline(const Outline& outline) {
        const RegionPtr region(new gmRegion(contourOf(outline)));
        Outline taken = outline;
        if (mode_ != gmContourDefs::eKeep && region->isSelfIntersecting()) {
            cleanOutline(*region, mode_, file_.name, outline);
            taken.points = region->points();
            result_.replaced.push_back(outline);
        }
        result_.file.outlines.push_back(std::move(taken));
        return region;
    }

    const OutlineFile file_;
    const gmContourDefs::IntersectionMode mode_;
    Progress& progress_;
    RegionFile result_;
};

}  // namespace

gmContour contourOf(const Outline& outline) {
    return gmContour(outline.points, outline.isClosed(), outline.label);
}

RegionFile takeRegions(OutlineFile file, gmContourDefs::IntersectionMode mode, Progress& progress) {
    return Taker(std::move(file), mode, progress).take();
}

void cleanOutline(gmRegion& region, gmContourDefs::IntersectionMode mode, const std::string& file,
                  const Outline& outline) {
    const std::string why = "the outline crosses itself and cannot be cleaned: ";
    try {
        if (mode == gmContourDefs::eOuterHull)
            region.outerHull(region);
        else
            region.regularize(region);
    } catch (const gmException& error) {
        refuse(file, outline, why + error.what());
    }
    if (region.points().size() < 3)
        refuse(file, outline, why + "next to nothing is left of it");
    region.label(outline.label);
}

void refuse(const std::string& file, const Outline& outline, const std::string& why) {
    throw FileError((file.empty() ? placeText(0, outline.part, outline.ring)
                                  : printable(file) + ": " + placeText(outline.feature, outline.part, outline.ring)) +
                    ": " + why);
}

std::vector<RegionFile> readRegions(const std::vector<std::string>& names, gmContourDefs::IntersectionMode mode,
                                    Progress& progress) {
    std::vector<OutlineFile> files;
    double work = 0.0;
    for (const std::string& name : names) {
        progress.start("reading " + printable(name, 40), 0.0);
        files.push_back(readOutlines(name));
        work += workOf(files.back().outlines);
    }
    progress.start(mode == gmContourDefs::eKeep ? "setting holes" : "cleaning outlines", work);
    std::vector<RegionFile> result;
    for (OutlineFile& file : files)
        result.push_back(takeRegions(std::move(file), mode, progress));
    return result;
}

double workOf(const Outline& outline) {
    const auto vertices = static_cast<double>(outline.points.size());
    return 1.0 + vertices * vertices;
}

double workOf(const std::vector<Outline>& outlines) {
    double work = 0.0;
    for (const Outline& outline : outlines)
        work += workOf(outline);
    return work;
}

}  // namespace mokshape
