#include "tools/io/wkt.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <utility>

#include "tools/io/grouping.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

using Kind = Outline::Kind;

// Collections may hold collections; no sensible file goes deeper, and the walk below is recursive.
constexpr int deepestNesting = 64;
constexpr std::size_t longestQuote = 60;

// The character classes of the C locale: those of the C library follow the user's.
bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
char toUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
bool endsNumber(char c) {
    return isSpace(c) || c == ',' || c == '(' || c == ')' || c == ';';
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::vector<Outline> read(Notes* notes) {
        while (skipSeparators()) {
            ++feature_;
            part_ = 0;
            readGeometry(0);
            empty_ += part_ == 0;
        }
        if (feature_ == 0)
            throw FileError("no geometry in it");
        // One alone is how a file without outlines is written.
        if (feature_ > 1)
            addNote(notes, empty_, "geometry without any polygon or line is left out",
                    "geometries without any polygon or line are left out");
        return std::move(outlines_);
    }

  private:
    [[noreturn]] void refuse(const std::string& why) const {
        const auto line = 1 + std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at_), '\n');
        throw FileError(placeText(feature_) + ", line " + std::to_string(line) + ": " + why);
    }

    void skipSpace() {
        while (at_ < text_.size() && isSpace(text_[at_]))
            ++at_;
    }
    /// True when something follows.
    bool skipSeparators() {
        while (at_ < text_.size() && (isSpace(text_[at_]) || text_[at_] == ';'))
            ++at_;
        return at_ < text_.size();
    }

    bool take(char expected) {
        skipSpace();
        const bool found = at_ < text_.size() && text_[at_] == expected;
        at_ += found;
        return found;
    }

    /// What stands here, as an error message shows it.
    std::string found() const {
        if (at_ == text_.size())
            return "the end of the file";
        std::size_t end = at_ + 1;
        while (end < text_.size() && !endsNumber(text_[end]) && !endsNumber(text_[at_]))
            ++end;
        return '\'' + printable(text_.substr(at_, end - at_), longestQuote) + '\'';
    }

    /// The letters that stand here, in capitals; empty where there is none.
    std::string word() {
        skipSpace();
        std::string result;
        for (; at_ < text_.size() && isLetter(text_[at_]); ++at_)
            result += toUpper(text_[at_]);
        return result;
    }

    bool takeEmpty() {
        skipSpace();
        const std::size_t start = at_;
        if (word() == "EMPTY")
            return true;
        at_ = start;
        return false;
    }

    /// Calls `readElement` for each of the elements in parentheses, separated by commas.
    template <class ReadElement>
    void readList(ReadElement readElement) {
        if (!take('('))
            refuse("'(' or EMPTY is expected, not " + found());
        do
            readElement();
        while (take(','));
        if (!take(')'))
            refuse("',' or ')' is expected, not " + found());
    }

    void readGeometry(int depth) {
        if (depth > deepestNesting)
            refuse("nested more than " + std::to_string(deepestNesting) + " deep");
        skipSpace();
        const std::size_t start = at_;
        const std::string type = word();
        const bool isKnown = type == "POLYGON" || type == "LINESTRING" || type == "MULTIPOLYGON" ||
                             type == "MULTILINESTRING" || type == "GEOMETRYCOLLECTION";
        if (!isKnown) {
            at_ = start;
            refuse(
                "outlines are read from POLYGON, MULTIPOLYGON, LINESTRING, MULTILINESTRING and "
                "GEOMETRYCOLLECTION, not from " +
                found());
        }
        refuseDimensions();
        if (type == "POLYGON") {
            readPolygon();
        } else if (type == "LINESTRING") {
            readLine();
        } else if (!takeEmpty()) {
            if (type == "MULTIPOLYGON")
                readList([this] { readPolygon(); });
            else if (type == "MULTILINESTRING")
                readList([this] { readLine(); });
            else
                readList([this, depth] { readGeometry(depth + 1); });
        }
    }

    void refuseDimensions() {
        skipSpace();
        const std::size_t start = at_;
        const std::string dimensions = word();
        if (dimensions == "Z" || dimensions == "M" || dimensions == "ZM")
            refuse("it has " + dimensions + " coordinates; only positions in the plane (x y) can be read");
        at_ = start;
    }

    Outline startOutline(Kind kind, std::size_t ring) const {
        Outline outline;
        outline.feature = feature_;
        outline.part = part_;
        outline.ring = ring;
        outline.kind = kind;
        return outline;
    }

    void readPolygon() {
        ++part_;
        if (takeEmpty()) {
            outlines_.push_back(startOutline(Kind::eOuter, 1));
            return;
        }
        std::size_t ring = 0;
        readList([this, &ring] {
            ++ring;
            Outline outline = startOutline(ring == 1 ? Kind::eOuter : Kind::eHole, ring);
            takeRing(outline, readPositions());
            outlines_.push_back(std::move(outline));
        });
    }

    void readLine() {
        ++part_;
        Outline outline = startOutline(Kind::eLine, 1);
        if (!takeEmpty())
            takeLine(outline, readPositions());
        outlines_.push_back(std::move(outline));
    }

    std::vector<gmVector<2>> readPositions() {
        std::vector<gmVector<2>> points;
        readList([this, &points] {
            const double x = readNumber();
            const double y = readNumber();
            skipSpace();
            if (at_ < text_.size() && text_[at_] != ',' && text_[at_] != ')')
                refuse("',' or ')' is expected after position " + std::to_string(points.size() + 1) + ", not " +
                       found() + "; only positions in the plane (x y) can be read");
            points.emplace_back(x, y);
        });
        return points;
    }

    double readNumber() {
        skipSpace();
        std::size_t end = at_;
        while (end < text_.size() && !endsNumber(text_[end]))
            ++end;
        const std::optional<double> number = parseNumber(text_.substr(at_, end - at_));
        if (!number)
            refuse("a finite number is expected, not " + found());
        at_ = end;
        return *number;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<Outline> outlines_;
    std::size_t feature_ = 0;
    std::size_t part_ = 0;
    std::size_t empty_ = 0;
};

void writePositions(std::ostream& out, const Outline& outline) {
    const auto write = [&out](const gmVector<2>& point, const char* separator) {
        out << separator << formatNumber(point.x()) << ' ' << formatNumber(point.y());
    };
    if (outline.points.empty()) {
        out << "EMPTY";
        return;
    }
    for (std::size_t i = 0; i < outline.points.size(); ++i)
        write(outline.points[i], i > 0 ? ", " : "(");
    if (outline.isClosed())
        write(outline.points.front(), ", ");
    out << ')';
}

void writeCoordinates(std::ostream& out, const std::vector<Outline>& outlines, const Part& part) {
    if (part.isLine || outlines[part.first].points.empty())
        return writePositions(out, outlines[part.first]);
    for (std::size_t i = part.first; i < part.last; ++i) {
        out << (i == part.first ? "(" : ", ");
        writePositions(out, outlines[i]);
    }
    out << ')';
}

void writeGeometry(std::ostream& out, const std::vector<Outline>& outlines, const Feature& feature) {
    const auto writeSingle = [&](const Part& part) {
        out << (part.isLine ? "LINESTRING " : "POLYGON ");
        writeCoordinates(out, outlines, part);
    };
    if (feature.parts.size() == 1)
        return writeSingle(feature.parts.front());
    const bool mixed = !feature.hasOnlyLines() && !feature.hasOnlyPolygons();
    out << (mixed ? "GEOMETRYCOLLECTION " : feature.hasOnlyLines() ? "MULTILINESTRING " : "MULTIPOLYGON ");
    for (std::size_t i = 0; i < feature.parts.size(); ++i) {
        out << (i > 0 ? ", " : "(");
        if (mixed)
            writeSingle(feature.parts[i]);
        else
            writeCoordinates(out, outlines, feature.parts[i]);
    }
    out << ')';
}

}  // namespace

std::vector<Outline> readWkt(std::string_view text, Notes* notes) {
    return Reader(text).read(notes);
}

void writeWkt(std::ostream& out, const std::vector<Outline>& outlines, Notes* notes) {
    std::size_t labelled = 0;
    // A text without any geometry is no WKT, and the reader takes it for the wrong file.
    if (outlines.empty())
        out << "GEOMETRYCOLLECTION EMPTY\n";
    for (const Feature& feature : groupByFeature(outlines)) {
        writeGeometry(out, outlines, feature);
        out << '\n';
        labelled += std::any_of(feature.parts.begin(), feature.parts.end(),
                                [&](const Part& part) { return outlines[part.first].label != 0; });
    }
    addNote(notes, labelled, "feature has a label, which WKT has no place for",
            "features have labels, which WKT has no place for");
}

}  // namespace mokshape
