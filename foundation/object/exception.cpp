#include "foundation/object/exception.h"

#include <ostream>
#include <sstream>

#include "foundation/object/instantiator.h"

gmException::gmException() = default;
gmException::gmException(const gmException&) = default;
gmException::gmException(gmException&&) noexcept = default;
// Written out: the defaults would assign the shared virtual base along with each path to it.
gmException& gmException::operator=(const gmException& other) {
    text_ = other.text_;
    return *this;
}
gmException& gmException::operator=(gmException&& other) noexcept {
    text_ = std::move(other.text_);
    return *this;
}
gmException::~gmException() = default;

void gmException::message_(std::ostream& out) const {
    out << text_;
}

std::string gmException::message() const {
    std::ostringstream out;
    message_(out);
    return out.str();
}

const char* gmException::what() const noexcept {
    try {
        return text_.empty() ? gm_Instantiator::className(typeid(*this)).c_str() : text_.c_str();
    } catch (...) {
        return typeid(*this).name();  // no memory for the readable name
    }
}

void gmException::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, static_cast<gmException*>(this), sizeof(gmException), 0, [&](unsigned char version) {
        if (version != 0)
            throw gmArchive::UnknownVersion("gmException", 0);
        archive || text_;
    });
}

gmExceptionWithString::gmExceptionWithString(const char* message) {
    text_ = message ? message : "";
}
gmExceptionWithString::gmExceptionWithString(const gmExceptionWithString&) = default;
gmExceptionWithString::gmExceptionWithString(gmExceptionWithString&&) noexcept = default;
gmExceptionWithString& gmExceptionWithString::operator=(const gmExceptionWithString&) = default;
gmExceptionWithString& gmExceptionWithString::operator=(gmExceptionWithString&&) noexcept = default;
gmExceptionWithString::~gmExceptionWithString() = default;

void gmExceptionWithString::message_(std::ostream& out) const {
    gmException::message_(out);
}

gmBadPointer::gmBadPointer() = default;
gmBadPointer::~gmBadPointer() = default;

gmMathError::Errors::~Errors() = default;
gmMathError::Singular::Singular(const std::string& message) : Errors(nullptr) {
    text_ = message;
}
gmMathError::Singular::~Singular() = default;
gmMathError::OutOfRange::OutOfRange(const std::string& message) : Errors(nullptr) {
    text_ = message;
}
gmMathError::OutOfRange::~OutOfRange() = default;

gmPel::Errors::~Errors() = default;
gmPel::BadWindow::BadWindow() : Errors(nullptr) {}
gmPel::BadWindow::~BadWindow() = default;

gmArchive::Errors::Errors(const std::string& message) : gmExceptionWithString(nullptr) {
    text_ = message;
}
gmArchive::Errors::~Errors() = default;
gmArchive::UnknownVersion::UnknownVersion(const char* file, int line)
    : Errors("unknown version" + (file ? " (" + std::string(file) + ":" + std::to_string(line) + ")" : "")),
      file_(file),
      line_(line) {}
gmArchive::UnknownVersion::~UnknownVersion() = default;
gmArchive::Truncated::Truncated() : Errors("archive ends too early") {}
gmArchive::Truncated::~Truncated() = default;
gmArchive::Malformed::~Malformed() = default;
gmArchive::UnknownClass::~UnknownClass() = default;
gmArchive::OutOfRange::~OutOfRange() = default;
