// The archives that are kept as files come back as what they were, and are written again to the byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/goldens.h"

using support::bytesOf;
using support::Description;
using support::Golden;
using support::goldens;
using support::hex;
using support::loadAs;
using support::storedAs;
using testing::Contains;
using testing::UnorderedElementsAreArray;

namespace {

const std::filesystem::path folder = std::filesystem::path(MOK_TEST_DATA_DIR) / "archives";

std::string fileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string testName(const testing::TestParamInfo<Golden>& info) {
    std::string name;
    for (const char c : info.param.file)
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

class GoldenArchive : public testing::TestWithParam<Golden> {};

TEST_P(GoldenArchive, FileIsWhatTheListingSays) {
    EXPECT_EQ(hex(fileBytes(folder / (GetParam().file + ".mok"))), hex(bytesOf(GetParam().listing)));
}

TEST_P(GoldenArchive, ComesBackAsTheObject) {
    std::ifstream file(folder / (GetParam().file + ".mok"), std::ios::binary);
    int loads = 0;
    loadAs(GetParam(), file, [&](gmPersistent& object) {
        EXPECT_EQ(Description::of(object), Description::of(*GetParam().is()));
        ++loads;
    });
    EXPECT_EQ(loads, 1);
    EXPECT_EQ(file.get(), std::ifstream::traits_type::eof()) << "read to the end";
}

TEST_P(GoldenArchive, IsWrittenAgainToTheByteUnlessItIsOld) {
    const support::Object object = GetParam().is();
    const std::string again = storedAs(GetParam(), *object);
    EXPECT_EQ(hex(again) == hex(bytesOf(GetParam().listing)), GetParam().written) << hex(again);
    // What is written of the object that an old archive holds is that object.
    loadAs(GetParam(), again,
           [&](gmPersistent& loaded) { EXPECT_EQ(Description::of(loaded), Description::of(*object)); });
}

INSTANTIATE_TEST_SUITE_P(Of, GoldenArchive, testing::ValuesIn(goldens()), testName);

TEST(GoldenArchives, AreTheFilesOfTheFolder) {
    std::vector<std::string> listed;
    for (const Golden& golden : goldens())
        listed.push_back(golden.file + ".mok");
    std::vector<std::string> found;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder))
        found.push_back(std::filesystem::relative(file.path(), folder).string());
    EXPECT_THAT(found, UnorderedElementsAreArray(listed));
}

TEST(GoldenArchives, HoldEveryRegisteredClass) {
    std::vector<std::string> classes;
    for (const Golden& golden : goldens())
        if (!golden.blank) {
            const support::Object object = golden.is();
            const gmPersistent& behindPointer = *object;
            classes.push_back(gm_Instantiator::className(typeid(behindPointer)));
        }
    for (const char* name :
         {"gmContourDefs::BadParams", "gmContourDefs::EmptyContour", "gmContourDefs::EmptyRegionSet",
          "gmContourDefs::RegionCannotBeSetOpen", "gmContour", "gmRegion", "gmRegionSet", "gmContourT<gmEdgelet>",
          "gmRegionSetT<gmEdgelet>", "gmRegionT<gmEdgelet>", "gm2XformLinear", "gm2Rigid"}) {
        EXPECT_TRUE(gm_Instantiator::isRegistered(name)) << name;
        EXPECT_THAT(classes, Contains(name));
    }
}

TEST(GoldenArchives, OverwriteEverythingThatWasThere) {
    for (const Golden& golden : goldens())
        if (golden.blank) {
            const support::Object target = golden.is();
            const support::Object blank = golden.blank();
            const std::string bytes = storedAs(golden, *blank);
            support::loadFrom(bytes, [&](gmArchive& archive) { archive || *target; });
            EXPECT_EQ(Description::of(*target), Description::of(*blank)) << golden.file;
        }
}

TEST(GoldenArchives, LoadOnTwoThreadsAtOnce) {
    std::vector<std::string> expected;
    for (const Golden& golden : goldens())
        expected.push_back(Description::of(*golden.is()));
    std::vector<std::string> results[2];
    const auto work = [](std::vector<std::string>& result) {
        try {
            for (const Golden& golden : goldens())
                loadAs(golden, bytesOf(golden.listing),
                       [&](gmPersistent& object) { result.push_back(Description::of(object)); });
        } catch (const gmArchive::Errors&) {
            result.clear();  // nothing may leave a thread
        }
    };
    std::thread first(work, std::ref(results[0]));
    std::thread second(work, std::ref(results[1]));
    first.join();
    second.join();
    EXPECT_TRUE(results[0] == expected);
    EXPECT_TRUE(results[1] == expected);
}

}  // namespace
