// The table from Windows handles to the objects that stand for them, and the layer's state of one thread.
// Internal to nrafx.dll. Layer 1: afx.
#pragma once

#include "afxwin.h"
#include <cstdint>
#include <memory>
#include <vector>

// Open addressing with linear probing; nothing is allocated per entry. A permanent entry belongs to its object,
// which takes it out again. Temporary objects belong to the map: they go at the thread's next idle time.
// The newest permanent entry waits outside the table until another comes: a pen that is made for one stroke is gone by
// then, and never costs the table a change.
template <class T>
class HandleMap {
public:
    HandleMap() : m_entries(64), m_mask(63) {}
    HandleMap(const HandleMap&) = delete;
    HandleMap& operator=(const HandleMap&) = delete;

    struct Entry {
        void* handle = nullptr;
        T* object = nullptr;
        bool temporary = false;
    };

    Entry* Find(const void* handle) {
        return m_newest.object != nullptr && m_newest.handle == handle ? &m_newest : FindInTable(handle);
    }
    T* Permanent(const void* handle) {
        const Entry* entry = Find(handle);
        return entry != nullptr && !entry->temporary ? entry->object : nullptr;
    }
    // As long as the entry stays, what stood for the handle before is not found. A temporary object is kept until idle
    // time.
    void Set(void* handle, T* object, bool temporary) {
        if (temporary) {
            Enter({handle, object, true});
            ++m_temporaries;
            return;
        }
        if (m_newest.object != nullptr && m_newest.handle != handle)
            Enter(m_newest);
        m_newest = {handle, object, false};
    }
    // Takes the entry out if it is the object's; a temporary object stays alive until idle time.
    void Remove(const void* handle, const T* object) {
        if (m_newest.object == object && m_newest.handle == handle) {
            m_newest = Entry();
            return;
        }
        Entry* entry = FindInTable(handle);
        if (entry == nullptr || entry->object != object)
            return;
        if (entry->temporary)
            m_retired.push_back(entry->object);
        Erase(static_cast<size_t>(entry - m_entries.data()));
    }
    // How many were made since they were last deleted.
    size_t GetTemporaryCount() const { return m_temporaries; }
    // Deletes the temporary objects; release must part each from its handle first.
    template <class Release>
    void DeleteTemporaries(Release release) {
        if (m_temporaries == 0)
            return;
        std::vector<T*> doomed;
        doomed.swap(m_retired);
        std::vector<Entry> kept;
        for (const Entry& entry : m_entries) {
            if (entry.handle == nullptr)
                continue;
            if (entry.temporary)
                doomed.push_back(entry.object);
            else
                kept.push_back(entry);
        }
        m_entries.assign(m_entries.size(), Entry());
        m_count = 0;
        m_temporaries = 0;
        for (const Entry& entry : kept)
            Enter(entry);
        for (T* object : doomed) {
            release(object);
            delete object;
        }
    }

private:
    Entry* FindInTable(const void* handle) {
        for (size_t i = Home(handle);; i = Next(i)) {
            if (m_entries[i].handle == nullptr)
                return nullptr;
            if (m_entries[i].handle == handle)
                return &m_entries[i];
        }
    }
    void Enter(const Entry& entered) {
        if (Entry* entry = FindInTable(entered.handle)) {
            if (entry->temporary)
                m_retired.push_back(entry->object);
            *entry = entered;
            return;
        }
        if (2 * ++m_count > m_entries.size())
            Grow();
        Put(entered);
    }
    void Put(const Entry& entry) {
        size_t i = Home(entry.handle);
        while (m_entries[i].handle != nullptr)
            i = Next(i);
        m_entries[i] = entry;
    }
    size_t Home(const void* handle) const {
        const uint64_t mixed = reinterpret_cast<uintptr_t>(handle) * 0x9E3779B97F4A7C15u;
        return static_cast<size_t>(mixed >> 32) & m_mask;
    }
    size_t Next(size_t i) const { return (i + 1) & m_mask; }
    void Erase(size_t hole) {
        for (size_t i = Next(hole); m_entries[i].handle != nullptr; i = Next(i)) {
            const size_t home = Home(m_entries[i].handle);
            // The entry may move back into the hole unless its home lies behind it.
            const bool stays = hole < i ? hole < home && home <= i : hole < home || home <= i;
            if (stays)
                continue;
            m_entries[hole] = m_entries[i];
            hole = i;
        }
        m_entries[hole] = Entry();
        --m_count;
    }
    void Grow() {
        std::vector<Entry> old(m_entries.size() * 2);
        old.swap(m_entries);
        m_mask = m_entries.size() - 1;
        for (const Entry& entry : old)
            if (entry.handle != nullptr)
                Put(entry);
    }

    Entry m_newest;               // permanent, and in the table only when the next one comes
    std::vector<Entry> m_entries; // their number is a power of two, at least twice the entries in use
    size_t m_mask;                // that number less one
    std::vector<T*> m_retired;
    size_t m_count = 0;
    size_t m_temporaries = 0;
};

// What the layer keeps for each thread.
struct AfxThreadState {
    HandleMap<CWnd> windows;
    HandleMap<CDC> contexts;
    HandleMap<CMenu> menus;
    HandleMap<CGdiObject> gdi;
    MSG message = {};                        // the message being handled
    int depth = 0;                           // nesting of window procedures
    CWnd* created = nullptr;                 // gets the next window that is made
    HHOOK createHook = nullptr;              //
    HWND lockedOut = nullptr;                // its controls' notifications are ignored: an exchange is running
    AFX_MODULE_STATE* moduleState = nullptr; // null: the application's
    CWinThread* thread = nullptr;
};

AfxThreadState& AfxState();
// The state of the thread if it has one: for destructors, which may run when all is over.
AfxThreadState* AfxStateIfAny();
void AfxDeleteTemporaries(); // unless a window procedure is on the stack

inline HGDIOBJ AfxHandleOf(const CGdiObject* object) {
    return object == nullptr ? nullptr : object->m_hObject;
}
inline HWND AfxHandleOf(const CWnd* window) {
    return window == nullptr ? nullptr : window->m_hWnd;
}
inline HDC AfxHandleOf(const CDC* dc) {
    return dc == nullptr ? nullptr : dc->m_hDC;
}
inline HMENU AfxHandleOf(const CMenu* menu) {
    return menu == nullptr ? nullptr : menu->m_hMenu;
}

HINSTANCE AfxLayerInstance(); // nrafx.dll itself

// The next window that this thread makes belongs to the object. Unhooking tells whether one was made.
void AfxHookWindowCreate(CWnd* pWnd);
BOOL AfxUnhookWindowCreate();

// Reports what a handler has thrown, deletes it and gives the message's result in its place.
LRESULT AfxReportHandlerException(CException* e, const MSG& message);
