#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/peers/inputs.h"
#include "bench/peers/rows.h"

namespace peers {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// One way of answering a row's question for one input.
struct Contestant {
    /// The answer to question i as a number that can be compared with the others'.
    std::function<double(std::size_t i)> answer;
    /// Asks `count` questions from `first` on and says how long that took.
    std::function<Seconds(std::size_t first, std::size_t count)> run;
    /// Whether it may be quicker once it has seen some questions: then it sees them all before it is measured.
    bool warms = false;
};

/// Somebody who takes part in a row. Entries stand as constants in the peers' sources and enlist themselves, so that a
/// program holds those that it was linked from.
class Entry {
  public:
    using Make = std::function<Contestant(const Inputs&)>;

    /// `name` starts with the peer's name; "ours" is the library's.
    Entry(Row row, std::string name, Make make);

    Row row() const { return row_; }
    const std::string& name() const { return name_; }
    Contestant make(const Inputs& inputs) const { return make_(inputs); }

    static const std::vector<Entry>& all() { return list(); }

  private:
    static std::vector<Entry>& list();

    Row row_;
    std::string name_;
    Make make_;
};

/// Makes the compiler believe that somebody else has looked at, and may have changed, all that is in memory: what a
/// round has computed once must be computed again in the next.
inline void forget() {
    asm volatile("" : : : "memory");
}

/// What the answers add up to, so that none of them can be left out.
inline volatile double sink = 0.0;

/// A contestant that is asked through ask(i), a number that need not mean anything, and compared through check(i).
template <class Ask, class Check>
Contestant repeated(Ask ask, Check check) {
    // Shared: both functions use it, and what peers keep cannot always be copied.
    const auto asked = std::make_shared<Ask>(std::move(ask));
    return {[asked, check](std::size_t i) { return static_cast<double>(check(*asked, i)); },
            [asked](std::size_t first, std::size_t count) {
                Ask& query = *asked;
                double sum = 0.0;
                const auto start = Clock::now();
                for (std::size_t i = first; i < first + count; ++i) {
                    sum += static_cast<double>(query(i));
                    forget();
                }
                const Seconds taken = Clock::now() - start;
                sink = sum;
                return taken;
            },
            true};
}

/// The same where ask(i) is what is compared.
template <class Ask>
Contestant repeated(Ask ask) {
    return repeated(std::move(ask), [](Ask& query, std::size_t i) { return query(i); });
}

/// A contestant of a cold row: reset(k) makes the shape number k of a small herd as good as new, ask(k, i) asks it
/// question i. Only asking is timed, a herd at a time, so that looking at the clock costs next to nothing. Peers that
/// keep nothing go the same way.
template <class Reset, class Ask, class Check>
Contestant cold(const Inputs& inputs, Reset reset, Ask ask, Check check) {
    struct Shared {
        Reset reset;
        Ask ask;
    };
    const auto shared = std::make_shared<Shared>(Shared{std::move(reset), std::move(ask)});
    const std::size_t herd = inputs.herd();
    return {[shared, check](std::size_t i) {
                shared->reset(std::size_t{0});
                return static_cast<double>(check(shared->ask, i));
            },
            [shared, herd](std::size_t first, std::size_t count) {
                Ask& query = shared->ask;
                double sum = 0.0;
                Seconds taken(0.0);
                for (std::size_t done = 0; done < count; done += herd) {
                    const std::size_t now = std::min(herd, count - done);
                    for (std::size_t k = 0; k < now; ++k)
                        shared->reset(k);
                    const auto start = Clock::now();
                    for (std::size_t k = 0; k < now; ++k) {
                        sum += static_cast<double>(query(k, first + done + k));
                        forget();
                    }
                    taken += Clock::now() - start;
                }
                sink = sum;
                return taken;
            },
            false};
}

template <class Reset, class Ask>
Contestant cold(const Inputs& inputs, Reset reset, Ask ask) {
    return cold(inputs, std::move(reset), std::move(ask), [](Ask& query, std::size_t i) { return query(0, i); });
}

/// A contestant that keeps nothing from one question to the next; compared through check(i).
template <class Ask, class Check>
Contestant keepsNothing(const Inputs& inputs, Ask ask, Check check) {
    return cold(
        inputs, [](std::size_t) {}, [ask = std::move(ask)](std::size_t, std::size_t i) mutable { return ask(i); },
        [check = std::move(check)](auto&, std::size_t i) { return check(i); });
}

template <class Ask>
Contestant keepsNothing(const Inputs& inputs, Ask ask) {
    return cold(
        inputs, [](std::size_t) {}, [ask = std::move(ask)](std::size_t, std::size_t i) mutable { return ask(i); });
}

/// For questions about the nearest place: find(i) finds it, and the distance is compared, since places may tie.
template <class Find>
Contestant repeatedPlace(const std::vector<Point>& questions, Find find) {
    const auto finder = std::make_shared<Find>(std::move(find));
    return repeated(
        [finder](std::size_t i) {
            const Point place = (*finder)(i);
            return place.x() + place.y();
        },
        [finder, &questions](auto&, std::size_t i) { return (*finder)(i).distance(pick(questions, i)); });
}

}  // namespace peers
