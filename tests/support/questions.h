// Questions with the answers of the plain procedures, and whether a shape gives these however often it is asked, in any
// order: what it keeps for the next question must change no answer.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/hardshapes.h"
#include "tests/support/outcome.h"
#include "tests/support/random.h"

namespace support {

/// How many pairs of a shape and a question were compared, and how many are wanted: MOK_PAIRS in the environment asks
/// for more than the one round that every run makes.
class Pairs {
  public:
    static long& compared() {
        static long count = 0;
        return count;
    }

    static int rounds() {
        const char* wanted = std::getenv("MOK_PAIRS");
        return wanted ? static_cast<int>(std::atol(wanted) / ofOneRound) + 1 : 1;
    }

  private:
    static constexpr long ofOneRound = 500000;  // a little less than are compared in one
};

template <class Shape>
struct Question {
    std::string text;
    std::function<testing::AssertionResult(const Shape&)> ask;
};

template <class Shape>
using Questions = std::vector<Question<Shape>>;

/// A question whose answer is compared to the bit.
template <class Shape, class Answer, class Ask>
Question<Shape> question(std::string text, Answer expected, Ask ask) {
    return {std::move(text),
            [expected = std::move(expected), ask](const Shape& shape) { return same<Answer>(ask(shape), expected); }};
}

/// The same for one that may be refused: `plain` answers or throws as the shape should.
template <class Shape, class Plain, class Ask>
Question<Shape> refusable(std::string text, const Plain& plain, Ask ask) {
    return {std::move(text), [expected = outcome(plain), ask](const Shape& shape) {
                const auto actual = outcome([&] { return ask(shape); });
                const bool same = actual.answer && expected.answer ? sameBits(*actual.answer, *expected.answer)
                                                                   : !actual.answer && !expected.answer;
                if (same && actual.refusal == expected.refusal)
                    return testing::AssertionSuccess();
                return testing::AssertionFailure() << textOf(actual) << "\ninstead of\n" << textOf(expected);
            }};
}

template <class T>
void shuffle(std::vector<T>& values, Random& random) {
    for (std::size_t i = values.size(); i > 1; i--)
        std::swap(values[i - 1], values[static_cast<std::size_t>(random.integer(0, static_cast<int>(i) - 1))]);
}

template <class Shape>
void expectAnswer(const Shape& shape, const Question<Shape>& question, const char* when) {
    EXPECT_TRUE(question.ask(shape)) << question.text << ", " << when;
}

/// Each of a few questions first of all, and again until an answer may come from what was kept; then all of them, of
/// one shape, in any order and back; and of copies of it. `make` makes a shape that nobody has asked yet.
template <class Shape, class Make>
void expectAnswers(const Make& make, Questions<Shape> questions, Random& random) {
    Pairs::compared() += static_cast<long>(questions.size());
    shuffle(questions, random);
    for (std::size_t i = 0; i < questions.size() && i < 8; i++) {
        const Shape fresh = make();
        for (const char* when : {"first of all", "for the second time", "for the third time"})
            expectAnswer(fresh, questions[i], when);
    }
    const Shape asked = make();
    for (const auto& question : questions)
        expectAnswer(asked, question, "in any order");
    const Shape copy(asked);
    shuffle(questions, random);
    for (std::size_t i = 0; i < questions.size(); i++)
        expectAnswer(i % 2 == 0 ? asked : copy, questions[i], i % 2 == 0 ? "in another order" : "of a copy");
}

/// Calls check(shape, random) with outlines of the family, one of each size a round.
template <class Check>
void forEachHardShape(const HardFamily& family, const std::vector<int>& sizes, const Check& check) {
    for (int round = 0; round < Pairs::rounds(); round++)
        for (const int n : sizes) {
            const auto seed = static_cast<std::uint32_t>(round * 100000 + n);
            SCOPED_TRACE(std::string(family.name) + " of " + std::to_string(n) + ", seed " + std::to_string(seed));
            Random random(seed);
            const HardShape shape = hardShape(family, random, n);
            SCOPED_TRACE(n <= 40 ? support::text(shape.outline) : "");
            check(shape, random);
            if (testing::Test::HasFailure())
                return;
        }
}

}  // namespace support
