#include "tools/mokshape/panels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace mokshape {

namespace {

// In units of the picture, in which a stroke is about one wide.
constexpr double contentSide = 640.0;  // the larger side of the largest content
constexpr double smallestSide = 80.0;  // of a panel's inside, so that a straight line has room
constexpr double padding = 28.0;
constexpr double gap = 20.0;
// Sizes that differ by more than this do not share a scale: the smaller would be a spot.
constexpr double similar = 4.0;
constexpr double mostEnlargement = 1.5;

double largerSide(const gmRect& extent) {
    return std::max(extent.size().x(), extent.size().y());
}

/// Picture units per coordinate unit, for each content.
std::vector<double> scalesOf(const std::vector<gmRect>& extents) {
    double largest = 0.0;
    double smallest = std::numeric_limits<double>::infinity();
    for (const gmRect& extent : extents) {
        largest = std::max(largest, largerSide(extent));
        smallest = std::min(smallest, largerSide(extent));
    }
    const bool share = largest <= similar * smallest;
    std::vector<double> scales;
    for (const gmRect& extent : extents) {
        const double scale = contentSide / (share ? largest : largerSide(extent));
        // A point has no size to scale.
        scales.push_back(std::isfinite(scale) ? scale : 1.0);
    }
    return scales;
}

struct Size {
    double width = 0.0;
    double height = 0.0;
};

/// The panels [first, last) side by side.
struct Row {
    std::size_t first = 0;
    std::size_t last = 0;
    double contentWidth = 0.0;
    double contentHeight = 0.0;
    double enlargement = 1.0;  ///< so that a short row fills the width

    double blankWidth() const { return static_cast<double>(last - first) * (2.0 * padding + gap) - gap; }
    double height() const { return enlargement * contentHeight + 2.0 * padding; }
};

struct Arrangement {
    std::vector<Row> rows;
    Size size;
};

Arrangement arrange(const std::vector<Size>& contents, std::size_t longestRow) {
    Arrangement result;
    for (std::size_t i = 0; i < contents.size(); ++i) {
        if (i % longestRow == 0)
            result.rows.push_back({i, i});
        Row& row = result.rows.back();
        row.last = i + 1;
        row.contentWidth += contents[i].width;
        row.contentHeight = std::max(row.contentHeight, contents[i].height);
    }
    Size& size = result.size;
    for (const Row& row : result.rows)
        size.width = std::max(size.width, row.contentWidth + row.blankWidth());
    size.height = -gap;
    for (Row& row : result.rows) {
        row.enlargement = std::min((size.width - row.blankWidth()) / row.contentWidth, mostEnlargement);
        size.height += row.height() + gap;
    }
    return result;
}

/// The arrangement that leaves the contents largest where the picture has to fit into a page of 3 by 2.
Arrangement bestArrangement(const std::vector<Size>& contents) {
    Arrangement best;
    double smallestPage = std::numeric_limits<double>::infinity();
    for (std::size_t longestRow = contents.size(); longestRow > 0; --longestRow) {
        Arrangement arrangement = arrange(contents, longestRow);
        const double page = std::max(arrangement.size.width / 3.0, arrangement.size.height / 2.0);
        if (page < smallestPage) {
            smallestPage = page;
            best = std::move(arrangement);
        }
    }
    return best;
}

/// What `arrangementOf` makes of the sizes in the picture.
template <class ArrangementOf>
std::vector<Panel> layOut(const std::vector<gmRect>& extents, ArrangementOf arrangementOf) {
    if (extents.empty())
        return {};
    const std::vector<double> scales = scalesOf(extents);
    std::vector<Size> contents;
    for (std::size_t i = 0; i < extents.size(); ++i)
        contents.push_back({std::max(extents[i].size().x() * scales[i], smallestSide),
                            std::max(extents[i].size().y() * scales[i], smallestSide)});

    std::vector<Panel> panels;
    const Arrangement arrangement = arrangementOf(contents);
    double y = 0.0;
    for (const Row& row : arrangement.rows) {
        const double used = row.enlargement * row.contentWidth + row.blankWidth();
        const double slack = (arrangement.size.width - used) / static_cast<double>(row.last - row.first);
        double x = 0.0;
        for (std::size_t i = row.first; i < row.last; ++i) {
            const double width = row.enlargement * contents[i].width + 2.0 * padding + slack;
            const gmRect frame({x, y}, {width, row.height()});
            const double scale = scales[i] * row.enlargement;
            const gmVector<2> centre = extents[i].origin() + extents[i].size() / 2.0;
            const gmVector<2> middle = frame.origin() + frame.size() / 2.0;
            panels.push_back({gmXform<2>(gmMatrix<2>(scale, 0.0, 0.0, scale), middle - centre * scale), frame});
            x += width + gap;
        }
        y += row.height() + gap;
    }
    return panels;
}

}  // namespace

std::vector<Panel> layOut(const std::vector<gmRect>& extents) {
    return layOut(extents, bestArrangement);
}

std::vector<Panel> layOutInRow(const std::vector<gmRect>& extents) {
    return layOut(extents, [](const std::vector<Size>& contents) { return arrange(contents, contents.size()); });
}

}  // namespace mokshape
