#include "bench/peers/measure.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <iostream>
#include <iterator>

namespace peers {

struct Contest::Running {
    const Entry* entry;
    Contestant contestant;
    std::size_t count = 1;
    std::size_t rounds = 0;
    std::size_t asked = 0;
    std::vector<double> times{};
    double agreement = -1.0;

    double ask() {
        const double taken = contestant.run(asked, count).count();
        asked += count;
        return taken;
    }
};

namespace {

std::string key(const Entry& entry) {
    return std::to_string(static_cast<int>(entry.row())) + entry.name();
}

/// How many questions of a sample can be answered within a moment, and the answers.
std::vector<double> sample(const Contestant& contestant, std::size_t limit) {
    std::vector<double> answers;
    const auto start = Clock::now();
    while (answers.size() < limit && (answers.empty() || Clock::now() - start < Seconds(0.2)))
        answers.push_back(contestant.answer(answers.size()));
    return answers;
}

}  // namespace

bool Contest::tooSlow(const Entry& entry, std::size_t n) const {
    const auto found = history_.find(key(entry));
    if (found == history_.end() || found->second.empty() || found->second.rbegin()->first >= n)
        return false;
    const auto last = found->second.rbegin();
    double power = 1.0;
    if (const auto before = std::next(last); before != found->second.rend())
        power = std::max(1.0, std::log(last->second / before->second) /
                                  std::log(static_cast<double>(last->first) / static_cast<double>(before->first)));
    const double growth = static_cast<double>(n) / static_cast<double>(last->first);
    return last->second * std::pow(growth, power) > options_.patience.count();
}

void Contest::compare(const RowFacts& row, const Inputs& inputs, std::vector<Running>& contestants) {
    const auto ours = std::find_if(contestants.begin(), contestants.end(),
                                   [](const Running& running) { return running.entry->name() == "ours"; });
    if (ours == contestants.end())
        return;
    const std::vector<double> expected = sample(ours->contestant, 256);
    ours->agreement = 1.0;
    for (Running& running : contestants) {
        if (&running == &*ours)
            continue;
        const std::vector<double> answers = sample(running.contestant, expected.size());
        std::size_t same = 0;
        std::size_t firstOther = answers.size();
        for (std::size_t i = 0; i < answers.size(); ++i) {
            if (std::abs(answers[i] - expected[i]) <= row.tolerance * std::max(1.0, std::abs(expected[i])))
                ++same;
            else
                firstOther = std::min(firstOther, i);
        }
        running.agreement = static_cast<double>(same) / static_cast<double>(answers.size());
        if (firstOther < answers.size())
            std::cerr << row.name << ", n = " << inputs.n << ": " << running.entry->name() << " answers "
                      << answers.size() - same << " of " << answers.size() << " questions differently, first question "
                      << firstOther << " with " << answers[firstOther] << " and not " << expected[firstOther] << '\n';
    }
}

/// Asks everything once, or what there is patience for.
void Contest::warm(Running& running) const {
    const auto start = Clock::now();
    while (running.asked < questionCount && Clock::now() - start < options_.patience) {
        running.count = 64;
        running.ask();
    }
    running.count = 1;
}

void Contest::runRounds(std::vector<Running>& contestants) {
    for (Running& running : contestants) {
        if (running.contestant.warms)
            warm(running);
        double taken = running.ask();
        while (taken < options_.round.count()) {
            running.count *= taken < 0.1 * options_.round.count() ? 4 : 2;
            taken = running.ask();
        }
        // Three rounds are enough to tell seconds from milliseconds.
        running.rounds = taken > 0.1 ? std::min<std::size_t>(3, options_.rounds) : options_.rounds;
    }
    std::vector<Running*> order;
    for (Running& running : contestants)
        order.insert(order.end(), running.rounds, &running);
    std::shuffle(order.begin(), order.end(), engine_);
    for (Running* running : order)
        running->times.push_back(running->ask() / static_cast<double>(running->count));
}

std::vector<Measured> Contest::hold(const RowFacts& row, const Inputs& inputs) {
    std::vector<Running> contestants;
    for (const Entry& entry : Entry::all()) {
        if (entry.row() != row.row)
            continue;
        if (tooSlow(entry, inputs.n)) {
            std::cerr << row.name << ", n = " << inputs.n << ": " << entry.name() << " is left out as too slow\n";
            continue;
        }
        try {
            Running running{&entry, entry.make(inputs)};
            running.contestant.answer(0);
            contestants.push_back(std::move(running));
        } catch (const std::exception& error) {
            std::cerr << row.name << ", n = " << inputs.n << ": " << entry.name() << " fails: " << error.what() << '\n';
        }
    }
    compare(row, inputs, contestants);
    runRounds(contestants);

    std::vector<Measured> results;
    for (Running& running : contestants) {
        std::vector<double>& times = running.times;
        std::sort(times.begin(), times.end());
        const double median = times[times.size() / 2];
        history_[key(*running.entry)][inputs.n] = median;
        results.push_back({running.entry->name(), Seconds(median), Seconds(times.front()),
                           (times[times.size() * 3 / 4] - times[times.size() / 4]) / median, running.agreement});
    }
    return results;
}

}  // namespace peers
