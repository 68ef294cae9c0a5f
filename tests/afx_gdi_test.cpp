// The MFC layer's device contexts and GDI objects, and the recording device context.
// Layer 16: tests.
#include "support/BoxAnswer.h"
#include "support/RecordingDC.h"

#include <gtest/gtest.h>

TEST(AfxGdi, SelectingGivesTheObjectSelectedBeforeAndItselfBack) {
    RecordingDC dc;
    CPen red(PS_SOLID, 1, RGB(255, 0, 0)), blue(PS_DOT, 1, RGB(0, 0, 255));
    CPen* initial = dc.SelectObject(&red);
    ASSERT_NE(initial, nullptr);
    EXPECT_EQ(dc.SelectObject(&blue), &red);
    EXPECT_EQ(dc.SelectObject(initial), &blue);
    EXPECT_EQ(dc.GetCurrentPen(), initial);
    CBrush brush(RGB(1, 2, 3));
    CBrush* before = dc.SelectObject(&brush);
    EXPECT_EQ(dc.SelectObject(before), &brush);
}

TEST(AfxGdi, TheOldObjectStaysValidOverThousandsOfSelections) {
    RecordingDC dc;
    CPen held(PS_SOLID, 3, RGB(1, 1, 1));
    CPen* initial = dc.SelectObject(&held);
    for (int i = 0; i < 5000; ++i) {
        CPen pen(PS_SOLID, 1, static_cast<COLORREF>(i));
        CPen* before = dc.SelectObject(&pen);
        ASSERT_EQ(before, &held);
        ASSERT_EQ(dc.SelectObject(before), &pen);
    }
    EXPECT_EQ(dc.SelectObject(initial), &held);
    LOGPEN log = {};
    EXPECT_NE(initial->GetLogPen(&log), 0);
}

TEST(AfxGdi, ATemporaryObjectIsNeverUsedForAHandleOfAnotherKind) {
    const HGDIOBJ pen = ::CreatePen(PS_SOLID, 1, 0);
    const CPen* temporary = CPen::FromHandle(static_cast<HPEN>(pen));
    EXPECT_EQ(CGdiObject::FromHandle(pen), temporary);
    EXPECT_TRUE(temporary->IsKindOf(RUNTIME_CLASS(CPen)));
    // As if the handle had been freed and given out again for a brush.
    const CBrush* brush = CBrush::FromHandle(static_cast<HBRUSH>(pen));
    EXPECT_TRUE(brush->IsKindOf(RUNTIME_CLASS(CBrush)));
    CGdiObject::DeleteTempMap();
    EXPECT_EQ(::GetObjectType(pen), static_cast<DWORD>(OBJ_PEN)); // the temporary one owned nothing
    ::DeleteObject(pen);
}

TEST(AfxGdi, OfTwoObjectsOnOneHandleTheLaterOneAnswersAsLongAsItStays) {
    const auto handle = static_cast<HPEN>(::CreatePen(PS_SOLID, 1, 0));
    CPen first;
    CPen second;
    for (const bool otherBetween : {false, true}) {
        for (const bool otherBehind : {false, true}) {
            first.Attach(handle);
            CPen between;
            if (otherBetween) {
                between.CreatePen(PS_SOLID, 1, RGB(1, 2, 3));
            }
            second.Attach(handle);
            CPen behind;
            if (otherBehind) {
                behind.CreatePen(PS_SOLID, 1, RGB(3, 2, 1));
            }
            EXPECT_EQ(CPen::FromHandle(handle), &second);
            EXPECT_EQ(first.Detach(), handle);
            EXPECT_EQ(CPen::FromHandle(handle), &second) << "the earlier one takes only itself away";
            EXPECT_EQ(second.Detach(), handle);
            const CPen* now = CPen::FromHandle(handle);
            EXPECT_NE(now, &first);
            EXPECT_NE(now, &second);
            EXPECT_EQ(now->m_hObject, handle);
            CGdiObject::DeleteTempMap();
        }
    }
    ::DeleteObject(handle);
}

TEST(AfxGdi, AnObjectThatGetsAnotherHandleIsNoMoreTheOwnerOfTheFirst) {
    const auto one = static_cast<HPEN>(::CreatePen(PS_SOLID, 1, 1)),
               two = static_cast<HPEN>(::CreatePen(PS_SOLID, 1, 2));
    {
        CPen pen, other;
        pen.Attach(one);
        other.Attach(two);
        other.Attach(two);
        pen.Attach(two);
        EXPECT_EQ(pen.Detach(), two);
        EXPECT_EQ(CPen::FromHandle(two), &other);
        EXPECT_NE(CPen::FromHandle(one), &pen);
        EXPECT_EQ(CPen::FromHandle(one)->m_hObject, one);
        other.Detach();
    }
    CGdiObject::DeleteTempMap();
    for (const HPEN handle : {one, two}) {
        EXPECT_EQ(CPen::FromHandle(handle)->m_hObject, handle);
        ::DeleteObject(handle);
    }
    CGdiObject::DeleteTempMap();
}

TEST(AfxGdi, AnOwnerHidesTheTemporaryObjectOfItsHandle) {
    const auto handle = static_cast<HPEN>(::CreatePen(PS_SOLID, 1, 0));
    const CPen* temporary = CPen::FromHandle(handle);
    CPen owner;
    owner.Attach(handle);
    EXPECT_EQ(CPen::FromHandle(handle), &owner);
    CPen another(PS_SOLID, 1, RGB(1, 2, 3));
    EXPECT_EQ(CPen::FromHandle(handle), &owner);
    EXPECT_EQ(temporary->m_hObject, handle) << "alive until idle time";
    CGdiObject::DeleteTempMap();
    EXPECT_EQ(CPen::FromHandle(handle), &owner);
}

TEST(AfxGdi, DeletingAnObjectFreesItsHandleAndDetachingDoesNot) {
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    const HGDIOBJ handle = pen.m_hObject;
    EXPECT_TRUE(pen.DeleteObject());
    EXPECT_EQ(pen.m_hObject, nullptr);
    EXPECT_FALSE(pen.DeleteObject());
    EXPECT_EQ(::GetObjectType(handle), 0u);
    CFont font;
    LOGFONT log = {};
    log.lfHeight = -12;
    ASSERT_TRUE(font.CreateFontIndirect(&log));
    const HGDIOBJ kept = font.Detach();
    EXPECT_EQ(font.m_hObject, nullptr);
    EXPECT_EQ(::GetObjectType(kept), static_cast<DWORD>(OBJ_FONT));
    ::DeleteObject(kept);
}

TEST(AfxGdi, CreateFunctionsSayWhenGdiRefuses) {
    CBitmap bitmap;
    EXPECT_FALSE(bitmap.CreateCompatibleBitmap(nullptr, 10, 10));
    EXPECT_EQ(bitmap.m_hObject, nullptr);
    CFont font;
    EXPECT_FALSE(font.CreateFontIndirect(nullptr));
    EXPECT_EQ(font.m_hObject, nullptr);
    CGdiObject object;
    EXPECT_FALSE(object.Attach(nullptr));
}

TEST(AfxGdi, ConstructorsOfPensAndBrushesThrowWhenGdiRefuses) {
    bool thrown = false;
    try {
        CBrush pattern(static_cast<CBitmap*>(nullptr));
    } catch (CResourceException* e) {
        thrown = true;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
    // GDI has no more than 65,536 handles here, fewer elsewhere: then a pen is refused too.
    std::vector<HGDIOBJ> taken;
    for (int i = 0; i < 70000; ++i) {
        const HGDIOBJ pen = ::CreatePen(PS_SOLID, 1, 1);
        if (pen == nullptr) {
            break;
        }
        taken.push_back(pen);
    }
    int pens = 0, brushes = 0;
    try {
        CPen pen(PS_SOLID, 1, 2);
    } catch (CResourceException* e) {
        ++pens;
        e->Delete();
    }
    try {
        CBrush brush(RGB(9, 9, 9));
    } catch (CResourceException* e) {
        ++brushes;
        e->Delete();
    }
    const size_t count = taken.size();
    for (HGDIOBJ pen : taken) {
        ::DeleteObject(pen);
    }
    ASSERT_LT(count, 70000u) << "the handles did not run out";
    EXPECT_EQ(pens, 1);
    EXPECT_EQ(brushes, 1);
    CPen after(PS_SOLID, 1, 2);
    EXPECT_NE(after.m_hObject, nullptr);
}

TEST(AfxGdi, AMemoryContextDeletesItselfAndKeepsOutputAndAttributesTogether) {
    HDC handle = nullptr;
    {
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
        handle = dc.m_hDC;
        EXPECT_EQ(dc.m_hAttribDC, handle);
        EXPECT_EQ(CDC::FromHandle(handle), &dc);
        dc.ReleaseAttribDC();
        EXPECT_EQ(dc.m_hAttribDC, nullptr);
        dc.SetAttribDC(handle);
    }
    EXPECT_EQ(::GetObjectType(handle), 0u);
}

TEST(AfxGdi, ModesAndMappingGiveTheirOldValues) {
    RecordingDC dc;
    EXPECT_EQ(dc.SetROP2(R2_NOT), R2_COPYPEN);
    EXPECT_EQ(dc.SetROP2(R2_COPYPEN), R2_NOT);
    EXPECT_EQ(dc.SetBkMode(TRANSPARENT), OPAQUE);
    EXPECT_EQ(dc.SetTextColor(RGB(1, 2, 3)), RGB(0, 0, 0));
    EXPECT_EQ(dc.SetBkColor(RGB(4, 5, 6)), RGB(255, 255, 255));
    EXPECT_EQ(dc.SetWindowOrg(10, 20), CPoint(0, 0));
    EXPECT_EQ(dc.GetWindowOrg(), CPoint(10, 20));
    CPoint point(10, 20);
    dc.LPtoDP(&point);
    EXPECT_EQ(point, CPoint(0, 0));
    const int saved = dc.SaveDC();
    dc.SetWindowOrg(0, 0);
    EXPECT_TRUE(dc.RestoreDC(saved));
    EXPECT_EQ(dc.GetWindowOrg(), CPoint(10, 20));
}

TEST(AfxGdi, ClipBoxFollowsTheClip) {
    RecordingDC dc(120, 80);
    CRect box;
    EXPECT_EQ(dc.GetClipBox(&box), SIMPLEREGION);
    EXPECT_EQ(box, CRect(0, 0, 120, 80));
    dc.SetClip(CRect(10, 20, 110, 70));
    dc.GetClipBox(&box);
    EXPECT_EQ(box, CRect(10, 20, 110, 70));
    EXPECT_TRUE(dc.Calls().empty());
}

TEST(AfxGdi, AMetafileKeepsWhatWasDrawn) {
    CMetaFileDC dc;
    ASSERT_TRUE(dc.CreateEnhanced(nullptr, nullptr, nullptr, nullptr));
    dc.MoveTo(1, 2);
    dc.LineTo(30, 40);
    const HENHMETAFILE file = dc.CloseEnhanced();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(dc.m_hDC, nullptr);
    ENHMETAHEADER header = {};
    ASSERT_NE(::GetEnhMetaFileHeader(file, sizeof(header), &header), 0u);
    EXPECT_EQ(header.rclBounds.right, 30);
    EXPECT_EQ(header.rclBounds.bottom, 40);
    ::DeleteEnhMetaFile(file);
}

// --- the recording device context ---------------------------------------------------------------------------------

TEST(RecordingDevice, EachCallIsOneReadableLine) {
    RecordingDC dc;
    CPen pen(PS_DOT, 1, RGB(0, 0, 255));
    CBrush brush(RGB(255, 0, 0));
    CPen* oldPen = dc.SelectObject(&pen);
    dc.SetROP2(R2_NOT);
    dc.SelectStockObject(NULL_BRUSH);
    dc.MoveTo(1, 2);
    dc.LineTo(CPoint(3, 4));
    dc.Rectangle(CRect(1, 2, 3, 4));
    dc.Arc(0, 0, 10, 10, 10, 5, 5, 0);
    dc.TextOut(5, 6, CString(L"中\"x"));
    dc.PatBlt(0, 0, 10, 20, WHITENESS);
    const POINT points[] = {{0, 0}, {4, 0}, {4, -4}};
    dc.Polygon(points, 3);
    CRgn region;
    region.CreateRectRgn(1, 2, 30, 40);
    dc.FillRgn(&region, &brush);
    dc.SelectObject(oldPen);
    EXPECT_TRUE(SameCalls({"SelectObject(pen style=2 width=1 color=0x00FF0000)", "SetROP2(6)", "SelectStockObject(5)",
                           "MoveTo(1,2)", "LineTo(3,4)", "Rectangle(1,2,3,4)", "Arc(0,0,10,10,10,5,5,0)",
                           "TextOut(5,6,\"中\"x\")", "PatBlt(0,0,10,20,0x00FF0062)", "Polygon([0,0 4,0 4,-4])",
                           "FillRgn(region [1,2,30,40],brush style=0 color=0x000000FF)", "SelectObject(pen default)"},
                          dc.Calls()));
    dc.Clear();
    EXPECT_TRUE(dc.Calls().empty());
}

TEST(RecordingDevice, CallsThroughTheBaseClassAreWrittenDownToo) {
    RecordingDC recording;
    CDC& dc = recording;
    dc.Ellipse(1, 2, 3, 4);
    dc.ExtTextOut(1, 2, 0, nullptr, L"ab", 2, nullptr);
    EXPECT_TRUE(SameCalls({"Ellipse(1,2,3,4)", "ExtTextOut(1,2,0,null,\"ab\",null)"}, recording.Calls()));
}

TEST(RecordingDevice, DrawingIsCarriedOutUnlessSwitchedOff) {
    RecordingDC dc(50, 50);
    dc.FillSolidRect(10, 10, 5, 5, RGB(255, 0, 0));
    EXPECT_EQ(dc.Pixel(12, 12), RGB(255, 0, 0));
    EXPECT_EQ(dc.Pixel(15, 15), RGB(255, 255, 255));
    const auto before = dc.Pixels();
    dc.SetExecution(false);
    EXPECT_TRUE(dc.Rectangle(0, 0, 40, 40));
    EXPECT_EQ(dc.Pixels(), before);
    EXPECT_EQ(dc.Calls().size(), 2u);
}

TEST(RecordingDevice, ADifferenceIsShownWithItsLines) {
    const auto result = SameCalls({"A", "B", "C"}, {"A", "X", "C"});
    EXPECT_FALSE(result);
    const std::string text = result.message();
    EXPECT_NE(text.find("- B\n"), std::string::npos);
    EXPECT_NE(text.find("+ X\n"), std::string::npos);
}
