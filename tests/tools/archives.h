// Archives as applications write them, and what the library makes of any bytes.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cntrtmpl/cntrtmpl.h"
#include "foundation/object/exception.h"
#include "foundation/shapes/xform2.h"
#include "tests/support/archives.h"
#include "tests/support/text.h"

namespace support {

using RegionHandle = gmPtrHandle<gmRegion>;
using ContourHandle = gmPtrHandle<gmContour>;

inline RegionHandle heldRegion(const std::string& outline, unsigned long label = 0,
                               const std::vector<RegionHandle>& holes = {}) {
    RegionHandle result(new gmRegion(points(outline)));
    result->label(label);
    result->holes(holes);
    return result;
}

inline ContourHandle heldContour(const std::string& outline, bool closed, unsigned long label = 0) {
    return ContourHandle(new gmContour(points(outline), closed, label));
}

inline gmPtrHandle<gmRegionSet> heldSet(const std::vector<RegionHandle>& regions) {
    return gmPtrHandle<gmRegionSet>(new gmRegionSet(regions));
}

inline void store(gmArchive& archive, gmPersistent* object) {
    gmPersistent* nothing = nullptr;
    gmPersistent::serializePointer(archive, object, nothing);
}

/// An archive of these shapes behind pointers, one after the other.
template <class... Shape>
std::string archived(const gmPtrHandle<Shape>&... shapes) {
    return stored([&](gmArchive& archive) { (store(archive, shapes.get()), ...); });
}

/// An archive of one object of the class, with content in digits as hex() writes them.
inline std::string archivedContent(const std::string& className, const std::string& content) {
    std::string bytes = header + std::string("\x01\0\0\0", 4);
    bytes += static_cast<char>(className.size());
    return bytes + std::string(3, '\0') + className + unhex(content);
}

}  // namespace support
