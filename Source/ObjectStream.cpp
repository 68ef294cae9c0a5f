#include "ObjectStream.h"

#include <climits>
#include <cstring>
#include <unordered_set>
#include <vector>

namespace {

constexpr UINT kMemoryGrow = 4096;
constexpr int kArchiveBuffer = 4096;

// A document that lists objects of another one, and gives them back unfreed, in their own states.
class CBorrowingDocument : public CGraphicDocument {
public:
    ~CBorrowingDocument() override {
        for (size_t i = 0; i < m_States.size(); ++i) {
            GetDrawableObjs()->GetAt(static_cast<INT_PTR>(i))->SetDrawState(m_States[i]);
        }
        GetDrawableObjs()->RemoveAll();
    }
    void Borrow(CDrawable* object) {
        m_States.reserve(m_States.size() + 1);
        GetDrawableObjs()->Add(object);
        m_States.push_back(object->GetDrawState());
        object->SetDrawState(CDrawable::Normal);
    }

private:
    std::vector<enum CDrawable::DrawState> m_States;
};

} // namespace

bool CObjectStream::Store(CGraphicDocument* document, const CDrawableArray& objects, CByteArray& bytes) {
    bytes.RemoveAll();
    std::unordered_set<const CDrawable*> wanted;
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        wanted.insert(objects.GetAt(i));
    }
    CBorrowingDocument part;
    part.SetVectorViewCoordTran(document->GetVectorViewCoordTran());
    part.SetBKColor(document->GetBKColor());
    CDrawableArray* all = document->GetDrawableObjs();
    for (INT_PTR i = 0; i < all->GetSize(); ++i) {
        if (all->GetAt(i) != nullptr && wanted.count(all->GetAt(i)) != 0) {
            part.Borrow(all->GetAt(i));
        }
    }
    if (part.GetDrawableObjs()->IsEmpty()) {
        return false;
    }
    CMemFile file(kMemoryGrow);
    try {
        if (part.StoreToMemFile(&file) == 0) {
            return false;
        }
        bytes.SetSize(static_cast<INT_PTR>(file.GetLength()));
        file.SeekToBegin();
        file.Read(bytes.GetData(), static_cast<UINT>(bytes.GetSize()));
    } catch (CException* e) {
        e->Delete();
        bytes.RemoveAll();
        return false;
    }
    return true;
}

bool CObjectStream::Load(const void* bytes, size_t length, CDrawableArray& objects) {
    int version = 0;
    if (bytes == nullptr || length < sizeof(version) || length > UINT_MAX) {
        return false;
    }
    std::memcpy(&version, bytes, sizeof(version));
    if (version != kDocumentVersion) {
        return false; // ReadData would show a message box.
    }
    CMemFile file(kMemoryGrow);
    file.Attach(const_cast<BYTE*>(static_cast<const BYTE*>(bytes)), static_cast<UINT>(length), 0);
    CGraphicDocument part; // Frees what it holds where loading ends early.
    bool whole = false;
    try {
        CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, kArchiveBuffer);
        ar.m_pDocument = &part;
        part.ReadData(ar);
        ar.Close();
        whole = true;
    } catch (CException* e) {
        e->Delete();
    }
    file.Detach();
    CDrawableArray* loaded = part.GetDrawableObjs();
    if (!whole || loaded->IsEmpty()) {
        return false;
    }
    for (INT_PTR i = 0; i < loaded->GetSize(); ++i) {
        loaded->GetAt(i)->SetDrawState(CDrawable::Normal);
    }
    objects.Append(*loaded);
    loaded->RemoveAll();
    return true;
}
