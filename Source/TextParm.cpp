#include "TextParm.h"

#include "GdiScope.h"
#include "ObjectSchema.h"
#include "TextFont.h"

#include <algorithm>

IMPLEMENT_SERIAL(CTextParm, CText, VERSIONABLE_SCHEMA | 5)

namespace {

constexpr int kVersionCurrent = 6;
constexpr int kVersionWithoutEditFlag = 5;
constexpr UINT kSchemaWithLink = 2;

constexpr float kHeightsHit = 3.0f;

} // namespace

// ---- Geometry and queries ------------------------------------------------------------------------------------------

float CTextParm::HitTest(CGePoint2d p) {
    const float limit = m_MinCalHeight * kHeightsHit;
    return HitBox(p, m_TextWide > limit ? limit : m_TextWide);
}

void CTextParm::GetParmEditRect(CGePoint2d& a, CGePoint2d& b) {
    a.SetPoint(m_StartX, m_StartY);
    b.SetPoint(m_StartX + static_cast<double>(m_TextWide), m_StartY - static_cast<double>(m_MinCalHeight));
}

HFONT CTextParm::GetFontHandle(CVectorViewCoordTran* tran) {
    // Without the minimum of one pixel that Draw has.
    const int height = PixelHeight(tran);
    const LOGFONTW description = TextFont::Describe(height, PixelWidth(height), 0, m_fontFaceName);
    return ::CreateFontIndirectW(&description);
}

// ---- Editing -------------------------------------------------------------------------------------------------------

void CTextParm::GetProperty(CDrawableProperty& list) {
    CText::GetProperty(list);
    PropertyRows::AddText(list, L"m_ParmName", L"参数变量名称", m_ParmName);
    PropertyRows::AddShort(list, L"m_ParmType", L"参数类别", m_ParmType);
    PropertyRows::AddText(list, L"m_ParmRegularExp", L"参数正则表达式", m_ParmRegularExp);
    PropertyRows::AddText(list, L"m_Value", L"默认值", m_Value);
    PropertyRows::AddText(list, L"m_ParmDes", L"说明", m_ParmDes);
    PropertyRows::AddText(list, L"m_ParmModifedLinkExp", L"参数改变执行表达式", m_ParmModifedLinkExp);
    // The row holds the low 16 bits of the flag.
    PropertyRows::AddShort(list, L"m_bNeedEditBox", L"是否需要编辑框", static_cast<short>(m_bNeedEditBox));
    PropertyRows::AddText(list, L"m_strMsgInfo", L"扩展信息", m_strMsgInfo);
}

void CTextParm::SetProperty(CDrawableProperty& list) {
    CText::SetProperty(list);
    PropertyRows::TakeText(list, L"m_ParmName", m_ParmName);
    PropertyRows::TakeShort(list, L"m_ParmType", m_ParmType);
    PropertyRows::TakeText(list, L"m_ParmRegularExp", m_ParmRegularExp);
    PropertyRows::TakeText(list, L"m_Value", m_Value);
    PropertyRows::TakeText(list, L"m_ParmDes", m_ParmDes);
    PropertyRows::TakeText(list, L"m_ParmModifedLinkExp", m_ParmModifedLinkExp);
    PropertyRows::TakeFlag(list, L"m_bNeedEditBox", m_bNeedEditBox);
    PropertyRows::TakeText(list, L"m_strMsgInfo", m_strMsgInfo);
}

void CTextParm::ExchangeState(CStateExchange& exchange) {
    CText::ExchangeState(exchange);
    exchange.Level<CTextParm>();
    exchange.Text(m_ParmDes);
    exchange.Text(m_ParmName);
    exchange.Value(m_ParmType);
    exchange.Text(m_ParmRegularExp);
    exchange.Text(m_Value);
    exchange.Text(m_ParmModifedLinkExp);
    exchange.Value(m_bNeedEditBox);
    exchange.Text(m_strMsgInfo);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void CTextParm::Draw(CDC* pDC, CDrawGeometry* pGeom) {
    DrawInFrame(pDC, pGeom, L"CTextParm::Draw", L"5", [&](LPCTSTR& stage) {
        if (!IsToBeDrawn()) {
            return false;
        }
        stage = L"1";
        const DWORD color = InnerGetPenColor(pGeom);
        stage = L"2";
        CVectorViewCoordTran* tran = pGeom->GetVectorViewCoordTran();
        if (m_DrawState == Dragging) {
            DrawDragged(pDC, tran);
            return false;
        }
        // The background mode and colour of the text are not used.
        pDC->SetBkMode(TRANSPARENT);
        stage = L"3";
        const int height = std::max(PixelHeight(tran), 1);
        const LOGFONTW description = TextFont::Describe(height, PixelWidth(height), Escapement(), m_fontFaceName);
        const CString shown = pGeom->GetTextParm_ShowText(m_Text);
        if (m_MinCalHeight > 0.0f && IsLineOutOfSight(pDC, pGeom, description, shown)) {
            return false;
        }
        CFont font;
        font.Attach(::CreateFontIndirectW(&description));
        CScopedFont selected(pDC, &font);
        CScopedTextColor colored(pDC, color);
        int x = 0;
        int y = 0;
        tran->DPToLP(m_StartX, m_StartY, &x, &y);
        pDC->TextOut(x, y, shown, shown.GetLength());
        stage = L"4";
        if (m_MinCalHeight <= 0.0f) {
            // Compatibility 91: a parameter's height is measured once.
            // The height keeps the zoom of the first paint, and is measured by the value, not by the string shown. An
            // empty value has no height; the sample text is measured instead.
            const CSize size = m_Text.IsEmpty() ? CSize(0, 0) : pDC->GetTextExtent(m_Text, m_Text.GetLength());
            m_MinCalHeight =
                size.cy <= 0 ? GetMinCalHeight(pDC, tran) : static_cast<float>(tran->LToD(static_cast<float>(size.cy)));
        }
        NoteShownWidth(pDC, pGeom, shown);
        selected.Restore();
        colored.Restore();
        return true;
    });
}

// ---- Streaming -----------------------------------------------------------------------------------------------------

void CTextParm::Serialize(CArchive& ar) {
    CText::Serialize(ar);
    if (ar.IsStoring()) {
        ar << kVersionCurrent << m_ParmName << m_ParmType << m_ParmRegularExp << m_Value << m_ParmDes
           << m_ParmModifedLinkExp << m_bNeedEditBox << m_strMsgInfo;
        return;
    }
    // Compatibility 120: a schema above the current one counts as current in a parameter text.
    const UINT schema = ObjectSchema(ar);
    const bool hasVersion = schema >= kCurrentSchema;
    int version = 0;
    if (hasVersion) {
        ar >> version;
    }
    ar >> m_ParmName >> m_ParmType >> m_ParmRegularExp >> m_Value >> m_ParmDes;
    if (hasVersion || schema == kSchemaWithLink) {
        ar >> m_ParmModifedLinkExp;
    }
    if (hasVersion && version != kVersionWithoutEditFlag) {
        ar >> m_bNeedEditBox >> m_strMsgInfo;
    }
}
