#include "tools/io/records.h"

#include <algorithm>
#include <string_view>

#include "tools/io/text.h"

namespace mokshape {

namespace {

constexpr char recordSeparator = '\x1e';
constexpr std::size_t lengthBytes = 4;

bool isBlank(std::string_view line) {
    return withoutByteOrderMark(line).find_first_not_of(" \t\r") == std::string_view::npos;
}

std::size_t lengthOf(const std::string& bytes) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < lengthBytes; ++i)
        length |= static_cast<std::size_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return length;
}

}  // namespace

bool RecordReader::next(Record& record) {
    skip();
    return framing_ == Framing::eLines ? nextLine(record) : nextArchive(record);
}

/// True when the buffer has a byte.
bool RecordReader::fill() {
    if (at_ < end_)
        return true;
    if (!atEnd_) {
        at_ = 0;
        end_ = source_(buffer_.data(), buffer_.size());
        atEnd_ = end_ == 0;
    }
    return !atEnd_;
}

void RecordReader::skip() {
    while (skippedBytes_ > 0 && fill()) {
        const std::size_t count = std::min(skippedBytes_, end_ - at_);
        at_ += count;
        skippedBytes_ -= count;
    }
    while (skippedLine_ && fill()) {
        const char* const begin = buffer_.data() + at_;
        const char* const end = buffer_.data() + end_;
        const char* const lineEnd = std::find(begin, end, '\n');
        skippedLine_ = lineEnd == end;
        at_ += static_cast<std::size_t>(lineEnd - begin) + (skippedLine_ ? 0 : 1);
    }
}

bool RecordReader::nextLine(Record& record) {
    while (fill()) {
        takeLine(record);
        if (!record.fault.empty() || !isBlank(record.bytes))
            return true;
    }
    return false;
}

void RecordReader::takeLine(Record& record) {
    record.bytes.clear();
    record.fault.clear();
    record.number = ++number_;
    if (buffer_[at_] == recordSeparator)
        ++at_;
    for (bool isWhole = false; !isWhole && fill();) {
        const char* const begin = buffer_.data() + at_;
        const char* const end = buffer_.data() + end_;
        const char* const lineEnd = std::find(begin, end, '\n');
        const auto count = static_cast<std::size_t>(lineEnd - begin);
        if (count > mostBytes_ - record.bytes.size()) {
            record.fault = "the line has more than " + counted(mostBytes_, "byte", "bytes");
            skippedLine_ = true;
            return;
        }
        record.bytes.append(begin, count);
        isWhole = lineEnd != end;
        at_ += count + (isWhole ? 1 : 0);
    }
}

/// Takes so many bytes, or those up to the end of the stream, and says how many.
std::size_t RecordReader::takeBytes(std::string& bytes, std::size_t count) {
    bytes.clear();
    while (bytes.size() < count && fill()) {
        const std::size_t piece = std::min(count - bytes.size(), end_ - at_);
        bytes.append(buffer_.data() + at_, piece);
        at_ += piece;
    }
    return bytes.size();
}

bool RecordReader::nextArchive(Record& record) {
    if (!fill())
        return false;
    record.fault.clear();
    record.number = ++number_;
    if (takeBytes(record.bytes, lengthBytes) < lengthBytes) {
        record.fault = "the stream ends within the length of an archive";
        return true;
    }
    const std::size_t length = lengthOf(record.bytes);
    if (length > mostBytes_) {
        record.fault = "the length is " + counted(length, "byte", "bytes") +
                       ", and an archive of the stream may have " + std::to_string(mostBytes_);
        skippedBytes_ = length;
        return true;
    }
    if (const std::size_t taken = takeBytes(record.bytes, length); taken < length)
        record.fault = "the stream ends after " + std::to_string(taken) + " of the " +
                       counted(length, "byte", "bytes") + " of an archive";
    return true;
}

}  // namespace mokshape
