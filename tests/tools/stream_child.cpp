#include "tests/tools/stream_child.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace support {

namespace {

constexpr int patienceInMilliseconds = 60000;

void close(int& descriptor) {
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

}  // namespace

StreamChild::StreamChild(std::vector<std::string> arguments) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    input_ = in[1];
    output_ = out[0];
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    arguments.insert(arguments.begin(), MOK_MOKSHAPE_PATH);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const int error = ::posix_spawn(&process_, MOK_MOKSHAPE_PATH, &actions, nullptr, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(in[0]);
    ::close(out[1]);
    if (error != 0)
        throw std::runtime_error("mokshape does not start");
}

StreamChild::~StreamChild() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        finish();
    }
    closeOutput();
}

void StreamChild::write(const std::string& bytes) {
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t count = ::write(input_, rest.data(), rest.size());
        if (count < 0)
            throw std::runtime_error("mokshape does not read");
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::optional<std::string> StreamChild::readLine() {
    std::size_t end = read_.find('\n');
    while (end == std::string::npos) {
        pollfd waiting{output_, POLLIN, 0};
        std::array<char, 4096> buffer;
        if (::poll(&waiting, 1, patienceInMilliseconds) != 1)
            return std::nullopt;
        const ssize_t count = ::read(output_, buffer.data(), buffer.size());
        if (count <= 0)
            return std::nullopt;
        read_.append(buffer.data(), static_cast<std::size_t>(count));
        end = read_.find('\n');
    }
    std::string line = read_.substr(0, end);
    read_.erase(0, end + 1);
    return line;
}

void StreamChild::closeInput() {
    close(input_);
}

void StreamChild::closeOutput() {
    close(output_);
}

int StreamChild::finish() {
    closeInput();
    int status = 0;
    ::waitpid(std::exchange(process_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace support
