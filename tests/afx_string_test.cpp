// CString and CStringA against their documented behaviour. Layer 16: tests.
#include "support/AfxCaught.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

std::wstring W(const CString& s) {
    return std::wstring(s.GetString(), static_cast<size_t>(s.GetLength()));
}

TEST(AfxString, AnEmptyTextOwnsNoMemoryAndEndsWithAZero) {
    CString a;
    CString b;
    EXPECT_EQ(a.GetString(), b.GetString());
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_EQ(a.GetLength(), 0);
    EXPECT_EQ(a[0], L'\0');
    CString c(L"");
    EXPECT_EQ(c.GetString(), a.GetString());
    CString d(L"x");
    d.Empty();
    EXPECT_EQ(d.GetString(), a.GetString());
    EXPECT_EQ(sizeof(CString), sizeof(void*));
}

TEST(AfxString, ConstructorsTakeWideNarrowPartAndRepeatedText) {
    EXPECT_EQ(W(CString(L"abc")), L"abc");
    EXPECT_EQ(W(CString("abc")), L"abc");
    EXPECT_EQ(W(CString(L"abcdef", 3)), L"abc");
    EXPECT_EQ(W(CString("abcdef", 2)), L"ab");
    EXPECT_EQ(W(CString(L'x', 4)), L"xxxx");
    EXPECT_EQ(W(CString(L'x')), L"x");
    EXPECT_EQ(W(CString(L'x', 0)), L"");
    EXPECT_EQ(W(CString(static_cast<const wchar_t*>(NULL))), L"");
    EXPECT_EQ(W(CString(static_cast<const char*>(NULL))), L"");
    EXPECT_TRUE(Throws<CInvalidArgException>([] { CString(L"abc", -1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([] { CString(static_cast<const wchar_t*>(NULL), 2); }));
    EXPECT_STREQ(CStringA(CString(L"abc")).GetString(), "abc");
    EXPECT_STREQ(CString(CStringA("abc")).GetString(), L"abc");
}

TEST(AfxString, KeepsZerosInsideTheText) {
    CString s(L"a\0b", 3);
    EXPECT_EQ(s.GetLength(), 3);
    CString t = s + L"c";
    EXPECT_EQ(W(t), std::wstring(L"a\0bc", 4));
    EXPECT_EQ(s[1], L'\0');
    EXPECT_EQ(t.Insert(0, L'\0'), 5);
    EXPECT_EQ(W(t), std::wstring(L"\0a\0bc", 5));
}

TEST(AfxString, CopiesShareTheirTextUntilOneChanges) {
    CString a(L"hello");
    CString b(a);
    CString c;
    c = b;
    EXPECT_EQ(a.GetString(), c.GetString());
    c.SetAt(0, L'j');
    EXPECT_EQ(W(c), L"jello");
    EXPECT_EQ(W(a), L"hello");
    b += L"!";
    EXPECT_EQ(W(b), L"hello!");
    EXPECT_EQ(W(a), L"hello");
    b = b;
    EXPECT_EQ(W(b), L"hello!");
    CString d(static_cast<CString&&>(b));
    EXPECT_EQ(W(d), L"hello!");
    EXPECT_TRUE(b.IsEmpty());
}

TEST(AfxString, CopiesMayBeMadeAndDroppedOnManyThreads) {
    CString shared(L"shared text");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&shared] {
            for (int i = 0; i < 20000; ++i) {
                CString mine(shared);
                CString empty;
                CString other(empty);
                if (i % 100 == 0) {
                    mine += L"x";
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(W(shared), L"shared text");
    // No reference is left over: the only owner changes the text in place.
    const wchar_t* before = shared.GetString();
    shared.SetAt(0, L'S');
    EXPECT_EQ(shared.GetString(), before);
}

TEST(AfxString, IndexErrorsRaiseTheInvalidArgumentException) {
    CString s(L"abc");
    EXPECT_EQ(s.GetAt(3), L'\0'); // the ending zero may be read
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.GetAt(4); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.GetAt(-1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { (void)s[4]; }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.SetAt(3, L'x'); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.SetAt(-1, L'x'); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.GetBuffer(-1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.Truncate(-1); }));
    EXPECT_EQ(W(s), L"abc");
}

TEST(AfxString, ComparesByCodeUnitAndOperatorsAgree) {
    CString a(L"abc");
    EXPECT_EQ(a.Compare(L"abc"), 0);
    EXPECT_LT(a.Compare(L"abd"), 0);
    EXPECT_GT(a.Compare(L"ABC"), 0);
    EXPECT_EQ(a.CompareNoCase(L"ABC"), 0);
    EXPECT_LT(a.CompareNoCase(L"ABD"), 0);
    EXPECT_EQ(a.Collate(L"abc"), 0);
    EXPECT_EQ(a.CollateNoCase(L"ABC"), 0);
    EXPECT_TRUE(a == L"abc" && L"abc" == a && a == CString(L"abc") && a == "abc");
    EXPECT_TRUE(a != L"abd" && a < L"abd" && L"abd" > a && a <= L"abc" && a >= L"abc" && a < CString(L"b"));
    EXPECT_FALSE(a == L'a');
    EXPECT_TRUE(CString(L"a") == L'a');
    EXPECT_TRUE(CString(L"ab") != L'a');
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.Compare(NULL); }));
}

TEST(AfxString, FindsTextAndCharactersFromAPlaceOn) {
    CString s(L"abcabc");
    EXPECT_EQ(s.Find(L"bc"), 1);
    EXPECT_EQ(s.Find(L"bc", 2), 4);
    EXPECT_EQ(s.Find(L"bc", 5), -1);
    EXPECT_EQ(s.Find(L'c'), 2);
    EXPECT_EQ(s.Find(L'c', 3), 5);
    EXPECT_EQ(s.Find(L'x'), -1);
    EXPECT_EQ(s.Find(L"", 3), 3);
    EXPECT_EQ(s.Find(L"", 6), 6);
    EXPECT_EQ(s.Find(L"a", 7), -1);
    EXPECT_EQ(s.Find(L"a", -1), -1);
    EXPECT_EQ(s.Find(L'a', -1), -1);
    EXPECT_EQ(s.Find(L'a', 6), -1);
    EXPECT_EQ(s.ReverseFind(L'a'), 3);
    EXPECT_EQ(s.ReverseFind(L'x'), -1);
    EXPECT_EQ(s.FindOneOf(L"xcb"), 1);
    EXPECT_EQ(s.FindOneOf(L"xyz"), -1);
    EXPECT_EQ(CString().Find(L'a'), -1);
}

TEST(AfxString, PartsAreClampedToTheText) {
    CString s(L"abcdef");
    EXPECT_EQ(W(s.Left(2)), L"ab");
    EXPECT_EQ(W(s.Left(-1)), L"");
    EXPECT_EQ(W(s.Left(99)), L"abcdef");
    EXPECT_EQ(s.Left(6).GetString(), s.GetString()); // the whole is shared, not copied
    EXPECT_EQ(W(s.Right(2)), L"ef");
    EXPECT_EQ(W(s.Right(0)), L"");
    EXPECT_EQ(W(s.Right(99)), L"abcdef");
    EXPECT_EQ(W(s.Mid(2)), L"cdef");
    EXPECT_EQ(W(s.Mid(2, 2)), L"cd");
    EXPECT_EQ(W(s.Mid(-3, 2)), L"ab");
    EXPECT_EQ(W(s.Mid(4, 99)), L"ef");
    EXPECT_EQ(W(s.Mid(6, 1)), L"");
    EXPECT_EQ(W(s.Mid(99)), L"");
    EXPECT_EQ(W(s.Mid(1, -1)), L"");
    EXPECT_EQ(W(s.Mid(3, 2147483647)), L"def");
    EXPECT_EQ(W(s.SpanIncluding(L"bca")), L"abc");
    EXPECT_EQ(W(s.SpanExcluding(L"dx")), L"abc");
    EXPECT_EQ(W(s.SpanIncluding(L"x")), L"");
    EXPECT_EQ(W(s.SpanExcluding(L"x")), L"abcdef");
}

TEST(AfxString, TokenizeSkipsRunsOfSeparatorsAndEndsWithMinusOne) {
    CString s(L"%First Second#Third");
    int pos = 0;
    EXPECT_EQ(W(s.Tokenize(L"% #", pos)), L"First");
    EXPECT_EQ(W(s.Tokenize(L"% #", pos)), L"Second");
    EXPECT_EQ(W(s.Tokenize(L"% #", pos)), L"Third");
    EXPECT_EQ(W(s.Tokenize(L"% #", pos)), L"");
    EXPECT_EQ(pos, -1);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.Tokenize(L" ", pos); }));
    pos = 0;
    EXPECT_EQ(W(CString(L",,,").Tokenize(L",", pos)), L"");
    EXPECT_EQ(pos, -1);
    pos = 0;
    EXPECT_EQ(W(CString(L"a,,b").Tokenize(L",", pos)), L"a");
    EXPECT_EQ(pos, 2);
    pos = 0;
    EXPECT_EQ(W(CString().Tokenize(L",", pos)), L"");
    EXPECT_EQ(pos, -1);
}

TEST(AfxString, AppendsAlsoPartsOfItself) {
    CString s(L"abc");
    s += s;
    EXPECT_EQ(W(s), L"abcabc");
    s.Append(s.GetString() + 4);
    EXPECT_EQ(W(s), L"abcabcbc");
    s.Append(s.GetString() + 1, 2);
    EXPECT_EQ(W(s), L"abcabcbcbc");
    s.SetString(s.GetString() + 3, 3);
    EXPECT_EQ(W(s), L"abc");
    s = s.GetString() + 1;
    EXPECT_EQ(W(s), L"bc");
    s.Insert(1, s.GetString());
    EXPECT_EQ(W(s), L"bbcc");
    s.AppendChar(L'!');
    s += L'?';
    s += "x";
    EXPECT_EQ(W(s), L"bbcc!?x");
    CString longText;
    for (int i = 0; i < 10000; ++i) {
        longText += L'x';
    }
    EXPECT_EQ(W(longText), std::wstring(10000, L'x'));
}

TEST(AfxString, ConcatenatesEveryPairOfKinds) {
    CString a(L"a");
    EXPECT_EQ(W(a + CString(L"b")), L"ab");
    EXPECT_EQ(W(a + L"b"), L"ab");
    EXPECT_EQ(W(L"b" + a), L"ba");
    EXPECT_EQ(W(a + L'b'), L"ab");
    EXPECT_EQ(W(L'b' + a), L"ba");
    EXPECT_EQ(W(a + "b"), L"ab");
    EXPECT_EQ(W("b" + a), L"ba");
    EXPECT_EQ(W(CString() + CString()), L"");
    EXPECT_EQ(W(a + static_cast<const wchar_t*>(NULL)), L"a");
}

TEST(AfxString, InsertsAndDeletesWithClampedPlaces) {
    CString s(L"abc");
    EXPECT_EQ(s.Insert(1, L'x'), 4);
    EXPECT_EQ(W(s), L"axbc");
    EXPECT_EQ(s.Insert(99, L"YZ"), 6);
    EXPECT_EQ(W(s), L"axbcYZ");
    EXPECT_EQ(s.Insert(-5, L"0"), 7);
    EXPECT_EQ(W(s), L"0axbcYZ");
    EXPECT_EQ(s.Insert(2, L""), 7);
    EXPECT_EQ(s.Delete(0), 6);
    EXPECT_EQ(s.Delete(4, 99), 4);
    EXPECT_EQ(W(s), L"axbc");
    EXPECT_EQ(s.Delete(4), 4);
    EXPECT_EQ(s.Delete(1, 0), 4);
    EXPECT_EQ(s.Delete(1, -1), 4);
    EXPECT_EQ(s.Delete(-1, 1), 3);
    EXPECT_EQ(W(s), L"xbc");
}

TEST(AfxString, ReplacesAndRemovesAndCountsWhatItDid) {
    CString s(L"banana");
    CString keep(s);
    EXPECT_EQ(s.Replace(L'a', L'o'), 3);
    EXPECT_EQ(W(s), L"bonono");
    EXPECT_EQ(W(keep), L"banana");
    EXPECT_EQ(s.Replace(L'x', L'y'), 0);
    EXPECT_EQ(s.Replace(L"on", L"***"), 2);
    EXPECT_EQ(W(s), L"b******o");
    EXPECT_EQ(s.Replace(L"**", L""), 3);
    EXPECT_EQ(W(s), L"bo");
    EXPECT_EQ(s.Replace(L"", L"x"), 0);
    EXPECT_EQ(s.Replace(L"b", s), 1);
    EXPECT_EQ(W(s), L"boo");
    CString t(L"aaa");
    EXPECT_EQ(t.Replace(L"aa", L"b"), 1); // no overlap
    EXPECT_EQ(W(t), L"ba");
    EXPECT_EQ(keep.Remove(L'a'), 3);
    EXPECT_EQ(W(keep), L"bnn");
    EXPECT_EQ(keep.Remove(L'x'), 0);
    CString shared(L"xaxb");
    CString other(shared);
    EXPECT_EQ(shared.Remove(L'x'), 2);
    EXPECT_EQ(W(shared), L"ab");
    EXPECT_EQ(W(other), L"xaxb");
}

TEST(AfxString, ChangesCaseAndOrderWithoutTouchingCopies) {
    CString s(L"aBc1");
    CString keep(s);
    EXPECT_EQ(W(CString(s).MakeUpper()), L"ABC1");
    EXPECT_EQ(W(s.MakeLower()), L"abc1");
    EXPECT_EQ(W(s.MakeReverse()), L"1cba");
    EXPECT_EQ(W(keep), L"aBc1");
    EXPECT_EQ(W(CString().MakeUpper().MakeReverse()), L"");
}

TEST(AfxString, TrimsSpacesCharactersAndSets) {
    EXPECT_EQ(W(CString(L" \t a b\r\n ").Trim()), L"a b");
    EXPECT_EQ(W(CString(L"  ab ").TrimLeft()), L"ab ");
    EXPECT_EQ(W(CString(L"  ab ").TrimRight()), L"  ab");
    EXPECT_EQ(W(CString(L"xxabxx").Trim(L'x')), L"ab");
    EXPECT_EQ(W(CString(L"xyabyx").Trim(L"xy")), L"ab");
    EXPECT_EQ(W(CString(L"xyabyx").TrimLeft(L"xy")), L"abyx");
    EXPECT_EQ(W(CString(L"xyabyx").TrimRight(L"xy")), L"xyab");
    EXPECT_EQ(W(CString(L"   ").Trim()), L"");
    EXPECT_EQ(W(CString(L"aaa").Trim(L'a')), L"");
    EXPECT_EQ(W(CString(L"ab").Trim(L"")), L"ab");
    CString s(L" x ");
    CString keep(s);
    s.Trim();
    EXPECT_EQ(W(keep), L" x ");
    s = L"abcdef";
    s.Truncate(2);
    EXPECT_EQ(W(s), L"ab");
    s.Truncate(5);
    EXPECT_EQ(W(s), L"ab");
}

TEST(AfxString, FormatsWithWideTextArguments) {
    CString s;
    s.Format(L"%s=%d (%.2f) %x %c", L"key", -5, 1.5, 255, L'z');
    EXPECT_EQ(W(s), L"key=-5 (1.50) ff z");
    s.Format(L"%S", "narrow");
    EXPECT_EQ(W(s), L"narrow");
    s.Format(L"%s/%s", s.GetString(), s.GetString()); // its own text as an argument
    EXPECT_EQ(W(s), L"narrow/narrow");
    s.AppendFormat(L"%I64d", 1234567890123LL);
    EXPECT_EQ(W(s), L"narrow/narrow1234567890123");
    s.Format(L"");
    EXPECT_TRUE(s.IsEmpty());
    s.Format(L"%5000d", 1);
    EXPECT_EQ(s.GetLength(), 5000);
    EXPECT_EQ(s[4999], L'1');
    CStringA a;
    a.Format("%s-%d", "x", 3);
    EXPECT_STREQ(a.GetString(), "x-3");
}

TEST(AfxString, LendsItsBuffer) {
    CString s(L"abc");
    CString keep(s);
    wchar_t* p = s.GetBuffer(10);
    EXPECT_EQ(std::wstring(p), L"abc");
    wcscpy(p, L"0123456789");
    s.ReleaseBuffer();
    EXPECT_EQ(W(s), L"0123456789");
    EXPECT_EQ(W(keep), L"abc");
    p = s.GetBuffer();
    p[3] = 0;
    s.ReleaseBuffer();
    EXPECT_EQ(W(s), L"012");
    s.GetBuffer(20);
    s.ReleaseBuffer(2);
    EXPECT_EQ(W(s), L"01");
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.ReleaseBuffer(1000); }));
    p = s.GetBufferSetLength(4);
    p[2] = p[3] = L'x';
    EXPECT_EQ(W(s), L"01xx");
    EXPECT_EQ(p[4], 0);
    // Even when the user overwrites the whole buffer, ReleaseBuffer does not read beyond its end.
    p = s.GetBuffer(4);
    for (int i = 0; i < s.GetAllocLength(); ++i) {
        p[i] = L'y';
    }
    s.ReleaseBuffer();
    EXPECT_EQ(s.GetLength(), s.GetAllocLength());
    CString t;
    t.GetBuffer(0);
    t.ReleaseBuffer();
    EXPECT_TRUE(t.IsEmpty());
    s.Preallocate(1000);
    EXPECT_GE(s.GetAllocLength(), 1000);
    s.FreeExtra();
    EXPECT_LT(s.GetAllocLength(), 100);
}

TEST(AfxString, LoadsResourcesOfTheProgram) {
    CString s;
    EXPECT_TRUE(s.LoadString(102));
    EXPECT_EQ(W(s), L"plain");
    EXPECT_TRUE(s.LoadString(GetModuleHandleW(NULL), 101));
    EXPECT_EQ(W(s), L"图层 %d");
    s.Format(static_cast<UINT>(101), 7);
    EXPECT_EQ(W(s), L"图层 7");
    s.AppendFormat(static_cast<UINT>(101), 8);
    EXPECT_EQ(W(s), L"图层 7图层 8");
    EXPECT_EQ(W(CString(MAKEINTRESOURCEW(102))), L"plain");
}

TEST(AfxString, AMissingResourceLeavesTheTextAlone) {
    CString s(L"kept");
    EXPECT_FALSE(s.LoadString(54321));
    EXPECT_FALSE(s.LoadString(GetModuleHandleW(NULL), 54321));
    EXPECT_EQ(W(s), L"kept");
    EXPECT_EQ(W(CString(MAKEINTRESOURCEW(54321))), L"");
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { s.Format(static_cast<UINT>(54321), 1); }));
}

TEST(AfxString, HandsItsTextToOle) {
    const CString s(L"图\0x", 3);
    BSTR b = s.AllocSysString();
    EXPECT_EQ(SysStringLen(b), 3u);
    EXPECT_EQ(std::wstring(b, 3), std::wstring(L"图\0x", 3));
    SysFreeString(b);
    b = CString().AllocSysString();
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(SysStringLen(b), 0u);
    SysFreeString(b);
}

TEST(AfxString, ATextBeyondTheLimitOfAnIntIsAMemoryFailure) {
    CString s(L"abc");
    EXPECT_TRUE(Throws<CMemoryException>([&] { s.GetBuffer(2147483647); }));
    EXPECT_EQ(W(s), L"abc");
}

} // namespace
