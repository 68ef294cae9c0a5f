// The table from Windows handles to the objects that stand for them, and the layer's state of one thread.
// Internal to nrafx.dll. Layer 1: afx.
#pragma once

#include "afxwin.h"
#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

// Open addressing with linear probing; nothing is allocated per entry. A permanent entry belongs to its object,
// which takes it out again. Temporary objects belong to the map until DeleteTemporaries, also when their entry is gone.
// The newest permanent entry waits outside the table until another comes: a pen that is made for one stroke is gone by
// then, and never costs the table a change.
// Only the two Set functions and TakeSpare allocate; when memory is short they throw and leave the map as it was.
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
    // As long as the entry stays, what stood for the handle before is not found; an earlier owner is found again when
    // the later one has left. An object has one entry at a time.
    void Set(void* handle, T* object) {
        if (m_newest.object != nullptr) {
            Enter(m_newest);
        }
        m_newest = {handle, object, false};
    }
    // For a handle without an owner. The map takes the object over.
    T* SetTemporary(void* handle, std::unique_ptr<T> object) {
        m_retired.reserve(RoomFor(m_temporaries + 1)); // so that no retirement has to allocate
        m_spare.reserve(RoomFor(m_temporaries + 1));
        Enter({handle, object.get(), true});
        ++m_temporaries;
        return object.release();
    }
    // Takes the entry out if it is the object's; a temporary object stays alive.
    void Remove(const void* handle, const T* object) {
        if (m_newest.object == object && m_newest.handle == handle) {
            m_newest = Entry();
            return;
        }
        for (size_t i = m_covered.size(); i-- > 0;) {
            if (m_covered[i].object == object && m_covered[i].handle == handle) {
                m_covered.erase(m_covered.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
        Entry* entry = FindInTable(handle);
        if (entry == nullptr || entry->object != object) {
            return;
        }
        if (entry->temporary) {
            m_retired.push_back(entry->object);
        }
        for (size_t i = m_covered.size(); i-- > 0;) {
            if (m_covered[i].handle == handle) {
                *entry = m_covered[i];
                m_covered.erase(m_covered.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
        Erase(static_cast<size_t>(entry - m_entries.data()));
    }
    // How many temporary objects are alive.
    size_t GetTemporaryCount() const { return m_temporaries; }
    // A temporary object that isUsable accepts and whose handle is dead, as isDead says, with no entry any more: it can
    // stand for another handle and be given to SetTemporary. Null when there is none. The search through all temporary
    // objects is made each time their number has doubled, so that a thread that is never idle keeps no more than twice
    // as many as it has had handles at once.
    template <class IsDead, class IsUsable>
    std::unique_ptr<T> TakeSpare(IsDead isDead, IsUsable isUsable) {
        if (m_temporaries - m_spare.size() >= m_searchAt) {
            for (size_t i = 0; i < m_entries.size();) {
                if (m_entries[i].handle != nullptr && m_entries[i].temporary && isDead(m_entries[i].object)) {
                    m_spare.push_back(m_entries[i].object);
                    Erase(i); // which may move another entry to this place
                } else {
                    ++i;
                }
            }
            const auto dead =
                std::partition(m_retired.begin(), m_retired.end(), [&](T* object) { return !isDead(object); });
            m_spare.insert(m_spare.end(), dead, m_retired.end());
            m_retired.erase(dead, m_retired.end());
            m_searchAt = std::max(kFirstSearch, 2 * (m_temporaries - m_spare.size()));
        }
        const auto found = std::find_if(m_spare.rbegin(), m_spare.rend(), isUsable);
        if (found == m_spare.rend()) {
            return nullptr;
        }
        std::unique_ptr<T> object(*found);
        m_spare.erase(std::next(found).base());
        --m_temporaries;
        return object;
    }
    // Deletes the temporary objects; release must part each from its handle first. Allocates nothing.
    template <class Release>
    void DeleteTemporaries(Release release) {
        if (m_temporaries == 0) {
            return;
        }
        for (size_t i = 0; i < m_entries.size();) {
            if (m_entries[i].handle != nullptr && m_entries[i].temporary) {
                m_retired.push_back(m_entries[i].object);
                Erase(i);
            } else {
                ++i;
            }
        }
        for (std::vector<T*>* doomed : {&m_retired, &m_spare}) {
            for (T* object : *doomed) {
                release(object);
                delete object;
            }
            doomed->clear();
        }
        m_temporaries = 0;
        m_searchAt = kFirstSearch;
    }

private:
    static constexpr size_t kFirstSearch = 64;

    // The next power of two: vectors that are reserved one by one would be copied each time.
    static size_t RoomFor(size_t count) {
        size_t room = 16;
        while (room < count) {
            room *= 2;
        }
        return room;
    }
    Entry* FindInTable(const void* handle) {
        for (size_t i = Home(handle);; i = Next(i)) {
            if (m_entries[i].handle == nullptr) {
                return nullptr;
            }
            if (m_entries[i].handle == handle) {
                return &m_entries[i];
            }
        }
    }
    void Enter(const Entry& entered) {
        if (Entry* entry = FindInTable(entered.handle)) {
            if (entry->temporary) {
                m_retired.push_back(entry->object);
            } else if (entry->object != entered.object) {
                m_covered.push_back(*entry);
            }
            *entry = entered;
            return;
        }
        if (2 * (m_count + 1) > m_entries.size()) {
            Grow();
        }
        ++m_count;
        Put(entered);
    }
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

    Entry m_newest;               // permanent, and in the table only when the next one comes
    std::vector<Entry> m_entries; // their number is a power of two, at least twice the entries in use
    size_t m_mask;                // that number less one
    std::vector<Entry> m_covered; // owners of a handle that has a later owner, the latest last
    std::vector<T*> m_retired;    // temporary objects without an entry that may still be in use
    std::vector<T*> m_spare;      // temporary objects of dead handles
    size_t m_count = 0;
    size_t m_temporaries = 0;
    size_t m_searchAt = kFirstSearch;
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
    struct AfxBoxWatch* box = nullptr;       // gets the next message box that is made
    int exitCode = 0;                        // of the last WM_QUIT
    AFX_MODULE_STATE* moduleState = nullptr; // null: the application's
    CWinThread* thread = nullptr;
};

AfxThreadState& AfxState();
// The state of the thread if it has one: for destructors, which may run when all is over.
AfxThreadState* AfxStateIfAny();
void AfxDeleteTemporaries(); // unless a window procedure is on the stack

// Makes the object the owner of the handle and no more of the one it had. Throws with nothing changed.
template <class T, class Handle>
BOOL AfxAttach(HandleMap<T>& map, T* object, Handle& member, Handle handle) {
    if (handle == nullptr) {
        return FALSE;
    }
    if (map.Permanent(handle) != object) {
        map.Set(handle, object);
    }
    if (member != nullptr && member != handle) {
        map.Remove(member, object);
    }
    member = handle;
    return TRUE;
}

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

// For a catch (...) around code of others that Windows has called: reports what was thrown, deletes it and gives the
// message's result in its place. Throws nothing.
LRESULT AfxReportCaught(const MSG& message);
// What an application does about an exception in a message handler.
LRESULT AfxProcessWndProcException(CException* e, const MSG& message);

// MessageBox of Windows, with one rule on every system: a box without a Cancel button is not left by Escape or its
// close button, and the answer is always that of one of its buttons. A box that ended without an answer, since the
// program quits, its owner was destroyed or it could not be made, gives Cancel if it has it, else No, else Abort; one
// with OK alone gives what Windows gave.
int AfxShowMessageBox(HWND hOwner, LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType);
