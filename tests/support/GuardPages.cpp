#include "GuardPages.h"

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <new>

extern "C" IMAGE_DOS_HEADER __ImageBase; // of the module that this copy is linked into

namespace {

enum class Form : std::uint32_t { Single = 0x53494E47, Array = 0x41525259 };
enum class Place : std::uint32_t { Slot = 1, Pages = 2, Heap = 3 };

// Lies right before the block. An underrun overwrites it, which delete notices.
struct Header {
    Form form;
    Place place;
    void* base; // the slot, or what VirtualAlloc or HeapAlloc gave
    std::size_t size;
    std::uint64_t check; // all of the above mixed with the header's own address
};

constexpr std::size_t kPage = 4096;
// Nearly all blocks fit one page. Those are in slots, a page with an inaccessible one after it, which are cut from
// slabs and never given back: allocating and freeing one only changes a page's protection, where pages of its own would
// cost the system four changes of its memory map.
constexpr std::size_t kSlot = 2 * kPage;
constexpr LONG kSlotsInSlab = 128;
// A live guarded block costs the host system two memory mappings, of which Linux grants a process 65,530 (pages of
// its own: up to three). Blocks beyond these counts come from the process heap, with canaries in place of pages.
constexpr LONG kMaxSlots = 20000;
constexpr LONG kMaxPages = 2000;
// A freed block stays inaccessible until this many later ones were freed.
constexpr LONG kQuarantine = 4096;
constexpr LONG kQueue = 32768; // more than there are slots; a power of two
constexpr unsigned char kFresh = 0xCD;
constexpr unsigned char kCanary = 0xFD;
constexpr std::size_t kHeapTail = 16;

struct Shared {
    volatile LONG lock; // of the queue
    ULONG head;         // the free slots, in the order in which they were freed
    ULONG tail;
    void* queue[kQueue];
    LONG slots; // cut so far
    LONG livePages;
    ULONG nextFreed;
    void* quarantine[kQuarantine / 8]; // pages of their own
    bool (*isRefused)();               // SetGuardPagesRefusal
};
static_assert(kQueue > kMaxSlots + kQuarantine + kSlotsInSlab);

// One record for each process: each module maps the same named section.
Shared* OpenShared() {
    wchar_t name[64];
    _snwprintf(name, 64, L"Local\\nr_guard_pages_%lu", GetCurrentProcessId());
    const HANDLE section =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(sizeof(Shared)), name);
    return section ? static_cast<Shared*>(MapViewOfFile(section, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Shared))) : nullptr;
}

Shared* GetShared() {
    // No function-local static: its guard could allocate before the runtime is up. Two threads at once map it twice,
    // which is harmless.
    static Shared* shared;
    if (!shared) {
        shared = OpenShared();
    }
    return shared;
}

[[noreturn]] void Fail(const char* what, const void* block) {
    std::fprintf(stderr, "guard pages: %s, block %p\n", what, block);
    std::fflush(stderr);
    __builtin_trap();
}

std::uint64_t Check(const Header& h, const void* at) {
    return reinterpret_cast<std::uint64_t>(at) * 0x9E3779B97F4A7C15u ^ reinterpret_cast<std::uint64_t>(h.base) ^
           (h.size << 17) ^ (static_cast<std::uint64_t>(h.form) << 32) ^ static_cast<std::uint64_t>(h.place);
}

constexpr std::size_t RoundUp(std::size_t n, std::size_t to) {
    return (n + to - 1) / to * to;
}

// How exactly the block can end at the page. An object's size is a multiple of its alignment, so an array may end
// exactly there. A single allocation may be a head with a tail of another type after it, so it keeps an alignment of 8
// at least; the bytes between its end and the page are canaries.
std::size_t Alignment(std::size_t size, Form form, std::size_t wanted) {
    if (wanted) {
        return wanted;
    }
    if (size % 16 == 0) {
        return 16;
    }
    if (size % 8 == 0 || form == Form::Single) {
        return 8;
    }
    return size % 4 == 0 ? 4 : size % 2 == 0 ? 2 : 1;
}

void* Fill(unsigned char* block, void* base, std::size_t size, std::size_t tail, Form form, Place place) {
    std::memset(block, kFresh, size);
    std::memset(block + size, kCanary, tail);
    // A block that ends exactly at the page may begin at any byte, and its header with it: hence the copies.
    unsigned char* const at = block - sizeof(Header);
    Header h{form, place, base, size, 0};
    h.check = Check(h, at);
    std::memcpy(at, &h, sizeof h);
    return block;
}

class QueueLock {
public:
    explicit QueueLock(Shared& shared) : m_shared(shared) {
        while (InterlockedExchange(&m_shared.lock, 1) != 0) {
            Sleep(0);
        }
    }
    ~QueueLock() { InterlockedExchange(&m_shared.lock, 0); }
    QueueLock(const QueueLock&) = delete;
    QueueLock& operator=(const QueueLock&) = delete;

private:
    Shared& m_shared;
};

void PutSlot(Shared& shared, void* slot) {
    const QueueLock lock(shared);
    shared.queue[shared.tail++ % kQueue] = slot;
}

// A slot that was freed long enough ago, else one that was never used, else null.
unsigned char* TakeSlot(Shared& shared) {
    const QueueLock lock(shared);
    if (shared.tail - shared.head <= static_cast<ULONG>(kQuarantine) && shared.slots < kMaxSlots + kQuarantine) {
        auto* const slab = static_cast<unsigned char*>(
            VirtualAlloc(nullptr, kSlotsInSlab * kSlot, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
        if (slab) {
            // To the front, because freed slots have to wait.
            for (LONG i = kSlotsInSlab; i-- > 0;) {
                shared.queue[--shared.head % kQueue] = slab + static_cast<std::size_t>(i) * kSlot;
            }
            shared.slots += kSlotsInSlab;
        }
    }
    if (shared.tail - shared.head <= static_cast<ULONG>(kQuarantine)) {
        return nullptr;
    }
    return static_cast<unsigned char*>(shared.queue[shared.head++ % kQueue]);
}

// The place of a block with its header that ends, except for its alignment, at an inaccessible page; or null.
unsigned char* TakeGuarded(Shared& shared, std::size_t pages, Place& place) {
    DWORD before = 0;
    if (pages == kPage) {
        unsigned char* const slot = TakeSlot(shared);
        place = Place::Slot;
        if (!slot || VirtualProtect(slot, kPage, PAGE_READWRITE, &before)) {
            return slot;
        }
        PutSlot(shared, slot);
        return nullptr;
    }
    place = Place::Pages;
    if (InterlockedIncrement(&shared.livePages) <= kMaxPages) {
        auto* const base =
            static_cast<unsigned char*>(VirtualAlloc(nullptr, pages + kPage, MEM_RESERVE, PAGE_NOACCESS));
        if (base && VirtualAlloc(base, pages, MEM_COMMIT, PAGE_READWRITE)) {
            return base;
        }
        if (base) {
            VirtualFree(base, 0, MEM_RELEASE);
        }
    }
    InterlockedDecrement(&shared.livePages);
    return nullptr;
}

void* Allocate(std::size_t size, Form form, std::size_t wanted) {
    const std::size_t align = Alignment(size, form, wanted);
    if (size > static_cast<std::size_t>(PTRDIFF_MAX) - 4 * kPage - align) {
        return nullptr;
    }
    Shared* const shared = GetShared();
    if (align <= kPage && shared) {
        const std::size_t body = RoundUp(size, align);
        const std::size_t pages = RoundUp(body + sizeof(Header), kPage);
        Place place = Place::Pages;
        if (unsigned char* const base = TakeGuarded(*shared, pages, place)) {
            return Fill(base + pages - body, base, size, body - size, form, place);
        }
    }
    const std::size_t front = RoundUp(sizeof(Header), 16) + align;
    auto* const base = static_cast<unsigned char*>(HeapAlloc(GetProcessHeap(), 0, front + size + kHeapTail));
    if (!base) {
        return nullptr;
    }
    const auto first = reinterpret_cast<std::uintptr_t>(base) + sizeof(Header);
    auto* const block = base + (RoundUp(first, align < 16 ? 16 : align) - reinterpret_cast<std::uintptr_t>(base));
    return Fill(block, base, size, kHeapTail, form, Place::Heap);
}

void Release(void* pointer, Form form) {
    if (!pointer) {
        return;
    }
    auto* const block = static_cast<unsigned char*>(pointer);
    unsigned char* const at = block - sizeof(Header);
    Header h;
    std::memcpy(&h, at, sizeof h); // a block that was freed before faults here
    if (h.check != Check(h, at)) {
        Fail("freed what was never allocated, or something wrote before the block", pointer);
    }
    if (h.form != form) {
        Fail("new and delete of different form (array and single)", pointer);
    }

    const auto end = reinterpret_cast<std::uintptr_t>(block + h.size);
    const std::uintptr_t page = RoundUp(end, kPage);
    const std::size_t tail = h.place != Place::Heap ? page - end : kHeapTail;
    for (std::size_t i = 0; i < tail; i++) {
        if (block[h.size + i] != kCanary) {
            Fail("something wrote beyond the block", pointer);
        }
    }

    if (h.place == Place::Heap) {
        std::memset(block, kCanary, h.size);
        std::memset(at, 0, sizeof(Header));
        HeapFree(GetProcessHeap(), 0, h.base);
        return;
    }
    Shared& shared = *GetShared(); // exists, or no block would be guarded
    if (h.place == Place::Slot) {
        DWORD before = 0;
        VirtualProtect(h.base, kPage, PAGE_NOACCESS, &before);
        PutSlot(shared, h.base);
        return;
    }
    VirtualFree(h.base, page - reinterpret_cast<std::uintptr_t>(h.base), MEM_DECOMMIT);
    InterlockedDecrement(&shared.livePages);
    const auto place = static_cast<ULONG>(InterlockedIncrement(reinterpret_cast<volatile LONG*>(&shared.nextFreed)));
    if (void* const old =
            InterlockedExchangePointer(&shared.quarantine[place % std::size(shared.quarantine)], h.base)) {
        VirtualFree(old, 0, MEM_RELEASE);
    }
}

bool IsRefused() {
    Shared* const shared = GetShared();
    return shared && shared->isRefused && reinterpret_cast<HMODULE>(&__ImageBase) != GetModuleHandleW(nullptr) &&
           shared->isRefused();
}

void* Make(std::size_t size, Form form, std::size_t wanted) {
    for (;;) {
        if (void* const block = IsRefused() ? nullptr : Allocate(size, form, wanted)) {
            return block;
        }
        const std::new_handler handler = std::get_new_handler();
        if (!handler) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void* TryMake(std::size_t size, Form form, std::size_t wanted) noexcept {
    try {
        return Make(size, form, wanted);
    } catch (...) {
        return nullptr;
    }
}

std::size_t Wanted(std::align_val_t align) {
    return static_cast<std::size_t>(align);
}

} // namespace

void SetGuardPagesRefusal(bool (*isRefused)()) {
    if (Shared* const shared = GetShared()) {
        shared->isRefused = isRefused;
    }
}

void* operator new(std::size_t size) {
    return Make(size, Form::Single, 0);
}
void* operator new[](std::size_t size) {
    return Make(size, Form::Array, 0);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return TryMake(size, Form::Single, 0);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return TryMake(size, Form::Array, 0);
}
void* operator new(std::size_t size, std::align_val_t align) {
    return Make(size, Form::Single, Wanted(align));
}
void* operator new[](std::size_t size, std::align_val_t align) {
    return Make(size, Form::Array, Wanted(align));
}
void* operator new(std::size_t size, std::align_val_t align, const std::nothrow_t&) noexcept {
    return TryMake(size, Form::Single, Wanted(align));
}
void* operator new[](std::size_t size, std::align_val_t align, const std::nothrow_t&) noexcept {
    return TryMake(size, Form::Array, Wanted(align));
}
void operator delete(void* block) noexcept {
    Release(block, Form::Single);
}
void operator delete[](void* block) noexcept {
    Release(block, Form::Array);
}
void operator delete(void* block, std::size_t) noexcept {
    Release(block, Form::Single);
}
void operator delete[](void* block, std::size_t) noexcept {
    Release(block, Form::Array);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    Release(block, Form::Single);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    Release(block, Form::Array);
}
void operator delete(void* block, std::align_val_t) noexcept {
    Release(block, Form::Single);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    Release(block, Form::Array);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    Release(block, Form::Single);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    Release(block, Form::Array);
}
void operator delete(void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    Release(block, Form::Single);
}
void operator delete[](void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    Release(block, Form::Array);
}
