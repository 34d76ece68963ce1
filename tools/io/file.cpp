#include "tools/io/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "tools/io/archive_read.h"
#include "tools/io/archive_scan.h"
#include "tools/io/archive_write.h"
#include "tools/io/geojson.h"
#include "tools/io/text.h"
#include "tools/io/wkt.h"

namespace mokshape {

namespace {

namespace fs = std::filesystem;

std::string reason(int error) {
    return std::generic_category().message(error);
}

[[noreturn]] void refuse(const std::string& name, const std::string& why) {
    throw FileError(printable(name) + ": " + why);
}

bool startsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

enum class Form { eGeoJson, eWkt, eArchive };

std::optional<Form> formByExtension(const std::string& name) {
    const std::string extension = fs::path(name).extension().string();
    if (extension == ".geojson" || extension == ".json")
        return Form::eGeoJson;
    if (extension == ".wkt")
        return Form::eWkt;
    return extension == ".mok" ? std::optional(Form::eArchive) : std::nullopt;
}

Form formOf(const std::string& name, std::string_view bytes) {
    if (const std::optional<Form> form = formByExtension(name))
        return *form;
    if (startsWith(bytes, archiveMagic))
        return Form::eArchive;
    const std::string_view text = withoutByteOrderMark(bytes);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const bool isJson = first != std::string_view::npos && (text[first] == '{' || text[first] == '[');
    return isJson ? Form::eGeoJson : Form::eWkt;
}

std::vector<Outline> outlinesOf(const std::string& name, std::string_view bytes, Notes& notes) {
    const Form form = formOf(name, bytes);
    if (form == Form::eArchive)
        return readArchive(bytes, &notes);
    if (startsWith(bytes, "\xff\xfe") || startsWith(bytes, "\xfe\xff"))
        throw FileError("the text is UTF-16; only UTF-8 can be read");
    const std::string_view text = withoutByteOrderMark(bytes);
    return form == Form::eGeoJson ? readGeoJson(text, &notes) : readWkt(text, &notes);
}

/// The file that a symbolic link leads to, there or not: that one is replaced, and not the link.
std::string behindLinks(const std::string& name) {
    constexpr int mostLinks = 40;
    fs::path target = name;
    std::error_code error;
    for (int i = 0; fs::is_symlink(target, error); ++i) {
        if (i == mostLinks)
            refuse(name, "cannot be written: " + reason(ELOOP));
        const fs::path link = fs::read_symlink(target, error);
        if (error)
            refuse(name, "cannot be written: " + error.message());
        target = target.parent_path() / link;
    }
    return target.string();
}

/// Writes all of the text; 0 or the error.
int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

int writeAndClose(int descriptor, std::string_view text) {
    const int writeError = writeAll(descriptor, text);
    const int closeError = ::close(descriptor) == 0 ? 0 : errno;
    return writeError != 0 ? writeError : closeError;
}

std::string readAll(std::FILE* file, const std::string& name) {
    std::string text;
    std::array<char, 1 << 16> buffer;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file))
        text.append(buffer.data(), count);
    if (std::ferror(file))
        refuse(name, "cannot be read: " + reason(errno));
    return text;
}

}  // namespace

std::string readFile(const std::string& name) {
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Close> file(std::fopen(name.c_str(), "rb"));
    if (!file)
        refuse(name, "cannot be opened: " + reason(errno));
    std::string text = readAll(file.get(), name);
    if (text.empty())
        refuse(name, "the file is empty");
    return text;
}

OutlineFile readOutlines(const std::string& name) {
    const std::string bytes = readFile(name);
    OutlineFile file{name, {}, {}};
    try {
        file.outlines = outlinesOf(name, bytes, file.notes);
    } catch (const FileError& error) {
        refuse(name, error.what());
    }
    return file;
}

std::size_t readSomeStandardInput(char* bytes, std::size_t most) {
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, bytes, most);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            refuse("standard input", "cannot be read: " + reason(errno));
    }
}

std::string readStandardInput() {
    std::string text;
    std::array<char, 1 << 16> buffer;
    while (const std::size_t count = readSomeStandardInput(buffer.data(), buffer.size()))
        text.append(buffer.data(), count);
    return text;
}

void checkForm(const std::string& name) {
    if (!formByExtension(name))
        refuse(name, "the name must end in .geojson, .json, .wkt or .mok, so that it tells what to write");
}

std::string textFor(const std::string& name, const std::vector<Outline>& outlines, Notes* notes) {
    checkForm(name);
    std::ostringstream out;
    const Form form = *formByExtension(name);
    if (form == Form::eGeoJson) {
        writeGeoJson(out, outlines, notes);
    } else if (form == Form::eWkt) {
        writeWkt(out, outlines, notes);
    } else {
        try {
            writeArchive(out, outlines, notes);
        } catch (const FileError& error) {
            refuse(name, error.what());
        }
    }
    return out.str();
}

void writeStandardOutput(const std::string& text) {
    if (const int error = writeAll(STDOUT_FILENO, text))
        throw FileError("standard output cannot be written: " + reason(error));
}

PendingFile::PendingFile(std::string name, std::string text) : name_(std::move(name)), text_(std::move(text)) {
    struct stat old {};
    const bool exists = ::stat(name_.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode))
        refuse(name_, "cannot be written: " + reason(EISDIR));
    if (exists && !S_ISREG(old.st_mode)) {
        target_ = name_;
        return;
    }
    target_ = behindLinks(name_);
    const std::string stem = target_ + '.' + std::to_string(::getpid()) + '.';
    int descriptor = -1;
    for (int attempt = 0; descriptor < 0; ++attempt) {
        beside_ = stem + std::to_string(attempt);
        descriptor = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST) {
            const int error = errno;
            beside_.clear();
            refuse(name_, "cannot be written: " + reason(error));
        }
    }
    if (exists && ::fchmod(descriptor, old.st_mode & 07777) != 0)
        errno = 0;  // a file system without modes: the text matters more
    if (const int error = writeAndClose(descriptor, text_)) {
        ::unlink(beside_.c_str());
        refuse(name_, "cannot be written: " + reason(error));
    }
}

PendingFile::~PendingFile() {
    if (!beside_.empty())
        ::unlink(beside_.c_str());
}

void PendingFile::commit() {
    int error = 0;
    if (beside_.empty()) {
        const int descriptor = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
        error = descriptor < 0 ? errno : writeAndClose(descriptor, text_);
    } else if (std::rename(beside_.c_str(), target_.c_str()) != 0) {
        error = errno;
    } else {
        beside_.clear();
    }
    if (error != 0)
        refuse(name_, "cannot be written: " + reason(error));
}

bool isSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    if (fs::exists(a, error) || fs::exists(b, error))
        return fs::equivalent(a, b, error);
    const auto place = [&error](const std::string& name) {
        return fs::weakly_canonical(fs::absolute(behindLinks(name)), error);
    };
    return place(a) == place(b);
}

}  // namespace mokshape
