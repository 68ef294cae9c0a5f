// CObjectStream: some objects of a drawing as a stream, and back.

#include "ObjectStream.h"

#include "Circle.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorGraphic.h"

#include <KXBaseOpr.h>
#include <gtest/gtest.h>

namespace {

struct Drawing {
    CLine* Line(double x1, double y1, double x2, double y2) {
        auto* line = new CLine;
        line->SetStartPoint(CGePoint2d(x1, y1));
        line->SetEndPoint(CGePoint2d(x2, y2));
        graphic.GetDocument()->AddDrawAobject(line);
        return line;
    }
    CGraphicDocument* Document() { return graphic.GetDocument(); }

    CVectorGraphic graphic;
};

struct ListOf : CDrawableArray {
    ListOf(std::initializer_list<CDrawable*> objects) {
        for (CDrawable* object : objects) {
            Add(object);
        }
    }
};

// The caller owns what Load gives.
struct Loaded : CDrawableArray {
    ~Loaded() {
        for (INT_PTR i = 0; i < GetSize(); ++i) {
            KX_REMOVE_MEMORY(GetAt(i));
            delete GetAt(i);
        }
    }
};

TEST(ObjectStream, CarriesTheNamedObjectsInDrawingOrder) {
    Drawing drawing;
    CLine* first = drawing.Line(1, 2, 3, 4);
    drawing.Line(5, 6, 7, 8);
    CLine* third = drawing.Line(9, 10, 11, 12);
    CByteArray bytes;
    CLine elsewhere;
    ASSERT_TRUE(CObjectStream::Store(drawing.Document(), ListOf({third, &elsewhere, first}), bytes));
    Loaded objects;
    ASSERT_TRUE(CObjectStream::Load(bytes.GetData(), static_cast<size_t>(bytes.GetSize()), objects));
    ASSERT_EQ(2, objects.GetSize());
    EXPECT_EQ(1.0, static_cast<CLine*>(objects[0])->GetStartPoint().x);
    EXPECT_EQ(12.0, static_cast<CLine*>(objects[1])->GetEndPoint().y);
    EXPECT_EQ(3, drawing.Document()->GetDrawableObjs()->GetSize());
}

TEST(ObjectStream, SelectedObjectsArriveUnselectedAndStaySelectedThemselves) {
    Drawing drawing;
    CLine* line = drawing.Line(1, 2, 3, 4);
    drawing.Document()->AddSelected(line);
    CByteArray bytes;
    ASSERT_TRUE(CObjectStream::Store(drawing.Document(), *drawing.Document()->GetSelectedDrawableObjs(), bytes));
    EXPECT_EQ(CDrawable::Selected, line->GetDrawState());
    Loaded objects;
    ASSERT_TRUE(CObjectStream::Load(bytes.GetData(), static_cast<size_t>(bytes.GetSize()), objects));
    EXPECT_EQ(CDrawable::Normal, objects[0]->GetDrawState());
}

TEST(ObjectStream, IsADrawingOfItsOwn) {
    Drawing drawing;
    drawing.Document()->SetBKColor(RGB(1, 2, 3));
    CLine* line = drawing.Line(1, 2, 3, 4);
    CByteArray bytes;
    ASSERT_TRUE(CObjectStream::Store(drawing.Document(), ListOf({line}), bytes));
    Drawing other;
    EXPECT_EQ(1, other.Document()->OpenDocument(bytes.GetData(), static_cast<unsigned int>(bytes.GetSize())));
    EXPECT_EQ(1, other.Document()->GetDrawableObjs()->GetSize());
    EXPECT_EQ(RGB(1, 2, 3), other.Document()->GetBKColor());
}

TEST(ObjectStream, NothingNamedIsNothingStored) {
    Drawing drawing;
    drawing.Line(1, 2, 3, 4);
    CByteArray bytes;
    bytes.SetSize(3);
    EXPECT_FALSE(CObjectStream::Store(drawing.Document(), CDrawableArray(), bytes));
    EXPECT_EQ(0, bytes.GetSize());
}

TEST(ObjectStream, APartOfAStreamGivesNothingAndFreesWhatItHeld) {
    Drawing drawing;
    auto* text = new CTextParm;
    text->SetText(L"12.5");
    drawing.Document()->AddDrawAobject(text);
    CLine* line = drawing.Line(1, 2, 3, 4);
    CByteArray bytes;
    ASSERT_TRUE(CObjectStream::Store(drawing.Document(), ListOf({text, line}), bytes));
    const int before = CKXMemoryManager::Instance()->GetCount();
    CDrawableArray objects;
    for (size_t length = 0; length < static_cast<size_t>(bytes.GetSize()); ++length) {
        EXPECT_FALSE(CObjectStream::Load(bytes.GetData(), length, objects)) << length;
    }
    EXPECT_FALSE(CObjectStream::Load(nullptr, 10, objects));
    bytes[0] = 2;
    EXPECT_FALSE(CObjectStream::Load(bytes.GetData(), static_cast<size_t>(bytes.GetSize()), objects));
    EXPECT_EQ(0, objects.GetSize());
    EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
}

// The blocks of a clipboard are longer than what was put into them.
TEST(ObjectStream, WhatFollowsTheLastObjectIsNotLookedAt) {
    Drawing drawing;
    CLine* line = drawing.Line(1, 2, 3, 4);
    CByteArray bytes;
    ASSERT_TRUE(CObjectStream::Store(drawing.Document(), ListOf({line}), bytes));
    bytes.SetSize(bytes.GetSize() + 100);
    Loaded objects;
    EXPECT_TRUE(CObjectStream::Load(bytes.GetData(), static_cast<size_t>(bytes.GetSize()), objects));
    EXPECT_EQ(1, objects.GetSize());
}

} // namespace
