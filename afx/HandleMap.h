// The table from Windows handles to the objects that represent them.
// Internal to nrafx.dll. Layer 1: afx.
#pragma once

#include "AfxHelpers.h"
#include "HandleTable.h"
#include "afxwin.h"
#include <algorithm>
#include <memory>
#include <vector>

// A permanent entry belongs to its object, which takes it out again. Temporary objects belong to the map until
// DeleteTemporaries, also when their entry has been removed. The newest permanent entry is kept outside the table until
// another comes: a pen that is made for one stroke is freed by then, and never changes the table. Only the two Set
// functions, TakeSpare and Revive allocate; when memory is short they throw and leave the map as it was.
template <class T>
class HandleMap {
public:
    HandleMap() = default;
    HandleMap(const HandleMap&) = delete;
    HandleMap& operator=(const HandleMap&) = delete;

    using Entry = HandleEntry<T>;

    Entry* Find(const void* handle) {
        return m_newest.object != nullptr && m_newest.handle == handle ? &m_newest : m_table.Find(handle);
    }
    T* Permanent(const void* handle) {
        const Entry* entry = Find(handle);
        return entry != nullptr && !entry->temporary ? entry->object : nullptr;
    }
    // As long as the entry stays, what represented the handle before is not found; an earlier owner is found again when
    // the later one has been removed. An object has one entry at a time.
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
    // Takes the entry out if it is the object's; a temporary object is not freed.
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
        Entry* entry = m_table.Find(handle);
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
        m_table.Erase(entry);
    }
    // Gives a temporary object whose entry a later owner of its handle has taken an entry again, once that owner has
    // gone: the paint of a window makes its context an owner each time. Null when isOf accepts none.
    template <class IsOf>
    T* Revive(void* handle, IsOf isOf) {
        const auto found = std::find_if(m_retired.begin(), m_retired.end(), isOf);
        if (found == m_retired.end()) {
            return nullptr;
        }
        T* object = *found;
        Enter({handle, object, true}); // The handle has no entry, so that nothing else is retired by this.
        m_retired.erase(found);
        return object;
    }
    // How many temporary objects there are.
    size_t GetTemporaryCount() const { return m_temporaries; }
    // A temporary object that isUsable accepts and whose handle has been freed according to isDead, and that has no
    // entry any more: it can represent another handle and be given to SetTemporary. Null when there is none. The search
    // through all temporary objects is made each time their number has doubled, so that a thread that is never idle
    // keeps no more than twice as many as it has had handles at once.
    template <class IsDead, class IsUsable>
    std::unique_ptr<T> TakeSpare(IsDead isDead, IsUsable isUsable) {
        if (m_temporaries - m_spare.size() >= m_searchAt) {
            m_table.EraseEach([&](const Entry& entry) {
                const bool dead = entry.temporary && isDead(entry.object);
                if (dead) {
                    m_spare.push_back(entry.object);
                }
                return dead;
            });
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
    // Deletes the temporary objects; release must clear the handle of each first. Allocates nothing.
    template <class Release>
    void DeleteTemporaries(Release release) {
        if (m_temporaries == 0) {
            return;
        }
        m_table.EraseEach([&](const Entry& entry) {
            if (entry.temporary) {
                m_retired.push_back(entry.object);
            }
            return entry.temporary;
        });
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
    void Enter(const Entry& entered) {
        if (Entry* entry = m_table.Find(entered.handle)) {
            if (entry->temporary) {
                m_retired.push_back(entry->object);
            } else if (entry->object != entered.object) {
                m_covered.push_back(*entry);
            }
            *entry = entered;
            return;
        }
        m_table.Add(entered);
    }
    Entry m_newest; // permanent, and in the table only when the next one comes
    HandleTable<T> m_table;
    std::vector<Entry> m_covered; // owners of a handle that has a later owner, the latest last
    std::vector<T*> m_retired;    // temporary objects without an entry that may still be in use
    std::vector<T*> m_spare;      // temporary objects of freed handles
    size_t m_temporaries = 0;
    size_t m_searchAt = kFirstSearch;
};

// Makes the object the owner of the handle, and no longer of the one it had. Throws with nothing changed.
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
