#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/io/outline.h"

namespace mokshape {

/// The bytes of a file, a pipe included. Throws: FileError that names the file, also for an empty one.
std::string readFile(const std::string& name);

/// The outlines of a GeoJSON file, a WKT file or an archive, told apart by the file's extension or, without a known
/// one, by how it begins. A byte order mark is skipped. Throws: FileError that names the file.
OutlineFile readOutlines(const std::string& name);

/// Puts up to so many bytes of standard input at the place, as soon as there is one, and says how many; 0 at the end.
/// Throws: FileError.
std::size_t readSomeStandardInput(char* bytes, std::size_t most);

/// The bytes of standard input, also when there are none. Throws: FileError.
std::string readStandardInput();

/// Throws: FileError that names the file when its extension is none of .geojson, .json, .wkt and .mok.
void checkForm(const std::string& name);

/// The bytes of a file of these outlines, in the form that its extension asks for. `notes`, if any, get what that form
/// has no place for. Throws: what checkForm() does, and FileError that names the file for what it cannot hold.
std::string textFor(const std::string& name, const std::vector<Outline>& outlines, Notes* notes = nullptr);

/// Writes all of the text to standard output. Throws: FileError.
void writeStandardOutput(const std::string& text);

/// A file that appears whole or not at all: the bytes go to a new file beside it, and commit() renames that. Without
/// commit() nothing is left behind and an older file stays as it was. What is not a regular file, like a pipe or a
/// device, is written in commit() directly.
class PendingFile {
  public:
    /// Writes the text beside the file. Throws: FileError that names the file.
    PendingFile(std::string name, std::string text);
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    ~PendingFile();

    /// Throws: FileError that names the file.
    void commit();

  private:
    std::string name_;
    std::string target_;
    std::string beside_;
    std::string text_;
};

/// True when both names lead to the same file, there or not.
bool isSameFile(const std::string& a, const std::string& b);

}  // namespace mokshape
