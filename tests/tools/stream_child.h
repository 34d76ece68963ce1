// A running mokshape and both its pipes, as an engine holds them that uses it for a step of its own.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace support {

class StreamChild {
  public:
    /// Starts mokshape with these arguments.
    explicit StreamChild(std::vector<std::string> arguments);
    StreamChild(const StreamChild&) = delete;
    StreamChild& operator=(const StreamChild&) = delete;
    ~StreamChild();

    void write(const std::string& bytes);
    /// The next line without its end; none when it does not come for a long time, or the output ends.
    std::optional<std::string> readLine();
    void closeInput();
    void closeOutput();
    /// Waits for the end: the exit status; -1 for another end.
    int finish();

  private:
    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string read_;
};

}  // namespace support
