// The object lists of a document: order, doubles, ownership, extent, colours.

#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/PrivateFields.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

CLine* NewLine(double x1, double y1, double x2, double y2) {
    auto* line = new CLine;
    KX_ADD_MEMORY(line);
    line->SetStartPoint(CGePoint2d(x1, y1));
    line->SetEndPoint(CGePoint2d(x2, y2));
    return line;
}

CLine* NewLine() {
    return NewLine(0, 0, 1, 1);
}

void Free(CDrawable* object) {
    KX_REMOVE_MEMORY(object);
    delete object;
}

int Registered() {
    return CKXMemoryManager::Instance()->GetCount();
}

// Has a fixed extent, or none.
class CExtent : public CDrawable {
public:
    CExtent(double x1, double y1, double x2, double y2, int answer = 1)
        : m_low(x1, y1), m_high(x2, y2), m_answer(answer) {}
    CExtent() { SetIsShow(0); }
    int GetRect(CVectorViewCoordTran*, CGePoint2d& min, CGePoint2d& max) override {
        if (m_IsShow == 0) {
            return 0;
        }
        min = m_low;
        max = m_high;
        return m_answer;
    }

private:
    CGePoint2d m_low;
    CGePoint2d m_high;
    int m_answer = 0;
};

// Into the document's third list, which the library neither fills nor gives to hosts.
void AddSpare(CGraphicDocument& document) {
    CDrawable* object = NewLine();
    PeekAt(document, SpareObjects()).Add(object);
}

} // namespace

// ---- Adding and taking out -----------------------------------------------------------------------------------------

TEST(Document, AnObjectIsInTheDrawingOnce) {
    LoneDocument lone;
    CLine* line = NewLine();
    lone.document.AddDrawAobject(line);
    lone.document.AddDrawAobject(line);
    lone.document.AddDrawAobject(nullptr);
    EXPECT_EQ(1, lone.Objects().GetSize());
}

TEST(Document, TheFrontOfTheListIsTheBackOfThePicture) {
    LoneDocument lone;
    CLine* first = NewLine();
    CLine* second = NewLine();
    CLine* bottom = NewLine();
    lone.document.AddDrawAobject(first);
    lone.document.AddDrawAobject(second);
    lone.document.AddDrawAobjectFront(bottom);
    lone.document.AddDrawAobjectFront(nullptr);
    ASSERT_EQ(3, lone.Objects().GetSize());
    EXPECT_EQ(bottom, lone.Objects()[0]);
    EXPECT_EQ(second, lone.Objects()[2]);
    lone.document.AddDrawAobjectFront(second); // There already: it doesn't move.
    EXPECT_EQ(second, lone.Objects()[2]);
    lone.document.AddDrawAobject(bottom);
    EXPECT_EQ(bottom, lone.Objects()[0]);
}

TEST(Document, TheNetTakesTheSamePointerTwiceAndOnlyDeleteNetEmptiesIt) {
    LoneDocument lone;
    CLine* net = NewLine();
    lone.document.AddNetobject(net);
    lone.document.AddNetobject(net);
    lone.document.AddNetobject(nullptr);
    EXPECT_EQ(2, lone.document.GetNetDrawableObjs()->GetSize());
    lone.document.Reset();
    EXPECT_EQ(2, lone.document.GetNetDrawableObjs()->GetSize());
    lone.document.GetNetDrawableObjs()->RemoveAt(1);
    const int before = Registered();
    lone.document.DeleteNet();
    EXPECT_EQ(before - 1, Registered());
    EXPECT_EQ(0, lone.document.GetNetDrawableObjs()->GetSize());
}

TEST(Document, DeleteObjectOnlyUnlinks) {
    LoneDocument lone;
    CLine* line = NewLine();
    lone.document.AddDrawAobject(line);
    lone.document.AddSelected(line);
    lone.document.AddCurrentObject(line);
    const int before = Registered();
    lone.document.DeleteObject(line);
    EXPECT_EQ(0, lone.Objects().GetSize());
    EXPECT_EQ(0, lone.document.GetSelectedDrawableObjs()->GetSize());
    EXPECT_EQ(nullptr, lone.document.GetCurrentObject());
    EXPECT_EQ(before, Registered()) << "alive, and the caller's now";
    EXPECT_EQ(1.0, line->GetEndPoint().x);
    Free(line);
}

TEST(Document, DeleteObjectClearsTheCurrentSlotAlsoOfAnObjectInNoList) {
    LoneDocument lone;
    CLine line;
    lone.document.AddCurrentObject(&line);
    CLine other;
    lone.document.DeleteObject(&other);
    EXPECT_EQ(&line, lone.document.GetCurrentObject());
    lone.document.DeleteObject(&line);
    EXPECT_EQ(nullptr, lone.document.GetCurrentObject());
}

TEST(Document, ErasingTheSelectionKeepsTheObjectsAliveAndSelected) {
    LoneDocument lone;
    CLine* a = NewLine();
    CLine* b = NewLine();
    lone.document.AddDrawAobject(a);
    lone.document.AddDrawAobject(b);
    lone.document.AddSelected(b);
    const int before = Registered();
    lone.document.DeleteAllSelectedObject();
    EXPECT_EQ(before, Registered());
    ASSERT_EQ(1, lone.Objects().GetSize());
    EXPECT_EQ(a, lone.Objects()[0]);
    EXPECT_EQ(CDrawable::Selected, b->GetDrawState());
    EXPECT_EQ(0, lone.document.GetSelectedDrawableObjs()->GetSize());
    Free(b);
}

TEST(Document, ErasingTheSelectionTakesOutAllOfItAlsoWhatIsCurrent) {
    for (int current = 0; current < 3; ++current) {
        SCOPED_TRACE(current);
        LoneDocument lone;
        CLine* lines[] = {NewLine(), NewLine(), NewLine()};
        for (CLine* line : lines) {
            lone.document.AddDrawAobject(line);
        }
        lone.document.AddSelected(lines[2]);
        lone.document.AddSelected(lines[0]);
        lone.document.AddCurrentObject(lines[current]);
        const int before = Registered();
        lone.document.DeleteAllSelectedObject();
        EXPECT_EQ(before, Registered());
        ASSERT_EQ(1, lone.Objects().GetSize());
        EXPECT_EQ(lines[1], lone.Objects()[0]);
        EXPECT_EQ(0, lone.document.GetSelectedDrawableObjs()->GetSize());
        EXPECT_EQ(current == 1 ? lines[1] : nullptr, lone.document.GetCurrentObject()) << "only the middle one is left";
        EXPECT_EQ(CDrawable::Selected, lines[0]->GetDrawState());
        EXPECT_EQ(CDrawable::Normal, lines[1]->GetDrawState());
        EXPECT_EQ(CDrawable::Selected, lines[2]->GetDrawState());
        lone.document.removeCurrentObject();
        Free(lines[0]);
        Free(lines[2]);
    }
}

TEST(Document, MoveToTopTakesOnlyObjectsOfTheDrawing) {
    LoneDocument lone;
    CLine* a = NewLine();
    CLine* b = NewLine();
    lone.document.AddDrawAobject(a);
    lone.document.AddDrawAobject(b);
    lone.document.MoveToTop(a);
    EXPECT_EQ(b, lone.Objects()[0]);
    EXPECT_EQ(a, lone.Objects()[1]);
    CLine stranger;
    lone.document.MoveToTop(&stranger);
    EXPECT_EQ(2, lone.Objects().GetSize());
}

TEST(Document, TheOlderAddLineIgnoresItsFirstSixArguments) {
    LoneDocument lone;
    CLine* line = lone.document.AddLine(1, 2, 3.0f, 4.0f, 5, 6, 0.5f, 1.5f, 2.5f, 3.5f);
    ASSERT_EQ(1, lone.Objects().GetSize());
    EXPECT_EQ(line, lone.Objects()[0]);
    EXPECT_TRUE(CKXMemoryManager::Instance()->IsKnown(line));
    EXPECT_EQ(0.5, line->GetStartPoint().x);
    EXPECT_EQ(3.5, line->GetEndPoint().y);
    EXPECT_EQ(-1, line->GetPenColorIndex());
    EXPECT_EQ(-1.0f, line->GetLineWide());
    EXPECT_EQ(-1, line->GetLineType());
    EXPECT_EQ(0, line->GetLayer());
}

TEST(Document, ResetFreesTheObjectsAndLeavesTheRest) {
    LoneDocument lone;
    const int before = Registered();
    lone.document.AddDrawAobject(NewLine());
    lone.document.AddSelected(lone.Objects()[0]);
    CLine current;
    lone.document.AddCurrentObject(&current);
    lone.document.SetBKColorIndex(3);
    lone.document.GetLayerManager()->AddLayer("kept");
    lone.tran.SetScale(4.0f);
    lone.document.Reset();
    EXPECT_EQ(before + 1, Registered()) << "the new layer alone";
    EXPECT_EQ(0, lone.document.GetSelectedDrawableObjs()->GetSize());
    EXPECT_EQ(&current, lone.document.GetCurrentObject());
    EXPECT_EQ(3, lone.document.GetBKColorIndex());
    EXPECT_EQ(2, lone.document.GetLayerManager()->GetLayerCount());
    EXPECT_EQ(4.0f, lone.tran.GetScale());
}

TEST(Document, TheDestructorFreesObjectsNetAndLayers) {
    const int before = Registered();
    {
        LoneDocument lone;
        lone.document.AddDrawAobject(NewLine());
        lone.document.AddNetobject(NewLine());
    }
    EXPECT_EQ(before, Registered());
}

TEST(Document, TheThirdListIsFreedWithTheDrawing) {
    const int outside = Registered();
    {
        LoneDocument lone;
        const int before = Registered();
        AddSpare(lone.document);
        AddSpare(lone.document);
        ASSERT_EQ(before + 2, Registered());
        lone.document.Reset();
        EXPECT_EQ(before, Registered());
        EXPECT_EQ(0, PeekAt(lone.document, SpareObjects()).GetSize());
        AddSpare(lone.document);
    }
    EXPECT_EQ(outside, Registered()) << "the destructor frees what came later";
}

// ---- Selection -----------------------------------------------------------------------------------------------------

TEST(Document, SelectionListAndStateChangeTogether) {
    LoneDocument lone;
    CLine* line = NewLine();
    lone.document.AddDrawAobject(line);
    EXPECT_EQ(0, lone.document.IsSelected(line));
    lone.document.AddSelected(line);
    lone.document.AddSelected(line);
    EXPECT_EQ(1, lone.document.GetSelectedDrawableObjs()->GetSize());
    EXPECT_EQ(CDrawable::Selected, line->GetDrawState());
    EXPECT_EQ(1, lone.document.IsSelected(line));
    lone.document.RemoveSelected(line);
    EXPECT_EQ(CDrawable::Normal, line->GetDrawState());
    EXPECT_EQ(0, lone.document.IsSelected(line));
}

TEST(Document, IsSelectedAsksTheListAndNotTheState) {
    LoneDocument lone;
    CLine line;
    line.SetDrawState(CDrawable::Selected);
    EXPECT_EQ(0, lone.document.IsSelected(&line));
}

TEST(Document, DeselectingAnObjectThatIsNotSelectedLeavesItsState) {
    LoneDocument lone;
    CLine line;
    line.SetDrawState(CDrawable::Dragging);
    lone.document.RemoveSelected(&line);
    EXPECT_EQ(CDrawable::Dragging, line.GetDrawState());
}

TEST(Document, AddingASelectedObjectAgainDoesNotTouchItsState) {
    LoneDocument lone;
    CLine* line = NewLine();
    lone.document.AddDrawAobject(line);
    lone.document.AddSelected(line);
    line->SetDrawState(CDrawable::Dragging);
    lone.document.AddSelected(line);
    EXPECT_EQ(CDrawable::Dragging, line->GetDrawState());
    lone.document.RemoveAllSelected();
    EXPECT_EQ(CDrawable::Normal, line->GetDrawState());
    EXPECT_EQ(0, lone.document.GetSelectedDrawableObjs()->GetSize());
}

// ---- Extent --------------------------------------------------------------------------------------------------------

TEST(Document, AnEmptyDrawingHasNoExtentAlsoWithANet) {
    LoneDocument lone;
    lone.document.AddNetobject(NewLine());
    CGePoint2d min(1, 2);
    CGePoint2d max(3, 4);
    EXPECT_EQ(0, lone.document.GetRect(min, max));
    EXPECT_TRUE(min == CGePoint2d(1, 2));
    EXPECT_TRUE(max == CGePoint2d(3, 4));
}

TEST(Document, TheFirstObjectSeedsBothCorners) {
    LoneDocument lone;
    lone.document.AddDrawAobject(new CExtent(-6, -6, -4, -4));
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_EQ(-6.0, min.x);
    EXPECT_EQ(-4.0, max.x);
    EXPECT_EQ(-4.0, max.y);
}

TEST(Document, AFirstObjectWithoutExtentStretchesADrawingOnTheLeftToTheOrigin) {
    LoneDocument lone;
    lone.document.AddDrawAobject(new CExtent);
    lone.document.AddDrawAobject(new CExtent(-10, 1, -5, 2));
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_EQ(-10.0, min.x);
    EXPECT_EQ(1e-20, max.x);
    EXPECT_EQ(2.0, max.y);
}

TEST(Document, ADrawingWhereNothingHasAnExtentReportsTheStartValues) {
    LoneDocument lone;
    lone.document.AddDrawAobject(new CExtent);
    lone.document.AddDrawAobject(new CExtent);
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_EQ(1e20, min.x);
    EXPECT_EQ(1e20, min.y);
    EXPECT_EQ(1e-20, max.x);
    EXPECT_EQ(1e-20, max.y);
}

TEST(Document, TheExtentIsTheUnionOfTheDrawingAndLeavesNetAndCurrentObjectOut) {
    LoneDocument lone;
    lone.document.AddDrawAobject(NewLine(0, 0, 10, 5));
    lone.document.AddDrawAobject(NewLine(3, -7, 4, 20));
    lone.document.AddDrawAobject(NewLine(5, 1, 6, 2)); // Inside: it changes no side.
    lone.document.AddNetobject(NewLine(-100, -100, 100, 100));
    CLine current;
    current.SetEndPoint(CGePoint2d(500, 500));
    lone.document.AddCurrentObject(&current);
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_TRUE(min == CGePoint2d(0, -7));
    EXPECT_TRUE(max == CGePoint2d(10, 20));
}

TEST(Document, AnyAnswerButZeroIsAnExtent) {
    LoneDocument lone;
    lone.document.AddDrawAobject(new CExtent(2, 3, 4, 5, -1));
    CGePoint2d min;
    CGePoint2d max;
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_TRUE(min == CGePoint2d(2, 3));
    EXPECT_TRUE(max == CGePoint2d(4, 5));
    lone.document.AddDrawAobject(new CExtent(-20, -30, 40, 50, -1));
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_TRUE(min == CGePoint2d(-20, -30));
    EXPECT_TRUE(max == CGePoint2d(40, 50));
    lone.document.AddDrawAobject(new CExtent(-100, -100, 100, 100, 0));
    EXPECT_EQ(1, lone.document.GetRect(min, max));
    EXPECT_TRUE(min == CGePoint2d(-20, -30)) << "what an object writes beside a zero doesn't count";
    EXPECT_TRUE(max == CGePoint2d(40, 50));
}

// ---- Colours -------------------------------------------------------------------------------------------------------

TEST(Document, ANewDocumentIsBlackWithWhiteForeground) {
    CGraphicDocument document;
    EXPECT_EQ(7, document.GetBKColorIndex());
    EXPECT_EQ(0u, document.GetBKColor());
    EXPECT_EQ(137, document.GetFGColorIndex());
}

TEST(Document, AnIndexHidesAnExplicitBackgroundAndDoesNotLoseIt) {
    CGraphicDocument document;
    document.SetBKColor(0x00ABCDEF);
    EXPECT_EQ(-2, document.GetBKColorIndex());
    EXPECT_EQ(0x00ABCDEFu, document.GetBKColor());
    document.SetBKColorIndex(9);
    EXPECT_EQ(0x00FF0000u, document.GetBKColor());
    document.SetBKColorIndex(-2);
    EXPECT_EQ(0x00ABCDEFu, document.GetBKColor());
}

TEST(Document, ANewDocumentCommandGoesToTheBase) {
    LoneDocument lone;
    lone.document.AddDrawAobject(NewLine());
    EXPECT_TRUE(lone.document.OnNewDocument());
    EXPECT_EQ(1, lone.Objects().GetSize()) << "the base's DeleteContents knows no objects";
}

// ---- Without a mapping ---------------------------------------------------------------------------------------------

TEST(Document, WithoutAMappingItLoadsAndStoresAllButTheValuesOfTheView) {
    const Bytes golden = ReadTestData("lines_two.nrv");
    Bytes copy = golden;
    CGraphicDocument alone;
    EXPECT_EQ(nullptr, alone.GetVectorViewCoordTran());
    EXPECT_EQ(1, alone.OpenDocument(copy.data(), static_cast<unsigned int>(copy.size())));
    EXPECT_EQ(2, alone.GetDrawableObjs()->GetSize());
    CMemFile file;
    EXPECT_EQ(1, alone.StoreToMemFile(&file));
    Bytes stored(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(stored.data(), static_cast<UINT>(stored.size()));
    // Scale, origin and height are in bytes 10 to 33: here those of a new view.
    ASSERT_EQ(golden.size(), stored.size());
    EXPECT_TRUE(std::equal(golden.begin(), golden.begin() + 10, stored.begin()));
    EXPECT_TRUE(std::equal(golden.begin() + 34, golden.end(), stored.begin() + 34));
    EXPECT_EQ(nullptr, alone.GetVectorViewCoordTran());
}

TEST(Document, WithoutAMappingANewDrawingIsStoredWithTheValuesOfANewView) {
    CGraphicDocument alone;
    CMemFile file;
    EXPECT_EQ(1, alone.StoreToMemFile(&file));
    EXPECT_EQ(38u, file.GetLength());
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    int version = 0;
    DWORD color = 0;
    short index = 0;
    float scale = 0.0f;
    double x = 7.0;
    double y = 7.0;
    int height = 7;
    ar >> version >> color >> index >> scale >> x >> y >> height;
    EXPECT_EQ(1.0f, scale);
    EXPECT_EQ(0.0, x);
    EXPECT_EQ(0.0, y);
    EXPECT_EQ(0, height);
}

// ---- Size ----------------------------------------------------------------------------------------------------------

TEST(Document, ADrawingOfThousandsOfObjectsIsLoadedWhole) {
    constexpr int kObjects = 5000;
    LoneDocument lone;
    for (int i = 0; i < kObjects; ++i) {
        lone.document.AddDrawAobject(NewLine(i, 2 * i, 0, 0));
    }
    const Bytes bytes = lone.Store();
    LoneDocument again;
    ASSERT_EQ(-1, again.LoadRaw(bytes));
    ASSERT_EQ(kObjects, again.Objects().GetSize());
    for (int i = 0; i < kObjects; ++i) {
        ASSERT_TRUE(static_cast<CLine*>(again.Objects()[i])->GetStartPoint() == CGePoint2d(i, 2 * i)) << i;
    }
    EXPECT_EQ(bytes, again.Store());
}
