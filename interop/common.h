// What the conversions between this library's shapes and those of others have in common. Include opencv.h or
// boost_geometry.h.
#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "cntr/defs.h"
#include "cntr/region.h"
#include "foundation/math/vector.h"

/// What the conversions have in common.
///
/// **Nothing is cut off.** What the other side does not hold is refused with gmContourDefs::BadParams, whose message
/// names the element: "contour 2, point 17: x = 0.5 is not a whole number". Elements are counted from 0.
///
/// **Direction.** Outlines are turned by the sign of their area: one whose lobes cancel stays as it is, and with
/// coordinates beyond about 1e154, where the area overflows, the direction is not to be relied on.
///
/// **Outlines that come again.** One that is in a list or among the holes more than once comes as often. Holes that are
/// shared on each of many levels would double with every level: after mostRepeats outlines that came before, a
/// conversion is refused.
namespace gnInterop {

/// What becomes of a coordinate that the other type does not hold exactly.
enum Rounding : int {
    /// It is refused.
    eExact = 0,
    /// It becomes the nearest number that the type holds; half way between two, the even one. What is out of range is
    /// refused all the same, and so is NaN where the type has none.
    eNearest = 1,
};

/// How many outlines one conversion takes that it has had before.
inline constexpr std::size_t mostRepeats = std::size_t{1} << 18;

namespace detail {

/// Throws: gmContourDefs::BadParams, always.
[[noreturn]] inline void refuse(const std::string& element, const std::string& why) {
    throw gmContourDefs::BadParams(element.empty() ? why : element + ": " + why);
}

/// The element of what is converted as a whole.
inline std::string unnamed() {
    return {};
}

inline std::string within(const std::string& outer, const std::string& inner) {
    return outer.empty() ? inner : outer + ", " + inner;
}

inline std::string numbered(const char* name, std::size_t number) {
    return name + (" " + std::to_string(number));
}

inline std::string text(double value) {
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

/// Every value of the integer type lies below.
template <class Integer>
constexpr double beyond() {
    constexpr Integer half = static_cast<Integer>(std::numeric_limits<Integer>::max() / 2 + 1);
    return 2.0 * static_cast<double>(half);
}

/// Whether a double holds the value; NaN and infinities, yes.
template <class Number>
bool fitsDouble(Number value) {
    static_assert(std::is_arithmetic_v<Number>, "coordinates are built-in numbers");
    if constexpr (std::is_integral_v<Number>) {
        const double converted = static_cast<double>(value);
        // The value next to the end of the range may round to beyond it, where there is no way back.
        return converted < beyond<Number>() && static_cast<Number>(converted) == value;
    } else {
        if (!std::isfinite(value))
            return true;
        return std::fabs(value) <= static_cast<Number>(std::numeric_limits<double>::max()) &&
               static_cast<Number>(static_cast<double>(value)) == value;
    }
}

/// `element()` names the coordinate's point.
template <class Number, class Element>
double coordinateFrom(Number value, const char* axis, const Element& element) {
    if constexpr (std::is_same_v<Number, float> || std::is_same_v<Number, double>)
        return static_cast<double>(value);
    else {
        if (!fitsDouble(value))
            refuse(element(), std::string(axis) + " has more digits than a double");
        return static_cast<double>(value);
    }
}

/// `element()` names the coordinate's point.
template <class Number, class Element>
Number coordinateTo(double value, const char* axis, Rounding rounding, const Element& element) {
    static_assert(std::is_arithmetic_v<Number>, "coordinates are built-in numbers");
    const auto complain = [&](const char* why) { refuse(element(), std::string(axis) + " = " + text(value) + why); };
    if constexpr (std::is_integral_v<Number>) {
        if (!std::isfinite(value))
            complain(" is not a whole number");
        const double whole = value - std::remainder(value, 1.0);
        if (whole != value && rounding != eNearest)
            complain(" is not a whole number");
        constexpr double lowest = std::is_signed_v<Number> ? -beyond<Number>() : 0.0;
        if (!(whole >= lowest && whole < beyond<Number>()))
            complain(" is out of range");
        return static_cast<Number>(whole);
    } else if constexpr (std::is_same_v<Number, float>) {
        if (std::isfinite(value) && std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max()))
            complain(" is out of range");
        const float narrow = static_cast<float>(value);
        if (static_cast<double>(narrow) != value && !std::isnan(value) && rounding != eNearest)
            complain(" has more digits than a float");
        return narrow;
    } else {
        return static_cast<Number>(value);
    }
}

/// Positive for an outline that runs counter-clockwise with y up.
inline double twiceSignedArea(const std::vector<gmVector<2>>& outline) {
    double sum = 0.0;
    // From the first vertex, so that it does not matter how far away the origin is.
    for (std::size_t i = 2; i < outline.size(); ++i)
        sum += (outline[i - 1] - outline[0]).cross(outline[i] - outline[0]);
    return sum;
}

/// Has the outline of a region run counter-clockwise with y up, since the second moments of others are not what one
/// would expect (see gf_InertiaDataPolygon). The first vertex stays the first.
inline void turn(std::vector<gmVector<2>>& outline) {
    if (twiceSignedArea(outline) < 0.0)
        std::reverse(outline.begin() + 1, outline.end());
}

/// Which holes lead from a region to an outline inside: the hole's number, the number of the hole in this one, ...
using Path = std::vector<std::size_t>;

inline std::string named(const std::string& region, const Path& path) {
    std::string name = region;
    for (const std::size_t hole : path) {
        if (!name.empty())
            name += ", ";
        name += numbered("hole", hole);
    }
    return name;
}

/// Goes through the regions of one conversion.
class Nesting {
  public:
    /// Calls visit(outline, path) for the region, its holes, their holes and so on, for each before its own holes.
    /// Throws: gmContourDefs::BadParams "holes form a cycle", and for more than mostRepeats outlines that came before,
    /// in this region or in those of earlier calls; gmBadPointer for an empty handle; what `visit` does.
    template <class Visit>
    void visit(const gmRegion& region, const std::string& name, const Visit& visit) {
        // A list of its own instead of recursion: nesting may be deeper than the stack.
        std::vector<const gmRegion*> open;
        Path path;
        const auto enter = [&](const gmRegion& outline) {
            note(outline, name, path);
            visit(outline, static_cast<const Path&>(path));
            open.push_back(&outline);
            path.push_back(0);
        };
        enter(region);
        while (!open.empty()) {
            const std::vector<RegionCPtr>& holes = open.back()->holes();
            if (path.back() < holes.size()) {
                enter(*holes[path.back()]);
                continue;
            }
            isOpen_[open.back()] = false;
            open.pop_back();
            path.pop_back();
            if (!path.empty())
                ++path.back();
        }
    }

  private:
    void note(const gmRegion& outline, const std::string& name, const Path& path) {
        const auto [entry, isNew] = isOpen_.emplace(&outline, true);
        if (isNew)
            return;
        if (entry->second)
            refuse(named(name, path), "holes form a cycle");
        if (++repeats_ > mostRepeats)
            refuse(named(name, path), "more than " + std::to_string(mostRepeats) +
                                          " outlines came before: regions and holes are shared too often");
        entry->second = true;
    }

    std::unordered_map<const gmRegion*, bool> isOpen_;  // every outline that came
    std::size_t repeats_ = 0;
};

/// Gives the region these holes, which lie on its outline's inside.
/// `refuseHole(i)` is called for each that has a point in common with the outline, and may leave it out by returning.
template <class RefuseHole>
void setHoles(gmRegion& region, const std::vector<RegionCPtr>& holes, const RefuseHole& refuseHole) {
    if (holes.empty())
        return;
    try {
        region.holes(holes);
    } catch (const gmContourDefs::BadParams&) {
        std::vector<RegionCPtr> apart;
        for (std::size_t i = 0; i < holes.size(); ++i) {
            if (region.gmContour::intersections(*holes[i]).empty())
                apart.push_back(holes[i]);
            else
                refuseHole(i);
        }
        region.holes(apart);
    }
}

}  // namespace detail
}  // namespace gnInterop
