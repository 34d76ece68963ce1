#include "tools/io/archive_read.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include "cntr/region.h"
#include "cntr/regionst.h"
#include "cntrtmpl/cntrtmpl.h"
#include "foundation/object/exception.h"
#include "foundation/object/instantiator.h"
#include "tools/io/archive_scan.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

using Kind = Outline::Kind;

constexpr long usualCacheSize = 3;

// A pointer of four bytes may lead to a million vertices, and so may the next: what stands in several places may take
// this much more than the archive, or this much in all.
constexpr std::size_t mostBytesEach = 16;
constexpr std::size_t alwaysBytes = std::size_t{64} << 20;

class Reader {
  public:
    /// Where features are not numbered, messages do not name them, and outlines have the number 0.
    Reader(std::size_t archiveBytes, bool numbersFeatures)
        : mostBytes_(std::max(alwaysBytes, archiveBytes * mostBytesEach)), numbersFeatures_(numbersFeatures) {}

    void takeFeature(const gmPersistent* object) {
        ++feature_;
        part_ = 0;
        if (const auto* const set = dynamic_cast<const gmRegionSet*>(object))
            takeSet(*set);
        else if (const auto* const region = dynamic_cast<const gmRegion*>(object))
            takeRegion(*region, region->label());
        else if (const auto* const contour = dynamic_cast<const gmContour*>(object))
            takeContour(*contour);
        else if (object)
            others_.push_back(gm_Instantiator::className(typeid(*object)));
        else
            ++emptyHandles_;
    }

    std::vector<Outline> outlines() { return std::move(outlines_); }

    void checkSingle() const {
        if (feature_ != 1)
            throw FileError("the archive holds " + counted(feature_, "shape", "shapes") + "; a single one is expected");
        if (!others_.empty())
            throw FileError("the archive holds no shape: " + others_.front());
    }

    void addNotes(Notes* notes) const {
        if (!notes)
            return;
        if (!others_.empty()) {
            const std::set<std::string> names(others_.begin(), others_.end());
            std::string text = counted(
                others_.size(), "object is no shape and is left out:", "objects are no shapes and are left out:");
            const char* separator = " ";
            for (const std::string& name : names) {
                text += separator + name;
                separator = ", ";
            }
            notes->push_back(text);
        }
        addNote(notes, emptyHandles_, "empty handle is left out", "empty handles are left out");
        addNote(notes, emptySets_, "empty region set is left out", "empty region sets are left out");
        addNote(notes, smallSets_, "region set of one region becomes a single polygon",
                "region sets of one region become single polygons");
        addNote(notes, closedContours_, "closed contour becomes a polygon, like a region",
                "closed contours become polygons, like regions");
        addNote(notes, islands_, "region in a hole of another becomes a polygon of its own",
                "regions in holes of others become polygons of their own");
        addNote(notes, repeated_, "time a shape stands in one more place and is repeated there",
                "times a shape stands in one more place and is repeated there");
        addNote(notes, innerLabels_, "label of a hole, or of a region in one, is left out",
                "labels of holes, or of regions in them, are left out");
        addNote(notes, withEdgePoints_, "shape with edge points becomes a plain one",
                "shapes with edge points become plain ones");
        addNote(notes, otherRegions_, "region set has other regions with edge points, which are left out",
                "region sets have other regions with edge points, which are left out");
        addNote(notes, cacheSizes_, "cachedVectorSize other than 3 is left out",
                "cachedVectorSizes other than 3 are left out");
    }

  private:
    [[noreturn]] void refuse(const Outline& outline, const std::string& why) const {
        throw FileError(placeText(outline.feature, outline.part, outline.isClosed() ? outline.ring : 0) + ": " + why);
    }

    /// Counts what a shape takes in the outlines, or a list of shapes to walk through.
    void spend(std::size_t bytes) {
        bytes_ += bytes;
        if (bytes_ <= mostBytes_)
            return;
        const std::string place = placeText(number(), part_);
        throw FileError((place.empty() ? "" : place + ": ") +
                        "the shapes that stand in several places come to more than can be repeated");
    }

    std::size_t number() const { return numbersFeatures_ ? feature_ : 0; }

    template <class Shape>
    void look(const Shape& shape) {
        repeated_ += !seen_.insert(&shape).second;
        cacheSizes_ += shape.cachedVectorSize() != usualCacheSize;
    }

    void takeSet(const gmRegionSet& set) {
        look(set);
        const std::vector<RegionCPtr> regions = set.regions();
        spend(regions.size() * sizeof(RegionCPtr));
        emptySets_ += regions.empty();
        smallSets_ += regions.size() == 1;
        if (const auto* const withEdgePoints = dynamic_cast<const gmRegionSetT<gmEdgelet>*>(&set)) {
            ++withEdgePoints_;
            const auto same = withEdgePoints->regionsT();
            otherRegions_ += !std::equal(same.begin(), same.end(), regions.begin(), regions.end(),
                                         [](const auto& a, const RegionCPtr& b) { return a == b; });
        }
        for (const RegionCPtr& region : regions) {
            if (region.isNull())
                ++emptyHandles_;
            else
                takeRegion(*region, region->label());
        }
    }

    void takeContour(const gmContour& contour) {
        ++part_;
        closedContours_ += contour.isClosed();
        takeOutline(contour, contour.isClosed() ? Kind::eOuter : Kind::eLine, 1, contour.label());
    }

    void takeRegion(const gmRegion& region, unsigned long label) {
        ++part_;
        takeOutline(region, Kind::eOuter, 1, label);
        spend(region.holes().size() * sizeof(RegionCPtr));
        if (!region.holes().empty() && region.points().empty())
            refuse(outlines_.back(), "the region has holes and no vertex");
        std::size_t ring = 1;
        for (const RegionCPtr& hole : region.holes()) {
            if (hole.isNull()) {
                ++emptyHandles_;
                continue;
            }
            takeOutline(*hole, Kind::eHole, ++ring, label);
            innerLabels_ += hole->label() != 0;
        }
        for (const RegionCPtr& hole : region.holes())
            if (!hole.isNull())
                takeIslands(*hole, label);
    }

    void takeIslands(const gmRegion& hole, unsigned long label) {
        spend(hole.holes().size() * sizeof(RegionCPtr));
        for (const RegionCPtr& island : hole.holes()) {
            if (island.isNull()) {
                ++emptyHandles_;
                continue;
            }
            ++islands_;
            innerLabels_ += island->label() != 0 && island->label() != label;
            takeRegion(*island, label);
        }
    }

    void takeOutline(const gmContour& contour, Kind kind, std::size_t ring, unsigned long label) {
        look(contour);
        spend(sizeof(Outline) + contour.points().size() * sizeof(gmVector<2>));
        withEdgePoints_ += dynamic_cast<const gmContourT<gmEdgelet>*>(&contour) != nullptr;
        Outline outline;
        outline.feature = number();
        outline.part = part_;
        outline.ring = ring;
        outline.kind = kind;
        outline.label = static_cast<std::uint32_t>(label);
        check(outline, contour.points());
        outline.points = contour.points();
        outlines_.push_back(std::move(outline));
    }

    void check(const Outline& outline, const std::vector<gmVector<2>>& points) const {
        const std::size_t fewest = outline.isClosed() ? 3 : 2;
        const bool mayBeEmpty = outline.kind != Kind::eHole;
        if (points.size() < fewest && !(points.empty() && mayBeEmpty))
            refuse(outline, (outline.isClosed() ? "an outline needs at least 3 vertices, and this one has "
                                                : "a line needs at least 2 vertices, and this one has ") +
                                std::to_string(points.size()));
        for (std::size_t i = 0; i < points.size(); ++i)
            if (!std::isfinite(points[i].x()) || !std::isfinite(points[i].y()))
                refuse(outline, "vertex " + std::to_string(i + 1) + " is (" + formatNumber(points[i].x()) + ", " +
                                    formatNumber(points[i].y()) + "), which is not finite");
    }

    const std::size_t mostBytes_;
    const bool numbersFeatures_;
    std::size_t bytes_ = 0;
    std::vector<Outline> outlines_;
    std::size_t feature_ = 0;
    std::size_t part_ = 0;

    std::set<const void*> seen_;
    std::vector<std::string> others_;
    std::size_t emptyHandles_ = 0;
    std::size_t emptySets_ = 0;
    std::size_t smallSets_ = 0;
    std::size_t closedContours_ = 0;
    std::size_t islands_ = 0;
    std::size_t repeated_ = 0;
    std::size_t innerLabels_ = 0;
    std::size_t withEdgePoints_ = 0;
    std::size_t otherRegions_ = 0;
    std::size_t cacheSizes_ = 0;
};

/// Throws the FileError that says what the library does not: where.
[[noreturn]] void refuseDamaged(std::string_view bytes, const gmException& error) {
    const ArchiveScan scan = scanArchive(bytes, nullptr, {});
    throw FileError(scan.fault ? scan.fault->what() : error.what());
}

void read(std::string_view bytes, Reader& reader) {
    std::istringstream in{std::string(bytes)};
    std::size_t feature = 0;
    try {
        gmArchive archive(in);
        while (static_cast<std::size_t>(in.tellg()) < bytes.size()) {
            gmPersistent* object = nullptr;
            gmPersistent::serializePointer(archive, nullptr, object);
            ++feature;
            reader.takeFeature(object);
        }
    } catch (const gmException& error) {
        refuseDamaged(bytes, error);
    } catch (const FileError& error) {
        const ArchiveScan::Root root = scanArchive(bytes, nullptr, {}).roots.at(feature - 1);
        throw FileError("byte " + std::to_string(root.byte) + ", object " + std::to_string(root.object) + ", " +
                        error.what());
    }
}

}  // namespace

std::vector<Outline> readArchive(std::string_view bytes, Notes* notes) {
    Reader reader(bytes.size(), true);
    read(bytes, reader);
    reader.addNotes(notes);
    return reader.outlines();
}

std::vector<Outline> readArchiveShape(std::string_view bytes) {
    Reader reader(bytes.size(), false);
    read(bytes, reader);
    reader.checkSingle();
    std::vector<Outline> outlines = reader.outlines();
    for (Outline& outline : outlines)
        outline.feature = 1;
    return outlines;
}

}  // namespace mokshape
