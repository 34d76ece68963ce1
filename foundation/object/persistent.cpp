#include "foundation/object/persistent.h"

#include <atomic>

#include "foundation/object/exception.h"

namespace {
std::atomic<void (*)(const gmPersistent&)> observer{nullptr};
}

gmPersistent::~gmPersistent() = default;

void gmPersistent::changeObserver(void (*function)(const gmPersistent&)) {
    observer.store(function);
}

void gmPersistent::mutating_() const {
    if (const auto function = observer.load())
        function(*this);
}

// Unmarked: this block is a piece of the object's own, which bears the mark.
void gmPersistent::dispatchSerialize(gmArchive& archive) {
    unsigned char version = 0;
    archive || version;
    if (version != 0)
        throw gmArchive::UnknownVersion("gmPersistent", 0);
}

void gmPersistent::reInit() {}

bool gmPersistent::loadSimple(gmArchive&) {
    return false;
}
