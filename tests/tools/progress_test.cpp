#include "tools/mokshape/progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <mutex>
#include <sstream>
#include <streambuf>
#include <string>
#include <thread>

namespace {

using mokshape::Progress;
using std::chrono::milliseconds;
using testing::EndsWith;
using testing::HasSubstr;

/// A stream buffer that one thread writes and another reads.
class Screen : public std::streambuf {
  public:
    std::string text() const {
        const std::lock_guard lock(mutex_);
        return text_;
    }
    /// Waits until the text is there; false when it does not come.
    bool waitFor(const std::string& part) const {
        for (int i = 0; i < 2000; ++i) {
            if (text().find(part) != std::string::npos)
                return true;
            std::this_thread::sleep_for(milliseconds(5));
        }
        return false;
    }

  private:
    int_type overflow(int_type c) override {
        const std::lock_guard lock(mutex_);
        text_ += traits_type::to_char_type(c);
        return c;
    }
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        const std::lock_guard lock(mutex_);
        text_.append(text, static_cast<std::size_t>(count));
        return count;
    }

    mutable std::mutex mutex_;
    std::string text_;
};

constexpr Progress::Pace atOnce{milliseconds(0), milliseconds(1)};

TEST(Progress, ShowsTheShareOfTheWork) {
    Screen screen;
    std::ostream out(&screen);
    Progress progress(out, true, atOnce);
    progress.start("measuring", 8.0);
    EXPECT_TRUE(screen.waitFor("\rmeasuring [" + std::string(40, ' ') + "] 0%"));
    progress.advance(2.0);
    EXPECT_TRUE(screen.waitFor("\rmeasuring [" + std::string(10, '=') + std::string(30, ' ') + "] 25%"));
    progress.advance(6.5);
    EXPECT_TRUE(screen.waitFor("\rmeasuring [" + std::string(40, '=') + "] 100%"));
}

TEST(Progress, ShowsNoShareWhereTheWorkIsNotKnown) {
    Screen screen;
    std::ostream out(&screen);
    Progress progress(out, true, atOnce);
    progress.start("reading a.wkt", 0.0);
    EXPECT_TRUE(screen.waitFor("\rreading a.wkt ..."));
}

TEST(Progress, WipesItsLineAtTheEnd) {
    Screen screen;
    std::ostream out(&screen);
    {
        Progress progress(out, true, atOnce);
        progress.start("measuring", 1.0);
        ASSERT_TRUE(screen.waitFor("measuring"));
    }
    EXPECT_THAT(screen.text(), EndsWith("\r\x1b[K"));
}

TEST(Progress, WaitsASecondUnlessToldOtherwise) {
    EXPECT_EQ(Progress::Pace().patience, std::chrono::seconds(1));
}

TEST(Progress, StaysSilentWhenTheWorkEndsSoon) {
    Screen screen;
    std::ostream out(&screen);
    {
        Progress progress(out, true, {std::chrono::hours(1), milliseconds(1)});
        progress.start("measuring", 1.0);
        progress.advance(1.0);
    }
    EXPECT_EQ(screen.text(), "");
}

TEST(Progress, StaysSilentWithoutATerminal) {
    Screen screen;
    std::ostream out(&screen);
    {
        Progress progress(out, false, atOnce);
        progress.start("measuring", 1.0);
        std::this_thread::sleep_for(milliseconds(20));
    }
    EXPECT_EQ(screen.text(), "");
}

}  // namespace
