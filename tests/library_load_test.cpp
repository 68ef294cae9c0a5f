// The library loaded by hand and given back, as a host with plug-ins does it. Layer 16: tests.
#include <windows.h>

#include <gtest/gtest.h>

namespace {

using Member = void (*)(void*);

Member Exported(HMODULE library, const char* name) {
    return reinterpret_cast<Member>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

} // namespace

TEST(LibraryLoad, ItIsLoadedAndUnloadedManyTimesInOneProcess) {
    // A view is made in between, so that everything that makes itself at first use is there to be taken down.
    alignas(16) static char place[1 << 18];
    for (int round = 0; round < 30; ++round) {
        const HMODULE library = ::LoadLibraryW(L"NRVectorView.dll");
        ASSERT_NE(library, nullptr) << round << ": " << ::GetLastError();
        const Member construct = Exported(library, "_ZN11CVectorViewC1Ev");
        const Member destruct = Exported(library, "_ZN11CVectorViewD1Ev");
        ASSERT_TRUE(construct != nullptr && destruct != nullptr);
        construct(place);
        destruct(place);
        ASSERT_TRUE(::FreeLibrary(library));
        for (const wchar_t* name : {L"NRVectorView.dll", L"nrkx.dll", L"nrafx.dll"}) {
            ASSERT_EQ(::GetModuleHandleW(name), nullptr) << round;
        }
    }
}
