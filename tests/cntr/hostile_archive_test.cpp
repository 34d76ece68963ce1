// Archives that somebody else wrote, tore or made up, of every class that archives hold.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <istream>
#include <new>
#include <string>
#include <vector>

#include "tests/support/hostile.h"

using support::alone;
using support::bytesOf;
using support::Field;
using support::fieldsOf;
using support::Golden;
using support::goldens;
using support::header;
using support::isLoaded;
using support::littleEndian;
using support::load;
using support::Object;
using support::Pipe;
using support::storedAs;
using support::unhex;
using testing::EndsWith;
using testing::StartsWith;

namespace {

using HostileArchive = support::HostileArchive;
using EdgeContour = gmContourT<gmEdgelet>;
using EdgeRegion = gmRegionT<gmEdgelet>;
using EdgeRegionSet = gmRegionSetT<gmEdgelet>;

template <class T>
Golden smallGolden(const char* name, const T& object) {
    return {name, "", [object] { return alone(object); }, [] { return std::make_shared<T>(); }};
}

/// The shapes with as little in them as shows everything, to be loaded in place.
std::vector<Golden> smallShapes() {
    const std::vector<gmVector<2>> vertices{{1, 2}};
    gmRegion region(vertices);
    region.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion(vertices))});
    const std::vector<gmEdgelet> data{{{1, 2}, 3, gmAngle8(4)}};
    const gmPtrHandle<gm2XformBase> turning(new gm2Rigid(gmDegree(90), {1, 2}));
    EdgeRegion edgeRegion(data, turning);
    edgeRegion.gmRegion::holes(region.holes());
    const gmPtrHandle<EdgeRegion> bare(new EdgeRegion);
    return {smallGolden("contour", gmContour(vertices, true)),
            smallGolden("region", region),
            smallGolden("set", gmRegionSet(std::vector<RegionCPtr>{RegionCPtr(new gmRegion(vertices)), nullptr})),
            smallGolden("edge contour", EdgeContour(data, turning)),
            smallGolden("edge region", edgeRegion),
            smallGolden("edge set", EdgeRegionSet(std::vector<gmPtrHandle<EdgeRegion>>{bare, bare}))};
}

std::vector<Golden> everything() {
    std::vector<Golden> all = goldens();
    for (const Golden& shape : smallShapes())
        all.push_back(shape);
    return all;
}

std::string wholeOf(const Golden& golden) {
    return golden.listing.empty() ? storedAs(golden, *golden.is()) : bytesOf(golden.listing);
}

/// The archive with other bytes at the place.
std::string changedAt(std::string bytes, std::size_t offset, const std::string& by) {
    return bytes.replace(offset, by.size(), by);
}

/// The class of the error that loading raises, and its place for an unknown version.
std::string refusalOf(const Golden& golden, const std::string& bytes) {
    try {
        support::loadAs(golden, bytes, [](gmPersistent&) {});
    } catch (const gmArchive::UnknownVersion& error) {
        return std::string(error.file() ? error.file() : "null") + ":" + std::to_string(error.line());
    } catch (const gmArchive::Errors& error) {
        return gm_Instantiator::className(typeid(error)).substr(11);  // behind "gmArchive::"
    }
    return "accepted";
}

TEST_F(HostileArchive, HasLittleMemory) {
    if (support::sanitized)
        GTEST_SKIP() << "no limit beside that of the sanitizer";
    EXPECT_THROW(std::string(support::MemoryLimit::bytes, 'x'), std::bad_alloc);
}

TEST_F(HostileArchive, EveryTruncationIsRefusedAndLeavesAUsableObject) {
    for (const Golden& golden : everything()) {
        const std::string whole = wholeOf(golden);
        ASSERT_TRUE(isLoaded(golden, whole, true)) << golden.file;
        for (std::size_t size = 0; size < whole.size(); ++size) {
            ASSERT_FALSE(isLoaded(golden, whole.substr(0, size), true)) << golden.file << ' ' << size;
            ASSERT_EQ(refusalOf(golden, whole.substr(0, size)), "Truncated") << golden.file << ' ' << size;
            Pipe buffer(whole.substr(0, size));
            std::istream in(&buffer);
            ASSERT_FALSE(isLoaded(golden, in, false)) << golden.file << ' ' << size;
        }
    }
}

/// The values to try for a byte: all of them, or those that are most likely to mean something.
std::vector<int> valuesFor(int right, bool all) {
    std::vector<int> values{0, 1, 2, 3, 0x10, 0x40, 0x7f, 0x80, 0xf0, 0xfe, 0xff};
    for (int bit = 1; bit < 256; bit *= 2)
        values.push_back(right ^ bit);
    if (all)
        for (values.clear(); values.size() < 256;)
            values.push_back(static_cast<int>(values.size()));
    return values;
}

TEST_F(HostileArchive, EveryChangedByteIsLoadedOrRefusedAndLeavesAUsableObject) {
    long accepted = 0;
    long refused = 0;
    for (const Golden& golden : everything()) {
        std::string bytes = wholeOf(golden);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const int right = static_cast<unsigned char>(bytes[i]);
            for (const int value : valuesFor(right, bytes.size() < 120)) {
                // Using what was loaded takes longer than loading it.
                const bool use = value < 2 || value == 255 || value == (right ^ 1) || value == (right ^ 0x80);
                bytes[i] = static_cast<char>(value);
                ++(isLoaded(golden, bytes, use) ? accepted : refused);
                ASSERT_FALSE(HasFailure()) << golden.file << " with " << value << " at " << i;
            }
            bytes[i] = static_cast<char>(right);
        }
    }
    EXPECT_GT(accepted, 100000);
    EXPECT_GT(refused, 100000);
}

/// What every field of the goldens that `matches` is answered with when it holds `bytes` instead.
template <class Matches, class Check>
int eachField(Matches matches, Check check) {
    int count = 0;
    for (const Golden& golden : goldens())
        for (const Field& field : fieldsOf(golden.listing))
            if (matches(field)) {
                SCOPED_TRACE(golden.file + ": " + field.note + " at " + std::to_string(field.offset));
                check(golden, bytesOf(golden.listing), field);
                ++count;
            }
    return count;
}

bool isCount(const Field& field) {
    return testing::Value(field.note,
                          testing::AnyOf(EndsWith("how many"), EndsWith("length"), "of the class", "vertices")) &&
           field.size == 4;
}

TEST_F(HostileArchive, ACountThatLiesTakesNoMemory) {
    const int counts = eachField(isCount, [](const Golden& golden, const std::string& bytes, const Field& field) {
        for (const std::uint32_t count : {0xffffffffU, 0x80000000U, 0x7fffffffU, 0x01000000U}) {
            const std::string changed = changedAt(bytes, field.offset, littleEndian(count));
            EXPECT_EQ(refusalOf(golden, changed), "Truncated");
            EXPECT_FALSE(isLoaded(golden, changed, true));
            Pipe buffer(changed);
            std::istream in(&buffer);
            EXPECT_FALSE(isLoaded(golden, in, true));
        }
    });
    EXPECT_GT(counts, 60);
}

TEST_F(HostileArchive, ATruthValueIsNothingButTrueOrFalse) {
    const auto isTruth = [](const Field& field) {
        return field.note == "open" || field.note == "closed" || field.note == "exists";
    };
    const int truths = eachField(isTruth, [](const Golden& golden, const std::string& bytes, const Field& field) {
        for (int value = 2; value < 256; ++value)
            ASSERT_EQ(refusalOf(golden, changedAt(bytes, field.offset, {static_cast<char>(value)})), "Malformed");
    });
    EXPECT_GT(truths, 15);
}

/// Where an unknown version is refused that stands at the field, by what the listing says of it.
std::string placeOf(const Golden& golden, const Field& field) {
    const std::string subject = field.note.substr(0, field.note.find(": "));
    std::string block;  // whose old base this is
    std::string name;   // the last class named
    for (const Field& other : fieldsOf(golden.listing)) {
        if (other.offset >= field.offset)
            break;
        if (other.note == "contour: version" || other.note == "region: version")
            block = other.note.substr(0, other.note.find(':'));
        if (other.note.find("gm") == 0 && other.note.find(": ") == std::string::npos)
            name = other.note;
    }
    if (subject == "contour")
        return "cntr/contour:904";
    if (subject == "region")
        return "cntr/region:819";
    if (subject == "old base")
        return block == "contour" ? "cntr/contour:894" : "cntr/region:0";
    if (subject == "base")
        return "gmPersistent:0";
    if (subject == "set")
        return "cntr/regionst:479";
    if (subject == "edge contour")
        return "cntrtmpl:98";
    if (subject == "edge region")
        return "cntrtmpl:186";
    if (subject == "edge set")
        return "cntrtmpl:283";
    if (subject == "class" || subject == "transform")
        return name + ":0";
    if (subject == "Errors")
        return "gmContourDefs::Errors:0";
    if (subject == "gmException")
        return "gmException:0";
    return field.note == "version" ? "gmShape:0" : "null:0";
}

bool hasTwoVersions(const Field& field) {
    return testing::Value(
        field.note, testing::AnyOf("contour: version", "region: version", "set: version", "edge contour: version"));
}

TEST_F(HostileArchive, AVersionThatNobodyWroteIsRefusedByItsPlace) {
    const auto isVersion = [](const Field& field) { return testing::Value(field.note, EndsWith("version")); };
    const int versions = eachField(isVersion, [](const Golden& golden, const std::string& bytes, const Field& field) {
        const std::string place = placeOf(golden, field);
        for (int value = hasTwoVersions(field) ? 2 : 1; value < 256; ++value) {
            const std::string changed = changedAt(bytes, field.offset, {static_cast<char>(value)});
            ASSERT_EQ(refusalOf(golden, changed), place) << value;
        }
    });
    EXPECT_GT(versions, 120);
}

TEST_F(HostileArchive, AReferenceLeadsToAnObjectThatWasRead) {
    const auto isReference = [](const Field& field) {
        return field.size == 4 && (testing::Value(field.note, StartsWith("object ")) || field.note == "no object");
    };
    const int references =
        eachField(isReference, [](const Golden& golden, const std::string& bytes, const Field& field) {
            // More than any of them holds, and so not the next one either.
            for (const std::uint32_t number : {6U, 1000U, 0x80000000U, 0xffffffffU})
                EXPECT_EQ(refusalOf(golden, changedAt(bytes, field.offset, littleEndian(number))), "Malformed")
                    << number;
            // The object around it is still being read.
            if (!golden.blank && field.offset > header.size()) {
                EXPECT_EQ(refusalOf(golden, changedAt(bytes, field.offset, littleEndian(1))), "Malformed");
            }
        });
    EXPECT_GT(references, 40);
}

// ----- Objects of other classes than they should be

/// A transform that counts itself.
class Counted : public gm2XformLinear {
  public:
    Counted() { ++alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() override { --alive; }
    static gmPersistent* make() { return new Counted; }
    static inline int alive = 0;
};

const std::string contourPart = "01 00 00 00 00 00 01 00 00 00 00 00 03 00 00 00 ";

/// Loads the archived object as the hole of a region, as a region of either set and as the transform of a contour, and
/// tells which of them took it.
std::string takersOf(const std::string& object) {
    gmRegion region;
    gmRegionSet set;
    EdgeRegionSet edgeSet;
    EdgeContour contour;
    const auto loadAround = [&](const std::string& before, const std::string& after, gmPersistent& target) {
        support::loadFrom(header + unhex(before) + object + unhex(after),
                          [&](gmArchive& archive) { archive || target; });
    };
    loadAround("01 " + contourPart + "00 01 00 00 00", "", region);
    loadAround("01 00 00 01 00 00 00", "03 00 00 00", set);
    loadAround("00 01 00 00 01 00 00 00", "03 00 00 00 00 01 00 00 00 01 00 00 00", edgeSet);
    loadAround("01 " + contourPart + "00 00 00 00 00", "", contour);
    for (gmPersistent* target : std::vector<gmPersistent*>{&region, &set, &edgeSet, &contour})
        support::askAll(*target);
    std::string takers;
    takers += region.holes().at(0).isNull() ? "" : "hole ";
    takers += set.regions().at(0).isNull() ? "" : "set ";
    takers += edgeSet.regions().at(0).isNull() ? "" : "plain ";
    takers += edgeSet.regionsT().at(0).isNull() ? "" : "edge ";
    takers += contour.dataFromPointsXform().isNull() ? "" : "transform ";
    return takers;
}

TEST_F(HostileArchive, AHandleTakesNoObjectOfAnotherClass) {
    for (const Golden& golden : goldens()) {
        if (golden.blank)
            continue;
        const Object object = golden.is();
        std::string expected;
        if (dynamic_cast<const gmRegion*>(object.get()))
            expected = "hole set plain ";
        if (dynamic_cast<const EdgeRegion*>(object.get()))
            expected += "edge ";
        if (dynamic_cast<const gm2XformBase*>(object.get()))
            expected = "transform ";
        EXPECT_EQ(takersOf(bytesOf(golden.listing).substr(header.size())), expected) << golden.file;
    }
}

TEST_F(HostileArchive, AnObjectThatNoHandleTakesEndsWithTheArchive) {
    const gm_Instantiator exemplar(typeid(Counted), Counted::make);
    const gmPtrHandle<gm2XformBase> handle(new Counted);
    gmPtrHandle<gm2XformBase> toStore = handle;
    const std::string object = support::contentOf(toStore);
    EXPECT_EQ(takersOf(object), "transform ");
    EXPECT_EQ(Counted::alive, 1);
    // Nor does one remain of which only a part came.
    for (std::size_t size = 0; size < object.size(); ++size) {
        EXPECT_THROW(takersOf(object.substr(0, size)), gmArchive::Errors) << size;
        ASSERT_EQ(Counted::alive, 1) << size;
    }
}

}  // namespace
