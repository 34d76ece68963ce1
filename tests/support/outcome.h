// Answers, or why there is none: what a query and its plain procedure are compared by.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "cntr/defs.h"
#include "foundation/object/exception.h"
#include "tests/support/bits.h"
#include "tests/support/text.h"

namespace support {

template <class T>
struct Outcome {
    std::optional<T> answer;
    std::string refusal;
};

template <class Query>
auto outcome(const Query& query) -> Outcome<decltype(query())> {
    try {
        return {query(), ""};
    } catch (const gmContourDefs::EmptyRegionSet& error) {
        return {std::nullopt, "EmptyRegionSet \"" + error.message() + "\""};
    } catch (const gmContourDefs::EmptyContour& error) {
        return {std::nullopt, "EmptyContour \"" + error.message() + "\""};
    } catch (const gmContourDefs::BadParams& error) {
        return {std::nullopt, "BadParams \"" + error.message() + "\""};
    } catch (const gmBadPointer&) {
        return {std::nullopt, "gmBadPointer"};
    }
}

template <class T>
std::string textOf(const Outcome<T>& outcome) {
    return outcome.answer ? text(*outcome.answer) : outcome.refusal;
}

template <class Query, class Plain>
testing::AssertionResult agree(const Query& query, const Plain& plain) {
    const auto actual = outcome(query);
    const auto expected = outcome(plain);
    if (actual.refusal == expected.refusal && actual.answer.has_value() == expected.answer.has_value() &&
        (!actual.answer || sameBits(*actual.answer, *expected.answer)))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << textOf(actual) << "\ninstead of\n" << textOf(expected);
}

}  // namespace support
