// Contours that are asked, changed, copied, moved and asked again: whatever was kept for the vertices that were must
// not answer for those that are.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/contourquestions.h"
#include "tests/support/regionquestions.h"

using support::ContourQuestions;
using support::HardFamily;
using support::HardShape;
using support::Outline;
using support::Random;
using support::TestContour;

namespace {

HardShape anyShape(Random& random) {
    const HardFamily any = random.oneOf(support::hardFamilies());
    return support::hardShape(any, random, random.oneOf<int>({2, 9, 31, 32, 33, 40, 64, 65, 100, 129, 300}));
}

/// A few questions of every kind.
ContourQuestions questionsAbout(const HardShape& shape, Random& random) {
    ContourQuestions all;
    support::addProximity(all, shape, random);
    support::addCrossings(all, shape, random);
    support::addExtent(all, shape, random);
    support::addOnceAsked(all, shape);
    support::addSelfCrossing(all, shape);
    support::shuffle(all, random);
    all.resize(all.size() / 6);
    return all;
}

void expectAll(const TestContour& contour, const ContourQuestions& questions, const std::string& when) {
    for (const auto& question : questions)
        support::expectAnswer(contour, question, when.c_str());
    support::Pairs::compared() += static_cast<long>(questions.size());
}

/// A contour that has been asked about the shape, now and then often enough to keep something.
TestContour askedContour(const HardShape& shape, Random& random) {
    TestContour contour(shape.outline);
    const HardShape& about = shape;
    support::HardProbes probes(about, random);
    for (int i = random.integer(0, 4); i > 0; i--) {
        const gmVector<2> p = probes.vertex();
        contour.closestPoint(p, false);
        contour.intersections(gmLineSeg(p, probes.anywhere(0.5)), true);
        contour.closestVertexIndex(p);
        contour.encloseCircle(gmContourDefs::eMaxVertexPair);
    }
    return contour;
}

/// Makes the contour that of `next`, in one of the ways there are; `next` is what it is then.
std::string change(TestContour& contour, HardShape& now, Random& random) {
    const HardShape next = anyShape(random);
    switch (random.integer(0, 10)) {
        case 0:
            now.outline.points = next.outline.points;
            contour.points(now.outline.points);
            return "after other vertices";
        case 1:
            now.outline.points = next.outline.points;
            contour.setPoints(now.outline.points);
            return "after other vertices without a word";
        case 2:
            now.outline.closed = !now.outline.closed;
            contour.isClosed(now.outline.closed);
            return "after closing or opening";
        case 3:
            now = next;
            contour = askedContour(next, random);
            return "after an assignment";
        case 4: {
            const TestContour other = askedContour(next, random);
            now = next;
            static_cast<gmContour&>(contour) = other;
            EXPECT_TRUE(support::same(other.points(), now.outline.points));
            return "after an assignment of the base";
        }
        case 5: {
            TestContour other = askedContour(next, random);
            std::swap(contour, other);
            now = next;
            return "after a swap";
        }
        case 6: {
            const gmXform<2> xform(gmMatrix<2>(0, -2, 2, 0), {3, 4});
            for (gmVector<2>& v : now.outline.points)
                v = xform * v;
            now.center = xform * now.center;
            contour.map(xform, contour);
            return "after mapping onto itself";
        }
        case 7: {
            const gmXform<2> xform(gmMatrix<2>(-1, 0, 0, 1), {});
            now = next;
            for (gmVector<2>& v : now.outline.points)
                v = xform * v;
            now.center = xform * now.center;
            askedContour(next, random).map(xform, contour);
            return "after a map";
        }
        case 8: {
            // Moved one at a time: the same number of vertices, most of them where they were.
            const auto i = static_cast<std::size_t>(random.integer(0, static_cast<int>(now.outline.points.size()) - 1));
            now.outline.points[i] = random.point(-120, 120);
            contour.points(now.outline.points);
            return "after one vertex has moved";
        }
        case 9: {
            const auto n = now.outline.points.size();
            now.outline.points[n / 2] = now.center;
            contour.moveSecretly(n / 2, now.center);
            contour.cleanCacheInfo();
            return "after a word that something has changed";
        }
        default: {
            TestContour taken(std::move(contour));
            contour = TestContour();
            contour = std::move(taken);
            return "after moving away and back";
        }
    }
}

TEST(IndexedChanges, LeaveNothingOfTheContourBefore) {
    for (std::uint32_t seed = 0; seed < 120U * static_cast<std::uint32_t>(support::Pairs::rounds()); seed++) {
        Random random(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        HardShape shape = anyShape(random);
        TestContour contour(shape.outline);
        for (int step = 0; step < 6; step++) {
            const ContourQuestions questions = questionsAbout(shape, random);
            SCOPED_TRACE("step " + std::to_string(step));
            expectAll(contour, questions, "at once");
            expectAll(contour, questions, "again");
            const TestContour copy(contour);
            const std::string what = change(contour, shape, random);
            expectAll(copy, questions, "of the copy, the other being changed");
            expectAll(contour, questionsAbout(shape, random), what);
            ASSERT_FALSE(HasFailure());
        }
    }
}

/// A closing edge that one sees and the other does not.
TEST(IndexedChanges, FromOpenContoursToRegionsAndBackFollowTheClosingEdge) {
    for (std::uint32_t seed = 0; seed < 40U * static_cast<std::uint32_t>(support::Pairs::rounds()); seed++) {
        Random random(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        HardShape open = anyShape(random);
        open.outline.closed = false;
        HardShape closed = open;
        closed.outline.closed = true;
        const TestContour asked = askedContour(open, random);
        const ContourQuestions ofOpen = questionsAbout(open, random);
        const ContourQuestions ofClosed = questionsAbout(closed, random);

        support::RegionQuestions ofRegion;
        support::HardProbes probes(closed, random);
        for (const gmVector<2>& p : probes.places())
            support::addRays(ofRegion, {closed.outline.points, {}}, p);
        gmRegion region(asked);
        support::expectAnswers([&] { return gmRegion(asked); }, ofRegion, random);
        for (int i = 0; i < 3; i++)
            region.closestPoint(probes.vertex(), false);
        expectAll(TestContour(static_cast<const gmContour&>(region)), ofOpen, "an open copy of a region");
        gmRegion other(support::points("0 0, 1 0, 0 1"));
        static_cast<gmContour&>(other) = asked;
        for (const auto& question : ofRegion)
            support::expectAnswer(other, question, "after an assignment of an open contour");
        TestContour target;
        target = TestContour(region.points(), true);
        expectAll(target, ofClosed, "closed");
        static_cast<gmContour&>(target) = region;
        expectAll(target, ofOpen, "after an assignment of a region");
        ASSERT_FALSE(HasFailure());
    }
}

TEST(IndexedChanges, OfRegionsLeaveNothingOfTheOutlineBefore) {
    for (std::uint32_t seed = 0; seed < 60U * static_cast<std::uint32_t>(support::Pairs::rounds()); seed++) {
        Random random(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        gmRegion region;
        for (int step = 0; step < 5; step++) {
            const HardShape shape = anyShape(random);
            if (random.chance(0.5))
                region.points(shape.outline.points);
            else if (random.chance(0.5))
                region = gmRegion(shape.outline.points);
            else
                static_cast<gmContour&>(region) = askedContour(shape, random);
            support::RegionQuestions questions;
            support::HardProbes probes(shape, random);
            for (const gmVector<2>& p : probes.places())
                support::addRays(questions, {shape.outline.points, {}}, p);
            for (const char* when : {"at once", "again"})
                for (const auto& question : questions)
                    support::expectAnswer(region, question, when);
            support::Pairs::compared() += static_cast<long>(questions.size());
            ASSERT_FALSE(HasFailure()) << "step " << step;
        }
    }
}

}  // namespace
