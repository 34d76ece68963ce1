// Scripts of assignments over a pool of shapes that share holes, regions, transforms and remembered results: what is
// copied, assigned, cleaned up, mapped, archived or handed over may be the shape itself, one of its holes, a hole's
// hole, or what only it keeps alive, and slots are emptied in between. Nothing is freed too early, twice or never; and
// every target ends as if its source had been a separate copy. No region comes to hold itself: that is documented never
// to be freed.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <vector>

#include "fuzz/bytes.h"
#include "fuzz/pool.h"

namespace {

using fuzz::Answers;
using fuzz::answersOf;
using fuzz::anyReaches;
using fuzz::EdgeContour;
using fuzz::EdgeRegion;
using fuzz::EdgeRegionCPtr;
using fuzz::EdgeSet;
using fuzz::Pool;
using fuzz::require;
using fuzz::tell;

class Script {
  public:
    explicit Script(fuzz::Bytes& in) : in_(in), pool_(in) {}

    void step() {
        switch (in_.below(12)) {
            case 0:
                return renew();
            case 1:
                return assignRegion();
            case 2:
                return giveHoles();
            case 3:
                return giveEdgeHoles();
            case 4:
                return cleanUp();
            case 5:
                return mapOrHull();
            case 6:
                return assignContour();
            case 7:
                return setVertices();
            case 8:
                return assignSet();
            case 9:
                return fillSet();
            case 10:
                return archiveAndLoad();
            default:
                return askOne();
        }
    }

  private:
    using CleanUp = void (gmRegion::*)(gmRegion&) const;

    void renew() {
        const std::size_t kind = in_.below(3);
        if (kind == 0)
            pool_.region() = pool_.newRegion();
        else if (kind == 1)
            pool_.contour() = pool_.newContour();
        else
            pool_.set() = pool_.newSet();
    }

    void assignRegion() {
        gmRegion& target = *pool_.region();
        // A reference: nothing but the target may keep it alive.
        const gmRegion& source = *pool_.anyRegion().get();
        auto* edgeTarget = dynamic_cast<EdgeRegion*>(&target);
        const auto* edgeSource = dynamic_cast<const EdgeRegion*>(&source);
        if (&target != &source && reachesBelow(source, target))
            return;
        if (edgeTarget && edgeSource) {
            const EdgeRegion expected(*edgeSource);
            *edgeTarget = *edgeSource;
            require(answersOf(*edgeTarget) == answersOf(expected), "an assigned region is its source");
            return;
        }
        const gmRegion expected(source);
        target = source;
        require(answersOf(target) == answersOf(expected), "an assigned region is its source");
    }
    /// Whether what `source` holds would lead back to `target`.
    static bool reachesBelow(const gmRegion& source, const gmRegion& target) {
        const auto* edgeSource = dynamic_cast<const EdgeRegion*>(&source);
        return anyReaches(source.holes(), &target) || (edgeSource && anyReaches(edgeSource->holes(), &target));
    }

    void giveHoles() {
        gmRegion& owner = *pool_.region();
        // Either a list of their own, or the very list of a region that may end with what it replaces.
        const std::vector<RegionCPtr> listed = in_.oneIn(2) ? pool_.anyRegions() : std::vector<RegionCPtr>();
        const std::vector<RegionCPtr>& holes = listed.empty() ? pool_.anyRegion().get()->holes() : listed;
        if (anyReaches(holes, &owner))
            return;
        const std::vector<const void*> expected = addresses(holes);
        const std::vector<const void*> before = addresses(owner.holes());
        bool accepted = false;
        tell([&] {
            owner.holes(holes);
            accepted = true;
        });
        require(addresses(owner.holes()) == (accepted ? expected : before), "holes are those given, or the old ones");
    }
    /// Handles would keep alive what nothing but the pool is to.
    static std::vector<const void*> addresses(const std::vector<RegionCPtr>& regions) {
        std::vector<const void*> addresses;
        for (const RegionCPtr& region : regions)
            addresses.push_back(region.get());
        return addresses;
    }
    void giveEdgeHoles() {
        auto* owner = dynamic_cast<EdgeRegion*>(pool_.region().get());
        const EdgeRegionCPtr source = fuzz::Pool::edge(pool_.anyRegion());
        if (!owner || source.isNull())
            return;
        const EdgeRegion::Holes listed = {source};
        const EdgeRegion::Holes& holes = in_.oneIn(2) ? source->holes() : listed;
        if (!anyReaches(holes, owner))
            owner->holes(holes);
    }

    void cleanUp() {
        static const std::vector<CleanUp> cleanUps = {&gmRegion::regularize, &gmRegion::outerHull};
        const CleanUp order = in_.oneOf(cleanUps);
        const gmRegion& source = *pool_.anyRegion().get();
        gmRegion& target = *pool_.region();
        if (reachesBelow(source, target) || source.points().size() > fuzz::fewVertices)
            return;
        tell([&] {
            gmRegion expected;
            (gmRegion(source).*order)(expected);
            (source.*order)(target);
            require(answersOf(target) == answersOf(expected), "a result is the same wherever it is put");
        });
    }
    void mapOrHull() {
        const gmRegion& source = *pool_.anyRegion().get();
        gmRegion& target = *pool_.region();
        const bool hull = in_.oneIn(2);
        tell([&] {
            gmRegion expected;
            if (hull) {
                gmRegion(source).convexHull(expected);
                source.convexHull(target);
            } else {
                gmRegion(source).map(fuzz::turned(), expected);
                source.map(fuzz::turned(), target);
            }
            require(answersOf(target) == answersOf(expected), "a result is the same wherever it is put");
        });
    }

    void assignContour() {
        const Pool::Contour target = pool_.contour();
        const gmContour& source = pool_.anyContour();
        auto* edgeTarget = dynamic_cast<EdgeContour*>(target.get());
        const auto* edgeSource = dynamic_cast<const EdgeContour*>(&source);
        if (in_.oneIn(3)) {
            tell([&] { source.map(fuzz::turned(), *target); });
        } else if (edgeTarget && edgeSource) {
            const EdgeContour expected(*edgeSource);
            *edgeTarget = *edgeSource;
            require(answersOf(*edgeTarget) == answersOf(expected), "an assigned contour is its source");
        } else {
            const gmContour expected(source);
            *target = source;
            require(answersOf(*target) == answersOf(expected), "an assigned contour is its source");
        }
    }
    void setVertices() {
        gmContour& target = in_.oneIn(2) ? static_cast<gmContour&>(*pool_.region()) : *pool_.contour();
        auto* edgeTarget = dynamic_cast<EdgeContour*>(&target);
        const gmContour& source = pool_.anyContour();
        const auto* edgeSource = dynamic_cast<const EdgeContour*>(&source);
        const std::vector<gmVector<2>> expected = source.points();
        if (edgeTarget && edgeSource && in_.oneIn(2)) {
            tell([&] { edgeTarget->data(edgeSource->data()); });
            return;
        }
        tell([&] { target.points(source.points()); });
        require(Answers::of(target.points()) == Answers::of(expected), "vertices are those that were given");
    }

    void assignSet() {
        gmRegionSet& target = *pool_.set();
        const gmRegionSet& source = *pool_.set();
        if (!isSmall(source))
            return;
        auto* edgeTarget = dynamic_cast<EdgeSet*>(&target);
        const auto* edgeSource = dynamic_cast<const EdgeSet*>(&source);
        const std::size_t how = in_.below(3);
        tell([&] {
            gmRegionSet expected;
            if (how == 1) {
                gmRegionSet(source).regularize(expected);
                source.regularize(target);
            } else if (how == 2) {
                gmRegionSet(source).outerHull(expected);
                source.outerHull(target);
            } else {
                expected = source;
                if (edgeTarget && edgeSource)
                    *edgeTarget = *edgeSource;
                else
                    target = source;
            }
            require(Answers::of(target) == Answers::of(expected), "a set is the same wherever it is put");
        });
    }
    void fillSet() {
        gmRegionSet& target = *pool_.set();
        const gmRegionSet& source = *pool_.set();
        const auto mode = static_cast<gmContourDefs::IntersectionMode>(in_.below(4));
        if (!isSmall(target) || !isSmall(source))
            return;
        if (in_.oneIn(2))
            return tell([&] { target.regions(source.regions(), mode); });
        const RegionCPtr more = source.regions().empty() ? pool_.anyRegion() : source.regions().back();
        tell([&] { target.add(more, mode); });
    }
    static bool isSmall(const gmRegionSet& set) {
        std::size_t vertices = 0;
        for (const RegionCPtr& region : set.regions())
            vertices += region.isNull() ? 1 : region->points().size();
        return vertices <= 2 * fuzz::fewVertices;
    }

    void archiveAndLoad() {
        Pool::Region region = pool_.region();
        Pool::Set set = pool_.set();
        Pool::Contour contour = pool_.contour();
        std::ostringstream out;
        try {
            gmArchive storing(out);
            storing || set || region || contour;
        } catch (const gmArchive::Errors&) {
            return;  // edge points that do not match their vertices, say
        }
        std::istringstream in(out.str());
        gmArchive loading(in);
        Pool::Region loadedRegion;
        loading || pool_.set() || loadedRegion || pool_.contour();
        require(Answers::of(*loadedRegion) == Answers::of(*region), "what was stored is loaded");
        pool_.region() = loadedRegion;
    }
    void askOne() {
        answersOf(*pool_.anyRegion());
        answersOf(*pool_.set());
        answersOf(pool_.anyContour());
    }

    fuzz::Bytes& in_;
    Pool pool_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes in(data, size);
    Script script(in);
    for (int steps = 0; !in.empty() && steps < 64; ++steps)
        script.step();
    return 0;
}
