// Asks the library and every geometry library that was found when this was built the same questions, and prints how
// long each took.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

#include "bench/peers/measure.h"

namespace {

/// "inside, cold" is one field.
std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

void list() {
    std::set<std::string> names;
    for (const peers::Entry& entry : peers::Entry::all())
        names.insert(entry.name().substr(0, entry.name().find(' ')));
    std::cerr << "taking part:";
    for (const std::string& name : names)
        std::cerr << ' ' << name;
    std::cerr << '\n';
}

void run(const peers::Options& options, const std::regex& wanted, const std::vector<std::size_t>& sizes) {
    std::vector<std::unique_ptr<peers::Inputs>> inputs;
    for (const std::size_t n : sizes)
        inputs.push_back(std::make_unique<peers::Inputs>(n));
    std::cout << "row,n,contestant,nanoseconds,least,spread,agreement\n";
    peers::Contest contest(options);
    for (const peers::RowFacts& row : peers::rows()) {
        if (!std::regex_search(row.name, wanted))
            continue;
        for (const auto& input : inputs) {
            if (input->n > row.largest)
                continue;
            for (const peers::Measured& measured : contest.hold(row, *input)) {
                std::ostringstream line;
                line << quoted(row.name) << ',' << input->n << ',' << quoted(measured.name) << ','
                     << 1e9 * measured.median.count() << ',' << 1e9 * measured.least.count() << ',' << measured.spread
                     << ',' << measured.agreement << '\n';
                std::cout << line.str() << std::flush;
            }
        }
    }
}

}  // namespace

int main(int argc, char** argv) try {
    CLI::App app("Asks this library and others the same questions, and prints how long each took.", "peers");
    peers::Options options;
    std::string wanted = ".";
    std::vector<std::size_t> sizes;
    bool quick = false;
    app.add_option("--rows", wanted, "Rows whose names this regular expression finds");
    app.add_option("--sizes", sizes, "Numbers of vertices, from small to large")
        ->delimiter(',')
        ->check(CLI::Range(8, 1 << 22));
    app.add_option("--rounds", options.rounds, "How often everybody is measured")->check(CLI::Range(1, 1000));
    double patience = options.patience.count();
    app.add_option("--patience", patience, "Seconds for one answer, from which on a contestant is left out");
    app.add_flag("--quick", quick, "One short round each at the smallest size: shows that everything runs");
    CLI11_PARSE(app, argc, argv);

    options.patience = peers::Seconds(patience);
    if (sizes.empty())
        sizes = quick ? std::vector<std::size_t>{16} : std::vector<std::size_t>{16, 256, 4096, 65536};
    std::sort(sizes.begin(), sizes.end());
    if (quick) {
        options.rounds = 1;
        options.round = peers::Seconds(0.0001);
        options.patience = peers::Seconds(0.001);
    }
    list();
    run(options, std::regex(wanted), sizes);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "peers: %s\n", error.what());
    return 1;
}
