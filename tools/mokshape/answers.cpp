#include "tools/mokshape/answers.h"

#include <cmath>
#include <ostream>
#include <string>
#include <utility>

#include "tools/io/text.h"
#include "tools/mokshape/cells.h"
#include "tools/mokshape/table.h"

namespace mokshape {

namespace {

const std::string& fileOf(const Answer& answer) {
    return answer.file->file.name;
}

// ----- JSON

Json json(const Answer& answer) {
    Json result{{"point", {answer.point.x(), answer.point.y()}}, {"inside", answer.isInside}};
    const bool hasRegion = answer.outline != nullptr;
    result["file"] = hasRegion ? Json(fileOf(answer)) : Json();
    result["feature"] = hasRegion ? Json(answer.outline->feature) : Json();
    result["part"] = hasRegion ? Json(answer.outline->part) : Json();
    result["label"] = hasRegion ? Json(answer.outline->label) : Json();
    result["distance"] = jsonNumber(answer.distance);
    return result;
}

void writeJson(std::ostream& out, const std::vector<Answer>& answers, std::size_t points, std::size_t outside) {
    out << "{\"answers\": [";
    const char* separator = "\n  ";
    for (const Answer& answer : answers) {
        out << separator << jsonText(json(answer));
        separator = ",\n  ";
    }
    out << "\n],\n\"summary\": " << jsonText({{"points", points}, {"inside", points - outside}}) << "}\n";
}

// ----- CSV

void writeCsv(std::ostream& out, const std::vector<Answer>& answers) {
    out << "x,y,inside,file,feature,part,label,distance\n";
    for (const Answer& answer : answers) {
        out << formatNumber(answer.point.x()) << ',' << formatNumber(answer.point.y())
            << (answer.isInside ? ",true," : ",false,");
        if (answer.outline)
            out << csvText(fileOf(answer)) << ',' << std::to_string(answer.outline->feature) << ','
                << std::to_string(answer.outline->part) << ',' << std::to_string(answer.outline->label) << ',';
        else
            out << ",,,,";
        out << csvNumber(answer.distance) << '\n';
    }
}

// ----- Table

std::string featureText(const Outline& outline) {
    return std::to_string(outline.feature) + (outline.part > 1 ? '.' + std::to_string(outline.part) : std::string());
}

void writeTable(std::ostream& out, const std::vector<Answer>& answers, std::size_t points, std::size_t outside,
                bool namesFiles) {
    // As they were given, however many digits that takes: people look their points up.
    std::vector<std::string> xs;
    std::vector<std::string> ys;
    std::vector<std::string> places;
    std::vector<std::string> files;
    std::vector<std::string> features;
    std::vector<std::string> labels;
    Table::Numbers distances;
    for (const Answer& answer : answers) {
        const bool hasRegion = answer.outline != nullptr;
        xs.push_back(formatNumber(answer.point.x()));
        ys.push_back(formatNumber(answer.point.y()));
        places.emplace_back(answer.isInside ? "inside" : hasRegion ? "in none, nearest:" : "in none");
        files.push_back(hasRegion ? printable(fileOf(answer)) : "-");
        features.push_back(hasRegion ? featureText(*answer.outline) : "-");
        labels.push_back(hasRegion ? std::to_string(answer.outline->label) : "-");
        distances.push_back(answer.distance);
    }
    if (!answers.empty()) {
        Table table;
        table.addText("point", "x", std::move(xs), Table::Side::eRight);
        table.addText("point", "y", std::move(ys), Table::Side::eRight);
        table.addText("", "lies", std::move(places), Table::Side::eLeft);
        if (namesFiles)
            table.addText("", "file", std::move(files), Table::Side::eLeft);
        table.addText("", "feature", std::move(features), Table::Side::eLeft);
        table.addText("", "label", std::move(labels), Table::Side::eLeft);
        table.addNumbers("to the", "boundary", distances);
        out << table.text() << '\n';
    }
    out << counted(points, "point", "points") << ", " << std::to_string(points - outside) << " in a region\n";
}

}  // namespace

std::vector<Answer> askRegions(const gmVector<2>& point, const std::vector<RegionFile>& files) {
    std::vector<Answer> holding;
    Answer nearest;
    nearest.point = point;
    for (const RegionFile& file : files)
        for (const Shape& shape : file.shapes) {
            if (shape.region.isNull())
                continue;
            Answer answer;
            answer.point = point;
            answer.isInside = shape.region->inside(point, true);
            if (!answer.isInside && !holding.empty())
                continue;
            answer.file = &file;
            answer.outline = &file.file.outlines[shape.part.first];
            const double distance = shape.region->distToPoint(point, false, true, false);
            if (std::isfinite(distance))
                answer.distance = distance;
            if (answer.isInside)
                holding.push_back(answer);
            else if (!nearest.outline || (distance < nearest.distance.value_or(HUGE_VAL)))
                nearest = answer;
        }
    return holding.empty() ? std::vector<Answer>{nearest} : holding;
}

void writeAnswers(std::ostream& out, Format format, const std::vector<Answer>& answers, std::size_t points,
                  bool namesFiles) {
    std::size_t outside = 0;
    for (const Answer& answer : answers)
        outside += !answer.isInside;
    switch (format) {
        case Format::eTable:
            return writeTable(out, answers, points, outside, namesFiles);
        case Format::eJson:
            return writeJson(out, answers, points, outside);
        case Format::eCsv:
            return writeCsv(out, answers);
    }
}

}  // namespace mokshape
