// Region sets that share nothing, on two threads.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

#include "tests/support/setqueries.h"

using support::RememberedSetQuery;
using support::TestRegionSet;
using support::text;

namespace {

TEST(RegionSetThreads, AnswerAlikeWithSetsOfTheirOwn) {
    std::string answers[2];
    const auto ask = [](std::string& answer) {
        for (int round = 0; round < 20; round++)
            for (const RememberedSetQuery& query : support::rememberedSetQueries()) {
                TestRegionSet set(query.first);
                answer += query.ask(set) + query.ask(TestRegionSet(set));
                for (int x = 0; x < 9; x++)
                    set.encloseRect(gmXform<2>(gmMatrix<2>(1, 0, 0, 1), gmVector<2>(x, 0)));
                answer += text(set.inside({1, 1.5}, true)) + text(set.distToPoint({9, 9}, true, true, true));
                set.regions(query.second, gmContourDefs::eOuterHull);
            }
    };
    std::thread one(ask, std::ref(answers[0]));
    std::thread two(ask, std::ref(answers[1]));
    one.join();
    two.join();
    EXPECT_EQ(answers[0], answers[1]);
}

}  // namespace
