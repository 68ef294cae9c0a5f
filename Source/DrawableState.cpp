#include "DrawableState.h"

#include "Drawable.h"

#include <afx.h>

#include <algorithm>
#include <new>

namespace {

constexpr UINT kMemoryGrow = 1024;
constexpr int kArchiveBuffer = 4096;

// The draw state belongs to the selection, and not to the content: stored bytes are those of an object that is not
// selected.
class CNormalState {
public:
    explicit CNormalState(CDrawable& object) : m_Object(object), m_State(object.GetDrawState()) {
        object.SetDrawState(CDrawable::Normal);
    }
    ~CNormalState() { m_Object.SetDrawState(m_State); }
    CNormalState(const CNormalState&) = delete;
    CNormalState& operator=(const CNormalState&) = delete;

private:
    CDrawable& m_Object;
    enum CDrawable::DrawState m_State;
};

void StoreWhole(CDrawable& object, std::vector<BYTE>& bytes) {
    CMemFile file(kMemoryGrow);
    CArchive ar(&file, CArchive::store, kArchiveBuffer);
    object.Serialize(ar);
    ar.Close();
    const size_t before = bytes.size();
    const UINT length = static_cast<UINT>(file.GetLength());
    bytes.resize(before + length);
    file.SeekToBegin();
    file.Read(bytes.data() + before, length);
}

// Appends what the object's Serialize writes; nothing for an object that cannot be stored. Throws when the memory does
// not suffice.
void Store(CDrawable& object, std::vector<BYTE>& bytes) {
    const size_t before = bytes.size();
    const CNormalState normal(object);
    try {
        StoreWhole(object, bytes);
    } catch (CMemoryException*) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (CException* e) {
        e->Delete();
        bytes.resize(before);
    } catch (...) {
        bytes.resize(before);
    }
}

void Load(CDrawable& object, const CDrawableState& from) {
    if (from.bytes.size() == from.fields) {
        return;
    }
    const CNormalState normal(object);
    CMemFile file(const_cast<BYTE*>(from.bytes.data()) + from.fields,
                  static_cast<UINT>(from.bytes.size() - from.fields), 0);
    CArchive ar(&file, CArchive::load, kArchiveBuffer);
    object.Serialize(ar);
}

} // namespace

size_t CDrawableState::Bytes() const {
    size_t characters = 0;
    for (const CString& text : texts) {
        characters += static_cast<size_t>(text.GetLength());
    }
    return sizeof(CDrawableState) + bytes.size() + texts.size() * sizeof(CString) + characters * sizeof(WCHAR);
}

// ---- The exchange --------------------------------------------------------------------------------------------------

void CStateExchange::RawOther(void* field, size_t size) {
    if (m_Mode == Mode::Keep) {
        const auto* from = static_cast<const BYTE*>(field);
        m_Kept->bytes.insert(m_Kept->bytes.end(), from, from + size);
        return;
    }
    if (!m_Equal || size > m_From.fields - m_Byte) {
        m_Equal = false;
        return;
    }
    if (m_Mode == Mode::PutBack) {
        std::memcpy(field, m_From.bytes.data() + m_Byte, size);
    }
    m_Byte += size;
}

void CStateExchange::Text(CString& field) {
    if (m_Mode == Mode::Keep) {
        m_Kept->texts.push_back(field);
        return;
    }
    if (!m_Equal || m_Text >= m_From.texts.size()) {
        m_Equal = false;
        return;
    }
    const CString& kept = m_From.texts[m_Text++];
    if (m_Mode == Mode::PutBack) {
        field = kept;
    } else if (m_Mode == Mode::Compare && m_Derived == 0) {
        // An unchanged text has its characters at the same address.
        const LPCWSTR a = field;
        const LPCWSTR b = kept;
        m_Equal = a == b || (field.GetLength() == kept.GetLength() &&
                             std::memcmp(a, b, static_cast<size_t>(kept.GetLength()) * sizeof(WCHAR)) == 0);
    }
}

void CStateExchange::Count(INT_PTR& count) {
    if (m_Mode == Mode::Keep) {
        Raw(&count, sizeof count);
        return;
    }
    const INT_PTR present = count;
    if (!m_Equal || sizeof count > m_From.fields - m_Byte) {
        m_Equal = false;
        count = 0;
        return;
    }
    std::memcpy(&count, m_From.bytes.data() + m_Byte, sizeof count);
    m_Byte += sizeof count;
    if (m_Mode == Mode::Compare && m_Derived == 0 && present != count) {
        m_Equal = false;
        count = 0;
    }
}

// ---- What a history does -------------------------------------------------------------------------------------------

bool CObjectStates::NamesAllFields(CDrawable& object) {
    CDrawableState scratch;
    CStateExchange exchange(scratch);
    object.ExchangeState(exchange);
    return exchange.m_Level != nullptr && *exchange.m_Level == typeid(object);
}

void CObjectStates::Keep(CDrawable& object, bool namesAll, CDrawableState& kept) {
    m_Scratch.bytes.clear();
    m_Scratch.texts.clear();
    CStateExchange exchange(m_Scratch);
    object.ExchangeState(exchange);
    const size_t fields = m_Scratch.bytes.size();
    if (!namesAll) {
        Store(object, m_Scratch.bytes);
    }
    CDrawableState exact;
    exact.bytes = m_Scratch.bytes;
    exact.texts = m_Scratch.texts;
    exact.fields = fields;
    m_Scratch.texts.clear();
    std::swap(kept, exact);
}

bool CObjectStates::IsAs(CDrawable& object, bool namesAll, const CDrawableState& kept) {
    CStateExchange exchange(CStateExchange::Mode::Compare, kept);
    object.ExchangeState(exchange);
    if (!exchange.m_Equal || exchange.m_Byte != kept.fields || exchange.m_Text != kept.texts.size()) {
        return false;
    }
    if (namesAll) {
        return true;
    }
    std::vector<BYTE> stored;
    Store(object, stored);
    // An object that can't be stored has no bytes: the address of `stored` may be null.
    return std::equal(stored.begin(), stored.end(), kept.bytes.begin() + static_cast<std::ptrdiff_t>(kept.fields),
                      kept.bytes.end());
}

void CObjectStates::Reserve(CDrawable& object, bool namesAll, const CDrawableState& target) {
    if (!namesAll) {
        Load(object, target);
    }
    CStateExchange exchange(CStateExchange::Mode::Reserve, target);
    object.ExchangeState(exchange);
}

void CObjectStates::Trim(CDrawable& object, bool namesAll, const CDrawableState& present) {
    if (!namesAll) {
        try {
            Load(object, present);
            Reserve(object, true, present);
            PutBack(object, present);
        } catch (CException* e) {
            e->Delete();
        } catch (...) {
        }
        return;
    }
    CStateExchange exchange(CStateExchange::Mode::Trim, present);
    object.ExchangeState(exchange);
}

void CObjectStates::PutBack(CDrawable& object, const CDrawableState& target) {
    CStateExchange exchange(CStateExchange::Mode::PutBack, target);
    object.ExchangeState(exchange);
}
