#include "foundation/object/instantiator.h"

#include <memory>
#include <optional>

#include "foundation/object/exception.h"
#include "foundation/object/persistent.h"
#include "foundation/shapes/xform2.h"
#include "tests/foundation/support.h"

namespace instantiatortest {

class Registered : public virtual gmPersistent {
  public:
    class Nested : public virtual gmPersistent {};

    static gmPersistent* make() { return new Registered; }
    static gmPersistent* makeNested() { return new Nested; }
};

}  // namespace instantiatortest

namespace {

using instantiatortest::Registered;

const std::string name = "instantiatortest::Registered";

TEST(Instantiator, NamesClassesAsTheSourceDoes) {
    EXPECT_EQ(gm_Instantiator::className(typeid(gm2XformLinear)), "gm2XformLinear");
    EXPECT_EQ(gm_Instantiator::className(typeid(gmMathError::Singular)), "gmMathError::Singular");
    EXPECT_EQ(gm_Instantiator::className(typeid(Registered::Nested)), name + "::Nested");
}

TEST(Instantiator, KeepsTheTextOfANameForEver) {
    const std::string& first = gm_Instantiator::className(typeid(Registered));
    EXPECT_EQ(&first, &gm_Instantiator::className(typeid(Registered)));
}

TEST(Instantiator, RegistersAsLongAsItLives) {
    EXPECT_FALSE(gm_Instantiator::isRegistered(name));
    {
        const gm_Instantiator exemplar(typeid(Registered), Registered::make);
        EXPECT_TRUE(gm_Instantiator::isRegistered(name));
        const std::unique_ptr<gmPersistent> made(gm_Instantiator::make(name));
        EXPECT_NE(dynamic_cast<Registered*>(made.get()), nullptr);
    }
    EXPECT_FALSE(gm_Instantiator::isRegistered(name));
    EXPECT_EQ(gm_Instantiator::make(name), nullptr);
}

TEST(Instantiator, MakesANewObjectEachTime) {
    const gm_Instantiator exemplar(typeid(Registered), Registered::make);
    const std::unique_ptr<gmPersistent> first(gm_Instantiator::make(name));
    const std::unique_ptr<gmPersistent> second(gm_Instantiator::make(name));
    EXPECT_NE(first.get(), second.get());
}

TEST(Instantiator, MakesNothingOfAnUnknownName) {
    for (const char* unknown : {"", "gm2xformlinear", "gm2XformLinear ", "14gm2XformLinear", "int"}) {
        EXPECT_FALSE(gm_Instantiator::isRegistered(unknown));
        EXPECT_EQ(gm_Instantiator::make(unknown), nullptr);
    }
}

TEST(Instantiator, KeepsTheClassWhileAnySecondRegistrationLives) {
    std::optional<gm_Instantiator> first(std::in_place, typeid(Registered), Registered::make);
    std::optional<gm_Instantiator> second(std::in_place, typeid(Registered), Registered::make);
    second.reset();
    EXPECT_TRUE(gm_Instantiator::isRegistered(name)) << "the first one still lives";
    second.emplace(typeid(Registered), Registered::make);
    first.reset();
    EXPECT_TRUE(gm_Instantiator::isRegistered(name)) << "the second one still lives";
    second.reset();
    EXPECT_FALSE(gm_Instantiator::isRegistered(name));
}

TEST(Instantiator, FirstRegistrationMakesTheObjects) {
    const gm_Instantiator first(typeid(Registered), Registered::make);
    const gm_Instantiator second(typeid(Registered), Registered::makeNested);
    const std::unique_ptr<gmPersistent> made(gm_Instantiator::make(name));
    EXPECT_NE(dynamic_cast<Registered*>(made.get()), nullptr);
}

TEST(Instantiator, KnowsTheTransformsOfTheFoundation) {
    for (const char* known : {"gm2XformLinear", "gm2Rigid"}) {
        const std::unique_ptr<gmPersistent> made(gm_Instantiator::make(known));
        ASSERT_NE(made, nullptr);
        const gmPersistent& object = *made;
        EXPECT_EQ(gm_Instantiator::className(typeid(object)), known);
    }
}

}  // namespace
