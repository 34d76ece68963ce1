// Shapes as text: readable in a test, and printed back in full when one fails.
#pragma once

#include <charconv>
#include <cstddef>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cntr/contour.h"
#include "cntr/inertia.h"
#include "foundation/display/color.h"
#include "foundation/math/matrix.h"
#include "foundation/math/vector.h"
#include "foundation/math/xform.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/rect.h"
#include "tests/reference/outline.h"

namespace support {

/// A number with as many digits as tell it from every other.
inline std::string text(double value) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}
inline std::string text(bool value) {
    return value ? "true" : "false";
}
inline std::string text(int value) {
    return std::to_string(value);
}
inline std::string text(long value) {
    return std::to_string(value);
}
inline std::string text(const gmVector<2>& v) {
    return text(v.x()) + " " + text(v.y());
}
inline std::string text(const gmRect& rect) {
    return rect.isEmpty() ? "empty rect" : "rect " + text(rect.lower()) + " to " + text(rect.upper());
}
inline std::string text(const gmCircle& circle) {
    return "circle " + text(circle.radius()) + " around " + text(circle.center());
}
inline std::string text(const gmEllipse& ellipse) {
    return "ellipse " + text(ellipse.xRadius()) + ", " + text(ellipse.yRadius()) + " turned by " +
           text(ellipse.rotation().value()) + " around " + text(ellipse.center());
}
inline std::string text(const gmLineSeg& seg) {
    return "segment " + text(seg.p1()) + " to " + text(seg.p2());
}
inline std::string text(const gmLine& line) {
    return "line through " + text(line.through()) + " along " + text(line.direction());
}
inline std::string text(const gmMatrix<2>& m) {
    return text(m(0, 0)) + " " + text(m(0, 1)) + ", " + text(m(1, 0)) + " " + text(m(1, 1));
}
inline std::string text(const gmXform<2>& xform) {
    return "xform [" + text(xform.matrix()) + "] + " + text(xform.translation());
}
inline std::string text(const gm_InertiaData& data) {
    return "area " + text(data.area()) + ", center " + text(data.centerOfMass()) + ", matrix [" +
           text(data.inertiaMatrix()) + "]";
}

template <class T>
std::string text(const std::vector<T>& values) {
    std::string result;
    for (std::size_t i = 0; i < values.size(); ++i)
        result += (i ? ", " : "") + text(static_cast<const T&>(values[i]));
    return "\"" + result + "\"";
}

inline std::string text(const reference::Outline& outline) {
    return (outline.closed ? "contour(" : "openContour(") + text(outline.points) + ")";
}
inline std::string text(const gmContour& contour) {
    return text(reference::Outline{contour.points(), contour.isClosed()}) + " labelled " +
           std::to_string(contour.label()) + ", cachedVectorSize " + std::to_string(contour.cachedVectorSize());
}

/// Reads one number the way text() writes it; "nan" and "inf" too.
inline double number(std::string_view word) {
    double value = 0.0;
    const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
    if (result.ec != std::errc() || result.ptr != word.data() + word.size())
        throw std::invalid_argument("not a number: " + std::string(word));
    return value;
}

/// "0 0, 4 0, 4 3" as vertices. Line ends separate as commas do; the empty text has no vertex.
inline reference::Points points(const std::string& list) {
    reference::Points result;
    std::istringstream vertices(list);
    for (std::string vertex; std::getline(vertices, vertex, ',');) {
        std::istringstream words(vertex);
        std::string x, y, more;
        if (!(words >> x >> y) || words >> more)
            throw std::invalid_argument("not a vertex: " + vertex);
        result.emplace_back(number(x), number(y));
    }
    return result;
}

}  // namespace support

inline void PrintTo(const gmVector<2>& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmRect& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmCircle& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmEllipse& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmLineSeg& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmLine& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmMatrix<2>& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmXform<2>& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gm_InertiaData& value, std::ostream* out) {
    *out << support::text(value);
}
inline void PrintTo(const gmContour& value, std::ostream* out) {
    *out << support::text(value);
}
