#include "Prompts.h"

#include <algorithm>
#include <iterator>

namespace {

const int MostSteps = 3;

// The last step that is given is also that of all further clicks.
struct Steps {
    const wchar_t* word;
    const wchar_t* prompts[MostSteps];
};
const Steps Table[] = {
    {L"line", {L"单击起点", L"单击终点"}},
    {L"pline", {L"单击第一个顶点", L"单击下一个顶点，或键入长度后按回车；右键结束"}},
    {L"pline_bound", {L"单击第一个顶点", L"单击下一个顶点，或键入长度后按回车；右键结束"}},
    {L"rect", {L"单击一个角点", L"单击对角点"}},
    {L"circle", {L"单击圆心", L"移到圆上一点后单击"}},
    {L"arc", {L"单击圆弧的第一点", L"单击圆弧的第二点", L"单击圆弧的第三点"}},
    {L"DrawLabel", {L"单击被标注的第一点", L"单击被标注的第二点", L"单击尺寸线的位置"}},
    {L"DrawLabel_Green", {L"单击被标注的第一点", L"单击被标注的第二点", L"单击尺寸线的位置"}},
    {L"translation", {L"单击基点", L"单击目标点"}},
    {L"copy", {L"单击基点", L"单击目标点"}},
    {L"rotation", {L"单击旋转中心", L"单击方向点"}},
    {L"mirroring", {L"单击镜像轴的第一点", L"单击镜像轴的第二点"}},
    {L"offset", {L"单击两点多段线", L"单击一侧，或键入距离后按回车"}},
};

} // namespace

CString GetPrompt(const CommandWord& row, int clicks) {
    for (const Steps& steps : Table) {
        if (wcscmp(steps.word, row.word) == 0) {
            const auto given = std::find(std::begin(steps.prompts), std::end(steps.prompts), nullptr);
            const int count = static_cast<int>(given - std::begin(steps.prompts));
            return steps.prompts[std::min(clicks, count - 1)];
        }
    }
    return row.hint;
}
