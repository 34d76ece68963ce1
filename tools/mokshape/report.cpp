#include "tools/mokshape/report.h"

#include <array>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "tools/io/text.h"
#include "tools/mokshape/table.h"

namespace mokshape {

namespace {

using Json = nlohmann::ordered_json;

const char* nameOf(Outline::Kind kind) {
    switch (kind) {
        case Outline::Kind::eOuter:
            return "outer";
        case Outline::Kind::eHole:
            return "hole";
        case Outline::Kind::eLine:
            return "line";
    }
    return "";
}

struct Totals {
    std::size_t outlines = 0;
    std::size_t vertices = 0;
    std::size_t selfCrossing = 0;

    explicit Totals(const std::vector<MeasuredFile>& files) {
        for (const MeasuredFile& file : files)
            for (const Measures& measures : file.measures) {
                ++outlines;
                vertices += measures.vertices;
                selfCrossing += measures.isSelfCrossing;
            }
    }
};

// ----- JSON

Json json(const std::optional<double>& value) {
    return value ? Json(*value) : Json();
}

Json json(const gmVector<2>& v) {
    return Json::array({v.x(), v.y()});
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

Json json(const std::string& file, const Outline& outline, const Measures& measures) {
    return {{"file", file},
            {"feature", outline.feature},
            {"part", outline.part},
            {"ring", outline.ring},
            {"kind", nameOf(outline.kind)},
            {"label", outline.label},
            {"closed", outline.isClosed()},
            {"vertices", measures.vertices},
            {"length", json(measures.length)},
            {"area", json(measures.area)},
            {"centre", measures.centre ? json(*measures.centre) : Json()},
            {"box", json(measures.box)},
            {"diameter", json(measures.diameter)},
            {"ellipse", json(measures.ellipse)},
            {"selfCrossing", measures.isSelfCrossing}};
}

std::string text(const Json& value) {
    // A path may hold any bytes, a JSON string only Unicode.
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void writeJson(std::ostream& out, const std::vector<MeasuredFile>& files) {
    out << "{\"outlines\": [";
    const char* separator = "\n  ";
    for (const MeasuredFile& file : files)
        for (std::size_t i = 0; i < file.measures.size(); ++i) {
            out << separator << text(json(file.file.name, file.file.outlines[i], file.measures[i]));
            separator = ",\n  ";
        }
    const Totals totals(files);
    out << "\n],\n\"summary\": "
        << text({{"outlines", totals.outlines}, {"vertices", totals.vertices}, {"selfCrossing", totals.selfCrossing}})
        << "}\n";
}

// ----- CSV

std::string csvText(const std::string& value) {
    if (value.find_first_of("\",\r\n") == std::string::npos)
        return value;
    std::string quoted = "\"";
    for (const char c : value)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

std::string csvNumber(const std::optional<double>& value) {
    return value ? formatNumber(*value) : std::string();
}

void writeCsv(std::ostream& out, const std::vector<MeasuredFile>& files) {
    out << "file,feature,part,ring,kind,label,closed,vertices,length,area,centre_x,centre_y,box_x,box_y,box_width,"
           "box_height,diameter,ellipse_x,ellipse_y,ellipse_major,ellipse_minor,ellipse_angle,ellipse_residual,"
           "self_crossing\n";
    for (const MeasuredFile& file : files)
        for (std::size_t i = 0; i < file.measures.size(); ++i) {
            const Outline& outline = file.file.outlines[i];
            const Measures& m = file.measures[i];
            out << csvText(file.file.name);
            for (const std::size_t number : {outline.feature, outline.part, outline.ring})
                out << ',' << std::to_string(number);
            out << ',' << nameOf(outline.kind) << ',' << std::to_string(outline.label)
                << (outline.isClosed() ? ",true," : ",false,") << std::to_string(m.vertices);
            const auto write = [&out](const std::optional<double>& value) { out << ',' << csvNumber(value); };
            const auto writeAll = [&write](bool exist, std::initializer_list<double> values) {
                for (const double value : values)
                    write(exist ? std::optional(value) : std::nullopt);
            };
            const gmVector<2> centre = m.centre.value_or(gmVector<2>());
            const gmRect box = m.box.value_or(gmRect());
            const auto fit = m.ellipse.value_or(Measures::FittedEllipse());
            write(m.length);
            write(m.area);
            writeAll(m.centre.has_value(), {centre.x(), centre.y()});
            writeAll(m.box.has_value(), {box.origin().x(), box.origin().y(), box.size().x(), box.size().y()});
            write(m.diameter);
            writeAll(m.ellipse.has_value(),
                     {fit.ellipse.center().x(), fit.ellipse.center().y(), 2.0 * fit.ellipse.xRadius(),
                      2.0 * fit.ellipse.yRadius(), angleInDegrees(fit.ellipse), fit.residual});
            out << (m.isSelfCrossing ? ",true\n" : ",false\n");
        }
}

// ----- Table

std::string labelText(const Outline& outline) {
    const std::string label = std::to_string(outline.label);
    return outline.kind == Outline::Kind::eOuter ? label : label + ' ' + nameOf(outline.kind);
}

/// Labels that number the features make a column of feature numbers superfluous.
bool labelsTellFeatures(const OutlineFile& file) {
    for (const Outline& outline : file.outlines)
        if (outline.label != outline.feature || outline.part != 1)
            return false;
    return true;
}

Table tableOf(const MeasuredFile& measured) {
    const std::vector<Outline>& outlines = measured.file.outlines;
    Table table;
    if (!labelsTellFeatures(measured.file)) {
        std::vector<std::string> cells;
        for (const Outline& outline : outlines)
            cells.push_back(std::to_string(outline.feature) +
                            (outline.part > 1 ? '.' + std::to_string(outline.part) : std::string()));
        table.addText("", "feature", std::move(cells), Table::Side::eLeft);
    }
    std::vector<std::string> labels;
    std::vector<std::string> vertices;
    std::vector<std::string> crossing;
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        labels.push_back(labelText(outlines[i]));
        vertices.push_back(std::to_string(measured.measures[i].vertices));
        crossing.push_back(measured.measures[i].isSelfCrossing ? "yes" : "no");
    }
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
    const auto addOfCentre = [&](const char* title, double (gmVector<2>::*of)() const) {
        addNumbers("centre", title,
                   [of](const Measures& m) { return m.centre ? std::optional(((*m.centre).*of)()) : std::nullopt; });
    };
    const auto addOfEllipse = [&](const char* title, double (*of)(const gmEllipse&)) {
        addNumbers("ellipse", title, [of](const Measures& m) {
            return m.ellipse ? std::optional(of(m.ellipse->ellipse)) : std::nullopt;
        });
    };
    addNumbers("", "length", [](const Measures& m) { return m.length; });
    addNumbers("", "area", [](const Measures& m) { return m.area; });
    addOfCentre("x", &gmVector<2>::x);
    addOfCentre("y", &gmVector<2>::y);
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

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void writeTable(std::ostream& out, const std::vector<MeasuredFile>& files) {
    for (const MeasuredFile& file : files) {
        const bool hasHeading = files.size() > 1;
        if (hasHeading)
            out << printable(file.file.name) << '\n';
        if (!file.measures.empty())
            out << tableOf(file).text();
        if (hasHeading || !file.measures.empty())
            out << '\n';
    }
    const Totals totals(files);
    out << counted(totals.outlines, "outline", "outlines") << ", " << counted(totals.vertices, "vertex", "vertices")
        << ", " << std::to_string(totals.selfCrossing) << " self-crossing\n";
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
