// The restore point of editing commands. The unit is not exported; this program compiles it in.

#include "ObjectMemory.h"

#include "Circle.h"
#include "Line.h"
#include "PLine.h"
#include "Text.h"
#include "support/AfxCaught.h"

#include <gtest/gtest.h>

namespace {

TEST(ObjectMemory, AnObjectComesBackAsOftenAsItIsAskedFor) {
    CLine line;
    line.SetEndPoint(CGePoint2d(3, 4));
    line.SetDrawState(CDrawable::Selected);
    CObjectMemory memory;
    memory.Store(&line);
    for (int i = 0; i < 3; ++i) {
        line.SetEndPoint(CGePoint2d(7, 8));
        line.SetDrawState(CDrawable::Dragging);
        memory.Restore(&line);
        EXPECT_TRUE(line.GetEndPoint() == CGePoint2d(3, 4));
        EXPECT_EQ(line.GetDrawState(), CDrawable::Selected);
    }
}

TEST(ObjectMemory, AListComesBackInItsOrderAlsoBeyondTheArchivesBuffer) {
    CDrawableArray lines;
    for (int i = 0; i < 300; ++i) {
        CDrawable* line = new CLine;
        static_cast<CLine*>(line)->SetStartPoint(CGePoint2d(i, 0));
        lines.Add(line);
    }
    CObjectMemory memory;
    memory.Store(lines);
    EXPECT_GT(memory.GetLength(), 3u * 4096u);
    for (INT_PTR i = 0; i < 300; ++i) {
        static_cast<CLine*>(lines[i])->SetStartPoint(CGePoint2d());
    }
    memory.Restore(lines);
    for (INT_PTR i = 0; i < 300; ++i) {
        EXPECT_EQ(static_cast<CLine*>(lines[i])->GetStartPoint().x, static_cast<double>(i));
        delete lines[i];
    }
}

TEST(ObjectMemory, AReaderGivesThemOneByOneToOtherObjectsToo) {
    CLine line;
    line.SetEndPoint(CGePoint2d(3, 4));
    CCircle circle(Gdiplus::PointF(5, 6), 7);
    CDrawableArray both;
    CDrawable* object = &line;
    both.Add(object);
    object = &circle;
    both.Add(object);
    CObjectMemory memory;
    memory.Store(both);
    CLine otherLine;
    CCircle otherCircle;
    CObjectMemoryReader reader(memory);
    reader.Read(&otherLine);
    reader.Read(&otherCircle);
    EXPECT_TRUE(otherLine.GetEndPoint() == CGePoint2d(3, 4));
    EXPECT_TRUE(otherCircle.Center() == CGePoint2d(5, 6));
    EXPECT_EQ(otherCircle.Radius(), 7.0);
    EXPECT_EQ(ArchiveCause([&] { reader.Read(&otherLine); }), CArchiveException::endOfFile);
}

TEST(ObjectMemory, AnEmptyOneRaisesAndChangesNothing) {
    CObjectMemory memory;
    CPLine line;
    line.AddPoint(CGePoint2d(1, 2));
    EXPECT_EQ(ArchiveCause([&] { memory.Restore(&line); }), CArchiveException::endOfFile);
    EXPECT_EQ(line.GetVertexCount(), 1);
    EXPECT_EQ(line.GetPointList()->GetSize(), 1);
    // A list without objects asks for nothing.
    EXPECT_EQ(ArchiveCause([&] { memory.Restore(CDrawableArray()); }), -1);
}

TEST(ObjectMemory, ReadingBackRunsTheObjectsRulesOfLoading) {
    CText text;
    text.SetTextHeight(50);
    text.SetTextWide(30);
    CObjectMemory memory;
    memory.Store(&text);
    memory.Restore(&text);
    EXPECT_EQ(text.GetTextWide(), 150.0f); // Narrower than its font: three times the height.
}

} // namespace
