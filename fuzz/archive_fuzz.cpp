// Bytes as they come: the first says what the others are loaded as, which is every class that archives hold, alone,
// behind pointers or several in turn. They are refused with an error of the archive's, or what they hold can be asked
// everything and comes back from an archive of its own with the same answers and the same bytes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/bytes.h"
#include "fuzz/roundtrip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    fuzz::Bytes in(data, 1);
    const auto kind = static_cast<fuzz::Kind>(in.below(static_cast<std::size_t>(fuzz::Kind::eCount)));
    fuzz::check(kind, std::string(data + 1, data + size));
    return 0;
}
