#pragma once

#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "bench/peers/contest.h"

namespace peers {

struct Options {
    std::size_t rounds = 15;
    /// How long a round of one contestant takes at least.
    Seconds round{0.002};
    /// Who would take longer than that for one answer is left out.
    Seconds patience{2.0};
};

struct Measured {
    std::string name;
    Seconds median{0.0};
    Seconds least{0.0};
    /// The middle half of the rounds is this far apart, as a share of the median.
    double spread = 0.0;
    /// How much of a sample was answered as the library answers it; -1 where the library did not answer.
    double agreement = -1.0;
};

/// Has all contestants of a row answer the same questions, in rounds that follow each other in random order: what
/// disturbs the machine disturbs all of them.
class Contest {
  public:
    explicit Contest(const Options& options) : options_(options) {}

    /// What is worth telling goes to the standard error stream.
    std::vector<Measured> hold(const RowFacts& row, const Inputs& inputs);

  private:
    struct Running;

    bool tooSlow(const Entry& entry, std::size_t n) const;
    static void compare(const RowFacts& row, const Inputs& inputs, std::vector<Running>& contestants);
    void warm(Running& running) const;
    void runRounds(std::vector<Running>& contestants);

    Options options_;
    std::mt19937 engine_{2024};
    /// How long one answer took at the sizes so far.
    std::map<std::string, std::map<std::size_t, double>> history_;
};

}  // namespace peers
