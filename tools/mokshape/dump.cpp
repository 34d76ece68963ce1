#include "tools/mokshape/dump.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tools/io/archive_layout.h"
#include "tools/io/archive_scan.h"
#include "tools/io/file.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

struct Options {
    std::string file;
    ArchiveScanOptions scan;
};

/// Hands the lines on in pieces: a few bytes of an archive may take a hundred of text.
class Output {
  public:
    explicit Output(std::size_t archiveBytes) : width_(std::to_string(archiveBytes).size()) {}

    void line(std::size_t byte, std::size_t level, const std::string& text) {
        // Deeper nesting would take more blanks than text.
        constexpr std::size_t deepestIndent = 30;
        const std::string number = std::to_string(byte);
        text_.append(width_ - number.size(), ' ').append(number).append(2 * (1 + std::min(level, deepestIndent)), ' ');
        text_ += text;
        text_ += '\n';
        if (text_.size() > pieceBytes)
            flush();
    }

    void flush() {
        writeStandardOutput(text_);
        text_.clear();
    }

  private:
    static constexpr std::size_t pieceBytes = 1 << 16;
    const std::size_t width_;
    std::string text_;
};

void checkParts(const std::vector<std::string>& parts) {
    for (const std::string& part : parts)
        if (!findLayout(part)) {
            std::string known;
            for (const ArchiveLayout& layout : archiveLayouts())
                if (layout.isRegistered)
                    known += (known.empty() ? "" : ", ") + std::string(layout.className);
            throw FileError("--part: '" + printable(part, 60) + "' is no class of archives; these are: " + known);
        }
}

void run(const Options& options) {
    checkParts(options.scan.parts);
    const std::string bytes = readFile(options.file);
    Output output(bytes.size());
    const ArchiveScan scan = scanArchive(
        bytes,
        [&output](std::size_t byte, std::size_t level, const std::string& text) { output.line(byte, level, text); },
        options.scan);
    if (!scan.fault)
        output.line(bytes.size(), 0, "end, " + counted(scan.objects, "object", "objects"));
    output.flush();
    if (scan.fault)
        throw FileError(printable(options.file) + ": " + scan.fault->what());
}

}  // namespace

void addDump(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("dump", "Print what an archive holds, byte by byte");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "an archive of the library, of any name")->required()->type_name("");
    command->add_flag("--all", options->scan.all, "print every vertex and not only the first three of an outline");
    command->add_option("--part", options->scan.parts, "a class whose content the archive begins with")
        ->type_name("CLASS")
        ->allow_extra_args(false);
    command->footer(
        "Each line begins with the byte where it stands. Objects are numbered as they come;\n"
        "below each is its class with the version of its layout, then its fields, those of\n"
        "base classes as blocks of their own. An object that was there before is named by\n"
        "its number.\n"
        "\n"
        "Of a damaged archive everything before the damage is printed, and then on standard\n"
        "error the byte, the way to it and the reason. The exit status is 1 then. What this\n"
        "command accepts the library loads, and nothing else.\n"
        "\n"
        "An archive made of pointers says itself what it holds. One that an application\n"
        "stored objects in directly, as in archive || contour, does not: name their classes\n"
        "with --part, once for each object, in the order in which they were stored.\n"
        "\n"
        "Examples:\n"
        "  mokshape dump coins.mok\n"
        "  mokshape dump contour.mok --part gmContour --all\n");
    command->callback([options] { run(*options); });
}

}  // namespace mokshape
