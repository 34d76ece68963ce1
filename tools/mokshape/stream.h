#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "tools/io/feature_text.h"
#include "tools/io/outline.h"

namespace CLI {
class App;
}

namespace mokshape {

/// What stands for standard input where a file is asked for, and makes a stream of it: records are answered one by one.
constexpr const char* streamName = "-";

struct StreamOptions {
    std::string input = "geojson";
    bool keepGoing = false;
    std::uint32_t mostBytes = std::uint32_t{16} << 20;
};

void addStream(CLI::App& command, StreamOptions& options);

/// Refuses the options of addStream() where no stream is read.
void checkNoStream(const CLI::App& command);

/// Refuses these options, which do not go with a stream.
void checkStream(const CLI::App& command, std::initializer_list<const char*> others);

/// One record: a feature by itself, of number 1.
struct StreamFeature {
    std::optional<FeatureText> text;  ///< of GeoJSON
    std::vector<Outline> outlines;
};

/// Answers every record of standard input with one line on standard output, before it waits for the next one. An answer
/// depends on its record alone and not on where in the stream it stands.
///
/// A record that cannot be read, or whose answer throws, is answered with the error where the stream keeps going.
/// Throws: FileError that names the record, where it does not; after the last record, when any was refused; and when
/// standard input or output fails. std::bad_alloc in either case: a record may take hundreds of times its bytes, an
/// archive with shared shapes more; --max-record is the remedy.
void runStream(const StreamOptions& options, const std::function<std::string(StreamFeature&)>& answer);

/// Hands out the outlines of each polygon or line by themselves. All at once as regions, with their measures, a record
/// of a few bytes a shape would take much memory.
void forEachShape(StreamFeature& feature, const std::function<void(std::vector<Outline>)>& take);

/// The JSON object with the id of the feature, where it has one, as first member. The object is not empty.
std::string withId(const std::optional<FeatureText>& text, std::string object);

}  // namespace mokshape
