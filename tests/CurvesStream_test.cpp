// The streams of the curved kinds: golden bytes in every schema, every prefix, hostile counts and mutated bytes.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "PLine.h"
#include "support/CurveTools.h"
#include "support/DrawStage.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <random>

namespace {

// The only object of a drawing, of the requested kind; null, and a failure, otherwise.
template <class Kind>
Kind* Only(LoneDocument& lone) {
    Kind* object = lone.Objects().GetSize() == 1 ? DYNAMIC_DOWNCAST(Kind, lone.Objects()[0]) : nullptr;
    EXPECT_NE(nullptr, object) << lone.Objects().GetSize() << " objects";
    return object;
}

std::string Name(const char* stem, int schema) {
    return std::string(stem) + "_schema" + std::to_string(schema) + ".nrv";
}

// What all golden objects have in common. Older schemas have no selectability.
void ExpectBase(CDrawable& object, int schema) {
    EXPECT_EQ(-2, object.GetPenColorIndex());
    EXPECT_EQ(0x00302010u, object.GetPenColor());
    EXPECT_EQ(-1, object.GetColorBrush());
    EXPECT_EQ(2.0f, object.GetLineWide());
    EXPECT_EQ(1, object.GetLineType());
    EXPECT_EQ(1.5f, object.GetScale());
    EXPECT_EQ(3, object.GetLayer());
    EXPECT_EQ(42, object.GetID());
    EXPECT_EQ(0, object.IsDelete());
    EXPECT_EQ(CDrawable::Normal, object.GetDrawState());
    EXPECT_EQ(1, object.GetIsShow());
    EXPECT_EQ(schema == 5 ? 0 : 1, object.isCanSelect());
}

double RowValue(CDrawable& object, LPCTSTR key) {
    PropertyList rows(object);
    return rows.list.Find(key)->GetValue().dblVal;
}

long RowLong(CDrawable& object, LPCTSTR key) {
    PropertyList rows(object);
    return rows.list.Find(key)->GetValue().lVal;
}

// One object's own Serialize, outside ReadObject; the cause of the exception, or -1.
int Restore(CDrawable& object, Bytes bytes) {
    bytes.reserve(bytes.size() + 1); // So that data() is never null.
    CMemFile file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()));
    int cause = -1;
    try {
        CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, 4096);
        object.Serialize(ar);
        ar.Close();
    } catch (CArchiveException* e) {
        cause = e->m_cause;
        e->Delete();
    }
    file.Detach();
    return cause;
}

#ifdef NR_GUARDED
constexpr int kRounds = 10000; // each block of memory has a page of its own, which takes many times as long
#else
constexpr int kRounds = 100000;
#endif

const char* const kStems[] = {"pline", "circle", "centerpoint", "arc", "combrect"};

// Every golden stream of these kinds.
std::vector<std::string> GoldenNames() {
    std::vector<std::string> names = {"curves.nrv", "pline_negative.nrv"};
    for (const char* stem : kStems) {
        for (int schema = 0; schema <= 6; ++schema) {
            names.push_back(Name(stem, schema));
        }
    }
    return names;
}

} // namespace

// ---- The current form ----------------------------------------------------------------------------------------------

TEST(CurvesStream, EveryKindIsWrittenFieldByFieldAsInItsGoldenStream) {
    for (const char* stem : kStems) {
        LoneDocument lone;
        const Bytes golden = ReadTestData(Name(stem, 5));
        ASSERT_EQ(-1, lone.LoadRaw(golden)) << stem;
        ASSERT_EQ(1, lone.Objects().GetSize()) << stem;
        ExpectBase(*lone.Objects()[0], 5);
        EXPECT_EQ(golden, lone.Store()) << stem;
    }
}

TEST(CurvesStream, AMixedDrawingIsReadBackBitForBit) {
    LoneDocument lone;
    const Bytes golden = ReadTestData("curves.nrv");
    ASSERT_EQ(-1, lone.LoadRaw(golden));
    ASSERT_EQ(6, lone.Objects().GetSize());
    EXPECT_EQ(RUNTIME_CLASS(CPLine), lone.Objects()[0]->GetRuntimeClass());
    EXPECT_EQ(RUNTIME_CLASS(CCircle), lone.Objects()[1]->GetRuntimeClass());
    EXPECT_EQ(RUNTIME_CLASS(CCenterPoint), lone.Objects()[2]->GetRuntimeClass());
    EXPECT_EQ(RUNTIME_CLASS(CArc), lone.Objects()[3]->GetRuntimeClass());
    EXPECT_EQ(RUNTIME_CLASS(CCombRect), lone.Objects()[4]->GetRuntimeClass());
    EXPECT_EQ(RUNTIME_CLASS(CPLine), lone.Objects()[5]->GetRuntimeClass());
    EXPECT_EQ(golden, lone.Store());
}

TEST(CurvesStream, OutsideReadObjectTheCurrentFormIsExpected) {
    CArc arc;
    arc.SetCenter(CGePoint2d(1, 2));
    arc.setRadius(3);
    arc.SetStartAngle(0.5);
    arc.SetEndAngle(1.5);
    CArc copy;
    EXPECT_EQ(-1, Restore(copy, StoreObject(arc)));
    EXPECT_POINT(1, 2, copy.Center());
    EXPECT_EQ(1.5, copy.GetEndAngle());
    EXPECT_EQ(StoreObject(arc), StoreObject(copy));
}

TEST(CurvesStream, TheVersionWordsAreReadAndNotChecked) {
    // After the class tag, the schema, the length of the name and the name, 48 bytes of the base, then the kind's
    // word.
    const struct {
        const char* stem;
        size_t name;
    } kinds[] = {{"pline", 6}, {"circle", 7}, {"centerpoint", 12}, {"arc", 4}};
    for (const auto& kind : kinds) {
        Bytes bytes = ReadTestData(Name(kind.stem, 5));
        const size_t at = 38 + 6 + kind.name;
        for (const size_t word : {at, at + 48}) {
            ASSERT_EQ(5, bytes[word]) << kind.stem;
            bytes[word] = 99;
        }
        LoneDocument lone;
        EXPECT_EQ(-1, lone.LoadRaw(bytes)) << kind.stem;
        EXPECT_EQ(ReadTestData(Name(kind.stem, 5)), lone.Store()) << kind.stem;
    }
}

// ---- Older forms ---------------------------------------------------------------------------------------------------

TEST(CurvesStream, APolylineReadsWhatItsSchemaHolds) {
    for (int schema = 0; schema <= 6; ++schema) {
        SCOPED_TRACE(schema);
        const bool lock = schema >= 2 && schema <= 5;
        const bool bulge = schema >= 3 && schema <= 5;
        const bool tags = schema >= 4 && schema <= 5;
        LoneDocument lone;
        ASSERT_EQ(-1, lone.LoadRaw(ReadTestData(Name("pline", schema))));
        CPLine* line = Only<CPLine>(lone);
        ASSERT_NE(nullptr, line);
        ExpectBase(*line, schema);
        ASSERT_EQ(3, line->GetVertexCount());
        ASSERT_EQ(3, line->GetPointList()->GetSize());
        EXPECT_EQ(1, line->IsClosed());
        EXPECT_EQ(lock ? 2 : 0, line->GetLockMode());
        EXPECT_EQ(CString(bulge ? L"参数" : L""), line->GetParmName());
        EXPECT_EQ(CString(bulge ? L"info" : L""), line->GetMsgInfo());
        EXPECT_POINT(1.5, -2.25, line->GetPointList()->GetAt(0));
        EXPECT_POINT(1e9, 0.1, line->GetPointList()->GetAt(1));
        EXPECT_POINT(-3, 4, line->GetPointList()->GetAt(2));
        EXPECT_EQ(bulge ? 0.5 : 0.0, line->GetBulgeList()->GetAt(0));
        EXPECT_EQ(bulge ? -1.0 : 0.0, line->GetBulgeList()->GetAt(1));
        EXPECT_EQ(bulge ? 0.0005 : 0.0, line->GetBulgeList()->GetAt(2));
        CString name;
        CString msg;
        EXPECT_EQ(1, line->GetSLineInfo(0, name, msg));
        EXPECT_EQ(CString(tags ? L"甲" : L""), name);
        EXPECT_EQ(CString(tags ? L"first" : L""), msg);
        EXPECT_EQ(1, line->GetSLineInfo(2, name, msg));
        EXPECT_EQ(CString(tags ? L"末" : L""), msg);
        // The reserved number, after version, count and lock: kept in every form.
        const Bytes stored = lone.Store();
        EXPECT_EQ(77, stored[38 + 6 + 6 + 48 + 12]);
    }
}

TEST(CurvesStream, ACircleReadsWhatItsSchemaHolds) {
    for (int schema = 0; schema <= 6; ++schema) {
        SCOPED_TRACE(schema);
        LoneDocument lone;
        ASSERT_EQ(-1, lone.LoadRaw(ReadTestData(Name("circle", schema))));
        CCircle* circle = Only<CCircle>(lone);
        ASSERT_NE(nullptr, circle);
        ExpectBase(*circle, schema);
        EXPECT_POINT(1.5, -2.25, circle->Center());
        EXPECT_EQ(0.1, circle->Radius());
        EXPECT_EQ(1, circle->IsFill());
        EXPECT_EQ(CString(schema == 1 ? L"" : L"参数"), circle->GetParmName());
        EXPECT_EQ(CString(schema == 1 ? L"" : L"info"), circle->GetMsgInfo());
        EXPECT_EQ(schema == 1 || schema == 2 ? 0 : 3, circle->GetLockMode());
    }
}

TEST(CurvesStream, AnArcIsACircleOfItsSchemaAndTwoAngles) {
    for (int schema = 0; schema <= 6; ++schema) {
        SCOPED_TRACE(schema);
        LoneDocument lone;
        ASSERT_EQ(-1, lone.LoadRaw(ReadTestData(Name("arc", schema))));
        CArc* arc = Only<CArc>(lone);
        ASSERT_NE(nullptr, arc);
        ExpectBase(*arc, schema);
        EXPECT_POINT(1.5, -2.25, arc->Center());
        EXPECT_EQ(5.5, arc->GetStartAngle());
        EXPECT_EQ(0.7853981633974483, arc->GetEndAngle());
        EXPECT_EQ(CString(schema == 1 ? L"" : L"参数"), arc->GetParmName());
        EXPECT_EQ(schema == 1 || schema == 2 ? 0 : 3, arc->GetLockMode());
    }
}

TEST(CurvesStream, ACentreMarkHasAllItsFieldsInEverySchema) {
    for (int schema = 0; schema <= 6; ++schema) {
        SCOPED_TRACE(schema);
        LoneDocument lone;
        ASSERT_EQ(-1, lone.LoadRaw(ReadTestData(Name("centerpoint", schema))));
        CCenterPoint* mark = Only<CCenterPoint>(lone);
        ASSERT_NE(nullptr, mark);
        ExpectBase(*mark, schema);
        EXPECT_POINT(1.5, -2.25, mark->Center());
        EXPECT_EQ(0.1, RowValue(*mark, L"m_Radius"));
        EXPECT_EQ(1, RowLong(*mark, L"m_Fill"));
        EXPECT_EQ(CString(L"参数"), mark->GetParmName());
        EXPECT_EQ(CString(L"info"), mark->GetMsgInfo());
        EXPECT_EQ(3, mark->GetLockMode());
    }
}

TEST(CurvesStream, AFrameHoldsNothingInOlderSchemas) {
    for (int schema = 0; schema <= 6; ++schema) {
        SCOPED_TRACE(schema);
        LoneDocument lone;
        ASSERT_EQ(-1, lone.LoadRaw(ReadTestData(Name("combrect", schema))));
        CCombRect* frame = Only<CCombRect>(lone);
        ASSERT_NE(nullptr, frame);
        ExpectBase(*frame, schema);
        CGePoint2d a(9, 9);
        CGePoint2d b(9, 9);
        frame->GetPoint(a, b);
        EXPECT_EQ(CString(schema == 5 ? L"组7" : L""), frame->GetVectorId());
        EXPECT_POINT(schema == 5 ? 60 : 0, schema == 5 ? -80.5 : 0, a);
        EXPECT_POINT(schema == 5 ? 1e9 : 0, schema == 5 ? 0.1 : 0, b);
        EXPECT_EQ(1, a.type);
    }
}

// ---- What is not in the stream -------------------------------------------------------------------------------------

namespace {

class CBarePLine : public CPLine {
public:
    CUIntArray& Flags() { return m_SegPenFlagList; }
    CArray<DWORD, DWORD&>& Colors() { return m_SegPenColorList; }
};

} // namespace

TEST(CurvesStream, ColoursOfSegmentsDoNotSurvive) {
    CBarePLine line;
    line.SetPenColor(0x00AABBCC);
    line.AddPoint(CGePoint2d(1, 2));
    line.AddPoint(CGePoint2d(3, 4));
    line.SetSLPenColor(0, 0xFF);
    line.SetSLPenColor(1, 0xFF);
    CBarePLine copy;
    copy.AddPoint(CGePoint2d(9, 9));
    copy.SetSLPenColor(0, 0x11);
    ASSERT_EQ(-1, Restore(copy, StoreObject(line)));
    ASSERT_EQ(2, copy.Flags().GetSize());
    ASSERT_EQ(2, copy.Colors().GetSize());
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(0u, copy.Flags()[i]);
        EXPECT_EQ(0x00AABBCCu, copy.Colors()[i]) << "the polyline's own colour";
    }
}

TEST(CurvesStream, UncountedVerticesAreNotStored) {
    CPLine line;
    line.AddPoint(CGePoint2d(1, 2));
    line.SetPoint(1, CGePoint2d(3, 4));
    CPLine copy;
    ASSERT_EQ(-1, Restore(copy, StoreObject(line)));
    EXPECT_EQ(1, copy.GetVertexCount());
    EXPECT_EQ(1, copy.GetPointList()->GetSize());
    EXPECT_EQ(1, line.GetVertexCount()) << "and stay uncounted";
    EXPECT_EQ(2, line.GetPointList()->GetSize());
}

TEST(CurvesStream, ALoadLeavesTheInsertPointsAndTheSegmentHitLast) {
    CPLine line;
    line.AddPoint(CGePoint2d(0, 0));
    line.AddPoint(CGePoint2d(10, 0));
    CPLine copy;
    copy.AddPoint(CGePoint2d(0, 0));
    copy.AddPoint(CGePoint2d(10, 0));
    copy.AddPoint(CGePoint2d(10, 10));
    copy.AddInsertPoint(CGePoint2d(5, 5));
    copy.HitTest(CGePoint2d(10, 5));
    ASSERT_EQ(1, copy.GetSelSelLine());
    ASSERT_EQ(-1, Restore(copy, StoreObject(line)));
    EXPECT_EQ(2, copy.GetVertexCount());
    EXPECT_EQ(1, Grips(copy, 2).Size());
    EXPECT_EQ(1, copy.GetSelSelLine());
}

TEST(CurvesStream, TheKindOfACornerIsNotStored) {
    CCombRect frame;
    CGePoint2d corner(1, 2);
    corner.type = 8;
    frame.SetPoint(corner, corner);
    CCombRect copy;
    ASSERT_EQ(-1, Restore(copy, StoreObject(frame)));
    CGePoint2d a;
    CGePoint2d b;
    copy.GetPoint(a, b);
    EXPECT_POINT(1, 2, a);
    EXPECT_EQ(1, a.type);
}

// ---- Hostile bytes -------------------------------------------------------------------------------------------------

TEST(CurvesStream, ACountBelowZeroIsKeptAndReadsNoVertices) {
    LoneDocument lone;
    const Bytes golden = ReadTestData("pline_negative.nrv");
    ASSERT_EQ(-1, lone.LoadRaw(golden));
    CPLine* line = Only<CPLine>(lone);
    ASSERT_NE(nullptr, line);
    EXPECT_EQ(-3, line->GetVertexCount());
    EXPECT_EQ(0, line->GetPointList()->GetSize());
    EXPECT_EQ(golden, lone.Store());
    EXPECT_EQ(1000.0f, line->HitTest(CGePoint2d()));
    line->transformBy(CGeMatrix2d());
    line->AddPoint(CGePoint2d(1, 1));
    EXPECT_EQ(-2, line->GetVertexCount());
}

TEST(CurvesStream, ACountBeyondTheStreamEndsAtItsEndWithATrueCount) {
    LoneDocument lone;
    EXPECT_EQ(CArchiveException::endOfFile, lone.LoadRaw(ReadTestData("pline_beyond.nrv")));
    EXPECT_EQ(0, lone.Objects().GetSize());
    CPLine line;
    line.AddPoint(CGePoint2d(1, 2));
    line.AddPoint(CGePoint2d(3, 4));
    Bytes bytes = StoreObject(line);
    const int huge = 0x7FFFFFFF;
    std::memcpy(bytes.data() + 48 + 4, &huge, 4); // The count after the base block and the version word.
    CPLine copy;
    EXPECT_EQ(CArchiveException::endOfFile, Restore(copy, bytes));
    EXPECT_EQ(2, copy.GetVertexCount());
    EXPECT_EQ(2, copy.GetPointList()->GetSize());
    EXPECT_EQ(1000.0f, copy.HitTest(CGePoint2d(3, 2000)));
}

TEST(CurvesStream, WhatIsReadOverALongerPolylineIsAllThatIsLeft) {
    struct Lists : CPLine {
        using CPLine::m_ParmMsgList;
        using CPLine::m_ParmNameList;
        using CPLine::m_SegPenColorList;
        using CPLine::m_SegPenFlagList;

        std::vector<INT_PTR> Sizes() {
            return {m_PointList.GetSize(),   m_BulgeList.GetSize(),       m_ParmNameList.GetSize(),
                    m_ParmMsgList.GetSize(), m_SegPenColorList.GetSize(), m_SegPenFlagList.GetSize()};
        }
        void Fill() {
            for (int i = 0; i < 4; ++i) {
                AddPoint(CGePoint2d(i, 10), 0.5);
                SetSLPenColor(i, 0x123456);
                SetSLineInfo(i, L"name", L"info");
            }
            SetPoint(4, CGePoint2d(9, 9)); // In the lists, and not counted.
        }
    };
    CPLine shorter;
    shorter.SetPenColor(0x654321);
    shorter.AddPoint(CGePoint2d(1, 2), 0.25);
    shorter.AddPoint(CGePoint2d(3, 4), 0.0);
    const Bytes bytes = StoreObject(shorter);
    Lists line;
    line.Fill();
    EXPECT_EQ(std::vector<INT_PTR>(6, 5), line.Sizes());
    EXPECT_EQ(-1, Restore(line, bytes));
    EXPECT_EQ(2, line.GetVertexCount());
    EXPECT_EQ(std::vector<INT_PTR>(6, 2), line.Sizes());
    EXPECT_EQ(bytes, StoreObject(line));
    EXPECT_EQ(0u, line.m_SegPenFlagList[0]);
    EXPECT_EQ(0x654321u, line.m_SegPenColorList[1]);
    EXPECT_TRUE(line.m_ParmNameList[0].IsEmpty());
    EXPECT_TRUE(line.m_ParmMsgList[1].IsEmpty());
    // Cut within the second vertex, which has 24 bytes of numbers and two empty texts of one byte each.
    Lists cut;
    cut.Fill();
    EXPECT_EQ(CArchiveException::endOfFile, Restore(cut, Bytes(bytes.begin(), bytes.end() - 20)));
    EXPECT_EQ(1, cut.GetVertexCount());
    EXPECT_EQ(std::vector<INT_PTR>(6, 1), cut.Sizes());
    // Cut before the count.
    Lists empty;
    empty.Fill();
    EXPECT_EQ(CArchiveException::endOfFile, Restore(empty, Bytes(bytes.begin(), bytes.begin() + 50)));
    EXPECT_EQ(0, empty.GetVertexCount());
    EXPECT_EQ(std::vector<INT_PTR>(6, 0), empty.Sizes());
}

TEST(CurvesStream, EveryPrefixOfEveryGoldenStreamLoadsWithoutAFault) {
    for (const std::string& name : GoldenNames()) {
        const Bytes golden = ReadTestData(name);
        for (size_t size = 1; size < golden.size(); ++size) {
            LoneDocument lone;
            ASSERT_EQ(CArchiveException::endOfFile, lone.LoadRaw(Bytes(golden.begin(), golden.begin() + size)))
                << name << " cut to " << size;
        }
    }
}

namespace {

// Puts an object through everything that a view does with it. What may raise the invalid-argument exception may; the
// drawing of what is known to end in a message is left out.
void Exercise(CDrawable& object, DrawStage& stage) {
    const auto attempt = [](auto&& code) {
        try {
            code();
        } catch (CInvalidArgException* e) {
            e->Delete();
        }
    };
    const CGePoint2d p(3, 4);
    CGePointArray points;
    CGePoint2d min;
    CGePoint2d max;
    object.HitTest(p);
    EXPECT_EQ(1, object.GetClosetPt(p, points));
    object.getGripPoints(points, 7);
    attempt([&] { object.GetRect(&stage.tran, min, max); });
    attempt([&] {
        PropertyList rows;
        object.GetProperty(rows.list);
        object.SetProperty(rows.list);
    });
    auto* line = DYNAMIC_DOWNCAST(CPLine, &object);
    const bool showsBox =
        object.GetLayer() < 0 || (line != nullptr && line->IsClosed() != 0 && line->GetPointList()->IsEmpty());
    if (!showsBox) {
        stage.dc.Clear();
        object.Draw(&stage.dc, &stage.geometry);
    }
    for (int grip = 0; grip < 5; ++grip) {
        attempt([&] { MoveGrip(object, grip, 1.5, -2.5); });
    }
    object.transformBy(CGeMatrix2d::rotation(0.5, p));
}

} // namespace

TEST(CurvesStream, MutatedBytesNeverBreakOut) {
    std::mt19937 random(20081);
    std::vector<Bytes> goldens;
    for (const std::string& name : GoldenNames()) {
        goldens.push_back(ReadTestData(name));
    }
    const int extremes[] = {0, 1, -1, 127, 255, 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, INT_MIN, 0x7FF00000, 0x7F800000};
    DrawStage stage;
    stage.dc.SetExecution(false);
    LoneDocument lone;
    int loaded = 0;
    for (int round = 0; round < kRounds; ++round) {
        Bytes bytes = goldens[random() % goldens.size()];
        for (unsigned i = random() % 3; i < 3; ++i) {
            // After the version word, a change of which would end in a message.
            const size_t at = 4 + random() % (bytes.size() - 4);
            if (random() % 2 == 0) {
                bytes[at] = static_cast<BYTE>(random());
            } else {
                const int value = extremes[random() % 12];
                std::memcpy(bytes.data() + at, &value, std::min<size_t>(4, bytes.size() - at));
            }
        }
        if (random() % 4 == 0) {
            bytes.resize(4 + random() % (bytes.size() - 3));
        }
        lone.LoadRaw(bytes);
        for (INT_PTR i = 0; i < lone.Objects().GetSize(); ++i) {
            Exercise(*lone.Objects()[i], stage);
            ++loaded;
        }
    }
    EXPECT_GT(loaded, kRounds / 5) << "most mutations should still load something";
}
