#include "tools/io/geojson.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include "tools/io/grouping.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

using Json = nlohmann::json;
using Kind = Outline::Kind;

// Collections may hold collections; no sensible file goes deeper, and the walk below is recursive.
constexpr int deepestNesting = 64;
constexpr std::size_t longestQuote = 60;

std::string quote(const Json& value) {
    if (value.is_structured())
        return value.is_array() ? "an array" : "an object";
    return printable(value.dump(-1, ' ', true, Json::error_handler_t::replace), longestQuote);
}

const Json* member(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

class Reader {
  public:
    /// Where features are not numbered, messages do not name them, and outlines have the number 0.
    explicit Reader(bool numbersFeatures) : numbersFeatures_(numbersFeatures) {}

    std::vector<Outline> read(const Json& document) {
        typeOf(document);  // a fault of the whole document is not one of its first feature
        readItem(document, 0);
        return std::move(outlines_);
    }

    void addNotes(Notes* notes) const {
        if (notes && !otherProperties_.empty())
            notes->push_back("properties besides \"label\" are left out: " + namesOf(otherProperties_));
        if (notes && !otherMembers_.empty())
            notes->push_back("members that are no outlines are left out: " + namesOf(otherMembers_));
        addNote(notes, emptyFeatures_, "feature without any polygon or line is left out",
                "features without any polygon or line are left out");
    }

  private:
    [[noreturn]] void refuse(const std::string& why) const {
        throw FileError((feature_ > 0 ? placeText(feature_) + ": " : std::string()) + why);
    }
    [[noreturn]] void refuseAt(const Outline& outline, const std::string& why) const {
        throw FileError(placeText(outline.feature, outline.part, outline.isClosed() ? outline.ring : 0) + ": " + why);
    }

    const std::string& typeOf(const Json& object) const {
        if (!object.is_object())
            refuse("a GeoJSON object is expected, not " + quote(object));
        const Json* const type = member(object, "type");
        if (!type)
            refuse("the member \"type\" is missing");
        if (!type->is_string())
            refuse("the member \"type\" is " + quote(*type) + ", not a string");
        return type->get_ref<const std::string&>();
    }

    const Json& arrayOf(const Json& object, const char* name) const {
        const Json* const array = member(object, name);
        if (!array || !array->is_array())
            refuse(std::string("the member \"") + name + "\" is " + (array ? quote(*array) : "missing") +
                   ", an array is expected");
        return *array;
    }

    void checkNesting(int depth) const {
        if (depth > deepestNesting)
            refuse("nested more than " + std::to_string(deepestNesting) + " deep");
    }

    void readItem(const Json& item, int depth) {
        checkNesting(depth);
        // Counted before it is looked at: also what should be a feature and is not has its number.
        feature_ += numbersFeatures_;
        part_ = 0;
        label_ = 0;
        const std::string& type = typeOf(item);
        if (type == "FeatureCollection") {
            feature_ -= numbersFeatures_;
            takeOthers(item, {"type", "features"}, otherMembers_);
            for (const Json& inner : arrayOf(item, "features"))
                readItem(inner, depth + 1);
        } else if (type == "Feature") {
            readFeature(item, depth);
            emptyFeatures_ += part_ == 0;
        } else {
            readGeometry(item, depth);
            emptyFeatures_ += part_ == 0;
        }
    }

    using Names = std::set<std::string>;

    static std::string namesOf(const Names& names) {
        constexpr std::size_t most = 5;
        std::string text;
        std::size_t shown = 0;
        for (auto name = names.begin(); name != names.end() && shown < most; ++name, ++shown)
            text += (shown > 0 ? ", " : "") + quote(*name);
        return names.size() > shown ? text + " and " + std::to_string(names.size() - shown) + " more" : text;
    }

    /// Takes the names of what the object has besides these.
    static void takeOthers(const Json& object, std::initializer_list<std::string_view> known, Names& others) {
        for (const auto& item : object.items())
            if (std::find(known.begin(), known.end(), item.key()) == known.end())
                others.insert(item.key());
    }

    void readFeature(const Json& feature, int depth) {
        takeOthers(feature, {"type", "properties", "geometry"}, otherMembers_);
        if (const Json* const properties = member(feature, "properties"); properties && !properties->is_null()) {
            if (!properties->is_object())
                refuse("the member \"properties\" is " + quote(*properties) + ", not an object");
            readLabel(*properties);
            takeOthers(*properties, {"label"}, otherProperties_);
        }
        const Json* const geometry = member(feature, "geometry");
        if (!geometry)
            refuse("the member \"geometry\" is missing");
        if (!geometry->is_null())
            readGeometry(*geometry, depth + 1);
    }

    void readLabel(const Json& properties) {
        const Json* const label = member(properties, "label");
        if (!label || label->is_null())
            return;
        constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();
        const double value = label->is_number() ? label->get<double>() : -1.0;
        if (!(value >= 0.0 && value <= largest) || std::floor(value) != value)
            refuse("the label is " + quote(*label) + ", a whole number from 0 to " + std::to_string(largest) +
                   " is expected");
        label_ = static_cast<std::uint32_t>(value);
    }

    void readGeometry(const Json& geometry, int depth) {
        checkNesting(depth);
        const std::string& type = typeOf(geometry);
        takeOthers(geometry, {"type", "coordinates", "geometries"}, otherMembers_);
        if (type == "GeometryCollection") {
            for (const Json& inner : arrayOf(geometry, "geometries"))
                readGeometry(inner, depth + 1);
            return;
        }
        const bool isPolygon = type == "Polygon";
        const bool isLine = type == "LineString";
        if (!isPolygon && !isLine && type != "MultiPolygon" && type != "MultiLineString")
            refuse("the type is " + quote(type) +
                   "; outlines are read from Polygon, MultiPolygon, LineString, MultiLineString and "
                   "GeometryCollection");
        const Json& coordinates = arrayOf(geometry, "coordinates");
        if (isPolygon) {
            readPolygon(coordinates);
        } else if (isLine) {
            readLine(coordinates);
        } else {
            for (const Json& part : coordinates)
                type == "MultiPolygon" ? readPolygon(part) : readLine(part);
        }
    }

    Outline startOutline(Kind kind, std::size_t ring) const {
        Outline outline;
        outline.feature = feature_;
        outline.part = part_;
        outline.ring = ring;
        outline.kind = kind;
        outline.label = label_;
        return outline;
    }

    void readPolygon(const Json& rings) {
        ++part_;
        Outline outline = startOutline(Kind::eOuter, 1);
        if (!rings.is_array())
            refuseAt(outline, "a polygon is an array of rings, not " + quote(rings));
        if (rings.empty())
            outlines_.push_back(outline);
        for (std::size_t i = 0; i < rings.size(); ++i) {
            outline = startOutline(i == 0 ? Kind::eOuter : Kind::eHole, i + 1);
            takeRing(outline, readPositions(rings[i], outline));
            outlines_.push_back(std::move(outline));
        }
    }

    void readLine(const Json& positions) {
        ++part_;
        Outline outline = startOutline(Kind::eLine, 1);
        takeLine(outline, readPositions(positions, outline));
        outlines_.push_back(std::move(outline));
    }

    std::vector<gmVector<2>> readPositions(const Json& positions, const Outline& outline) const {
        if (!positions.is_array())
            refuseAt(outline, "an array of positions is expected, not " + quote(positions));
        std::vector<gmVector<2>> points;
        points.reserve(positions.size());
        for (const Json& position : positions) {
            const auto refusePosition = [&](const std::string& why) {
                refuseAt(outline, "position " + std::to_string(points.size() + 1) + ' ' + why);
            };
            if (!position.is_array())
                refusePosition("is " + quote(position) + ", not an array of two numbers");
            if (position.size() != 2)
                refusePosition("has " + std::to_string(position.size()) +
                               (position.size() == 1 ? " coordinate" : " coordinates") +
                               "; only positions in the plane (x, y) can be read");
            for (const Json& coordinate : position)
                if (!coordinate.is_number())
                    refusePosition("has the coordinate " + quote(coordinate) + ", which is not a number");
            points.emplace_back(position[0].get<double>(), position[1].get<double>());
        }
        return points;
    }

    const bool numbersFeatures_;
    std::vector<Outline> outlines_;
    std::size_t feature_ = 0;
    std::size_t part_ = 0;
    std::uint32_t label_ = 0;
    Names otherProperties_;
    Names otherMembers_;
    std::size_t emptyFeatures_ = 0;
};

/// The parser's own words without the number of its error in brackets.
std::string parserMessage(const Json::exception& error) {
    const std::string_view what = error.what();
    const std::size_t bracket = what.find("] ");
    return printable(bracket == std::string_view::npos ? what : what.substr(bracket + 2), 300);
}

/// "-0" would be read as a whole number, which has no negative zero.
std::string jsonNumber(double value) {
    return value == 0.0 && std::signbit(value) ? "-0.0" : formatNumber(value);
}

void writePositions(std::ostream& out, const Outline& outline) {
    const auto write = [&out](const gmVector<2>& point, const char* separator) {
        out << separator << '[' << jsonNumber(point.x()) << ',' << jsonNumber(point.y()) << ']';
    };
    out << '[';
    for (std::size_t i = 0; i < outline.points.size(); ++i)
        write(outline.points[i], i > 0 ? "," : "");
    if (outline.isClosed() && !outline.points.empty())
        write(outline.points.front(), ",");
    out << ']';
}

void writeCoordinates(std::ostream& out, const std::vector<Outline>& outlines, const Part& part) {
    if (outlines[part.first].points.empty()) {
        out << "[]";
    } else if (part.isLine) {
        writePositions(out, outlines[part.first]);
    } else {
        for (std::size_t i = part.first; i < part.last; ++i) {
            out << (i == part.first ? '[' : ',');
            writePositions(out, outlines[i]);
        }
        out << ']';
    }
}

void writeGeometry(std::ostream& out, const std::vector<Outline>& outlines, const Feature& feature) {
    const auto writeSingle = [&](const Part& part) {
        out << "{\"type\":\"" << (part.isLine ? "LineString" : "Polygon") << "\",\"coordinates\":";
        writeCoordinates(out, outlines, part);
        out << '}';
    };
    if (feature.parts.size() == 1)
        return writeSingle(feature.parts.front());
    const bool mixed = !feature.hasOnlyLines() && !feature.hasOnlyPolygons();
    if (mixed)
        out << "{\"type\":\"GeometryCollection\",\"geometries\":[";
    else
        out << "{\"type\":\"" << (feature.hasOnlyLines() ? "MultiLineString" : "MultiPolygon")
            << "\",\"coordinates\":[";
    for (std::size_t i = 0; i < feature.parts.size(); ++i) {
        out << (i > 0 ? "," : "");
        if (mixed)
            writeSingle(feature.parts[i]);
        else
            writeCoordinates(out, outlines, feature.parts[i]);
    }
    out << "]}";
}

Json parse(std::string_view text) {
    // The parser takes it for the end of the text.
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos)
        throw FileError("not valid JSON: byte " + std::to_string(zero + 1) + " is zero");
    try {
        return Json::parse(text.begin(), text.end());
    } catch (const Json::exception& error) {
        throw FileError("not valid JSON: " + parserMessage(error));
    }
}

}  // namespace

std::vector<Outline> readGeoJson(std::string_view text, Notes* notes) {
    const Json document = parse(text);
    Reader reader(true);
    std::vector<Outline> outlines = reader.read(document);
    reader.addNotes(notes);
    return outlines;
}

std::vector<Outline> readGeoJsonFeature(std::string_view text, FeatureText& as) {
    const Json document = parse(text);
    if (document.is_object()) {
        const Json* const type = member(document, "type");
        as = takeApart(text, type && type->is_string() && *type != "Feature");
        if (type && *type == "FeatureCollection")
            throw FileError("the type is \"FeatureCollection\"; a single Feature or geometry is expected");
    }
    std::vector<Outline> outlines = Reader(false).read(document);
    for (Outline& outline : outlines)
        outline.feature = 1;
    return outlines;
}

std::string geometryText(const std::vector<Outline>& outlines) {
    std::ostringstream out;
    for (const Feature& feature : groupByFeature(outlines))
        writeGeometry(out, outlines, feature);
    return outlines.empty() ? "null" : out.str();
}

std::string propertiesText(std::uint32_t label) {
    return "{\"label\":" + std::to_string(label) + '}';
}

void writeGeoJson(std::ostream& out, const std::vector<Outline>& outlines, Notes* notes) {
    out << "{\"type\":\"FeatureCollection\",\"features\":[";
    const char* separator = "\n";
    const auto write = [&](const Feature& feature) {
        out << separator
            << "{\"type\":\"Feature\",\"properties\":" << propertiesText(outlines[feature.parts.front().first].label)
            << ",\"geometry\":";
        writeGeometry(out, outlines, feature);
        out << '}';
        separator = ",\n";
    };
    std::size_t divided = 0;
    for (const Feature& feature : groupByFeature(outlines)) {
        if (feature.hasOneLabel(outlines)) {
            write(feature);
            continue;
        }
        ++divided;
        for (const Part& part : feature.parts)
            write({{part}});
    }
    addNote(notes, divided, "set of polygons with different labels becomes a feature for each polygon",
            "sets of polygons with different labels become a feature for each polygon");
    out << "\n]}\n";
}

}  // namespace mokshape
