// The demo's paper: the preview of one sheet, and printing it.
// Layer 13: demo.
#pragma once

#include <Document.h>
#include <afxcmn.h>
#include <afxwin.h>

// A sheet of paper and the part of it that can be printed, in dots.
struct CPaperSheet {
    CSize all;
    CRect printable;
    double dotsPerInch = 300.0;
};

// How a drawing is placed on the sheet.
struct CPaperChoice {
    double n = 0.0; // of 1:n, a drawing unit being a millimetre; 0 fits the drawing
    bool black = true;
    bool landscape = false;
};

// A modal window that shows a sheet of the default printer's size, or of A4 where there is no printer, with the
// drawing.
class CPrintPreview : public CDialog {
public:
    // Borrows the drawing, which must not change meanwhile.
    CPrintPreview(CWnd* parent, CGraphicDocument* document);

protected:
    BOOL OnInitDialog() override;
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT draw);
    afx_msg void OnChoice();
    afx_msg void OnScaleEdited();
    afx_msg void OnPrint();
    DECLARE_MESSAGE_MAP()

private:
    void TakeScale(const CString& text);
    void ShowFacts();

    CGraphicDocument* m_document;
    CPaperChoice m_choice;
    CPaperSheet m_sheet;
};

// Asks for the printer and prints one page. False when cancelled, or after a message.
bool PrintDrawing(CWnd* owner, CGraphicDocument* document, const CPaperChoice& choice);
// The first choice for a drawing: the sheet's longer side along its own.
CPaperChoice FirstPaperChoice(CGraphicDocument* document);
