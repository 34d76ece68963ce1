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

/// The text as the content of an element. What XML cannot hold at all becomes a blank.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else
            result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    return result;
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
    if (!std::isfinite(thousandths) || thousandths < 0.0)
        throw gmMathError::OutOfRange("no such line width");
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
    const std::string title = title_.empty() ? "" : "<title>" + escaped(title_) + "</title>\n";
    if (x.size() >= 0.0) {
        const double side = std::max(x.size(), y.size());
        const double larger = side > 0.0 ? side : 1.0;  // a lone dot is seen in a picture of size 1
        const double margin = larger / 50.0;
        if (!std::isfinite(larger + 2.0 * margin) || !std::isfinite(x.low - margin) || !std::isfinite(y.low - margin))
            throw gmMathError::OutOfRange("the picture is larger than the largest number");
        const std::string left = number(x.low - margin);
        const std::string top = number(y.low - margin);
        const std::string width = number(x.size() + 2.0 * margin);
        const std::string height = number(y.size() + 2.0 * margin);
        text += " viewBox=\"" + left + ' ' + top + ' ' + width + ' ' + height + '"';
        text += " fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" + title;
        if (background_)
            text += "<rect x=\"" + left + "\" y=\"" + top + "\" width=\"" + width + "\" height=\"" + height +
                    "\" fill=\"" + hex(*background_) + "\"/>\n";
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
        text += ">\n" + title;
    }
    out << text << "</svg>\n";
}
