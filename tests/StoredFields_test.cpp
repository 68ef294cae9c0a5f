// Fields in the stream: what a stream that ends early leaves, and how a class gets a further field later.

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "LayerManager.h"
#include "Line.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorLabel.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace {

Bytes Stored(CSerialable& object) {
    CMemFile file(1024);
    {
        CArchive ar(&file, CArchive::store);
        object.Serialize(ar);
    }
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// Whether the object could be read from so many of the bytes.
bool Reads(CSerialable& object, const Bytes& bytes, size_t length) {
    Bytes block(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
    block.reserve(length + 1);
    CMemFile file;
    file.Attach(block.data(), static_cast<UINT>(length));
    CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete);
    try {
        object.Serialize(ar);
    } catch (CArchiveException* e) {
        EXPECT_EQ(CArchiveException::endOfFile, e->m_cause);
        e->Delete();
        return false;
    }
    return true;
}

// The fields of a class in the stream. A number is the size of a numeric field; what is only a letter keeps its bytes
// in the test: v a version word, c a count, b a flag of one byte, s a text of less than 255 characters.
const char* const kBase = "v v 2 4 2 4 2 4 2 4 4 4 4 4 ";
const char* const kCircle = "v 8 8 8 4 s s 4 ";
const char* const kText = "v s s 8 8 4 4 4 4 4 4 ";

struct Field {
    size_t begin;
    size_t end;
};

// The numeric fields of an object that is stored so; all others are passed over.
std::vector<Field> NumbersIn(const Bytes& bytes, const std::string& layout) {
    std::vector<Field> numbers;
    std::istringstream words(layout);
    std::string word;
    size_t at = 0;
    while (words >> word) {
        const bool number = word[0] >= '0' && word[0] <= '9';
        size_t size = number ? static_cast<size_t>(word[0] - '0') : word == "b" ? 1 : 4;
        if (word == "s") {
            size += 2u * bytes.at(at + 3); // FF FE FF, then the count of 16-bit characters.
        }
        if (number) {
            numbers.push_back({at, at + size});
        }
        at += size;
    }
    EXPECT_EQ(bytes.size(), at) << layout;
    return numbers;
}

// Cuts the stream of an object at every byte: each field of a new object that reads it is then wholly as the stream
// has it, or wholly as it was.
template <class Object>
void ExpectWholeFields(const std::string& layout) {
    SCOPED_TRACE(Object::GetThisClass()->m_lpszClassName);
    Object fresh;
    const Bytes before = Stored(fresh);
    const std::vector<Field> numbers = NumbersIn(before, layout);
    Bytes stream = before;
    for (const Field& field : numbers) {
        std::fill(stream.begin() + static_cast<std::ptrdiff_t>(field.begin),
                  stream.begin() + static_cast<std::ptrdiff_t>(field.end), static_cast<BYTE>(0x22));
    }
    const auto same = [](const Field& field, const Bytes& a, const Bytes& b) {
        return std::equal(a.begin() + static_cast<std::ptrdiff_t>(field.begin),
                          a.begin() + static_cast<std::ptrdiff_t>(field.end),
                          b.begin() + static_cast<std::ptrdiff_t>(field.begin));
    };
    for (size_t cut = 0; cut <= stream.size(); ++cut) {
        Object object;
        EXPECT_EQ(cut == stream.size(), Reads(object, stream, cut)) << cut;
        const Bytes after = Stored(object);
        ASSERT_EQ(before.size(), after.size()) << cut;
        for (const Field& field : numbers) {
            const bool kept = same(field, after, before);
            const bool taken = field.end <= cut && same(field, after, stream);
            EXPECT_TRUE(kept || taken) << "the field at " << field.begin << " of a stream of " << cut << " bytes";
            EXPECT_TRUE(cut < stream.size() || taken) << "the field at " << field.begin;
        }
    }
}

// A mark with a radius and, since its second version, a weight. `newest` is the version of the program: a program from
// before the second version reads only the first.
class CMark : public CDrawable {
    DECLARE_SERIAL(CMark)
public:
    void Serialize(CArchive& ar) override {
        CDrawable::Serialize(ar);
        if (ar.IsStoring()) {
            ar << newest << m_Radius;
            if (newest >= 2) {
                ar << m_Weight;
            }
            return;
        }
        int version = 0;
        ar >> version;
        if (version > newest) {
            AfxThrowArchiveException(CArchiveException::badSchema);
        }
        ar >> m_Radius;
        if (version >= 2) {
            ar >> m_Weight;
        }
    }
    void SetNumber(int number) { m_ID = number; }
    static int newest;
    double m_Radius = 1.0;
    float m_Weight = 0.75f;
};
int CMark::newest = 2;

IMPLEMENT_SERIAL(CMark, CDrawable, VERSIONABLE_SCHEMA | kCurrentSchema)

CMark* OnlyMark(LoneDocument& lone) {
    return lone.Objects().GetSize() == 1 ? DYNAMIC_DOWNCAST(CMark, lone.Objects()[0]) : nullptr;
}

// A stream with one mark of the given radius and weight, as a program of that age stores it.
Bytes MarkStream(int newest, double radius, float weight) {
    CMark::newest = newest;
    LoneDocument lone;
    auto* mark = new CMark;
    mark->m_Radius = radius;
    mark->m_Weight = weight;
    mark->SetNumber(4711);
    lone.document.AddDrawAobject(mark);
    Bytes bytes = lone.Store();
    CMark::newest = 2;
    return bytes;
}

} // namespace

// ---- Streams that end in a field -----------------------------------------------------------------------------------

TEST(StoredFields, AHeaderThatEndsInAFieldLeavesThatFieldAndTheNextOnesAsTheyWere) {
    const Field fields[] = {{4, 8}, {8, 10}, {10, 14}, {14, 22}, {22, 30}, {30, 34}};
    LoneDocument fresh;
    const Bytes before = fresh.Store();
    Bytes stream = before;
    std::fill(stream.begin() + 4, stream.begin() + 34, static_cast<BYTE>(0x22));
    for (size_t cut = 0; cut < stream.size(); ++cut) {
        LoneDocument lone;
        EXPECT_EQ(CArchiveException::endOfFile,
                  lone.LoadRaw(Bytes(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(cut))));
        const Bytes after = lone.Store();
        for (const Field& field : fields) {
            const Bytes& expected = field.end <= cut ? stream : before;
            for (size_t i = field.begin; i < field.end; ++i) {
                EXPECT_EQ(expected[i], after[i]) << "byte " << i << " of a stream of " << cut << " bytes";
            }
        }
    }
}

TEST(StoredFields, AnObjectWhoseStreamEndsInAFieldHasNoHalfReadNumber) {
    const std::string base = kBase;
    ExpectWholeFields<CDrawable>(base);
    ExpectWholeFields<CLine>(base + "v 8 8 8 8 s s 4");
    ExpectWholeFields<CPLine>(base + "v c 4 4 4 s s");
    ExpectWholeFields<CCircle>(base + kCircle);
    ExpectWholeFields<CArc>(base + kCircle + "v 8 8");
    ExpectWholeFields<CCenterPoint>(base + kCircle);
    ExpectWholeFields<CCombRect>(base + "s s 8 8 8 8");
    ExpectWholeFields<CText>(base + kText);
    ExpectWholeFields<CTextParm>(base + kText + "v s 2 s s s s 4 s");
    ExpectWholeFields<CKXVectorLabel>(base + "v 8 8 8 8 8 8 8 8 8 8 8 b 4 4 " + base + kText);
    ExpectWholeFields<CLayerInfo>("v v c 4 4 4 2 4");
}

// ---- A further field, by the recipe in CONTRIBUTING.md -------------------------------------------------------------

TEST(StoredFields, ANewFieldIsStoredAndLoadedWithAHigherVersionWordAndTheSameSchema) {
    const Bytes bytes = MarkStream(2, 2.5, 0.25f);
    // The header, the class record with schema 5 and a name of 5 letters, the base, the version word, both fields.
    ASSERT_EQ(38u + 6 + 5 + 48 + 4 + 8 + 4, bytes.size());
    EXPECT_EQ(5, bytes[40]);
    EXPECT_EQ(2, bytes[38 + 6 + 5 + 48]);
    LoneDocument lone;
    ASSERT_EQ(-1, lone.LoadRaw(bytes));
    CMark* mark = OnlyMark(lone);
    ASSERT_NE(nullptr, mark);
    EXPECT_EQ(2.5, mark->m_Radius);
    EXPECT_EQ(0.25f, mark->m_Weight);
    EXPECT_EQ(4711, mark->GetID());
    EXPECT_EQ(bytes, lone.Store());
}

TEST(StoredFields, AStreamFromBeforeTheNewFieldKeepsItsOtherFieldsAndGivesTheNewOneItsDefault) {
    const Bytes bytes = MarkStream(1, 2.5, 0.25f);
    ASSERT_EQ(38u + 6 + 5 + 48 + 4 + 8, bytes.size());
    EXPECT_EQ(1, bytes[38 + 6 + 5 + 48]);
    LoneDocument lone;
    ASSERT_EQ(-1, lone.LoadRaw(bytes));
    CMark* mark = OnlyMark(lone);
    ASSERT_NE(nullptr, mark);
    EXPECT_EQ(2.5, mark->m_Radius);
    EXPECT_EQ(0.75f, mark->m_Weight);
    EXPECT_EQ(4711, mark->GetID());
    // Stored again it has the new form.
    EXPECT_EQ(MarkStream(2, 2.5, 0.75f), lone.Store());
}

TEST(StoredFields, AnOlderProgramRefusesTheNewFormInsteadOfReadingOnInTheWrongPlace) {
    const Bytes bytes = MarkStream(2, 2.5, 0.25f);
    CMark::newest = 1;
    LoneDocument lone;
    EXPECT_EQ(CArchiveException::badSchema, lone.LoadRaw(bytes));
    EXPECT_EQ(0, lone.Objects().GetSize());
    CMark::newest = 2;
}

TEST(StoredFields, ARestorePointOfTheNewFormIsReadOutsideReadObject) {
    CMark mark;
    mark.m_Radius = 2.5;
    mark.m_Weight = 0.25f;
    const Bytes bytes = Stored(mark);
    CMark back;
    ASSERT_TRUE(Reads(back, bytes, bytes.size()));
    EXPECT_EQ(2.5, back.m_Radius);
    EXPECT_EQ(0.25f, back.m_Weight);
}
