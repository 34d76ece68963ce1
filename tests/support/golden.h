// Archives that are kept as files, and everything that an archived object holds, as text.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"
#include "foundation/object/exception.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/point.h"
#include "foundation/shapes/xform2.h"
#include "tests/support/archives.h"

namespace support {

using Object = std::shared_ptr<gmPersistent>;

/// An archive that is kept as a file: whoever changes a layout must see what becomes of the archives that people have.
struct Golden {
    std::string file;            ///< its name, without the folder and the ending: the class and the version
    std::string listing;         ///< its bytes in hex; the rest of a line from # on says what they are
    std::function<Object()> is;  ///< the object that comes back
    /// A new object to load into. Null for an archive of the object behind a pointer, which names its class.
    std::function<Object()> blank = nullptr;
    bool written = true;  ///< whether this version is written, and not only read

    friend void PrintTo(const Golden& golden, std::ostream* out) { *out << golden.file; }
};

/// The bytes of a listing.
inline std::string bytesOf(const std::string& listing) {
    std::istringstream lines(listing);
    std::string digits;
    for (std::string line; std::getline(lines, line);)
        digits += line.substr(0, line.find('#')) + ' ';
    return unhex(digits);
}

/// Stores the object the way the golden holds it.
inline std::string storedAs(const Golden& golden, gmPersistent& object) {
    return stored([&](gmArchive& archive) {
        gmPersistent* unused = nullptr;
        if (golden.blank)
            archive || object;
        else
            gmPersistent::serializePointer(archive, &object, unused);
    });
}

/// Loads the bytes the way the golden holds them, and hands the object over to `use` while the archive lives.
template <class Use>
void loadAs(const Golden& golden, std::istream& in, Use use) {
    gmArchive archive(in);
    if (golden.blank) {
        const Object target = golden.blank();
        archive || *target;
        use(*target);
    } else {
        gmPersistent* object = nullptr;
        gmPersistent::serializePointer(archive, nullptr, object);
        if (object)
            use(*object);
    }
}
template <class Use>
void loadAs(const Golden& golden, const std::string& bytes, Use use) {
    std::istringstream in(bytes);
    loadAs(golden, in, use);
}

/// Everything that objects hold, also what no query tells apart: numbers by their bits, shared objects by a number.
class Description {
  public:
    static std::string of(const gmPersistent& object) {
        Description description;
        description.tell(&object);
        return description.out_.str();
    }

  private:
    void number(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        out_ << ' ' << std::hex << bits << std::dec;
    }
    void vector(const gmVector<2>& value) {
        number(value.x());
        number(value.y());
    }
    void numbers(std::initializer_list<double> values) {
        for (const double value : values)
            number(value);
    }

    template <class Handles>
    void all(const char* what, const Handles& handles) {
        out_ << ' ' << what << '[';
        for (const auto& handle : handles)
            tell(handle.get());
        out_ << ']';
    }

    void tell(const gmPersistent* object) {
        if (!object) {
            out_ << " none";
            return;
        }
        const auto [entry, isNew] = seen_.emplace(object, seen_.size() + 1);
        out_ << " #" << entry->second;
        if (!isNew)
            return;
        out_ << ' ' << gm_Instantiator::className(typeid(*object)) << '{';
        if (const auto* contour = dynamic_cast<const gmContour*>(object))
            tellContour(*contour);
        else if (const auto* set = dynamic_cast<const gmRegionSet*>(object))
            tellSet(*set);
        else if (const auto* error = dynamic_cast<const gmException*>(object))
            out_ << hex(error->message());
        else if (const auto* rigid = dynamic_cast<const gm2Rigid*>(object))
            numbers({rigid->angle().value(), rigid->translation().x(), rigid->translation().y()});
        else if (const auto* xform = dynamic_cast<const gm2XformBase*>(object))
            tellXform(xform->linearXform());
        else
            tellShape(object);
        out_ << '}';
    }

    void tellContour(const gmContour& contour) {
        // As the contour itself has it, of which a region speaks otherwise.
        out_ << "label " << contour.label() << " closed " << contour.gmContour::isClosed() << " size "
             << contour.cachedVectorSize() << " vertices";
        for (const gmVector<2>& vertex : contour.points())
            vector(vertex);
        if (const auto* edges = dynamic_cast<const gmContourT<gmEdgelet>*>(&contour)) {
            out_ << " data";
            for (const gmEdgelet& edgelet : edges->data()) {
                vector(edgelet.position());
                out_ << ' ' << edgelet.magnitude() << ' ' << int{edgelet.angle().value()};
            }
            out_ << " transform";
            tell(edges->dataFromPointsXform().get());
        }
        if (const auto* region = dynamic_cast<const gmRegion*>(&contour))
            all("holes", region->holes());
        if (const auto* region = dynamic_cast<const gmRegionT<gmEdgelet>*>(&contour))
            all("edge holes", region->holes());
    }

    void tellSet(const gmRegionSet& set) {
        out_ << "size " << set.cachedVectorSize();
        all("regions", set.regions());
        if (const auto* edges = dynamic_cast<const gmRegionSetT<gmEdgelet>*>(&set))
            all("edge regions", edges->regionsT());
    }

    void tellXform(const gmXform<2>& xform) {
        const gmMatrix<2> matrix = xform.matrix();
        vector(xform.translation());
        numbers({matrix(0, 0), matrix(0, 1), matrix(1, 0), matrix(1, 1)});
    }

    void tellShape(const gmPersistent* object) {
        if (const auto* point = dynamic_cast<const gmPoint*>(object)) {
            out_ << point->exists();
            vector(point->position());
        } else if (const auto* line = dynamic_cast<const gmLine*>(object)) {
            vector(line->through());
            vector(line->direction());
        } else if (const auto* segment = dynamic_cast<const gmLineSeg*>(object)) {
            vector(segment->p1());
            vector(segment->p2());
        } else if (const auto* rect = dynamic_cast<const gmRect*>(object)) {
            vector(rect->lower());
            vector(rect->upper());
        } else if (const auto* circle = dynamic_cast<const gmCircle*>(object)) {
            vector(circle->center());
            number(circle->radius());
        } else if (const auto* ellipse = dynamic_cast<const gmEllipse*>(object)) {
            vector(ellipse->center());
            numbers({ellipse->xRadius(), ellipse->yRadius(), ellipse->rotation().value()});
        } else if (const auto* polygon = dynamic_cast<const gmPolygon*>(object)) {
            out_ << polygon->fillMode();
            for (int i = 0; i < polygon->size(); ++i)
                vector((*polygon)[i]);
        } else {
            throw std::invalid_argument("no description of this class");
        }
    }

    std::ostringstream out_;
    std::map<const void*, std::size_t> seen_;
};

/// Shapes have no equality that sees everything.
template <class T>
void expectSame(const T& actual, const T& expected) {
    EXPECT_EQ(Description::of(actual), Description::of(expected));
}

}  // namespace support
