#include "docs/pictures/sheet.h"

#include <cmath>
#include <fstream>
#include <stdexcept>

namespace pictures {

namespace {

constexpr gmColor paper(252, 251, 248);
constexpr double turn = 6.283185307179586;

gmPair<double> pair(const gmVector<2>& v) {
    return {v.x(), v.y()};
}

/// The strokes of a digit in a box of 2 x 4.
std::vector<Points> strokes(int digit) {
    switch (digit) {
        case 0:
            return {{{0, 0}, {2, 0}, {2, 4}, {0, 4}, {0, 0}}};
        case 1:
            return {{{0.4, 3}, {1.2, 4}, {1.2, 0}}};
        case 2:
            return {{{0, 4}, {2, 4}, {2, 2}, {0, 2}, {0, 0}, {2, 0}}};
        case 3:
            return {{{0, 4}, {2, 4}, {2, 0}, {0, 0}}, {{0, 2}, {2, 2}}};
        case 4:
            return {{{0, 4}, {0, 2}, {2, 2}}, {{2, 4}, {2, 0}}};
        case 5:
            return {{{2, 4}, {0, 4}, {0, 2}, {2, 2}, {2, 0}, {0, 0}}};
        case 6:
            return {{{2, 4}, {0, 4}, {0, 0}, {2, 0}, {2, 2}, {0, 2}}};
        case 7:
            return {{{0, 4}, {2, 4}, {0.8, 0}}};
        case 8:
            return {{{0, 0}, {2, 0}, {2, 4}, {0, 4}, {0, 0}}, {{0, 2}, {2, 2}}};
        default:
            return {{{0, 0}, {2, 0}, {2, 4}, {0, 4}, {0, 2}, {2, 2}}};
    }
}

}  // namespace

Sheet::Sheet(const std::string& title, double width, double height) {
    tablet_.title(title);
    tablet_.background(paper);
    tablet_.size(width, height);
    tablet_.viewBox(gmRect({0, 0}, {width, height}));
    const double pixel = 1000.0 / std::max(width, height);
    tablet_.strokeWidth(eImageLayer, 1.5 * pixel);
    tablet_.strokeWidth(eOverlayLayer, 2.5 * pixel);
}

void Sheet::drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color, Layers layers) {
    const auto place = [this](const gmPair<double>& p) {
        return gmPair<double>(std::round(16.0 * (origin_.x() + scale_ * p.x())) / 16.0,
                              std::round(16.0 * (origin_.y() - scale_ * p.y())) / 16.0);
    };
    tablet_.drawLineSeg(place(from), place(to), color, layers);
}

void Sheet::line(const gmVector<2>& from, const gmVector<2>& to, const gmColor& color, Layers layers) {
    drawLineSeg(pair(from), pair(to), color, layers);
}

void Sheet::dashed(const gmVector<2>& from, const gmVector<2>& to, const gmColor& color) {
    const gmVector<2> way = to - from;
    const int dashes = std::max(1, static_cast<int>(std::floor(way.len() / pixels(9))));
    for (int i = 0; i < dashes; ++i)
        line(from + way * (i / static_cast<double>(dashes)), from + way * ((i + 0.6) / dashes), color);
}

void Sheet::arrow(const gmVector<2>& from, const gmVector<2>& to, const gmColor& color, bool isDashed) {
    if (isDashed)
        dashed(from, to, color);
    else
        line(from, to, color);
    const gmVector<2> back = (from - to).unit() * pixels(11);
    const gmVector<2> side = gmVector<2>(-back.y(), back.x()) * 0.4;
    line(to + back + side, to, color);
    line(to, to + back - side, color);
}

void Sheet::outline(const gmContour& contour, const gmColor& color, Layers layers) {
    contour.draw(*this, gmContourDefs::eOutline, color, layers);
}

void Sheet::region(const gmRegion& region, const gmColor& color) {
    outline(region, color);
    for (const RegionCPtr& hole : region.holes())
        this->region(*hole, color);
}

void Sheet::hatch(const gmRegion& region, bool considerHoles, const gmColor& color) {
    const gmRect box = region.encloseRect(gmXform<2>::I);
    const double gap = pixels(6);
    const double step = pixels(1);
    for (double y = box.lower().y() + 0.5 * gap; y < box.upper().y(); y += gap) {
        bool isDrawing = false;
        double start = 0.0;
        // One step more than the box, so that the last stroke ends.
        for (double x = box.lower().x() + 0.37 * step; x < box.upper().x() + 2.0 * step; x += step) {
            const bool isInside = region.inside({x, y}, considerHoles);
            if (isInside && !isDrawing)
                start = x;
            if (!isInside && isDrawing)
                line({start, y}, {x - step, y}, color);
            isDrawing = isInside;
        }
    }
}

void Sheet::rectangle(const gmRect& rect, const gmColor& color) {
    const gmVector<2> a = rect.lower();
    const gmVector<2> b = rect.upper();
    outline(gmContour({a, {b.x(), a.y()}, b, {a.x(), b.y()}}, true), color);
}

void Sheet::ellipse(const gmEllipse& ellipse, const gmColor& color) {
    const gmMatrix<2> rotation(ellipse.rotation(), ellipse.rotation(), 1.0, 1.0);
    Points points;
    for (int i = 0; i < 96; ++i)
        points.push_back(ellipse.center() + rotation * gmVector<2>(ellipse.xRadius() * std::cos(turn * i / 96),
                                                                   ellipse.yRadius() * std::sin(turn * i / 96)));
    outline(gmContour(points, true), color);
}

void Sheet::dot(const gmVector<2>& place, const gmColor& color) {
    for (const double radius : {1.0, 2.5, 4.0}) {
        Points points;
        for (int i = 0; i < 12; ++i)
            points.push_back(place + gmVector<2>(pixels(radius), gmRadian(turn * i / 12)));
        outline(gmContour(points, true), color, eOverlayLayer);
    }
}

void Sheet::cross(const gmVector<2>& place, const gmColor& color) {
    for (const gmVector<2>& arm : {gmVector<2>(pixels(8), 0), gmVector<2>(0, pixels(8))})
        line(place - arm, place + arm, color, eOverlayLayer);
}

void Sheet::number(int value, const gmVector<2>& place, const gmColor& color) {
    const std::string digits = std::to_string(value);
    const double unit = pixels(3.5);
    double left = place.x() - unit * (1.5 * static_cast<double>(digits.size()) - 0.5);
    for (const char digit : digits) {
        for (const Points& stroke : strokes(digit - '0')) {
            Points points;
            for (const gmVector<2>& p : stroke)
                points.emplace_back(left + unit * p.x(), place.y() + unit * (p.y() - 2.0));
            outline(gmContour(points, false), color);
        }
        left += 3.0 * unit;
    }
}

void Sheet::write(const gmSvgTablet& tablet, const std::string& fileName) {
    std::ofstream file(fileName);
    tablet.write(file);
    file.close();
    if (!file)
        throw std::runtime_error(fileName + ": cannot be written");
}

}  // namespace pictures
