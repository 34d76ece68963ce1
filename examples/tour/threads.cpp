// What docs/threads.md shows: every thread asks a copy of its own, and handles cross between threads.
#include <iostream>
#include <thread>

#include "cntr/cntr.h"

namespace {

/// A copy that shares nothing with its original: the holes are copied as well.
gmPtrHandle<gmRegion> apart(const gmRegion& region) {
    const gmPtrHandle<gmRegion> copy(new gmRegion(region));
    std::vector<RegionCPtr> holes;
    for (const RegionCPtr& hole : region.holes())
        holes.push_back(apart(*hole));
    copy->holes(holes);
    return copy;
}

}  // namespace

int main() {
    gmRegion plate({{0, 0}, {60, 0}, {60, 40}, {0, 40}});
    plate.holes(std::vector<RegionCPtr>{RegionCPtr(new gmRegion({{10, 10}, {20, 10}, {20, 30}, {10, 30}}))});

    std::vector<int> inside(4);
    std::vector<std::thread> threads;
    for (int part = 0; part < 4; ++part)
        threads.emplace_back([own = apart(plate), part, &count = inside[static_cast<std::size_t>(part)]] {
            for (int x = 15 * part; x < 15 * (part + 1); ++x)
                for (int y = 0; y < 40; ++y)
                    count += own->inside({x + 0.5, y + 0.5}, true) ? 1 : 0;
        });
    for (std::thread& thread : threads)
        thread.join();

    std::cout << inside[0] + inside[1] + inside[2] + inside[3] << " of 2400 cells are material\n";
}
