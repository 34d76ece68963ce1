#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "foundation/shapes/lineseg.h"
#include "tests/reference/outline.h"

namespace reference {

inline long closestVertexIndex(const Outline& outline, const gmVector<2>& point) {
    double best = std::numeric_limits<double>::infinity();
    long index = 0;
    for (std::size_t i = 0; i < outline.points.size(); i++) {
        const double d = point.distance(outline.points[i]);
        if (d < best) {
            best = d;
            index = static_cast<long>(i);
        }
    }
    return index;
}

/// One vertex at least when `vertexOnly`.
inline gmVector<2> closestPoint(const Outline& outline, const gmVector<2>& point, bool vertexOnly) {
    if (vertexOnly)
        return outline.points[static_cast<std::size_t>(closestVertexIndex(outline, point))];
    double best = std::numeric_limits<double>::infinity();
    gmVector<2> result(0.0, 0.0);
    for (const Edge& edge : edges(outline)) {
        const gmVector<2> p1 = outline.points[edge.from];
        const gmVector<2> p2 = outline.points[edge.to];
        const double d = gmLineSeg(p1, p2).distToPoint(point);
        if (d < best) {
            best = d;
            const gmVector<2> v = p2 - p1;
            const double t = (point - p1).dot(v) / v.dot(v);
            if (t > 0.0 && t < 1.0)
                result = gmLineSeg(p1, p2).line().proj(point).position();
            else if (t >= 1.0)
                result = p2;
            else
                result = p1;
        }
    }
    return result;
}

inline double distToPoint(const Outline& outline, const gmVector<2>& point, bool vertexOnly) {
    return closestPoint(outline, point, vertexOnly).distance(point);
}

/// The number of the cell that holds a coordinate, halves rounded away from zero; none for NaN. Numbers that do not fit
/// stay at the last that does.
inline std::optional<std::int64_t> cellNumber(double coordinate, double tolerance) {
    const double scaled = coordinate * (1.0 / tolerance);
    const double moved = scaled >= 0.0 ? scaled + 0.5 : scaled - 0.5;
    if (std::isnan(moved))
        return std::nullopt;
    if (moved >= 9223372036854775808.0)
        return std::numeric_limits<std::int64_t>::max();
    if (moved < -9223372036854775808.0)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(moved);
}

/// A cell and its two neighbours, where there are numbers for them.
inline std::vector<std::int64_t> around(std::int64_t cell) {
    std::vector<std::int64_t> result;
    if (cell != std::numeric_limits<std::int64_t>::min())
        result.push_back(cell - 1);
    result.push_back(cell);
    if (cell != std::numeric_limits<std::int64_t>::max())
        result.push_back(cell + 1);
    return result;
}

inline std::vector<int> vertexIndex(const Outline& outline, const gmVector<2>& point, double tolerance) {
    std::vector<int> result;
    if (!(tolerance > 0.0))
        return result;
    if (std::isinf(tolerance) || std::isinf(1.0 / tolerance)) {  // no cells of that size
        for (std::size_t i = 0; i < outline.points.size(); i++)
            if (outline.points[i].distance(point) < tolerance)
                result.push_back(static_cast<int>(i));
        return result;
    }
    std::map<std::pair<std::int64_t, std::int64_t>, std::vector<int>> grid;
    for (std::size_t i = 0; i < outline.points.size(); i++) {
        const auto cx = cellNumber(outline.points[i].x(), tolerance);
        const auto cy = cellNumber(outline.points[i].y(), tolerance);
        if (cx && cy)
            grid[{*cx, *cy}].push_back(static_cast<int>(i));
    }
    const auto qx = cellNumber(point.x(), tolerance);
    const auto qy = cellNumber(point.y(), tolerance);
    if (!qx || !qy)
        return result;
    for (const std::int64_t x : around(*qx))
        for (const std::int64_t y : around(*qy)) {
            const auto cell = grid.find({x, y});
            if (cell == grid.end())
                continue;
            for (const int j : cell->second)
                if (outline.points[static_cast<std::size_t>(j)].distance(point) < tolerance)
                    result.push_back(j);
        }
    return result;
}

inline double medianFeatureSize(const Outline& outline) {
    std::vector<double> lengths;
    for (const Edge& edge : edges(outline))
        lengths.push_back(outline.points[edge.from].distance(outline.points[edge.to]));
    if (lengths.empty())
        return 0.0;
    const auto before = [](double a, double b) { return a < b || (!std::isnan(a) && std::isnan(b)); };
    for (std::size_t i = 1; i < lengths.size(); i++)
        for (std::size_t j = i; j > 0 && before(lengths[j], lengths[j - 1]); j--)
            std::swap(lengths[j], lengths[j - 1]);
    return lengths[lengths.size() / 2];
}

}  // namespace reference
