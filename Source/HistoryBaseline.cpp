#include "HistoryBaseline.h"

#include "MemoryInfo.h"

#include <algorithm>

namespace {

constexpr INT_PTR kFetchDistance = 4; // In objects.

// Prefetches memory that is compared soon: an object, or what was kept of one.
void Fetch(const void* memory, size_t bytes) {
    for (size_t offset = 0; offset < bytes; offset += 64) {
        __builtin_prefetch(static_cast<const char*>(memory) + offset);
    }
}

} // namespace

void CHistoryRecord::OnDrawableFreed() {
    object = nullptr;
    owner->m_Freed += listed;
    state = CDrawableState();
}

size_t CHistoryPatch::Bytes() const {
    size_t bytes = sizeof(CHistoryPatch) + other.size() * sizeof(CHistoryRecord*);
    for (const CHistoryRecord* record : other) {
        bytes += record->listed == 0 ? sizeof(CHistoryRecord) + record->state.Bytes() : 0;
    }
    for (const Change& change : changes) {
        bytes += sizeof(CHistoryRecord*) + change.state.Bytes();
    }
    if (settings != nullptr) {
        bytes += sizeof(CHistorySettings) + settings->layers.layers.size() * sizeof(CLayerFields);
    }
    // Neighbouring patches often share a selection, which then counts once for each.
    if (selection != nullptr) {
        bytes += selection->selected.size() * sizeof(CHistoryRecord*) + selection->marked.size() * 2 * sizeof(void*);
    }
    return bytes;
}

CHistoryBaseline::~CHistoryBaseline() {
    VisitDrawing();
    ReleaseAdopted();
    for (CHistoryRecord* record : m_List) { // A host may have an object in its list twice.
        if (--record->listed == 0) {
            ReleaseRecord(record);
        }
    }
}

// ---- Records -------------------------------------------------------------------------------------------------------

CHistoryRecord* CHistoryBaseline::RecordOf(const CDrawable* object) const {
    auto* record = static_cast<CHistoryRecord*>(object->m_pWatch);
    return record != nullptr && record->owner == this ? record : nullptr;
}

std::unique_ptr<CHistoryRecord> CHistoryBaseline::MakeRecord(CDrawable* object) {
    auto record = std::make_unique<CHistoryRecord>(this, object, CObjectStates::NamesAllFields(*object));
    m_States.Keep(*object, record->namesAll, record->state);
    if (object->m_pWatch != nullptr) {
        // The object was in another drawing with a history, whose record of it ends here.
        object->m_pWatch->OnDrawableFreed();
    }
    object->m_pWatch = record.get();
    return record;
}

// Frees records that the baseline has not taken over.
void CHistoryBaseline::Unmake(std::vector<std::unique_ptr<CHistoryRecord>>& records) {
    for (const std::unique_ptr<CHistoryRecord>& record : records) {
        if (record != nullptr) {
            record->object->m_pWatch = nullptr;
        }
    }
    records.clear();
}

void CHistoryBaseline::Enter(CHistoryRecord* record) {
    ++record->listed;
    m_Freed += record->object == nullptr ? 1 : 0;
}

void CHistoryBaseline::Leave(CHistoryRecord* record) {
    --record->listed;
    m_Freed -= record->object == nullptr ? 1 : 0;
}

void CHistoryBaseline::ReleaseRecord(CHistoryRecord* record) {
    if (record->listed != 0 || record->patched != 0) {
        return;
    }
    CDrawable* object = record->object;
    const bool inDrawing = record->visit == m_Visit;
    delete record;
    if (object == nullptr) {
        return;
    }
    object->m_pWatch = nullptr;
    if (!inDrawing) {
        if (object->GetDrawState() == CDrawable::Selected) {
            m_Document.RemoveSelected(object);
        }
        KX_REMOVE_MEMORY(object);
        delete object;
    }
}

void CHistoryBaseline::GiveUp(CDrawable* object) {
    if (CHistoryRecord* record = RecordOf(object)) {
        object->m_pWatch = nullptr;
        record->OnDrawableFreed();
    }
}

void CHistoryBaseline::Adopt(CDrawable* object) {
    if (!Knows(object)) {
        m_Adopted.push_back(nullptr); // First, so that the record is never without an owner.
        try {
            m_Adopted.back() = MakeRecord(object).release();
        } catch (...) {
            m_Adopted.pop_back();
            throw;
        }
    }
}

void CHistoryBaseline::ReleaseAdopted() {
    RecordList adopted;
    adopted.swap(m_Adopted);
    for (CHistoryRecord* record : adopted) {
        ReleaseRecord(record);
    }
}

void CHistoryBaseline::VisitDrawing() {
    ++m_Visit;
    const CDrawableArray& objects = *m_Document.GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        Visit(objects.GetAt(i));
    }
    VisitBeside();
}

void CHistoryBaseline::Visit(CDrawable* object) {
    if (object != nullptr) {
        if (CHistoryRecord* record = RecordOf(object)) {
            record->visit = m_Visit;
        }
    }
}

void CHistoryBaseline::VisitBeside() {
    const CDrawableArray& net = *m_Document.GetNetDrawableObjs();
    for (INT_PTR i = 0; i < net.GetSize(); ++i) {
        Visit(net.GetAt(i));
    }
    Visit(m_Document.GetCurrentObject());
}

bool CHistoryBaseline::MayFree(const CHistoryPatch& patch) {
    const auto isAway = [](const CHistoryRecord* record) { return record->listed == 0 && record->object != nullptr; };
    return std::any_of(patch.other.begin(), patch.other.end(), isAway) ||
           std::any_of(patch.changes.begin(), patch.changes.end(),
                       [&](const CHistoryPatch::Change& change) { return isAway(change.record); });
}

void CHistoryBaseline::Drop(CHistoryPatch& patch) {
    for (CHistoryRecord* record : patch.other) {
        --record->patched;
        ReleaseRecord(record);
    }
    for (const CHistoryPatch::Change& change : patch.changes) {
        --change.record->patched;
        ReleaseRecord(change.record);
    }
    patch.other.clear();
    patch.changes.clear();
}

// ---- Comparing -----------------------------------------------------------------------------------------------------

std::unique_ptr<CHistoryPatch> CHistoryBaseline::Advance() {
    struct CNewRecords { // New records, until the baseline takes them over.
        explicit CNewRecords(CHistoryBaseline& baseline) : owner(baseline) {}
        ~CNewRecords() { owner.Unmake(records); }
        CHistoryBaseline& owner;
        std::vector<std::unique_ptr<CHistoryRecord>> records;
    } added(*this);
    auto patch = std::make_unique<CHistoryPatch>();
    const CDrawableArray& objects = *m_Document.GetDrawableObjs();
    const INT_PTR size = objects.GetSize();
    ++m_Visit;
    m_Seen.marked.clear();
    size_t at = 0;
    bool same = true;
    for (INT_PTR i = 0; i < size; ++i) {
        if (i + 2 * kFetchDistance < size && objects[i + 2 * kFetchDistance] != nullptr) {
            Fetch(objects[i + 2 * kFetchDistance], sizeof(CDrawable) + 64);
        }
        if (i + kFetchDistance < size && objects[i + kFetchDistance] != nullptr) {
            if (const CHistoryRecord* soon = RecordOf(objects[i + kFetchDistance])) {
                Fetch(soon->state.bytes.data(), 128);
                Fetch(soon->state.texts.data(), 1);
            }
        }
        CDrawable* object = objects[i];
        if (object == nullptr) {
            continue;
        }
        CHistoryRecord* record = RecordOf(object);
        const bool isNew = record == nullptr;
        if (isNew) {
            added.records.emplace_back(); // First, so that the record is never without an owner.
            added.records.back() = MakeRecord(object);
            record = added.records.back().get();
        }
        while (at < m_List.size() && m_List[at]->object == nullptr) {
            ++at;
        }
        same = same && at < m_List.size() && m_List[at] == record;
        ++at;
        if (record->visit == m_Visit) {
            continue; // A host has it in its list twice.
        }
        record->visit = m_Visit;
        if (!isNew && record->IsChanged()) {
            patch->changes.push_back({record, CDrawableState()});
            m_States.Keep(*object, record->namesAll, patch->changes.back().state);
        }
        if (object->GetDrawState() != CDrawable::Normal) {
            m_Seen.marked.emplace_back(record, object->GetDrawState());
        }
    }
    while (at < m_List.size() && m_List[at]->object == nullptr) {
        ++at;
    }
    same = same && at == m_List.size();
    RecordList list;
    if (!same) {
        list = Compose(*patch);
    }
    std::shared_ptr<const CHistorySelection> selection = Selection();
    if (!AreSettingsAs(m_Settings)) {
        patch->settings = std::make_unique<CHistorySettings>(Settings());
    }
    // From here on nothing is thrown.
    for (CHistoryPatch::Change& change : patch->changes) {
        std::swap(change.record->state, change.state);
        ++change.record->patched;
    }
    if (!same) {
        for (CHistoryRecord* record : patch->other) {
            Leave(record);
            ++record->patched;
        }
        m_List.swap(list);
        for (size_t i = 0; i < patch->count; ++i) {
            Enter(m_List[patch->start + i]);
        }
    }
    if (patch->settings != nullptr) {
        std::swap(*patch->settings, m_Settings);
    }
    patch->selection = std::exchange(m_Selection, selection);
    for (std::unique_ptr<CHistoryRecord>& record : added.records) {
        record.release();
    }
    VisitBeside();
    ReleaseAdopted();
    if (same && patch->changes.empty() && patch->settings == nullptr) {
        return nullptr;
    }
    return patch;
}

// The list as it is now, with the places of freed objects where it has not changed. The former entries between the
// unchanged front and back are moved to the patch.
CHistoryBaseline::RecordList CHistoryBaseline::Compose(CHistoryPatch& patch) const {
    const CDrawableArray& objects = *m_Document.GetDrawableObjs();
    RecordList now;
    now.reserve(static_cast<size_t>(objects.GetSize()));
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        if (objects[i] != nullptr) {
            now.push_back(RecordOf(objects[i]));
        }
    }
    size_t front = 0;
    size_t nowFront = 0;
    while (front < m_List.size() &&
           (m_List[front]->object == nullptr || (nowFront < now.size() && m_List[front] == now[nowFront]))) {
        nowFront += m_List[front++]->object != nullptr ? 1 : 0;
    }
    size_t back = m_List.size();
    size_t nowBack = now.size();
    while (back > front &&
           (m_List[back - 1]->object == nullptr || (nowBack > nowFront && m_List[back - 1] == now[nowBack - 1]))) {
        nowBack -= m_List[--back]->object != nullptr ? 1 : 0;
    }
    patch.start = front;
    patch.count = nowBack - nowFront;
    const auto at = [](size_t index) { return static_cast<RecordList::difference_type>(index); };
    patch.other.assign(m_List.begin() + at(front), m_List.begin() + at(back));
    RecordList list;
    list.reserve(m_List.size() - patch.other.size() + patch.count);
    list.insert(list.end(), m_List.begin(), m_List.begin() + at(front));
    list.insert(list.end(), now.begin() + at(nowFront), now.begin() + at(nowBack));
    list.insert(list.end(), m_List.begin() + at(back), m_List.end());
    return list;
}

std::unique_ptr<CHistoryPatch> CHistoryBaseline::AdvanceAdded(CDrawable* object) {
    const CDrawableArray& objects = *m_Document.GetDrawableObjs();
    const INT_PTR size = objects.GetSize();
    if (object == nullptr || size == 0 || RecordOf(object) != nullptr ||
        static_cast<size_t>(size) + m_Freed != m_List.size() + 1) {
        return nullptr;
    }
    const bool last = objects[size - 1] == object;
    if (!last && objects[0] != object) {
        return nullptr;
    }
    auto patch = std::make_unique<CHistoryPatch>();
    patch->start = last ? m_List.size() : 0;
    patch->count = 1;
    patch->selection = m_Selection;
    if (m_List.size() == m_List.capacity()) {
        m_List.reserve(m_List.size() * 2 + 16);
    }
    CHistoryRecord* const record = MakeRecord(object).release(); // The list has the memory for it.
    m_List.insert(last ? m_List.end() : m_List.begin(), record);
    Enter(record);
    return patch;
}

bool CHistoryBaseline::AdvanceChanged(CDrawable* object, std::unique_ptr<CHistoryPatch>& patch) {
    patch.reset();
    CHistoryRecord* record = RecordOf(object);
    if (record == nullptr || record->listed == 0) {
        return false;
    }
    if (record->IsChanged()) {
        auto made = std::make_unique<CHistoryPatch>();
        made->selection = m_Selection;
        made->changes.push_back({record, CDrawableState()});
        m_States.Keep(*object, record->namesAll, made->changes.back().state);
        std::swap(record->state, made->changes.back().state);
        ++record->patched;
        patch = std::move(made);
    }
    return true;
}

// The selection as the last walk has seen it; the former one where it is the same.
std::shared_ptr<const CHistorySelection> CHistoryBaseline::Selection() {
    m_Seen.selected.clear();
    const CDrawableArray& selected = *m_Document.GetSelectedDrawableObjs();
    for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
        CHistoryRecord* record = RecordOf(selected[i]);
        if (record != nullptr && record->visit == m_Visit) {
            m_Seen.selected.push_back(record);
        }
    }
    if (m_Selection != nullptr ? *m_Selection == m_Seen : m_Seen == CHistorySelection()) {
        return m_Selection;
    }
    return std::make_shared<CHistorySelection>(m_Seen);
}

CHistorySettings CHistoryBaseline::Settings() const {
    CHistorySettings settings;
    settings.color = m_Document.m_BKColor;
    settings.colorIndex = m_Document.m_BKColorIndex;
    settings.layers = m_Document.m_LayerManager.GetTable();
    return settings;
}

bool CHistoryBaseline::AreSettingsAs(const CHistorySettings& settings) const {
    return m_Document.m_BKColor == settings.color && m_Document.m_BKColorIndex == settings.colorIndex &&
           m_Document.m_LayerManager.IsAs(settings.layers);
}

// ---- Putting back --------------------------------------------------------------------------------------------------

bool CHistoryBaseline::Toggle(CHistoryPatch& patch) {
    // What is to be put back: an object, as it will be and as it is.
    struct Restore {
        CHistoryRecord* record;
        const CDrawableState* target;
        CDrawableState present;
        bool reserved;
    };
    std::vector<Restore> restores;
    RecordList list;
    CDrawableArray& objects = m_Document.m_DrawableObjs;
    CDrawableArray& selected = m_Document.m_SelectedDrawableObjs;
    const INT_PTR formerObjects = objects.GetSize();
    const INT_PTR formerSelected = selected.GetSize();
    const auto fail = [&] {
        for (Restore& restore : restores) {
            if (restore.reserved) {
                CObjectStates::Trim(*restore.record->object, restore.record->namesAll, restore.present);
            }
        }
        objects.SetSize(formerObjects);
        selected.SetSize(formerSelected);
        return false;
    };
    try {
        ++m_Visit;
        const auto add = [&](CHistoryRecord* record, const CDrawableState& target) {
            restores.push_back({record, &target, CDrawableState(), false});
            m_States.Keep(*record->object, record->namesAll, restores.back().present);
        };
        for (const CHistoryPatch::Change& change : patch.changes) {
            change.record->visit = m_Visit;
            if (change.record->object != nullptr) {
                add(change.record, change.state);
            }
        }
        // An object that was changed after it had left the drawing is restored as it was.
        for (CHistoryRecord* record : patch.other) {
            if (record->object != nullptr && record->visit != m_Visit && record->IsChanged()) {
                record->visit = m_Visit;
                add(record, record->state);
            }
        }
        for (Restore& restore : restores) {
            restore.reserved = true;
            CObjectStates::Reserve(*restore.record->object, restore.record->namesAll, *restore.target);
        }
        const auto at = [](size_t index) { return static_cast<RecordList::difference_type>(index); };
        list.reserve(m_List.size() - patch.count + patch.other.size());
        list.insert(list.end(), m_List.begin(), m_List.begin() + at(patch.start));
        list.insert(list.end(), patch.other.begin(), patch.other.end());
        list.insert(list.end(), m_List.begin() + at(patch.start + patch.count), m_List.end());
        RecordList leaving(m_List.begin() + at(patch.start), m_List.begin() + at(patch.start + patch.count));
        objects.SetSize(std::max(formerObjects, static_cast<INT_PTR>(list.size())));
        const size_t selection = patch.selection != nullptr ? patch.selection->selected.size() : 0;
        selected.SetSize(std::max(formerSelected, static_cast<INT_PTR>(selection)));
        if (patch.settings != nullptr) {
            m_Document.m_LayerManager.PutBack(patch.settings->layers); // The last that may throw.
        }
        patch.count = patch.other.size();
        patch.other.swap(leaving);
    } catch (CException* e) {
        e->Delete();
        return fail();
    } catch (...) {
        return fail();
    }
    for (const Restore& restore : restores) {
        CObjectStates::PutBack(*restore.record->object, *restore.target);
    }
    for (CHistoryPatch::Change& change : patch.changes) {
        std::swap(change.record->state, change.state);
    }
    for (CHistoryRecord* record : patch.other) {
        Leave(record);
        ++record->patched;
    }
    m_List.swap(list);
    for (size_t i = 0; i < patch.count; ++i) {
        Enter(m_List[patch.start + i]);
        --m_List[patch.start + i]->patched;
    }
    if (patch.settings != nullptr) {
        m_Document.m_BKColor = patch.settings->color;
        m_Document.m_BKColorIndex = patch.settings->colorIndex;
        std::swap(*patch.settings, m_Settings);
    }
    INT_PTR count = 0;
    for (CHistoryRecord* record : m_List) {
        if (record->object != nullptr) {
            objects[count++] = record->object;
            record->object->SetDrawState(CDrawable::Normal);
        }
    }
    objects.SetSize(count);
    std::swap(m_Selection, patch.selection);
    SelectAgain();
    return true;
}

void CHistoryBaseline::SelectAgain() {
    CDrawableArray& selected = m_Document.m_SelectedDrawableObjs;
    INT_PTR count = 0;
    if (m_Selection != nullptr) {
        for (CHistoryRecord* record : m_Selection->selected) {
            if (record->object != nullptr) {
                selected[count++] = record->object;
            }
        }
        for (const auto& [record, state] : m_Selection->marked) {
            if (record->object != nullptr) {
                record->object->SetDrawState(state);
            }
        }
    }
    selected.SetSize(count);
}
