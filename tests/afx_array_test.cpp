// CArray and its ready-made forms. Layer 16: tests.
#include "support/AfxCaught.h"

#include <afxcoll.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

// Counts its living copies, so that a lost or a doubled destructor shows.
struct Counted {
    static int alive;
    int value;
    Counted() : value(-1) { ++alive; }
    explicit Counted(int v) : value(v) { ++alive; }
    Counted(const Counted& other) : value(other.value) { ++alive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --alive; }
};
int Counted::alive = 0;

typedef CArray<int, int> IntArray;

IntArray& Fill(IntArray& array, std::initializer_list<int> values) {
    array.RemoveAll();
    for (int value : values) {
        array.Add(value);
    }
    return array;
}

std::string Text(const IntArray& array) {
    std::string text;
    for (INT_PTR i = 0; i < array.GetSize(); ++i) {
        text += (i ? "," : "") + std::to_string(array[i]);
    }
    return text;
}

TEST(AfxArray, AnEmptyArrayHasNoDataAndNoIndex) {
    IntArray a;
    EXPECT_EQ(a.GetSize(), 0);
    EXPECT_EQ(a.GetCount(), 0);
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_EQ(a.GetUpperBound(), -1);
    EXPECT_EQ(a.GetData(), nullptr);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.GetAt(0); }));
}

TEST(AfxArray, EveryAccessOutsideTheIndicesRaisesTheInvalidArgumentException) {
    IntArray a;
    Fill(a, {10, 20, 30});
    const IntArray& c = a;
    for (INT_PTR bad : {INT_PTR(-1), INT_PTR(3), INT_PTR(1) << 40, INTPTR_MIN}) {
        EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.GetAt(bad); }));
        EXPECT_TRUE(Throws<CInvalidArgException>([&] { c.GetAt(bad); }));
        EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.ElementAt(bad); }));
        EXPECT_TRUE(Throws<CInvalidArgException>([&] { a[bad] = 1; }));
        EXPECT_TRUE(Throws<CInvalidArgException>([&] { (void)c[bad]; }));
        EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.SetAt(bad, 1); }));
    }
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.SetSize(-1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.SetAtGrow(-1, 1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.InsertAt(-1, 1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.InsertAt(0, 1, 0); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.InsertAt(0, 1, -1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.RemoveAt(-1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.RemoveAt(3); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.RemoveAt(1, 3); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.RemoveAt(1, -1); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.RemoveAt(1, INTPTR_MAX); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { a.Append(a); }));
    EXPECT_EQ(Text(a), "10,20,30");
}

TEST(AfxArray, AddGivesTheIndexAndKeepsEverythingWhileItGrows) {
    IntArray a;
    for (int i = 0; i < 100000; ++i) {
        ASSERT_EQ(a.Add(i * 3), i);
    }
    for (int i = 0; i < 100000; ++i) {
        ASSERT_EQ(a[i], i * 3);
    }
}

TEST(AfxArray, AddMovesItsElementsOnlyNowAndThen) {
    IntArray a;
    const int* data = NULL;
    int moves = 0;
    for (int i = 0; i < 1000000; ++i) {
        a.Add(i);
        if (a.GetData() != data) {
            data = a.GetData();
            ++moves;
        }
    }
    EXPECT_LT(moves, 60); // growing by half: 1.5 to the 34th is a million
}

TEST(AfxArray, AGivenGrowByIsTheLeastGrowth) {
    IntArray a;
    a.SetSize(0, 500);
    a.Add(1);
    const int* data = a.GetData();
    for (int i = 1; i < 500; ++i) {
        a.Add(i);
    }
    EXPECT_EQ(a.GetData(), data);
}

TEST(AfxArray, SetSizeMakesZeroElementsAndSizeZeroFreesTheMemory) {
    IntArray a;
    a.SetSize(3);
    EXPECT_EQ(Text(a), "0,0,0");
    a[2] = 7;
    a.SetSize(5);
    EXPECT_EQ(Text(a), "0,0,7,0,0");
    a.SetSize(2);
    a.SetSize(3);
    EXPECT_EQ(Text(a), "0,0,0");
    a.SetSize(0);
    EXPECT_EQ(a.GetData(), nullptr);
    Fill(a, {1});
    a.RemoveAll();
    EXPECT_EQ(a.GetData(), nullptr);
}

TEST(AfxArray, SetAtGrowFillsTheGapWithZeros) {
    IntArray a;
    a.SetAtGrow(3, 9);
    EXPECT_EQ(Text(a), "0,0,0,9");
    a.SetAtGrow(1, 5);
    EXPECT_EQ(Text(a), "0,5,0,9");
}

TEST(AfxArray, InsertsInsideAtTheEndAndBeyondIt) {
    IntArray a;
    Fill(a, {1, 2, 3});
    a.InsertAt(1, 9, 2);
    EXPECT_EQ(Text(a), "1,9,9,2,3");
    a.InsertAt(5, 4);
    EXPECT_EQ(Text(a), "1,9,9,2,3,4");
    a.InsertAt(8, 5);
    EXPECT_EQ(Text(a), "1,9,9,2,3,4,0,0,5");
    a.InsertAt(0, a[8]); // one of its own
    EXPECT_EQ(Text(a), "5,1,9,9,2,3,4,0,0,5");
    IntArray b;
    Fill(b, {7, 8});
    Fill(a, {1, 2, 3});
    a.InsertAt(1, &b);
    EXPECT_EQ(Text(a), "1,7,8,2,3");
    IntArray empty;
    a.InsertAt(1, &empty);
    EXPECT_EQ(Text(a), "1,7,8,2,3");
}

TEST(AfxArray, RemovesAppendsAndCopies) {
    IntArray a;
    Fill(a, {1, 2, 3, 4, 5});
    a.RemoveAt(1, 2);
    EXPECT_EQ(Text(a), "1,4,5");
    a.RemoveAt(2);
    EXPECT_EQ(Text(a), "1,4");
    a.RemoveAt(2, 0);
    IntArray b;
    Fill(b, {6, 7});
    EXPECT_EQ(a.Append(b), 2);
    EXPECT_EQ(Text(a), "1,4,6,7");
    b.Copy(a);
    EXPECT_EQ(Text(b), "1,4,6,7");
    b.Copy(b);
    EXPECT_EQ(Text(b), "1,4,6,7");
    IntArray empty;
    b.Copy(empty);
    EXPECT_EQ(b.GetSize(), 0);
}

TEST(AfxArray, FreeExtraFreesUnusedMemoryAndKeepsTheElements) {
    IntArray a;
    Fill(a, {1, 2, 3, 4, 5});
    a.FreeExtra();
    EXPECT_EQ(Text(a), "1,2,3,4,5");
    a.Add(6);
    EXPECT_EQ(Text(a), "1,2,3,4,5,6");
}

TEST(AfxArray, AnElementMayBeAddedFromTheArrayItself) {
    CStringArray a;
    a.Add(L"first text");
    for (int i = 0; i < 100; ++i) {
        a.Add(a[0]);
    }
    for (INT_PTR i = 0; i < a.GetSize(); ++i) {
        ASSERT_EQ(a[i], L"first text");
    }
    a.SetAtGrow(500, a[0]);
    EXPECT_EQ(a[500], L"first text");
    EXPECT_EQ(a[499], L"");
}

TEST(AfxArray, ConstructsAndDestroysEachElementOnce) {
    {
        CArray<Counted> a;
        for (int i = 0; i < 50; ++i) {
            a.Add(Counted(i));
        }
        a.InsertAt(10, Counted(99), 5);
        EXPECT_EQ(Counted::alive, 55);
        a.RemoveAt(0, 20);
        EXPECT_EQ(Counted::alive, 35);
        EXPECT_EQ(a[0].value, 15);
        a.SetSize(40);
        EXPECT_EQ(a[39].value, -1);
        CArray<Counted> b;
        b.Copy(a);
        b.Append(a);
        EXPECT_EQ(Counted::alive, 120);
        a.FreeExtra();
        a.SetSize(0);
        EXPECT_EQ(Counted::alive, 80);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(AfxArray, TakesElementsByReferenceThatIsNotConst) {
    int one = 1;
    int two = 2;
    CArray<int*, int*&> a;
    int* p = &one;
    a.Add(p);
    p = &two;
    a.Add(p);
    a.InsertAt(0, p);
    a.SetAt(0, p);
    a.SetAtGrow(4, p);
    EXPECT_EQ(a[0], &two);
    EXPECT_EQ(a[1], &one);
    EXPECT_EQ(a[3], nullptr);
    EXPECT_EQ(a.GetSize(), 5);
}

TEST(AfxArray, ACountBeyondAllMemoryIsAMemoryFailure) {
    IntArray a;
    Fill(a, {1});
    EXPECT_TRUE(Throws<CMemoryException>([&] { a.SetSize(INTPTR_MAX); }));
    EXPECT_EQ(Text(a), "1");
}

TEST(AfxArray, TheReadyMadeOnesAreKindsOfObject) {
    CUIntArray u;
    u.Add(7u);
    EXPECT_TRUE(u.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(u.IsSerializable());
    EXPECT_TRUE(CStringArray().IsSerializable());
    EXPECT_TRUE(CByteArray().IsSerializable());
    EXPECT_TRUE(CWordArray().IsSerializable());
    EXPECT_TRUE(CDWordArray().IsSerializable());
    EXPECT_TRUE(CObArray().IsSerializable());
    EXPECT_FALSE(CPtrArray().IsSerializable());
    std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("CStringArray"));
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CStringArray)));
}

} // namespace
