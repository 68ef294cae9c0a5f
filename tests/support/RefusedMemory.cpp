#include "RefusedMemory.h"

#ifdef NR_GUARDED

#include "GuardPages.h"

namespace {

LONG countdown; // requests until the refused one; 0 or less: it is reached
bool allFromThere;
LONG refused;

bool IsRefused() {
    --countdown;
    if (countdown == 0 || (countdown < 0 && allFromThere)) {
        ++refused;
        return true;
    }
    return false;
}

} // namespace

RefusedMemory::RefusedMemory(LONG nth, Extent extent) {
    countdown = nth;
    allFromThere = extent == AllFromThere;
    refused = 0;
    SetGuardPagesRefusal(&IsRefused);
}

RefusedMemory::~RefusedMemory() {
    SetGuardPagesRefusal(nullptr);
}

LONG RefusedMemory::Refused() const {
    return refused;
}

#endif
