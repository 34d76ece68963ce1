#include "cntr/detail/randomindex.h"

#include <memory>

#include "foundation/math/floor.h"
#include "foundation/math/random.h"
#include "foundation/object/threadlocal.h"

namespace {

class GeneratorSlot : public gm_ThreadLocal {
  public:
    GeneratorSlot() = default;

    gmRandomUniform& generator() {
        if (!OSValue()) {
            auto made = std::make_unique<gmRandomUniform>(1);
            OSValue(made.get(), [](void* value) {
                delete static_cast<gmRandomUniform*>(value);
                return 0L;
            });
            static_cast<void>(made.release());
        }
        return *static_cast<gmRandomUniform*>(OSValue());
    }
};

GeneratorSlot& slot() {
    // Never destroyed: threads may end, and shapes may be measured, after static objects are gone.
    static auto& instance = *new GeneratorSlot;
    return instance;
}

// Made while the library is loaded, before there are threads that could race for it.
[[maybe_unused]] const GeneratorSlot& madeAtStart = slot();

}  // namespace

long detail::randomCacheIndex(long size) {
    return gfIFloor(slot().generator().next(0.0, static_cast<double>(size)));
}
