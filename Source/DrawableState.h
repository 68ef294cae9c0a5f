// CDrawableState: the content of one object as a history keeps it, and CStateExchange, by which each kind names its
// fields.
// Layer 5: drawables.
#pragma once

#include "Geometry2d.h"
#include "VectorViewApi.h"

#include <afxtempl.h>

#include <cstring>
#include <type_traits>
#include <typeinfo>
#include <vector>

class CDrawable;

// Told when the object that it watches is freed. An object has one watcher at most: the record of a history.
class CDrawableWatch {
public:
    // From the destructor of CDrawable: nothing of the object but its address may be used. Must not throw.
    virtual void OnDrawableFreed() = 0;

protected:
    CDrawableWatch() = default;
    ~CDrawableWatch() = default;
};

// The content of one object. Texts are shared with the object; a text that is changed afterwards is another one.
struct CDrawableState {
    std::vector<BYTE> bytes;    // The fields, one after the other, and then what the object's own Serialize writes.
    std::vector<CString> texts; // Those of the fields, in their order.
    size_t fields = 0;          // Bytes of the fields.

    size_t Bytes() const; // How much memory it takes, with its texts.
};

// Visits the fields of an object: keeps them, compares them with what was kept, or puts them back. Each kind names its
// fields in CDrawable::ExchangeState, in the same order in all modes: the base's first, then Level, then its own.
class NRVECTORVIEW_API CStateExchange {
public:
    // The object's class, at the level that names its fields now. A kind of a host that does not call it with its own
    // class is kept by its Serialize as well.
    template <class Kind>
    void Level() {
        m_Level = &typeid(Kind);
    }
    // A number, a truth value or an enumeration.
    template <class T>
    void Value(T& field) {
        static_assert(std::is_arithmetic<T>::value || std::is_enum<T>::value, "bytes of padding can't be compared");
        Raw(&field, sizeof field);
    }
    // Both coordinates and the snap kind.
    void Point(CGePoint2d& point) {
        Value(point.x);
        Value(point.y);
        Value(point.type);
    }
    void Text(CString& field); // Kept as a shared text, not as bytes.
    // A CArray of numbers, points or texts, or a CUIntArray.
    template <class Array>
    void List(Array& list) {
        INT_PTR count = list.GetSize();
        Count(count);
        if (m_Mode == Mode::Reserve ? count > list.GetSize() : m_Mode == Mode::Trim && count < list.GetSize()) {
            list.SetSize(count);
        } else if (m_Mode == Mode::PutBack && count != list.GetSize()) {
            list.SetSize(count);
        }
        std::remove_reference_t<decltype(list[0])> skipped{};
        for (INT_PTR i = 0; i < count && m_Equal; ++i) {
            Element(i < list.GetSize() ? list[i] : skipped);
        }
    }
    // Fields that painting sets anew. They are kept and put back; a difference in them alone does not count.
    template <class Body>
    void Derived(Body body) {
        ++m_Derived;
        body();
        --m_Derived;
    }

private:
    friend class CObjectStates;

    // Reserve comes before PutBack and is the part that may fail: lists grow to what they will hold. Trim undoes a
    // Reserve: lists shrink to what they held.
    enum class Mode { Keep, Compare, Reserve, Trim, PutBack };

    explicit CStateExchange(CDrawableState& kept) : m_Mode(Mode::Keep), m_Kept(&kept), m_From(kept) {}
    CStateExchange(Mode mode, const CDrawableState& from) : m_Mode(mode), m_From(from) {}

    void Raw(void* field, size_t size) {
        if (m_Mode != Mode::Compare) {
            RawOther(field, size);
        } else if (!m_Equal || size > m_From.fields - m_Byte) {
            m_Equal = false;
        } else {
            m_Equal = m_Derived != 0 || std::memcmp(field, m_From.bytes.data() + m_Byte, size) == 0;
            m_Byte += size;
        }
    }
    void RawOther(void* field, size_t size);
    // In: the present number of elements. Out: how many are visited, which is the number kept in all modes but Keep; 0
    // where the rest need not be compared.
    void Count(INT_PTR& count);
    void Element(CGePoint2d& point) { Point(point); }
    void Element(CString& text) { Text(text); }
    template <class T>
    void Element(T& number) {
        Value(number);
    }

    Mode m_Mode;
    CDrawableState* m_Kept = nullptr;
    const CDrawableState& m_From;
    size_t m_Byte = 0;
    size_t m_Text = 0;
    int m_Derived = 0;
    bool m_Equal = true; // False also when the object names more fields than were kept.
    const std::type_info* m_Level = nullptr;
};

// What a history does with the content of objects.
class CObjectStates {
public:
    // Whether the fields named by the object are all that it has: otherwise its Serialize is part of its content.
    static bool NamesAllFields(CDrawable& object);
    // Throws what the memory or the object's own Serialize throws.
    void Keep(CDrawable& object, bool namesAll, CDrawableState& kept);
    // Whether the object still has that content.
    static bool IsAs(CDrawable& object, bool namesAll, const CDrawableState& kept);
    // The part of putting back that may fail: the object's lists grow, and a kind that names too few fields is loaded.
    static void Reserve(CDrawable& object, bool namesAll, const CDrawableState& target);
    // Undoes a Reserve; `present` is what the object held before it. A kind that names too few fields is loaded from
    // that, as far as it can be.
    static void Trim(CDrawable& object, bool namesAll, const CDrawableState& present);
    // After Reserve. Does not throw.
    static void PutBack(CDrawable& object, const CDrawableState& target);

private:
    CDrawableState m_Scratch; // Where a state is gathered, so that what is kept takes two pieces of the right size.
};
