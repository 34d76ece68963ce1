#pragma once

#include <exception>
#include <iosfwd>
#include <string>

#include "foundation/export.h"
#include "foundation/object/persistent.h"

/// Root of every exception of the class library: persistent, thrown by value, and a std::exception.
class MOKSTD_API gmException : public virtual gmPersistent, public std::exception {
  public:
    gmException(const gmException&);
    gmException(gmException&&) noexcept;
    gmException& operator=(const gmException&);
    gmException& operator=(gmException&&) noexcept;
    ~gmException() override;

    /// Writes the message; nothing when there is none.
    virtual void message_(std::ostream& out) const;
    /// What message_ writes.
    std::string message() const;
    /// The stored message, or the name of the class when it is empty. Valid as long as the exception.
    const char* what() const noexcept override;

  protected:
    gmException();

    /// Archives a version byte 0 and the message, so that an archived error comes back with its text.
    void dispatchSerialize(gmArchive& archive) override;

    std::string text_;
};

/// An exception with a message.
class MOKSTD_API gmExceptionWithString : public gmException {
  protected:
    /// A null pointer gives the empty message.
    explicit gmExceptionWithString(const char* message);

  public:
    gmExceptionWithString(const gmExceptionWithString&);
    gmExceptionWithString(gmExceptionWithString&&) noexcept;
    gmExceptionWithString& operator=(const gmExceptionWithString&);
    gmExceptionWithString& operator=(gmExceptionWithString&&) noexcept;
    ~gmExceptionWithString() override;

    void message_(std::ostream& out) const override;
};

/// An empty handle was dereferenced.
class MOKSTD_API gmBadPointer : public gmException {
  public:
    gmBadPointer();
    ~gmBadPointer() override;
};

/// Scope of the errors of computations.
class MOKSTD_API gmMathError {
  public:
    /// Base of the errors of computations.
    class MOKSTD_API Errors : public gmExceptionWithString {
      public:
        ~Errors() override;

      protected:
        using gmExceptionWithString::gmExceptionWithString;
    };

    /// The data does not determine an answer: a matrix without inverse, points on a line, no extent.
    class MOKSTD_API Singular : public Errors {
      public:
        explicit Singular(const std::string& message = std::string());
        ~Singular() override;
    };

    /// An index beyond what there is, or a value that an operation cannot take.
    class MOKSTD_API OutOfRange : public Errors {
      public:
        explicit OutOfRange(const std::string& message = std::string());
        ~OutOfRange() override;
    };
};

/// Scope of the errors of windows on pixel data, and of operations that edge points cannot follow.
class MOKSTD_API gmPel {
  public:
    class MOKSTD_API Errors : public gmExceptionWithString {
      public:
        ~Errors() override;

      protected:
        using gmExceptionWithString::gmExceptionWithString;
    };

    class MOKSTD_API BadWindow : public Errors {
      public:
        BadWindow();
        ~BadWindow() override;
    };
};

class MOKSTD_API gmArchive::Errors : public gmExceptionWithString {
  public:
    explicit Errors(const std::string& message = std::string());
    ~Errors() override;
};

class MOKSTD_API gmArchive::UnknownVersion : public gmArchive::Errors {
  public:
    /// The place that refused the version: a file text, or null, and a line. The text is not copied: it stays as
    /// long as the process.
    UnknownVersion(const char* file, int line);
    ~UnknownVersion() override;

    const char* file() const { return file_; }
    int line() const { return line_; }

  private:
    const char* file_;
    int line_;
};

class MOKSTD_API gmArchive::Truncated : public gmArchive::Errors {
  public:
    Truncated();
    ~Truncated() override;
};

class MOKSTD_API gmArchive::Malformed : public gmArchive::Errors {
  public:
    using Errors::Errors;
    ~Malformed() override;
};

class MOKSTD_API gmArchive::UnknownClass : public gmArchive::Errors {
  public:
    using Errors::Errors;
    ~UnknownClass() override;
};

class MOKSTD_API gmArchive::OutOfRange : public gmArchive::Errors {
  public:
    using Errors::Errors;
    ~OutOfRange() override;
};
