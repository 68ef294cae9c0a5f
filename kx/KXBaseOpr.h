// The helper library's basics: the memory registry that traces leaks, and the named stopwatch.
// Layer 2: kx (uses afx).
#pragma once

#include <afxwin.h>
#include <afxtempl.h>

// How a class or function of nrkx.dll is declared.
#ifdef NRKX_EXPORTS
#define NRKX_API __declspec(dllexport)
#else
#define NRKX_API __declspec(dllimport) // Taken from the DLL.
#endif

// The blocks in use that were registered at one place of the sources.
struct CKXMemorySite {
    CString file;  // As the compiler names it.
    int line = 0;  // From 1.
    int count = 0; // Blocks.
};

// Registry of the heap objects of the system: each is added right after new and removed right before delete, so that
// whatever is listed at the end was leaked. It changes no behaviour: nothing here throws, and a wrong pointer is only
// counted. For any thread: views on several threads share it.
class NRKX_API CKXMemoryManager {
public:
    // Exists until the process ends, also while other modules are being unloaded.
    static CKXMemoryManager* Instance();

    // p was allocated at file:line. Null is ignored. A pointer that is listed already was freed without being removed
    // and allocated again: the new place replaces the old one.
    void AddMemoryInfo(void* p, const char* file, int line) noexcept;

    // p is about to be freed at file:line. Null is ignored, a pointer that is not listed counts as unknown.
    void RemoveMemoryInfo(void* p, const char* file, int line) noexcept;

    // Blocks in use now. Compare two readings to see whether a piece of work leaks.
    int GetCount() const { return m_count; }

    // Whether p is listed.
    int IsKnown(const void* p) const;

    // How often a pointer was removed that was not listed: a deregistration without its registration, or a second one.
    int GetUnknownCount() const { return m_unknown; }

    // The places with blocks in use, by file and then by line. Returns how many there are.
    int GetSites(CArray<CKXMemorySite, CKXMemorySite&>& sites) const;

    // The same as text: a head line with the total, then one line "file(line): count" for each place.
    CString GetReport() const;

private:
    // One registered pointer; site is an index into the table of places. An empty slot has a null pointer.
    struct Entry {
        const void* pointer;
        int site;
    };
    // One place of the sources. name is a copy, as the module with the literal may be unloaded before the report.
    struct Site {
        const char* literal;
        char* name;
        int line;
        int count;
    };

    CKXMemoryManager() = default;
    CKXMemoryManager(const CKXMemoryManager&) = delete;
    CKXMemoryManager& operator=(const CKXMemoryManager&) = delete;

    // These are called with the lock held.
    bool IsListed(const void* p) const;
    size_t FindSlot(const void* p) const;
    bool GrowEntries();
    bool GrowSites();
    int FindOrAddSite(const char* file, int line);

    // Both tables have a power of two of slots and are at most half full. m_siteSlots holds indices into m_sites,
    // plus 1.
    Entry* m_entries = nullptr;
    size_t m_capacity = 0;
    int m_count = 0;
    int m_unknown = 0;
    Site* m_sites = nullptr;
    int* m_siteSlots = nullptr;
    int m_siteCount = 0;
    size_t m_siteCapacity = 0;
};

// Stopwatch for the life of a scope: writes "label: n us" with OutputDebugString when it ends, if logging is switched
// on. When it is off, the default, the only cost is the test of a flag. The label must exist as long as the timer.
class NRKX_API CScopeTimer {
public:
    // `label` is borrowed.
    explicit CScopeTimer(const char* label) : m_narrow(label) {
        if (s_enabled) {
            Start();
        }
    }
    // The same with a wide label.
    explicit CScopeTimer(const wchar_t* label) : m_wide(label) {
        if (s_enabled) {
            Start();
        }
    }
    ~CScopeTimer() {
        if (m_running) {
            Log();
        }
    }
    CScopeTimer(const CScopeTimer&) = delete;
    CScopeTimer& operator=(const CScopeTimer&) = delete;

    // For all timers made from now on; running ones end as they began.
    static void Enable(int enable);
    static int IsEnabled() { return s_enabled; }

private:
    void Start();
    void Log();

    const char* m_narrow = nullptr;
    const wchar_t* m_wide = nullptr;
    int m_running = 0;
    long long m_start = 0;
    static int s_enabled;
};
