// Texts and labels with access to their private fields, rows of an object, and a painter with a bitmap to draw on.
// Layer 16: tests.
#pragma once

#include "DrawGeometry.h"
#include "TextParm.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"

#include <afxwin.h>

#include <initializer_list>

class OpenText : public CText {
public:
    using CText::GetMinCalHeight;
    using CText::m_Angle;
    using CText::m_DrawState;
    using CText::m_fontFaceName;
    using CText::m_IsDelete;
    using CText::m_MinCalHeight;
    using CText::m_Spare;
    using CText::m_StartX;
    using CText::m_StartY;
};

class OpenParm : public CTextParm {
public:
    using CTextParm::GetMinCalHeight;
    using CTextParm::m_Angle;
    using CTextParm::m_fontFaceName;
    using CTextParm::m_IsDelete;
    using CTextParm::m_MinCalHeight;
};

class OpenLabel : public CKXVectorLabel {
public:
    using CKXVectorLabel::DoDrawLabel_TextHole;
    using CKXVectorLabel::DoDrawLable;
    using CKXVectorLabel::DoDrawLable_WidthBian;
    using CKXVectorLabel::DoDrawText;
    using CKXVectorLabel::m_IsDelete;
    using CKXVectorLabel::m_PenColor;
};

struct Indices : CIndexArray {
    Indices(std::initializer_list<int> values) {
        for (int value : values) {
            Add(value);
        }
    }
};

// The rows of an object, freed at the end.
struct Rows {
    explicit Rows(CDrawable& object) { object.GetProperty(list); }
    ~Rows() { list.Clear(); }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
    // The same change that a property window makes.
    void Change(int index, const COleVariant& value) {
        CSimpleProperty* row = list.GetRow(index);
        row->m_Value = value;
        row->m_Changed = 1;
    }
    CDrawableProperty list;
};

// What a row must look like; label and description are the same text.
struct ExpectedRow {
    LPCTSTR key;
    LPCTSTR label;
    VARTYPE type;
};

// A painter with a mapping: scale 1 and a client height of 600, so that the drawing point (x, y) is pixel (x, 600 - y).
struct Scene {
    Scene() : geometry(&graphic, nullptr) {
        tran.SethScreen(600);
        graphic.SetVectorViewCoordTran(&tran);
        geometry.SetLayerManager(Layers());
    }
    CLayerManager* Layers();
    // Units per pixel.
    void Zoom(float scale) { tran.SetScale(scale); }

    CVectorViewCoordTran tran;
    CVectorGraphic graphic;
    CDrawGeometry geometry;
};

// A white bitmap with a device context on it; row 0 is the top.
class Canvas {
public:
    explicit Canvas(int width = 800, int height = 600, COLORREF ground = RGB(255, 255, 255));
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    CDC& DC() { return m_DC; }
    HDC Handle() { return m_DC.m_hDC; }
    // 0x00BBGGRR.
    COLORREF At(int x, int y) const;
    // The smallest box around all pixels that are not of the ground's colour; empty when there are none. Its right and
    // bottom are the first column and row without ink.
    CRect Ink() const;
    int Count(COLORREF color) const;

private:
    int m_Width;
    int m_Height;
    COLORREF m_Ground;
    CDC m_DC;
    HBITMAP m_hBitmap = nullptr;
    HGDIOBJ m_hOld = nullptr;
    const DWORD* m_pBits = nullptr; // 0x00RRGGBB
};
