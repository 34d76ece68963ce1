#include "foundation/object/archive.h"

#include <clocale>
#include <locale>

#include "tests/foundation/support.h"

namespace {

using support::contentOf;
using support::header;
using support::hex;
using support::loadFrom;
using support::stored;
using support::transfer;
using support::unhex;

template <class T>
T loadedFrom(const std::string& digits, T value = T()) {
    loadFrom(header + unhex(digits), [&](gmArchive& archive) { archive || value; });
    return value;
}

TEST(ArchiveBytes, BeginWithAMagicAndAFormatNumber) {
    EXPECT_EQ(hex(stored([](gmArchive&) {})), "4d 4f 4b 41 01");
}

TEST(ArchiveBytes, OfATruthValueAreOne) {
    bool yes = true;
    bool no = false;
    EXPECT_EQ(hex(contentOf(yes)), "01");
    EXPECT_EQ(hex(contentOf(no)), "00");
    EXPECT_TRUE(loadedFrom<bool>("01"));
    EXPECT_FALSE(loadedFrom<bool>("00", true));
}

TEST(ArchiveBytes, OfATruthValueAreNeverAnythingElse) {
    EXPECT_THROW(loadedFrom<bool>("02"), gmArchive::Malformed);
    EXPECT_THROW(loadedFrom<bool>("ff"), gmArchive::Malformed);
}

TEST(ArchiveBytes, OfALongAreFourLowestFirst) {
    long value = 0x12345678;
    EXPECT_EQ(hex(contentOf(value)), "78 56 34 12");
    value = -2;
    EXPECT_EQ(hex(contentOf(value)), "fe ff ff ff");
    EXPECT_EQ(loadedFrom<long>("fe ff ff ff"), -2);
    EXPECT_EQ(loadedFrom<long>("ff ff ff 7f"), 2147483647);
    EXPECT_EQ(loadedFrom<long>("00 00 00 80"), -2147483648L);
}

TEST(ArchiveBytes, OfAnUnsignedLongAreFourLowestFirst) {
    unsigned long value = 0xfedcba98;
    EXPECT_EQ(hex(contentOf(value)), "98 ba dc fe");
    EXPECT_EQ(loadedFrom<unsigned long>("ff ff ff ff"), 4294967295UL);
}

TEST(ArchiveBytes, OfAByteAreThatByte) {
    unsigned char value = 0xa5;
    EXPECT_EQ(hex(contentOf(value)), "a5");
    EXPECT_EQ(loadedFrom<unsigned char>("ff"), 255);
}

TEST(ArchiveBytes, OfAShortAreTwoLowestFirst) {
    unsigned short value = 0x1234;
    EXPECT_EQ(hex(contentOf(value)), "34 12");
    EXPECT_EQ(loadedFrom<unsigned short>("ff fe"), 0xfeff);
}

TEST(ArchiveBytes, OfADoubleAreTheIeeeOnesLowestFirst) {
    double value = 1.0;
    EXPECT_EQ(hex(contentOf(value)), "00 00 00 00 00 00 f0 3f");
    value = -0.1;
    EXPECT_EQ(hex(contentOf(value)), "9a 99 99 99 99 99 b9 bf");
    EXPECT_EQ(loadedFrom<double>("18 2d 44 54 fb 21 09 40"), support::pi);
}

TEST(ArchiveBytes, OfAVectorAreXThenY) {
    gmVector<2> value(1.0, -2.0);
    EXPECT_EQ(hex(contentOf(value)), "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0");
}

TEST(ArchiveBytes, OfATextAreItsLengthAndItsBytes) {
    std::string value = "M\xc3\xb6k";
    EXPECT_EQ(hex(contentOf(value)), "04 00 00 00 4d c3 b6 6b");
    EXPECT_EQ(loadedFrom<std::string>("03 00 00 00 61 00 62", "before"), std::string("a\0b", 3));
    EXPECT_EQ(loadedFrom<std::string>("00 00 00 00", "before"), "");
}

TEST(ArchiveBytes, OfAListAreItsLengthAndItsElements) {
    std::vector<gmVector<2>> list = {{1.0, 2.0}, {3.0, 4.0}};
    const std::string bytes = stored([&](gmArchive& archive) { archiveVector(archive, list, 16); });
    EXPECT_EQ(bytes.size(), header.size() + 4 + 32);
    EXPECT_EQ(hex(bytes.substr(5, 4)), "02 00 00 00");
    std::vector<gmVector<2>> loaded(7, gmVector<2>(9.0, 9.0));
    loadFrom(bytes, [&](gmArchive& archive) { archiveVector(archive, loaded, 16); });
    EXPECT_EQ(loaded, list);
}

TEST(ArchiveRoundTrip, KeepsEveryDoubleToTheBit) {
    const double values[] = {0.0, -0.0, 5e-324, 1.7976931348623157e308, 0.1, support::infinity, -support::infinity};
    for (double value : values) {
        double loaded = 7.0;
        transfer(value, loaded);
        EXPECT_EQ(loaded, value);
        EXPECT_EQ(std::signbit(loaded), std::signbit(value));
    }
    const std::string payload = "01 00 00 00 00 00 f8 ff";
    double loaded = loadedFrom<double>(payload);
    EXPECT_TRUE(std::isnan(loaded));
    EXPECT_EQ(hex(contentOf(loaded)), payload) << "the payload of a NaN as well";
}

TEST(ArchiveRoundTrip, KeepsTheEndsOfTheThirtyTwoBits) {
    for (long value : {-2147483648L, -1L, 0L, 2147483647L}) {
        long loaded = 7;
        transfer(value, loaded);
        EXPECT_EQ(loaded, value);
    }
    unsigned long value = 4294967295UL;
    unsigned long loaded = 7;
    transfer(value, loaded);
    EXPECT_EQ(loaded, value);
}

TEST(ArchiveStoring, RefusesWhatDoesNotFitInThirtyTwoBits) {
    std::ostringstream out;
    gmArchive archive(out);
    for (long value : {2147483648L, -2147483649L, std::numeric_limits<long>::min()})
        EXPECT_THROW(archive || value, gmArchive::OutOfRange);
    unsigned long value = 4294967296UL;
    EXPECT_THROW(archive || value, gmArchive::OutOfRange);
    EXPECT_EQ(value, 4294967296UL);
    EXPECT_EQ(out.str(), header) << "never cut";
}

TEST(ArchiveStoring, LeavesTheValueAlone) {
    long value = -5;
    double number = 2.5;
    std::string text = "text";
    static_cast<void>(stored([&](gmArchive& archive) { archive || value || number || text; }));
    EXPECT_EQ(value, -5);
    EXPECT_EQ(number, 2.5);
    EXPECT_EQ(text, "text");
}

TEST(Archive, KnowsItsWay) {
    std::stringstream stream;
    const gmArchive out(static_cast<std::ostream&>(stream));
    EXPECT_TRUE(out.isStoring());
    const gmArchive in(static_cast<std::istream&>(stream));
    EXPECT_FALSE(in.isStoring());
}

TEST(Archive, TakesUpWhereTheStreamStands) {
    std::istringstream in("before" + header + '\x07' + "after");
    in.ignore(6);
    {
        unsigned char byte = 0;
        gmArchive archive(in);
        archive || byte;
        EXPECT_EQ(byte, 7);
    }
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "after");
}

TEST(Archive, ReadsWhatIsWrittenWhileItIsOpen) {
    std::stringstream stream;
    gmArchive out(static_cast<std::ostream&>(stream));
    gmArchive in(static_cast<std::istream&>(stream));
    std::string text = "sent after the reader was opened";
    std::string received;
    out || text;
    in || received;
    EXPECT_EQ(received, text);
}

TEST(Archive, RefusesAnotherMagicOrFormat) {
    for (const char* bytes : {"MOKB\x01", "mokA\x01", "MOKA\x02", "OKA\x01M"}) {
        std::istringstream in(bytes);
        EXPECT_THROW(gmArchive{in}, gmArchive::Malformed) << bytes;
    }
    std::istringstream zero(std::string("MOKA\0", 5));
    EXPECT_THROW(gmArchive{zero}, gmArchive::Malformed);
}

TEST(Archive, RefusesAStreamThatEndsInTheHeader) {
    for (std::size_t size = 0; size < header.size(); ++size) {
        std::istringstream in(header.substr(0, size));
        EXPECT_THROW(gmArchive{in}, gmArchive::Truncated) << size;
    }
}

TEST(Archive, RefusesAStreamWithoutABuffer) {
    std::istream in(nullptr);
    EXPECT_THROW(gmArchive{in}, gmArchive::Truncated);
    std::ostream out(nullptr);
    EXPECT_THROW(gmArchive{out}, gmArchive::Errors);
}

/// A locale that writes and reads numbers as nobody else does.
struct Odd : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

TEST(Archive, CaresForNoLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Odd));
    double value = 1234567.5;
    double loaded = 0.0;
    EXPECT_EQ(hex(contentOf(value)), "00 00 00 80 87 d6 32 41");
    transfer(value, loaded);
    std::locale::global(before);
    EXPECT_EQ(loaded, value);
}

}  // namespace
