// Streams of texts, parameter texts and labels: every schema and version word, round trips, and what streams must not
// do.

#include "support/TestData.h"
#include "support/TextObjects.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

const char* const kFiles[] = {
    "text_schema0",  "text_schema1",   "text_schema2",           "text_schema3",           "text_schema4",
    "text_schema5",  "text_schema6",   "text_version5",          "text_version7",          "text_onebyte",
    "text_narrow",   "parm_schema1",   "parm_schema2",           "parm_schema3",           "parm_schema4",
    "parm_schema5",  "parm_schema6",   "parm_version5",          "parm_schema6_version5",  "parm_version9",
    "parm_onebyte",  "label_version4", "label_version5",         "label_version6",         "label_version7",
    "label_schema1", "label_schema6",  "label_schema1_version5", "label_schema1_version4", "texts_mixed"};

// The one object of a golden stream.
template <typename Kind>
class Loaded {
public:
    explicit Loaded(const std::string& name) {
        EXPECT_EQ(-1, m_document.LoadRaw(ReadTestData(name + ".nrv"))) << name;
        EXPECT_EQ(1, m_document.Objects().GetSize()) << name;
    }
    Kind& Get() {
        CDrawable* object = m_document.Objects().GetAt(0);
        EXPECT_EQ(RUNTIME_CLASS(Kind), object->GetRuntimeClass());
        return *static_cast<Kind*>(object);
    }
    Kind* operator->() { return &Get(); }
    Bytes Store() { return m_document.Store(); }

private:
    LoneDocument m_document;
};

// The value of a row, for fields that have no accessor.
const COleVariant RowOf(CDrawable& object, int index) {
    const Rows rows(object);
    return rows.list.GetRow(index)->GetValue();
}

float AngleOf(CText& text) {
    return RowOf(text, 6).fltVal;
}

CString TextRow(CDrawable& object, int index) {
    return CString(RowOf(object, index).bstrVal);
}

// What all files of texts have.
void ExpectText(CText& text, LPCTSTR value) {
    EXPECT_EQ(0x00302010u, text.GetPenColor());
    EXPECT_EQ(CString(value), text.GetText());
    EXPECT_EQ(CString(L"黑体"), TextRow(text, 9));
    EXPECT_EQ(10.5, text.GetPos().x);
    EXPECT_EQ(-20.25, text.GetPos().y);
    EXPECT_EQ(12.5f, text.GetTextHeight());
    EXPECT_EQ(80.25f, text.GetTextWide());
    EXPECT_EQ(1.25f, text.GetOffWide());
}

// What all files of parameters have.
void ExpectParm(CTextParm& parm) {
    ExpectText(parm, L"12.5");
    EXPECT_EQ(CString(L"参数1"), parm.GetParmName());
    EXPECT_EQ(4, parm.GetParmType());
    EXPECT_EQ(CString(L"[0-9]*"), parm.GetParmRegularExp());
    EXPECT_EQ(CString(L"默认"), TextRow(parm, 15));
    EXPECT_EQ(CString(L"说明"), parm.GetParmDes());
}

void ExpectLines(CKXVectorLabel& label) {
    EXPECT_TRUE(label.GetLeftLabelStartPt() == CGePoint2d(1, 2));
    EXPECT_TRUE(label.GetLeftLabelEntPt() == CGePoint2d(3, 4));
    EXPECT_TRUE(label.GetRightLabelStartPt() == CGePoint2d(5, 6));
    EXPECT_TRUE(label.GetRightLabelEndPt() == CGePoint2d(7.5, 8.25));
    EXPECT_EQ(9.0, label.GetLabelLength());
    EXPECT_EQ(0.5, label.GetLabelWidth());
    EXPECT_EQ(11.0, label.GetTextHoleWidth());
    EXPECT_FALSE(label.GetHasTextHole());
    EXPECT_EQ(2, label.GetLockMode());
}

// Serialize by a direct call, outside ReadObject.
void Restore(CDrawable& object, Bytes bytes) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load);
    object.Serialize(ar);
    EXPECT_TRUE(ar.IsBufferEmpty()) << "all of it is read";
}

// Puts an int32 into bytes.
void Poke(Bytes& bytes, size_t at, int value) {
    ASSERT_LE(at + 4, bytes.size());
    std::memcpy(&bytes[at], &value, 4);
}

constexpr size_t kBaseSize = 48; // Both version words and the fields of every object.

} // namespace

// ---- CText ---------------------------------------------------------------------------------------------------------

TEST(TextStream, TheCurrentFormHasEveryField) {
    Loaded<CText> text("text_schema5");
    ExpectText(text.Get(), L"文字Ab");
    EXPECT_EQ(0.75f, text->GetTextRatio());
    EXPECT_EQ(45.5f, AngleOf(text.Get()));
}

TEST(TextStream, VersionsOtherThanSixHaveNoRatio) {
    for (const char* name : {"text_version5", "text_version7"}) {
        Loaded<CText> text(name);
        ExpectText(text.Get(), L"文字Ab");
        EXPECT_EQ(0.0f, text->GetTextRatio()) << name;
        EXPECT_EQ(45.5f, AngleOf(text.Get())) << name;
    }
}

TEST(TextStream, OtherSchemasHaveNeitherVersionNorRatioNorAngle) {
    for (const char* name :
         {"text_schema0", "text_schema1", "text_schema2", "text_schema3", "text_schema4", "text_schema6"}) {
        Loaded<CText> text(name);
        ExpectText(text.Get(), L"文字Ab");
        EXPECT_EQ(0.0f, text->GetTextRatio()) << name;
        EXPECT_EQ(0.0f, AngleOf(text.Get())) << name;
    }
}

TEST(TextStream, TextsOfOneByteACharacterAreConverted) {
    Loaded<CText> text("text_onebyte");
    ExpectText(text.Get(), L"文字Ab");
    Loaded<CTextParm> parm("parm_onebyte");
    ExpectParm(parm.Get());
}

TEST(TextStream, ABoxNarrowerThanTheFontIsHighIsRepairedOnLoading) {
    Loaded<CText> text("text_narrow");
    EXPECT_EQ(50.0f, text->GetTextHeight());
    EXPECT_EQ(150.0f, text->GetTextWide());
}

TEST(TextStream, TheRepairIsNotDoneOnStoringAndRunsWhenACommandRestores) {
    OpenText text;
    text.SetTextHeight(50.0f);
    text.SetTextWide(30.0f);
    const Bytes bytes = StoreObject(text);
    EXPECT_EQ(30.0f, text.GetTextWide());
    Restore(text, bytes);
    EXPECT_EQ(150.0f, text.GetTextWide());
    text.SetTextWide(50.0f);
    Restore(text, StoreObject(text));
    EXPECT_EQ(50.0f, text.GetTextWide()) << "equal is wide enough";
}

TEST(TextStream, OutsideAnObjectRecordTheVersionIsNotLookedAt) {
    OpenText text;
    text.SetTextRatio(0.5f);
    text.SetAngle(30.0f);
    Bytes bytes = StoreObject(text);
    Poke(bytes, kBaseSize, 5);
    OpenText copy;
    Restore(copy, bytes);
    EXPECT_EQ(0.5f, copy.GetTextRatio());
    EXPECT_EQ(30.0f, copy.m_Angle);
}

TEST(TextStream, AnOldFormSetsTheAngleOfAnObjectThatHasOne) {
    // The archive's schema is the one of the record, so an object that is read again into the same object is turned
    // back.
    Loaded<CText> text("text_schema5");
    ASSERT_EQ(45.5f, AngleOf(text.Get()));
    Bytes old = ReadTestData("text_schema2.nrv");
    old.erase(old.begin(), old.begin() + 38 + 6 + 5);
    CMemFile file(old.data(), static_cast<UINT>(old.size()));
    CArchive ar(&file, CArchive::load);
    ar.SetObjectSchema(2);
    text->Serialize(ar);
    EXPECT_EQ(0.0f, AngleOf(text.Get()));
    EXPECT_EQ(0.75f, text->GetTextRatio()) << "the ratio is left alone";
}

TEST(TextStream, ColoursAndModesOfTheBackgroundAndTheMeasureAreNotStored) {
    OpenText text;
    const size_t size = StoreObject(text).size();
    // 48, the version, no text (4 bytes), two characters (8), two doubles and six floats.
    EXPECT_EQ(48u + 4 + 4 + 8 + 16 + 24, size);
    text.SetBKColor(5);
    text.SetBKMode(OPAQUE);
    text.m_MinCalHeight = 3.0f;
    const Bytes bytes = StoreObject(text);
    EXPECT_EQ(size, bytes.size());
    OpenText copy;
    Restore(copy, bytes);
    EXPECT_EQ(0xFFFFFFul, copy.GetBKColor());
    EXPECT_EQ(TRANSPARENT, copy.GetBKMode());
    EXPECT_EQ(0.0f, copy.m_MinCalHeight);
}

// ---- CTextParm -----------------------------------------------------------------------------------------------------

TEST(TextParmStream, TheCurrentFormHasEveryField) {
    for (const char* name : {"parm_schema5", "parm_version9"}) {
        Loaded<CTextParm> parm(name);
        ExpectParm(parm.Get());
        EXPECT_EQ(0.75f, parm->GetTextRatio()) << name;
        EXPECT_EQ(CString(L"a=b"), parm->GetParmModifedLinkExp()) << name;
        EXPECT_EQ(0, parm->GetNeedEditBox()) << name;
        EXPECT_EQ(CString(L"信息"), parm->GetMsgInfo()) << name;
    }
}

TEST(TextParmStream, VersionFiveHasNeitherEditFlagNorInformation) {
    Loaded<CTextParm> parm("parm_version5");
    ExpectParm(parm.Get());
    EXPECT_EQ(CString(L"a=b"), parm->GetParmModifedLinkExp());
    EXPECT_EQ(1, parm->GetNeedEditBox());
    EXPECT_TRUE(parm->GetMsgInfo().IsEmpty());
}

TEST(TextParmStream, SchemaTwoHasTheLinkAndTheOthersBelowFiveDoNot) {
    {
        Loaded<CTextParm> parm("parm_schema2");
        ExpectParm(parm.Get());
        EXPECT_EQ(CString(L"a=b"), parm->GetParmModifedLinkExp());
        EXPECT_EQ(1, parm->GetNeedEditBox());
    }
    for (const char* name : {"parm_schema1", "parm_schema3", "parm_schema4"}) {
        Loaded<CTextParm> parm(name);
        ExpectParm(parm.Get());
        EXPECT_TRUE(parm->GetParmModifedLinkExp().IsEmpty()) << name;
        EXPECT_EQ(1, parm->GetNeedEditBox()) << name;
    }
}

TEST(TextParmStream, ASchemaAboveFiveIsCurrentForTheParameterAndOldForTheTextInIt) {
    {
        Loaded<CTextParm> parm("parm_schema6");
        ExpectParm(parm.Get());
        EXPECT_EQ(0.0f, parm->GetTextRatio());
        EXPECT_EQ(0, parm->GetNeedEditBox());
        EXPECT_EQ(CString(L"信息"), parm->GetMsgInfo());
    }
    Loaded<CTextParm> parm("parm_schema6_version5");
    ExpectParm(parm.Get());
    EXPECT_EQ(CString(L"a=b"), parm->GetParmModifedLinkExp());
    EXPECT_EQ(1, parm->GetNeedEditBox());
}

TEST(TextParmStream, OutsideAnObjectRecordVersionFiveStillEndsEarly) {
    OpenParm parm;
    parm.SetNeedEditBox(0);
    parm.SetParmModifedLinkExp(L"x");
    Bytes bytes = StoreObject(parm);
    const size_t own = StoreObject(*std::make_unique<OpenText>()).size();
    Poke(bytes, own, 5);
    bytes.resize(bytes.size() - 8); // The flag and an empty text.
    OpenParm copy;
    Restore(copy, bytes);
    EXPECT_EQ(1, copy.GetNeedEditBox());
    EXPECT_EQ(CString(L"x"), copy.GetParmModifedLinkExp());
}

// ---- CKXVectorLabel ------------------------------------------------------------------------------------------------

TEST(VectorLabelStream, VersionsFromSixOnHaveEveryField) {
    for (const char* name : {"label_version6", "label_version7"}) {
        Loaded<CKXVectorLabel> label(name);
        ExpectLines(label.Get());
        EXPECT_EQ(1, label->GetTextShow()) << name;
        // The figure at (10.5, -20.25), 300 wide: its box ends at 310 and begins at 12.
        EXPECT_EQ(0.0f, label->HitTest(CGePoint2d(309, -20))) << name;
        EXPECT_NE(0.0f, label->HitTest(CGePoint2d(310, -20))) << name;
    }
}

TEST(VectorLabelStream, VersionFiveEndsBeforeTheFigure) {
    for (const char* name : {"label_version5", "label_schema1_version5"}) {
        Loaded<CKXVectorLabel> label(name);
        ExpectLines(label.Get());
        EXPECT_EQ(0, label->GetTextShow()) << name;
        EXPECT_NE(0.0f, label->HitTest(CGePoint2d(309, -20))) << name;
    }
}

TEST(VectorLabelStream, AVersionBelowFiveHasNothingElse) {
    for (const char* name : {"label_version4", "label_schema1_version4"}) {
        Loaded<CKXVectorLabel> label(name);
        EXPECT_EQ(0x00302010u, label->GetPenColor()) << name;
        EXPECT_TRUE(label->GetLeftLabelEntPt() == CGePoint2d()) << name;
        EXPECT_EQ(3.0, label->GetLabelLength()) << name;
        EXPECT_TRUE(label->GetHasTextHole()) << name;
        EXPECT_EQ(1, label->GetLockMode()) << name;
    }
}

TEST(VectorLabelStream, OtherSchemasHaveTheVersionToo) {
    for (const char* name : {"label_schema1", "label_schema6"}) {
        Loaded<CKXVectorLabel> label(name);
        ExpectLines(label.Get());
        EXPECT_EQ(1, label->GetTextShow()) << name;
        EXPECT_EQ(0.0f, label->HitTest(CGePoint2d(309, -20))) << name << ": the figure in the form of that schema";
    }
}

TEST(VectorLabelStream, OutsideAnObjectRecordTheVersionIsNotLookedAt) {
    OpenLabel label;
    label.SetTextShow(7);
    label.SetLockMode(9);
    Bytes bytes = StoreObject(label);
    Poke(bytes, kBaseSize, 4);
    OpenLabel copy;
    Restore(copy, bytes);
    EXPECT_EQ(9, copy.GetLockMode());
    EXPECT_EQ(7, copy.GetTextShow());
}

TEST(VectorLabelStream, AnyByteThatIsNotZeroIsAGap) {
    OpenLabel label;
    label.SetHasTextHole(false);
    Bytes bytes = StoreObject(label);
    const size_t at = kBaseSize + 4 + 64 + 24;
    ASSERT_EQ(0, bytes[at]);
    bytes[at] = 0x80;
    OpenLabel copy;
    Restore(copy, bytes);
    EXPECT_TRUE(copy.GetHasTextHole());
    label.SetHasTextHole(true);
    EXPECT_EQ(1, StoreObject(label)[at]);
}

TEST(VectorLabelStream, KindsOfPointsAreNotStored) {
    OpenLabel label;
    CGePoint2d marked(1, 2);
    marked.type = 4;
    label.SetLeftLabel(marked, marked);
    Restore(label, StoreObject(label));
    EXPECT_EQ(4, label.GetLeftLabelStartPt().type) << "and what the object has stays";
    OpenLabel copy;
    Restore(copy, StoreObject(label));
    EXPECT_EQ(1, copy.GetLeftLabelStartPt().type);
}

TEST(VectorLabelStream, TheFigureThatWasDrawnIsStoredAndItsBoxRepaired) {
    Scene scene;
    OpenLabel label;
    label.SetLeftLabel(CGePoint2d(100, 100), CGePoint2d(100, 200));
    label.SetRightLabel(CGePoint2d(300, 100), CGePoint2d(300, 200));
    label.SetTextShow(1);
    Canvas canvas;
    label.Draw(&canvas.DC(), &scene.geometry);
    // From (160, 300), 20 wide. Its height of 100 makes that 300 when it is loaded; without a measure it has no depth.
    ASSERT_EQ(0.0f, label.HitTest(CGePoint2d(170, 300)));
    ASSERT_NE(0.0f, label.HitTest(CGePoint2d(450, 300)));
    OpenLabel copy;
    Restore(copy, StoreObject(label));
    EXPECT_EQ(0.0f, copy.HitTest(CGePoint2d(450, 300)));
}

// ---- All of them ---------------------------------------------------------------------------------------------------

TEST(TextStream, CurrentStreamsAreStoredByteForByteAsTheyWere) {
    for (const char* name : {"text_schema5", "parm_schema5", "label_version6", "texts_mixed"}) {
        const Bytes golden = ReadTestData(std::string(name) + ".nrv");
        LoneDocument document;
        ASSERT_EQ(-1, document.LoadRaw(golden)) << name;
        EXPECT_EQ(golden, document.Store()) << name;
    }
}

TEST(TextStream, OlderStreamsAreStoredInTheCurrentForm) {
    for (const char* name : kFiles) {
        LoneDocument old;
        ASSERT_EQ(-1, old.LoadRaw(ReadTestData(std::string(name) + ".nrv"))) << name;
        const Bytes stored = old.Store();
        LoneDocument again;
        ASSERT_EQ(-1, again.LoadRaw(stored)) << name;
        EXPECT_EQ(stored, again.Store()) << name;
        EXPECT_EQ(5, stored[40]) << name << ": the schema of its class";
    }
}

TEST(TextStream, EveryPrefixEndsInAnArchiveException) {
    for (const char* name : kFiles) {
        const Bytes golden = ReadTestData(std::string(name) + ".nrv");
        for (size_t size = 38; size < golden.size(); ++size) {
            LoneDocument document;
            EXPECT_EQ(
                CArchiveException::endOfFile,
                document.LoadRaw(Bytes(golden.begin(), golden.begin() + static_cast<Bytes::difference_type>(size))))
                << name << " " << size;
        }
    }
}

TEST(TextStream, MutationsDoNoHarm) {
    std::mt19937 random(20240607);
    for (const char* name : kFiles) {
        const Bytes golden = ReadTestData(std::string(name) + ".nrv");
        for (int round = 0; round < 1000; ++round) {
            Bytes bytes = golden;
            for (int i = 0; i < 1 + round % 4; ++i) {
                const size_t at = 38 + random() % (bytes.size() - 38);
                bytes[at] = round % 3 == 0 ? static_cast<BYTE>(0xFF) : static_cast<BYTE>(random());
            }
            LoneDocument document;
            document.LoadRaw(bytes);
        }
    }
}

TEST(TextStream, ALengthBeyondTheStreamTakesNoMemoryOfThatSize) {
    Bytes golden = ReadTestData("text_schema5.nrv");
    const size_t at = 38 + 11 + kBaseSize + 4; // The text's prefix.
    ASSERT_EQ(0xFF, golden[at]);
    ASSERT_EQ(4, golden[at + 3]);
    for (const Bytes& length :
         {Bytes{0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0x7F}, Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
          Bytes{0xFF, 0xFD, 0xFF}, Bytes{0xFE}}) {
        Bytes bytes(golden.begin(), golden.begin() + static_cast<Bytes::difference_type>(at) + 3);
        bytes.insert(bytes.end(), length.begin(), length.end());
        bytes.insert(bytes.end(), golden.begin() + static_cast<Bytes::difference_type>(at) + 4, golden.end());
        const DWORD start = ::GetTickCount();
        LoneDocument document;
        EXPECT_NE(-1, document.LoadRaw(bytes));
        EXPECT_LT(::GetTickCount() - start, 2000u);
        EXPECT_EQ(0, document.Objects().GetSize());
    }
}

TEST(TextStream, LongTextsOfEveryLengthFormComeBack) {
    for (int length : {0, 1, 254, 255, 256, 65533, 65534, 100000}) {
        OpenText text;
        CString value(L'长', length);
        text.SetText(value);
        OpenText copy;
        Restore(copy, StoreObject(text));
        EXPECT_EQ(value, copy.GetText()) << length;
    }
    OpenText text;
    text.SetText(L"\xD840\xDC40\xDC00z"); // A pair, and a half that is alone.
    OpenText copy;
    Restore(copy, StoreObject(text));
    EXPECT_EQ(CString(L"\xD840\xDC40\xDC00z"), copy.GetText());
}
