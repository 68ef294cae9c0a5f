#include "FilledHeap.h"

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

#ifdef NR_GUARDED
constexpr bool kGuarded = true; // The modules' own allocator checks more.
#else
constexpr bool kGuarded = false;
#endif
constexpr int kFresh = 0xCD;
constexpr int kFreed = 0xDD;
constexpr size_t kKept = 20000; // blocks
constexpr size_t kLargestKept = 1 << 16;

// The C runtime's own functions, which no replaced import reaches.
void*(__cdecl* g_malloc)(size_t);
void(__cdecl* g_free)(void*);

// All plain data: nothing here may allocate memory.
SRWLOCK g_lock = SRWLOCK_INIT;
void* g_kept[kKept];
size_t g_next;

class Locked {
public:
    Locked() { ::AcquireSRWLockExclusive(&g_lock); }
    ~Locked() { ::ReleaseSRWLockExclusive(&g_lock); }
};

void Release(void* block) {
    if (block == nullptr) {
        return;
    }
    const auto* bytes = static_cast<const unsigned char*>(block);
    const size_t size = _msize(block);
    for (size_t i = 0; i < size; ++i) {
        if (bytes[i] != kFreed) {
            std::fprintf(stderr, "filled heap: byte %zu of a block of %zu bytes at %p was written after it was freed\n",
                         i, size, block);
            std::fflush(stderr);
            __builtin_trap();
        }
    }
    g_free(block);
}

void* __cdecl Malloc(size_t size) {
    void* const block = g_malloc(size);
    if (block != nullptr) {
        std::memset(block, kFresh, size);
    }
    return block;
}

void __cdecl Free(void* block) {
    if (block == nullptr) {
        return;
    }
    const size_t size = _msize(block);
    std::memset(block, kFreed, size);
    if (size > kLargestKept) {
        g_free(block);
        return;
    }
    void* old = block;
    {
        const Locked locked;
        std::swap(g_kept[g_next], old);
        g_next = (g_next + 1) % kKept;
    }
    Release(old);
}

// Always moves.
void* __cdecl Realloc(void* block, size_t size) {
    if (block == nullptr) {
        return Malloc(size);
    }
    if (size == 0) {
        Free(block);
        return nullptr;
    }
    void* const moved = Malloc(size);
    if (moved != nullptr) {
        std::memcpy(moved, block, std::min(size, _msize(block)));
        Free(block);
    }
    return moved;
}

} // namespace

FilledHeap::FilledHeap() : m_patch(ImportPatch::LibrariesAndProgram) {
    if (kGuarded) {
        return;
    }
    const HMODULE runtime = ::GetModuleHandleW(L"msvcrt.dll");
    g_malloc = reinterpret_cast<decltype(g_malloc)>(reinterpret_cast<void*>(::GetProcAddress(runtime, "malloc")));
    g_free = reinterpret_cast<decltype(g_free)>(reinterpret_cast<void*>(::GetProcAddress(runtime, "free")));
    m_patch.Replace("malloc", &Malloc);
    m_patch.Replace("free", &Free);
    m_patch.Replace("realloc", &Realloc);
}

FilledHeap::~FilledHeap() {
    for (void*& block : g_kept) {
        void* old = nullptr;
        std::swap(block, old);
        Release(old);
    }
}
