#include "tools/io/archive_scan.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "tools/io/archive_layout.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

using Kind = ArchiveField::Kind;

constexpr unsigned char knownFormat = 1;
constexpr std::size_t deepestNesting = 256;  // the library's own limit, unless an application sets another
constexpr std::size_t positionBytes = 2 * sizeof(double);
constexpr std::size_t edgePointBytes = positionBytes + 3;
constexpr std::size_t pointerBytes = 4;
constexpr std::size_t shownElements = 3;
constexpr std::size_t longestName = 80;
constexpr std::size_t longestText = 400;

std::string quoted(std::string_view text, std::size_t longest) {
    return '"' + escaped(text, longest) + '"';
}

/// Where the scan is. Of a long way only both ends are told.
class Way {
  public:
    std::string text() const {
        constexpr std::size_t first = 4;
        constexpr std::size_t last = 12;
        std::string result;
        for (std::size_t i = 0; i < steps_.size(); ++i) {
            if (i >= first && i + last < steps_.size()) {
                result += ", ...";
                i = steps_.size() - last;
            }
            result += ", " + steps_[i];
        }
        return result;
    }

    class Step {
      public:
        Step(Way& way, std::string text) : way_(way) { way_.steps_.push_back(std::move(text)); }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;
        ~Step() { way_.steps_.pop_back(); }

      private:
        Way& way_;
    };

  private:
    std::vector<std::string> steps_;
};

class Scanner {
  public:
    Scanner(std::string_view bytes, const ArchiveLine& line, const ArchiveScanOptions& options)
        : bytes_(bytes), line_(line), options_(options) {}

    ArchiveScan scan() {
        ArchiveScan result;
        try {
            readHeader();
            for (std::size_t i = 0; i < options_.parts.size(); ++i) {
                const Way::Step step(way_, "part " + std::to_string(i + 1));
                readBlock(*findLayout(options_.parts[i]));
            }
            while (at_ < bytes_.size()) {
                const std::size_t start = at_;
                result.roots.push_back({start, readPointer("", "")});
            }
        } catch (const ArchiveFault& fault) {
            result.fault = fault;
        }
        result.objects = objects_.size();
        return result;
    }

  private:
    struct Object {
        const ArchiveLayout* layout;
        bool open;
    };

    [[noreturn]] void refuse(std::size_t at, const std::string& why) const {
        throw ArchiveFault(at, at_, "byte " + std::to_string(at) + way_.text() + ": " + why);
    }

    std::size_t rest() const { return bytes_.size() - at_; }

    void tell(std::size_t byte, const std::string& text) const {
        if (line_)
            line_(byte, level_, text);
    }

    // ----- Plain values

    std::string_view take(std::size_t count) {
        if (count > rest()) {
            const std::size_t missing = count - rest();
            at_ = bytes_.size();
            refuse(at_, "the archive ends here, " + counted(missing, "byte is", "bytes are") + " missing");
        }
        const std::string_view taken = bytes_.substr(at_, count);
        at_ += count;
        return taken;
    }

    std::uint64_t takeUnsigned(std::size_t size) {
        const std::string_view taken = take(size);
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value |= static_cast<std::uint64_t>(static_cast<unsigned char>(taken[i])) << (8 * i);
        return value;
    }

    double takeNumber() {
        const std::uint64_t bits = takeUnsigned(sizeof(double));
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    std::string takePosition() {
        const double x = takeNumber();
        const double y = takeNumber();
        return '(' + formatNumber(x) + ", " + formatNumber(y) + ')';
    }

    /// A number of elements that the rest of the archive has room for, beside what is promised of it.
    std::size_t takeCount(std::size_t bytesEach, const char* one, const char* many, std::uint64_t promised = 0) {
        const std::size_t start = at_;
        const std::uint64_t count = takeUnsigned(4);
        const std::uint64_t wanted = promised + count * bytesEach;
        if (count > 0 && wanted > rest())
            refuse(start, counted(count, one, many) + " cannot follow: at least " +
                              counted(wanted - rest(), "byte is", "bytes are") + " missing");
        return static_cast<std::size_t>(count);
    }

    std::string_view takeText(const char* one, const char* many) { return take(takeCount(1, one, many)); }

    unsigned takeVersion(std::size_t known) {
        const std::size_t start = at_;
        const auto version = static_cast<unsigned>(takeUnsigned(1));
        if (version >= known)
            refuse(start, "unknown version " + std::to_string(version));
        return version;
    }

    // ----- Structure

    void readHeader() {
        const std::string_view start = bytes_.substr(0, archiveMagic.size());
        if (start != archiveMagic.substr(0, start.size())) {
            at_ = std::min(archiveMagic.size() + 1, bytes_.size());
            refuse(0, "not an archive: it begins with " + quoted(start, longestName) + ", and archives with \"MOKA\"");
        }
        take(archiveMagic.size());
        const auto format = static_cast<unsigned>(takeUnsigned(1));
        if (format != knownFormat)
            refuse(at_ - 1, "unknown format " + std::to_string(format) + " of archives");
        tell(0, "archive of format " + std::to_string(format));
    }

    void readBlock(const ArchiveLayout& layout) {
        const std::size_t start = at_;
        const Way::Step step(way_, layout.className);
        const unsigned version = takeVersion(layout.versions.size());
        tell(start, std::string(layout.className) + ", version " + std::to_string(version));
        ++level_;
        for (const ArchiveField& field : layout.versions[version])
            readField(field);
        --level_;
    }

    void readField(const ArchiveField& field) {
        if (field.kind == Kind::ePart)
            return readBlock(*findLayout(field.className));
        const Way::Step step(way_, field.name);
        const std::size_t start = at_;
        const std::string name = field.name + std::string(": ");
        switch (field.kind) {
            case Kind::eUnsigned:
                return tell(start, name + std::to_string(takeUnsigned(4)));
            case Kind::eCount: {
                const auto value = static_cast<std::int32_t>(takeUnsigned(4));
                if (value < 0)
                    refuse(start, "it is negative: " + std::to_string(value));
                return tell(start, name + std::to_string(value));
            }
            case Kind::eFlag: {
                const std::uint64_t value = takeUnsigned(1);
                if (value > 1)
                    refuse(start, "the byte is " + std::to_string(value) + ", neither 0 (no) nor 1 (yes)");
                return tell(start, name + (value == 1 ? "yes" : "no"));
            }
            case Kind::eUnusedByte:
                return tell(start, name + std::to_string(takeUnsigned(1)));
            case Kind::eNumber:
                return tell(start, name + formatNumber(takeNumber()));
            case Kind::ePosition:
                return tell(start, name + takePosition());
            case Kind::eText:
                return tell(start, name + quoted(takeText("byte", "bytes"), longestText));
            case Kind::eVertices:
                vertices_ = readVector(field.name, positionBytes, "vertex", "vertices");
                return readElements(vertices_, positionBytes, [this] { return takePosition(); });
            case Kind::eEdgePoints:
                return readEdgePoints(field.name);
            case Kind::eObjects:
                return readPointers(field);
            case Kind::eObject:
                readPointer(name, field.className);
                return;
            case Kind::ePart:
                return;
        }
    }

    /// The head of a vector block: how many elements follow.
    std::size_t readVector(const char* name, std::size_t bytesEach, const char* one, const char* many) {
        const std::size_t start = at_;
        const unsigned version = takeVersion(1);
        const std::size_t count = takeCount(bytesEach, one, many, promised_);
        tell(start, std::string(name) + ", version " + std::to_string(version) + ": " + std::to_string(count));
        return count;
    }

    /// Elements in which any bytes may stand; the archive has all of them.
    template <class Take>
    void readElements(std::size_t count, std::size_t bytesEach, Take takeElement) {
        ++level_;
        const bool shortened = !options_.all && count > shownElements + 1;
        const std::size_t shown = !line_ ? 0 : shortened ? shownElements : count;
        for (std::size_t i = 0; i < shown; ++i) {
            const std::size_t start = at_;
            tell(start, takeElement());
        }
        if (shown < count)
            tell(at_, "... " + std::to_string(count - shown) + " more");
        take((count - shown) * bytesEach);
        --level_;
    }

    void readEdgePoints(const char* name) {
        const std::size_t start = at_;
        const std::size_t count = readVector(name, edgePointBytes, "edge point", "edge points");
        readElements(count, edgePointBytes, [this] {
            const std::string position = takePosition();
            const std::uint64_t magnitude = takeUnsigned(2);
            const std::uint64_t angle = takeUnsigned(1);
            return position + ", magnitude " + std::to_string(magnitude) + ", angle " + std::to_string(angle) +
                   " of 256";
        });
        if (count != vertices_)
            refuse(start,
                   counted(count, "edge point", "edge points") + " for " + counted(vertices_, "vertex", "vertices"));
    }

    void readPointers(const ArchiveField& field) {
        const std::size_t count = readVector(field.name, pointerBytes, "object", "objects");
        ++level_;
        promised_ += count * pointerBytes;
        for (std::size_t i = 0; i < count; ++i) {
            promised_ -= pointerBytes;
            const std::string element = "element " + std::to_string(i + 1);
            const Way::Step step(way_, element);
            readPointer(element + ": ", field.className);
        }
        --level_;
    }

    /// The number of the object, or 0. `className` is what the handle asks for, empty for anything.
    std::size_t readPointer(const std::string& name, std::string_view className) {
        const std::size_t start = at_;
        const auto number = static_cast<std::size_t>(takeUnsigned(pointerBytes));
        if (number == 0) {
            tell(start, name + "none");
            return number;
        }
        const std::string object = "object " + std::to_string(number);
        if (number > objects_.size() + 1)
            refuse(start, "a reference to " + object + ", when " +
                              counted(objects_.size(), "object was", "objects were") + " read");
        if (number == objects_.size() + 1) {
            readObject(start, name, className);
            return number;
        }
        const Object& known = objects_[number - 1];
        if (known.open)
            refuse(start, object + " contains itself");
        tell(start, name + object + " again" + misfit(*known.layout, className));
        return number;
    }

    void readObject(std::size_t start, const std::string& name, std::string_view asked) {
        const std::string object = "object " + std::to_string(objects_.size() + 1);
        const Way::Step step(way_, object);
        const std::size_t nameStart = at_;
        const std::string_view className = takeText("byte of a class name", "bytes of a class name");
        if (depth_ >= deepestNesting)
            refuse(start, "objects are nested more than " + std::to_string(deepestNesting) + " deep");
        const ArchiveLayout* const layout = findLayout(className);
        if (!layout || !layout->isRegistered)
            refuse(nameStart, "unknown class " + quoted(className, longestName));
        const std::size_t index = objects_.size();
        objects_.push_back({layout, true});
        tell(start, name + object + ": " + layout->className + misfit(*layout, asked));
        ++depth_;
        ++level_;
        readBlock(*layout);
        --level_;
        --depth_;
        objects_[index].open = false;
    }

    /// What becomes of an object that a handle of another class leads to.
    static std::string misfit(const ArchiveLayout& layout, std::string_view asked) {
        if (asked.empty() || asked == layout.className || asked == layout.base)
            return {};
        return " (no " + std::string(asked) + ": loaded as an empty handle)";
    }

    const std::string_view bytes_;
    const ArchiveLine& line_;
    const ArchiveScanOptions& options_;
    std::size_t at_ = 0;
    std::uint64_t promised_ = 0;  // bytes behind this place that lists around it need
    std::size_t level_ = 0;
    std::size_t depth_ = 0;
    std::size_t vertices_ = 0;
    std::vector<Object> objects_;
    Way way_;
};

}  // namespace

ArchiveScan scanArchive(std::string_view bytes, const ArchiveLine& line, const ArchiveScanOptions& options) {
    return Scanner(bytes, line, options).scan();
}

}  // namespace mokshape
