#include "Text.h"

#include "EditingOptions.h"
#include "GdiScope.h"
#include "ObjectSchema.h"
#include "TextFont.h"
#include "TextMeasures.h"

#include <algorithm>
#include <cmath>
#include <optional>

IMPLEMENT_SERIAL(CText, CDrawable, VERSIONABLE_SCHEMA | 5)

namespace {

constexpr int kVersionCurrent = 6;
constexpr float kHiddenDistance = 1000.0f; // Not the 100.0 of the base.

// The angle as a clockwise turn in radians, for the grips and the formator.
double ClockwiseTurn(float degrees) {
    return kFullTurn - static_cast<double>(degrees) * kHalfTurn / 180.0;
}

// Null where each text measures for itself.
CTextMeasures* MeasuresOf(const CDC* pDC, const CDrawGeometry* pGeom) {
    CPaintPass* pass = pGeom->GetPass();
    return pass != nullptr && pass->GetDC() == pDC ? &pass->GetTexts() : nullptr;
}

float InUnits(int height, CVectorViewCoordTran* tran) {
    return static_cast<float>(tran->LToD(static_cast<float>(height)));
}

} // namespace

// ---- Geometry and queries ------------------------------------------------------------------------------------------

CString CText::GetName() {
    return L"多行文字"; // "Text of several lines", although a line feed starts no new line.
}

int CText::GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) {
    if (m_IsShow == 0) {
        return 0;
    }
    if (m_MinCalHeight <= 0.0f) {
        m_MinCalHeight = GetMinCalHeight(nullptr, tran);
    }
    min.SetPoint(m_StartX, m_StartY - static_cast<double>(m_MinCalHeight));
    max.SetPoint(m_StartX + static_cast<double>(m_TextWide), m_StartY);
    return 1;
}

float CText::HitTest(CGePoint2d p) {
    return HitBox(p, m_TextWide);
}

float CText::HitBox(CGePoint2d p, float wide) {
    if (m_IsShow == 0) {
        return kHiddenDistance;
    }
    if (m_ShownWide > 0.0f) {
        p.transformBy(CGeMatrix2d::rotation(ClockwiseTurn(m_Angle), CGePoint2d(m_StartX, m_StartY)));
        wide = std::max(wide, m_ShownWide);
    }
    // Compatibility 87: the hit box of a text is shifted by two drawing units.
    // Compatibility 88: the hit box does not turn with the text.
    // The box has whole drawing units, begins 2 of them (not pixels) too far right and ends 2 too far up.
    const RECT box = {Truncate(m_StartX + 2.0), Truncate(m_StartY - static_cast<double>(m_MinCalHeight)),
                      Truncate(m_StartX + static_cast<double>(wide)), WrapAdd(Truncate(m_StartY), 2)};
    const POINT at = {Truncate(p.x), Truncate(p.y)};
    if (::PtInRect(&box, at)) {
        return 0.0f;
    }
    const CGePoint2d centre(static_cast<double>(WrapAdd(box.left, box.right) / 2),
                            static_cast<double>(WrapAdd(box.top, box.bottom) / 2));
    return static_cast<float>(centre.distance(p));
}

void CText::getGripPoints(CGePointArray& out, int) {
    const CGeMatrix2d turn = CGeMatrix2d::rotation(-ClockwiseTurn(m_Angle), CGePoint2d(m_StartX, m_StartY));
    const double right = m_StartX + static_cast<double>(m_TextWide);
    const double bottom = m_StartY - static_cast<double>(m_MinCalHeight);
    CGePoint2d start(m_StartX, m_StartY);
    CGePoint2d topRight(right, m_StartY);
    CGePoint2d bottomLeft(m_StartX, bottom);
    CGePoint2d bottomRight(right, bottom);
    out.Add(start);
    out.Add(topRight.transformBy(turn));
    out.Add(bottomLeft.transformBy(turn));
    out.Add(bottomRight.transformBy(turn));
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CText::SetPos(CGePoint2d pos) {
    m_StartX = pos.x;
    m_StartY = pos.y;
}

void CText::moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) {
    const int grip = indices.GetAt(0);
    if (grip == 0) {
        SetPos(GetPos() + v);
    } else if (grip == 1) {
        // By the x of the move, also for a turned text.
        m_TextWide = static_cast<float>(static_cast<double>(m_TextWide) + v.x);
    }
}

void CText::transformBy(const CGeMatrix2d& m) {
    SetPos(GetPos().transformBy(m));
}

// Compatibility 51: an edit of the ratio changes nothing.
// The row of the ratio has the key of the height, and SetProperty looks for it under a key that no row has. The row of
// the height is the first one of that key, so its edits are found.
void CText::GetProperty(CDrawableProperty& list) {
    CDrawable::GetProperty(list);
    PropertyRows::AddDouble(list, L"m_StartX", L"位置x坐标", m_StartX);
    PropertyRows::AddDouble(list, L"m_StartY", L"位置y坐标", m_StartY);
    PropertyRows::AddFloat(list, L"m_Angle", L"旋转", m_Angle);
    PropertyRows::AddFloat(list, L"m_TextWide", L"宽度", m_TextWide);
    PropertyRows::AddText(list, L"m_Text", L"内容", m_Text);
    PropertyRows::AddText(list, L"m_fontFaceName", L"字体", m_fontFaceName);
    PropertyRows::AddFloat(list, L"m_TextHeight", L"字体高度", m_TextHeight);
    PropertyRows::AddFloat(list, L"m_TextHeight", L"文字宽高比", m_TextRatio);
}

void CText::SetProperty(CDrawableProperty& list) {
    CDrawable::SetProperty(list);
    PropertyRows::TakeDouble(list, L"m_StartX", m_StartX);
    PropertyRows::TakeDouble(list, L"m_StartY", m_StartY);
    PropertyRows::TakeFloat(list, L"m_Angle", m_Angle);
    PropertyRows::TakeFloat(list, L"m_TextWide", m_TextWide);
    PropertyRows::TakeText(list, L"m_Text", m_Text);
    PropertyRows::TakeText(list, L"m_fontFaceName", m_fontFaceName);
    PropertyRows::TakeFloat(list, L"m_TextHeight", m_TextHeight);
    PropertyRows::TakeFloat(list, L"m_TextRatio", m_TextRatio);
}

// Leaves out the measured height, which painting sets: a parameter text keeps that of its first paint.
void CText::ExchangeState(CStateExchange& exchange) {
    CDrawable::ExchangeState(exchange);
    exchange.Level<CText>();
    exchange.Value(m_StartX);
    exchange.Value(m_StartY);
    exchange.Value(m_Angle);
    exchange.Value(m_TextHeight);
    exchange.Value(m_TextWide);
    exchange.Value(m_TextRatio);
    exchange.Value(m_OffWide);
    exchange.Value(m_Spare);
    exchange.Text(m_Text);
    exchange.Text(m_fontFaceName);
    exchange.Value(m_BKColor);
    exchange.Value(m_BKMode);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CText::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    DrawInFrame(pDC, pGeom, L"CText::Draw", L"4", [&](LPCTSTR& stage) {
        if (!IsToBeDrawn()) {
            return false;
        }
        const DWORD color = InnerGetPenColor(pGeom);
        stage = L"1";
        CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        if (m_DrawState == Dragging) {
            DrawDragged(pDC, tran);
            return false;
        }
        pDC->SetBkMode(m_BKMode);
        pDC->SetBkColor(m_BKColor);
        stage = L"2";
        const int height = std::max(PixelHeight(tran), 1);
        const LOGFONTW description = TextFont::Describe(height, 0, Escapement(), m_fontFaceName);
        CTextMeasures* measures = MeasuresOf(pDC, pGeom);
        if (IsLineOutOfSight(pDC, pGeom, description, m_Text)) {
            m_MinCalHeight = InUnits(measures->LineHeight(description), tran);
            return false;
        }
        CFont font;
        font.Attach(::CreateFontIndirectW(&description));
        CScopedFont selected(pDC, &font);
        CScopedTextColor colored(pDC, color);
        int x = 0;
        int y = 0;
        tran->DPToLP(m_StartX, m_StartY, &x, &y);
        stage = L"3";
        stage = L"31";
        pDC->TextOut(x, y, m_Text, m_Text.GetLength());
        stage = L"33";
        m_MinCalHeight =
            measures != nullptr ? InUnits(measures->LineHeight(description), tran) : GetMinCalHeight(pDC, tran);
        NoteShownWidth(pDC, pGeom, m_Text);
        stage = L"35";
        selected.Restore();
        stage = L"36";
        colored.Restore();
        return true;
    });
}

void CText::DrawDragged(CDC* pDC, CVectorViewCoordTran* tran) {
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    tran->DPToLP(m_StartX, m_StartY, &x1, &y1);
    tran->DPToLP(m_StartX + static_cast<double>(m_TextWide), m_StartY, &x2, &y2);
    // Compatibility 89: a dragged text leaves the raster mode at `R2_NOT`.
    pDC->SetROP2(R2_NOT);
    CPen pen(PS_DOT, 0, RGB(255, 255, 255));
    CScopedPen selected(pDC, &pen);
    pDC->MoveTo(x1, y1);
    pDC->LineTo(x2, y2);
    selected.Restore();
}

void CText::NoteShownWidth(CDC* pDC, CDrawGeometry* pGeom, const CString& shown) {
    m_ShownWide = 0.0f;
    if (pGeom->GetEditingOptions().textsAsShown) {
        const CSize size = pDC->GetTextExtent(shown, shown.GetLength());
        m_ShownWide = static_cast<float>(pGeom->GetVectorViewCoordTran()->LToD(static_cast<float>(size.cx)));
    }
}

void CText::GetShownCorners(CGePoint2d (&corners)[4]) {
    // All texts are measured in one size, so that they share a font.
    constexpr int kMeasured = 100;
    CClientDC screen(nullptr);
    const LOGFONTW description = TextFont::Describe(kMeasured, PixelWidth(kMeasured), 0, m_fontFaceName);
    CFont font;
    font.Attach(::CreateFontIndirectW(&description));
    CSize size;
    {
        CScopedFont selected(&screen, &font);
        size = screen.GetTextExtent(m_Text, m_Text.GetLength());
    }
    const double unit = static_cast<double>(m_TextHeight) / kMeasured;
    const CGePoint2d start(m_StartX, m_StartY);
    const CGePoint2d end(m_StartX + size.cx * unit, m_StartY - size.cy * unit);
    const CGeMatrix2d turn = CGeMatrix2d::rotation(-ClockwiseTurn(m_Angle), start);
    corners[0] = start;
    corners[1] = CGePoint2d(end.x, start.y).transformBy(turn);
    corners[2] = CGePoint2d(end.x, end.y).transformBy(turn);
    corners[3] = CGePoint2d(start.x, end.y).transformBy(turn);
}

int CText::PixelHeight(CVectorViewCoordTran* tran) {
    return Truncate(tran->DToL(static_cast<double>(m_TextHeight)));
}

int CText::PixelWidth(int height) {
    return Truncate(static_cast<double>(height / 2) * static_cast<double>(m_TextRatio));
}

int CText::Escapement() {
    return WrapMultiply(Truncate(m_Angle), 10);
}

float CText::GetMinCalHeight(CDC* pDC, CVectorViewCoordTran* tran) {
    if (pDC != nullptr) {
        return InUnits(CTextMeasures::MeasureLine(pDC->m_hAttribDC), tran);
    }
    const int height = PixelHeight(tran);
    if (height < 1) {
        return m_TextHeight;
    }
    const LOGFONTW description = TextFont::Describe(height, 0, Escapement(), m_fontFaceName);
    if (CTextMeasures* walk = CTextWalk::Measures()) {
        return InUnits(walk->LineHeight(description), tran);
    }
    CTextMeasures alone(nullptr);
    return InUnits(alone.LineHeight(description), tran);
}

// The line is drawn from its upper left corner. The height of a cell is added on all sides, for ink outside of the
// cells.
bool CText::IsLineOutOfSight(CDC* pDC, CDrawGeometry* pGeom, const LOGFONTW& font, const CString& line) {
    CTextMeasures* measures = MeasuresOf(pDC, pGeom);
    // The paint stores the shown width or clears it, so it must not be skipped then.
    if (measures == nullptr || m_ShownWide > 0.0f || pGeom->GetEditingOptions().textsAsShown) {
        return false;
    }
    const std::optional<double> length = measures->LongestLine(font, line, line.GetLength());
    if (!length) {
        return false;
    }
    int x = 0;
    int y = 0;
    pGeom->GetVectorViewCoordTran()->DPToLP(m_StartX, m_StartY, &x, &y);
    const double cell = std::fabs(static_cast<double>(font.lfHeight));
    const double turn = static_cast<double>(font.lfEscapement) / 10.0 * kHalfTurn / 180.0;
    const double alongX = std::cos(turn);
    const double alongY = -std::sin(turn);
    CPixelBox box = {static_cast<double>(x), static_cast<double>(y), static_cast<double>(x), static_cast<double>(y)};
    for (const double along : {-cell, *length + cell}) {
        for (const double down : {-cell, 2.0 * cell}) {
            box.Add(x + along * alongX - down * alongY, y + along * alongY + down * alongX);
        }
    }
    return IsOutOfSight(pDC, pGeom, box, 0.0);
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CText::Serialize(CArchive& ar) {
    CDrawable::Serialize(ar);
    if (ar.IsStoring()) {
        ar << kVersionCurrent << m_Text << m_fontFaceName << m_StartX << m_StartY << m_TextHeight << m_TextWide
           << m_TextRatio << m_OffWide << m_Spare << m_Angle;
        return;
    }
    // The ratio is stored from the sixth version on, the angle since there is a version word. A restore point, read
    // outside ReadObject, always has the newest form.
    const bool hasVersion = IsCurrentForm(ar);
    int version = 0;
    if (hasVersion) {
        ar >> version;
    }
    const bool hasRatio = hasVersion && (ObjectSchema(ar) == kNoSchema || version == kVersionCurrent);
    ar >> m_Text >> m_fontFaceName >> m_StartX >> m_StartY >> m_TextHeight >> m_TextWide;
    if (hasRatio) {
        ar >> m_TextRatio;
    }
    ar >> m_OffWide >> m_Spare;
    if (hasVersion) {
        ar >> m_Angle;
    } else {
        m_Angle = 0.0f;
    }
    // A box narrower than the font is high comes from hosts that do not set the width.
    if (m_TextHeight > m_TextWide) {
        m_TextWide = m_TextHeight * 3.0f;
    }
}
