// Runs a fuzz target on every file of the folders named on the command line: what once broke it, and what it starts
// from. Built without a fuzzer, so that every compiler and every test run can do it.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    // An input of its exact size: a read beyond it is one beyond the allocation.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

int replayAll(const std::vector<std::string>& folders) {
    std::vector<std::filesystem::path> paths;
    for (const std::string& folder : folders)
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (entry.is_regular_file())
                paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        std::printf("%s\n", path.filename().c_str());
        std::fflush(stdout);  // so that the last one named is the one that breaks
        replay(path);
    }
    if (paths.empty())
        std::fputs("no input to replay\n", stderr);
    return paths.empty() ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return replayAll(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
