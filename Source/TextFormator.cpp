#include "TextFormator.h"

#include "Geometry2d.h"
#include "KLineBreaker.h"
#include "MemoryInfo.h"
#include "TextSteps.h"
#include "Truncate.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cwchar>

namespace {

constexpr UINT kMetricsSize = 696; // Bytes, for the metrics and the four names that follow them.
constexpr double kSmallestAdvance = 1e-12;

// Registered like every heap object of the library, but deregistered after it is freed. The registry only compares the
// address; it is volatile here because the compiler would warn of a use after the deletion.
template <typename T>
void FreeArray(T* array) {
    const volatile auto address = reinterpret_cast<std::uintptr_t>(array);
    delete[] array;
    KX_REMOVE_MEMORY(reinterpret_cast<void*>(address));
}

template <typename T>
struct ArrayFreer {
    void operator()(T* array) const { FreeArray(array); }
};

template <typename T>
using TracedArray = std::unique_ptr<T[], ArrayFreer<T>>;

template <typename T>
TracedArray<T> MakeArray(int count) {
    T* array = new T[static_cast<std::size_t>(count)]();
    KX_ADD_MEMORY(array);
    return TracedArray<T>(array);
}

struct OutlineMetrics {
    // False for a font without outlines.
    bool Read(HDC hdc) { return ::GetOutlineTextMetricsW(hdc, kMetricsSize, &metrics) != 0; }

    union {
        OUTLINETEXTMETRICW metrics;
        unsigned char room[kMetricsSize];
    };
};

// A memory context with a font selected; owns both. The context is freed by DeleteObject, as the font is.
class DesignContext {
public:
    DesignContext(HDC like, HFONT font)
        : m_hFont(font), m_hDC(::CreateCompatibleDC(like)), m_hOld(::SelectObject(m_hDC, font)) {}
    ~DesignContext() {
        ::SelectObject(m_hDC, m_hOld);
        ::DeleteObject(m_hDC);
        ::DeleteObject(m_hFont);
    }
    DesignContext(const DesignContext&) = delete;
    DesignContext& operator=(const DesignContext&) = delete;

    HDC Get() const { return m_hDC; }

private:
    HFONT m_hFont;
    HDC m_hDC;
    HGDIOBJ m_hOld;
};

// The font at its design size, at which its metrics are not rounded.
HFONT CreateDesignFont(HFONT font, UINT emSquare) {
    LOGFONTW description = {};
    ::GetObjectW(font, sizeof(description), &description);
    description.lfHeight = -static_cast<LONG>(emSquare);
    description.lfWidth = 0;
    return ::CreateFontIndirectW(&description);
}

} // namespace

// ---- Measuring -----------------------------------------------------------------------------------------------------

int CTextFormator::Setup(HDC hdc, HFONT font, float size, CString& text) {
    const float pixels = size * static_cast<float>(::GetDeviceCaps(hdc, LOGPIXELSY)) / 72.0f;
    return SetupPixel(hdc, font, pixels, text);
}

int CTextFormator::SetupPixel(HDC hdc, HFONT font, float size, CString& text) {
    m_CharPos = nullptr;
    m_Table.reset();
    m_Count = 0;
    const int length = text.GetLength();
    m_Str = text.GetBuffer(0);

    OutlineMetrics metrics;
    if (!metrics.Read(hdc)) {
        return 0;
    }
    const UINT emSquare = metrics.metrics.otmEMSquare;
    {
        const DesignContext design(hdc, CreateDesignFont(font, emSquare));
        // The positions are those of the font as drawn; only the heights come from the design size.
        const TracedArray<int> extents = MakeArray<int>(length);
        SIZE whole = {};
        ::GetTextExtentExPointW(hdc, m_Str, length, 0, nullptr, extents.get(), &whole);
        if (!metrics.Read(design.Get())) {
            return 0;
        }
        TracedArray<float> table = MakeArray<float>(length);
        std::transform(extents.get(), extents.get() + length, table.get(),
                       [](int extent) { return static_cast<float>(extent); });
        m_CharPos = table.get();
        m_Table = std::shared_ptr<const float>(table.release(), [](float* array) { FreeArray(array); });
        m_Count = length;
    }
    const TEXTMETRICW& inner = metrics.metrics.otmTextMetrics;
    const float em = static_cast<float>(emSquare);
    m_Height = static_cast<float>(inner.tmHeight) * size / em;
    m_Linespace = static_cast<float>(inner.tmHeight + inner.tmExternalLeading) * size / em;
    return 1;
}

float CTextFormator::PositionAt(long long index) const {
    if (m_Count == 0) {
        return 0.0f;
    }
    return m_CharPos[std::clamp<long long>(index, 0, m_Count - 1)];
}

int CTextFormator::ReadableCount(const wchar_t* text, int begin, int count) const {
    const long long inTable = std::clamp<long long>(static_cast<long long>(m_Count) - begin, 0, m_Count);
    if (count <= inTable) {
        return std::max(count, 0);
    }
    const int inside = static_cast<int>(inTable);
    return inside + static_cast<int>(::wcsnlen(text + inside, static_cast<std::size_t>(count - inside)));
}

// Compatibility 57: a measure is one character further on than the named part.
int CTextFormator::GetTextExtent(HDC, const wchar_t* lpString, int startPos, int cbString, float& width,
                                 float& height) {
    using TextSteps::Extent;
    Extent stage = Extent::Entered;
    const auto report = [&] {
        AfxMessageBox(L"CTextFormator::GetTextExtent错误:strStep=" +
                      TextSteps::OfExtent(stage, m_Str, lpString, startPos, cbString, width));
    };
    try {
        stage = Extent::Counting;
        if (cbString < 1) {
            if (lpString == nullptr) {
                AfxThrowInvalidArgException();
            }
            cbString = static_cast<int>(std::wcslen(lpString));
        }
        width = 0.0f;
        stage = Extent::Measuring;
        // Entry i is the end of character i, so this is the extent of the characters one further on than those that are
        // named; at the end of the text the missing entry is replaced by the last one. Lines break by this measure.
        width = PositionAt(static_cast<long long>(startPos) + cbString) - PositionAt(startPos);
        stage = Extent::Measured;
        height = m_Height;
        return 1;
    } catch (CException* e) {
        e->Delete();
        report();
    } catch (...) {
        report();
    }
    return 1;
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

int CTextFormator::TextOutW(HDC hdc, int x, int y, const wchar_t* lpString, int begin, int count) {
    if (m_CharPos == nullptr || lpString == nullptr) {
        return 0;
    }
    count = ReadableCount(lpString, begin, count);
    const TracedArray<int> spacing = MakeArray<int>(count);
    for (int i = 0; i < count; ++i) {
        const long long p = static_cast<long long>(begin) + i;
        if (p == 0) {
            spacing[i] = Truncate(PositionAt(0));
        } else {
            // Each advance is truncated on its own; the fractions are not carried forward.
            const double advance = static_cast<double>(PositionAt(p) - PositionAt(p - 1));
            spacing[i] = kSmallestAdvance > advance ? 0 : Truncate(advance);
        }
    }
    return ::ExtTextOutW(hdc, x, y, 0, nullptr, lpString, static_cast<UINT>(count), spacing.get());
}

unsigned long CTextFormator::DrawTextW(HDC hdc, const wchar_t* lpString, int nCount, const RECT* rect, unsigned int) {
    unsigned long total = 0;
    if (lpString == nullptr) {
        return total;
    }
    using TextSteps::Draw;
    Draw stage = Draw::Entered;
    int x = 0;
    float y = 0.0f;
    int width = 0;
    int begin = 0;
    int end = 0;
    const auto report = [&] {
        AfxMessageBox(L"CTextFormator::DrawText出错，step=" +
                      TextSteps::OfDraw(stage, lpString, x, y, width, begin, end));
    };
    try {
        if (rect == nullptr) {
            AfxThrowInvalidArgException();
        }
        if (m_CharPos == nullptr) {
            return total;
        }
        const int length = nCount < 1 ? static_cast<int>(std::wcslen(lpString)) : ReadableCount(lpString, 0, nCount);
        KLineBreaker breaker(lpString, length, m_Height);
        x = rect->left;
        y = static_cast<float>(rect->top);
        stage = Draw::Placed;
        width = WrapSubtract(rect->right, rect->left);
        stage = Draw::Sized;
        const CGeMatrix2d rotation =
            CGeMatrix2d::rotation(m_Rotation, CGePoint2d(static_cast<double>(x), static_cast<double>(y)));
        int reached = -1;
        while (breaker.GetLine(*this, hdc, width, begin, end) != 0) {
            stage = Draw::AtLine;
            if (breaker.GetPosition() == reached) {
                break; // A line that failed would fail again.
            }
            reached = breaker.GetPosition();
            while (end > begin && KLineBreaker::IsBlank(lpString[end - 1])) {
                --end;
            }
            CGePoint2d corner(static_cast<double>(x), static_cast<double>(y));
            corner.transformBy(rotation);
            stage = Draw::LineOut;
            TextOutW(hdc, Truncate(corner.x), Truncate(corner.y), lpString + begin, begin, end - begin);
            // The position of the next line keeps the fraction of the height; the sum does not.
            y += breaker.GetHeight();
            total += static_cast<unsigned long>(Truncate(breaker.GetHeight()));
        }
    } catch (CException* e) {
        e->Delete();
        report();
    } catch (...) {
        report();
    }
    return total;
}
