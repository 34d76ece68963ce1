// Sets of many regions: whatever is kept to ask only a few of them, the answers are those of the plain procedures, also
// after a region has changed under the set.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/hardprobes.h"
#include "tests/support/questions.h"
#include "tests/support/setgenerators.h"
#include "tests/support/testregionset.h"

using reference::Region;
using support::Fresh;
using support::HardProbes;
using support::HardShape;
using support::Points;
using support::Random;
using SetQuestions = support::Questions<gmRegionSet>;

namespace {

// ----- Sets of many regions

/// Somewhere on a board: in rows, at random or all in one place.
class Board {
  public:
    Board(Random& random, int count)
        : kind_(random.integer(0, 2)), pitch_(random.oneOf<double>({1.0, 3.0, 10.0})), across_(1) {
        while (across_ * across_ < count)
            across_++;
    }

    gmVector<2> place(Random& random, int i) const {
        if (kind_ == 0)
            return gmVector<2>(i % across_, i / across_) * pitch_;
        return kind_ == 1 ? random.point(0.0, across_ * pitch_) : random.gridPoint(0, 2) * pitch_;
    }

  private:
    int kind_;
    double pitch_;
    int across_;
};

Points smallOutline(Random& random, const gmVector<2>& place) {
    if (random.chance(0.3))
        return support::placed({{0, 0}, {1, 0}, {1, 1}, {0, 1}}, random.oneOf<double>({0.5, 1.0, 3.0}), place);
    if (random.chance(0.1))
        return support::placed(support::bowTieOutline(random).points, 0.5, place);
    const int n = random.oneOf<int>({3, 4, 7, 16, 33, 70});
    const auto draw = random.oneOf<support::HardPoints>(
        {support::hardScattered, support::hardJittered, support::hardCrossing, support::hardRegular});
    return support::placed(draw(random, n, {}), random.oneOf<double>({0.01, 0.02, 0.2}), place);
}

Region smallRegion(Random& random, const gmVector<2>& place) {
    Region region{smallOutline(random, place), {}};
    while (random.chance(0.3)) {
        Region hole{smallOutline(random, place), {}};
        if (random.chance(0.2))
            hole.holes.push_back({smallOutline(random, place), {}});
        region.holes.push_back(hole);
    }
    return region;
}

/// `odd` regions are missing, without vertices, or no place; others are in the set twice.
reference::RegionSet manyRegions(Random& random, int count, double odd) {
    const Board board(random, count);
    reference::RegionSet set;
    for (int i = 0; i < count; i++) {
        if (random.chance(0.02) && !set.empty()) {
            set.emplace_back(random.oneOf(set));
            continue;
        }
        if (random.chance(odd)) {
            const int kind = random.integer(0, 2);
            const Points broken = support::hardBroken(random, 6, board.place(random, i));
            set.push_back(kind == 0 ? nullptr : std::make_shared<Region>(Region{kind == 1 ? Points() : broken, {}}));
            continue;
        }
        set.push_back(std::make_shared<Region>(smallRegion(random, board.place(random, i))));
    }
    return set;
}

// ----- What they are asked

void addInside(SetQuestions& questions, const reference::RegionSet& plain, const gmVector<2>& p) {
    for (const bool holes : {false, true})
        questions.push_back(support::refusable<gmRegionSet>(
            "inside " + support::text(p) + (holes ? " with holes" : ""),
            [&] { return reference::inside(plain, p, holes); },
            [=](const gmRegionSet& set) { return set.inside(p, holes); }));
}

void addDistances(SetQuestions& questions, const reference::RegionSet& plain, const gmVector<2>& p) {
    for (const bool vertexOnly : {false, true})
        for (const bool holes : {false, true})
            for (const bool insideIsZero : {false, true})
                questions.push_back(support::refusable<gmRegionSet>(
                    "distance of " + support::text(p) + (vertexOnly ? ", vertices" : "") + (holes ? ", holes" : "") +
                        (insideIsZero ? ", zero inside" : ""),
                    [&] { return reference::distToPoint(plain, p, vertexOnly, holes, insideIsZero); },
                    [=](const gmRegionSet& set) { return set.distToPoint(p, vertexOnly, holes, insideIsZero); }));
}

void addBox(SetQuestions& questions, const reference::RegionSet& plain, const gmXform<2>& xform) {
    questions.push_back(support::refusable<gmRegionSet>(
        "box under " + support::text(xform), [&] { return reference::encloseRect(plain, xform); },
        [=](const gmRegionSet& set) { return set.encloseRect(xform); }));
}

/// At, in and between some of the regions, and around all of them.
Points placesAbout(const reference::RegionSet& plain, Random& random) {
    Points places = {random.point(-5, 40), random.gridPoint(0, 30), {1e9, -1e9}};
    HardShape all{{{}, true}, {}};
    for (const auto& region : plain) {
        if (!region || region->points.empty())
            continue;
        all.outline.points.push_back(region->points[0]);
        if (random.chance(4.0 / static_cast<double>(plain.size()))) {
            const support::Outline boundary{region->holes.empty() ? region->points : region->holes[0].points, true};
            if (boundary.points.empty())
                continue;
            const HardShape shape{boundary, {}};
            HardProbes probes(shape, random);
            for (const gmVector<2>& p : probes.places())
                if (random.chance(0.15))
                    places.push_back(p);
        }
    }
    if (!all.outline.points.empty()) {
        HardProbes probes(all, random);
        for (int i = 0; i < 6; i++)
            places.push_back(probes.anywhere(0.1));
        places.push_back(probes.nowhere());
    }
    return places;
}

/// No box that the set may remember from before a change.
SetQuestions questionsAbout(const reference::RegionSet& plain, Random& random, bool boxes) {
    SetQuestions questions;
    for (const gmVector<2>& p : placesAbout(plain, random)) {
        addInside(questions, plain, p);
        addDistances(questions, plain, p);
    }
    if (boxes) {
        const HardShape any{{{gmVector<2>()}, true}, {}};
        for (const gmXform<2>& xform : HardProbes(any, random).xforms())
            addBox(questions, plain, xform);
    }
    return questions;
}

TEST(IndexedSets, AnswerAsThePlainProcedures) {
    for (int round = 0; round < support::Pairs::rounds(); round++)
        for (const int count : {0, 1, 2, 5, 8, 9, 20, 40, 64, 65, 100, 300})
            for (const double odd : {0.0, 0.01}) {
                const auto seed = static_cast<std::uint32_t>(round * 10000 + count * 10 + (odd > 0.0));
                SCOPED_TRACE(std::to_string(count) + " regions, seed " + std::to_string(seed));
                Random random(seed);
                const reference::RegionSet plain = manyRegions(random, count, odd);
                // The regions are shared by all sets: some are fresh, some have been asked before.
                const Fresh fresh(plain);
                support::expectAnswers([&] { return gmRegionSet(Fresh(plain).handles); },
                                       questionsAbout(plain, random, true), random);
                support::expectAnswers([&] { return gmRegionSet(fresh.handles); }, questionsAbout(plain, random, true),
                                       random);
                ASSERT_FALSE(HasFailure());
            }
}

// ----- Regions that change under the set

/// The region and its plain counterpart become others, in one of the ways there are.
std::string change(gmRegion& region, Region& plain, Random& random) {
    const gmVector<2> place = random.chance(0.3) || plain.points.empty() ? random.point(-5, 40) : plain.points[0];
    switch (random.integer(0, 6)) {
        case 0:
            plain.points = smallOutline(random, place);
            region.points(plain.points);
            return "other vertices";
        case 1: {
            plain = smallRegion(random, place);
            region = *support::made(plain);
            return "an assignment";
        }
        case 2: {
            plain = smallRegion(random, place);
            const auto other = support::made(plain);
            for (int i = 0; i < 3; i++)
                other->inside(place, true);
            region = *other;
            return "an assignment of a region that was asked";
        }
        case 3: {
            plain.points = smallOutline(random, place);
            const gmContour other(plain.points, random.chance(0.5));
            static_cast<gmContour&>(region) = other;
            return "an assignment of the outline";
        }
        case 4: {
            // Holes far off, or over the outline, which they must not meet while they are set.
            plain.holes.clear();
            support::OwnHoles holes;
            for (int i = random.integer(0, 2); i > 0; i--) {
                plain.holes.push_back({smallOutline(random, place), {}});
                holes.push_back(support::made(plain.holes.back()));
            }
            const Points points = plain.points;
            region.points({gmVector<2>(-1e7, 0)});
            region.holes(holes);
            region.points(points);
            return "other holes";
        }
        case 5: {
            const gmXform<2> xform(gmMatrix<2>(0, -1, 1, 0), random.point(-3, 3));
            for (gmVector<2>& v : plain.points)
                v = xform * v;
            plain.holes.clear();
            region.map(xform, region);
            return "mapping";
        }
        default:
            plain.points.clear();
            region.points({});
            return "losing its vertices";
    }
}

TEST(IndexedSets, FollowRegionsThatChangeUnderThem) {
    for (std::uint32_t seed = 0; seed < 25U * static_cast<std::uint32_t>(support::Pairs::rounds()); seed++) {
        Random random(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        reference::RegionSet plain = manyRegions(random, random.oneOf<int>({1, 8, 33, 70}), 0.0);
        std::vector<std::shared_ptr<Region>> own;
        for (auto& region : plain)
            region = own.emplace_back(std::make_shared<Region>(*region));
        const Fresh fresh(plain);
        std::vector<gmRegionSet> sets = {fresh.set, gmRegionSet(fresh.handles)};
        for (int step = 0; step < 6; step++) {
            const auto i = static_cast<std::size_t>(random.integer(0, static_cast<int>(own.size()) - 1));
            const std::string what = step == 0 ? "nothing" : change(*fresh.handles[i], *own[i], random);
            SCOPED_TRACE("step " + std::to_string(step) + ": " + what + ", at region " + std::to_string(i));
            SetQuestions questions = questionsAbout(plain, random, false);
            // The place that is inside no longer, or now.
            if (!own[i]->points.empty()) {
                addInside(questions, plain, own[i]->points[0]);
                addDistances(questions, plain, (own[i]->points[0] + own[i]->points.back()) * 0.5);
            }
            addBox(questions, plain, gmXform<2>(gmMatrix<2>(1, 0.5, 0, 1), random.point(0, 1)));
            support::shuffle(questions, random);
            sets.push_back(sets[0]);  // a copy that knows what the set has kept
            for (const gmRegionSet& set : sets)
                for (const auto& question : questions)
                    support::expectAnswer(set, question, "after the change");
            sets.pop_back();
            support::Pairs::compared() += static_cast<long>(questions.size());
            ASSERT_FALSE(HasFailure());
        }
    }
}

/// A hole changes: neither the region that has it nor the set is told.
TEST(IndexedSets, FollowHolesThatChangeInTheirRegions) {
    for (std::uint32_t seed = 0; seed < 20; seed++) {
        Random random(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::vector<gmPtrHandle<gmRegion>> handles;
        std::vector<gmPtrHandle<gmRegion>> holes;
        std::vector<std::shared_ptr<Region>> own;
        reference::RegionSet plain;
        for (int i = 0; i < 40; i++) {
            const gmVector<2> place(i % 7 * 4, i / 7 * 4);
            const Points outline = support::hardRegular(random, random.oneOf<int>({6, 40}), {});
            const Points hole = support::placed(outline, 0.1, place);
            plain.push_back(own.emplace_back(std::make_shared<Region>(
                Region{support::placed(outline, 3.0 / outline[0].len(), place), {{hole, {}}}})));
            handles.push_back(support::made(*own.back()));
            holes.emplace_back(new gmRegion(hole));
            handles.back()->points({gmVector<2>(-1e7, 0)});
            handles.back()->holes(support::OwnHoles{holes.back()});
            handles.back()->points(own.back()->points);
        }
        const gmRegionSet set(handles);
        for (int step = 0; step < 4; step++) {
            for (int call = 0; call < 2; call++)
                for (const auto& question : questionsAbout(plain, random, false)) {
                    support::expectAnswer(set, question, "after a hole has changed");
                    support::Pairs::compared()++;
                }
            ASSERT_FALSE(HasFailure()) << "step " << step;
            for (int changes = 0; changes < 10; changes++) {
                const auto i = static_cast<std::size_t>(random.integer(0, 39));
                Points& points = own[i]->holes[0].points;
                points = support::placed(points, random.real(0.5, 3.0), random.point(-1, 1));
                holes[i]->points(points);
            }
        }
    }
}

/// What is remembered stays what it was, as ever; what is not is computed of what the regions are now.
TEST(IndexedSets, RememberBoxesOfRegionsAsTheyWere) {
    for (std::uint32_t seed = 0; seed < 20; seed++) {
        Random random(seed);
        reference::RegionSet plain = manyRegions(random, 50, 0.0);
        const Fresh fresh(plain);
        gmRegionSet set(fresh.handles);
        set.cachedVectorSize(100);
        const gmXform<2> known(gmMatrix<2>(0, -1, 1, 0), {1, 2});
        const gmRect before = reference::encloseRect(plain, known);
        for (int call = 0; call < 3; call++)
            EXPECT_TRUE(support::same(set.encloseRect(known), before));
        fresh.handles[7]->points({{500, 500}, {600, 500}, {600, 700}});
        EXPECT_TRUE(support::same(set.encloseRect(known), before)) << "seed " << seed;
        const gmXform<2> another(gmMatrix<2>(0, -1, 1, 0), {1, 3});
        for (auto& region : plain)
            if (fresh.known.at(region.get()) == fresh.handles[7])
                region = std::make_shared<Region>(Region{fresh.handles[7]->points(), {}});
        EXPECT_TRUE(support::same(set.encloseRect(another), reference::encloseRect(plain, another))) << "seed " << seed;
    }
}

}  // namespace
