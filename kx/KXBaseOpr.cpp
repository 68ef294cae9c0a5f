#include "KXBaseOpr.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

const size_t FirstCapacity = 1024;
const size_t FirstSiteCapacity = 64;

// Heap blocks are aligned to 16 bytes. The blocks of one page get neighbouring slots, which suits the processor's
// cache: objects are mostly made and freed in the order of their addresses. The multiplication spreads the pages.
size_t HashAddress(uint64_t address, size_t mask) {
    return static_cast<size_t>((((address >> 12) * 0x9E3779B97F4A7C15ull) >> 32) + ((address >> 4) & 0xFF)) & mask;
}

// Views on several threads register their objects here.
SRWLOCK g_lock = SRWLOCK_INIT;

class Locked {
public:
    Locked() { ::AcquireSRWLockExclusive(&g_lock); }
    ~Locked() { ::ReleaseSRWLockExclusive(&g_lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

size_t HashPointer(const void* p, size_t mask) {
    return HashAddress(reinterpret_cast<uint64_t>(p), mask);
}

size_t HashSite(const char* file, int line, size_t mask) {
    return HashAddress(reinterpret_cast<uint64_t>(file) + static_cast<uint64_t>(line) * 16, mask);
}

} // namespace

// ---- Construction

CKXMemoryManager* CKXMemoryManager::Instance() {
    // Never destroyed: modules that are unloaded after this one still deregister their last objects.
    alignas(CKXMemoryManager) static unsigned char place[sizeof(CKXMemoryManager)];
    static CKXMemoryManager* const instance = new (place) CKXMemoryManager;
    return instance;
}

// ---- Queries

int CKXMemoryManager::IsKnown(const void* p) const {
    const Locked locked;
    return IsListed(p);
}

bool CKXMemoryManager::IsListed(const void* p) const {
    return p != nullptr && m_capacity != 0 && m_entries[FindSlot(p)].pointer == p;
}

int CKXMemoryManager::GetSites(CArray<CKXMemorySite, CKXMemorySite&>& sites) const {
    sites.RemoveAll();
    const Locked locked;
    for (int i = 0; i < m_siteCount; ++i) {
        if (m_sites[i].count == 0) {
            continue;
        }
        CKXMemorySite site;
        site.file = CString(m_sites[i].name);
        site.line = m_sites[i].line;
        site.count = m_sites[i].count;
        // Insertion into the sorted list; the same file may have several literals, whose counts belong together.
        INT_PTR at = sites.GetSize();
        bool same = false;
        while (at > 0) {
            const CKXMemorySite& before = sites.GetData()[at - 1];
            const int order = before.file.Compare(site.file);
            if (order == 0 && before.line == site.line) {
                same = true;
                break;
            }
            if (order < 0 || (order == 0 && before.line < site.line)) {
                break;
            }
            --at;
        }
        if (same) {
            sites.GetData()[at - 1].count += site.count;
        } else {
            sites.InsertAt(at, site);
        }
    }
    return static_cast<int>(sites.GetSize());
}

CString CKXMemoryManager::GetReport() const {
    CArray<CKXMemorySite, CKXMemorySite&> sites;
    GetSites(sites);
    CString report;
    report.Format(L"%d live blocks\n", m_count);
    for (INT_PTR i = 0; i < sites.GetSize(); ++i) {
        const CKXMemorySite& site = sites.GetData()[i];
        CString line;
        line.Format(L"(%d): %d\n", site.line, site.count);
        report += site.file;
        report += line;
    }
    return report;
}

// ---- Registration

void CKXMemoryManager::AddMemoryInfo(void* p, const char* file, int line) noexcept {
    if (p == nullptr) {
        return;
    }
    const Locked locked;
    if (static_cast<size_t>(m_count + 1) * 2 > m_capacity && !GrowEntries()) {
        return;
    }
    const int site = FindOrAddSite(file != nullptr ? file : "", line);
    if (site < 0) {
        return;
    }
    Entry& entry = m_entries[FindSlot(p)];
    if (entry.pointer == p) {
        --m_sites[entry.site].count;
    } else {
        entry.pointer = p;
        ++m_count;
    }
    entry.site = site;
    ++m_sites[site].count;
}

void CKXMemoryManager::RemoveMemoryInfo(void* p, const char*, int) noexcept {
    if (p == nullptr) {
        return;
    }
    const Locked locked;
    if (!IsListed(p)) {
        ++m_unknown;
        return;
    }
    const size_t mask = m_capacity - 1;
    size_t hole = FindSlot(p);
    --m_sites[m_entries[hole].site].count;
    --m_count;
    // Entries after the hole that would no longer be found from their own slot are moved into it.
    for (size_t next = (hole + 1) & mask; m_entries[next].pointer != nullptr; next = (next + 1) & mask) {
        const size_t home = HashPointer(m_entries[next].pointer, mask);
        if (((next - home) & mask) >= ((next - hole) & mask)) {
            m_entries[hole] = m_entries[next];
            hole = next;
        }
    }
    m_entries[hole].pointer = nullptr;
}

// ---- Tables

// The slot that holds p, or the empty one where it belongs. There is always an empty one.
size_t CKXMemoryManager::FindSlot(const void* p) const {
    const size_t mask = m_capacity - 1;
    size_t slot = HashPointer(p, mask);
    while (m_entries[slot].pointer != nullptr && m_entries[slot].pointer != p) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

bool CKXMemoryManager::GrowEntries() {
    const size_t capacity = m_capacity != 0 ? m_capacity * 2 : FirstCapacity;
    Entry* entries = static_cast<Entry*>(std::calloc(capacity, sizeof(Entry)));
    if (entries == nullptr) {
        return false;
    }
    Entry* const old = m_entries;
    const size_t oldCapacity = m_capacity;
    m_entries = entries;
    m_capacity = capacity;
    for (size_t i = 0; i < oldCapacity; ++i) {
        if (old[i].pointer != nullptr) {
            m_entries[FindSlot(old[i].pointer)] = old[i];
        }
    }
    std::free(old);
    return true;
}

bool CKXMemoryManager::GrowSites() {
    const size_t capacity = m_siteCapacity != 0 ? m_siteCapacity * 2 : FirstSiteCapacity;
    Site* sites = static_cast<Site*>(std::realloc(m_sites, capacity / 2 * sizeof(Site)));
    if (sites == nullptr) {
        return false;
    }
    m_sites = sites;
    int* slots = static_cast<int*>(std::calloc(capacity, sizeof(int)));
    if (slots == nullptr) {
        return false;
    }
    for (int i = 0; i < m_siteCount; ++i) {
        size_t slot = HashSite(m_sites[i].literal, m_sites[i].line, capacity - 1);
        while (slots[slot] != 0) {
            slot = (slot + 1) & (capacity - 1);
        }
        slots[slot] = i + 1;
    }
    std::free(m_siteSlots);
    m_siteSlots = slots;
    m_siteCapacity = capacity;
    return true;
}

// Index of the place, or -1 without memory. It is found by the literal's address and confirmed by its text: another
// module may have been loaded at the address of the first one.
int CKXMemoryManager::FindOrAddSite(const char* file, int line) {
    if (static_cast<size_t>(m_siteCount + 1) * 2 > m_siteCapacity && !GrowSites()) {
        return -1;
    }
    const size_t mask = m_siteCapacity - 1;
    size_t slot = HashSite(file, line, mask);
    while (m_siteSlots[slot] != 0) {
        const Site& site = m_sites[m_siteSlots[slot] - 1];
        if (site.literal == file && site.line == line && std::strcmp(site.name, file) == 0) {
            return m_siteSlots[slot] - 1;
        }
        slot = (slot + 1) & mask;
    }
    const size_t length = std::strlen(file) + 1;
    char* name = static_cast<char*>(std::malloc(length));
    if (name == nullptr) {
        return -1;
    }
    std::memcpy(name, file, length);
    m_sites[m_siteCount] = {file, name, line, 0};
    m_siteSlots[slot] = ++m_siteCount;
    return m_siteCount - 1;
}

// ---- Stopwatch

int CScopeTimer::s_enabled = 0;

void CScopeTimer::Enable(int enable) {
    s_enabled = enable;
}

void CScopeTimer::Start() {
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    m_start = now.QuadPart;
    m_running = 1;
}

void CScopeTimer::Log() {
    LARGE_INTEGER now;
    LARGE_INTEGER frequency;
    ::QueryPerformanceCounter(&now);
    ::QueryPerformanceFrequency(&frequency);
    const double microseconds =
        static_cast<double>(now.QuadPart - m_start) * 1e6 / static_cast<double>(frequency.QuadPart);
    CString text;
    text.Format(L": %.1f us\n", microseconds);
    text = (m_wide != nullptr ? CString(m_wide) : CString(m_narrow)) + text;
    ::OutputDebugStringW(text);
}
