// A table from Windows handles to entries: open addressing with linear probing; nothing is allocated per entry.
// Internal to nrafx.dll. Layer 1: afx.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

template <class T>
struct HandleEntry {
    void* handle = nullptr; // null in a free place
    T* object = nullptr;
    bool temporary = false;
};

// Pointers to entries are valid until the table changes. Only Add allocates; when memory is short it throws and leaves
// the table as it was.
template <class T>
class HandleTable {
public:
    using Entry = HandleEntry<T>;

    HandleTable() : m_entries(64), m_mask(63) {}

    // Null when there is none.
    Entry* Find(const void* handle) {
        for (size_t i = Home(handle);; i = Next(i)) {
            if (m_entries[i].handle == nullptr) {
                return nullptr;
            }
            if (m_entries[i].handle == handle) {
                return &m_entries[i];
            }
        }
    }
    // For a handle without an entry.
    void Add(const Entry& entry) {
        if (2 * (m_count + 1) > m_entries.size()) {
            Grow();
        }
        ++m_count;
        Put(entry);
    }
    void Erase(const Entry* entry) { Erase(static_cast<size_t>(entry - m_entries.data())); }
    // Takes out each entry for which isOver gives true; it must not change the table, and may be asked about an entry
    // more than once as long as it gives false.
    template <class IsOver>
    void EraseEach(IsOver isOver) {
        for (size_t i = 0; i < m_entries.size();) {
            if (m_entries[i].handle != nullptr && isOver(m_entries[i])) {
                Erase(i); // which may move another entry to this place
            } else {
                ++i;
            }
        }
    }

private:
    void Put(const Entry& entry) {
        size_t i = Home(entry.handle);
        while (m_entries[i].handle != nullptr) {
            i = Next(i);
        }
        m_entries[i] = entry;
    }
    size_t Home(const void* handle) const {
        const uint64_t mixed = reinterpret_cast<uintptr_t>(handle) * 0x9E3779B97F4A7C15u;
        return static_cast<size_t>(mixed >> 32) & m_mask;
    }
    size_t Next(size_t i) const { return (i + 1) & m_mask; }
    void Grow() {
        std::vector<Entry> old(m_entries.size() * 2);
        old.swap(m_entries);
        m_mask = m_entries.size() - 1;
        for (const Entry& entry : old) {
            if (entry.handle != nullptr) {
                Put(entry);
            }
        }
    }
    void Erase(size_t hole) {
        for (size_t i = Next(hole); m_entries[i].handle != nullptr; i = Next(i)) {
            const size_t home = Home(m_entries[i].handle);
            // The entry may move back into the hole unless its home comes after it.
            const bool stays = hole < i ? hole < home && home <= i : hole < home || home <= i;
            if (stays) {
                continue;
            }
            m_entries[hole] = m_entries[i];
            hole = i;
        }
        m_entries[hole] = Entry();
        --m_count;
    }

    std::vector<Entry> m_entries; // their number is a power of two, at least twice the entries in use
    size_t m_mask;                // that number less one
    size_t m_count = 0;
};
