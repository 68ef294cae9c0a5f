// CArchive: objects and classes in the published format: tags, class records, numbers, schemas. Layer 1: afx.
#include "ArchiveMaps.h"

#include <memory>
#include <new>

namespace {

// An object may stream others from its Serialize. Objects that are nested deeper than in any sensible stream must not
// exhaust the stack, and what could not be loaded again is not stored either.
const int kDeepestObject = 1000;

// Counts one level more until it is destroyed.
class CDeeper {
public:
    explicit CDeeper(int& nDepth) : m_nDepth(nDepth) { ++m_nDepth; }
    ~CDeeper() { --m_nDepth; }
    CDeeper(const CDeeper&) = delete;
    CDeeper& operator=(const CDeeper&) = delete;

private:
    int& m_nDepth;
};

} // namespace

// ---- numbers -------------------------------------------------------------------------------------------------------

size_t ArchiveStoreMap::Place(const void* pKey) const {
    const size_t nMask = m_slots.size() - 1;
    // Objects of one page have places near each other: they are mostly stored in the order of their addresses.
    const ULONGLONG nKey = reinterpret_cast<ULONGLONG>(pKey);
    size_t i = static_cast<size_t>(((nKey >> 12) * 0x9E3779B97F4A7C15ULL >> 32) + ((nKey >> 4) & 0xFF)) & nMask;
    while (m_slots[i].pKey != NULL && m_slots[i].pKey != pKey) {
        i = (i + 1) & nMask;
    }
    return i;
}

void ArchiveStoreMap::Resize(size_t nSlots) {
    std::vector<Slot> old(nSlots);
    old.swap(m_slots);
    for (const Slot& slot : old) {
        if (slot.pKey != NULL) {
            m_slots[Place(slot.pKey)] = slot;
        }
    }
}

void ArchiveStoreMap::Reserve(size_t nEntries) {
    size_t nSlots = 64;
    while (nSlots < nEntries * 2) {
        nSlots *= 2;
    }
    if (nSlots > m_slots.size()) {
        Resize(nSlots);
    }
}

DWORD ArchiveStoreMap::Find(const void* pKey) const {
    return m_slots.empty() ? 0 : m_slots[Place(pKey)].nNumber;
}

void ArchiveStoreMap::Add(const void* pKey, DWORD nNumber) {
    Reserve(m_nUsed + 1);
    Slot& slot = m_slots[Place(pKey)];
    if (slot.pKey == NULL) {
        ++m_nUsed;
    }
    slot.pKey = pKey;
    slot.nNumber = nNumber;
}

CArchive::ObjectMaps::ObjectMaps(bool bLoading) : nCount(1) {
    if (bLoading) {
        loadArray.push_back({NULL, ArchiveLoadEntry::isObject, 0});
    }
}

DWORD CArchive::ObjectMaps::TakeNumber(CArchive& ar) {
    if (nCount >= nMaxMapCount) {
        ar.Fail(CArchiveException::badIndex);
    }
    return nCount++;
}

CArchive::ObjectMaps& CArchive::Maps() {
    if (m_pMaps == NULL) {
        try {
            m_pMaps = new ObjectMaps(IsLoading() != FALSE);
        } catch (const std::bad_alloc&) {
            AfxThrowMemoryException();
        }
    }
    return *m_pMaps;
}

void CArchive::SetStoreParams(UINT nHashSize, UINT) {
    try {
        Maps().storeMap.Reserve(nHashSize > 0x100000 ? 0x100000 : nHashSize);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

void CArchive::SetLoadParams(UINT nGrowBy) {
    try {
        Maps().loadArray.reserve(nGrowBy > 0x100000 ? 0x100000 : nGrowBy);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

UINT CArchive::GetObjectSchema() {
    const UINT nSchema = m_nObjectSchema;
    m_nObjectSchema = static_cast<UINT>(-1);
    return nSchema;
}

void CArchive::SetObjectSchema(UINT nSchema) {
    m_nObjectSchema = nSchema;
}

// ---- storing -------------------------------------------------------------------------------------------------------

void CArchive::WriteTag(DWORD dwTag, bool bClass) {
    if (dwTag < wBigObjectTag) {
        *this << static_cast<WORD>(bClass ? (wClassTag | dwTag) : dwTag);
    } else {
        *this << wBigObjectTag << static_cast<DWORD>(bClass ? (dwBigClassTag | dwTag) : dwTag);
    }
}

void CArchive::WriteObject(const CObject* pOb) {
    CheckDirection(false);
    if (pOb == NULL) {
        *this << wNullTag;
        return;
    }
    const DWORD nKnown = Maps().storeMap.Find(pOb);
    if (nKnown != 0) {
        WriteTag(nKnown, false);
        return;
    }
    if (m_nObjectDepth >= kDeepestObject) {
        Fail(CArchiveException::genericException);
    }
    WriteClass(pOb->GetRuntimeClass());
    MapObject(pOb);
    const CDeeper deeper(m_nObjectDepth);
    const_cast<CObject*>(pOb)->Serialize(*this);
}

void CArchive::WriteClass(const CRuntimeClass* pClassRef) {
    CheckDirection(false);
    if (pClassRef == NULL) {
        AfxThrowInvalidArgException();
    }
    if (pClassRef->m_wSchema == 0xFFFF) {
        AfxThrowNotSupportedException();
    }
    const DWORD nKnown = Maps().storeMap.Find(pClassRef);
    if (nKnown != 0) {
        WriteTag(nKnown, true);
        return;
    }
    const DWORD nNumber = Maps().TakeNumber(*this);
    *this << wNewClassTag;
    pClassRef->Store(*this);
    try {
        Maps().storeMap.Add(pClassRef, nNumber);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

void CArchive::MapObject(const CObject* pOb) {
    ObjectMaps& maps = Maps();
    if (pOb == NULL) {
        return;
    }
    const DWORD nNumber = maps.TakeNumber(*this);
    try {
        if (IsStoring()) {
            maps.storeMap.Add(pOb, nNumber);
        } else {
            maps.loadArray.push_back({const_cast<CObject*>(pOb), ArchiveLoadEntry::isObject, 0});
        }
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

// ---- loading -------------------------------------------------------------------------------------------------------

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* pClassRefRequested, UINT* pSchema, DWORD* pObTag) {
    CheckDirection(true);
    if (pClassRefRequested != NULL && pClassRefRequested->m_wSchema == 0xFFFF) {
        AfxThrowNotSupportedException();
    }
    ObjectMaps& maps = Maps();

    WORD wTag;
    *this >> wTag;
    DWORD obTag;
    if (wTag == wBigObjectTag) {
        *this >> obTag;
    } else {
        obTag = (static_cast<DWORD>(wTag & wClassTag) << 16) | (wTag & static_cast<WORD>(~wClassTag));
    }
    if ((obTag & dwBigClassTag) == 0) {
        // An object that the stream has held already, or none at all.
        if (pObTag == NULL) {
            Fail(CArchiveException::badIndex);
        }
        *pObTag = obTag;
        return NULL;
    }

    CRuntimeClass* pClassRef;
    UINT nSchema;
    if (wTag == wNewClassTag) {
        pClassRef = CRuntimeClass::Load(*this, &nSchema);
        if (pClassRef == NULL) {
            Fail(CArchiveException::badClass);
        }
        if ((pClassRef->m_wSchema & VERSIONABLE_SCHEMA) == 0 && pClassRef->m_wSchema != nSchema) {
            Fail(CArchiveException::badSchema);
        }
        maps.TakeNumber(*this);
        // From here on the new record of a class is valid, also for tags that point to its first one.
        DWORD nClass = 0;
        while (nClass < maps.loadedClasses.size() && maps.loadedClasses[nClass].pClass != pClassRef) {
            ++nClass;
        }
        try {
            if (nClass == maps.loadedClasses.size()) {
                maps.loadedClasses.push_back({pClassRef, nSchema});
            }
            maps.loadedClasses[nClass].nSchema = nSchema;
            maps.loadArray.push_back({NULL, ArchiveLoadEntry::isClass, nClass});
        } catch (const std::bad_alloc&) {
            AfxThrowMemoryException();
        }
    } else {
        const DWORD nIndex = obTag & ~dwBigClassTag;
        if (nIndex == 0 || nIndex >= maps.loadArray.size()) {
            Fail(CArchiveException::badIndex);
        }
        const ArchiveLoadEntry& entry = maps.loadArray[nIndex];
        if (entry.kind != ArchiveLoadEntry::isClass) {
            Fail(CArchiveException::badClass);
        }
        pClassRef = maps.loadedClasses[entry.nClass].pClass;
        nSchema = maps.loadedClasses[entry.nClass].nSchema;
    }
    if (pClassRefRequested != NULL && !pClassRef->IsDerivedFrom(pClassRefRequested)) {
        Fail(CArchiveException::badClass);
    }

    if (pSchema != NULL) {
        *pSchema = nSchema;
    } else {
        m_nObjectSchema = nSchema;
    }
    if (pObTag != NULL) {
        *pObTag = obTag;
    }
    return pClassRef;
}

CObject* CArchive::ReadObject(const CRuntimeClass* pClassRefRequested) {
    UINT nSchema;
    DWORD obTag;
    CRuntimeClass* pClassRef = ReadClass(pClassRefRequested, &nSchema, &obTag);
    ObjectMaps& maps = Maps();
    if (pClassRef == NULL) {
        if (obTag >= maps.loadArray.size()) {
            Fail(CArchiveException::badIndex);
        }
        const ArchiveLoadEntry& entry = maps.loadArray[obTag];
        if (entry.kind != ArchiveLoadEntry::isObject) {
            Fail(CArchiveException::badClass);
        }
        if (entry.pObject == NULL && obTag != 0) {
            Fail(CArchiveException::badIndex);
        }
        if (entry.pObject != NULL && pClassRefRequested != NULL && !entry.pObject->IsKindOf(pClassRefRequested)) {
            Fail(CArchiveException::badClass);
        }
        return entry.pObject;
    }

    if (pClassRef->m_pfnCreateObject == NULL) {
        Fail(CArchiveException::badClass);
    }
    if (m_nObjectDepth >= kDeepestObject) {
        Fail(CArchiveException::genericException);
    }
    std::unique_ptr<CObject> pOb(pClassRef->CreateObject());
    if (pOb == NULL) {
        AfxThrowMemoryException();
    }
    const size_t nNumber = maps.loadArray.size();
    // Numbered before it reads itself, so that what it refers to may refer back to it.
    MapObject(pOb.get());
    const UINT nOuterSchema = m_nObjectSchema;
    m_nObjectSchema = nSchema;
    const CDeeper deeper(m_nObjectDepth);
    try {
        pOb->Serialize(*this);
    } catch (...) {
        m_nObjectSchema = nOuterSchema;
        // No caller has the object yet: it is freed, perhaps with objects that it has read. None of their numbers
        // refers to an object after this.
        for (size_t n = nNumber; m_pMaps != NULL && n < m_pMaps->loadArray.size(); ++n) {
            m_pMaps->loadArray[n].pObject = NULL;
        }
        throw;
    }
    m_nObjectSchema = nOuterSchema;
    return pOb.release();
}

CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb) {
    ar.WriteObject(pOb);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb) {
    pOb = ar.ReadObject(NULL);
    return ar;
}

void CArchive::SerializeClass(const CRuntimeClass* pClassRef) {
    if (pClassRef == NULL) {
        AfxThrowInvalidArgException();
    }
    if (IsStoring()) {
        WriteClass(pClassRef);
    } else {
        ReadClass(pClassRef);
    }
}
