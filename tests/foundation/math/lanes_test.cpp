// Lanes beside plain doubles: what comes out of each lane has the bits that the same step gives by itself.
#include "foundation/math/lanes.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "tests/foundation/support.h"

namespace {

using detail::both;
using detail::Eight;
using detail::EightBools;
using detail::Two;
using detail::TwoBools;
using support::infinity;
using support::nan;

constexpr double denormal = 5e-324;
constexpr double most = std::numeric_limits<double>::max();

/// With what every operation is tried, each with each.
const std::vector<double>& values() {
    static const std::vector<double> all = {0.0,       -0.0,     1.0,   -1.0,     0.1,     -3.0,
                                            1e-8,      7e22,     1e200, -1e200,   most,    -infinity,
                                            -most,     infinity, nan,   denormal, -4e-310, 2.2250738585072014e-308,
                                            1.0 / 3.0, 2.0};
    return all;
}

/// To the bit, and the sign of zero with them. One NaN is as good as another: which one comes out is the processor's.
bool sameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

::testing::AssertionResult areSame(double actual, double expected) {
    if (sameBits(actual, expected))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actual << " instead of " << expected;
}

Two two(double a, double b) {
    const double lanes[] = {a, b};
    return detail::loadTwo(lanes);
}

double lane(const Two& a, int i) {
    double lanes[2];
    storeTwo(a, lanes);
    return lanes[i];
}

double lane(const Eight& a, int i) {
    double lanes[8];
    a.store(lanes);
    return lanes[i];
}

/// Eight neighbours in the list of values, from `first` on, round and round.
struct Lanes {
    explicit Lanes(std::size_t first) {
        for (std::size_t i = 0; i < 8; ++i)
            value[i] = values()[(first + i) % values().size()];
    }
    Eight eight() const { return Eight::load(value); }

    double value[8];
};

/// Calls visit(a, b) so that every value comes upon every other, in every lane.
template <class Visit>
void forEachPairOfLanes(Visit visit) {
    for (std::size_t a = 0; a < values().size(); ++a)
        for (std::size_t b = 0; b < values().size(); ++b)
            visit(Lanes(a), Lanes(b));
}

/// Every pair of values through both widths of lanes.
template <class Wide, class Plain>
void expectLikePlain(Wide wide, Plain plain) {
    for (const double a : values())
        for (const double b : values()) {
            const Two result = wide(two(a, b), two(b, a));
            EXPECT_TRUE(areSame(lane(result, 0), plain(a, b))) << "of " << a << " and " << b;
            EXPECT_TRUE(areSame(lane(result, 1), plain(b, a))) << "of " << b << " and " << a << ", second";
        }
    forEachPairOfLanes([&](const Lanes& a, const Lanes& b) {
        const Eight result = wide(a.eight(), b.eight());
        for (int i = 0; i < 8; ++i)
            EXPECT_TRUE(areSame(lane(result, i), plain(a.value[i], b.value[i])))
                << "of " << a.value[i] << " and " << b.value[i] << " in lane " << i;
    });
}

/// The same for what holds or does not.
template <class Holds, class Plain>
void expectHoldsLikePlain(Holds holds, Plain plain) {
    forEachPairOfLanes([&](const Lanes& a, const Lanes& b) {
        unsigned expected = 0;
        for (int i = 0; i < 8; ++i)
            expected |= (plain(a.value[i], b.value[i]) ? 1U : 0U) << i;
        EXPECT_EQ(holds(a.eight(), b.eight()).bits(), expected) << "from " << a.value[0] << " and " << b.value[0];
    });
}

/// All ways in which something holds in two lanes.
std::vector<std::pair<TwoBools, unsigned>> allBools() {
    const Two zero = both(0.0);
    return {{zero < two(0.0, 0.0), 0U}, {zero < two(1.0, 0.0), 1U}, {zero < two(0.0, 1.0), 2U}, {zero < both(1.0), 3U}};
}

TEST(Lanes, ComeBackAsTheyWereLoaded) {
    for (const double a : values())
        for (const double b : values()) {
            EXPECT_TRUE(areSame(lane(two(a, b), 0), a));
            EXPECT_TRUE(areSame(lane(two(a, b), 1), b));
            EXPECT_TRUE(areSame(first(two(a, b)), a));
            EXPECT_TRUE(areSame(second(two(a, b)), b));
        }
    for (std::size_t start = 0; start < values().size(); ++start)
        for (int i = 0; i < 8; ++i)
            EXPECT_TRUE(areSame(lane(Lanes(start).eight(), i), Lanes(start).value[i]));
}

TEST(Lanes, AreLoadedFromAndStoredToAnyAddress) {
    // A register may be moved faster where it is aligned; a double is promised no more than its own size.
    alignas(64) double memory[10] = {0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0};
    alignas(64) double out[10] = {};
    Eight::load(memory + 1).store(out + 1);
    for (int i = 1; i < 9; ++i)
        EXPECT_EQ(out[i], i);
    EXPECT_EQ(out[0], 0.0);
    EXPECT_EQ(out[9], 0.0) << "eight and no more are written";
}

TEST(Lanes, OfOneNumberAreThatNumberEach) {
    for (const double value : values()) {
        for (int i = 0; i < 2; ++i)
            EXPECT_TRUE(areSame(lane(both(value), i), value));
        for (int i = 0; i < 8; ++i)
            EXPECT_TRUE(areSame(lane(Eight(value), i), value));
    }
}

TEST(Lanes, AreComputedWithAsDoublesAre) {
    expectLikePlain([](const auto& a, const auto& b) { return a + b; }, [](double a, double b) { return a + b; });
    expectLikePlain([](const auto& a, const auto& b) { return a - b; }, [](double a, double b) { return a - b; });
    expectLikePlain([](const auto& a, const auto& b) { return a * b; }, [](double a, double b) { return a * b; });
    expectLikePlain([](const auto& a, const auto& b) { return a / b; }, [](double a, double b) { return a / b; });
    expectLikePlain([](const auto& a, const auto&) { return squareRoot(a); },
                    [](double a, double) { return std::sqrt(a); });
}

TEST(Lanes, TakeANumberForAllLanesInAFormula) {
    forEachPairOfLanes([](const Lanes& a, const Lanes& b) {
        const Eight result = -1.0 * a.eight() / 3.0 - b.value[0];
        for (int i = 0; i < 8; ++i)
            EXPECT_TRUE(areSame(lane(result, i), -1.0 * a.value[i] / 3.0 - b.value[0]));
    });
}

TEST(Lanes, OfTwoTheLargerOrSmallerIsTheSecondUnlessTheFirstIs) {
    // So with a NaN on either side, and with zeros of both signs.
    expectLikePlain([](const auto& a, const auto& b) { return larger(a, b); },
                    [](double a, double b) { return a > b ? a : b; });
    expectLikePlain([](const auto& a, const auto& b) { return smaller(a, b); },
                    [](double a, double b) { return a < b ? a : b; });
    EXPECT_EQ(lane(larger(Eight(nan), Eight(1.0)), 3), 1.0);
    EXPECT_TRUE(std::isnan(lane(larger(Eight(1.0), Eight(nan)), 3)));
    EXPECT_EQ(lane(smaller(Eight(nan), Eight(1.0)), 3), 1.0);
    EXPECT_TRUE(std::isnan(lane(smaller(Eight(1.0), Eight(nan)), 3)));
}

TEST(Lanes, AreComparedAsDoublesAre) {
    expectHoldsLikePlain([](const Eight& a, const Eight& b) { return a < b; },
                         [](double a, double b) { return a < b; });
    expectHoldsLikePlain([](const Eight& a, const Eight& b) { return a <= b; },
                         [](double a, double b) { return a <= b; });
    expectHoldsLikePlain([](const Eight& a, const Eight& b) { return a > b; },
                         [](double a, double b) { return a > b; });
    expectHoldsLikePlain([](const Eight& a, const Eight& b) { return a >= b; },
                         [](double a, double b) { return a >= b; });
    for (const double a : values())
        for (const double b : values()) {
            EXPECT_EQ(bits(two(a, b) < two(b, a)), (a < b ? 1U : 0U) | (b < a ? 2U : 0U));
            EXPECT_EQ(bits(two(a, b) <= two(b, a)), (a <= b ? 1U : 0U) | (b <= a ? 2U : 0U));
        }
}

TEST(Lanes, HoldWhereBothDoOrWhereEitherDoes) {
    for (const auto& [a, bitsOfA] : allBools())
        for (const auto& [b, bitsOfB] : allBools()) {
            EXPECT_EQ(bits(a & b), bitsOfA & bitsOfB);
            EXPECT_EQ(bits(a | b), bitsOfA | bitsOfB);
        }
    expectHoldsLikePlain([](const Eight& a, const Eight& b) { return (a < b) & (b <= 1.0); },
                         [](double a, double b) { return a < b && b <= 1.0; });
    expectHoldsLikePlain([](const Eight& a, const Eight& b) { return (a < b) | (b <= 1.0); },
                         [](double a, double b) { return a < b || b <= 1.0; });
}

TEST(Lanes, EachHaveABitOfTheirOwn) {
    for (unsigned i = 0; i < 8; ++i) {
        double lanes[8] = {};
        lanes[i] = 1.0;
        EXPECT_EQ((Eight::load(lanes) > 0.0).bits(), 1U << i);
    }
}

TEST(Lanes, ChosenAreUnchangedToTheBit) {
    for (const auto& [holds, which] : allBools())
        for (const double a : values())
            for (const double b : values()) {
                const Two result = choose(holds, both(a), both(b));
                EXPECT_TRUE(areSame(lane(result, 0), (which & 1U) != 0 ? a : b));
                EXPECT_TRUE(areSame(lane(result, 1), (which & 2U) != 0 ? a : b));
            }
    forEachPairOfLanes([](const Lanes& a, const Lanes& b) {
        const Eight result = choose(a.eight() < b.eight(), a.eight(), b.eight());
        for (int i = 0; i < 8; ++i)
            EXPECT_TRUE(areSame(lane(result, i), a.value[i] < b.value[i] ? a.value[i] : b.value[i]));
    });
}

TEST(Lanes, AreGatheredByTheirPlace) {
    const Two a = two(1.0, -0.0);
    const Two b = two(nan, 4.0);
    EXPECT_TRUE(areSame(lane(firsts(a, b), 0), 1.0));
    EXPECT_TRUE(areSame(lane(firsts(a, b), 1), nan));
    EXPECT_TRUE(areSame(lane(seconds(a, b), 0), -0.0));
    EXPECT_TRUE(areSame(lane(seconds(a, b), 1), 4.0));
}

TEST(Lanes, HaveTheirLargestAndSmallestWhereverItIs) {
    for (int place = 0; place < 8; ++place)
        for (const double extreme : {2.0, infinity, most}) {
            double lanes[] = {0.5, -1.0, 0.0, -0.0, denormal, 1.0, -7e5, -1e-300};
            lanes[place] = extreme;
            EXPECT_EQ(largest(Eight::load(lanes)), extreme) << place;
            lanes[place] = -extreme * 1e6;
            EXPECT_EQ(smallest(Eight::load(lanes)), -extreme * 1e6) << place;
        }
}

TEST(Lanes, OfEightPlacesAreTheirCoordinates) {
    std::vector<gmVector<2>> places(9);
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = gmVector<2>(values()[i], values()[values().size() - 1 - i]);
    for (const std::size_t start : {0U, 1U}) {
        const auto eight = detail::EightPlaces::load(&places[start]);
        for (std::size_t i = 0; i < 8; ++i) {
            EXPECT_TRUE(areSame(lane(eight.x, static_cast<int>(i)), places[start + i].x()));
            EXPECT_TRUE(areSame(lane(eight.y, static_cast<int>(i)), places[start + i].y()));
        }
    }
}

TEST(Lanes, OfRandomNumbersRoundAsDoublesDo) {
    support::Random random(31);
    for (int n = 0; n < 20000; ++n) {
        double a[8];
        double b[8];
        for (int i = 0; i < 8; ++i) {
            a[i] = std::ldexp(random.uniform(-1.0, 1.0), random.integer(-40, 40));
            b[i] = std::ldexp(random.uniform(-1.0, 1.0), random.integer(-40, 40));
        }
        const Eight result = squareRoot(Eight::load(a) * Eight::load(a) + Eight::load(b) * Eight::load(b)) /
                             (Eight::load(a) - Eight::load(b));
        for (int i = 0; i < 8; ++i)
            ASSERT_TRUE(areSame(lane(result, i), std::sqrt(a[i] * a[i] + b[i] * b[i]) / (a[i] - b[i])));
    }
}

}  // namespace
