// For archives that nobody should trust: streams, limits of memory, and everything that a loaded object can be asked.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <vector>

#include "fuzz/edgeanswers.h"
#include "tests/support/goldens.h"

namespace support {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

/// Whoever takes more memory than this while it lives, beyond what the process has, gets std::bad_alloc. Under a
/// sanitizer, whose shadow alone takes more, there is no limit but the sanitizer's own.
class MemoryLimit {
  public:
    static constexpr rlim_t bytes = 256UL << 20;

    MemoryLimit() {
        getrlimit(RLIMIT_AS, &before_);
        set(sanitized ? before_ : rlimit{taken() + bytes, before_.rlim_max});
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;
    ~MemoryLimit() { set(before_); }

  private:
    static rlim_t taken() {
        std::ifstream file("/proc/self/statm");
        rlim_t pages = 0;
        file >> pages;
        return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    }
    static void set(const rlimit& limit) { EXPECT_EQ(setrlimit(RLIMIT_AS, &limit), 0); }

    rlimit before_{};
};

/// Every test of these has little memory.
class HostileArchive : public testing::Test {
  private:
    MemoryLimit limit_;
};

/// Changes a copy on either side; that a transform is missing or has no inverse is an answer too.
inline void changeCopy(const gmContourT<gmEdgelet>& contour) {
    gmContourT<gmEdgelet> copy = contour;
    fuzz::Answers answers;
    answers.askEdgePoints([&] { return copy.makePointsConsistentWithData(), true; });
    answers.askEdgePoints([&] { return copy.makeDataConsistentWithPoints(), true; });
    answers.askEdgePoints([&] { return copy.points({{1, 2}, {3, 4}}), true; });
    answers.askEdgePoints([&] { return copy.data({}), true; });
}

/// Asks the object everything, copies and all.
inline void askAll(const gmPersistent& object) {
    if (const auto* contour = dynamic_cast<const gmContour*>(&object)) {
        fuzz::answersOf(*contour);
        EXPECT_EQ(gmContour(*contour).points().size(), contour->points().size());
    }
    if (const auto* contour = dynamic_cast<const gmContourT<gmEdgelet>*>(&object)) {
        fuzz::answersOf(*contour);
        changeCopy(*contour);
    }
    if (const auto* region = dynamic_cast<const gmRegion*>(&object)) {
        fuzz::answersOf(*region);
        fuzz::Answers().ask([&] { return gmRegion(*region).holes(region->holes()), true; });
    }
    if (const auto* region = dynamic_cast<const gmRegionT<gmEdgelet>*>(&object))
        fuzz::answersOf(gmRegionT<gmEdgelet>(*region));
    if (const auto* set = dynamic_cast<const gmRegionSet*>(&object)) {
        fuzz::answersOf(*set);
        fuzz::answersOf(gmRegionSet(*set));
    }
    if (const auto* set = dynamic_cast<const gmRegionSetT<gmEdgelet>*>(&object))
        gmRegionSetT<gmEdgelet>(*set).makePointsConsistentWithData();
    if (const auto* xform = dynamic_cast<const gm2XformBase*>(&object)) {
        fuzz::Answers answers;
        answers.askEdgePoints([&] { return xform->inverseBase(); });
        answers.askEdgePoints([&] { return xform->clone()->composeBase(*xform); });
    }
    if (const auto* error = dynamic_cast<const gmException*>(&object)) {
        EXPECT_NE(error->what(), nullptr);
    }
}

/// A loaded object, also one of which only a part was, is like any other: it answers, and is stored or refused. What is
/// stored can be loaded, and is stored alike again.
inline void useUp(const Golden& golden, gmPersistent& object) {
    askAll(object);
    std::string again;
    try {
        again = storedAs(golden, object);
    } catch (const gmArchive::Errors&) {
        return;
    }
    loadAs(golden, again, [&](gmPersistent& loaded) { EXPECT_EQ(storedAs(golden, loaded), again); });
}

/// Loads the bytes as the golden's are loaded, over an object like it. Whether they were accepted; anything else than
/// that or an error of archives passes through. With `use`, what was loaded is used up.
inline bool isLoaded(const Golden& golden, std::istream& in, bool use) {
    const Object target = golden.blank ? golden.is() : nullptr;
    bool accepted = false;
    try {
        gmArchive archive(in);
        gmPersistent* object = target.get();
        if (target)
            archive || *target;
        else
            gmPersistent::serializePointer(archive, nullptr, object);
        accepted = true;
        if (use && object)
            useUp(golden, *object);
    } catch (const gmArchive::Errors&) {
        if (use && target)
            useUp(golden, *target);
    }
    return accepted;
}
inline bool isLoaded(const Golden& golden, const std::string& bytes, bool use = false) {
    std::istringstream in(bytes);
    return isLoaded(golden, in, use);
}

/// A line of a listing: where its bytes are and what they say.
struct Field {
    std::size_t offset;
    std::size_t size;
    std::string note;
};
inline std::vector<Field> fieldsOf(const std::string& listing) {
    std::vector<Field> fields;
    std::istringstream lines(listing);
    std::size_t offset = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t hash = line.find("# ");
        const std::size_t size = bytesOf(line).size();
        if (size != 0)
            fields.push_back({offset, size, hash == std::string::npos ? "" : line.substr(hash + 2)});
        offset += size;
    }
    return fields;
}

inline std::string littleEndian(std::uint32_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

}  // namespace support
