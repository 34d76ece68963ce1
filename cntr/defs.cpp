#include "cntr/defs.h"

gmContourDefs::Errors::Errors(const std::string& message) : gmExceptionWithString(nullptr) {
    text_ = message;
}
