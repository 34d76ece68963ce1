#include "foundation/image/edgelet.h"

#include "tests/foundation/support.h"

namespace {

TEST(Edgelet, IsAllZeroByDefault) {
    const gmEdgelet edgelet;
    EXPECT_EQ(edgelet.position(), gmVector<2>());
    EXPECT_EQ(edgelet.magnitude(), 0);
    EXPECT_EQ(edgelet.angle(), gmAngle8(0));
}

TEST(Edgelet, HoldsPositionMagnitudeAndAngle) {
    const gmEdgelet edgelet({1.5, -2.5}, 65535, gmAngle8(255));
    EXPECT_EQ(edgelet.position(), gmVector<2>(1.5, -2.5));
    EXPECT_EQ(edgelet.magnitude(), 65535);
    EXPECT_EQ(edgelet.angle(), gmAngle8(255));
}

TEST(Edgelet, ComparesAllThree) {
    const gmEdgelet edgelet({1.0, 2.0}, 3, gmAngle8(4));
    EXPECT_TRUE(edgelet == gmEdgelet({1.0, 2.0}, 3, gmAngle8(4)));
    EXPECT_TRUE(edgelet != gmEdgelet({1.0, 0.0}, 3, gmAngle8(4)));
    EXPECT_TRUE(edgelet != gmEdgelet({1.0, 2.0}, 0, gmAngle8(4)));
    EXPECT_TRUE(edgelet != gmEdgelet({1.0, 2.0}, 3, gmAngle8(0)));
}

TEST(Edgelet, ComesBackFromAnArchive) {
    gmEdgelet edgelet({1.5, -2.5}, 65535, gmAngle8(200));
    gmEdgelet loaded;
    support::transfer(edgelet, loaded);
    EXPECT_TRUE(loaded == edgelet);
}

TEST(Edgelet, StaysAsItWasWhenTheArchiveEndsTooEarly) {
    gmEdgelet edgelet({1.5, -2.5}, 7, gmAngle8(200));
    const std::string bytes = support::header + support::contentOf(edgelet);
    for (std::size_t size = support::header.size(); size < bytes.size(); ++size) {
        gmEdgelet loaded({9.0, 9.0}, 9, gmAngle8(9));
        EXPECT_THROW(support::loadFrom(bytes.substr(0, size), [&](gmArchive& archive) { archive || loaded; }),
                     gmArchive::Truncated);
        EXPECT_TRUE(loaded == gmEdgelet({9.0, 9.0}, 9, gmAngle8(9)));
    }
}

}  // namespace
