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
#include "resource.h"

#include <cwchar>
#include <iterator>

namespace {

constexpr COLORREF kGreenLabel = 0x4CB122; // 0x00BBGGRR
constexpr DWORD kBoundYellow = 0xFFFFFF00; // 0xAARRGGBB

// The function of a row, which makes the tool with the usual four arguments.
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

// clang-format off
constexpr CommandWord kCommandWords[] = {
    {L"line", L"直线", L"Line", New<COperationCreateLine>, CommandRunning::Installed,
     L"直线(&L)", L"单击起点，再单击终点", IDI_LINE, CommandMenu::Draw, 0},
    {L"pline", L"多段线", L"Polyline", New<COperationCreatePline>, CommandRunning::Installed,
     L"多段线(&P)", L"依次单击顶点，或键入长度后按回车；右键结束", IDI_PLINE, CommandMenu::Draw, 0},
    {L"pline_bound", L"边界多段线", L"Boundary polyline", NewBoundPline, CommandRunning::Installed,
     L"边界多段线(&B)", L"依次单击顶点，或键入长度后按回车；右键结束", IDI_PLINE, CommandMenu::Draw, 0},
    {L"rect", L"矩形", L"Rectangle", New<COperationCreateRectangle>, CommandRunning::Installed,
     L"矩形(&R)", L"单击一个角点，再单击对角点", IDI_RECT, CommandMenu::Draw, 0},
    {L"circle", L"圆", L"Circle", New<COperationCreateCircle>, CommandRunning::Installed,
     L"圆(&C)", L"单击圆心，再单击圆上一点", IDI_CIRCLE, CommandMenu::Draw, kCommandGroup},
    {L"arc", L"圆弧", L"Arc", New<COperationCreateArc>, CommandRunning::Installed,
     L"圆弧(&A)", L"依次单击圆弧上的三点", IDI_ARC, CommandMenu::Draw, 0},
    {L"text", L"文字", L"Text", New<COperationCreateText>, CommandRunning::Installed,
     L"文字(&T)…", L"单击插入点，再输入文字", IDI_TEXT, CommandMenu::Draw, kCommandGroup},
    {L"textparm", L"参数文字", L"Parameter text", New<COperationCreateTextParm>, CommandRunning::Installed,
     L"参数文字(&M)…", L"单击插入点，再输入文字", IDI_TEXTPARM, CommandMenu::Draw, 0},
    {L"DrawLabel", L"尺寸标注", L"Dimension", New<COperationCreateLabel>, CommandRunning::Installed,
     L"尺寸标注(&D)", L"单击被标注的两点，再单击尺寸线的位置", IDI_LABEL, CommandMenu::Draw, kCommandGroup},
    {L"DrawLabel_Green", L"绿色尺寸标注", L"Green dimension", NewGreenLabel, CommandRunning::Installed,
     L"绿色尺寸标注(&G)", L"单击被标注的两点，再单击尺寸线的位置", IDI_LABEL, CommandMenu::Draw, 0},
    {L"translation", L"平移", L"Move", New<CCommandOperationTranslation>, CommandRunning::Installed,
     L"平移(&T)", L"单击基点，再单击目标点", IDI_TRANSLATION, CommandMenu::Edit, kCommandRestores},
    {L"copy", L"复制", L"Copy", New<CCommandOperationCopy>, CommandRunning::Installed,
     L"复制(&C)", L"单击基点，再单击目标点", IDI_COPY, CommandMenu::Edit, kCommandRestores},
    {L"rotation", L"旋转", L"Rotate", New<CCommandOperationRotation>, CommandRunning::Installed,
     L"旋转(&R)", L"单击旋转中心，再单击方向点", IDI_ROTATION, CommandMenu::Edit, kCommandRestores},
    {L"mirroring", L"镜像", L"Mirror", New<CCommandOperationMirroring>, CommandRunning::Installed,
     L"镜像(&M)", L"单击镜像轴上的两点", IDI_MIRRORING, CommandMenu::Edit, kCommandRestores},
    {L"offset", L"偏移", L"Offset", New<CCommandOperationOffset>, CommandRunning::Installed,
     L"偏移(&O)", L"单击两点多段线，再单击一侧或键入距离后按回车", IDI_OFFSET, CommandMenu::Edit, kCommandGroup},
    {L"PLine_AddPoint", L"多段线加点", L"Add vertices", New<CCommandOperation_PLine_AddPoint>, CommandRunning::Installed,
     L"多段线加点(&I)", L"单击多段线上要加点的位置；右键结束", IDI_PLINE, CommandMenu::Edit, 0},
    {L"PLine_RemovePoint", L"多段线减点", L"Remove vertices", New<CCommandOperation_PLine_RemovePoint>, CommandRunning::Installed,
     L"多段线减点(&K)", L"单击要去掉的顶点；右键结束", IDI_PLINE, CommandMenu::Edit, 0},
    {L"rotatetext", L"旋转文字", L"Rotate text", New<CCommandOperationRotateText>, CommandRunning::AtOnceAndKept,
     L"旋转文字(&X)…", L"", IDI_TEXT, CommandMenu::Edit, kCommandGroup},
    {L"erase", L"删除", L"Erase", New<CCommandOperationErase>, CommandRunning::AtOnce,
     L"删除(&E)\tDel", L"", IDI_ERASE, CommandMenu::Edit, 0},
    {L"viewmove", L"移动视图", L"Pan", New<CCommandOperationRTPAN>, CommandRunning::Installed,
     L"移动视图(&V)", L"按住左键拖动图形；右键结束", IDI_VIEWMOVE, CommandMenu::Edit, kCommandGroup | kCommandHarmless},
};
// clang-format on

} // namespace

const CommandWord* FindCommandWord(LPCTSTR word) {
    for (const CommandWord& row : kCommandWords) {
        if (std::wcscmp(row.word, word) == 0) {
            return &row;
        }
    }
    return nullptr;
}

const CommandWord* GetCommandWords(int& count) {
    count = static_cast<int>(std::size(kCommandWords));
    return kCommandWords;
}
