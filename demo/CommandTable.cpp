// The demo's commands: word, caption, hint, icon.
// Layer: demo.
#include "CommandTable.h"

#include <resource.h>

#include <iterator>

// clang-format off
const CommandRow CommandRows[] = {
    {L"line", L"直线(&L)", L"单击起点，再单击终点", IDI_LINE, CommandMenu::Draw, 0},
    {L"pline", L"多段线(&P)", L"依次单击顶点，或键入长度后按回车；右键结束", IDI_PLINE, CommandMenu::Draw, 0},
    {L"pline_bound", L"边界多段线(&B)", L"依次单击顶点，或键入长度后按回车；右键结束", IDI_PLINE, CommandMenu::Draw, 0},
    {L"rect", L"矩形(&R)", L"单击一个角点，再单击对角点", IDI_RECT, CommandMenu::Draw, 0},
    {L"circle", L"圆(&C)", L"单击圆心，再单击圆上一点", IDI_CIRCLE, CommandMenu::Draw, CommandGroup},
    {L"arc", L"圆弧(&A)", L"依次单击圆弧上的三点", IDI_ARC, CommandMenu::Draw, 0},
    {L"text", L"文字(&T)…", L"单击插入点，再输入文字", IDI_TEXT, CommandMenu::Draw, CommandGroup},
    {L"textparm", L"参数文字(&M)…", L"单击插入点，再输入文字", IDI_TEXTPARM, CommandMenu::Draw, 0},
    {L"DrawLabel", L"尺寸标注(&D)", L"单击被标注的两点，再单击尺寸线的位置", IDI_LABEL, CommandMenu::Draw, CommandGroup},
    {L"DrawLabel_Green", L"绿色尺寸标注(&G)", L"单击被标注的两点，再单击尺寸线的位置", IDI_LABEL, CommandMenu::Draw, 0},
    {L"translation", L"平移(&T)", L"单击基点，再单击目标点", IDI_TRANSLATION, CommandMenu::Edit, CommandRestores},
    {L"copy", L"复制(&C)", L"单击基点，再单击目标点", IDI_COPY, CommandMenu::Edit, CommandRestores},
    {L"rotation", L"旋转(&R)", L"单击旋转中心，再单击方向点", IDI_ROTATION, CommandMenu::Edit, CommandRestores},
    {L"mirroring", L"镜像(&M)", L"单击镜像轴上的两点", IDI_MIRRORING, CommandMenu::Edit, CommandRestores},
    {L"offset", L"偏移(&O)", L"单击两点多段线，再单击一侧或键入距离后按回车", IDI_OFFSET, CommandMenu::Edit, CommandGroup},
    {L"PLine_AddPoint", L"多段线加点(&I)", L"单击多段线上要加点的位置；右键结束", IDI_PLINE, CommandMenu::Edit, 0},
    {L"PLine_RemovePoint", L"多段线减点(&K)", L"单击要去掉的顶点；右键结束", IDI_PLINE, CommandMenu::Edit, 0},
    {L"rotatetext", L"旋转文字(&X)…", L"", IDI_TEXT, CommandMenu::Edit, CommandGroup | CommandAtOnce},
    {L"erase", L"删除(&E)\tDel", L"", IDI_ERASE, CommandMenu::Edit, CommandAtOnce},
    {L"viewmove", L"移动视图(&V)", L"按住左键拖动图形；右键结束", IDI_VIEWMOVE, CommandMenu::Edit,
     CommandGroup | CommandHarmless},
};
// clang-format on

const int CommandRowCount = static_cast<int>(std::size(CommandRows));

int FindCommandRow(const wchar_t* word) {
    for (int i = 0; i < CommandRowCount; ++i) {
        if (wcscmp(CommandRows[i].word, word) == 0) {
            return i;
        }
    }
    return -1;
}

CString PlainCaption(const CommandRow& row) {
    const CString text = row.caption;
    return text.Left(text.Find(L"(&"));
}
