#include "tools/mokshape/progress.h"

#include <algorithm>
#include <ostream>

namespace mokshape {

Progress::Progress(std::ostream& out, bool isTerminal, Pace pace) : out_(out) {
    if (isTerminal)
        painter_ = std::thread([this, pace] { run(pace); });
}

Progress::~Progress() {
    if (!painter_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        finished_ = true;
    }
    finish_.notify_one();
    painter_.join();
}

void Progress::start(const std::string& title, double total) {
    const std::lock_guard lock(mutex_);
    title_ = title;
    total_ = total;
    done_ = 0.0;
}

void Progress::advance(double work) {
    const std::lock_guard lock(mutex_);
    done_ += work;
}

void Progress::run(Pace pace) {
    std::unique_lock lock(mutex_);
    const auto isFinished = [this] { return finished_; };
    if (finish_.wait_for(lock, pace.patience, isFinished))
        return;
    do {
        const std::string text = line();
        // Unlocked: a terminal that stands still must not hold up the work.
        lock.unlock();
        out_ << '\r' << text << "\x1b[K" << std::flush;
        lock.lock();
    } while (!finish_.wait_for(lock, pace.interval, isFinished));
    out_ << "\r\x1b[K" << std::flush;
}

std::string Progress::line() const {
    if (!(total_ > 0.0))
        return title_ + " ...";
    constexpr int width = 40;
    const double share = std::clamp(done_ / total_, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(share * width);
    return title_ + " [" + std::string(filled, '=') + std::string(width - filled, ' ') + "] " +
           std::to_string(static_cast<int>(share * 100.0)) + '%';
}

}  // namespace mokshape
