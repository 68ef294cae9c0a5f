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
        Marked = 0,    // A new step; those that could be redone are gone.
        Undone = 1,    // The drawing has changed.
        Redone = 2,    // The drawing has changed.
        Forgotten = 3, // Steps are gone: by the limits, by Forget, or because the drawing was emptied or loaded.
        Saved = 4      // The clean point is here now.
    };
    // All is settled when this is called, and every call of the history may be made from within. Must not free the
    // history. What it throws is dropped.
    virtual void OnHistoryChanged(CDrawingHistory* history, Change change) = 0;

protected:
    CDrawingHistoryListener() = default;
    ~CDrawingHistoryListener() = default;
};

// A host gives it a document and calls Mark whenever a change is complete; a view whose history is switched on does
// both by itself (CVectorView::EnableHistory). Mark compares the drawing with what it was at the last mark, so it does
// not matter by what the drawing was changed: a command, a setter of an object, the lists themselves.
//
// A step has the order of the objects, the objects that came or went, every field of the objects that changed (also
// those that files do not hold, such as the colours of polyline segments), background and layers. It does not have the
// mapping, the net, or the foreground colour. The selection is no step of its own; undo and redo bring back the one
// that was there when that state was last marked.
//
// Objects keep their addresses. One that left the drawing (erased, or added by a step that was undone) belongs to the
// history, which frees it when no step refers to it any more: DeleteObject gives it to no caller then, unless the
// caller frees it at once or calls GiveUp. An object that a host frees comes back in no step. Reset and LoadFile free
// the objects of the drawing with or without a history, and a history then begins anew.
//
// Nothing here throws; where memory does not suffice the drawing stays as it is, and a change that could not be marked
// is part of the next step. One thread, that of the document.
class NRVECTORVIEW_API CDrawingHistory {
public:
    explicit CDrawingHistory(CGraphicDocument* document); // Borrowed; null for none. See Attach.
    // The objects that left the drawing are freed.
    virtual ~CDrawingHistory();
    CDrawingHistory(const CDrawingHistory&) = delete;
    CDrawingHistory& operator=(const CDrawingHistory&) = delete;

    // Begins anew with another document, or with none. A document has one history: a former one loses it. Called by a
    // document that is freed with null.
    void Attach(CGraphicDocument* document);
    CGraphicDocument* GetDocument() const { return m_pDocument; } // Null where there is none.

    // ---- Marking ----

    // Makes a step of what has changed since the last mark. 1 when there is a new step. Null names: a general word.
    // Within a group, and while a command runs in a view, nothing is marked. Takes time proportional to the drawing.
    int Mark(LPCTSTR chinese = nullptr, LPCTSTR english = nullptr);
    // The same after the one change that a new object was added on top or at the very bottom, without comparing.
    int MarkAdded(CDrawable* object, LPCTSTR chinese, LPCTSTR english);
    // The same after the one change that an object of the drawing got other values.
    int MarkChanged(CDrawable* object, LPCTSTR chinese, LPCTSTR english);
    // What happens between the two is one step. Groups may be nested: the outermost one counts. What was not marked
    // before the group becomes a step of its own. EndGroup gives 1 when there is a new step.
    void BeginGroup(LPCTSTR chinese, LPCTSTR english);
    int EndGroup();

    // ---- Undo and redo ----

    // By the steps that are marked. Not within a group.
    int CanUndo() const { return m_Group == 0 && m_Position > 0; }
    int CanRedo() const { return m_Group == 0 && m_Position < static_cast<int>(m_Steps.size()); }
    // A running command is ended first, where the history is a view's, and what has not been marked becomes a step:
    // Undo takes that back, and Redo finds nothing then. 1 when the drawing has changed; 0 when there is no step, when
    // the memory does not suffice, and when the view does not allow it now.
    int Undo();
    int Redo();
    // Of the step that would be taken; empty when there is none.
    CString GetUndoName(int english) const;
    CString GetRedoName(int english) const;
    // How many steps can be undone and redone, as far as they are marked.
    int GetUndoCount() const { return m_Position; }
    int GetRedoCount() const { return static_cast<int>(m_Steps.size()) - m_Position; }

    // ---- The clean point ----

    // The drawing is saved as it is. CGraphicDocument::SetModifiedFlag(FALSE) does it: saving a file does, and so does
    // a host that stores to memory. Undo and redo then set the document's modified flag: FALSE at the clean point.
    void SetClean();
    // 1 when the drawing is as it was at the clean point, as far as it is marked.
    int IsClean() const { return m_Clean == m_Position; }

    // ---- Limits ----

    // Beyond either limit the oldest steps are forgotten; the newest one is kept whatever its size. At first 64 MB and
    // 1,000 steps. The bytes are those of the steps, without what is kept of the present state.
    void SetLimits(size_t bytes, int steps);
    size_t GetBytes() const { return m_Bytes; } // Of all steps.
    void Forget();                              // All steps; the drawing stays as it is.
    // The object, which is not in the drawing any more, is the caller's: it comes back in no step.
    void GiveUp(CDrawable* object);
    // 1 when a mark has seen the object in the drawing, or the document has erased it: it is the history's once it has
    // left the drawing. One that came and went by DeleteObject between two marks is the caller's.
    int Knows(CDrawable* object) const;
    void Restart(); // Forgets everything and takes the drawing as it is for the first state.
    // Round a load: nothing is marked or undone in between, and then it starts anew.
    void BeginLoad() { m_bBusy = true; }
    void EndLoad();

    void SetListener(CDrawingHistoryListener* listener) { m_pListener = listener; } // Null for none. Not owned.
    CKxAliveToken GetAlive() const { return CKxAliveToken(m_Alive); } // Whether this history still exists.

protected:
    // 0 while a mark would meet a half-made change.
    virtual int IsQuiet() { return 1; }
    // Before an undo or a redo: brings the drawing to rest. 0 refuses. May free this history.
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
    void Trim(); // Takes steps out, from the oldest, until the limits hold.
    // Those that were taken out, with the objects that only they know. `visited`: see CHistoryBaseline::Advance.
    void DropForgotten(bool visited);
    void Tell(CDrawingHistoryListener::Change change);
    void SetModified(BOOL modified);
    void Clear(); // All records and steps, and the objects that are the history's.
    // By the document, of each object that it erases: the history's, also when no mark has seen it.
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
    bool m_bBusy = false; // While the steps are being changed every call does nothing.
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
