#include "NrvWatch.h"

#include "Document.h"

#include <afx.h>

namespace {

constexpr int kArchiveBuffer = 4096;
constexpr std::uint64_t kHashStart = 14695981039346656037u; // FNV-1a.
constexpr std::uint64_t kHashPrime = 1099511628211u;

// Receives what an archive stores and keeps only its hash.
class CHashFile : public CFile {
public:
    void Write(const void* data, UINT count) override {
        const auto* bytes = static_cast<const BYTE*>(data);
        for (UINT i = 0; i < count; ++i) {
            m_Hash = (m_Hash ^ bytes[i]) * kHashPrime;
        }
    }
    ULONGLONG GetPosition() const override { return 0; }
    void Flush() override {}
    std::uint64_t Take() {
        const std::uint64_t hash = m_Hash;
        m_Hash = kHashStart;
        return hash;
    }

private:
    std::uint64_t m_Hash = kHashStart;
};

class CNumbers {
public:
    CNumbers() : m_Archive(&m_File, CArchive::store, kArchiveBuffer) {}
    // The draw state is stored too; it is set to Normal, because the selection does not count.
    std::uint64_t Of(CDrawable* object) {
        const auto state = object->GetDrawState();
        object->SetDrawState(CDrawable::Normal);
        try {
            object->Serialize(m_Archive);
        } catch (...) {
            object->SetDrawState(state);
            throw;
        }
        object->SetDrawState(state);
        m_Archive.Flush();
        return m_File.Take();
    }

private:
    CHashFile m_File;
    CArchive m_Archive;
};

} // namespace

void CNrvWatch::Begin(CGraphicDocument& document) {
    m_Numbers.clear();
    CNumbers numbers;
    const CDrawableArray& objects = *document.GetDrawableObjs();
    m_Numbers.reserve(static_cast<size_t>(objects.GetSize()));
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        m_Numbers.emplace(objects.GetAt(i), numbers.Of(objects.GetAt(i)));
    }
    m_On = true;
}

CNrvDifference CNrvWatch::End(CGraphicDocument& document) {
    CNrvDifference difference;
    CNumbers numbers;
    const CDrawableArray& objects = *document.GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        CDrawable* object = objects.GetAt(i);
        const auto known = m_Numbers.find(object);
        if (known == m_Numbers.end()) {
            difference.added.push_back(object);
            continue;
        }
        if (known->second != numbers.Of(object)) {
            difference.modified.push_back(object);
        }
        m_Numbers.erase(known);
    }
    for (const auto& gone : m_Numbers) {
        difference.removed.push_back(gone.first);
    }
    Abandon();
    return difference;
}

void CNrvWatch::Abandon() {
    m_On = false;
    m_Numbers.clear();
}

void CNrvWatch::Enter(CDrawable* object) {
    if (m_On) {
        m_Numbers[object] = CNumbers().Of(object);
    }
}

void CNrvWatch::Forget(const CDrawable* object) {
    m_Numbers.erase(object);
}
