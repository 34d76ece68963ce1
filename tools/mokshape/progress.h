#pragma once

#include <chrono>
#include <condition_variable>
#include <iosfwd>
#include <mutex>
#include <string>
#include <thread>

namespace mokshape {

/// A progress bar on one line of a terminal that shows itself only when the work takes long, and wipes itself out at
/// the end. A thread of its own draws it, so that it also appears while one long step runs.
class Progress {
  public:
    struct Pace {
        std::chrono::milliseconds patience{1000};  ///< work that takes less is not shown
        std::chrono::milliseconds interval{100};
    };

    /// Shows nothing ever unless `out` is a terminal.
    Progress(std::ostream& out, bool isTerminal) : Progress(out, isTerminal, Pace()) {}
    Progress(std::ostream& out, bool isTerminal, Pace pace);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Starts the next piece of work: what it is called, and how much it is; 0 when nobody knows.
    void start(const std::string& title, double total);
    void advance(double work);

  private:
    void run(Pace pace);
    std::string line() const;

    std::ostream& out_;
    std::mutex mutex_;
    std::condition_variable finish_;
    bool finished_ = false;
    std::string title_;
    double total_ = 0.0;
    double done_ = 0.0;
    std::thread painter_;
};

}  // namespace mokshape
