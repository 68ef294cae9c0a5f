// CTextParm: a text that stands for a named parameter of the host, whose value can be edited in place.
// Layer: drawables.
#pragma once

#include "Text.h"

#include <KxAlive.h>

// The value that is shown and edited is the text itself. Of the fields here the library looks at the type, the edit
// flag and the description; the others are the host's own, stored and shown, never interpreted.
class NRVECTORVIEW_API CTextParm : public CText {
    DECLARE_SERIAL(CTextParm)
public:
    CTextParm() = default;

    // For whoever keeps a pointer to this object across a call that may free it.
    CKxAliveToken GetAlive() const { return CKxAliveToken(m_Alive); }

    // ---- Geometry and queries ----

    // The box counts for at most three text heights of its width, so that a wide edit box is no wide target.
    float HitTest(CGePoint2d p) override;
    // The rectangle, in drawing units, over which the edit box opens: the insertion point and the opposite corner.
    virtual void GetParmEditRect(CGePoint2d& a, CGePoint2d& b);
    // The edit box's font, never rotated. The caller owns it.
    HFONT GetFontHandle(CVectorViewCoordTran* tran);

    // ---- Editing ----

    CString GetParmName() { return m_ParmName; }
    void SetParmName(CString name) { m_ParmName = name; }
    // 4 can't be edited; other values are the host's.
    short GetParmType() { return m_ParmType; }
    void SetParmType(short type) { m_ParmType = type; }
    CString GetParmRegularExp() { return m_ParmRegularExp; }
    void SetParmRegularExp(CString expression) { m_ParmRegularExp = expression; }
    // Its text, or the first piece of it, is the tooltip.
    CString GetParmDes() { return m_ParmDes; }
    void SetParmDes(CString description) { m_ParmDes = description; }
    CString GetParmModifedLinkExp() { return m_ParmModifedLinkExp; }
    void SetParmModifedLinkExp(CString expression) { m_ParmModifedLinkExp = expression; }
    CString GetMsgInfo() { return m_strMsgInfo; }
    void SetMsgInfo(CString info) { m_strMsgInfo = info; }
    // Nonzero: a click opens the edit box, and Tab stops here. 0: a click only tells the host.
    int GetNeedEditBox() { return m_bNeedEditBox; }
    void SetNeedEditBox(int need) { m_bNeedEditBox = need; }
    // The width of the edit box and that of the text are one field.
    float GetTextEditWide() const { return m_TextWide; }
    void SetTextEditWide(float wide) { m_TextWide = wide; }
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override;

private:
    CString m_ParmDes;
    CString m_ParmName;
    short m_ParmType = 0;
    CString m_ParmRegularExp;
    CString m_Value; // The default value, reached through properties only.
    CString m_ParmModifedLinkExp;
    int m_bNeedEditBox = 1;
    CString m_strMsgInfo;
    CKxAlive m_Alive;
};
