#include "bench/peers/contest.h"

namespace peers {

Entry::Entry(Row row, std::string name, Make make) : row_(row), name_(std::move(name)), make_(std::move(make)) {
    list().push_back(*this);
}

// In a function: the entries of other sources may come before anything that stands here.
std::vector<Entry>& Entry::list() {
    static std::vector<Entry> entries;
    return entries;
}

}  // namespace peers
