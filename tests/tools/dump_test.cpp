#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/object/instantiator.h"
#include "tests/support/edgelets.h"
#include "tests/tools/archives.h"
#include "tests/tools/support.h"
#include "tools/io/archive_layout.h"
#include "tools/io/archive_scan.h"

namespace {

using mokshape::ArchiveLayout;
using mokshape::archiveLayouts;
using mokshape::ArchiveScan;
using mokshape::scanArchive;
using support::archived;
using support::archivedContent;
using support::header;
using support::heldContour;
using support::heldRegion;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// ----- The same verdict as the library

using Parts = std::vector<std::string>;

struct Verdict {
    bool accepted = true;
    std::size_t stop = 0;
};

Verdict verdictOfLibrary(const std::string& bytes, const Parts& parts) {
    std::istringstream in(bytes);
    Verdict verdict;
    try {
        gmArchive archive(in);
        for (const std::string& part : parts) {
            const std::unique_ptr<gmPersistent> object(gm_Instantiator::make(part));
            archive || *object;
        }
        while (static_cast<std::size_t>(in.tellg()) < bytes.size()) {
            gmPersistent* loaded = nullptr;
            gmPersistent::serializePointer(archive, nullptr, loaded);
        }
    } catch (const gmArchive::Errors&) {
        verdict.accepted = false;
    }
    verdict.stop = static_cast<std::size_t>(in.tellg());
    return verdict;
}

/// Empty when both accept the bytes, or both refuse them at the same byte.
std::string difference(const std::string& bytes, const Parts& parts) {
    const Verdict expected = verdictOfLibrary(bytes, parts);
    const ArchiveScan scan = scanArchive(bytes, nullptr, {parts, false});
    if (expected.accepted)
        return scan.fault ? "refuses " + std::string(scan.fault->what()) : "";
    if (!scan.fault)
        return "accepts what is refused at byte " + std::to_string(expected.stop);
    if (scan.fault->readUpTo() != expected.stop)
        return "stops at " + std::to_string(scan.fault->readUpTo()) + " and not " + std::to_string(expected.stop) +
               ": " + scan.fault->what();
    return "";
}

/// How many of the archives made of these bytes by cutting them short, and by setting one byte, both sides accept.
std::size_t acceptedVariants(const std::string& bytes, const Parts& parts) {
    std::size_t accepted = 0;
    const auto check = [&](const std::string& variant, std::size_t byte) {
        const std::string found = difference(variant, parts);
        EXPECT_EQ(found, "") << "byte " << byte << " of " << support::hex(variant);
        accepted += verdictOfLibrary(variant, parts).accepted;
    };
    for (std::size_t length = 0; length <= bytes.size(); ++length)
        check(bytes.substr(0, length), length);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        for (const int value : {0, 1, 2, 3, 4, 5, 0x43, 0x7f, 0x80, 0xff, bytes[i] ^ 1, bytes[i] + 1}) {
            std::string variant = bytes;
            variant[i] = static_cast<char>(value);
            check(variant, i);
        }
    return accepted;
}

std::string storedErrors() {
    return support::stored([](gmArchive& archive) {
        gmContourDefs::BadParams badParams("wrong\x01\\");
        gmContourDefs::EmptyContour emptyContour;
        gmContourDefs::EmptyRegionSet emptyRegionSet;
        gmContourDefs::RegionCannotBeSetOpen cannotBeSetOpen;
        for (gmPersistent* error :
             std::initializer_list<gmPersistent*>{&badParams, &emptyContour, &emptyRegionSet, &cannotBeSetOpen})
            support::store(archive, error);
    });
}

using support::RegionHandle;
const char* const square = "0 0, 9 0, 9 9, 0 9";
const char* const inner = "2 2, 7 2, 7 7";

std::string storedRegions() {
    const RegionHandle hole = heldRegion(inner, 3, {heldRegion("5 3, 6 3, 6 4")});
    const RegionHandle plate = heldRegion(square, 7, {hole, hole});
    return archived(plate, hole, RegionHandle(), support::heldSet({plate, RegionHandle(), heldRegion(inner)}));
}

std::string storedWithEdgePoints() {
    const gmPtrHandle<support::ContourT> scaled(new support::ContourT(support::edgeContour("0 0, 8 0, 8 6", 2.0)));
    const gmPtrHandle<support::ContourT> turned(
        new support::ContourT(support::edgelets("1 1, 2 2"), support::XformHandle(new gm2Rigid(gmDegree(30), {1, 2}))));
    const support::RegionTHandle plate(new support::RegionT(support::edgePlate()));
    const gmPtrHandle<support::RegionSetT> set(
        new support::RegionSetT(std::vector<support::RegionTHandle>{plate, support::sharedT(inner)}));
    return archived(scaled, turned, plate, set, support::XformHandle(new gm2XformLinear), scaled);
}

const std::string vertexBytes = "00 01 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40";  // (1, 2)
const std::string legacyContour = "00 00 00 " + vertexBytes + " 63 03 00 00 00 01";
const std::string legacyRegion = "00 00 00 " + vertexBytes + " 63 03 00 00 00";

TEST(ArchiveScan, AgreesWithTheLibraryOnEveryArchiveThatIsCutOrHasAnotherByte) {
    for (const std::string& bytes :
         {header, storedErrors(), archived(heldContour(square, true, 7), heldContour(inner, false)), storedRegions(),
          storedWithEdgePoints(), archivedContent("gmContour", legacyContour),
          archivedContent("gmRegion", legacyRegion), archivedContent("gmRegionSet", "00 00 00 01 00 00 00 00 00 00 00"),
          archivedContent("gmContourT<gmEdgelet>",
                          "00 01 00 07 00 00 00 01 " + vertexBytes + " 03 00 00 00 " + vertexBytes + " 34 12 40")}) {
        SCOPED_TRACE(support::hex(bytes));
        ASSERT_TRUE(verdictOfLibrary(bytes, {}).accepted);
        const std::size_t accepted = acceptedVariants(bytes, {});
        EXPECT_GT(accepted, bytes == header ? 1 : bytes.size() / 2);
    }
}

TEST(ArchiveScan, AgreesWithTheLibraryOnContentThatBeginsAnArchive) {
    const support::ContourT withEdgePoints = support::edgeContour("0 0, 8 0, 8 6", 2.0);
    const RegionHandle plate = heldRegion(square, 7, {heldRegion(inner)});
    const std::vector<std::pair<Parts, std::function<void(gmArchive&)>>> archives = {
        {{"gmContour"}, [](gmArchive& a) { a || *heldContour(square, true, 7); }},
        {{"gmRegion", "gmContour"}, [&](gmArchive& a) { a || *plate || *heldContour(inner, false); }},
        {{"gmRegionSet"},
         [&](gmArchive& a) {
             a || *support::heldSet({plate, plate});
         }},
        {{"gmContourT<gmEdgelet>"}, [&](gmArchive& a) { a || const_cast<support::ContourT&>(withEdgePoints); }},
        {{"gmRegionT<gmEdgelet>"}, [](gmArchive& a) { a || *support::sharedT(inner); }},
        {{"gmRegionSetT<gmEdgelet>"},
         [](gmArchive& a) {
             support::RegionSetT set(std::vector<support::RegionTHandle>{support::sharedT(inner)});
             a || set;
         }},
        {{"gm2XformLinear"}, [](gmArchive& a) { a || *support::scaling(3); }},
        {{"gm2Rigid"},
         [](gmArchive& a) {
             gm2Rigid rigid(gmDegree(30), {1, 2});
             a || rigid;
         }},
        {{"gmContourDefs::BadParams"},
         [](gmArchive& a) {
             gmContourDefs::BadParams error("wrong");
             a || error;
         }},
    };
    for (const auto& [parts, store] : archives) {
        SCOPED_TRACE(parts[0]);
        const std::string bytes = support::stored([&store = store](gmArchive& archive) {
            store(archive);
            support::store(archive, heldContour(square, true).get());
        });
        ASSERT_TRUE(verdictOfLibrary(bytes, parts).accepted);
        EXPECT_GT(acceptedVariants(bytes, parts), bytes.size() / 2);
    }
}

TEST(ArchiveScan, KnowsEveryRegisteredClassAndNoOther) {
    std::size_t registered = 0;
    for (const ArchiveLayout& layout : archiveLayouts()) {
        EXPECT_EQ(gm_Instantiator::isRegistered(layout.className), layout.isRegistered) << layout.className;
        registered += layout.isRegistered;
    }
    EXPECT_EQ(registered, 12u);
}

/// A region in a region, so deep. Those of one vertex meet nothing.
std::string nested(unsigned depth) {
    RegionHandle outermost = heldRegion("0 0");
    for (unsigned i = 1; i < depth; ++i)
        outermost = heldRegion("0 0", 0, {outermost});
    return support::stored([&](gmArchive& archive) {
        archive.maxDepth(depth);
        support::store(archive, outermost.get());
    });
}

TEST(ArchiveScan, StopsAtTheNestingThatTheLibraryStopsAt) {
    EXPECT_EQ(difference(nested(256), {}), "");
    EXPECT_TRUE(verdictOfLibrary(nested(256), {}).accepted);
    for (const unsigned depth : {257u, 2000u}) {
        EXPECT_EQ(difference(nested(depth), {}), "");
        const ArchiveScan scan = scanArchive(nested(depth), nullptr, {});
        ASSERT_TRUE(scan.fault);
        EXPECT_THAT(scan.fault->what(), EndsWith("objects are nested more than 256 deep"));
        EXPECT_LT(std::strlen(scan.fault->what()), 500u);
    }
}

TEST(ArchiveScan, TellsWhereThePointersOfTheArchiveItselfStand) {
    const ArchiveScan scan = scanArchive(storedRegions(), nullptr, {});
    ASSERT_EQ(scan.roots.size(), 4u);
    EXPECT_EQ(scan.roots[0].byte, 5u);
    EXPECT_EQ(scan.roots[0].object, 1u);
    EXPECT_EQ(scan.roots[1].object, 2u);
    EXPECT_EQ(scan.roots[2].object, 0u);
    EXPECT_EQ(scan.roots[2].byte, scan.roots[1].byte + 4);
    EXPECT_EQ(scan.roots[3].object, 4u);
    EXPECT_EQ(scan.objects, 5u);
}

// ----- The command

using Dump = support::InFolder;

TEST_F(Dump, PrintsEveryObjectWithItsClassVersionFieldsAndBytes) {
    const RegionHandle hole = heldRegion(inner, 3);
    write("a.mok", archived(heldRegion(square, 7, {hole}), hole, RegionHandle()));
    const Run run = this->run("dump a.mok");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              "  0  archive of format 1\n"
              "  5  object 1: gmRegion\n"
              " 21    gmRegion, version 1\n"
              " 22      gmContour, version 1\n"
              " 23        gmPersistent, version 0\n"
              " 24        label: 7\n"
              " 28        closed: yes\n"
              " 29        vertices, version 0: 4\n"
              " 34          (0, 0)\n"
              " 50          (9, 0)\n"
              " 66          (9, 9)\n"
              " 82          (0, 9)\n"
              " 98        cachedVectorSize: 3\n"
              "102      holes, version 0: 1\n"
              "107        element 1: object 2: gmRegion\n"
              "123          gmRegion, version 1\n"
              "124            gmContour, version 1\n"
              "125              gmPersistent, version 0\n"
              "126              label: 3\n"
              "130              closed: yes\n"
              "131              vertices, version 0: 3\n"
              "136                (2, 2)\n"
              "152                (7, 2)\n"
              "168                (7, 7)\n"
              "184              cachedVectorSize: 3\n"
              "188            holes, version 0: 0\n"
              "193  object 2 again\n"
              "197  none\n"
              "201  end, 2 objects\n");
}

TEST_F(Dump, ShortensLongOutlinesUnlessToldOtherwise) {
    write("a.mok", archived(heldContour("1 1, 2 2, 3 3, 4 4, 5 5", false)));
    EXPECT_THAT(run("dump a.mok").out, HasSubstr(" 66        (3, 3)\n 82        ... 2 more\n114      cached"));
    EXPECT_THAT(run("dump a.mok --all").out, HasSubstr(" 98        (5, 5)\n114      cached"));
}

TEST_F(Dump, PrintsOldVersionsErrorsTransformsAndEdgePoints) {
    write("old.mok", archivedContent("gmContour", legacyContour));
    EXPECT_THAT(run("dump old.mok").out,
                HasSubstr("gmContour, version 0\n23      gmContourBase, version 0\n24        gmPersistent, version 0\n"
                          "25      vertices, version 0: 1\n30        (1, 2)\n46      unused byte: 99\n"
                          "47      cachedVectorSize: 3\n51      closed: yes\n52  end, 1 object\n"));
    write("errors.mok", storedErrors());
    EXPECT_THAT(run("dump errors.mok").out, HasSubstr("message: \"wrong\\x01\\\\\"\n"));
    write("edges.mok", storedWithEdgePoints());
    const std::string edges = run("dump edges.mok").out;
    EXPECT_THAT(edges, HasSubstr("edge points, version 0: 3\n"));
    EXPECT_THAT(edges, HasSubstr("(8, 0), magnitude 1002, angle 3 of 256\n"));
    EXPECT_THAT(edges, HasSubstr("transform: object 2: gm2XformLinear\n"));
    EXPECT_THAT(edges, HasSubstr("row 1: (0, 2)\n"));
    EXPECT_THAT(edges, HasSubstr("angle in degrees: 30\n"));
    EXPECT_THAT(edges, HasSubstr("regions with edge points, version 0: 2\n"));
}

TEST_F(Dump, SaysWhichObjectsAHandleOfAnotherClassLoses) {
    std::string bytes = archived(heldContour(inner, true), heldRegion(square, 7, {heldRegion(inner)}));
    bytes[bytes.size() - 86] = 1;  // the hole is object 3: let it be the contour
    bytes.resize(bytes.size() - 82);
    bytes[bytes.size() - 4] = 1;
    write("a.mok", bytes);
    const Run run = this->run("dump a.mok");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("element 1: object 1 again (no gmRegion: loaded as an empty handle)\n"));
}

TEST_F(Dump, ReadsContentOfNamedClassesFirst) {
    write("a", support::stored([](gmArchive& archive) {
              archive || *heldContour(inner, true, 5) || *heldRegion(square, 6);
              support::store(archive, heldContour(inner, false).get());
          }));
    const Run run = this->run("dump a --part gmContour --part gmRegion");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, StartsWith("  0  archive of format 1\n  5  gmContour, version 1\n"));
    EXPECT_THAT(run.out, HasSubstr("\n 69  gmRegion, version 1\n"));
    EXPECT_THAT(run.out, HasSubstr("  object 1: gmContour\n"));
    EXPECT_EQ(this->run("dump a").status, 1);
    const Run unknown = this->run("dump a --part gmCircle");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_THAT(unknown.err, StartsWith("mokshape: --part: 'gmCircle' is no class of archives; these are: gmContour"));
}

struct Damage {
    std::string bytes;
    std::string message;
};

std::string with(std::string bytes, std::size_t at, int value) {
    bytes[at] = static_cast<char>(value);
    return bytes;
}

TEST_F(Dump, SaysExactlyWhereAndWhyADamagedArchiveStops) {
    const std::string plate = archived(heldRegion(square, 7, {heldRegion(inner, 3)}));
    const std::string edges =
        archived(gmPtrHandle<support::ContourT>(new support::ContourT(support::edgelets("1 1, 2 2"))));
    const std::string inHole = ", object 1, gmRegion, holes, element 1, object 2, gmRegion, ";
    const std::vector<Damage> damages = {
        {plate.substr(0, 128), "byte 128" + inHole + "gmContour, label: the archive ends here, 2 bytes are missing"},
        {plate.substr(0, 3), "byte 3: the archive ends here, 1 byte is missing"},
        {plate.substr(0, 140),
         "byte 132" + inHole + "gmContour, vertices: 3 vertices cannot follow: at least 44 bytes are missing"},
        {with(plate, 124, 2), "byte 124" + inHole + "gmContour: unknown version 2"},
        {with(plate, 188, 9), "byte 188" + inHole + "holes: unknown version 9"},
        {with(plate, 13, 0x1b), "byte 9, object 1: unknown class \"\\x1bmRegion\""},
        {with(plate, 107, 1), "byte 107, object 1, gmRegion, holes, element 1: object 1 contains itself"},
        {with(plate, 107, 3),
         "byte 107, object 1, gmRegion, holes, element 1: a reference to object 3, when 1 object was read"},
        {with(plate, 28, 2),
         "byte 28, object 1, gmRegion, gmContour, closed: the byte is 2, neither 0 (no) nor 1 (yes)"},
        {with(plate, 101, 0x80),
         "byte 98, object 1, gmRegion, gmContour, cachedVectorSize: it is negative: -2147483645"},
        {with(plate, 0, 'm'), "byte 0: not an archive: it begins with \"mOKA\", and archives with \"MOKA\""},
        {with(plate, 4, 7), "byte 4: unknown format 7 of archives"},
        {with(edges, 84, 1), "byte 83, object 1, gmContourT<gmEdgelet>, edge points: 1 edge point for 2 vertices"},
    };
    for (const Damage& damage : damages) {
        write("bad.mok", damage.bytes);
        const Run run = this->run("dump bad.mok");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "mokshape: bad.mok: " + damage.message + '\n');
        const Run converted = this->run("convert bad.mok out.wkt");
        EXPECT_EQ(converted.status, 1);
        EXPECT_EQ(converted.err, run.err);
    }
    write("bad.mok", plate.substr(0, 128));
    EXPECT_THAT(run("dump bad.mok").out, EndsWith("125              gmPersistent, version 0\n"));
}

TEST_F(Dump, NoticesWhatCannotBeReadOrWritten) {
    write("empty.mok", "");
    EXPECT_EQ(run("dump empty.mok").err, "mokshape: empty.mok: the file is empty\n");
    EXPECT_EQ(run("dump missing.mok").err, "mokshape: missing.mok: cannot be opened: No such file or directory\n");
    write("a.mok", storedRegions());
    const Run full = run("dump a.mok >/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.err, "mokshape: standard output cannot be written: No space left on device\n");
    EXPECT_EQ(run("dump a.mok >&-").status, 1);
    write("header.mok", header);
    EXPECT_EQ(run("dump header.mok").out, "0  archive of format 1\n5  end, 0 objects\n");
}

}  // namespace
