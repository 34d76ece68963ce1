// The archive layout of contours with edge points, byte by byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/archives.h"
#include "tests/support/changes.h"
#include "tests/support/edgelets.h"
#include "tests/support/golden.h"

using support::contentOf;
using support::ContourT;
using support::edgeContour;
using support::edgelets;
using support::expectSame;
using support::header;
using support::hex;
using support::HookWatcher;
using support::load;
using support::loaded;
using support::loadFrom;
using support::points;
using support::refusedCuts;
using support::refusedVersion;
using support::scale;
using support::scaling;
using support::stored;
using support::transfer;
using support::WatchedXform;
using support::withoutBlankAtEnd;
using support::XformHandle;
using testing::ElementsAre;

namespace {

const char* const square = "0 0, 4 0, 4 4, 0 4";
const char* const triangle = "0 0, 3 0, 3 4";

const std::string one = "00 00 00 00 00 00 f0 3f ";
const std::string two = "00 00 00 00 00 00 00 40 ";
const std::string minusTwo = "00 00 00 00 00 00 00 c0 ";
const std::string minusFour = "00 00 00 00 00 00 10 c0 ";
const std::string nought = "00 00 00 00 00 00 00 00 ";

// A contour: version, base part, label 7, closed, vertices: version, 1, (1, -2), cachedVectorSize 3
const std::string contourPart = "01 00 07 00 00 00 01 00 01 00 00 00 " + one + minusTwo + "03 00 00 00 ";
// edge points: version, 1: (2, -4), magnitude 0xbeef, angle 0xab
const std::string dataPart = "00 01 00 00 00 " + two + minusFour + "ef be ab ";
// object 1, "gm2XformLinear": version, translation, matrix
const std::string doubling = "01 00 00 00 0e 00 00 00 67 6d 32 58 66 6f 72 6d 4c 69 6e 65 61 72 00 " + nought + nought +
                             two + nought + nought + two;
const std::string noHandle = "00 00 00 00 ";

ContourT oneEdgePoint() {
    ContourT contour({{{2, -4}, 0xbeef, gmAngle8(0xab)}}, scaling(2));
    contour.label(7);
    return contour;
}

TEST(ContourTArchive, ReproducesTheBytesOfItsCurrentVersion) {
    ContourT contour = oneEdgePoint();
    EXPECT_EQ(hex(contentOf(contour)), withoutBlankAtEnd("01 " + contourPart + dataPart + doubling));
    ContourT bare;
    bare.label(7);
    EXPECT_EQ(hex(contentOf(bare)), "01 01 00 07 00 00 00 01 00 00 00 00 00 03 00 00 00 00 00 00 00 00 00 00 00 00");
}

TEST(ContourTArchive, BringsBackEverythingButTheCaches) {
    ContourT contour = edgeContour(square, 4);
    contour.isClosed(false);
    contour.cachedVectorSize(17);
    contour.label(4294967295UL);
    ContourT target = edgeContour(triangle);
    transfer(contour, target);
    expectSame(target, contour);
    EXPECT_EQ(target.data(), edgelets(square));
    EXPECT_NE(target, contour) << "its transform is another object";
}

TEST(ContourTArchive, KeepsTheClassOfTheTransform) {
    const XformHandle turning(new gm2Rigid(gmDegree(90), {5, 6}));
    for (const XformHandle& xform : {turning, scaling(3)}) {
        ContourT contour(edgelets(square), xform);
        ContourT target;
        transfer(contour, target);
        expectSame(target, contour);
        EXPECT_EQ(target.datum({1, 2}), contour.datum({1, 2}));
    }
}

TEST(ContourTArchive, SharesATransformThatTwoContoursHold) {
    ContourT contour = oneEdgePoint();
    ContourT copy = contour;
    ContourT first;
    ContourT second;
    const std::string bytes = stored([&](gmArchive& archive) { archive || contour || copy; });
    EXPECT_EQ(hex(bytes.substr(header.size())),
              "01 " + contourPart + dataPart + doubling + "01 " + contourPart + dataPart + "01 00 00 00");
    loadFrom(bytes, [&](gmArchive& archive) { archive || first || second; });
    EXPECT_FALSE(first.dataFromPointsXform().isNull());
    EXPECT_EQ(first, second);
}

TEST(ContourTArchive, LetsGoOfTheOldTransform) {
    const WatchedXform watched(scale(2));
    ContourT target(edgelets(square), watched.clone());
    const gmPtrHandle_const<gm2XformBase> old = target.dataFromPointsXform();
    EXPECT_EQ(old->referenceCount(), 2);
    load("01 " + contourPart + dataPart + doubling, target);
    EXPECT_EQ(old->referenceCount(), 1);
    EXPECT_EQ(target.datum({1, -2}).position(), gmVector<2>(2, -4));
    load("01 " + contourPart + dataPart + noHandle, target);
    EXPECT_TRUE(target.dataFromPointsXform().isNull());
}

TEST(ContourTArchive, ReadsTheFirstVersionAndKeepsTheTransformThatItHad) {
    ContourT target = edgeContour(square, 2);
    const ContourT before = target;
    load("00 " + contourPart + dataPart, target);
    EXPECT_EQ(target.points(), points("1 -2"));
    EXPECT_EQ(target.data(), oneEdgePoint().data());
    EXPECT_EQ(target.label(), 7U);
    EXPECT_TRUE(target.dataFromPointsXform() == before.dataFromPointsXform());
    EXPECT_EQ(target.point(target.data()[0]), gmVector<2>(1, -2));
    EXPECT_TRUE(loaded<ContourT>("00 " + contourPart + dataPart).dataFromPointsXform().isNull());
}

TEST(ContourTArchive, InvertsTheTransformThatItLoaded) {
    ContourT target = edgeContour(square, 100);
    EXPECT_EQ(target.point(edgelets("100 200")[0]), gmVector<2>(1, 2));
    load("01 " + contourPart + dataPart + doubling, target);
    EXPECT_EQ(target.point(edgelets("100 200")[0]), gmVector<2>(50, 100));
}

TEST(ContourTArchive, RemembersNoInverseOfATransformThatWasRefused) {
    ContourT target = edgeContour(square, 100);
    const std::string whole = "01 " + contourPart + dataPart + doubling;
    EXPECT_THROW(load(whole.substr(0, whole.size() - 3), target), gmArchive::Truncated);
    EXPECT_TRUE(target.dataFromPointsXform().isNull());
    EXPECT_THROW(target.point(target.data()[0]), gmBadPointer);
}

TEST(ContourTArchive, RemembersNoInverseThatWasAskedForWhileItLoaded) {
    ContourT target = edgeContour(square, 100);
    target.reportChanges(true);
    const support::ChangeCounter asking([&](const gmPersistent&) { target.point(edgelets("100 200")[0]); });
    load("01 " + contourPart + dataPart + doubling, target);
    EXPECT_EQ(target.point(edgelets("100 200")[0]), gmVector<2>(50, 100));
}

TEST(ContourTArchive, LeavesTheHandleEmptyForWhatIsNoTransform) {
    const std::string contour = "01 00 00 00 09 00 00 00 67 6d 43 6f 6e 74 6f 75 72 " + contourPart;
    const ContourT target = loaded<ContourT>("01 " + contourPart + dataPart + contour);
    EXPECT_EQ(target.points(), points("1 -2"));
    EXPECT_TRUE(target.dataFromPointsXform().isNull());
}

TEST(ContourTArchive, RefusesToStoreATransformOfAnUnregisteredClass) {
    ContourT contour(edgelets(square), XformHandle(new WatchedXform(scale(2))));
    EXPECT_EQ(stored([&](gmArchive& archive) { EXPECT_THROW(archive || contour, gmArchive::UnknownClass); }), header);
}

TEST(ContourTArchive, RefusesEdgePointsThatAreNotOneAVertex) {
    const std::string fiveVertices = "01 00 07 00 00 00 01 00 05 00 00 00 " + one + one + one + two + two + two + two +
                                     one + one + one + "03 00 00 00 ";
    const std::string threeEdgePoints =
        "00 03 00 00 00 " + one + one + "01 00 02 " + two + one + "01 00 02 " + two + two + "01 00 02 ";
    const std::string contents[] = {
        "01 " + fiveVertices + threeEdgePoints + noHandle, "00 " + fiveVertices + threeEdgePoints,
        "01 " + contourPart + threeEdgePoints + noHandle, "01 " + contourPart + "00 00 00 00 00 " + noHandle};
    for (const std::string& content : contents) {
        ContourT target = edgeContour(square);
        EXPECT_THROW(load(content, target), gmArchive::Malformed) << content;
        // What was read stays read, and is not let into an archive either.
        EXPECT_NE(target.points().size(), target.data().size());
        EXPECT_EQ(stored([&](gmArchive& archive) { EXPECT_THROW(archive || target, gmArchive::Malformed); }), header);
        target.data(edgelets(triangle));
        transfer(target, target);
        EXPECT_EQ(target.points(), points(triangle)) << "and can be mended";
    }
}

TEST(ContourTArchive, RefusesOtherVersionsByTheirPlace) {
    EXPECT_EQ(refusedVersion<ContourT>("02 00"), "cntrtmpl:98");
    EXPECT_EQ(refusedVersion<ContourT>("ff 00"), "cntrtmpl:98");
    EXPECT_EQ(refusedVersion<ContourT>("01 02"), "cntr/contour:904");           // the contour
    EXPECT_EQ(refusedVersion<ContourT>("00 00 01"), "cntr/contour:894");        // its legacy base
    EXPECT_EQ(refusedVersion<ContourT>("00 00 00 01"), "gmPersistent:0");       // the base of that
    EXPECT_EQ(refusedVersion<ContourT>("01 " + contourPart + "01"), "null:0");  // the edge points
    EXPECT_EQ(refusedVersion<ContourT>("01 " + contourPart + dataPart + doubling.substr(0, 66) + "01"),
              "gm2XformLinear:0");
}

TEST(ContourTArchive, LeavesTheContourAsItWasWhenItsVersionIsRefused) {
    ContourT target = edgeContour(square, 2);
    const ContourT before = target;
    EXPECT_THROW(load("02 00", target), gmArchive::UnknownVersion);
    expectSame(target, before);
    EXPECT_EQ(target, before) << "with the same transform";
}

TEST(ContourTArchive, KeepsWhatWasReadBeforeARefusalAndNoOldAnswer) {
    ContourT target = edgeContour(square);
    EXPECT_EQ(target.length(), 16.0);
    EXPECT_THROW(load("01 " + contourPart + "00 01 00", target), gmArchive::Truncated);
    EXPECT_EQ(target.points(), points("1 -2"));
    EXPECT_EQ(target.length(), 0.0);
    EXPECT_EQ(target.data(), edgelets(square));
}

TEST(ContourTArchive, RefusesACountOfEdgePointsThatCannotFollowBeforeTakingMemory) {
    ContourT target = edgeContour(square);
    EXPECT_THROW(load("01 " + contourPart + "00 ff ff ff ff 00", target), gmArchive::Truncated);
    EXPECT_EQ(target.data().size(), 4U);
}

TEST(ContourTArchive, EndsCleanlyWhereverTheBytesEnd) {
    ContourT contour = edgeContour(square, 2);
    EXPECT_EQ(refusedCuts(contour), (header + contentOf(contour)).size());
}

TEST(ContourTArchive, AnnouncesALoadAndNoStoreAndCallsNoHookForTheData) {
    HookWatcher<ContourT> target(edgelets(square));
    target.reportChanges(true);
    HookWatcher<ContourT>::take();
    support::ChangeCounter counter;
    contentOf(target);
    EXPECT_EQ(counter.take(), 0);
    load("01 " + contourPart + dataPart + doubling, target);
    EXPECT_GE(counter.take(), 1);
    EXPECT_THAT(HookWatcher<ContourT>::take(), ElementsAre("clean 4/4", "clean 1/4"));
}

TEST(ContourTArchive, KeepsItsClassBehindAHandleToAContour) {
    gmPtrHandle<gmContour> handle(new ContourT(oneEdgePoint()));
    gmPtrHandle<gmContour> target;
    transfer(handle, target);
    const auto* contour = dynamic_cast<const ContourT*>(target.get());
    ASSERT_NE(contour, nullptr);
    expectSame(*contour, oneEdgePoint());
}

}  // namespace
