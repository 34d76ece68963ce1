#include "foundation/display/svgtablet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>

#include "foundation/object/exception.h"

namespace {

std::string number(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::string(text.data(), end);
}

std::string hex(const gmColor& color) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned channel : {color.red(), color.green(), color.blue()}) {
        text += digits[channel / 16];
        text += digits[channel % 16];
    }
    return text;
}

struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    double size() const { return high - low; }
};

}  // namespace

gmUITablet::~gmUITablet() = default;

void gmSvgTablet::drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                              Layers layers) {
    for (const double value : {from.x(), from.y(), to.x(), to.y()})
        if (!std::isfinite(value))
            throw gmMathError::OutOfRange("a picture cannot hold a coordinate that is not finite");
    segments_[layers == eOverlayLayer].push_back({from, to, color});
}

void gmSvgTablet::strokeWidth(Layers layers, double thousandths) {
    strokeWidth_[layers == eOverlayLayer] = thousandths;
}

void gmSvgTablet::write(std::ostream& out) const {
    const double sign = yAxis_ == eYUp ? -1.0 : 1.0;
    Extent x;
    Extent y;
    for (const auto& layer : segments_)
        for (const Segment& segment : layer)
            for (const auto& end : {segment.from, segment.to}) {
                x.add(end.x());
                y.add(sign * end.y());
            }
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
    if (x.size() >= 0.0) {
        const double larger = std::max({x.size(), y.size(), std::numeric_limits<double>::min()});
        const double margin = larger / 50.0;
        text += " viewBox=\"" + number(x.low - margin) + ' ' + number(y.low - margin) + ' ' +
                number(x.size() + 2.0 * margin) + ' ' + number(y.size() + 2.0 * margin) + '"';
        text += " fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
        for (int layer = 0; layer < 2; ++layer) {
            text += "<g id=\"" + std::string(layer == eOverlayLayer ? "overlay" : "image") + "\" stroke-width=\"" +
                    number(strokeWidth_[layer] * larger / 1000.0) + "\">\n";
            const Segment* previous = nullptr;
            for (const Segment& segment : segments_[layer]) {
                if (!previous || previous->to != segment.from || previous->color != segment.color) {
                    text += previous ? "\"/>\n" : "";
                    text += "<path stroke=\"" + hex(segment.color) + "\" d=\"M" + number(segment.from.x()) + ' ' +
                            number(sign * segment.from.y());
                }
                text += " L" + number(segment.to.x()) + ' ' + number(sign * segment.to.y());
                previous = &segment;
            }
            text += previous ? "\"/>\n</g>\n" : "</g>\n";
        }
    } else {
        text += ">\n";
    }
    out << text << "</svg>\n";
}
