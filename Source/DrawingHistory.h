// CDrawingHistory: undo and redo of a drawing, by steps between the quiet points that are marked.
// Classes: CDrawingHistory, CHistoryGroup, CDrawingHistoryListener.
// Layer 6: document.
#pragma once

#include "VectorViewApi.h"

#include <KxAlive.h>
#include <afx.h>

#include <memory>
#include <optional>
#include <vector>

class CDrawable;
class CDrawingHistory;
class CGraphicDocument;
class CHistoryBaseline;
struct CHistoryPatch;

// Tells a host that menus and title have to be looked at again.
class CDrawingHistoryListener {
public:
    // What has happened.
    enum Change {
        Marked = 0,    // A new step; steps that could be redone have been freed.
        Undone = 1,    // The drawing has changed.
        Redone = 2,    // The drawing has changed.
        Forgotten = 3, // Steps were freed: by the limits, by Forget, or because the drawing was emptied or loaded.
        Saved = 4      // The clean point is the present state.
    };
    // The history is complete when this is called, and any of its functions may be called from here. Must not free the
    // history. What it throws is ignored.
    virtual void OnHistoryChanged(CDrawingHistory* history, Change change) = 0;

protected:
    CDrawingHistoryListener() = default;
    ~CDrawingHistoryListener() = default;
};

// A host gives it a document and calls Mark whenever a change is complete; a view whose history is switched on does
// both by itself (CVectorView::EnableHistory). Mark compares the drawing with what it was at the last mark, so it does
// not matter by what the drawing was changed: a command, a setter of an object, the lists themselves.
//
// A step has the order of the objects, the objects that were added or removed, every field of the objects that changed
// (also those that files do not hold, such as the colours of polyline segments), background and layers. It does not
// have the mapping, the net, or the foreground colour. The selection is no step of its own; undo and redo restore the
// one that was there when that state was last marked.
//
// Objects keep their addresses. One that left the drawing (erased, or added by a step that was undone) belongs to the
// history, which frees it when no step refers to it any more. The caller of DeleteObject then owns nothing, unless it
// frees the object at once or calls GiveUp. No step brings back an object that a host frees. Reset and LoadFile free
// the objects of the drawing with or without a history, and a history then begins anew.
//
// Nothing here throws; where memory does not suffice the drawing stays as it is, and a change that could not be marked
// is part of the next step. Used by one thread, that of the document.
class NRVECTORVIEW_API CDrawingHistory {
public:
    explicit CDrawingHistory(CGraphicDocument* document); // Borrowed; null for none. See Attach.
    virtual ~CDrawingHistory();                           // Frees the objects that have left the drawing.
    CDrawingHistory(const CDrawingHistory&) = delete;
    CDrawingHistory& operator=(const CDrawingHistory&) = delete;

    // Begins anew with another document, whose former history is detached; or with null, as a freed document does.
    void Attach(CGraphicDocument* document);
    CGraphicDocument* GetDocument() const { return m_pDocument; } // Null where there is none.

    // ---- Marking ----

    // Makes a step of what has changed since the last mark; null means a general name. 1 when there is a new step.
    // Within a group, and while a command runs in a view, nothing is marked. Takes time proportional to the drawing.
    int Mark(LPCTSTR chinese = nullptr, LPCTSTR english = nullptr);
    // The same for one known change: a new object on top or at the very bottom, or other values of one object.
    int MarkAdded(CDrawable* object, LPCTSTR chinese, LPCTSTR english);
    int MarkChanged(CDrawable* object, LPCTSTR chinese, LPCTSTR english);
    // Changes between the two calls are one step. Groups may be nested: the outermost one counts. What was not marked
    // before the group becomes a step of its own. EndGroup gives 1 when there is a new step.
    void BeginGroup(LPCTSTR chinese, LPCTSTR english);
    int EndGroup();

    // ---- Undo and redo ----

    // Whether a marked step can be undone or redone; 0 within a group.
    int CanUndo() const { return m_Group == 0 && m_Position > 0; }
    int CanRedo() const { return m_Group == 0 && m_Position < static_cast<int>(m_Steps.size()); }
    // In the history of a view a running command is ended first. What has not been marked becomes a step: Undo undoes
    // that one, and Redo finds nothing to redo. 1 when the drawing has changed; 0 when there is no step, when memory
    // does not suffice, and when the view does not allow it now.
    int Undo();
    int Redo();
    // The name of the step that would be undone or redone; empty when there is none.
    CString GetUndoName(int english) const;
    CString GetRedoName(int english) const;
    // How many steps can be undone and redone, as far as they are marked.
    int GetUndoCount() const { return m_Position; }
    int GetRedoCount() const { return static_cast<int>(m_Steps.size()) - m_Position; }

    // ---- The clean point ----

    // The present state is saved. CGraphicDocument::SetModifiedFlag(FALSE) calls it: saving a file does, and a host
    // that stores to memory should. Undo and redo then set the document's modified flag, to FALSE at the clean point.
    void SetClean();
    // 1 when the drawing is as it was at the clean point, as far as it is marked.
    int IsClean() const { return m_Clean == m_Position; }

    // ---- Limits ----

    // Beyond either limit the oldest steps are forgotten; the newest one is kept whatever its size. At first 64 MB and
    // 1,000 steps. The bytes are those of the steps, without what is kept of the present state.
    void SetLimits(size_t bytes, int steps);
    size_t GetBytes() const { return m_Bytes; } // Of all steps.
    void Forget();                              // All steps; the drawing stays as it is.
    // Gives the object, which is no longer in the drawing, to the caller: no step brings it back.
    void GiveUp(CDrawable* object);
    // 1 when a mark has seen the object in the drawing, or the document has erased it: the history then owns it once it
    // has left the drawing. An object that was added and taken out by DeleteObject between two marks is the caller's.
    int Knows(CDrawable* object) const;
    // Forgets everything and takes the present drawing for the first state.
    void Restart();
    // Called before and after a load: nothing is marked or undone in between, and then the history starts anew.
    void BeginLoad() { m_bBusy = true; }
    void EndLoad();

    void SetListener(CDrawingHistoryListener* listener) { m_pListener = listener; } // Null for none. Not owned.
    CKxAliveToken GetAlive() const { return CKxAliveToken(m_Alive); } // Whether this history still exists.

protected:
    // 0 while a change is only half made, so that nothing is to be marked.
    virtual int IsQuiet() { return 1; }
    // Called before an undo or a redo: ends what is running. 0 refuses. May free this history.
    virtual int OnBeforeTravel() { return 1; }
    virtual void OnChanged(CDrawingHistoryListener::Change change); // Before the listener is told.

private:
    friend class CGraphicDocument;
    struct Step {
        CString chinese;
        CString english;
        std::unique_ptr<CHistoryPatch> patch;
        size_t bytes = 0;
    };
    using StepOwner = std::unique_ptr<Step>;

    // `object`: all that was `added`, or else changed; null when nothing is known.
    int MarkKnown(CDrawable* object, bool added, LPCTSTR chinese, LPCTSTR english);
    // The same; false when the memory did not suffice.
    bool Advance(CDrawable* object, bool added, LPCTSTR chinese, LPCTSTR english, bool& recorded);
    int Travel(bool back);
    CString NameOf(int step, int english) const;
    // Takes steps out, from the oldest, until the limits hold.
    void Trim();
    // Frees the steps taken out, and the objects that only they have. `visited`: see CHistoryBaseline::Advance.
    void DropForgotten(bool visited);
    void Tell(CDrawingHistoryListener::Change change);
    void SetModified(BOOL modified);
    // Frees all records and steps, and the objects that the history owns.
    void Clear();
    // Called by the document for each object that it erases: the history owns it, also when no mark has seen it.
    void Adopt(CDrawable* object);

    CGraphicDocument* m_pDocument = nullptr;
    std::unique_ptr<CHistoryBaseline> m_Baseline; // Null without a document, and until there is memory for it.
    std::vector<StepOwner> m_Steps;
    int m_Position = 0; // Steps that can be undone; those after them can be redone.
    int m_Clean = -1;   // The position at which the drawing is as saved; -1 for none.
    int m_Group = 0;
    CString m_GroupChinese;
    CString m_GroupEnglish;
    std::vector<StepOwner> m_Forgotten; // To be freed. Has memory for all steps, so that no mark fails half-way.
    size_t m_Bytes = 0;
    size_t m_MostBytes = 64u << 20;
    int m_MostSteps = 1000;
    bool m_bBusy = false; // While the steps are being changed, every call does nothing.
    CDrawingHistoryListener* m_pListener = nullptr;
    CKxAlive m_Alive;
};

// A group for the length of a block. `history` may be null, and may be freed in the block.
class CHistoryGroup {
public:
    // The names are those of the step, as for BeginGroup.
    CHistoryGroup(CDrawingHistory* history, LPCTSTR chinese, LPCTSTR english) : m_pHistory(history) {
        if (history != nullptr) {
            m_HistoryAlive.emplace(history->GetAlive());
            history->BeginGroup(chinese, english);
        }
    }
    CHistoryGroup(const CHistoryGroup&) = delete;
    CHistoryGroup& operator=(const CHistoryGroup&) = delete;
    ~CHistoryGroup() {
        if (m_HistoryAlive && m_HistoryAlive->IsAlive()) {
            m_pHistory->EndGroup();
        }
    }

private:
    CDrawingHistory* m_pHistory;
    std::optional<CKxAliveToken> m_HistoryAlive;
};
