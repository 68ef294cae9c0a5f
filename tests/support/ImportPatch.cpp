#include "ImportPatch.h"

#include <cstring>

namespace {

template <class T>
T* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

// The first import record; the last one has no name. Null where the module imports nothing.
IMAGE_IMPORT_DESCRIPTOR* Imports(HMODULE module) {
    const auto* head = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const DWORD offset = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    return offset != 0 ? At<IMAGE_IMPORT_DESCRIPTOR>(module, offset) : nullptr;
}

} // namespace

ImportPatch::ImportPatch(Modules modules) {
    for (LPCWSTR name : {L"NRVectorView.dll", L"NRVectorViewOpen.dll", L"nrafx.dll", L"nrkx.dll"}) {
        if (const HMODULE module = ::GetModuleHandleW(name)) {
            m_modules.push_back(module);
        }
    }
    if (modules == LibrariesAndProgram) {
        m_modules.push_back(::GetModuleHandleW(nullptr));
    }
}

ImportPatch::ImportPatch(LPCWSTR module) : m_modules({::GetModuleHandleW(module)}) {}

ImportPatch::~ImportPatch() {
    for (size_t i = m_changes.size(); i-- > 0;) {
        Write(m_changes[i].place, m_changes[i].before);
    }
}

int ImportPatch::ReplaceAddress(const char* function, void* replacement) {
    int found = 0;
    for (const HMODULE module : m_modules) {
        for (auto* from = Imports(module); from != nullptr && from->Name != 0; ++from) {
            auto* names = At<IMAGE_THUNK_DATA>(module, from->OriginalFirstThunk);
            auto* places = At<IMAGE_THUNK_DATA>(module, from->FirstThunk);
            for (; names->u1.AddressOfData != 0; ++names, ++places) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
                    continue;
                }
                const auto* name = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(names->u1.AddressOfData));
                if (std::strcmp(reinterpret_cast<const char*>(name->Name), function) == 0) {
                    auto** place = reinterpret_cast<void**>(&places->u1.Function);
                    m_changes.push_back({place, *place});
                    Write(place, replacement);
                    ++found;
                }
            }
        }
    }
    return found;
}

void ImportPatch::Write(void** place, void* value) {
    DWORD before = 0;
    ::VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    *place = value;
    ::VirtualProtect(place, sizeof *place, before, &before);
}
