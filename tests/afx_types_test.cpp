// CPoint, CSize and CRect, and COleVariant. Layer 16: tests.
#include "support/AfxCaught.h"

#include <afxdisp.h>
#include <gtest/gtest.h>

namespace {

void ExpectRect(const CRect& r, int left, int top, int right, int bottom) {
    EXPECT_EQ(r.left, left);
    EXPECT_EQ(r.top, top);
    EXPECT_EQ(r.right, right);
    EXPECT_EQ(r.bottom, bottom);
}

TEST(AfxTypes, PointsAndSizesAddAndSubtract) {
    CPoint p(3, 4);
    EXPECT_TRUE(p + CSize(1, 2) == CPoint(4, 6));
    EXPECT_TRUE(p - CSize(1, 2) == CPoint(2, 2));
    EXPECT_TRUE(p + CPoint(1, 1) == CPoint(4, 5));
    const CSize distance = p - CPoint(1, 1);
    EXPECT_TRUE(distance == CSize(2, 3));
    EXPECT_TRUE(-p == CPoint(-3, -4));
    EXPECT_TRUE(-distance == CSize(-2, -3));
    p += CSize(1, 1);
    p -= CPoint(2, 2);
    EXPECT_TRUE(p == CPoint(2, 3));
    EXPECT_TRUE(p != CPoint(2, 4));
    p.Offset(1, -1);
    p.Offset(CSize(1, 1));
    p.Offset(CPoint(1, 1));
    EXPECT_TRUE(p == CPoint(5, 4));
    EXPECT_TRUE(CPoint(static_cast<LPARAM>(0xFFFE0003)) == CPoint(3, -2)); // packed as mouse messages do
    EXPECT_TRUE(CSize(1, 2) + CSize(3, 4) == CSize(4, 6));
    EXPECT_TRUE(CSize(1, 2) + CPoint(3, 4) == CPoint(4, 6));
    EXPECT_TRUE(CPoint() == CPoint(0, 0));
}

TEST(AfxTypes, RectanglesMeasureAndMove) {
    CRect r(10, 20, 110, 70);
    EXPECT_EQ(r.Width(), 100);
    EXPECT_EQ(r.Height(), 50);
    EXPECT_TRUE(r.Size() == CSize(100, 50));
    EXPECT_TRUE(r.CenterPoint() == CPoint(60, 45));
    EXPECT_TRUE(r.TopLeft() == CPoint(10, 20));
    EXPECT_TRUE(r.BottomRight() == CPoint(110, 70));
    r.TopLeft() = CPoint(0, 0);
    ExpectRect(r, 0, 0, 110, 70);
    EXPECT_TRUE(r.PtInRect(CPoint(0, 0)));
    EXPECT_FALSE(r.PtInRect(CPoint(110, 69)));
    r.OffsetRect(5, 6);
    ExpectRect(r, 5, 6, 115, 76);
    r.MoveToXY(1, 2);
    ExpectRect(r, 1, 2, 111, 72);
    r.InflateRect(1, 2);
    ExpectRect(r, 0, 0, 112, 74);
    r.DeflateRect(1, 2, 3, 4);
    ExpectRect(r, 1, 2, 109, 70);
    r.DeflateRect(CSize(1, 1));
    ExpectRect(r, 2, 3, 108, 69);
    ExpectRect(CRect(CPoint(1, 2), CSize(3, 4)), 1, 2, 4, 6);
    ExpectRect(CRect(CPoint(1, 2), CPoint(3, 4)), 1, 2, 3, 4);
    ExpectRect(CRect(1, 2, 3, 4).MulDiv(3, 2), 2, 3, 5, 6);
}

TEST(AfxTypes, RectanglesNormaliseMeetAndJoin) {
    CRect r(5, 6, 1, 2);
    r.NormalizeRect();
    ExpectRect(r, 1, 2, 5, 6);
    ExpectRect(r & CRect(3, 3, 9, 9), 3, 3, 5, 6);
    ExpectRect(r | CRect(3, 3, 9, 9), 1, 2, 9, 9);
    EXPECT_TRUE((r & CRect(50, 50, 60, 60)).IsRectNull());
    ExpectRect(r + CPoint(1, 1), 2, 3, 6, 7);
    ExpectRect(r - CSize(1, 1), 0, 1, 4, 5);
    const CRect margin(1, 1, 2, 2);
    ExpectRect(r + static_cast<LPCRECT>(margin), 0, 1, 7, 8);
    ExpectRect(r - static_cast<LPCRECT>(margin), 2, 3, 3, 4);
    EXPECT_TRUE(r == CRect(1, 2, 5, 6));
    EXPECT_TRUE(r != margin);
    EXPECT_TRUE(CRect().IsRectEmpty());
    EXPECT_TRUE(CRect(5, 5, 5, 9).IsRectEmpty());
    CRect cut;
    EXPECT_TRUE(cut.SubtractRect(r, CRect(1, 2, 5, 4)));
    ExpectRect(cut, 1, 4, 5, 6);
    EXPECT_FALSE(cut.IntersectRect(CRect(0, 0, 1, 1), CRect(2, 2, 3, 3)));
    EXPECT_TRUE(cut.UnionRect(CRect(0, 0, 1, 1), CRect(2, 2, 3, 3)));
    ExpectRect(cut, 0, 0, 3, 3);
}

// ---- COleVariant ---------------------------------------------------------------------------------------------------

TEST(AfxVariant, ConstructorsSetTypeAndValue) {
    EXPECT_EQ(COleVariant().vt, VT_EMPTY);
    COleVariant i2(static_cast<short>(-7));
    EXPECT_EQ(i2.vt, VT_I2);
    EXPECT_EQ(i2.iVal, -7);
    COleVariant yes(static_cast<short>(5), VT_BOOL);
    EXPECT_EQ(yes.vt, VT_BOOL);
    EXPECT_EQ(yes.boolVal, VARIANT_TRUE);
    EXPECT_EQ(COleVariant(static_cast<short>(0), VT_BOOL).boolVal, VARIANT_FALSE);
    COleVariant i4(70000L);
    EXPECT_EQ(i4.vt, VT_I4);
    EXPECT_EQ(i4.lVal, 70000);
    EXPECT_EQ(COleVariant(3L, VT_ERROR).vt, VT_ERROR);
    EXPECT_EQ(COleVariant(3L, VT_BOOL).boolVal, VARIANT_TRUE);
    EXPECT_EQ(COleVariant(1.5f).vt, VT_R4);
    EXPECT_EQ(COleVariant(1.5f).fltVal, 1.5f);
    EXPECT_EQ(COleVariant(2.5).vt, VT_R8);
    EXPECT_EQ(COleVariant(2.5).dblVal, 2.5);
    EXPECT_EQ(COleVariant(static_cast<BYTE>(9)).vt, VT_UI1);
    EXPECT_EQ(COleVariant(1LL).vt, VT_I8);
    COleVariant text(L"线型");
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_STREQ(text.bstrVal, L"线型");
    EXPECT_EQ(SysStringLen(text.bstrVal), 2u);
    CString s(L"s");
    EXPECT_STREQ(COleVariant(s).bstrVal, L"s");
    EXPECT_EQ(COleVariant(static_cast<LPCTSTR>(NULL)).vt, VT_BSTR);
    COleVariant narrow(L"abc", VT_BSTRT);
    EXPECT_EQ(SysStringByteLen(narrow.bstrVal), 3u);
    EXPECT_TRUE(Throws<CInvalidArgException>([] { COleVariant bad(static_cast<short>(1), VT_R4); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([] { COleVariant bad(1L, VT_I2); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([] { COleVariant bad(L"x", VT_I2); }));
}

TEST(AfxVariant, CopiesOwnTheirText) {
    COleVariant a(L"text");
    COleVariant b(a);
    EXPECT_NE(a.bstrVal, b.bstrVal);
    EXPECT_STREQ(b.bstrVal, L"text");
    a.Clear();
    EXPECT_EQ(a.vt, VT_EMPTY);
    EXPECT_STREQ(b.bstrVal, L"text");
    a = b;
    a = a;
    EXPECT_STREQ(a.bstrVal, L"text");
    a = static_cast<LPCTSTR>(a.bstrVal); // its own text
    EXPECT_STREQ(a.bstrVal, L"text");
    COleVariant moved(static_cast<COleVariant&&>(a));
    EXPECT_EQ(a.vt, VT_EMPTY);
    EXPECT_STREQ(moved.bstrVal, L"text");
}

TEST(AfxVariant, AssignmentTakesTheTypeOfTheValueButKeepsABool) {
    COleVariant v(L"text");
    v = 2.5;
    EXPECT_EQ(v.vt, VT_R8);
    v = 1.5f;
    EXPECT_EQ(v.vt, VT_R4);
    v = static_cast<short>(3);
    EXPECT_EQ(v.vt, VT_I2);
    v = 4L;
    EXPECT_EQ(v.vt, VT_I4);
    v = L"again";
    EXPECT_STREQ(v.bstrVal, L"again");
    v = CString(L"string");
    EXPECT_STREQ(v.bstrVal, L"string");
    COleVariant flag(static_cast<short>(0), VT_BOOL);
    flag = static_cast<short>(2);
    EXPECT_EQ(flag.vt, VT_BOOL);
    EXPECT_EQ(flag.boolVal, VARIANT_TRUE);
    flag = 0L;
    EXPECT_EQ(flag.vt, VT_BOOL);
    EXPECT_EQ(flag.boolVal, VARIANT_FALSE);
}

TEST(AfxVariant, EqualMeansSameTypeAndSameValue) {
    EXPECT_TRUE(COleVariant(1.5f) == COleVariant(1.5f));
    EXPECT_FALSE(COleVariant(1.5f) == COleVariant(1.5));
    EXPECT_FALSE(COleVariant(1L) == COleVariant(2L));
    EXPECT_TRUE(COleVariant(L"a") == COleVariant(L"a"));
    EXPECT_FALSE(COleVariant(L"a") == COleVariant(L"b"));
    EXPECT_TRUE(COleVariant(L"") == COleVariant(static_cast<LPCTSTR>(NULL)));
    EXPECT_TRUE(COleVariant() == COleVariant());
    VARIANT date = {};
    date.vt = VT_DATE;
    date.date = 36526.5;
    COleVariant d(date);
    EXPECT_EQ(d.vt, VT_DATE);
    EXPECT_TRUE(d == date);
    date.date = 1;
    EXPECT_FALSE(d == date);
    VARIANT money = {};
    money.vt = VT_CY;
    money.cyVal.int64 = 12345;
    EXPECT_TRUE(COleVariant(money) == money);
}

TEST(AfxVariant, ConvertsOrRaises) {
    COleVariant v(42L);
    v.ChangeType(VT_BSTR);
    EXPECT_STREQ(v.bstrVal, L"42");
    v.ChangeType(VT_R8);
    EXPECT_EQ(v.dblVal, 42.0);
    v.ChangeType(VT_I2);
    EXPECT_EQ(v.iVal, 42);
    v.ChangeType(VT_BOOL);
    EXPECT_EQ(v.boolVal, VARIANT_TRUE);
    COleVariant target;
    COleVariant source(L"17");
    target.ChangeType(VT_I4, source);
    EXPECT_EQ(target.lVal, 17);
    EXPECT_STREQ(source.bstrVal, L"17");
    target.ChangeType(VT_BSTR, source);
    EXPECT_STREQ(target.bstrVal, L"17");
    COleVariant word(L"no number");
    EXPECT_TRUE(Throws<COleException>([&] { word.ChangeType(VT_I4); }));
    EXPECT_STREQ(word.bstrVal, L"no number");
}

TEST(AfxVariant, AttachAndDetachHandTheValueOver) {
    VARIANT raw = {};
    raw.vt = VT_BSTR;
    raw.bstrVal = SysAllocString(L"raw");
    BSTR text = raw.bstrVal;
    COleVariant v(L"old");
    v.Attach(raw);
    EXPECT_EQ(raw.vt, VT_EMPTY);
    EXPECT_EQ(v.bstrVal, text);
    VARIANT out = v.Detach();
    EXPECT_EQ(v.vt, VT_EMPTY);
    EXPECT_EQ(out.bstrVal, text);
    SysFreeString(out.bstrVal);
}

} // namespace
