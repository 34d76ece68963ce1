#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "cntr/detail/cached.h"
#include "tests/support/bits.h"
#include "tests/support/queries.h"
#include "tests/support/testcontour.h"

using support::askFitEllipse;
using support::Query;
using support::TestContour;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RememberedAnswer : public testing::TestWithParam<Query> {
  protected:
    RememberedAnswer() {
        old_ = ask(contour_);
        contour_.moveSecretly(2, moved);
        TestContour fresh(contour_.points(), true);
        new_ = ask(fresh);
        EXPECT_NE(old_, new_) << "the query would not notice";
    }

    std::string ask(const TestContour& contour) const { return GetParam().ask(contour); }

    static constexpr gmVector<2> moved = {2, -5};

    /// A square that was asked, and then changed without a word.
    TestContour contour_{support::points("0 0, 4 0, 4 4, 0 4"), true};
    std::string old_;
    std::string new_;
};

INSTANTIATE_TEST_SUITE_P(Contour, RememberedAnswer, testing::ValuesIn(support::rememberedQueries()),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(RememberedAnswer, IsGivenAgain) {
    EXPECT_EQ(ask(contour_), old_);
    EXPECT_EQ(ask(contour_), old_);
}

TEST_P(RememberedAnswer, SurvivesALabelAndACacheLimit) {
    contour_.label(5);
    contour_.cachedVectorSize(0);
    EXPECT_EQ(ask(contour_), old_);
}

TEST_P(RememberedAnswer, SurvivesARefusal) {
    EXPECT_THROW(contour_.label(1UL << 40), gmContourDefs::BadParams);
    EXPECT_THROW(contour_.cachedVectorSize(-1), gmContourDefs::BadParams);
    EXPECT_THROW(contour_.encloseCircle(support::diameterMode(2)), gmContourDefs::BadParams);
    EXPECT_EQ(ask(contour_), old_);
}

TEST_P(RememberedAnswer, SurvivesEveryOtherQuery) {
    for (const Query& query : support::rememberedQueries())
        query.ask(contour_);
    EXPECT_EQ(ask(contour_), old_);
}

TEST_P(RememberedAnswer, IsDroppedByCleanCacheInfo) {
    contour_.cleanCacheInfo();
    EXPECT_EQ(ask(contour_), new_);
    EXPECT_EQ(ask(contour_), new_);
}

TEST_P(RememberedAnswer, IsDroppedByPoints) {
    contour_.points(contour_.points());
    EXPECT_EQ(ask(contour_), new_);
}

TEST_P(RememberedAnswer, IsDroppedBySetPoints) {
    contour_.setPoints(contour_.points());
    EXPECT_EQ(ask(contour_), new_);
}

TEST_P(RememberedAnswer, IsDroppedByClosednessAlsoWhenItStaysAsItWas) {
    contour_.isClosed(true);
    EXPECT_EQ(ask(contour_), new_);
}

TEST_P(RememberedAnswer, IsCopied) {
    const TestContour copy(contour_);
    EXPECT_EQ(ask(copy), old_);
}

TEST_P(RememberedAnswer, IsAssigned) {
    TestContour target(support::points("7 7, 8 8"), false);
    target = contour_;
    EXPECT_EQ(ask(target), old_);
}

TEST_P(RememberedAnswer, SurvivesAssignmentToItself) {
    const gmContour& alias = contour_;
    static_cast<gmContour&>(contour_) = alias;
    EXPECT_EQ(ask(contour_), old_);
}

TEST_P(RememberedAnswer, OfTheTargetIsDroppedByAnAssignmentThatBringsNone) {
    const TestContour unasked(contour_.points(), true);
    contour_ = unasked;
    EXPECT_EQ(ask(contour_), new_);
}

TEST_P(RememberedAnswer, OfACopyIsItsOwn) {
    TestContour copy(contour_);
    copy.cleanCacheInfo();
    EXPECT_EQ(ask(contour_), old_);
    EXPECT_EQ(ask(copy), new_);
    contour_.cleanCacheInfo();
    copy.points(support::points("7 7, 8 9"));
    EXPECT_EQ(ask(contour_), new_);
}

TEST_P(RememberedAnswer, IsNotMapped) {
    TestContour target;
    contour_.map(gmXform<2>::I, target);
    EXPECT_EQ(ask(target), new_);
    contour_.map(gmXform<2>::I, contour_);
    EXPECT_EQ(ask(contour_), new_);
}

TEST(ContourFitEllipse, RemembersThatNothingWasDetermined) {
    TestContour line(support::points("0 0, 1 1, 2 2, 3 3, 4 4, 5 5"), true);
    const std::string failed = askFitEllipse(line);
    line.moveSecretly(1, {1, 9});
    EXPECT_EQ(askFitEllipse(line), failed);
}

TEST(ContourEncloseRect, ConfusesRememberedTransformsThatDifferInTheLastValueOnly) {
    const TestContour contour(support::points("0 0, 1 1"), true);
    const gmXform<2> one(gmMatrix<2>(1, 2, 3, 4), {5, 6});
    const gmXform<2> other(gmMatrix<2>(1, 2, 3, 40), {5, 6});
    const gmRect rect = contour.encloseRect(one);
    EXPECT_EQ(contour.encloseRect(other), rect);
    EXPECT_FALSE(TestContour(contour.points(), true).encloseRect(other) == rect);
}

TEST(ContourEncloseRect, TellsTransformsApartByEachOfTheFirstFiveValues) {
    const std::vector<double> values = {5, 6, 1, 2, 3, 4};
    const auto xform = [](const std::vector<double>& v) {
        return gmXform<2>(gmMatrix<2>(v[2], v[3], v[4], v[5]), {v[0], v[1]});
    };
    for (std::size_t i = 0; i < 5; i++) {
        const TestContour contour(support::points("0 0, 1 1"), true);
        std::vector<double> changed = values;
        changed[i] += 1;
        const gmRect before = contour.encloseRect(xform(values));
        EXPECT_FALSE(contour.encloseRect(xform(changed)) == before) << i;
        EXPECT_EQ(contour.encloseRect(xform(values)), before) << i;
    }
}

TEST(CachedValue, IsFilledOnce) {
    detail::Cached<int> cached;
    int fills = 0;
    const auto fill = [&](int& value) { value = ++fills; };
    EXPECT_FALSE(cached.isValid());
    EXPECT_EQ(cached.get(fill), 1);
    EXPECT_EQ(cached.get(fill), 1);
    EXPECT_TRUE(cached.isValid());
    cached.invalidate();
    EXPECT_FALSE(cached.isValid());
    EXPECT_EQ(cached.get(fill), 2);
}

TEST(CachedValue, StaysInvalidWhenFillingFails) {
    detail::Cached<int> cached;
    EXPECT_THROW(cached.get([](int&) { throw std::runtime_error("no"); }), std::runtime_error);
    EXPECT_FALSE(cached.isValid());
    EXPECT_EQ(cached.get([](int& value) { value = 7; }), 7);
}

TEST(CachedValue, IsCopiedWithItsValidity) {
    detail::Cached<int> cached;
    detail::Cached<int> copy(cached);
    EXPECT_FALSE(copy.isValid());
    cached.get([](int& value) { value = 7; });
    copy = detail::Cached<int>(cached);
    EXPECT_TRUE(copy.isValid());
    EXPECT_EQ(copy.get([](int& value) { value = 8; }), 7);
    copy.invalidate();
    EXPECT_TRUE(cached.isValid());
}

}  // namespace
