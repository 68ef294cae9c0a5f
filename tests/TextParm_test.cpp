// CTextParm: its fields, hits, edit rectangle, the edit box's font and rows. Drawing is in TextDraw_test.cpp.

#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

LOGFONTW FontOf(OpenParm& parm, CVectorViewCoordTran& tran) {
    const HFONT font = parm.GetFontHandle(&tran);
    EXPECT_NE(nullptr, font);
    LOGFONTW description = {};
    EXPECT_EQ(static_cast<int>(sizeof(description)), ::GetObjectW(font, sizeof(description), &description));
    ::DeleteObject(font);
    return description;
}

CString RowText(const Rows& rows, int index) {
    return CString(rows.list.GetRow(index)->GetValue().bstrVal);
}

} // namespace

TEST(TextParm, ANewParameterNeedsAnEditBoxAndIsEmptyOtherwise) {
    OpenParm parm;
    EXPECT_TRUE(parm.GetParmName().IsEmpty());
    EXPECT_EQ(0, parm.GetParmType());
    EXPECT_TRUE(parm.GetParmRegularExp().IsEmpty());
    EXPECT_TRUE(parm.GetParmDes().IsEmpty());
    EXPECT_TRUE(parm.GetParmModifedLinkExp().IsEmpty());
    EXPECT_TRUE(parm.GetMsgInfo().IsEmpty());
    EXPECT_EQ(1, parm.GetNeedEditBox());
    EXPECT_EQ(CString(L"多行文字"), parm.GetName()) << "the name of its base, the text";
    EXPECT_EQ(20.0f, parm.GetTextHeight());
}

TEST(TextParm, CanBeMadeByNameAndIsAText) {
    CRuntimeClass* record = CRuntimeClass::FromName(L"CTextParm");
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(0x80000005u, record->m_wSchema);
    std::unique_ptr<CObject> object(record->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CText)));
}

TEST(TextParm, SettersKeepWhatTheyAreGiven) {
    OpenParm parm;
    parm.SetParmName(L"长度");
    parm.SetParmType(4);
    parm.SetParmRegularExp(L"$shishu$");
    parm.SetParmDes(L"des");
    parm.SetParmModifedLinkExp(L"link");
    parm.SetMsgInfo(L"info");
    parm.SetNeedEditBox(-3);
    EXPECT_EQ(CString(L"长度"), parm.GetParmName());
    EXPECT_EQ(4, parm.GetParmType());
    EXPECT_EQ(CString(L"$shishu$"), parm.GetParmRegularExp());
    EXPECT_EQ(CString(L"des"), parm.GetParmDes());
    EXPECT_EQ(CString(L"link"), parm.GetParmModifedLinkExp());
    EXPECT_EQ(CString(L"info"), parm.GetMsgInfo());
    EXPECT_EQ(-3, parm.GetNeedEditBox());
}

TEST(TextParm, TheWidthOfTheEditBoxIsTheWidthOfTheText) {
    OpenParm parm;
    parm.SetTextEditWide(55.0f);
    EXPECT_EQ(55.0f, parm.GetTextWide());
    parm.SetTextWide(66.0f);
    EXPECT_EQ(66.0f, parm.GetTextEditWide());
}

// ---- Hits and the edit rectangle -----------------------------------------------------------------------------------

TEST(TextParm, AWideBoxCanBeHitForThreeHeightsOfItsWidth) {
    OpenParm parm;
    parm.SetPos(CGePoint2d(10, 20));
    parm.SetTextWide(200.0f);
    parm.m_MinCalHeight = 8.0f;
    EXPECT_EQ(0.0f, parm.HitTest(CGePoint2d(33.9, 15))) << "10 and three times 8";
    EXPECT_NE(0.0f, parm.HitTest(CGePoint2d(34.0, 15)));
    // Box 12 to 34 and 12 to 22: centre (23, 17).
    EXPECT_EQ(30.0f, parm.HitTest(CGePoint2d(53, 17)));
}

TEST(TextParm, ANarrowBoxCountsWhole) {
    OpenParm parm;
    parm.SetPos(CGePoint2d(10, 20));
    parm.SetTextWide(24.0f);
    parm.m_MinCalHeight = 8.0f;
    EXPECT_EQ(0.0f, parm.HitTest(CGePoint2d(33.9, 15)));
    parm.SetTextWide(20.0f);
    EXPECT_NE(0.0f, parm.HitTest(CGePoint2d(33.9, 15)));
    EXPECT_EQ(0.0f, parm.HitTest(CGePoint2d(29.9, 15)));
}

TEST(TextParm, BeforeTheFirstPaintThereIsNothingToHitAndNoHeightToEdit) {
    OpenParm parm;
    parm.SetPos(CGePoint2d(10, 20));
    parm.SetTextWide(100.0f);
    // Limited to a width of 0: from 12 to 10.
    EXPECT_NE(0.0f, parm.HitTest(CGePoint2d(13, 20)));
    EXPECT_NE(0.0f, parm.HitTest(CGePoint2d(11, 20)));
    CGePoint2d a;
    CGePoint2d b;
    parm.GetParmEditRect(a, b);
    EXPECT_TRUE(b == CGePoint2d(110, 20));
}

TEST(TextParm, AHiddenParameterHitsAsOneThousand) {
    OpenParm parm;
    parm.SetIsShow(0);
    EXPECT_EQ(1000.0f, parm.HitTest(CGePoint2d(0, 0)));
}

TEST(TextParm, TheEditRectangleIsTheWholeBoxWhateverTheRotation) {
    OpenParm parm;
    parm.SetPos(CGePoint2d(10, 20));
    parm.SetTextWide(200.0f);
    parm.SetAngle(90.0f);
    parm.m_MinCalHeight = 8.0f;
    CGePoint2d a;
    CGePoint2d b;
    a.type = 7;
    parm.GetParmEditRect(a, b);
    EXPECT_TRUE(a == CGePoint2d(10, 20));
    EXPECT_TRUE(b == CGePoint2d(210, 12));
}

// ---- The edit box's font -------------------------------------------------------------------------------------------

TEST(TextParm, TheEditBoxesFontHasTheTextsHeightInPixelsAndIsNeverRotated) {
    Scene scene;
    OpenParm parm;
    parm.SetTextHeight(20.9f);
    parm.SetAngle(45.0f);
    const LOGFONTW font = FontOf(parm, scene.tran);
    EXPECT_EQ(20, font.lfHeight);
    EXPECT_EQ(0, font.lfWidth) << "without a ratio the font decides";
    EXPECT_EQ(0, font.lfEscapement);
    EXPECT_EQ(0, font.lfOrientation);
    EXPECT_EQ(400, font.lfWeight);
    EXPECT_EQ(0, font.lfItalic + font.lfUnderline + font.lfStrikeOut + font.lfCharSet);
    EXPECT_EQ(4, font.lfOutPrecision);
    EXPECT_EQ(0, font.lfClipPrecision + font.lfQuality + font.lfPitchAndFamily);
    EXPECT_STREQ(L"宋体", font.lfFaceName);
}

TEST(TextParm, TheRatioCountsHalfHeightsOfWholePixels) {
    Scene scene;
    OpenParm parm;
    parm.SetTextHeight(21.0f);
    parm.SetTextRatio(1.0f);
    EXPECT_EQ(10, FontOf(parm, scene.tran).lfWidth) << "21 halved to 10";
    parm.SetTextRatio(1.99f);
    EXPECT_EQ(19, FontOf(parm, scene.tran).lfWidth);
    parm.SetTextRatio(-0.99f);
    EXPECT_EQ(-9, FontOf(parm, scene.tran).lfWidth);
}

TEST(TextParm, TheEditBoxesFontHasNoMinimumOfOnePixel) {
    Scene scene;
    OpenParm parm;
    parm.SetTextHeight(20.0f);
    scene.Zoom(100.0f);
    EXPECT_EQ(0, FontOf(parm, scene.tran).lfHeight);
}

TEST(TextParm, OfALongFaceNameThirtyOneCharactersCount) {
    Scene scene;
    OpenParm parm;
    parm.m_fontFaceName = CString(L'x', 200);
    const LOGFONTW font = FontOf(parm, scene.tran);
    EXPECT_EQ(31u, std::wstring(font.lfFaceName).size());
    EXPECT_EQ(L'\0', font.lfFaceName[31]);
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

TEST(TextParm, ItsRowsFollowThoseOfTheText) {
    OpenParm parm;
    const Rows rows(parm);
    const ExpectedRow expected[] = {
        {L"m_ParmName", L"参数变量名称", VT_BSTR},
        {L"m_ParmType", L"参数类别", VT_I2},
        {L"m_ParmRegularExp", L"参数正则表达式", VT_BSTR},
        {L"m_Value", L"默认值", VT_BSTR},
        {L"m_ParmDes", L"说明", VT_BSTR},
        {L"m_ParmModifedLinkExp", L"参数改变执行表达式", VT_BSTR},
        {L"m_bNeedEditBox", L"是否需要编辑框", VT_I2},
        {L"m_strMsgInfo", L"扩展信息", VT_BSTR},
    };
    ASSERT_EQ(20, rows.list.GetSize());
    EXPECT_EQ(CString(L"m_StartX"), rows.list.GetRow(4)->GetKey());
    for (int i = 0; i < 8; ++i) {
        const CSimpleProperty* row = rows.list.GetRow(12 + i);
        EXPECT_EQ(CString(expected[i].key), row->GetKey()) << i;
        EXPECT_EQ(CString(expected[i].label), row->GetLabel()) << i;
        EXPECT_EQ(CString(expected[i].label), row->m_Description) << i;
        EXPECT_EQ(expected[i].type, row->m_Type) << i;
        EXPECT_EQ(expected[i].type, row->GetValue().vt) << i;
    }
}

TEST(TextParm, ChangedRowsAreTakenBackTheDefaultValueAmongThem) {
    OpenParm parm;
    {
        Rows rows(parm);
        rows.Change(8, COleVariant(L"3.5", VT_BSTR));
        rows.Change(12, COleVariant(L"a", VT_BSTR));
        rows.Change(13, COleVariant(static_cast<short>(4), VT_I2));
        rows.Change(14, COleVariant(L"b", VT_BSTR));
        rows.Change(15, COleVariant(L"c", VT_BSTR));
        rows.Change(16, COleVariant(L"d", VT_BSTR));
        rows.Change(17, COleVariant(L"e", VT_BSTR));
        rows.Change(18, COleVariant(static_cast<short>(0), VT_I2));
        rows.Change(19, COleVariant(L"f", VT_BSTR));
        parm.SetProperty(rows.list);
    }
    EXPECT_EQ(CString(L"3.5"), parm.GetText());
    EXPECT_EQ(CString(L"a"), parm.GetParmName());
    EXPECT_EQ(4, parm.GetParmType());
    EXPECT_EQ(CString(L"b"), parm.GetParmRegularExp());
    EXPECT_EQ(CString(L"d"), parm.GetParmDes());
    EXPECT_EQ(CString(L"e"), parm.GetParmModifedLinkExp());
    EXPECT_EQ(0, parm.GetNeedEditBox());
    EXPECT_EQ(CString(L"f"), parm.GetMsgInfo());
    const Rows rows(parm);
    EXPECT_EQ(CString(L"c"), RowText(rows, 15)) << "the default value is reached through rows only";
}

TEST(TextParm, TheFlagsRowHoldsItsLowSixteenBits) {
    OpenParm parm;
    parm.SetNeedEditBox(0x12348001);
    Rows rows(parm);
    EXPECT_EQ(static_cast<short>(0x8001), rows.list.GetRow(18)->GetValue().iVal);
    rows.list.GetRow(18)->m_Changed = 1;
    parm.SetProperty(rows.list);
    EXPECT_EQ(-32767, parm.GetNeedEditBox()) << "and takes them back with their sign";
}

TEST(TextParm, TheNeedOfAnEditBoxAndTheTypeDoNotChangeHits) {
    OpenParm parm;
    parm.SetPos(CGePoint2d(0, 0));
    parm.m_MinCalHeight = 10.0f;
    parm.SetNeedEditBox(0);
    parm.SetParmType(4);
    EXPECT_EQ(0.0f, parm.HitTest(CGePoint2d(5, -5)));
}
