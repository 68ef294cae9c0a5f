// CText: a text of one line, whose font is made anew at every paint.
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
    // The box below the insertion point, as HitTest without regard to the angle. Measures the height on the screen when
    // no paint has done so yet.
    int GetRect(CVectorViewCoordTran* tran, CGePoint2d& min, CGePoint2d& max) override;
    // 0 inside the box, else the distance to its centre; 1000.0 when hidden. A paint under the editing option
    // textsAsShown makes the box that of the text as shown.
    float HitTest(CGePoint2d p) override;
    // The four corners of the text as a paint shows it, along its angle, measured on the screen; drawing units, round
    // the box from the insertion point.
    void GetShownCorners(CGePoint2d (&corners)[4]);
    // The four corners of the rotated box; the first is the insertion point.
    void getGripPoints(CGePointArray& out, int mask) override;

    // ---- Editing ----

    // Height of the font and width of the box, in drawing units. The width is a stored size, not that of the text.
    float GetTextHeight() { return m_TextHeight; }
    void SetTextHeight(float height) { m_TextHeight = height; }
    float GetTextWide() { return m_TextWide; }
    void SetTextWide(float wide) { m_TextWide = wide; }
    // Width of the characters divided by half their height; 0 leaves the width to the font. Only parameter texts use
    // it.
    float GetTextRatio() const { return m_TextRatio; }
    void SetTextRatio(float ratio) { m_TextRatio = ratio; }
    // Stored for hosts; the library does not use it.
    float GetOffWide() { return m_OffWide; }
    void SetOffWide(float off) { m_OffWide = off; }
    // The characters as stored, before the number display. Nothing repaints.
    CString GetText() { return m_Text; }
    void SetText(CString text) { m_Text = text; }
    // A COLORREF and a mode of SetBkMode; neither is stored in drawings.
    unsigned long GetBKColor() { return m_BKColor; }
    void SetBKColor(unsigned long color) { m_BKColor = color; }
    int GetBKMode() { return m_BKMode; }
    void SetBKMode(int mode) { m_BKMode = mode; }
    // Degrees, anticlockwise. The fraction of a degree turns the grips, but not the font.
    void SetAngle(float angle) { m_Angle = angle; }
    // The first grip moves the text, the second one changes the width of its box.
    void moveGripPointsAt(const CIndexArray& indices, const CGeVector2d& v) override;
    // Moves the insertion point; angle and sizes stay.
    void transformBy(const CGeMatrix2d& m) override;
    void GetProperty(CDrawableProperty& list) override;
    void SetProperty(CDrawableProperty& list) override;
    void ExchangeState(CStateExchange& exchange) override;

    void Draw(CDC* pDC, CDrawGeometry* pGeom) override;

    void Serialize(CArchive& ar) override; // Text, face, place, sizes and angle.

protected:
    // Reads what the grips are computed from.
    friend bool AreGripsFar(CDrawable* object, const CGePoint2d& point, int aperture);

    // The height of a sample text in drawing units: in the font selected in pDC or, with a null pDC, in this text's own
    // font on the screen. With a null pDC a font below one pixel gives the text height itself.
    float GetMinCalHeight(CDC* pDC, CVectorViewCoordTran* tran);
    // The drawing of a text that is dragged: an inverted dotted line as wide as its box. The raster mode stays R2_NOT.
    void DrawDragged(CDC* pDC, CVectorViewCoordTran* tran);
    // Height of the font in pixels, without a minimum.
    int PixelHeight(CVectorViewCoordTran* tran);
    // Width of the characters in pixels for that height of the font, by the ratio; 0 leaves it to the font.
    int PixelWidth(int height);
    // In tenths of a degree, without the fraction of a degree.
    int Escapement();
    // IsOutOfSight of the line, drawn in that font.
    bool IsLineOutOfSight(CDC* pDC, CDrawGeometry* pGeom, const LOGFONTW& font, const CString& line);
    // Keeps how wide the text is shown, where the editing options ask for it, for the hit test. The font is selected.
    void NoteShownWidth(CDC* pDC, CDrawGeometry* pGeom, const CString& shown);
    // HitTest of a box of that width.
    float HitBox(CGePoint2d p, float wide);

    // The top left corner, in drawing units.
    double m_StartX = 0.0;
    double m_StartY = 0.0;
    float m_Angle = 0.0f;             // Degrees, anticlockwise.
    float m_TextHeight = 20.0f;       // Drawing units.
    float m_TextWide = 20.0f;         // Of the box, in drawing units.
    float m_TextRatio = 0.0f;         // See GetTextRatio.
    float m_OffWide = 0.0f;           // Stored for hosts; the library does not use it.
    float m_Spare = 0.0f;             // Stored and loaded; the library does not use it.
    CString m_Text;                   // See GetText.
    CString m_fontFaceName = L"宋体"; // Of the font; stored.
    // See GetBKColor.
    COLORREF m_BKColor = 0xFFFFFF;
    int m_BKMode = TRANSPARENT;
    float m_ShownWide = 0.0f;    // Drawing units, as painted under textsAsShown; 0: the box is the stored one.
    float m_MinCalHeight = 0.0f; // Drawing units, as last measured; 0 or less: not measured yet.
};
