// The table of command words. Layer: manager.

#include "CommandWords.h"

#include "CommandOperationErase.h"
#include "CommandOperationOffset.h"
#include "CommandOperationPLinePoint.h"
#include "CommandOperationRTPAN.h"
#include "CommandOperationRotateText.h"
#include "CommandOperationTrans.h"
#include "OperationCreateArc.h"
#include "OperationCreateCircle.h"
#include "OperationCreateLabel.h"
#include "OperationCreateLine.h"
#include "OperationCreatePline.h"
#include "OperationCreateRectangle.h"
#include "OperationCreateText.h"
#include "OperationCreateTextParm.h"

#include <cwchar>

namespace {

constexpr COLORREF kGreenLabel = 0x4CB122; // 0x00BBGGRR
constexpr DWORD kBoundYellow = 0xFFFFFF00; // 0xAARRGGBB

// What a row names: a function that makes the tool with the usual four arguments.
template <class Tool>
CCommandOperation* New(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran, CGraphicDocument* document) {
    return new Tool(wnd, graphic, tran, document);
}

CCommandOperation* NewGreenLabel(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                 CGraphicDocument* document) {
    auto* label = new COperationCreateLabel(wnd, graphic, tran, document);
    label->SetLabelColor(kGreenLabel);
    return label;
}

CCommandOperation* NewBoundPline(CWnd* wnd, CVectorGraphic* graphic, CVectorViewCoordTran* tran,
                                 CGraphicDocument* document) {
    auto* pline = new COperationCreatePline(wnd, graphic, tran, document);
    pline->SetColor(kBoundYellow);
    return pline;
}

constexpr CommandWord kCommandWords[] = {
    {L"rotatetext", New<CCommandOperationRotateText>, CommandRunning::AtOnceAndKept},
    {L"DrawLabel", New<COperationCreateLabel>, CommandRunning::Installed},
    {L"DrawLabel_Green", NewGreenLabel, CommandRunning::Installed},
    {L"rect", New<COperationCreateRectangle>, CommandRunning::Installed},
    {L"line", New<COperationCreateLine>, CommandRunning::Installed},
    {L"pline", New<COperationCreatePline>, CommandRunning::Installed},
    {L"pline_bound", NewBoundPline, CommandRunning::Installed},
    {L"offset", New<CCommandOperationOffset>, CommandRunning::Installed},
    {L"circle", New<COperationCreateCircle>, CommandRunning::Installed},
    {L"text", New<COperationCreateText>, CommandRunning::Installed},
    {L"arc", New<COperationCreateArc>, CommandRunning::Installed},
    {L"textparm", New<COperationCreateTextParm>, CommandRunning::Installed},
    {L"mirroring", New<CCommandOperationMirroring>, CommandRunning::Installed},
    {L"rotation", New<CCommandOperationRotation>, CommandRunning::Installed},
    {L"translation", New<CCommandOperationTranslation>, CommandRunning::Installed},
    {L"copy", New<CCommandOperationCopy>, CommandRunning::Installed},
    {L"viewmove", New<CCommandOperationRTPAN>, CommandRunning::Installed},
    {L"erase", New<CCommandOperationErase>, CommandRunning::AtOnce},
    {L"PLine_AddPoint", New<CCommandOperation_PLine_AddPoint>, CommandRunning::Installed},
    {L"PLine_RemovePoint", New<CCommandOperation_PLine_RemovePoint>, CommandRunning::Installed},
};

} // namespace

const CommandWord* FindCommandWord(LPCTSTR word) {
    for (const CommandWord& row : kCommandWords) {
        if (std::wcscmp(row.word, word) == 0) {
            return &row;
        }
    }
    return nullptr;
}
