#include "tools/mokshape/report.h"

#include <array>
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

void writeJson(std::ostream& out, const std::vector<MeasuredFile>& files) {
    out << "{\"outlines\": [";
    const char* separator = "\n  ";
    for (const MeasuredFile& file : files)
        forEachShape(file, [&](const Shape& shape, const Outline& outline, const Measures& measures) {
            out << separator << jsonText(json(file.regions.file.name, shape, outline, measures));
            separator = ",\n  ";
        });
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

void writeCsvRow(std::ostream& out, const std::string& file, const Shape& shape, const Outline& outline,
                 const Measures& m) {
    out << csvText(file) << ',' << std::to_string(outline.feature) << ',' << std::to_string(outline.part) << ','
        << nameOf(outline) << ',' << std::to_string(outline.label) << (outline.isClosed() ? ",true," : ",false,")
        << std::to_string(m.vertices);
    const auto write = [&out](const std::optional<double>& value) { out << ',' << csvNumber(value); };
    const auto writeAll = [&write](bool exist, std::initializer_list<double> values) {
        for (const double value : values)
            write(exist ? std::optional(value) : std::nullopt);
    };
    const auto writePoint = [&writeAll](const std::optional<gmVector<2>>& point) {
        const gmVector<2> p = point.value_or(gmVector<2>());
        writeAll(point.has_value(), {p.x(), p.y()});
    };
    const gmRect box = m.box.value_or(gmRect());
    const auto fit = m.ellipse.value_or(Measures::FittedEllipse());
    write(m.length);
    write(m.area);
    writePoint(m.centre);
    out << ',' << std::to_string(m.holes);
    write(m.areaWithHoles);
    writePoint(m.centreWithHoles);
    writeAll(m.box.has_value(), {box.origin().x(), box.origin().y(), box.size().x(), box.size().y()});
    write(m.diameter);
    writeAll(m.ellipse.has_value(), {fit.ellipse.center().x(), fit.ellipse.center().y(), 2.0 * fit.ellipse.xRadius(),
                                     2.0 * fit.ellipse.yRadius(), angleInDegrees(fit.ellipse), fit.residual});
    out << (m.isSelfCrossing() ? ",true" : ",false") << (shape.cleaned > 0 ? ",true\n" : ",false\n");
}

void writeCsv(std::ostream& out, const std::vector<MeasuredFile>& files) {
    out << "file,feature,part,kind,label,closed,vertices,length,area,centre_x,centre_y,holes,area_with_holes,"
           "centre_with_holes_x,centre_with_holes_y,box_x,box_y,box_width,box_height,diameter,ellipse_x,ellipse_y,"
           "ellipse_major,ellipse_minor,ellipse_angle,ellipse_residual,self_crossing,cleaned\n";
    for (const MeasuredFile& file : files)
        forEachShape(file, [&](const Shape& shape, const Outline& outline, const Measures& measures) {
            writeCsvRow(out, file.regions.file.name, shape, outline, measures);
        });
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
    Table table;
    if (!labelsTellFeatures(measured.regions.file))
        table.addText("", "feature", std::move(features), Table::Side::eLeft);
    table.addText("", "label", std::move(labels), Table::Side::eLeft);
    table.addText("", "vertices", std::move(vertices), Table::Side::eRight);
    const auto addNumbers = [&](const char* group, const char* title, auto measureOf) {
        Table::Numbers values;
        for (const Measures& measures : measured.measures)
            values.push_back(measureOf(measures));
        table.addNumbers(group, title, values);
    };
    const auto addOfBox = [&](const char* title, double (*of)(const gmRect&)) {
        addNumbers("bounding box", title,
                   [of](const Measures& m) { return m.box ? std::optional(of(*m.box)) : std::nullopt; });
    };
    const auto addPoint = [&](const char* group, const std::optional<gmVector<2>> Measures::*point) {
        addNumbers(group, "x",
                   [point](const Measures& m) { return m.*point ? std::optional((m.*point)->x()) : std::nullopt; });
        addNumbers(group, "y",
                   [point](const Measures& m) { return m.*point ? std::optional((m.*point)->y()) : std::nullopt; });
    };
    const auto addOfEllipse = [&](const char* title, double (*of)(const gmEllipse&)) {
        addNumbers("ellipse", title, [of](const Measures& m) {
            return m.ellipse ? std::optional(of(m.ellipse->ellipse)) : std::nullopt;
        });
    };
    addNumbers("", "length", [](const Measures& m) { return m.length; });
    addNumbers("", "area", [](const Measures& m) { return m.area; });
    addPoint("centre", &Measures::centre);
    table.addText("", "holes", std::move(holes), Table::Side::eRight);
    addNumbers("with holes", "area", [](const Measures& m) { return m.areaWithHoles; });
    addPoint("with holes", &Measures::centreWithHoles);
    addOfBox("x", [](const gmRect& box) { return box.origin().x(); });
    addOfBox("y", [](const gmRect& box) { return box.origin().y(); });
    addOfBox("width", [](const gmRect& box) { return box.size().x(); });
    addOfBox("height", [](const gmRect& box) { return box.size().y(); });
    addNumbers("", "diameter", [](const Measures& m) { return m.diameter; });
    addOfEllipse("major", [](const gmEllipse& ellipse) { return 2.0 * ellipse.xRadius(); });
    addOfEllipse("minor", [](const gmEllipse& ellipse) { return 2.0 * ellipse.yRadius(); });
    Table::Numbers angles;
    for (const Measures& measures : measured.measures)
        angles.push_back(measures.ellipse ? std::optional(angleInDegrees(measures.ellipse->ellipse)) : std::nullopt);
    table.addNumbers("ellipse", "angle", angles, 1);
    table.addText("self-", "crossing", std::move(crossing), Table::Side::eLeft);
    return table;
}

void writeTable(std::ostream& out, const std::vector<MeasuredFile>& files) {
    for (const MeasuredFile& file : files) {
        const bool hasHeading = files.size() > 1;
        if (hasHeading)
            out << printable(file.regions.file.name) << '\n';
        if (!file.measures.empty())
            out << tableOf(file).text();
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

}  // namespace mokshape
