#include "tools/mokshape/stream.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstddef>
#include <exception>
#include <iterator>
#include <limits>
#include <new>
#include <utility>

#include "tools/io/archive_read.h"
#include "tools/io/file.h"
#include "tools/io/geojson.h"
#include "tools/io/grouping.h"
#include "tools/io/records.h"
#include "tools/io/text.h"
#include "tools/mokshape/cells.h"

namespace mokshape {

namespace {

bool isGiven(const CLI::App& command, const char* option) {
    return command.get_option(option)->count() > 0;
}

void readRecord(const Record& record, Framing framing, StreamFeature& feature) {
    if (!record.fault.empty())
        throw FileError(record.fault);
    if (framing == Framing::eLengths)
        feature.outlines = readArchiveShape(record.bytes);
    else
        feature.outlines = readGeoJsonFeature(withoutByteOrderMark(record.bytes), feature.text.emplace());
}

std::string placeText(const Record& record, Framing framing) {
    return std::string("standard input, ") + (framing == Framing::eLines ? "line " : "archive ") +
           std::to_string(record.number) + ": ";
}

}  // namespace

void addStream(CLI::App& command, StreamOptions& options) {
    const std::string group = "Options for standard input (-)";
    command
        .add_option("--input", options.input, "what it is: a GeoJSON feature a line, or archives with their lengths")
        ->check(CLI::IsMember({"geojson", "mok"}).description(""))
        ->type_name("geojson|mok")
        ->capture_default_str()
        ->group(group);
    command.add_flag("--keep-going", options.keepGoing, "answer a record that is refused with the error, and go on")
        ->group(group);
    command.add_option("--max-record", options.mostBytes, "refuse longer records")
        ->check(CLI::Range(std::uint32_t{1}, std::numeric_limits<std::uint32_t>::max()).description(""))
        ->type_name("BYTES")
        ->capture_default_str()
        ->group(group);
}

void checkNoStream(const CLI::App& command) {
    for (const char* const option : {"--input", "--keep-going", "--max-record"})
        if (isGiven(command, option))
            throw FileError(std::string(option) + ": this is for standard input (-), and a file is read");
}

void checkStream(const CLI::App& command, std::initializer_list<const char*> others) {
    for (const char* const option : others)
        if (isGiven(command, option))
            throw FileError(std::string(option) +
                            ": standard input (-) is answered on standard output, a line each record");
}

void runStream(const StreamOptions& options, const std::function<std::string(StreamFeature&)>& answer) {
    // Nobody reads on: an error with a message, as for a full disk.
    std::signal(SIGPIPE, SIG_IGN);
    const Framing framing = options.input == "mok" ? Framing::eLengths : Framing::eLines;
    RecordReader reader(readSomeStandardInput, framing, options.mostBytes);
    std::size_t records = 0;
    std::size_t refused = 0;
    for (Record record; reader.next(record);) {
        ++records;
        StreamFeature feature;
        std::string line;
        try {
            readRecord(record, framing, feature);
            line = answer(feature);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            if (!options.keepGoing)
                throw FileError(placeText(record, framing) + error.what());
            ++refused;
            line = withId(feature.text, jsonText({{"error", error.what()}}));
        }
        line += '\n';
        writeStandardOutput(line);
    }
    if (refused > 0)
        throw FileError("standard input: " + std::to_string(refused) + " of " + counted(records, "record", "records") +
                        (refused == 1 ? " was refused" : " were refused"));
}

void forEachShape(StreamFeature& feature, const std::function<void(std::vector<Outline>)>& take) {
    for (const Feature& group : groupByFeature(feature.outlines))
        for (const Part& part : group.parts) {
            const auto outline = [&](std::size_t i) {
                return std::make_move_iterator(feature.outlines.begin() + static_cast<std::ptrdiff_t>(i));
            };
            take({outline(part.first), outline(part.last)});
        }
}

std::string withId(const std::optional<FeatureText>& text, std::string object) {
    const std::string id = text ? text->id() : std::string();
    if (!id.empty())
        object.insert(1, "\"id\":" + id + ',');
    return object;
}

}  // namespace mokshape
