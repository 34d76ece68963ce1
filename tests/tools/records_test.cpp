#include "tools/io/records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

using mokshape::Framing;
using mokshape::Record;
using mokshape::RecordReader;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t mostBytes = 20;

/// Hands out a text in pieces, and counts what was asked of it.
struct Pieces {
    std::string text;
    std::size_t piece = 1;
    std::size_t at = 0;

    std::size_t operator()(char* bytes, std::size_t most) {
        const std::size_t count = std::min({piece, most, text.size() - at});
        std::memcpy(bytes, text.data() + at, count);
        at += count;
        return count;
    }
};

std::string textOf(const Record& record) {
    return std::to_string(record.number) + ' ' + (record.fault.empty() ? record.bytes : "fault: " + record.fault);
}

/// Number and bytes or fault of every record, which must not depend on how the bytes come in.
std::vector<std::string> records(Framing framing, const std::string& text) {
    std::vector<std::string> result;
    for (std::size_t piece = 1; piece <= text.size() + 1; ++piece) {
        RecordReader reader(Pieces{text, piece}, framing, mostBytes);
        std::vector<std::string> found;
        for (Record record; reader.next(record);)
            found.push_back(textOf(record));
        if (piece > 1) {
            EXPECT_EQ(found, result) << "in pieces of " << piece;
        }
        result = found;
    }
    return result;
}

std::vector<std::string> lines(const std::string& text) {
    return records(Framing::eLines, text);
}

std::vector<std::string> archives(const std::string& bytes) {
    return records(Framing::eLengths, bytes);
}

std::string length(std::size_t bytes) {
    std::string text;
    for (int i = 0; i < 4; ++i)
        text += static_cast<char>(bytes >> (8 * i) & 0xff);
    return text;
}

TEST(RecordReader, EndsARecordWithItsLine) {
    EXPECT_THAT(lines("one\ntwo\n"), ElementsAre("1 one", "2 two"));
    EXPECT_THAT(lines("one\r\ntwo"), ElementsAre("1 one\r", "2 two"));
    EXPECT_THAT(lines(""), IsEmpty());
}

TEST(RecordReader, CountsBlankLinesAndSkipsThem) {
    EXPECT_THAT(lines("\n \t\r\none\n\n\xef\xbb\xbf\n\x1e\ntwo\n \n"), ElementsAre("3 one", "7 two"));
}

TEST(RecordReader, TakesTheSeparatorBeforeATextOfASequence) {
    EXPECT_THAT(lines("\x1eone\n\x1etwo\n"), ElementsAre("1 one", "2 two"));
    EXPECT_THAT(lines("\x1e\x1eone\n"), ElementsAre("1 \x1eone"));
}

TEST(RecordReader, KeepsZeroBytesOfALine) {
    const std::string text("a\0b\n", 4);
    EXPECT_THAT(lines(text), ElementsAre("1 " + text.substr(0, 3)));
}

TEST(RecordReader, RefusesALineThatIsTooLongAndGoesOnBehindIt) {
    const std::string longest(mostBytes, 'x');
    EXPECT_THAT(lines(longest + "\n" + longest + "y\nnext\n" + longest + longest),
                ElementsAre("1 " + longest, "2 fault: the line has more than 20 bytes", "3 next",
                            "4 fault: the line has more than 20 bytes"));
}

TEST(RecordReader, AnswersALineThatIsTooLongBeforeItEnds) {
    RecordReader reader(Pieces{std::string(mostBytes + 1, 'x'), 1}, Framing::eLines, mostBytes);
    Record record;
    ASSERT_TRUE(reader.next(record));
    EXPECT_EQ(record.fault, "the line has more than 20 bytes");
    EXPECT_FALSE(reader.next(record));
}

TEST(RecordReader, TakesAsManyBytesAsTheLengthSays) {
    EXPECT_THAT(archives(length(3) + "one" + length(0) + length(4) + "a\nbc"), ElementsAre("1 one", "2 ", "3 a\nbc"));
    EXPECT_THAT(archives(""), IsEmpty());
}

TEST(RecordReader, RefusesAStreamThatEndsWithinAnArchive) {
    EXPECT_THAT(archives(length(3) + "one" + length(5) + "two"),
                ElementsAre("1 one", "2 fault: the stream ends after 3 of the 5 bytes of an archive"));
    EXPECT_THAT(archives(length(3) + "one" + length(5).substr(0, 3)),
                ElementsAre("1 one", "2 fault: the stream ends within the length of an archive"));
}

TEST(RecordReader, RefusesALengthThatIsTooLargeAndGoesOnBehindThatArchive) {
    EXPECT_THAT(archives(length(21) + std::string(21, 'x') + length(1) + "y"),
                ElementsAre("1 fault: the length is 21 bytes, and an archive of the stream may have 20", "2 y"));
    EXPECT_THAT(archives(length(4294967295) + "abc"),
                ElementsAre("1 fault: the length is 4294967295 bytes, and an archive of the stream may have 20"));
}

TEST(RecordReader, AnswersALengthThatIsTooLargeBeforeAnyByteOfTheArchive) {
    RecordReader reader(
        [sent = false](char* bytes, std::size_t) mutable -> std::size_t {
            if (sent)
                ADD_FAILURE() << "more was asked for";
            sent = true;
            std::fill_n(bytes, 4, '\xff');
            return 4;
        },
        Framing::eLengths, mostBytes);
    Record record;
    ASSERT_TRUE(reader.next(record));
    EXPECT_NE(record.fault, "");
}

TEST(RecordReader, TakesNoMemoryForBytesThatDoNotCome) {
    constexpr std::size_t promised = 4000000000;
    RecordReader reader(Pieces{length(promised) + "abc", 100}, Framing::eLengths, promised);
    Record record;
    ASSERT_TRUE(reader.next(record));
    EXPECT_EQ(record.fault, "the stream ends after 3 of the 4000000000 bytes of an archive");
    EXPECT_LT(record.bytes.capacity(), 1000u);
}

TEST(RecordReader, AsksForNothingBehindTheRecordItHandsOut) {
    Pieces pieces{"one\ntwo\n", 4};
    RecordReader reader([&pieces](char* bytes, std::size_t most) { return pieces(bytes, most); }, Framing::eLines,
                        mostBytes);
    Record record;
    ASSERT_TRUE(reader.next(record));
    EXPECT_EQ(textOf(record), "1 one");
    EXPECT_EQ(pieces.at, 4u);
}

}  // namespace
