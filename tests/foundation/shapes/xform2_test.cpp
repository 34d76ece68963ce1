#include "foundation/shapes/xform2.h"

#include <memory>

#include "foundation/object/exception.h"
#include "tests/foundation/support.h"

namespace {

using Vector = gmVector<2>;
using Handle = gmPtrHandle<gm2XformBase>;

const gmXform<2> skew(gmMatrix<2>(1.0, 2.0, 3.0, 4.0), Vector(5.0, 6.0));

/// A transform that is no affine map.
class Bend : public gm2XformBase {
  public:
    Handle clone() const override { return Handle(new Bend); }
    Handle composeBase(const gm2XformBase&) const override { throw gmMathError::Singular("not linear"); }
    Handle inverseBase() const override { throw gmMathError::Singular("not linear"); }
    bool isLinear() const override { return false; }
    gmXform<2> linearXform() const override { throw gmMathError::Singular("not linear"); }
    Vector mapPoint(const Vector& point) const override { return {point.x() * point.x(), point.y()}; }

  protected:
    void serialize_(gmArchive&, unsigned char) override {}
};

void expectNear(const Vector& actual, const Vector& expected, double tolerance = 1e-14) {
    EXPECT_NEAR(actual.x(), expected.x(), tolerance);
    EXPECT_NEAR(actual.y(), expected.y(), tolerance);
}

TEST(XformLinear, IsTheIdentityByDefault) {
    const gm2XformLinear xform;
    EXPECT_TRUE(xform.isLinear());
    EXPECT_EQ(xform.linearXform(), gmXform<2>::I);
    EXPECT_EQ(xform.mapPoint({3.0, 4.0}), Vector(3.0, 4.0));
}

TEST(XformLinear, MapsByItsTransform) {
    const gm2XformLinear xform(skew);
    EXPECT_EQ(xform.mapPoint({1.0, 1.0}), skew * Vector(1.0, 1.0));
    EXPECT_EQ(xform.linearXform(), skew);
}

TEST(XformLinear, ClonesToANewObject) {
    const gm2XformLinear xform(skew);
    const Handle clone = xform.clone();
    EXPECT_NE(clone.get(), static_cast<const gm2XformBase*>(&xform));
    EXPECT_EQ(clone->linearXform(), skew);
    EXPECT_EQ(clone->referenceCount(), 1);
    EXPECT_NE(dynamic_cast<gm2XformLinear*>(clone.get()), nullptr);
}

TEST(XformLinear, ComposesWithTheInnerOneFirst) {
    const gm2XformLinear outer(skew);
    const gm2XformLinear inner(gmXform<2>(gmMatrix<2>(0.0, -1.0, 1.0, 0.0), Vector(10.0, 0.0)));
    const Handle both = outer.composeBase(inner);
    const Vector v(2.0, 3.0);
    EXPECT_EQ(both->mapPoint(v), outer.mapPoint(inner.mapPoint(v)));
}

TEST(XformLinear, InverseUndoes) {
    const gm2XformLinear xform(skew);
    expectNear(xform.inverseBase()->mapPoint(xform.mapPoint({7.0, -8.0})), {7.0, -8.0}, 1e-12);
}

TEST(XformRigid, WithoutAFiniteInverseThrows) {
    EXPECT_THROW(gm2Rigid(gmDegree(0.0), {support::infinity, 0.0}).inverseBase(), gmMathError::Singular);
    EXPECT_THROW(gm2Rigid(gmDegree(support::nan), {1.0, 0.0}).inverseBase(), gmMathError::Singular);
}

TEST(XformLinear, WithoutInverseThrows) {
    EXPECT_THROW(gm2XformLinear(gmXform<2>(gmMatrix<2>(), Vector())).inverseBase(), gmMathError::Singular);
}

TEST(XformLinear, DoesNotComposeWithWhatIsNotLinear) {
    EXPECT_THROW(gm2XformLinear().composeBase(Bend()), gmMathError::Singular);
    EXPECT_THROW(gm2Rigid().composeBase(Bend()), gmMathError::Singular);
}

TEST(XformLinear, HasItsOwnNewAndDelete) {
    void* const memory = gm2XformLinear::operator new(sizeof(gm2XformLinear));
    ASSERT_NE(memory, nullptr);
    gm2XformLinear::operator delete(memory);
}

TEST(XformLinear, CopiesAndAssigns) {
    const gm2XformLinear original(skew);
    const gm2XformLinear copy(original);
    gm2XformLinear assigned;
    assigned = original;
    EXPECT_EQ(copy.linearXform(), skew);
    EXPECT_EQ(assigned.linearXform(), skew);
    EXPECT_EQ(copy.referenceCount(), 0);
}

TEST(XformLinear, IsMadeAsTheIdentity) {
    const std::unique_ptr<gmPersistent> made(gm2XformLinear::make());
    const auto* xform = dynamic_cast<gm2XformLinear*>(made.get());
    ASSERT_NE(xform, nullptr);
    EXPECT_EQ(xform->linearXform(), gmXform<2>::I);
}

TEST(Rigid, IsTheIdentityByDefault) {
    const gm2Rigid xform;
    EXPECT_TRUE(xform.isLinear());
    EXPECT_EQ(xform.linearXform(), gmXform<2>::I);
}

TEST(Rigid, TurnsThenMoves) {
    const gm2Rigid xform(gmDegree(90.0), {10.0, 20.0});
    expectNear(xform.mapPoint({1.0, 0.0}), {10.0, 21.0});
    expectNear(xform.mapPoint({0.0, 1.0}), {9.0, 20.0});
    EXPECT_DOUBLE_EQ(xform.angle().value(), support::pi / 2.0);
    EXPECT_EQ(xform.translation(), Vector(10.0, 20.0));
}

TEST(Rigid, KeepsDistances) {
    support::Random random(51);
    for (int i = 0; i < 1000; ++i) {
        const gm2Rigid xform(gmDegree(random.uniform(-720.0, 720.0)), random.vector(10.0));
        const Vector a = random.vector(5.0);
        const Vector b = random.vector(5.0);
        ASSERT_NEAR(xform.mapPoint(a).distance(xform.mapPoint(b)), a.distance(b), 1e-12);
    }
}

TEST(Rigid, ClonesAndInvertsToARigidOne) {
    const gm2Rigid xform(gmDegree(30.0), {1.0, 2.0});
    const Handle clone = xform.clone();
    ASSERT_NE(dynamic_cast<gm2Rigid*>(clone.get()), nullptr);
    EXPECT_EQ(clone->linearXform(), xform.linearXform());
    const Handle inverse = xform.inverseBase();
    ASSERT_NE(dynamic_cast<gm2Rigid*>(inverse.get()), nullptr);
    expectNear(inverse->mapPoint(xform.mapPoint({7.0, -8.0})), {7.0, -8.0}, 1e-12);
    expectNear(xform.mapPoint(inverse->mapPoint({7.0, -8.0})), {7.0, -8.0}, 1e-12);
}

TEST(Rigid, ComposesToALinearOne) {
    const gm2Rigid outer(gmDegree(30.0), {1.0, 2.0});
    const gm2XformLinear inner(skew);
    const Handle both = outer.composeBase(inner);
    EXPECT_NE(dynamic_cast<gm2XformLinear*>(both.get()), nullptr);
    expectNear(both->mapPoint({3.0, 4.0}), outer.mapPoint(inner.mapPoint({3.0, 4.0})), 1e-12);
}

TEST(Rigid, IsMadeAsTheIdentity) {
    const std::unique_ptr<gmPersistent> made(gm2Rigid::make());
    ASSERT_NE(dynamic_cast<gm2Rigid*>(made.get()), nullptr);
}

}  // namespace
