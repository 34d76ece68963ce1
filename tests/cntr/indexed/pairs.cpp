// Says at the end of a run how many pairs of a shape and a question it compared.
#include <gtest/gtest.h>

#include <iostream>

#include "tests/support/questions.h"

namespace {

class ReportsPairs : public testing::Environment {
  public:
    void TearDown() override {
        std::cout << support::Pairs::compared() << " pairs of a shape and a question compared\n";
    }
};

[[maybe_unused]] const testing::Environment* const registered = testing::AddGlobalTestEnvironment(new ReportsPairs);

}  // namespace
