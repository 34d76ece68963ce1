#include "tools/mokshape/report.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <ostream>
#include <string>

#include "tools/io/text.h"
#include "tools/mokshape/cells.h"
#include "tools/mokshape/table.h"

namespace mokshape {

namespace {

/// Calls report(shape, outline of the shape or line itself, measures) for every shape of the file.
template <class Report>
void forEachShape(const MeasuredFile& measured, Report report) {
    const RegionFile& regions = measured.regions;
    for (std::size_t i = 0; i < measured.measures.size(); ++i) {
        const Shape& shape = regions.shapes[i];
        report(shape, regions.file.outlines[shape.part.first], measured.measures[i]);
    }
}

const char* nameOf(const Outline& outline) {
    return outline.isClosed() ? "polygon" : "line";
}

struct Totals {
    std::size_t outlines = 0;
    std::size_t vertices = 0;
    std::size_t holes = 0;
    std::size_t selfCrossing = 0;
    std::size_t cleaned = 0;

    explicit Totals(const std::vector<MeasuredFile>& files) {
        for (const MeasuredFile& file : files)
            forEachShape(file, [this](const Shape& shape, const Outline&, const Measures& measures) {
                ++outlines;
                vertices += measures.vertices;
                holes += measures.holes;
                selfCrossing += measures.isSelfCrossing();
                cleaned += shape.cleaned > 0;
            });
    }
};

// ----- JSON

Json json(const gmVector<2>& v) {
    return Json::array({v.x(), v.y()});
}

Json json(const std::optional<gmVector<2>>& v) {
    return v ? json(*v) : Json();
}

Json json(const std::optional<gmRect>& box) {
    if (!box)
        return {};
    return {
        {"x", box->origin().x()}, {"y", box->origin().y()}, {"width", box->size().x()}, {"height", box->size().y()}};
}

Json json(const std::optional<Measures::FittedEllipse>& fit) {
    if (!fit)
        return {};
    return {{"centre", json(fit->ellipse.center())},
            {"major", 2.0 * fit->ellipse.xRadius()},
            {"minor", 2.0 * fit->ellipse.yRadius()},
            {"angle", angleInDegrees(fit->ellipse)},
            {"residual", fit->residual}};
}

Json json(const std::string& file, const Shape& shape, const Outline& outline, const Measures& measures) {
    return {{"file", file},
            {"feature", outline.feature},
            {"part", outline.part},
            {"kind", nameOf(outline)},
            {"label", outline.label},
            {"closed", outline.isClosed()},
            {"vertices", measures.vertices},
            {"length", jsonNumber(measures.length)},
            {"area", jsonNumber(measures.area)},
            {"centre", json(measures.centre)},
            {"holes", measures.holes},
            {"areaWithHoles", jsonNumber(measures.areaWithHoles)},
            {"centreWithHoles", json(measures.centreWithHoles)},
            {"box", json(measures.box)},
            {"diameter", jsonNumber(measures.diameter)},
            {"ellipse", json(measures.ellipse)},
            {"selfCrossing", measures.isSelfCrossing()},
            {"cleaned", shape.cleaned > 0}};
}

Json json(const std::optional<gmMatrix<2>>& moments) {
    if (!moments)
        return {};
    return {{"xx", (*moments)(0, 0)}, {"xy", (*moments)(0, 1)}, {"yy", (*moments)(1, 1)}};
}

Json json(const std::string& file, const SetMeasures& all) {
    return {{"file", file},
            {"polygons", all.polygons},
            {"vertices", all.vertices},
            {"area", jsonNumber(all.area)},
            {"centre", json(all.centre)},
            {"holes", all.holes},
            {"areaWithHoles", jsonNumber(all.areaWithHoles)},
            {"centreWithHoles", json(all.centreWithHoles)},
            {"box", json(all.box)},
            {"moments", json(all.moments)},
            {"selfCrossing", all.isSelfCrossing}};
}

void writeJson(std::ostream& out, const std::vector<MeasuredFile>& files) {
    out << "{\"outlines\": [";
    const char* separator = "\n  ";
    for (const MeasuredFile& file : files)
        for (const std::string& shape : jsonOfShapes(file)) {
            out << separator << shape;
            separator = ",\n  ";
        }
    out << "\n],\n\"sets\": [";
    separator = "\n  ";
    for (const MeasuredFile& file : files)
        if (file.all) {
            out << separator << jsonText(json(file.regions.file.name, *file.all));
            separator = ",\n  ";
        }
    const Totals totals(files);
    out << "\n],\n\"summary\": "
        << jsonText({{"outlines", totals.outlines},
                     {"vertices", totals.vertices},
                     {"holes", totals.holes},
                     {"selfCrossing", totals.selfCrossing},
                     {"cleaned", totals.cleaned}})
        << "}\n";
}

// ----- CSV

void writeCsvNumbers(std::ostream& out, bool exist, std::initializer_list<double> values) {
    for (const double value : values)
        out << ',' << csvNumber(exist ? std::optional(value) : std::nullopt);
}

void writeCsvPoint(std::ostream& out, const std::optional<gmVector<2>>& point) {
    const gmVector<2> p = point.value_or(gmVector<2>());
    writeCsvNumbers(out, point.has_value(), {p.x(), p.y()});
}

/// The columns from the number of vertices to the ellipse.
void writeCsvMeasures(std::ostream& out, const CommonMeasures& m, const Measures& ofShape) {
    const gmRect box = m.box.value_or(gmRect());
    const auto fit = ofShape.ellipse.value_or(Measures::FittedEllipse());
    out << std::to_string(m.vertices) << ',' << csvNumber(ofShape.length) << ',' << csvNumber(m.area);
    writeCsvPoint(out, m.centre);
    out << ',' << std::to_string(m.holes) << ',' << csvNumber(m.areaWithHoles);
    writeCsvPoint(out, m.centreWithHoles);
    writeCsvNumbers(out, m.box.has_value(), {box.origin().x(), box.origin().y(), box.size().x(), box.size().y()});
    out << ',' << csvNumber(ofShape.diameter);
    writeCsvNumbers(out, ofShape.ellipse.has_value(),
                    {fit.ellipse.center().x(), fit.ellipse.center().y(), 2.0 * fit.ellipse.xRadius(),
                     2.0 * fit.ellipse.yRadius(), angleInDegrees(fit.ellipse), fit.residual});
}

void writeCsvRow(std::ostream& out, const std::string& file, const Shape& shape, const Outline& outline,
                 const Measures& measures) {
    out << csvText(file) << ',' << std::to_string(outline.feature) << ',' << std::to_string(outline.part) << ','
        << nameOf(outline) << ',' << std::to_string(outline.label) << (outline.isClosed() ? ",true," : ",false,");
    writeCsvMeasures(out, measures, measures);
    out << (measures.isSelfCrossing() ? ",true" : ",false") << (shape.cleaned > 0 ? ",true" : ",false") << ",,,\n";
}

void writeCsvRow(std::ostream& out, const std::string& file, const SetMeasures& all) {
    out << csvText(file) << ",,,set,,,";
    writeCsvMeasures(out, all, Measures());
    out << (all.isSelfCrossing ? ",true," : ",false,");
    const gmMatrix<2> moments = all.moments.value_or(gmMatrix<2>());
    writeCsvNumbers(out, all.moments.has_value(), {moments(0, 0), moments(0, 1), moments(1, 1)});
    out << '\n';
}

void writeCsv(std::ostream& out, const std::vector<MeasuredFile>& files) {
    out << "file,feature,part,kind,label,closed,vertices,length,area,centre_x,centre_y,holes,area_with_holes,"
           "centre_with_holes_x,centre_with_holes_y,box_x,box_y,box_width,box_height,diameter,ellipse_x,ellipse_y,"
           "ellipse_major,ellipse_minor,ellipse_angle,ellipse_residual,self_crossing,cleaned,moment_xx,moment_xy,"
           "moment_yy\n";
    for (const MeasuredFile& file : files) {
        forEachShape(file, [&](const Shape& shape, const Outline& outline, const Measures& measures) {
            writeCsvRow(out, file.regions.file.name, shape, outline, measures);
        });
        if (file.all)
            writeCsvRow(out, file.regions.file.name, *file.all);
    }
}

// ----- Table

std::string labelText(const Outline& outline) {
    return std::to_string(outline.label) + (outline.isClosed() ? "" : " line");
}

std::string crossingText(const Shape& shape, const Measures& measures) {
    if (measures.isSelfCrossing())
        return "yes";
    return shape.cleaned > 0 ? "cleaned" : "no";
}

/// Labels that number the features make a column of feature numbers superfluous.
bool labelsTellFeatures(const OutlineFile& file) {
    for (const Outline& outline : file.outlines)
        if (outline.label != outline.feature || outline.part != 1)
            return false;
    return true;
}

Table tableOf(const MeasuredFile& measured) {
    std::vector<std::string> features;
    std::vector<std::string> labels;
    std::vector<std::string> vertices;
    std::vector<std::string> holes;
    std::vector<std::string> crossing;
    forEachShape(measured, [&](const Shape& shape, const Outline& outline, const Measures& measures) {
        features.push_back(std::to_string(outline.feature) +
                           (outline.part > 1 ? '.' + std::to_string(outline.part) : std::string()));
        labels.push_back(labelText(outline));
        vertices.push_back(std::to_string(measures.vertices));
        holes.push_back(std::to_string(measures.holes));
        crossing.push_back(crossingText(shape, measures));
    });
    const bool hasFeatures = !labelsTellFeatures(measured.regions.file);
    if (measured.all) {
        features.emplace_back("all");
        labels.emplace_back(hasFeatures ? "" : "all");
        vertices.push_back(std::to_string(measured.all->vertices));
        holes.push_back(std::to_string(measured.all->holes));
        crossing.emplace_back(measured.all->isSelfCrossing ? "yes" : "no");
    }
    Table table;
    if (hasFeatures)
        table.addText("", "feature", std::move(features), Table::Side::eLeft);
    table.addText("", "label", std::move(labels), Table::Side::eLeft);
    table.addText("", "vertices", std::move(vertices), Table::Side::eRight);
    const auto addNumbers = [&](const char* group, const char* title, auto measureOf, const Table::Numbers& totals) {
        Table::Numbers values;
        for (const Measures& measures : measured.measures)
            values.push_back(measureOf(measures));
        table.addNumbers(group, title, values, totals);
    };
    // Of polygons together there are some measures, and dashes in place of the others.
    const auto addCommon = [&](const char* group, const char* title, auto measureOf) {
        addNumbers(group, title, measureOf, measured.all ? Table::Numbers{measureOf(*measured.all)} : Table::Numbers());
    };
    const Table::Numbers none(measured.all ? 1 : 0);
    const auto addOfBox = [&](const char* title, double (*of)(const gmRect&)) {
        addCommon("bounding box", title,
                  [of](const CommonMeasures& m) { return m.box ? std::optional(of(*m.box)) : std::nullopt; });
    };
    const auto addPoint = [&](const char* group, const std::optional<gmVector<2>> CommonMeasures::*point) {
        addCommon(group, "x", [point](const CommonMeasures& m) {
            return m.*point ? std::optional((m.*point)->x()) : std::nullopt;
        });
        addCommon(group, "y", [point](const CommonMeasures& m) {
            return m.*point ? std::optional((m.*point)->y()) : std::nullopt;
        });
    };
    const auto addOfEllipse = [&](const char* title, double (*of)(const gmEllipse&)) {
        addNumbers(
            "ellipse", title,
            [of](const Measures& m) { return m.ellipse ? std::optional(of(m.ellipse->ellipse)) : std::nullopt; }, none);
    };
    addNumbers(
        "", "length", [](const Measures& m) { return m.length; }, none);
    addCommon("", "area", [](const CommonMeasures& m) { return m.area; });
    addPoint("centre", &CommonMeasures::centre);
    table.addText("", "holes", std::move(holes), Table::Side::eRight);
    addCommon("with holes", "area", [](const CommonMeasures& m) { return m.areaWithHoles; });
    addPoint("with holes", &CommonMeasures::centreWithHoles);
    addOfBox("x", [](const gmRect& box) { return box.origin().x(); });
    addOfBox("y", [](const gmRect& box) { return box.origin().y(); });
    addOfBox("width", [](const gmRect& box) { return box.size().x(); });
    addOfBox("height", [](const gmRect& box) { return box.size().y(); });
    addNumbers(
        "", "diameter", [](const Measures& m) { return m.diameter; }, none);
    addOfEllipse("major", [](const gmEllipse& ellipse) { return 2.0 * ellipse.xRadius(); });
    addOfEllipse("minor", [](const gmEllipse& ellipse) { return 2.0 * ellipse.yRadius(); });
    Table::Numbers angles;
    for (const Measures& measures : measured.measures)
        angles.push_back(measures.ellipse ? std::optional(angleInDegrees(measures.ellipse->ellipse)) : std::nullopt);
    angles.insert(angles.end(), none.begin(), none.end());
    table.addNumbers("ellipse", "angle", angles, 1);
    table.addText("self-", "crossing", std::move(crossing), Table::Side::eLeft);
    return table;
}

/// A line of its own: single shapes have no such measure, and the table is wide.
std::string momentsText(const gmMatrix<2>& moments) {
    constexpr int digits = 5;
    // What rounding left of a moment that vanishes must not look like one.
    const double noise = 1e-10 * std::max(std::fabs(moments(0, 0)), std::fabs(moments(1, 1)));
    const auto textOf = [noise](double moment) {
        return formatSignificant(std::fabs(moment) > noise ? moment : 0.0, digits);
    };
    return "second moments of all: xx " + textOf(moments(0, 0)) + ", xy " + textOf(moments(0, 1)) + ", yy " +
           textOf(moments(1, 1)) + '\n';
}

void writeTable(std::ostream& out, const std::vector<MeasuredFile>& files) {
    for (const MeasuredFile& file : files) {
        const bool hasHeading = files.size() > 1;
        if (hasHeading)
            out << printable(file.regions.file.name) << '\n';
        if (!file.measures.empty())
            out << tableOf(file).text();
        if (file.all && file.all->moments)
            out << momentsText(*file.all->moments);
        if (hasHeading || !file.measures.empty())
            out << '\n';
    }
    const Totals totals(files);
    out << counted(totals.outlines, "outline", "outlines") << ", " << counted(totals.vertices, "vertex", "vertices")
        << ", " << counted(totals.holes, "hole", "holes") << ", " << std::to_string(totals.selfCrossing)
        << " self-crossing";
    if (totals.cleaned > 0)
        out << ", " << std::to_string(totals.cleaned) << " cleaned";
    out << '\n';
}

}  // namespace

void writeReport(std::ostream& out, Format format, const std::vector<MeasuredFile>& files) {
    switch (format) {
        case Format::eTable:
            return writeTable(out, files);
        case Format::eJson:
            return writeJson(out, files);
        case Format::eCsv:
            return writeCsv(out, files);
    }
}

std::vector<std::string> jsonOfShapes(const MeasuredFile& file) {
    std::vector<std::string> shapes;
    forEachShape(file, [&](const Shape& shape, const Outline& outline, const Measures& measures) {
        shapes.push_back(jsonText(json(file.regions.file.name, shape, outline, measures)));
    });
    return shapes;
}

}  // namespace mokshape
