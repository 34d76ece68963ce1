#include "foundation/math/random.h"

#include <cstdint>
#include <set>

#include "foundation/math/floor.h"
#include "tests/foundation/support.h"

namespace {

constexpr double largest = std::numeric_limits<double>::max();

/// The Mersenne Twister written out from its recurrence, so that the generator is not compared with itself.
class Twister {
  public:
    explicit Twister(std::uint32_t seed) {
        state_[0] = seed;
        for (std::uint32_t i = 1; i < 624; ++i)
            state_[i] = 1812433253U * (state_[i - 1] ^ (state_[i - 1] >> 30)) + i;
    }
    std::uint32_t next() {
        if (index_ == 624) {
            for (std::size_t i = 0; i < 624; ++i) {
                const std::uint32_t y = (state_[i] & 0x80000000U) | (state_[(i + 1) % 624] & 0x7fffffffU);
                state_[i] = state_[(i + 397) % 624] ^ (y >> 1) ^ ((y & 1U) != 0 ? 0x9908b0dfU : 0U);
            }
            index_ = 0;
        }
        std::uint32_t y = state_[index_++];
        y ^= y >> 11;
        y ^= (y << 7) & 0x9d2c5680U;
        y ^= (y << 15) & 0xefc60000U;
        return y ^ (y >> 18);
    }
    double unit() {
        const std::uint64_t high = next() >> 5;
        const std::uint64_t low = next() >> 6;
        return std::ldexp(static_cast<double>((high << 26) | low), -53);
    }

  private:
    std::uint32_t state_[624];
    std::size_t index_ = 624;
};

TEST(RandomUniform, FollowsTheTwisterOfItsSeed) {
    for (const long seed : {0L, 1L, 5489L, -1L, 123456789L}) {
        gmRandomUniform random(seed);
        Twister twister(static_cast<std::uint32_t>(seed));
        for (int i = 0; i < 2000; ++i)
            ASSERT_EQ(random.next(0.0, 1.0), twister.unit()) << "seed " << seed << ", number " << i;
    }
}

TEST(RandomUniform, SequenceOfSeedOneIsFixed) {
    gmRandomUniform random(1);
    std::vector<long> drawn;
    for (int i = 0; i < 16; ++i)
        drawn.push_back(gfIFloor(random.next(0.0, 4.0)));
    EXPECT_EQ(drawn, (std::vector<long>{1, 2, 0, 1, 0, 0, 0, 1, 1, 2, 1, 2, 0, 3, 0, 2}));
}

TEST(RandomUniform, LowThirtyTwoBitsOfTheSeedDecide) {
    gmRandomUniform plain(7);
    gmRandomUniform far(7 + (1L << 32));
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(plain.next(0.0, 1.0), far.next(0.0, 1.0));
}

TEST(RandomUniform, ACopyContinuesTheSequence) {
    gmRandomUniform original(3);
    static_cast<void>(original.next(0.0, 1.0));
    gmRandomUniform copy = original;
    EXPECT_EQ(original.next(0.0, 1.0), copy.next(0.0, 1.0));
}

TEST(RandomUniform, StaysInTheHalfOpenInterval) {
    gmRandomUniform random(42);
    double least = 1e9;
    double most = -1e9;
    for (int i = 0; i < 100000; ++i) {
        const double value = random.next(-3.0, 5.0);
        ASSERT_GE(value, -3.0);
        ASSERT_LT(value, 5.0);
        least = std::min(least, value);
        most = std::max(most, value);
    }
    EXPECT_LT(least, -2.99) << "reaches the lower end";
    EXPECT_GT(most, 4.99) << "reaches the upper end";
}

TEST(RandomUniform, IsUniform) {
    gmRandomUniform random(9);
    int hits[10] = {};
    for (int i = 0; i < 100000; ++i)
        ++hits[gfIFloor(random.next(0.0, 10.0))];
    for (const int count : hits)
        EXPECT_NEAR(count, 10000, 500);
}

TEST(RandomUniform, ProductThatRoundsUpStaysBelowTheEnd) {
    // Between neighbouring doubles every second number would round up to the end.
    for (const double lo : {1.0, 1e15, -1.0, 5e-324}) {
        const double hi = std::nextafter(lo, support::infinity);
        gmRandomUniform random(1);
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ(random.next(lo, hi), lo);
    }
    gmRandomUniform random(2);
    const double lo = 1e16;
    for (int i = 0; i < 1000; ++i) {
        const double value = random.next(lo, lo + 4.0);
        ASSERT_GE(value, lo);
        ASSERT_LT(value, lo + 4.0);
    }
}

TEST(RandomUniform, IndexStaysBelowTheCount) {
    for (const double n : {1.0, 3.0, 4.0, 4294967295.0, 9007199254740992.0}) {
        gmRandomUniform random(1);
        for (int i = 0; i < 10000; ++i) {
            const long index = gfIFloor(random.next(0.0, n));
            ASSERT_GE(index, 0);
            ASSERT_LT(static_cast<double>(index), n);
        }
    }
}

TEST(RandomUniform, HugeRangesDoNotOverflow) {
    gmRandomUniform random(4);
    int negative = 0;
    for (int i = 0; i < 10000; ++i) {
        const double value = random.next(-largest, largest);
        ASSERT_TRUE(std::isfinite(value));
        ASSERT_GE(value, -largest);
        ASSERT_LT(value, largest);
        negative += value < 0.0;
    }
    EXPECT_NEAR(negative, 5000, 250);
}

TEST(RandomUniform, EmptyIntervalGivesItsLowerEnd) {
    gmRandomUniform random(1);
    EXPECT_EQ(random.next(2.0, 2.0), 2.0);
    EXPECT_EQ(random.next(2.0, 1.0), 2.0);
    EXPECT_EQ(random.next(2.0, support::nan), 2.0);
    EXPECT_TRUE(std::isnan(random.next(support::nan, 1.0)));
}

TEST(RandomUniform, EmptyIntervalsAdvanceTheSequenceAllTheSame) {
    gmRandomUniform random(1);
    Twister twister(1);
    static_cast<void>(random.next(2.0, 2.0));
    static_cast<void>(twister.unit());
    EXPECT_EQ(random.next(0.0, 1.0), twister.unit());
}

TEST(RandomUniform, InfiniteEndsGiveNumbersWithinThem) {
    gmRandomUniform random(1);
    for (int i = 0; i < 100; ++i) {
        EXPECT_LT(random.next(0.0, support::infinity), support::infinity);
        EXPECT_GE(random.next(0.0, support::infinity), 0.0);
        EXPECT_LT(random.next(-support::infinity, 0.0), 0.0);
        EXPECT_FALSE(std::isnan(random.next(-support::infinity, support::infinity)));
    }
}

}  // namespace
