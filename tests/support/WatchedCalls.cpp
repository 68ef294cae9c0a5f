#include "WatchedCalls.h"

#ifdef NR_GUARDED
#include "GuardPages.h"
#endif

#include <type_traits>

namespace {

#ifdef NR_GUARDED
constexpr bool kGuarded = true; // The modules' own allocator is used, and nothing is counted.
void RefuseByGuardPages(bool (*isRefused)()) {
    SetGuardPagesRefusal(isRefused);
}
#else
constexpr bool kGuarded = false;
void RefuseByGuardPages(bool (*)()) {}
#endif

DWORD g_thread; // Calls of other threads are neither counted nor refused.
LONG g_blocks;
LONG g_objects;
int g_kind;
LONG g_nth; // 0: nothing is refused
bool g_allFromThere;
LONG g_seen;
LONG g_refused;

bool IsWatched() {
    return ::GetCurrentThreadId() == g_thread;
}

bool IsRefused(int kind) {
    if (kind != g_kind || !IsWatched()) {
        return false;
    }
    const LONG number = ++g_seen;
    if (g_nth == 0 || number < g_nth || (number > g_nth && !g_allFromThere)) {
        return false;
    }
    ++g_refused;
    return true;
}

// ---- Memory --------------------------------------------------------------------------------------------------------

void*(__cdecl* g_malloc)(size_t);
void*(__cdecl* g_calloc)(size_t, size_t);
void*(__cdecl* g_realloc)(void*, size_t);
void(__cdecl* g_free)(void*);

template <class Function>
void FindInRuntime(Function*& found, const char* name) {
    found =
        reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"msvcrt.dll"), name)));
}

void* Counted(void* block) {
    g_blocks += block != nullptr && IsWatched();
    return block;
}

// The program's own calls are counted, because it frees what the DLLs have taken, and the reverse.
void* __cdecl CountedMalloc(size_t size) {
    return Counted(g_malloc(size));
}
void* __cdecl CountedCalloc(size_t count, size_t size) {
    return Counted(g_calloc(count, size));
}
void* __cdecl CountedRealloc(void* block, size_t size) {
    void* const moved = g_realloc(block, size);
    if (IsWatched()) {
        g_blocks += (block == nullptr && moved != nullptr) - (block != nullptr && size == 0);
    }
    return moved;
}
void __cdecl CountedFree(void* block) {
    g_blocks -= block != nullptr && IsWatched();
    g_free(block);
}

void* __cdecl WatchedMalloc(size_t size) {
    return IsRefused(WatchedCalls::Memory) ? nullptr : CountedMalloc(size);
}
void* __cdecl WatchedCalloc(size_t count, size_t size) {
    return IsRefused(WatchedCalls::Memory) ? nullptr : CountedCalloc(count, size);
}
void* __cdecl WatchedRealloc(void* block, size_t size) {
    return IsRefused(WatchedCalls::Memory) ? nullptr : CountedRealloc(block, size);
}

// ---- GDI and files -------------------------------------------------------------------------------------------------

template <class R>
R Refusal() {
    if constexpr (std::is_same_v<R, HANDLE>) {
        ::SetLastError(ERROR_ACCESS_DENIED); // CreateFileW, the only one
        return INVALID_HANDLE_VALUE;
    } else {
        ::SetLastError(ERROR_DISK_FULL);
        return R();
    }
}

// A system's function of one of the two kinds.
template <int Kind, auto Function>
struct Watched;
template <int Kind, class R, class... A, R(WINAPI* Function)(A...)>
struct Watched<Kind, Function> {
    static R WINAPI Call(A... arguments) {
        if (IsRefused(Kind)) {
            return Refusal<R>();
        }
        const R result = Function(arguments...);
        g_objects += Kind == WatchedCalls::Drawing && result != R() && IsWatched();
        return result;
    }
};

// A function that frees a GDI object.
template <auto Function>
struct Freed;
template <class... A, BOOL(WINAPI* Function)(A...)>
struct Freed<Function> {
    static BOOL WINAPI Call(A... arguments) {
        const BOOL done = Function(arguments...);
        g_objects -= done && IsWatched();
        return done;
    }
};

} // namespace

WatchedCalls::WatchedCalls() : m_all(ImportPatch::LibrariesAndProgram) {
    g_thread = ::GetCurrentThreadId();
    g_blocks = 0;
    g_objects = 0;
    FindInRuntime(g_malloc, "malloc");
    FindInRuntime(g_calloc, "calloc");
    FindInRuntime(g_realloc, "realloc");
    FindInRuntime(g_free, "free");
    RefuseNone();
    if (!kGuarded) {
        m_all.Replace("malloc", &CountedMalloc);
        m_all.Replace("calloc", &CountedCalloc);
        m_all.Replace("realloc", &CountedRealloc);
        m_all.Replace("free", &CountedFree);
        m_libraries.Replace("malloc", &WatchedMalloc);
        m_libraries.Replace("calloc", &WatchedCalloc);
        m_libraries.Replace("realloc", &WatchedRealloc);
    }
    RefuseByGuardPages([] { return IsRefused(Memory); });
#define NR_DRAWING(function) m_libraries.Replace(#function, &Watched<Drawing, &::function>::Call)
    NR_DRAWING(CreateBitmap);
    NR_DRAWING(CreateBrushIndirect);
    NR_DRAWING(CreateCompatibleBitmap);
    NR_DRAWING(CreateCompatibleDC);
    NR_DRAWING(CreateFontIndirectW);
    NR_DRAWING(CreateFontW);
    NR_DRAWING(CreateHatchBrush);
    NR_DRAWING(CreatePen);
    NR_DRAWING(CreatePenIndirect);
    NR_DRAWING(CreateRectRgn);
    NR_DRAWING(CreateRectRgnIndirect);
    NR_DRAWING(CreateSolidBrush);
    NR_DRAWING(ExtCreatePen);
#undef NR_DRAWING
    m_libraries.Replace("DeleteObject", &Freed<&::DeleteObject>::Call);
    m_libraries.Replace("DeleteDC", &Freed<&::DeleteDC>::Call);
#define NR_FILES(function) m_libraries.Replace(#function, &Watched<Files, &::function>::Call)
    NR_FILES(CreateFileW);
    NR_FILES(FlushFileBuffers);
    NR_FILES(GetTempFileNameW);
    NR_FILES(MoveFileExW);
    NR_FILES(ReplaceFileW);
    NR_FILES(WriteFile);
#undef NR_FILES
}

WatchedCalls::~WatchedCalls() {
    RefuseByGuardPages(nullptr);
}

void WatchedCalls::Refuse(Kind kind, LONG nth, Extent extent) {
    g_kind = kind;
    g_nth = nth;
    g_allFromThere = extent == AllFromThere;
    g_seen = 0;
    g_refused = 0;
}

LONG WatchedCalls::Seen() const {
    return g_seen;
}

LONG WatchedCalls::Refused() const {
    return g_refused;
}

LONG WatchedCalls::Blocks() const {
    return g_blocks;
}

LONG WatchedCalls::DrawingObjects() const {
    return g_objects;
}
