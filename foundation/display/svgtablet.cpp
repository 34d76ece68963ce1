#include "foundation/display/svgtablet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>

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

/// How many bytes the character at the start of the text has; 0 when it is not UTF-8 or XML cannot hold it.
std::size_t characterLength(std::string_view text) {
    constexpr int firstLead[] = {0x00, 0xc0, 0xe0, 0xf0};
    constexpr int firstCode[] = {0x00, 0x80, 0x800, 0x10000};
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0; };
    const int more = byte(0) < 0x80 ? 0 : byte(0) < 0xe0 ? 1 : byte(0) < 0xf0 ? 2 : 3;
    int code = byte(0) - firstLead[more];  // of a byte that starts no character: one that the ranges below lack
    for (int i = 1; i <= more; ++i) {
        const int next = byte(static_cast<std::size_t>(i)) - 0x80;
        if (next < 0 || next >= 0x40)
            return 0;
        code = code * 0x40 + next;
    }
    const bool isHeld = code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code < 0xd800) ||
                        (code > 0xdfff && code < 0xfffe) || (code > 0xffff && code <= 0x10ffff);
    return isHeld && code >= firstCode[more] ? static_cast<std::size_t>(more) + 1 : 0;
}

/// The text as the content of an element.
std::string escaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            throw gmMathError::OutOfRange("a title that is not UTF-8 or has a character that XML cannot hold");
        if (text[0] == '&')
            result += "&amp;";
        else if (text[0] == '<')
            result += "&lt;";
        else if (text[0] == '>')
            result += "&gt;";
        else if (text[0] == '\r')
            result += "&#13;";  // parsers turn a bare one into a line feed
        else
            result += text.substr(0, length);
        text.remove_prefix(length);
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

void gmSvgTablet::size(double width, double height) {
    if (!std::isfinite(width) || !std::isfinite(height) || width <= 0.0 || height <= 0.0)
        throw gmMathError::OutOfRange("no such size of a picture");
    size_ = {width, height};
}

void gmSvgTablet::viewBox(const gmRect& box) {
    const gmVector<2> size = box.size();
    if (!std::isfinite(size.x()) || !std::isfinite(size.y()) || size.x() <= 0.0 || size.y() <= 0.0)
        throw gmMathError::OutOfRange("a view box that is empty, flat or not finite");
    const double top = yAxis_ == eYUp ? -box.upper().y() : box.lower().y();
    viewBox_ = Box{box.lower().x(), top, size.x(), size.y(), std::max(size.x(), size.y())};
}

void gmSvgTablet::title(const std::string& title) {
    title_ = escaped(title);
}

std::optional<gmSvgTablet::Box> gmSvgTablet::drawnBox() const {
    Extent x;
    Extent y;
    for (const auto& layer : segments_)
        for (const Segment& segment : layer)
            for (const auto& end : {segment.from, segment.to}) {
                x.add(end.x());
                y.add(sign() * end.y());
            }
    if (x.size() < 0.0)
        return std::nullopt;
    const double side = std::max(x.size(), y.size());
    const double larger = side > 0.0 ? side : 1.0;  // a lone dot is seen in a picture of size 1
    const double margin = larger / 50.0;
    const Box box{x.low - margin, y.low - margin, x.size() + 2.0 * margin, y.size() + 2.0 * margin, larger};
    if (!std::isfinite(larger + 2.0 * margin) || !std::isfinite(box.left) || !std::isfinite(box.top))
        throw gmMathError::OutOfRange("the picture is larger than the largest number");
    if (box.width <= 0.0 || box.height <= 0.0)
        throw gmMathError::OutOfRange("the picture is smaller than the smallest number");
    return box;
}

std::string gmSvgTablet::group(Layers layer, const Box& box) const {
    const double width = strokeWidth_[layer] * box.larger / 1000.0;
    if (!std::isfinite(width) || (width > 0.0) != (strokeWidth_[layer] > 0.0))
        throw gmMathError::OutOfRange("the lines are wider or thinner than a number tells");
    std::string text = "<g id=\"" + std::string(layer == eOverlayLayer ? "overlay" : "image") + "\" stroke-width=\"" +
                       number(width) + "\">\n";
    const Segment* previous = nullptr;
    for (const Segment& segment : segments_[layer]) {
        if (!previous || previous->to != segment.from || previous->color != segment.color) {
            text += previous ? "\"/>\n" : "";
            text += "<path stroke=\"" + hex(segment.color) + "\" d=\"M" + number(segment.from.x()) + ' ' +
                    number(sign() * segment.from.y());
        }
        text += " L" + number(segment.to.x()) + ' ' + number(sign() * segment.to.y());
        previous = &segment;
    }
    return text + (previous ? "\"/>\n</g>\n" : "</g>\n");
}

void gmSvgTablet::write(std::ostream& out) const {
    const std::optional<Box> box = viewBox_ ? viewBox_ : drawnBox();
    const std::string title = title_.empty() ? "" : "<title>" + title_ + "</title>\n";
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
    if (size_)
        text += " width=\"" + number(size_->x()) + "\" height=\"" + number(size_->y()) + '"';
    if (box) {
        const std::string left = number(box->left);
        const std::string top = number(box->top);
        const std::string width = number(box->width);
        const std::string height = number(box->height);
        text += " viewBox=\"" + left + ' ' + top + ' ' + width + ' ' + height + '"';
        text += " fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" + title;
        if (background_)
            text += "<rect x=\"" + left + "\" y=\"" + top + "\" width=\"" + width + "\" height=\"" + height +
                    "\" fill=\"" + hex(*background_) + "\"/>\n";
        text += group(eImageLayer, *box) + group(eOverlayLayer, *box);
    } else {
        text += ">\n" + title;
    }
    text += "</svg>\n";
    // Not formatted, so that a width and a fill set on the stream put nothing before the picture.
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
}
