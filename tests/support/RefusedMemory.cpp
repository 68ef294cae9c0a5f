#include "RefusedMemory.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>

#ifdef NR_GUARDED
#include "GuardPages.h"
#endif

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

#ifndef NR_GUARDED

void* RefusableMalloc(size_t size) {
    return IsRefused() ? nullptr : std::malloc(size);
}

void* RefusableRealloc(void* block, size_t size) {
    return IsRefused() ? nullptr : std::realloc(block, size);
}

// Lets a module call `to` where it imports the function of this name.
void Redirect(const wchar_t* module, const char* function, void* to) {
    auto* const base = reinterpret_cast<BYTE*>(::GetModuleHandleW(module));
    if (base == nullptr) {
        return;
    }
    const auto* head =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto& table = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* dll = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress); dll->Name != 0;
         ++dll) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + dll->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + dll->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
                continue;
            }
            const auto* import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) == 0) {
                DWORD before = 0;
                ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
                slot->u1.Function = reinterpret_cast<ULONGLONG>(to);
                ::VirtualProtect(slot, sizeof *slot, before, &before);
            }
        }
    }
}

void RedirectAll(void* newMalloc, void* newRealloc) {
    for (const wchar_t* module : {L"nrafx.dll", L"NRVectorView.dll", L"NRVectorViewOpen.dll"}) {
        Redirect(module, "malloc", newMalloc);
        Redirect(module, "realloc", newRealloc);
    }
}

#endif

} // namespace

RefusedMemory::RefusedMemory(LONG nth, Extent extent) {
    countdown = nth;
    allFromThere = extent == AllFromThere;
    refused = 0;
#ifdef NR_GUARDED
    SetGuardPagesRefusal(&IsRefused);
#else
    RedirectAll(reinterpret_cast<void*>(&RefusableMalloc), reinterpret_cast<void*>(&RefusableRealloc));
#endif
}

RefusedMemory::~RefusedMemory() {
#ifdef NR_GUARDED
    SetGuardPagesRefusal(nullptr);
#else
    RedirectAll(reinterpret_cast<void*>(&std::malloc), reinterpret_cast<void*>(&std::realloc));
#endif
}

LONG RefusedMemory::Refused() const {
    return refused;
}
