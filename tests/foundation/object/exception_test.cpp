#include "foundation/object/exception.h"

#include <type_traits>

#include "tests/foundation/support.h"

namespace {

/// Whether an exception thrown by value is caught as a Base&.
template <class Base, class Thrown>
bool caughtAs(const Thrown& thrown) {
    try {
        throw Thrown(thrown);
    } catch (const Base&) {
        return true;
    } catch (...) {
        return false;
    }
}

/// Every exception is caught by its bases up to the root, and by those of the standard library.
template <class... Bases, class Thrown>
void expectCaughtAs(const Thrown& thrown) {
    EXPECT_TRUE((caughtAs<Bases>(thrown) && ...));
    EXPECT_TRUE(caughtAs<Thrown>(thrown));
    EXPECT_TRUE(caughtAs<gmException>(thrown));
    EXPECT_TRUE(caughtAs<gmPersistent>(thrown));
    EXPECT_TRUE(caughtAs<std::exception>(thrown));
}

class Loud : public gmExceptionWithString {
  public:
    explicit Loud(const char* message) : gmExceptionWithString(message) {}
};

TEST(Exception, IsCaughtByItsBases) {
    expectCaughtAs<>(gmBadPointer());
    expectCaughtAs<gmMathError::Errors, gmExceptionWithString>(gmMathError::Singular("flat"));
    expectCaughtAs<gmMathError::Errors, gmExceptionWithString>(gmMathError::OutOfRange("far"));
    expectCaughtAs<gmPel::Errors, gmExceptionWithString>(gmPel::BadWindow());
    expectCaughtAs<gmExceptionWithString>(gmArchive::Errors("torn"));
    expectCaughtAs<gmArchive::Errors>(gmArchive::UnknownVersion("file", 3));
    expectCaughtAs<gmArchive::Errors>(gmArchive::Truncated());
    expectCaughtAs<gmArchive::Errors>(gmArchive::Malformed("odd"));
    expectCaughtAs<gmArchive::Errors>(gmArchive::UnknownClass("new"));
    expectCaughtAs<gmArchive::Errors>(gmArchive::OutOfRange("deep"));
}

TEST(Exception, IsNotCaughtByItsSiblings) {
    EXPECT_FALSE(caughtAs<gmExceptionWithString>(gmBadPointer()));
    EXPECT_FALSE(caughtAs<gmMathError::OutOfRange>(gmMathError::Singular()));
    EXPECT_FALSE(caughtAs<gmArchive::Errors>(gmMathError::Singular()));
    EXPECT_FALSE(caughtAs<gmArchive::Malformed>(gmArchive::Truncated()));
}

TEST(Exception, RootsAreNotMadeByThemselves) {
    EXPECT_FALSE(std::is_default_constructible_v<gmException>);
    EXPECT_FALSE((std::is_constructible_v<gmExceptionWithString, const char*>));
    EXPECT_FALSE((std::is_constructible_v<gmMathError::Errors, const char*>));
    EXPECT_FALSE((std::is_constructible_v<gmPel::Errors, const char*>));
}

TEST(Exception, TellsItsMessageThreeWays) {
    const gmMathError::Singular error("no inverse");
    std::ostringstream out;
    error.message_(out);
    EXPECT_EQ(out.str(), "no inverse");
    EXPECT_EQ(error.message(), "no inverse");
    EXPECT_STREQ(error.what(), "no inverse");
}

TEST(Exception, WithoutAMessageIsKnownByItsClass) {
    EXPECT_EQ(gmPel::BadWindow().message(), "");
    EXPECT_STREQ(gmPel::BadWindow().what(), "gmPel::BadWindow");
    EXPECT_STREQ(gmBadPointer().what(), "gmBadPointer");
    EXPECT_STREQ(gmMathError::Singular().what(), "gmMathError::Singular");
    EXPECT_STREQ(gmMathError::OutOfRange().what(), "gmMathError::OutOfRange");
    EXPECT_STREQ(gmArchive::Errors().what(), "gmArchive::Errors");
}

TEST(Exception, TakesANullTextAsNoMessage) {
    EXPECT_EQ(Loud(nullptr).message(), "");
}

TEST(Exception, CopiesAndMovesItsMessage) {
    Loud original("first");
    const Loud copy(original);
    EXPECT_STREQ(copy.what(), "first");
    Loud assigned("second");
    assigned = original;
    EXPECT_STREQ(assigned.what(), "first");
    const Loud& same = assigned;
    assigned = same;
    EXPECT_STREQ(assigned.what(), "first");
    const Loud moved(std::move(original));
    EXPECT_STREQ(moved.what(), "first");
    Loud target("third");
    target = Loud("fourth");
    EXPECT_STREQ(target.what(), "fourth");
    gmBadPointer pointer;
    pointer = gmBadPointer();
    EXPECT_STREQ(pointer.what(), "gmBadPointer");
}

TEST(Exception, KeepsItsMessageWhenCaughtByACopyOfItsBase) {
    try {
        throw gmMathError::Singular("flat");
    } catch (const gmExceptionWithString& error) {
        EXPECT_EQ(error.message(), "flat");
    }
}

TEST(Exception, AssignmentLeavesTheReportingAlone) {
    Loud reporting("a");
    reporting.reportChanges(true);
    const Loud quiet("b");
    reporting = quiet;
    EXPECT_TRUE(reporting.reportsChanges());
    EXPECT_FALSE(Loud(reporting).reportsChanges());
}

TEST(Exception, ComesBackFromAnArchiveWithItsText) {
    gmMathError::Singular error("a line\nof \"text\"");
    EXPECT_EQ(support::hex(support::contentOf(error)).substr(0, 23), "00 10 00 00 00 61 20 6c");
    gmMathError::Singular loaded;
    support::transfer(error, loaded);
    EXPECT_EQ(loaded.message(), "a line\nof \"text\"");
    gmPel::BadWindow empty;
    EXPECT_EQ(support::hex(support::contentOf(empty)), "00 00 00 00 00");
}

TEST(Exception, OfAnUnknownVersionIsNotLoaded) {
    gmPel::BadWindow error;
    try {
        support::loadFrom(support::header + '\x07', [&](gmArchive& archive) { archive || error; });
        FAIL();
    } catch (const gmArchive::UnknownVersion& refused) {
        EXPECT_STREQ(refused.file(), "gmException");
    }
}

TEST(UnknownVersion, NamesThePlaceThatRefused) {
    const gmArchive::UnknownVersion error("reader.cpp", 42);
    EXPECT_STREQ(error.file(), "reader.cpp");
    EXPECT_EQ(error.line(), 42);
    EXPECT_STREQ(error.what(), "unknown version (reader.cpp:42)");
    const gmArchive::UnknownVersion copy(error);
    EXPECT_EQ(copy.line(), 42);
}

TEST(UnknownVersion, HasNoPlaceWhereTheFileTextIsNull) {
    const gmArchive::UnknownVersion error(nullptr, 0);
    EXPECT_EQ(error.file(), nullptr);
    EXPECT_EQ(error.line(), 0);
    EXPECT_STREQ(error.what(), "unknown version");
}

TEST(ExceptionMessage, IsKeptWholeWhereItComesAsAString) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(gmMathError::Singular(text).message(), text);
    EXPECT_EQ(gmMathError::OutOfRange(text).message(), text);
    EXPECT_EQ(gmArchive::UnknownClass(text).message(), text);
}

}  // namespace
