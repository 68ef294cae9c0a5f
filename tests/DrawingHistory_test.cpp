// Undo and redo on a document without a view: what a step holds, random walks, and what is left
// when memory is refused.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "DrawingHistory.h"
#include "LayerManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "support/HistoryDrawing.h"
#include "support/PrivateFields.h"
#include "support/TestData.h"
#include "support/WatchedCalls.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>

using namespace HistoryTests;

// ---- Steps ---------------------------------------------------------------------------------------------------------

TEST(DrawingHistory, AMarkWithoutAChangeMakesNoStep) {
    Drawing d;
    EXPECT_EQ(0, d.Mark());
    d.Add();
    EXPECT_EQ(1, d.Mark());
    EXPECT_EQ(0, d.Mark());
    EXPECT_EQ(1, d.history.GetUndoCount());
}

TEST(DrawingHistory, AnAddedObjectGoesAndComesBackAsItself) {
    Drawing d;
    CLine* line = d.Add(5);
    d.Mark();
    EXPECT_EQ(0, d.history.CanRedo());
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(Pointers(), d.List());
    EXPECT_EQ(0, d.history.CanUndo());
    EXPECT_EQ(1, d.history.CanRedo());
    EXPECT_EQ(1, d.history.Redo());
    EXPECT_EQ(Pointers({line}), d.List());
    EXPECT_EQ(5, X(line));
    EXPECT_EQ(0, d.history.Redo());
}

TEST(DrawingHistory, AChangedObjectIsMarkedWithoutLookingAtTheOthers) {
    Drawing d;
    CLine* a = d.Add(1);
    CLine* b = d.Add(2);
    d.Mark();
    a->SetStartPoint(CGePoint2d(7, 1));
    b->SetStartPoint(CGePoint2d(8, 1));
    EXPECT_EQ(1, d.history.MarkChanged(a, L"步骤", L"Step"));
    EXPECT_EQ(0, d.history.MarkChanged(a, L"步骤", L"Step"));
    EXPECT_EQ(2, d.history.GetUndoCount());
    EXPECT_EQ(1, d.Mark()); // The other one.
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(7, X(a));
    EXPECT_EQ(2, X(b));
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(1, X(a));
    EXPECT_EQ(1, d.history.Redo());
    EXPECT_EQ(7, X(a));
    // A further change takes the place of what could be redone.
    a->SetStartPoint(CGePoint2d(9, 1));
    EXPECT_EQ(1, d.history.MarkChanged(a, L"步骤", L"Step"));
    EXPECT_EQ(0, d.history.CanRedo());
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(7, X(a));
    // An object that no mark has seen: the whole drawing is compared.
    CLine* c = d.Add(3);
    EXPECT_EQ(1, d.history.MarkChanged(c, L"步骤", L"Step"));
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(Pointers({a, b}), d.List());
}

TEST(DrawingHistory, AnErasedObjectComesBackAtItsPlaceSelectedAsItWas) {
    Drawing d;
    CLine* a = d.Add(1);
    CLine* b = d.Add(2);
    CLine* c = d.Add(3);
    d.document.AddSelected(b);
    d.Mark();
    d.document.DeleteAllSelectedObject();
    d.Mark();
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(Pointers({a, b, c}), d.List());
    EXPECT_EQ(1, d.document.IsSelected(b));
    EXPECT_EQ(CDrawable::Selected, b->GetDrawState());
    EXPECT_EQ(1, d.history.Redo());
    EXPECT_EQ(Pointers({a, c}), d.List());
    EXPECT_TRUE(d.document.GetSelectedDrawableObjs()->IsEmpty());
}

TEST(DrawingHistory, ASelectionIsNoStepAndIsWhatItWasWhenItsStateWasLeft) {
    Drawing d;
    CLine* a = d.Add(1);
    d.Mark();
    d.document.AddSelected(a);
    EXPECT_EQ(0, d.Mark());
    const Bytes selected = d.Store();
    a->SetEndPoint(CGePoint2d(9, 9));
    d.document.RemoveAllSelected();
    EXPECT_EQ(1, d.Mark());
    const Bytes moved = d.Store();
    d.history.Undo();
    EXPECT_EQ(selected, d.Store());
    EXPECT_EQ(1, d.document.IsSelected(a));
    d.history.Redo();
    EXPECT_EQ(moved, d.Store());
    EXPECT_EQ(0, d.document.IsSelected(a));
}

TEST(DrawingHistory, TheOrderOfPaintingBelongsToAStep) {
    Drawing d;
    CLine* a = d.Add(1);
    CLine* b = d.Add(2);
    CLine* c = d.Add(3);
    d.Mark();
    d.document.MoveToTop(a);
    d.Mark();
    CLine* front = NewLine(4);
    d.document.AddDrawAobjectFront(front);
    d.Mark();
    EXPECT_EQ(Pointers({front, b, c, a}), d.List());
    d.history.Undo();
    EXPECT_EQ(Pointers({b, c, a}), d.List());
    d.history.Undo();
    EXPECT_EQ(Pointers({a, b, c}), d.List());
    d.history.Redo();
    d.history.Redo();
    EXPECT_EQ(Pointers({front, b, c, a}), d.List());
}

TEST(DrawingHistory, SettersAndListsOfObjectsAreSeen) {
    Drawing d;
    auto* pline = Register(new CPLine);
    pline->AddPoint(CGePoint2d(1, 2));
    pline->AddPoint(CGePoint2d(3, 4), 0.5);
    d.document.AddDrawAobject(pline);
    d.Mark();
    pline->SetBulge(1, 0.25);
    EXPECT_EQ(1, d.Mark());
    pline->SetMsgInfo(L"note");
    EXPECT_EQ(1, d.Mark());
    pline->GetPointList()->GetAt(0).x = 7;
    EXPECT_EQ(1, d.Mark());
    d.history.Undo();
    EXPECT_EQ(1, pline->GetPointList()->GetAt(0).x);
    d.history.Undo();
    EXPECT_EQ(L"", pline->GetMsgInfo());
    d.history.Undo();
    EXPECT_EQ(0.5, pline->GetBulgeList()->GetAt(1));
}

TEST(DrawingHistory, BackgroundAndLayersBelongToAStepAndTheMappingDoesNot) {
    Drawing d;
    CLayerInfo* first = d.document.GetLayerManager()->GetLayerInfo(0);
    d.document.SetBKColor(0x123456);
    first->m_LineWide = 4.0f;
    d.document.GetLayerManager()->AddLayer("Second");
    EXPECT_EQ(1, d.Mark());
    d.document.SetBKColorIndex(9);
    EXPECT_EQ(1, d.Mark());
    d.tran.SetScale(8.0f);
    EXPECT_EQ(0, d.Mark());
    d.history.Undo();
    EXPECT_EQ(-2, d.document.GetBKColorIndex());
    EXPECT_EQ(0x123456u, d.document.GetBKColor());
    EXPECT_EQ(8.0f, d.tran.GetScale());
    d.history.Undo();
    EXPECT_EQ(7, d.document.GetBKColorIndex());
    EXPECT_EQ(1, d.document.GetLayerManager()->GetLayerCount());
    EXPECT_EQ(1.0f, first->m_LineWide);
    EXPECT_EQ(first, d.document.GetLayerManager()->GetLayerInfo(0));
    d.history.Redo();
    EXPECT_EQ(2, d.document.GetLayerManager()->GetLayerCount());
    EXPECT_STREQ("Second", d.document.GetLayerManager()->GetLayerInfo(1)->GetName());
    EXPECT_EQ(4.0f, first->m_LineWide);
}

TEST(DrawingHistory, TheNetIsNoPartOfAStep) {
    Drawing d;
    d.document.AddNetobject(NewLine());
    EXPECT_EQ(0, d.Mark());
    d.Add();
    d.Mark();
    d.document.DeleteNet();
    EXPECT_EQ(0, d.Mark());
    d.history.Undo();
    EXPECT_TRUE(d.document.GetNetDrawableObjs()->IsEmpty());
}

TEST(DrawingHistory, StepsHaveNamesInBothLanguages) {
    Drawing d;
    EXPECT_EQ(L"", d.history.GetUndoName(0));
    d.Add();
    d.history.Mark(L"直线", L"Line");
    d.Add();
    d.history.Mark();
    EXPECT_EQ(L"编辑", d.history.GetUndoName(0));
    EXPECT_EQ(L"Edit", d.history.GetUndoName(1));
    d.history.Undo();
    EXPECT_EQ(L"直线", d.history.GetUndoName(0));
    EXPECT_EQ(L"Line", d.history.GetUndoName(1));
    EXPECT_EQ(L"Edit", d.history.GetRedoName(1));
    d.history.Redo();
    EXPECT_EQ(L"", d.history.GetRedoName(1));
}

TEST(DrawingHistory, WhatIsNotMarkedBecomesAStepThatUndoTakesBack) {
    Drawing d;
    CLine* a = d.Add();
    d.Mark();
    d.Add();
    EXPECT_EQ(1, d.history.Undo());
    EXPECT_EQ(Pointers({a}), d.List());
    EXPECT_EQ(1, d.history.GetRedoCount());
    CLine* c = d.Add();
    EXPECT_EQ(0, d.history.Redo()) << "the change has ended what could be redone";
    EXPECT_EQ(Pointers({a, c}), d.List());
}

TEST(DrawingHistory, AnObjectThatWasChangedOutsideTheDrawingComesBackAsItWas) {
    Drawing d;
    CLine* a = d.Add(1);
    d.Mark();
    a->SetStartPoint(CGePoint2d(50, 50)); // In the same step as its removal.
    d.document.DeleteObject(a);
    d.Mark();
    a->SetStartPoint(CGePoint2d(60, 60));
    d.history.Undo();
    EXPECT_EQ(1, X(a));
}

TEST(DrawingHistory, AnObjectMayBeTwiceInTheList) {
    Drawing d;
    CLine* a = d.Add(1);
    CDrawable* object = a;
    d.Objects().Add(object);
    d.Mark();
    a->SetStartPoint(CGePoint2d(7, 7));
    d.Mark();
    d.history.Undo();
    EXPECT_EQ(1, X(a));
    d.history.Undo();
    d.history.Redo();
    EXPECT_EQ(Pointers({a, a}), d.List());
    d.Objects().RemoveAt(1);
}

// ---- All fields of all kinds ---------------------------------------------------------------------------------------

namespace {

// Each change of one kind, and how to see it where the stored form does not show it.
struct Kind {
    std::function<CDrawable*()> make;
    std::vector<std::function<void(CDrawable*)>> changes;
    std::function<std::string(CDrawable*)> unstored = [](CDrawable*) { return std::string(); };
};

template <class Object>
std::function<void(CDrawable*)> On(std::function<void(Object&)> change) {
    return [change](CDrawable* object) { change(static_cast<Object&>(*object)); };
}

std::vector<std::function<void(CDrawable*)>> BaseChanges() {
    return {[](CDrawable* o) { o->SetPenColorIndex(3); }, [](CDrawable* o) { o->SetPenColor(0x010203); },
            [](CDrawable* o) { o->SetColorBrush(5); },    [](CDrawable* o) { o->SetLineWide(7); },
            [](CDrawable* o) { o->SetLineType(2); },      [](CDrawable* o) { o->SetScale(3.0f); },
            [](CDrawable* o) { o->SetLayer(4); },         [](CDrawable* o) { o->SetIsShow(0); },
            [](CDrawable* o) { o->SetCanBeSelect(0); }};
}

// By way of the rows of the property window, all of them.
std::vector<std::function<void(CDrawable*)>> RowChanges(CDrawable& sample) {
    std::vector<std::function<void(CDrawable*)>> changes;
    CDrawableProperty rows;
    sample.GetProperty(rows);
    for (int i = 0; i < rows.GetSize(); ++i) {
        changes.push_back([i](CDrawable* object) {
            CDrawableProperty list;
            object->GetProperty(list);
            CSimpleProperty* row = list.GetRow(i);
            switch (row->m_Value.vt) {
            case VT_I2:
                row->m_Value = static_cast<short>(row->m_Value.iVal + 1);
                break;
            case VT_I4:
                row->m_Value = static_cast<long>(row->m_Value.lVal + 1);
                break;
            case VT_R4:
                row->m_Value = row->m_Value.fltVal + 1.5f;
                break;
            case VT_R8:
                row->m_Value = row->m_Value.dblVal + 1.5;
                break;
            default:
                row->m_Value = CString(L"changed");
                break;
            }
            row->m_Changed = 1;
            object->SetProperty(list);
            list.Clear();
        });
    }
    rows.Clear();
    return changes;
}

std::string UnstoredOfPolyline(CDrawable* object) {
    auto* pline = static_cast<CPLine*>(object);
    std::string text;
    for (INT_PTR i = 0; i < PeekAt(*pline, SegmentColors()).GetSize(); ++i) {
        text += std::to_string(PeekAt(*pline, SegmentColors())[i]) + "/" +
                std::to_string(PeekAt(*pline, SegmentColorFlags())[i]) + " ";
    }
    for (INT_PTR i = 0; i < pline->GetPointList()->GetSize(); ++i) {
        text += "type " + std::to_string(pline->GetPointList()->GetAt(i).type) + " ";
    }
    CGePointArray inserts;
    pline->getGripPoints(inserts, kGripInsertPoints);
    for (INT_PTR i = 0; i < inserts.GetSize(); ++i) {
        text += "insert " + std::to_string(inserts[i].x) + " ";
    }
    return text;
}

std::map<std::string, Kind> Kinds() {
    std::map<std::string, Kind> kinds;
    kinds["line"].make = [] { return NewLine(); };
    kinds["circle"].make = [] { return Register(new CCircle(Gdiplus::PointF(1, 2), 3)); };
    kinds["arc"].make = [] { return Register(new CArc(Gdiplus::PointF(1, 2), 3, 0.5f, 1.5f)); };
    kinds["centre"].make = [] { return Register(new CCenterPoint(Gdiplus::PointF(1, 2))); };
    kinds["frame"].make = [] { return Register(new CCombRect); };
    kinds["frame"].changes = {
        On<CCombRect>([](CCombRect& o) { o.SetVectorId(L"id"); }),
        On<CCombRect>([](CCombRect& o) { o.SetPoint(CGePoint2d(1, 2), CGePoint2d(3, 4)); }),
    };
    kinds["text"].make = [] { return Register(new CText); };
    kinds["parm"].make = [] { return Register(new CTextParm); };
    const std::vector<std::function<void(CDrawable*)>> textChanges = {
        On<CText>([](CText& o) { o.SetTextRatio(0.75f); }), On<CText>([](CText& o) { o.SetOffWide(2.0f); }),
        On<CText>([](CText& o) { o.SetTextWide(5.0f); }), // Below its height: loading would widen it.
        On<CText>([](CText& o) { o.SetBKColor(0x00FF00); }), On<CText>([](CText& o) { o.SetBKMode(OPAQUE); })};
    const auto unstoredOfText = [](CDrawable* object) {
        auto* text = static_cast<CText*>(object);
        return std::to_string(text->GetBKColor()) + " " + std::to_string(text->GetBKMode());
    };
    for (const char* name : {"text", "parm"}) {
        kinds[name].changes = textChanges;
        kinds[name].unstored = unstoredOfText;
    }
    kinds["label"].make = [] { return Register(new CKXVectorLabel); };
    kinds["label"].changes = {
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetLeftLabelStartPt(CGePoint2d(1, 2)); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetLeftLabelEntPt(CGePoint2d(1, 2)); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetRightLabelStartPt(CGePoint2d(1, 2)); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetRightLabelEndPt(CGePoint2d(1, 2)); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetLabelLength(9); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetLabelWidth(9); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetTextHoleWidth(9); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetHasTextHole(false); }),
        On<CKXVectorLabel>([](CKXVectorLabel& o) { o.SetTextShow(1); }),
    };
    kinds["pline"].make = [] {
        auto* pline = Register(new CPLine);
        pline->AddPoint(CGePoint2d(0, 0));
        pline->AddPoint(CGePoint2d(5, 0), 0.5);
        pline->AddPoint(CGePoint2d(5, 5));
        pline->SetSLPenColor(1, 0x0000FF);
        return pline;
    };
    CGePoint2d snapped(2, 2);
    snapped.type = 4;
    kinds["pline"].changes = {
        On<CPLine>([](CPLine& o) { o.SetSLPenColor(0, 0x00FF00); }),
        On<CPLine>([](CPLine& o) { o.ResetPenColor(1, 0x000001); }),
        On<CPLine>([](CPLine& o) { o.AddInsertPoint(CGePoint2d(8, 8)); }),
        On<CPLine>([](CPLine& o) { o.ClearInsertPoints(); }),
        On<CPLine>([](CPLine& o) { o.SetPoint(9, CGePoint2d(6, 6)); }), // A vertex that is not counted.
        On<CPLine>([snapped](CPLine& o) { o.SetPoint(0, snapped); }),
        On<CPLine>([](CPLine& o) { o.InsertPoint(1, CGePoint2d(1, 1)); }),
        On<CPLine>([](CPLine& o) { o.RemovePoint(0); }),
        On<CPLine>([](CPLine& o) { o.SetBulge(0, -0.5); }),
        On<CPLine>([](CPLine& o) { o.SetSLineInfo(1, L"name", L"message"); }),
        On<CPLine>([](CPLine& o) { o.SetClose(1); }),
        On<CPLine>([](CPLine& o) { o.GetBulgeList()->RemoveAll(); }), // No list fits the other any more.
    };
    kinds["pline"].unstored = UnstoredOfPolyline;
    for (auto& [name, kind] : kinds) {
        CDrawable* sample = kind.make();
        const auto rows = RowChanges(*sample);
        Free(sample);
        // The bulges have gone when the last change of a polyline has been made: its rows come before.
        kind.changes.insert(kind.changes.begin(), rows.begin(), rows.end());
        const auto base = BaseChanges();
        kind.changes.insert(kind.changes.begin(), base.begin(), base.end());
    }
    return kinds;
}

} // namespace

TEST(DrawingHistory, EveryFieldOfEveryKindIsPutBackWhetherStoredOrNot) {
    for (auto& [name, kind] : Kinds()) {
        SCOPED_TRACE(name);
        Drawing d;
        CDrawable* object = kind.make();
        d.document.AddDrawAobject(object);
        d.Mark();
        const auto see = [&, &unstored = kind.unstored] {
            Bytes bytes;
            try {
                bytes = StoreObject(*object);
            } catch (CException* e) { // A polyline without bulges.
                e->Delete();
            }
            return std::make_pair(bytes, unstored(object));
        };
        std::vector<decltype(see())> seen = {see()};
        for (size_t i = 0; i < kind.changes.size(); ++i) {
            kind.changes[i](object);
            const bool changed = see() != seen.back();
            EXPECT_EQ(changed ? 1 : 0, d.Mark()) << "change " << i;
            if (changed) {
                seen.push_back(see());
            }
        }
        EXPECT_GT(seen.size(), kind.changes.size() / 2);
        for (int round = 0; round < 2; ++round) {
            for (size_t i = seen.size() - 1; i > 0; --i) {
                ASSERT_EQ(1, d.history.Undo());
                EXPECT_EQ(seen[i - 1], see()) << "back to " << i - 1;
            }
            for (size_t i = 1; i < seen.size(); ++i) {
                ASSERT_EQ(1, d.history.Redo());
                EXPECT_EQ(seen[i], see()) << "forward to " << i;
            }
        }
    }
}

TEST(DrawingHistory, TheFigureOfALabelIsPutBackAndMakesNoStepOfItsOwn) {
    Drawing d;
    auto* label = Register(new CKXVectorLabel);
    d.document.AddDrawAobject(label);
    PeekAt(*label, LabelFigure()).SetText(L"12.5");
    d.Mark();
    PeekAt(*label, LabelFigure()).SetText(L"99"); // As a paint does.
    EXPECT_EQ(0, d.Mark());
    label->SetLabelLength(8);
    d.Mark();
    d.history.Undo();
    EXPECT_EQ(L"12.5", PeekAt(*label, LabelFigure()).GetText());
}

namespace {

// Kinds of a host: one that is known by its stored form alone, one that names its field, one that can't be stored.
class CStoredKind : public CLine {
    DECLARE_SERIAL(CStoredKind)
public:
    int m_Extra = 0;
    void Serialize(CArchive& ar) override {
        CLine::Serialize(ar);
        ar.IsStoring() ? ar << m_Extra : ar >> m_Extra;
    }
};
IMPLEMENT_SERIAL(CStoredKind, CLine, VERSIONABLE_SCHEMA | 5)

class CNamedKind : public CStoredKind {
public:
    int m_NeverStored = 0;
    int m_Loads = 0;
    void ExchangeState(CStateExchange& exchange) override {
        CStoredKind::ExchangeState(exchange);
        exchange.Level<CNamedKind>();
        exchange.Value(m_Extra);
        exchange.Value(m_NeverStored);
    }
    void Serialize(CArchive& ar) override {
        ++m_Loads;
        CStoredKind::Serialize(ar);
    }
};

class CUnstorableKind : public CLine {
public:
    bool m_ThrowsOther = false;
    void Serialize(CArchive&) override {
        if (m_ThrowsOther) {
            throw 5;
        }
        AfxThrowNotSupportedException();
    }
};

} // namespace

TEST(DrawingHistory, AKindOfAHostIsKeptByItsStoredForm) {
    Drawing d;
    auto* object = Register(new CStoredKind);
    d.document.AddDrawAobject(object);
    d.Mark();
    object->m_Extra = 5;
    EXPECT_EQ(1, d.Mark());
    object->SetStartPoint(CGePoint2d(4, 4));
    EXPECT_EQ(1, d.Mark());
    object->SetDrawState(CDrawable::Selected);
    EXPECT_EQ(0, d.Mark());
    d.history.Undo();
    EXPECT_EQ(5, object->m_Extra);
    EXPECT_EQ(0, X(object));
    d.history.Undo();
    EXPECT_EQ(0, object->m_Extra);
    d.history.Redo();
    d.history.Redo();
    EXPECT_EQ(5, object->m_Extra);
    EXPECT_EQ(4, X(object));
}

TEST(DrawingHistory, AKindOfAHostThatNamesItsFieldsIsNotStored) {
    Drawing d;
    auto* object = Register(new CNamedKind);
    d.document.AddDrawAobject(object);
    d.Mark();
    object->m_NeverStored = 6;
    EXPECT_EQ(1, d.Mark());
    d.history.Undo();
    EXPECT_EQ(0, object->m_NeverStored);
    d.history.Redo();
    EXPECT_EQ(6, object->m_NeverStored);
    EXPECT_EQ(0, object->m_Loads);
}

TEST(DrawingHistory, AKindOfAHostThatCannotBeStoredDoesNotPreventMarks) {
    Drawing d;
    auto* object = Register(new CUnstorableKind);
    d.document.AddDrawAobject(object);
    for (const bool other : {false, true}) {
        object->m_ThrowsOther = other;
        EXPECT_EQ(other ? 0 : 1, d.Mark());
        object->SetStartPoint(CGePoint2d(4, 4));
        EXPECT_EQ(1, d.Mark());
        d.history.Undo();
        EXPECT_EQ(0, X(object));
    }
}

// ---- Walks ---------------------------------------------------------------------------------------------------------

namespace {

// Any change that a host may make, on a document with a history, and the streams of all states that it went through.
class Walk {
public:
    Drawing d;

    explicit Walk(unsigned seed) : m_random(seed) { m_states.push_back(See()); }
    void Step() {
        if (OneIn(3)) {
            Travel();
            return;
        }
        m_new.clear();
        const int changes = 1 + Any(3);
        for (int i = 0; i < changes; ++i) {
            Change();
        }
        Mark();
    }
    void Mark() {
        if (d.Mark() != 0) {
            m_states.resize(static_cast<size_t>(m_at) + 1);
            m_states.push_back(See());
            ++m_at;
        } else {
            m_states[static_cast<size_t>(m_at)] = See(); // The selection.
        }
    }
    void Travel() {
        const bool back = OneIn(2);
        const int done = back ? d.history.Undo() : d.history.Redo();
        const bool possible = back ? m_at > 0 : m_at + 1 < static_cast<int>(m_states.size());
        ASSERT_EQ(possible ? 1 : 0, done);
        if (possible) {
            m_at += back ? -1 : 1;
            ASSERT_TRUE(m_states[static_cast<size_t>(m_at)] == See());
        }
    }
    size_t States() const { return m_states.size(); }

private:
    struct Seen {
        Pointers list;
        Pointers selected;
        Bytes bytes;
        std::string unstored;
        bool operator==(const Seen& other) const {
            return list == other.list && selected == other.selected && bytes == other.bytes &&
                   unstored == other.unstored;
        }
    };

    int Any(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    bool OneIn(int n) { return Any(n) == 0; }

    Seen See() {
        Seen seen;
        seen.list = d.List();
        CDrawableArray& selected = *d.document.GetSelectedDrawableObjs();
        for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
            seen.selected.push_back(selected[i]);
        }
        seen.bytes = d.Store();
        for (CDrawable* object : seen.list) {
            if (DYNAMIC_DOWNCAST(CPLine, object) != nullptr) {
                seen.unstored += UnstoredOfPolyline(object);
            }
        }
        return seen;
    }

    void AddAny() {
        CDrawable* object = m_kinds[m_names[static_cast<size_t>(Any(static_cast<int>(m_names.size())))]].make();
        OneIn(2) ? d.document.AddDrawAobject(object) : d.document.AddDrawAobjectFront(object);
        m_new.insert(object);
    }

    void Change() {
        const Pointers list = d.List();
        if (list.empty() || OneIn(4)) {
            AddAny();
            return;
        }
        CDrawable* object = list[static_cast<size_t>(Any(static_cast<int>(list.size())))];
        switch (Any(10)) {
        case 0:
            if (m_new.count(object) == 0) { // No mark has seen it: it would be the caller's.
                d.document.DeleteObject(object);
            }
            break;
        case 1:
            d.document.MoveToTop(object);
            break;
        case 2:
            d.document.AddSelected(object);
            break;
        case 3:
            d.document.RemoveAllSelected();
            break;
        case 4:
            if (m_new.empty()) {
                d.document.DeleteAllSelectedObject();
            }
            break;
        case 5:
            object->transformBy(CGeMatrix2d::rotation(0.1 * Any(60), CGePoint2d(Any(10), Any(10))));
            break;
        case 6:
            d.document.SetBKColor(static_cast<DWORD>(Any(1000)));
            break;
        case 7:
            object->SetDrawState(static_cast<enum CDrawable::DrawState>(Any(3)));
            break;
        case 8:
            if (auto* pline = DYNAMIC_DOWNCAST(CPLine, object)) {
                pline->SetSLPenColor(Any(2), static_cast<DWORD>(Any(1000)));
                OneIn(2) ? pline->AddPoint(CGePoint2d(Any(9), Any(9))) : static_cast<void>(pline->RemovePoint(0));
            }
            break;
        default:
            object->SetPenColorIndex(static_cast<short>(Any(100)));
            break;
        }
    }

    std::mt19937 m_random;
    std::map<std::string, Kind> m_kinds = Kinds();
    std::vector<std::string> m_names = {"line", "circle", "arc", "centre", "frame", "text", "parm", "label", "pline"};
    std::set<CDrawable*> m_new; // Since the last mark.
    std::vector<Seen> m_states;
    int m_at = 0;
};

} // namespace

TEST(DrawingHistory, RandomWalksComeBackToTheSameBytesAndObjects) {
    const int before = Registered();
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        Walk walk(seed);
        for (int i = 0; i < 300 && !testing::Test::HasFatalFailure(); ++i) {
            walk.Step();
        }
        EXPECT_GT(walk.States(), 3u);
    }
    EXPECT_EQ(before, Registered()) << "everything erased or undone was freed";
}

TEST(DrawingHistory, WithEveryRequestForMemoryRefusedOnceNothingIsLost) {
    // One mark, one undo and one redo of a drawing in which objects came, went, grew, shrank and changed.
    for (const char* what : {"mark", "undo", "redo"}) {
        SCOPED_TRACE(what);
        LONG refusals = 0;
        for (LONG nth = 1;; ++nth) {
            ASSERT_LT(nth, 2000);
            Drawing d;
            std::map<std::string, Kind> kinds = Kinds();
            auto* pline = static_cast<CPLine*>(kinds["pline"].make());
            auto* stored = Register(new CStoredKind);
            CLine* erased = d.Add(1);
            d.document.AddDrawAobject(pline);
            d.document.AddDrawAobject(stored);
            d.document.AddSelected(erased);
            d.Mark();
            const Bytes first = d.Store();
            const std::string firstUnstored = UnstoredOfPolyline(pline);
            const Pointers firstList = d.List();
            d.document.DeleteAllSelectedObject();
            pline->AddPoint(CGePoint2d(7, 7));
            pline->SetSLPenColor(2, 0x777777);
            pline->AddInsertPoint(CGePoint2d(3, 3));
            pline->SetMsgInfo(L"a text that is long enough for memory of its own");
            stored->m_Extra = 9;
            d.document.GetLayerManager()->AddLayer("Second");
            d.document.SetBKColor(0x112233);
            d.Add(2);
            const Bytes second = d.Store();
            const std::string secondUnstored = UnstoredOfPolyline(pline);
            const Pointers secondList = d.List();
            const auto expect = [&](bool isFirst) {
                EXPECT_EQ(isFirst ? first : second, d.Store());
                EXPECT_EQ(isFirst ? firstUnstored : secondUnstored, UnstoredOfPolyline(pline));
                EXPECT_EQ(isFirst ? firstList : secondList, d.List());
            };
            const std::string act = what;
            if (act != "mark") {
                d.Mark();
            }
            if (act == "redo") {
                d.history.Undo();
            }
            int done = 0;
            {
                WatchedCalls refused;
                refused.Refuse(WatchedCalls::Memory, nth, WatchedCalls::One);
                done = act == "mark" ? d.Mark() : act == "undo" ? d.history.Undo() : d.history.Redo();
                refusals += refused.Refused();
                if (refused.Refused() == 0) {
                    break;
                }
            }
            SCOPED_TRACE(nth);
            if (act == "mark") {
                expect(false);
                EXPECT_EQ(done, d.Mark() != 0 ? 0 : 1) << "marked now or then";
            } else {
                expect((act == "undo") == (done != 0));
                if (done == 0) {
                    EXPECT_EQ(1, act == "undo" ? d.history.Undo() : d.history.Redo());
                }
                expect(act == "undo");
            }
            // All the way back and forth.
            while (d.history.Undo() != 0) {
            }
            EXPECT_EQ(Pointers(), d.List());
            EXPECT_EQ(1, d.history.Redo());
            expect(true);
            EXPECT_EQ(1, d.history.Redo());
            expect(false);
        }
        EXPECT_GT(refusals, 5);
    }
}
