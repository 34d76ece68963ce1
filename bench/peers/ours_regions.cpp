// This library, asked through its public interface: areas, sets of them, archives.
#include <sstream>

#include "bench/peers/ours.h"
#include "cntr/inertia.h"
#include "cntr/region.h"
#include "cntr/regionst.h"

namespace peers {
namespace {

/// A region with holes of its own, which is as good as unasked after each reset.
class Holed {
  public:
    explicit Holed(const Inputs& inputs) : outline_(inputs.outline) {
        for (const Points& hole : inputs.holes)
            holes_.emplace_back(new gmRegion(hole));
        outline_.holes(holes_);
        reset();
    }

    void reset() {
        outline_.gmContour::isClosed(true);
        for (const gmPtrHandle<gmRegion>& hole : holes_)
            hole->gmContour::isClosed(true);
    }
    bool inside(const Point& point) const { return outline_.inside(point, true); }

  private:
    gmRegion outline_;
    std::vector<gmPtrHandle<gmRegion>> holes_;
};

std::shared_ptr<const gmRegionSet> setOf(const std::vector<Points>& shapes) {
    std::vector<RegionCPtr> regions;
    for (const Points& shape : shapes)
        regions.emplace_back(new gmRegion(shape));
    return std::make_shared<const gmRegionSet>(regions);
}

Contestant setInside(const Points& questions, const std::vector<Points>& shapes) {
    return repeated(
        [set = setOf(shapes), &questions](std::size_t i) { return set->inside(pick(questions, i), false); });
}

Contestant setDistance(const Points& questions, const std::vector<Points>& shapes) {
    return repeated([set = setOf(shapes), &questions](std::size_t i) {
        return set->distToPoint(pick(questions, i), false, false, false);
    });
}

/// How the sum of a contour's coordinates came through.
double total(const gmContour& contour) {
    Point sum;
    for (const Point& point : contour.points())
        sum = sum + point;
    return sum.x() + sum.y();
}

void store(std::stringstream& stream, const gmContour& contour) {
    stream.seekp(0);
    gmArchive archive(static_cast<std::ostream&>(stream));
    // One statement both stores and loads, and so asks for a contour that it might change.
    archive || const_cast<gmContour&>(contour);
}

void load(std::stringstream& stream, gmContour& contour) {
    stream.seekg(0);
    gmArchive archive(static_cast<std::istream&>(stream));
    archive || contour;
}

Contestant write(const Inputs& in) {
    const auto stream = std::make_shared<std::stringstream>();
    const auto contour = std::make_shared<const gmContour>(in.outline, true);
    return keepsNothing(
        in,
        [stream, contour](std::size_t) {
            store(*stream, *contour);
            return static_cast<double>(stream->tellp());
        },
        [stream, contour](std::size_t) {
            store(*stream, *contour);
            gmContour back;
            load(*stream, back);
            return total(back);
        });
}

Contestant read(const Inputs& in) {
    const auto stream = std::make_shared<std::stringstream>();
    store(*stream, gmContour(in.outline, true));
    const auto contour = std::make_shared<gmContour>();
    return keepsNothing(
        in,
        [stream, contour](std::size_t) {
            load(*stream, *contour);
            return contour->points().size();
        },
        [stream, contour](std::size_t) {
            load(*stream, *contour);
            return total(*contour);
        });
}

const Entry entries[] = {
    {Row::inside, ours,
     [](const Inputs& in) {
         return repeated([region = gmRegion(in.outline), &in](std::size_t i) {
             return region.inside(pick(in.questions, i), false);
         });
     }},
    {Row::insideCold, ours,
     [](const Inputs& in) {
         return coldShape(in, gmRegion(in.outline), [&in](const gmRegion& region, std::size_t i) {
             return region.inside(pick(in.questions, i), false);
         });
     }},
    {Row::insideHoles, ours,
     [](const Inputs& in) {
         return repeated([region = std::make_shared<Holed>(in), &in](std::size_t i) {
             return region->inside(pick(in.questions, i));
         });
     }},
    {Row::insideHolesCold, ours,
     [](const Inputs& in) {
         std::vector<std::shared_ptr<Holed>> herd;
         for (std::size_t k = 0; k < in.herd(); ++k)
             herd.push_back(std::make_shared<Holed>(in));
         return cold(
             in, [herd](std::size_t k) { herd[k]->reset(); },
             [herd, &in](std::size_t k, std::size_t i) { return herd[k]->inside(pick(in.questions, i)); });
     }},
    {Row::regularize, ours,
     [](const Inputs& in) {
         const auto out = std::make_shared<gmRegion>();
         return coldShape(
             in, gmRegion(in.chained),
             [out](const gmRegion& region, std::size_t) {
                 region.regularize(*out);
                 return out->points().size();
             },
             [out](const gmRegion& region, std::size_t) {
                 region.regularize(*out);
                 return out->area(false);
             });
     }},
    {Row::area, ours,
     [](const Inputs& in) { return keepsNothing(in, [points = in.outline](std::size_t) { return gf_Area(points); }); }},
    {Row::centre, ours,
     [](const Inputs& in) {
         return keepsNothing(in, [points = in.outline](std::size_t) {
             const Point centre = gf_CenterOfMass(points);
             return centre.x() + centre.y();
         });
     }},
    {Row::moments, ours,
     [](const Inputs& in) {
         return coldShape(in, gmRegion(in.outline), [](const gmRegion& region, std::size_t) {
             const gmMatrix<2> moments = region.inertiaMatrix(false);
             return moments(0, 0) + moments(0, 1) + moments(1, 1);
         });
     }},
    {Row::write, ours, write},
    {Row::read, ours, read},
    {Row::setInside, ours,
     [](const Inputs& in) { return setInside(in.manyRegions().questions, in.manyRegions().inOrder); }},
    {Row::setInsideShuffled, ours,
     [](const Inputs& in) { return setInside(in.manyRegions().questions, in.manyRegions().shuffled); }},
    {Row::setDistance, ours,
     [](const Inputs& in) { return setDistance(in.manyRegions().questions, in.manyRegions().inOrder); }},
    {Row::setDistanceShuffled, ours,
     [](const Inputs& in) { return setDistance(in.manyRegions().questions, in.manyRegions().shuffled); }},
    {Row::setRectangle, ours,
     [](const Inputs& in) {
         return repeated([set = setOf(in.manyRegions().inOrder), &in](std::size_t i) {
             const gmRect box = set->encloseRect(pick(in.transforms, i));
             return digest(box.lower(), box.upper());
         });
     }},
};

}  // namespace
}  // namespace peers
