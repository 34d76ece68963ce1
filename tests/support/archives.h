// Archives in memory, and their bytes as text.
#pragma once

#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

#include "foundation/object/archive.h"
#include "foundation/object/exception.h"
#include "foundation/object/persistent.h"

namespace support {

/// Archives begin with these five bytes.
inline const std::string header("MOKA\x01", 5);

/// What an archive holds after `store(archive)`.
template <class Store>
std::string stored(Store store) {
    std::ostringstream out;
    gmArchive archive(out);
    store(archive);
    return out.str();
}

/// The bytes of `value` in an archive, without the header.
template <class T>
std::string contentOf(T& value) {
    return stored([&](gmArchive& archive) { archive || value; }).substr(header.size());
}

/// Runs `load(archive)` on an archive made of these bytes.
template <class Load>
void loadFrom(const std::string& bytes, Load load) {
    std::istringstream in(bytes);
    gmArchive archive(in);
    load(archive);
}

/// Overwrites `target` with what `value` archives.
template <class T>
void transfer(T& value, T& target) {
    loadFrom(stored([&](gmArchive& archive) { archive || value; }), [&](gmArchive& archive) { archive || target; });
}

/// A source of bytes that cannot be measured, like a pipe.
class Pipe : public std::streambuf {
  public:
    explicit Pipe(std::string bytes) : bytes_(std::move(bytes)) {
        setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
    }

  private:
    std::string bytes_;
};

/// Two digits a byte, a blank between bytes.
inline std::string hex(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (!text.empty())
            text += ' ';
        text += "0123456789abcdef"[value / 16];
        text += "0123456789abcdef"[value % 16];
    }
    return text;
}

inline std::string unhex(const std::string& text) {
    std::istringstream in(text);
    std::string bytes;
    for (unsigned value = 0; in >> std::hex >> value;)
        bytes += static_cast<char>(value);
    return bytes;
}

/// Overwrites `target` with what the bytes behind the header hold, written as hex() does.
template <class T>
void load(const std::string& content, T& target) {
    loadFrom(header + unhex(content), [&](gmArchive& archive) { archive || target; });
}

/// A new T with what the content holds.
template <class T>
T loaded(const std::string& content) {
    T target;
    load(content, target);
    return target;
}

/// For contents that are put together from pieces with a blank behind each.
inline std::string withoutBlankAtEnd(const std::string& content) {
    return content.substr(0, content.size() - 1);
}

/// Where loading the content into a new T refuses a version: "file:line".
template <class T>
std::string refusedVersion(const std::string& content) {
    T target;
    try {
        load(content, target);
    } catch (const gmArchive::UnknownVersion& error) {
        return std::string(error.file() ? error.file() : "null") + ":" + std::to_string(error.line());
    }
    return "accepted";
}

/// How many of the ways to cut the archive of `value` short are refused as such.
template <class T>
std::size_t refusedCuts(T& value) {
    const std::string whole = header + contentOf(value);
    std::size_t refused = 0;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        T target;
        try {
            loadFrom(whole.substr(0, length), [&](gmArchive& archive) { archive || target; });
        } catch (const gmArchive::Truncated&) {
            ++refused;
        }
    }
    return refused;
}

}  // namespace support
