// CHistoryBaseline: the drawing as a history last saw it, and the patches that lead from one such state to the next.
// Layer 6: document.
#pragma once

#include "Document.h"
#include "DrawableState.h"

#include <memory>
#include <utility>
#include <vector>

class CHistoryBaseline;

// One object, for as long as it is in the drawing or any patch refers to it.
struct CHistoryRecord final : CDrawableWatch {
    CHistoryRecord(CHistoryBaseline* baseline, CDrawable* drawable, bool names)
        : owner(baseline), object(drawable), namesAll(names) {}
    CHistoryRecord(const CHistoryRecord&) = delete;
    CHistoryRecord& operator=(const CHistoryRecord&) = delete;
    void OnDrawableFreed() override;
    bool IsChanged() const { return !CObjectStates::IsAs(*object, namesAll, state); }

    CHistoryBaseline* owner;
    CDrawable* object;    // Null once it has been freed, or was given up: the record only keeps its place in the lists.
    CDrawableState state; // As last seen.
    unsigned listed = 0;  // Entries in the list of the present state.
    unsigned patched = 0; // Entries in patches.
    unsigned visit = 0;   // The number of the last walk over the drawing that met the object.
    bool namesAll;        // CObjectStates::NamesAllFields.
};

// What is selected, and which objects are in another draw state than Normal. Each state of the drawing has one.
struct CHistorySelection {
    std::vector<CHistoryRecord*> selected;
    std::vector<std::pair<CHistoryRecord*, enum CDrawable::DrawState>> marked;
    bool operator==(const CHistorySelection& other) const {
        return selected == other.selected && marked == other.marked;
    }
};

// Background and layers.
struct CHistorySettings {
    DWORD color = 0;
    short colorIndex = 0;
    CLayerTable layers;
};

// The difference between the present state and the one before or after it. Holds the differing parts as they are in the
// other state; Toggle exchanges the two.
struct CHistoryPatch {
    struct Change {
        CHistoryRecord* record;
        CDrawableState state;
    };
    // `count` entries of the list from `start` are `other` in the other state.
    size_t start = 0;
    size_t count = 0;
    std::vector<CHistoryRecord*> other;
    std::vector<Change> changes;
    std::unique_ptr<CHistorySettings> settings; // Null when they are the same.
    std::shared_ptr<const CHistorySelection> selection;

    // Roughly, with the content of the objects that only the other state has.
    size_t Bytes() const;
};

// Objects that leave the drawing are freed when the last patch that refers to them is dropped.
class CHistoryBaseline {
public:
    explicit CHistoryBaseline(CGraphicDocument& document) : m_Document(document) {}
    // All patches must have been dropped. Frees the objects that have left the drawing and were not marked since.
    ~CHistoryBaseline();
    CHistoryBaseline(const CHistoryBaseline&) = delete;
    CHistoryBaseline& operator=(const CHistoryBaseline&) = delete;

    // Compares the drawing with the baseline, and makes it the new baseline. Null when nothing but the selection
    // differs. Throws what the memory or an object of a host throws, and has then changed nothing.
    std::unique_ptr<CHistoryPatch> Advance();
    // The same when the host says that the only change is one new object at the end or the front. Null when that is not
    // so, as far as it can be tested in constant time.
    std::unique_ptr<CHistoryPatch> AdvanceAdded(CDrawable* object);
    // The same when the host says that the only changes are those of one object's fields; `patch` is null when they are
    // as they were. False when no mark has seen the object in the drawing.
    bool AdvanceChanged(CDrawable* object, std::unique_ptr<CHistoryPatch>& patch);
    // Puts the drawing into the other state of the patch, which is a neighbour of the present one. The drawing has to
    // be as the baseline is. False when the memory does not suffice: nothing has changed then.
    bool Toggle(CHistoryPatch& patch);
    // Marks the objects of the drawing, so that dropping patches without an Advance before it frees none of them.
    void VisitDrawing();
    // Whether dropping the patch may free an object.
    static bool MayFree(const CHistoryPatch& patch);
    // Frees the objects that only this patch refers to; what their destructors throw is not caught.
    void Drop(CHistoryPatch& patch);
    // See CDrawingHistory::GiveUp.
    void GiveUp(CDrawable* object);
    // The object has been erased; it is freed with the others, also when no mark has seen it. Throws.
    void Adopt(CDrawable* object);
    // Whether a mark has seen the object, or it was adopted.
    bool Knows(const CDrawable* object) const { return RecordOf(object) != nullptr; }

private:
    friend struct CHistoryRecord;
    using RecordList = std::vector<CHistoryRecord*>;

    CHistoryRecord* RecordOf(const CDrawable* object) const;
    std::unique_ptr<CHistoryRecord> MakeRecord(CDrawable* object);
    static void Unmake(std::vector<std::unique_ptr<CHistoryRecord>>& records);
    RecordList Compose(CHistoryPatch& patch) const;
    std::shared_ptr<const CHistorySelection> Selection();
    void SelectAgain();
    // Frees a record that nothing refers to any more, and its object where that is not in the drawing.
    void ReleaseRecord(CHistoryRecord* record);
    // The same for the adopted ones.
    void ReleaseAdopted();
    void Visit(CDrawable* object);
    void VisitBeside();
    CHistorySettings Settings() const;
    bool AreSettingsAs(const CHistorySettings& settings) const;
    void Enter(CHistoryRecord* record);
    void Leave(CHistoryRecord* record);

    CGraphicDocument& m_Document;
    CObjectStates m_States;
    RecordList m_List;    // The present state, with the places of freed objects.
    RecordList m_Adopted; // Erased since the last mark, and not seen by one before.
    size_t m_Freed = 0;   // Places of freed objects in the list.
    CHistorySettings m_Settings;
    std::shared_ptr<const CHistorySelection> m_Selection;
    CHistorySelection m_Seen; // Scratch.
    unsigned m_Visit = 0;
};
