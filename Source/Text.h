// CText: a single run of text, with a font built from drawing units at every paint.
// Layer 5: drawables.
#pragma once

#include "Drawable.h"

class NRVECTORVIEW_API CText : public CDrawable {
    DECLARE_SERIAL(CText)
public:
    CText() = default;

    // ---- Geometry and queries ----

    // The top left corner of the text, in drawing units.
    CGePoint2d GetPos() { return CGePoint2d(m_StartX, m_StartY); }
    void SetPos(CGePoint2d pos);
    CString GetName() override;
    // The box below the insertion point. Neither here nor in HitTest does the rotation count. Measures the height on
    // the screen when no paint has done so yet.
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // 0 inside the box, else the distance to its centre; 1000.0 when hidden.
    float HitTest(CGePoint2d p) override;
    // The four corners of the rotated box; the first is the insertion point.
    void getGripPoints(CGePointArray& out, int mask) override;

    // ---- Editing ----

    // Height of the font and width of the box, in drawing units. The width is not measured from the text.
    float GetTextHeight() { return m_TextHeight; }
    void SetTextHeight(float height) { m_TextHeight = height; }
    float GetTextWide() { return m_TextWide; }
    void SetTextWide(float wide) { m_TextWide = wide; }
    // Width to half the height of the characters, used by parameter texts only; 0 leaves it to the font.
    float GetTextRatio() const { return m_TextRatio; }
    void SetTextRatio(float ratio) { m_TextRatio = ratio; }
    float GetOffWide() { return m_OffWide; }
    void SetOffWide(float off) { m_OffWide = off; }
    CString GetText() { return m_Text; }
    void SetText(CString text) { m_Text = text; }
    // A COLORREF and a mode of SetBkMode; neither is stored in drawings.
    unsigned long GetBKColor() { return m_BKColor; }
    void SetBKColor(unsigned long color) { m_BKColor = color; }
    int GetBKMode() { return m_BKMode; }
    void SetBKMode(int mode) { m_BKMode = mode; }
    // Degrees, counter-clockwise. The font turns by whole degrees, the grips by all of it.
    void SetAngle(float angle) { m_Angle = angle; }
    // The first grip moves the text, the second the width of its box.
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Moves the insertion point; angle and sizes stay.
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override;

protected:
    // The height of a sample text in drawing units: in the font selected in pDC, or, with a null pDC, in this text's
    // own font on the screen (then the height itself when it is below one pixel).
    float GetMinCalHeight(CDC* pDC, CVectorViewCoordTran* tran);
    // What a text that is dragged shows: an inverted dotted line as wide as its box. Leaves R2_NOT in force.
    void DrawDragged(CDC* pDC, CVectorViewCoordTran* tran);
    // Height of the font in pixels, without a minimum.
    int PixelHeight(CVectorViewCoordTran* tran);
    // Width of the font in pixels that the ratio asks for at that height.
    int PixelWidth(int height);
    // Degrees times ten, the fraction of a degree dropped.
    int Escapement();
    // HitTest of a box of that width.
    float HitBox(CGePoint2d p, float wide);

    double m_StartX = 0.0;
    double m_StartY = 0.0;
    float m_Angle = 0.0f;
    float m_TextHeight = 20.0f;
    float m_TextWide = 20.0f;
    float m_TextRatio = 0.0f;
    float m_OffWide = 0.0f; // Kept for hosts; nothing here reads it.
    float m_Spare = 0.0f;   // Stored and loaded only.
    CString m_Text;
    CString m_fontFaceName = L"宋体";
    COLORREF m_BKColor = 0xFFFFFF;
    int m_BKMode = TRANSPARENT;
    float m_MinCalHeight = 0.0f; // Drawing units, as last measured; 0 or less: not yet.
};
