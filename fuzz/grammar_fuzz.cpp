// Archives that are almost right: the input steers a writer that knows every layout, and that now and then writes a
// wrong version, count, reference, class, label or truth value, nests the wrong thing, cuts the end off or adds to it.
// The bytes then have to hold what archive_fuzz.cpp asks of any: refused with an error of the archive's, or loaded,
// asked everything, and stored and loaded again with the same answers and the same bytes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/bytes.h"
#include "fuzz/roundtrip.h"

namespace {

class Writer {
  public:
    explicit Writer(fuzz::Bytes& in) : in_(in) {}

    std::string write(fuzz::Kind kind) {
        out_.assign("MOKA\x01", 5);
        writeKind(kind);
        if (in_.oneIn(12))
            out_.resize(out_.size() - std::min<std::size_t>(out_.size(), in_.byte()));
        if (in_.oneIn(12))
            number(in_.word(), 8);
        if (in_.oneIn(12))
            out_[in_.word() % std::max<std::size_t>(out_.size(), 1)] ^= static_cast<char>(1 << in_.below(8));
        return out_;
    }

  private:
    using Content = void (Writer::*)();
    struct Class {
        const char* name;
        Content content;
    };

    void writeKind(fuzz::Kind kind) {
        switch (kind) {
            case fuzz::Kind::ePointers:
                for (int i = 0; i < 3; ++i)
                    pointer(anyClass());
                return;
            case fuzz::Kind::eContour:
                return contour();
            case fuzz::Kind::eRegion:
                return region();
            case fuzz::Kind::eSet:
                return set();
            case fuzz::Kind::eEdgeContour:
                return edgeContour();
            case fuzz::Kind::eEdgeRegion:
                return edgeRegion();
            case fuzz::Kind::eEdgeSet:
                return edgeSet();
            case fuzz::Kind::eSharedRegion:
                return pointer(regionClass());
            case fuzz::Kind::eXform:
                return pointer(xformClass());
            case fuzz::Kind::eSimpleShapes:
                return simpleShapes();
            default:
                contour();
                pointer(xformClass());
                region();
                edgeContour();
                set();
                return pointer(regionClass());
        }
    }

    /// One choice in a few dozen is wrong; none once the input has ended.
    bool wrong() { return in_.oneIn(40); }

    void number(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            out_ += static_cast<char>(value >> (8 * i));
    }
    void byte(unsigned value) { number(wrong() ? in_.byte() : value, 1); }
    void number32(std::uint64_t value) { number(wrong() ? in_.word() : value, 4); }
    void real(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        number(bits, 8);
    }
    void place(const gmVector<2>& place) {
        real(place.x());
        real(place.y());
    }
    void text(const std::string& value) {
        number32(value.size());
        out_ += value;
    }
    void truth(bool value) { byte(value ? 1 : 0); }
    /// The version of a layout, or an older one that is read as well.
    unsigned version(unsigned newest) {
        const unsigned chosen = newest > 0 && in_.oneIn(4) ? newest - 1 : newest;
        byte(chosen);
        return chosen;
    }
    /// The version and the number of a list; what follows may be fewer or more.
    void block(std::size_t count) {
        byte(0);
        number32(wrong() ? count + in_.below(5) - 2 : count);
    }

    std::vector<gmVector<2>> outline() {
        if (in_.oneIn(3))
            return fuzz::anyPlaces(in_, in_.below(9));
        const gmVector<2> at = fuzz::gridPlace(in_);
        const double size = static_cast<double>(1 + in_.below(20));
        std::vector<gmVector<2>> square = {
            at, {at.x() + size, at.y()}, {at.x() + size, at.y() + size}, {at.x(), at.y() + size}};
        if (in_.oneIn(4))
            std::swap(square[1], square[2]);  // crosses itself
        return square;
    }
    std::size_t vertices() {
        const std::vector<gmVector<2>> places = outline();
        block(places.size());
        for (const gmVector<2>& vertex : places)
            place(vertex);
        return places.size();
    }
    void cacheLimit() { number32(in_.oneIn(4) ? in_.byte() : 3); }
    void unlabelled() {
        vertices();
        byte(0);
        cacheLimit();
    }

    std::size_t contourBlock() {
        if (version(1) == 0) {
            byte(0);
            byte(0);
            unlabelled();
            truth(in_.oneIn(2));
            return 0;
        }
        byte(0);
        number32(in_.byte());
        truth(in_.oneIn(2));
        const std::size_t count = vertices();
        cacheLimit();
        return count;
    }
    void contour() { contourBlock(); }
    void region() {
        if (version(1) == 0) {
            byte(0);
            byte(0);
            return unlabelled();
        }
        contour();
        pointers(regionClass());
    }
    void set() {
        const unsigned layout = version(1);
        byte(0);
        pointers(in_.oneIn(4) ? edgeRegionClass() : regionClass());
        if (layout > 0)
            cacheLimit();
    }
    void edgeContour() {
        const unsigned layout = version(1);
        const std::size_t count = contourBlock();
        block(count);
        for (std::size_t i = 0; i < count; ++i) {
            place(fuzz::gridPlace(in_));
            number(in_.byte(), 3);
        }
        if (layout > 0)
            pointer(xformClass());
    }
    void edgeRegion() {
        byte(0);
        region();
    }
    void edgeSet() {
        byte(0);
        byte(1);
        byte(0);
        pointers(edgeRegionClass());
        cacheLimit();
        pointers(edgeRegionClass());
    }
    void linearXform() {
        byte(0);
        for (int i = 0; i < 6; ++i)
            real(in_.oneIn(4) ? fuzz::specialNumber(in_) : static_cast<double>(in_.below(5)));
    }
    void rigid() {
        byte(0);
        for (int i = 0; i < 3; ++i)
            real(in_.oneIn(4) ? fuzz::specialNumber(in_) : in_.byte());
    }
    void error() {
        for (int i = 0; i < 3; ++i)
            byte(0);
        text(std::string(in_.below(9), 'x'));
    }
    void simpleShapes() {
        byte(0);
        truth(in_.oneIn(2));
        place(fuzz::anyPlace(in_, {}));
        for (const int numbers : {4, 4, 4, 3, 5}) {
            byte(0);
            for (int i = 0; i < numbers; ++i)
                real(in_.oneIn(3) ? fuzz::specialNumber(in_) : in_.byte());
        }
        byte(0);
        byte(static_cast<unsigned>(in_.below(2)));
        const std::vector<gmVector<2>> places = outline();
        number32(places.size());
        for (const gmVector<2>& vertex : places)
            place(vertex);
    }

    static Class regionClass() { return {"gmRegion", &Writer::region}; }
    static Class edgeRegionClass() { return {"gmRegionT<gmEdgelet>", &Writer::edgeRegion}; }
    Class xformClass() {
        return in_.oneIn(2) ? Class{"gm2Rigid", &Writer::rigid} : Class{"gm2XformLinear", &Writer::linearXform};
    }
    Class anyClass() {
        static const std::vector<Class> classes = {
            {"gmRegion", &Writer::region},
            {"gmContour", &Writer::contour},
            {"gmRegionSet", &Writer::set},
            {"gmContourT<gmEdgelet>", &Writer::edgeContour},
            {"gmRegionT<gmEdgelet>", &Writer::edgeRegion},
            {"gmRegionSetT<gmEdgelet>", &Writer::edgeSet},
            {"gm2XformLinear", &Writer::linearXform},
            {"gm2Rigid", &Writer::rigid},
            {"gmContourDefs::BadParams", &Writer::error},
            {"gmContourDefs::EmptyContour", &Writer::error},
            {"gmContourDefs::EmptyRegionSet", &Writer::error},
            {"gmContourDefs::RegionCannotBeSetOpen", &Writer::error},
            {"gmContourDefs::Errors", &Writer::error},
            {"", &Writer::region},
        };
        return in_.oneOf(classes);
    }

    void pointers(const Class& expected) {
        const std::size_t most = depth_ < 2 ? 4 : 2;
        const std::size_t count = depth_ < deepest ? in_.below(most) : 0;
        block(count);
        for (std::size_t i = 0; i < count; ++i)
            pointer(expected);
    }
    /// Nothing, an object that was written before (or not), or a new one.
    void pointer(const Class& expected) {
        const std::size_t choice = in_.below(8);
        if (choice == 7)
            return number32(0);
        if (choice > 4 && objects_ > 0)
            return number32(1 + in_.below(std::min<std::size_t>(objects_, 256)) + (wrong() ? 1 : 0));
        const Class chosen = wrong() ? anyClass() : expected;
        number32(++objects_);
        text(wrong() ? std::string(chosen.name) + '\0' : chosen.name);
        ++depth_;
        (this->*(wrong() ? anyClass() : chosen).content)();
        --depth_;
    }

    static constexpr int deepest = 300;  // and the archive's limit is 256

    fuzz::Bytes& in_;
    std::string out_;
    std::size_t objects_ = 0;
    int depth_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes in(data, size);
    const auto kind = static_cast<fuzz::Kind>(in.below(static_cast<std::size_t>(fuzz::Kind::eCount)));
    fuzz::check(kind, Writer(in).write(kind));
    return 0;
}
