#include "cntr/defs.h"

gmContourDefs::Errors::Errors(const std::string& message) : gmExceptionWithString(message.c_str()) {}
