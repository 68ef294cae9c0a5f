// CGraphicDocument: its stream, and the ways to open and save one. Layer 6: document.

#include "Document.h"

#include "DrawingHistory.h"
#include "MemoryInfo.h"

#include <afxdlgs.h>
#include <afxres.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr UINT kArchiveBuffer = 4096;
constexpr UINT kMemoryGrow = 1024;
constexpr DWORD kPromptFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;
constexpr unsigned long kPathFlags = OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;

// Titles and filter of the file dialog: the string resources that every MFC program carries.
constexpr UINT kTitleOpen = 0xF000;
constexpr UINT kTitleSave = 0xF001;
constexpr UINT kFilterAllFiles = 0xF002;
constexpr UINT kTitleSaveCopy = 0xF004;

// During a load the history records nothing; afterwards it starts anew, once, also after an exception.
class CHistoryPause {
public:
    explicit CHistoryPause(CDrawingHistory* history) : m_pHistory(history) {
        if (history != nullptr) {
            m_HistoryAlive.emplace(history->GetAlive());
            history->BeginLoad();
        }
    }
    CHistoryPause(const CHistoryPause&) = delete;
    CHistoryPause& operator=(const CHistoryPause&) = delete;
    ~CHistoryPause() {
        if (m_HistoryAlive && m_HistoryAlive->IsAlive()) {
            m_pHistory->EndLoad();
        }
    }

private:
    CDrawingHistory* m_pHistory;
    std::optional<CKxAliveToken> m_HistoryAlive;
};

// A set of addresses with open addressing, at most half full. Neighbouring addresses of the heap have neighbouring
// places.
class CAddressSet {
public:
    CAddressSet() : m_Places(1024) {}
    bool Has(const void* address) const { return m_Places[PlaceOf(address)] != nullptr; }
    void Add(const void* address) {
        if (++m_Count * 2 > m_Places.size()) {
            std::vector<const void*> old(m_Places.size() * 2);
            old.swap(m_Places);
            for (const void* each : old) {
                if (each != nullptr) {
                    m_Places[PlaceOf(each)] = each;
                }
            }
        }
        m_Places[PlaceOf(address)] = address;
    }

private:
    // The place of the address, or the empty one where it belongs.
    size_t PlaceOf(const void* address) const {
        const auto number = reinterpret_cast<std::uint64_t>(address);
        size_t place = static_cast<size_t>((((number >> 12) * 0x9E3779B97F4A7C15u) >> 32) + (number >> 4) % 256);
        while (m_Places[place & (m_Places.size() - 1)] != nullptr &&
               m_Places[place & (m_Places.size() - 1)] != address) {
            ++place;
        }
        return place & (m_Places.size() - 1);
    }

    std::vector<const void*> m_Places; // A power of two of them.
    size_t m_Count = 0;
};

void ShowFailure() {
    AfxMessageBox(L"CGraphicDocument::Serialize错误");
}

} // namespace

// ---- The stream ----------------------------------------------------------------------------------------------------

void CGraphicDocument::Serialize(CArchive& ar) {
    const bool storing = ar.IsStoring() != FALSE;
    try {
        if (storing) {
            StoreData(ar);
        } else {
            ReadData(ar);
        }
        return;
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
    if (storing) {
        // The file holds only a part of the drawing. Aborted, it does not replace a good file.
        ar.Abort();
    }
    ShowFailure();
}

int CGraphicDocument::StoreData(CArchive& ar) {
    ar << kDocumentVersion << m_BKColor << m_BKColorIndex;
    CVectorViewCoordTran newView;
    CVectorViewCoordTran& mapping = m_pCoordTran != nullptr ? *m_pCoordTran : newView;
    ar << mapping.GetScale() << mapping.GetOriginX() << mapping.GetOriginY() << mapping.GethScreen();
    ar << static_cast<int>(m_DrawableObjs.GetSize());
    ar.SetStoreParams(static_cast<UINT>(m_DrawableObjs.GetSize()));
    for (INT_PTR i = 0; i < m_DrawableObjs.GetSize(); ++i) {
        if (m_DrawableObjs[i] != nullptr) {
            ar.WriteObject(m_DrawableObjs[i]);
        }
    }
    return 1;
}

int CGraphicDocument::ReadData(CArchive& ar) {
    int version = 0;
    ar >> version;
    if (version != kDocumentVersion) {
        AfxMessageBox(L"文件格式错误!");
        return 0;
    }
    // Header fields take effect as they are read: when a stream ends early, the fields before its end are set.
    ar >> m_BKColor;
    ar >> m_BKColorIndex;
    CVectorViewCoordTran dropped;
    CVectorViewCoordTran& mapping = m_pCoordTran != nullptr ? *m_pCoordTran : dropped;
    float scale = 0.0f;
    double origin = 0.0;
    int height = 0;
    ar >> scale;
    mapping.SetScale(scale);
    ar >> origin;
    mapping.SetOriginX(origin);
    ar >> origin;
    mapping.SetOriginY(origin);
    ar >> height;
    mapping.SethScreen(height);
    int count = 0;
    ar >> count;
    CAddressSet seen;
    for (int i = 0; i < count; ++i) {
        // No class is required beyond being a drawable: anything else could never be drawn or freed as one.
        auto* obj = static_cast<CDrawable*>(ar.ReadObject(RUNTIME_CLASS(CDrawable)));
        if (obj == nullptr) {
            continue;
        }
        if (seen.Has(obj)) {
            // A reference back to an object that is in the list already: drawings have none.
            AfxThrowArchiveException(CArchiveException::badIndex);
        }
        std::unique_ptr<CDrawable> owned(obj);
        seen.Add(obj);
        m_DrawableObjs.Add(obj);
        KX_ADD_MEMORY(owned.release());
    }
    return 1;
}

int CGraphicDocument::StoreToMemFile(CMemFile* file) {
    if (file == nullptr) {
        return 0;
    }
    CArchive ar(file, CArchive::store, kArchiveBuffer);
    return StoreData(ar) != 0;
}

// ---- Opening -------------------------------------------------------------------------------------------------------

int CGraphicDocument::OpenDocument(CMemFile& file) {
    IsModified();
    file.Seek(0, CFile::begin);
    const CHistoryPause pause(m_pHistory);
    // The old drawing is freed even if the new one can't be read.
    Reset();
    DeleteContents();
    SetModifiedFlag(TRUE);
    bool begun = false;
    try {
        CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, kArchiveBuffer);
        begun = true;
        ar.m_pDocument = this;
        ar.m_bForceFlat = FALSE;
        if (file.GetLength() != 0) {
            Serialize(ar);
        }
        ar.Close();
    } catch (CException* e) {
        e->Delete();
        DeleteContents();
        if (!begun) {
            // No memory for the archive itself: Serialize, which reports its own failures, was not called.
            ShowFailure();
        }
    }
    SetModifiedFlag(FALSE);
    return 1;
}

// Compatibility 64: a damaged stream counts as loaded.
int CGraphicDocument::OpenDocument(void* data, unsigned int size) {
    if (data == nullptr || size == 0) {
        return 0;
    }
    CMemFile file(kMemoryGrow);
    file.Attach(static_cast<BYTE*>(data), size, 0);
    const int result = OpenDocument(file);
    file.Detach();
    return result;
}

// Compatibility 63: opening by the dialog adds to the drawing.
int CGraphicDocument::OpenDocument() {
    CString name;
    const CKxAliveToken alive(m_Alive);
    if (DoPromptFileName(name, kTitleOpen, kPathFlags, 1) == 0 || !alive.IsAlive()) {
        return 0;
    }
    // OnOpenDocument of the base class does not call Reset.
    OnOpenDocument(name);
    return 1;
}

// ---- Saving --------------------------------------------------------------------------------------------------------

int CGraphicDocument::DoFileSave() {
    const DWORD attributes = ::GetFileAttributes(GetPathName());
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        // A path that does not exist comes here too: its attributes have all bits set.
        return DoSave(nullptr, TRUE);
    }
    return DoSave(GetPathName(), TRUE);
}

int CGraphicDocument::DoSave(const wchar_t* path, int replace) {
    const CKxAliveToken alive(m_Alive); // The file dialog and a message of a failed save run code of the host.
    CString name = path;
    if (name.IsEmpty()) {
        name = GetPathName();
        if (replace != 0 && name.IsEmpty()) {
            name = GetTitle();
            const int bad = name.FindOneOf(L" #%;/\\");
            if (bad != -1) {
                name = name.Left(bad);
            }
        }
        if (DoPromptFileName(name, replace != 0 ? kTitleSave : kTitleSaveCopy, kPathFlags, 0) == 0 ||
            !alive.IsAlive()) {
            return 0;
        }
    }
    const CWaitCursor wait;
    const bool isNew = ::GetFileAttributes(name) == INVALID_FILE_ATTRIBUTES;
    if (!OnSaveDocument(name)) {
        // What the attempt left is deleted. A file that was there before is whole, since only whole files replace it.
        if (path == nullptr && isNew) {
            try {
                CFile::Remove(name);
            } catch (CException* e) {
                e->Delete();
            }
        }
        return 0;
    }
    if (replace != 0 && alive.IsAlive()) {
        SetPathName(name, TRUE);
    }
    return 1;
}

void CGraphicDocument::OnFileSaveAs() {
    DoSave(nullptr, TRUE);
}

int CGraphicDocument::DoPromptFileName(CString& name, unsigned int titleId, unsigned long flags, int open) {
    CFileDialog dialog(open, nullptr, nullptr, kPromptFlags, nullptr, nullptr, 0, TRUE);
    CString title;
    VERIFY(title.LoadString(titleId));
    dialog.m_ofn.Flags |= flags;
    CString filter;
    VERIFY(filter.LoadString(kFilterAllFiles));
    filter += L'\0';
    filter += L"*.*";
    filter += L'\0';
    dialog.m_ofn.nMaxCustFilter++;
    dialog.m_ofn.lpstrFilter = filter;
    dialog.m_ofn.lpstrTitle = title;
    dialog.m_ofn.lpstrFile = name.GetBuffer(_MAX_PATH);
    dialog.m_ofn.nMaxFile = _MAX_PATH;
    const INT_PTR answer = dialog.DoModal();
    name.ReleaseBuffer();
    return answer == IDOK;
}
