#include "tools/mokshape/notes.h"

#include <iostream>

#include "tools/io/text.h"

namespace mokshape {

void printNotes(const std::string& file, const Notes& notes) {
    for (const std::string& note : notes)
        std::cerr << "mokshape: note: " << printable(file) << ": " << note << '\n';
}

}  // namespace mokshape
