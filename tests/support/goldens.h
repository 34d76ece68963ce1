// All archives that are kept as files.
#pragma once

#include <vector>

#include "tests/support/contourgoldens.h"
#include "tests/support/edgegoldens.h"
#include "tests/support/shapegoldens.h"

namespace support {

inline std::vector<Golden> goldens() {
    std::vector<Golden> all = contourGoldens();
    for (const auto& more : {edgeGoldens(), shapeGoldens()})
        all.insert(all.end(), more.begin(), more.end());
    return all;
}

}  // namespace support
