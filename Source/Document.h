// CGraphicDocument: the drawing, its objects in drawing order, its colours and layers, and its stream.
// Layer 6: document.
#pragma once

#include "Drawable.h"
#include "EditingOptions.h"
#include "LayerManager.h"

#include <afxtempl.h>

class CDrawingHistory;
class CLine;

using CDrawableArray = CArray<CDrawable*, CDrawable*&>; // Objects in drawing order. The array frees none of them.

// The version word at the head of every stream. There is one version.
inline constexpr int kDocumentVersion = 1;

// A name for an XML form of drawings, which does not exist: see GetXML.
class CXMLFiler {};

// Made directly by the painter, without template or frame. Owns the objects of its lists except the selected ones.
class NRVECTORVIEW_API CGraphicDocument : public CDocument {
    DECLARE_DYNAMIC(CGraphicDocument)
public:
    CGraphicDocument();
    ~CGraphicDocument() override;
    CGraphicDocument(const CGraphicDocument&) = delete;
    CGraphicDocument& operator=(const CGraphicDocument&) = delete;

    // ---- Lists and queries ----

    // The lists themselves: callers read and change them directly. Higher indices lie on top.
    CDrawableArray* GetDrawableObjs() { return &m_DrawableObjs; }
    // Background lines: drawn first, and in nothing else: not saved, measured, hit, selected, transformed or reset.
    CDrawableArray* GetNetDrawableObjs() { return &m_NetDrawableObjs; }
    // In the order of selection. Objects of a list that a caller changes keep their draw state: see AddSelected.
    CDrawableArray* GetSelectedDrawableObjs() { return &m_SelectedDrawableObjs; }
    CLayerManager* GetLayerManager() { return &m_LayerManager; } // The layer table, owned by the document.
    // The mapping that is stored with the drawing; not owned, null for none.
    CVectorViewCoordTran* GetVectorViewCoordTran() { return m_pCoordTran; }
    void SetVectorViewCoordTran(CVectorViewCoordTran* tran) { m_pCoordTran = tran; }
    // Extent of the drawable list in drawing units; 0, and nothing written, for an empty one.
    int GetRect(CGePoint2d& min, CGePoint2d& max);
    int IsSelected(CDrawable* obj);                            // Whether the list of selected objects has it.
    CDrawable* GetCurrentObject() { return m_pCurrentObject; } // See AddCurrentObject; null for none.
    // Copied in and out; see EditingOptions.h.
    const CEditingOptions& GetEditingOptions() const { return m_EditingOptions; }
    void SetEditingOptions(const CEditingOptions& options) { m_EditingOptions = options; }
    // For code that keeps a pointer to the document while its owner may free it: the token tells whether that has
    // happened.
    CKxAliveToken GetAlive() const { return CKxAliveToken(m_Alive); }
    // The undo and redo of this document; null, as at first, where there is none.
    CDrawingHistory* GetHistory() const { return m_pHistory; }

    // ---- Editing ----

    // On top, or at the very bottom; an object that is there already stays where it is. Null is ignored.
    void AddDrawAobject(CDrawable* obj);
    void AddDrawAobjectFront(CDrawable* obj);
    // Adds to the background lines, without a check whether the object is there already.
    void AddNetobject(CDrawable* obj);
    void DeleteNet(); // Frees the objects of the net.
    // Takes the object out of the lists and the current slot and, in spite of its name, frees nothing: the caller
    // takes over the pointer, or the history where there is one (see CDrawingHistory).
    void DeleteObject(CDrawable* obj);
    // The same for all selected ones. They stay allocated: a running command may still refer to them. A history frees
    // them in the end.
    void DeleteAllSelectedObject();
    void MoveToTop(CDrawable* obj); // To the end of the list; nothing for an object that is not in it.
    // They keep the list of selected objects and the objects' draw states in step. Nothing repaints.
    void AddSelected(CDrawable* obj);
    void RemoveSelected(CDrawable* obj);
    void RemoveAllSelected();
    // The display slot of a creating command, drawn on top of everything. Not owned.
    void AddCurrentObject(CDrawable* obj) { m_pCurrentObject = obj; }
    void removeCurrentObject() { m_pCurrentObject = nullptr; }
    // An older interface: a line by layer from (x1, y1) to (x2, y2); the first six arguments are ignored.
    CLine* AddLine(short, short, float, float, short, int, float x1, float y1, float x2, float y2);
    // Frees the objects. The net, the current slot, layers, background and mapping stay. End a running command first:
    // one that holds an object of the drawing otherwise gets no further event, and the next event frees it without
    // Cancel.
    void Reset();

    // ---- Colours ----

    // Of the background: an index of the colour table, or kColorExplicit for the colour of SetBKColor.
    short GetBKColorIndex() { return m_BKColorIndex; }
    void SetBKColorIndex(short index) { m_BKColorIndex = index; }
    // Of objects that commands make: see CDrawable::GetPenColorIndex. Not stored.
    short GetFGColorIndex() { return m_FGColorIndex; }
    void SetFGColorIndex(short index) { m_FGColorIndex = index; }
    // COLORREFs. Setting one makes it explicit; a later index hides it and does not lose it.
    void SetBKColor(DWORD color);
    DWORD GetBKColor();

    // ---- Streaming ----

    // The frame for files. Shows "CGraphicDocument::Serialize错误" on any failure and throws nothing; a failed store
    // gives the archive up, so that the save counts as failed.
    void Serialize(CArchive& ar) override;
    // The stream itself; virtual for derived documents with fields before or after it. Without a mapping the view's
    virtual int StoreData(CArchive& ar); // values are stored as those of a new view,
    virtual int ReadData(CArchive& ar);  // and dropped when loaded.
    // 0 for a null file; a failure raises through to the caller.
    int StoreToMemFile(CMemFile* file);
    // From a host's buffer, which is only read and not copied: 0 for a null or empty one, else 1 whatever the load did.
    int OpenDocument(void* data, unsigned int size);
    int OpenDocument(CMemFile& file); // From its beginning; always 1.
    // By the file dialog. Unlike the two above it adds to what the document holds. 0 when cancelled.
    int OpenDocument();
    // To the document's path, or by DoSave with a null path where that does not exist or can only be read.
    virtual int DoFileSave();
    // To `path`; a null or empty one is asked for in the file dialog. `replace` nonzero: it becomes the document's
    // path. 1; 0 when cancelled or not saved.
    virtual int DoSave(const wchar_t* path, int replace);
    void OnFileSaveAs(); // DoSave that asks for a path.
    // The file dialog, to open or to save, with a title from the module's resources and OFN_ flags. `name` comes in as
    // the suggestion; 0 when cancelled.
    int DoPromptFileName(CString& name, unsigned int titleId, unsigned long flags, int open);
    BOOL OnNewDocument() override; // As that of CDocument.
    // FALSE also tells the history that the drawing is saved as it is now.
    void SetModifiedFlag(BOOL modified = TRUE) override;
    // There is no XML form: always empty, always 0.
    CString GetXML() { return CString(); }
    int LoadFromXML(CString) { return 0; }

private:
    friend class CDrawingHistory;
    friend class CHistoryBaseline;

    CDrawableArray m_DrawableObjs;
    CDrawableArray m_NetDrawableObjs;
    CDrawableArray m_SpareDrawableObjs; // Nothing here fills it; freed with the others.
    CDrawableArray m_SelectedDrawableObjs;
    CLayerManager m_LayerManager;
    CVectorViewCoordTran* m_pCoordTran = nullptr;
    DWORD m_BKColor = 0;
    short m_BKColorIndex = kColorBlack;
    CDrawable* m_pCurrentObject = nullptr;
    short m_FGColorIndex = kColorWhite; // Given to new objects; not in the stream.
    CEditingOptions m_EditingOptions;
    CDrawingHistory* m_pHistory = nullptr; // Set by the history itself. Not owned.
    CKxAlive m_Alive;
};
