#include "foundation/object/repbase.h"

#include "foundation/object/exception.h"

gmRepBase::~gmRepBase() = default;

gm_PtrHandleBase_RepAccessor::~gm_PtrHandleBase_RepAccessor() = default;

void gm_PtrHandleBase_RepAccessor::throwBadPointer() {
    throw gmBadPointer();
}
