// CTextParm: a text that shows a named parameter of the host, whose value can be edited in place.
// Layer 5: drawables.
#pragma once

#include "Text.h"

// The value that is shown and edited is the text of CText. Of the fields added here the library uses the type, the edit
// flag and the description; the others are stored and shown for the host, never interpreted.
class NRVECTORVIEW_API CTextParm : public CText {
    DECLARE_SERIAL(CTextParm)
public:
    CTextParm() = default;

    // ---- Geometry and queries ----

    // As CText, with the width of the box limited to three text heights, so that a wide edit box does not widen the
    // clickable area.
    float HitTest(CGePoint2d p) override;
    // The rectangle, in drawing units, over which the edit box opens: the insertion point and the opposite corner.
    virtual void GetParmEditRect(CGePoint2d& a, CGePoint2d& b);
    // The edit box's font, never rotated. The caller owns it.
    HFONT GetFontHandle(CVectorViewCoordTran* tran);

    // ---- Editing ----

    // The name by which the host knows the parameter; need not be unique.
    CString GetParmName() { return m_ParmName; }
    void SetParmName(CString name) { m_ParmName = name; }
    // A parameter of type 4 can't be edited; the host gives the other values their meaning.
    short GetParmType() { return m_ParmType; }
    void SetParmType(short type) { m_ParmType = type; }
    // The host's expression for allowed values; see CVectorViewParm::OnAcceptEditData.
    CString GetParmRegularExp() { return m_ParmRegularExp; }
    void SetParmRegularExp(CString expression) { m_ParmRegularExp = expression; }
    // The tooltip shows it, or the first piece of it.
    CString GetParmDes() { return m_ParmDes; }
    void SetParmDes(CString description) { m_ParmDes = description; }
    // The host's expression for what a change sets off.
    CString GetParmModifedLinkExp() { return m_ParmModifedLinkExp; }
    void SetParmModifedLinkExp(CString expression) { m_ParmModifedLinkExp = expression; }
    // A tag of the host: stored and shown, never interpreted.
    CString GetMsgInfo() { return m_strMsgInfo; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    // Nonzero: a click opens the edit box, and Tab stops here. 0: a click only tells the host.
    int GetNeedEditBox() { return m_bNeedEditBox; }
    void SetNeedEditBox(int need) { m_bNeedEditBox = need; }
    // The width of the edit box, in drawing units; the same field as GetTextWide.
    float GetTextEditWide() const { return m_TextWide; }
    void SetTextEditWide(float wide) { m_TextWide = wide; }
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // All fields of a parameter, after the text.

private:
    CString m_ParmDes;
    CString m_ParmName;
    short m_ParmType = 0;
    CString m_ParmRegularExp;
    CString m_Value; // The default value; only properties and files read and set it.
    CString m_ParmModifedLinkExp;
    int m_bNeedEditBox = 1;
    CString m_strMsgInfo;
};
