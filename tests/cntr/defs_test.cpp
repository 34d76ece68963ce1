#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "cntr/cntr.h"

namespace {

using EmptyContour = gmContourDefs::EmptyContour;
using EmptyRegionSet = gmContourDefs::EmptyRegionSet;
using BadParams = gmContourDefs::BadParams;
using RegionCannotBeSetOpen = gmContourDefs::RegionCannotBeSetOpen;

TEST(ContourDefs, EnumeratorsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(gmContourDefs::eKeep), 0);
    EXPECT_EQ(static_cast<int>(gmContourDefs::eOuterHull), 1);
    EXPECT_EQ(static_cast<int>(gmContourDefs::eRegularize), 2);
    EXPECT_EQ(static_cast<int>(gmContourDefs::eMaxVertexPair), 0);
    EXPECT_EQ(static_cast<int>(gmContourDefs::eFromFirstVertex), 1);
    EXPECT_EQ(sizeof(gmContourDefs::IntersectionMode), 4U);
    EXPECT_EQ(sizeof(gmContourDefs::DiameterMode), 4U);
    EXPECT_EQ(sizeof(gmContourDefs::DrawMode), 4U);
}

TEST(ContourDefs, IsAScopeThatCanBeAssigned) {
    gmContourDefs a;
    const gmContourDefs b;
    a = b;
    a = gmContourDefs();
    EXPECT_TRUE(std::is_empty_v<gmContourDefs>);
}

TEST(ContourDefs, ErrorNumbersAreFixed) {
    EXPECT_EQ(EmptyContour().errorNumber(), 268453504);
    EXPECT_EQ(EmptyRegionSet().errorNumber(), 268453506);
    EXPECT_EQ(BadParams().errorNumber(), 268453507);
    EXPECT_EQ(RegionCannotBeSetOpen().errorNumber(), 268453508);
}

TEST(ContourDefs, ErrorsIsAbstractAndABaseOfAll) {
    EXPECT_TRUE(std::is_abstract_v<gmContourDefs::Errors>);
    EXPECT_TRUE((std::is_base_of_v<gmExceptionWithString, gmContourDefs::Errors>));
    EXPECT_TRUE((std::is_base_of_v<gmException, gmContourDefs::Errors>));
    EXPECT_TRUE((std::is_base_of_v<gmPersistent, gmContourDefs::Errors>));
}

template <class Error>
class ContourError : public testing::Test {};

using AllErrors = testing::Types<EmptyContour, EmptyRegionSet, BadParams, RegionCannotBeSetOpen>;
struct ErrorNames {
    template <class Error>
    static std::string GetName(int) {
        const std::string name = Error().what();
        return name.substr(name.rfind(':') + 1);
    }
};
TYPED_TEST_SUITE(ContourError, AllErrors, ErrorNames);

template <class Error, class Caught>
void expectCaughtAs() {
    try {
        throw Error("why");
    } catch (const Caught& caught) {
        EXPECT_EQ(typeid(caught), typeid(Error));
    } catch (...) {
        ADD_FAILURE() << "not caught";
    }
}

TYPED_TEST(ContourError, IsCaughtAsEachOfItsBases) {
    expectCaughtAs<TypeParam, TypeParam>();
    expectCaughtAs<TypeParam, gmContourDefs::Errors>();
    expectCaughtAs<TypeParam, gmExceptionWithString>();
    expectCaughtAs<TypeParam, gmException>();
    expectCaughtAs<TypeParam, gmPersistent>();
    expectCaughtAs<TypeParam, std::exception>();
}

TYPED_TEST(ContourError, IsNotCaughtAsAnother) {
    try {
        throw TypeParam();
    } catch (const gmMathError::Errors&) {
        ADD_FAILURE();
    } catch (const gmContourDefs::Errors& error) {
        EXPECT_EQ(error.errorNumber(), TypeParam().errorNumber());
        EXPECT_EQ(dynamic_cast<const EmptyContour*>(&error) != nullptr, (std::is_same_v<TypeParam, EmptyContour>));
        EXPECT_EQ(dynamic_cast<const BadParams*>(&error) != nullptr, (std::is_same_v<TypeParam, BadParams>));
    }
}

TYPED_TEST(ContourError, HasNoMessageUnlessGiven) {
    EXPECT_EQ(TypeParam().message(), "");
    EXPECT_EQ(TypeParam(std::string()).message(), "");
    EXPECT_EQ(TypeParam("what happened").message(), "what happened");
    EXPECT_STREQ(TypeParam("what happened").what(), "what happened");
}

TYPED_TEST(ContourError, WritesItsMessage) {
    std::ostringstream out;
    TypeParam("what happened").message_(out);
    EXPECT_EQ(out.str(), "what happened");
}

TYPED_TEST(ContourError, IsNamedByItsClassWithoutAMessage) {
    EXPECT_THAT(TypeParam().what(), testing::StartsWith("gmContourDefs::"));
}

TYPED_TEST(ContourError, CopiesAndMovesWithItsMessage) {
    const TypeParam original("first");
    TypeParam copy(original);
    EXPECT_EQ(copy.message(), "first");
    TypeParam moved(std::move(copy));
    EXPECT_EQ(moved.message(), "first");
    TypeParam target("second");
    target = original;
    EXPECT_EQ(target.message(), "first");
    TypeParam another;
    another = TypeParam("third");
    EXPECT_EQ(another.message(), "third");
    EXPECT_EQ(original.message(), "first");
}

TYPED_TEST(ContourError, MakesADefaultOneForTheRegistry) {
    const std::unique_ptr<gmPersistent> made(TypeParam::make());
    const auto* error = dynamic_cast<TypeParam*>(made.get());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->message(), "");
}

/// Counts how many there are.
template <class Error>
class Counted : public Error {
  public:
    explicit Counted(const std::string& message) : Error(message) { living++; }
    Counted(const Counted& other) : Error(other) { living++; }
    ~Counted() override { living--; }

    static inline int living = 0;
};

TYPED_TEST(ContourError, ThrowsACopyOfItselfAndIsGone) {
    gmContourDefs::Errors* heaped = new Counted<TypeParam>("what happened");
    ASSERT_EQ(Counted<TypeParam>::living, 1);
    try {
        heaped->suicideAndRethrow();
    } catch (const gmContourDefs::Errors& error) {
        EXPECT_EQ(Counted<TypeParam>::living, 0);
        EXPECT_EQ(typeid(error), typeid(TypeParam));
        EXPECT_EQ(error.message(), "what happened");
        EXPECT_EQ(error.errorNumber(), TypeParam().errorNumber());
    }
}

TYPED_TEST(ContourError, ThrowsItselfAlsoWhenItIsKnownAsItsClass) {
    EXPECT_THROW((new TypeParam("what happened"))->suicideAndRethrow(), TypeParam);
}

}  // namespace
