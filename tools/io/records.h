#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace mokshape {

/// A record of a stream.
struct Record {
    std::string bytes;
    std::size_t number = 0;  ///< of the line, blank ones counted, or of the archive; from 1
    std::string fault;       ///< why the record cannot be had; empty for one that can
};

/// Where a record of a stream ends.
enum class Framing {
    /// At the end of a line, or of the stream. Blank lines are no records. A record separator (0x1E) at the beginning
    /// of a line is no part of it, so that a sequence of GeoJSON texts of one line each can be read.
    eLines,
    /// After as many bytes as the four bytes before it say, the least significant first.
    eLengths,
};

/// Takes records from a stream as they come in, and waits for no byte behind the one it hands out.
class RecordReader {
  public:
    /// Puts up to so many bytes at the place, as soon as there is one, and says how many; 0 at the end of the stream.
    using Source = std::function<std::size_t(char*, std::size_t)>;

    /// Records of more bytes than `mostBytes` have a fault.
    RecordReader(Source source, Framing framing, std::size_t mostBytes)
        : source_(std::move(source)), framing_(framing), mostBytes_(mostBytes) {}

    /// The next record; false at the end. One that is too long has its fault before the rest of it came in: that is
    /// skipped by the next call. Memory: no more than a record may have, and no more than came in, whatever a length
    /// says.
    bool next(Record& record);

  private:
    bool fill();
    bool nextLine(Record& record);
    bool nextArchive(Record& record);
    void takeLine(Record& record);
    std::size_t takeBytes(std::string& bytes, std::size_t count);
    void skip();

    Source source_;
    const Framing framing_;
    const std::size_t mostBytes_;
    std::array<char, 1 << 16> buffer_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    bool atEnd_ = false;
    std::size_t number_ = 0;
    std::size_t skippedBytes_ = 0;
    bool skippedLine_ = false;
};

}  // namespace mokshape
