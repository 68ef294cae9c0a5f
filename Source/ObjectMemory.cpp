#include "ObjectMemory.h"

#include <algorithm>

namespace {

constexpr UINT kMemoryGrow = 1024;
constexpr int kArchiveBuffer = 4096;

// The archive takes the file's position when it is made, so the file is set to its front before.
CFile* Rewound(CFile& file) {
    file.Seek(0, CFile::begin);
    return &file;
}

} // namespace

CObjectMemory::CObjectMemory() : CMemFile(kMemoryGrow) {}

void CObjectMemory::Store(CDrawable* object, bool exactly) {
    CDrawableArray objects;
    objects.Add(object);
    Store(objects, exactly);
}

void CObjectMemory::Store(const CDrawableArray& objects, bool exactly) {
    CArchive ar(this, CArchive::store, kArchiveBuffer);
    CObjectStates states;
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        objects.GetAt(i)->Serialize(ar);
        if (exactly) {
            m_States.emplace_back();
            states.Keep(*objects.GetAt(i), true, m_States.back());
        }
    }
    ar.Close();
}

bool CObjectMemory::IsEqualTo(const CDrawableArray& objects) const {
    CObjectMemory other;
    other.Store(objects);
    return std::equal(m_lpBuffer, m_lpBuffer + GetLength(), other.m_lpBuffer, other.m_lpBuffer + other.GetLength());
}

// Compatibility 114: restored objects have gone through the rules of loading.
void CObjectMemory::Restore(CDrawable* object) {
    CDrawableArray objects;
    objects.Add(object);
    Restore(objects);
}

void CObjectMemory::Restore(const CDrawableArray& objects) {
    CObjectMemoryReader reader(*this);
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        reader.Read(objects.GetAt(i));
        if (!m_States.empty()) {
            CObjectStates::PutBack(*objects.GetAt(i), m_States[static_cast<std::size_t>(i)]);
        }
    }
}

CObjectMemoryReader::CObjectMemoryReader(CObjectMemory& memory)
    : m_Archive(Rewound(memory), CArchive::load, kArchiveBuffer) {}

void CObjectMemoryReader::Read(CDrawable* object) {
    object->Serialize(m_Archive);
}
