#include "NrvIds.h"

#include "Drawable.h"

#include <atomic>

namespace {

std::atomic<NrvId> g_last{0};

} // namespace

NrvId CNrvIds::IdOf(CDrawable* object) {
    if (object == nullptr) {
        return 0;
    }
    const auto known = m_Ids.find(object);
    if (known != m_Ids.end()) {
        const auto entry = m_Objects.find(known->second);
        if (entry != m_Objects.end() && entry->second.alive.IsAlive()) {
            return known->second;
        }
        m_Objects.erase(known->second);
        m_Ids.erase(known);
    }
    if (m_Objects.size() >= m_PurgeAt) {
        Purge();
    }
    const NrvId id = ++g_last;
    m_Objects.emplace(id, Entry{object, object->GetAlive()});
    try {
        m_Ids.emplace(object, id);
    } catch (...) {
        m_Objects.erase(id);
        throw;
    }
    return id;
}

NrvId CNrvIds::IdOfGone(const CDrawable* object) {
    const auto known = m_Ids.find(object);
    return known != m_Ids.end() ? known->second : ++g_last;
}

CDrawable* CNrvIds::Find(NrvId id) const {
    const auto entry = m_Objects.find(id);
    return entry != m_Objects.end() && entry->second.alive.IsAlive() ? entry->second.object : nullptr;
}

void CNrvIds::Purge() {
    for (auto entry = m_Objects.begin(); entry != m_Objects.end();) {
        if (entry->second.alive.IsAlive()) {
            ++entry;
            continue;
        }
        const auto known = m_Ids.find(entry->second.object);
        if (known != m_Ids.end() && known->second == entry->first) {
            m_Ids.erase(known);
        }
        entry = m_Objects.erase(entry);
    }
    m_PurgeAt = m_Objects.size() * 2 + 256;
}
