// CArchive's object format, byte by byte, and what it does with streams that are not so. Layer 16: tests.
#include "support/AfxCaught.h"

#include <afxcoll.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

typedef std::vector<BYTE> Bytes;

// A point with one version word; it records the schemas that it was given.
class CDot : public CObject {
    DECLARE_SERIAL(CDot)
public:
    CDot(int v = 0) : value(v) { ++alive; }
    ~CDot() override { --alive; }
    void Serialize(CArchive& ar) override {
        CObject::Serialize(ar);
        seen.push_back(ar.GetObjectSchema());
        EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu); // it is given once
        if (ar.IsStoring()) {
            ar << value;
        } else {
            ar >> value;
        }
    }
    int value;
    static int alive;
    static std::vector<UINT> seen;
};
IMPLEMENT_SERIAL(CDot, CObject, VERSIONABLE_SCHEMA | 5)
int CDot::alive = 0;
std::vector<UINT> CDot::seen;

// A node that owns nothing and points to another, perhaps to itself.
class CLink : public CObject {
    DECLARE_SERIAL(CLink)
public:
    ~CLink() override {
        if (owns) {
            delete next;
        }
    }
    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) {
            ar << next;
        } else {
            ar >> next;
        }
        schemaAfter = ar.GetObjectSchema();
    }
    CObject* next = NULL;
    bool owns = false;
    UINT schemaAfter = 0;
};
IMPLEMENT_SERIAL(CLink, CObject, 2)

// Owns the dot that it reads, and breaks off after it.
class CBreakingOwner : public CObject {
    DECLARE_SERIAL(CBreakingOwner)
public:
    ~CBreakingOwner() override { delete dot; }
    void Serialize(CArchive& ar) override {
        ar >> dot;
        AfxThrowUserException();
    }
    CDot* dot = NULL;
};
IMPLEMENT_SERIAL(CBreakingOwner, CObject, 1)

class CFixed : public CObject {
    DECLARE_SERIAL(CFixed)
public:
    void Serialize(CArchive&) override {}
};
IMPLEMENT_SERIAL(CFixed, CObject, 3)

class CBreaking : public CObject {
    DECLARE_SERIAL(CBreaking)
public:
    void Serialize(CArchive&) override { AfxThrowUserException(); }
};
IMPLEMENT_SERIAL(CBreaking, CObject, 1)

class CNotStored : public CObject {
    DECLARE_DYNCREATE(CNotStored)
};
IMPLEMENT_DYNCREATE(CNotStored, CObject)

void Append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes Joined(std::initializer_list<Bytes> parts) {
    Bytes bytes;
    for (const Bytes& part : parts) {
        Append(bytes, part);
    }
    return bytes;
}

// A class record: tag, schema, length, name.
Bytes Record(const std::string& name, int schema) {
    const Bytes head = {0xFF,
                        0xFF,
                        static_cast<BYTE>(schema),
                        static_cast<BYTE>(schema >> 8),
                        static_cast<BYTE>(name.size()),
                        static_cast<BYTE>(name.size() >> 8)};
    return Joined({head, Bytes(name.begin(), name.end())});
}

template <typename F>
Bytes Stored(F code) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    code(ar);
    ar.Close();
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

template <typename F>
void Load(const Bytes& bytes, F code) {
    Bytes copy(bytes);
    CMemFile file;
    BYTE none = 0;
    file.Attach(copy.empty() ? &none : copy.data(), static_cast<UINT>(copy.size()), 0);
    CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete);
    code(ar);
}

// Reads this many objects and frees them; the cause of the failure, or -1.
int Cause(const Bytes& bytes, int objects, const CRuntimeClass* wanted = NULL) {
    int cause = -1;
    Load(bytes, [&](CArchive& ar) {
        std::vector<std::unique_ptr<CObject>> read;
        cause = ArchiveCause([&] {
            for (int i = 0; i < objects; ++i) {
                CObject* ob = ar.ReadObject(wanted);
                for (const auto& known : read) {
                    if (known.get() == ob) {
                        ob = NULL; // a back-reference
                    }
                }
                read.emplace_back(ob);
            }
        });
    });
    return cause;
}

TEST(AfxArchiveObjects, AFirstObjectBringsItsClassAndALaterOneTheClassNumber) {
    CDot a(1), b(2);
    CFixed c;
    const Bytes bytes = Stored([&](CArchive& ar) {
        ar.WriteObject(&a);
        ar.WriteObject(&b);
        ar.WriteObject(NULL);
        ar.WriteObject(&c);
        ar.WriteObject(&a);
        CObject* again = &b;
        ar << again;
    });
    const Bytes expected = {
        0xFF, 0xFF, 5, 0, 4, 0, 'C', 'D', 'o', 't', 1,   0,   0, 0, // class 1, object 2
        0x01, 0x80, 2, 0, 0, 0,                                     // of class 1, object 3
        0,    0,                                                    // none
        0xFF, 0xFF, 3, 0, 6, 0, 'C', 'F', 'i', 'x', 'e', 'd',       // class 4, object 5
        2,    0,                                                    // object 2 again
        3,    0,                                                    // object 3 again
    };
    EXPECT_EQ(bytes, expected);
    Load(bytes, [](CArchive& ar) {
        CDot* first = NULL;
        ar >> first;
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(first->value, 1);
        std::unique_ptr<CObject> second(ar.ReadObject(RUNTIME_CLASS(CDot)));
        EXPECT_EQ(static_cast<CDot*>(second.get())->value, 2);
        EXPECT_EQ(ar.ReadObject(NULL), nullptr);
        std::unique_ptr<CObject> fixed(ar.ReadObject(NULL));
        EXPECT_TRUE(fixed->IsKindOf(RUNTIME_CLASS(CFixed)));
        EXPECT_EQ(ar.ReadObject(NULL), first);
        CObject* again;
        ar >> again;
        EXPECT_EQ(again, second.get());
        EXPECT_EQ(ArchiveCause([&] { ar.ReadObject(NULL); }), CArchiveException::endOfFile);
        delete first;
    });
    EXPECT_EQ(CDot::alive, 2);
}

TEST(AfxArchiveObjects, TheSchemaIsToldOnceDuringAnObjectsSerialize) {
    CDot::seen.clear();
    const Bytes bytes = Joined({Record("CDot", 3), {7, 0, 0, 0}});
    Load(bytes, [](CArchive& ar) {
        EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu);
        std::unique_ptr<CObject> dot(ar.ReadObject(NULL));
        EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu);
    });
    CDot dot;
    Stored([&](CArchive& ar) { ar.WriteObject(&dot); });
    EXPECT_EQ(CDot::seen, (std::vector<UINT>{3, 0xFFFFFFFF}));
}

TEST(AfxArchiveObjects, AnInnerObjectsSchemaGivesWayToTheOuterOne) {
    CDot::seen.clear();
    // Outer CLink of schema 2, inner CDot of schema 4.
    const Bytes bytes = Joined({Record("CLink", 2), Record("CDot", 4), {9, 0, 0, 0}});
    Load(bytes, [](CArchive& ar) {
        std::unique_ptr<CObject> ob(ar.ReadObject(NULL));
        CLink* link = static_cast<CLink*>(ob.get());
        link->owns = true;
        EXPECT_EQ(link->schemaAfter, 2u);
    });
    EXPECT_EQ(CDot::seen, (std::vector<UINT>{4}));
}

TEST(AfxArchiveObjects, TheLatestRecordOfAClassGivesItsSchema) {
    CDot::seen.clear();
    const Bytes dot = {0, 0, 0, 0};
    const Bytes bytes = Joined({Record("CDot", 2),
                                dot,
                                Record("CDot", 5),
                                dot,
                                {0x01, 0x80},
                                dot,
                                {0x03, 0x80},
                                dot,
                                Record("CDot", 1),
                                dot,
                                {0x01, 0x80},
                                dot});
    EXPECT_EQ(Cause(bytes, 6), -1);
    EXPECT_EQ(CDot::seen, (std::vector<UINT>{2, 5, 5, 5, 1, 1}));
    EXPECT_EQ(CDot::alive, 0);
}

TEST(AfxArchiveObjects, AnotherSchemaIsRefusedUnlessTheClassIsVersionable) {
    EXPECT_EQ(Cause(Record("CFixed", 3), 1), -1);
    EXPECT_EQ(Cause(Record("CFixed", 2), 1), CArchiveException::badSchema);
    EXPECT_EQ(Cause(Record("CFixed", 4), 1), CArchiveException::badSchema);
    for (int schema : {0, 1, 4, 6, 0xFFFE, 0xFFFF}) {
        EXPECT_EQ(Cause(Joined({Record("CDot", schema), {0, 0, 0, 0}}), 1), -1);
    }
}

TEST(AfxArchiveObjects, UnknownAndUnfitClassesAreRefused) {
    EXPECT_EQ(Cause(Record("CNoSuchClass", 5), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record("", 5), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record("cdot", 5), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record(std::string("CDot\0", 5), 5), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record("CNotStored", 0xFFFF), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record(std::string(63, 'C'), 5), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record(std::string(64, 'C'), 5), 1), CArchiveException::badClass);
    EXPECT_EQ(Cause({0xFF, 0xFF, 5, 0, 0xFF, 0xFF}, 1), CArchiveException::badClass); // refused by its length alone
    EXPECT_EQ(Cause(Record("CFixed", 3), 1, RUNTIME_CLASS(CDot)), CArchiveException::badClass);
    EXPECT_EQ(Cause(Record("CFixed", 3), 1, RUNTIME_CLASS(CFixed)), -1);
}

TEST(AfxArchiveObjects, NumbersThatWereNeverGivenOutAreRefused) {
    const Bytes dot = Joined({Record("CDot", 5), {0, 0, 0, 0}}); // class 1, object 2
    EXPECT_EQ(Cause({1, 0}, 1), CArchiveException::badIndex);
    EXPECT_EQ(Cause({0xFE, 0x7F}, 1), CArchiveException::badIndex);
    EXPECT_EQ(Cause({0x00, 0x80}, 1), CArchiveException::badIndex); // class number 0
    EXPECT_EQ(Cause({0x01, 0x80}, 1), CArchiveException::badIndex);
    EXPECT_EQ(Cause({0xFE, 0xFF}, 1), CArchiveException::badIndex);
    EXPECT_EQ(Cause(Joined({dot, {3, 0}}), 2), CArchiveException::badIndex);
    EXPECT_EQ(Cause(Joined({dot, {3, 0x80}}), 2), CArchiveException::badIndex);
    EXPECT_EQ(Cause(Joined({dot, {2, 0}}), 2), -1);
    // A class where an object is meant, and the other way round.
    EXPECT_EQ(Cause(Joined({dot, {1, 0}}), 2), CArchiveException::badClass);
    EXPECT_EQ(Cause(Joined({dot, {2, 0x80}}), 2), CArchiveException::badClass);
    // The wide forms.
    EXPECT_EQ(Cause(Joined({dot, {0xFF, 0x7F, 2, 0, 0, 0}}), 2), -1);
    EXPECT_EQ(Cause(Joined({dot, {0xFF, 0x7F, 1, 0, 0, 0x80, 0, 0, 0, 0}}), 2), -1);
    EXPECT_EQ(Cause(Joined({dot, {0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0x7F}}), 2), CArchiveException::badIndex);
    EXPECT_EQ(Cause(Joined({dot, {0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF}}), 2), CArchiveException::badIndex);
    EXPECT_EQ(Cause({0xFF, 0x7F, 0, 0, 0, 0}, 1), -1); // number 0 is the null object in this form too
    // A known object of another kind than requested.
    Load(Joined({dot, {2, 0}}), [](CArchive& ar) {
        std::unique_ptr<CObject> first(ar.ReadObject(NULL));
        EXPECT_EQ(ArchiveCause([&] { ar.ReadObject(RUNTIME_CLASS(CFixed)); }), CArchiveException::badClass);
    });
}

TEST(AfxArchiveObjects, EveryPrefixOfAStreamEndsInAnExceptionAndLeaksNothing) {
    CDot a(1), b(2);
    CLink link;
    link.next = &b;
    const Bytes bytes = Stored([&](CArchive& ar) {
        ar.WriteObject(&a);
        ar.WriteObject(&link);
        ar.WriteObject(&b);
    });
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        const Bytes prefix(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(cut));
        EXPECT_EQ(Cause(prefix, 1) == -1, cut >= 14) << cut;
        // The inner dot has no owner in this test but its link, so that whole links are read with theirs.
        Load(prefix, [&](CArchive& ar) {
            std::unique_ptr<CObject> first;
            std::unique_ptr<CObject> second;
            const int cause = ArchiveCause([&] {
                first.reset(ar.ReadObject(NULL));
                second.reset(ar.ReadObject(NULL));
                static_cast<CLink*>(second.get())->owns = true;
                ar.ReadObject(NULL);
            });
            EXPECT_EQ(cause, CArchiveException::endOfFile) << cut;
        });
        EXPECT_EQ(CDot::alive, 2) << cut;
    }
}

TEST(AfxArchiveObjects, AnObjectThatFailsToLoadIsFreedAndItsNumberIsVoid) {
    const Bytes bytes = Joined({Record("CDot", 5), {1, 2}});
    Load(bytes, [](CArchive& ar) {
        EXPECT_EQ(ArchiveCause([&] { ar.ReadObject(NULL); }), CArchiveException::endOfFile);
        EXPECT_EQ(CDot::alive, 0);
        EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu);
    });
    // Its class is 1 and it was to be 2: a later reference to 2 must not give the freed object.
    CMemFile file;
    const Bytes start = Joined({Record("CBreaking", 1), {2, 0}});
    file.Write(start.data(), static_cast<UINT>(start.size()));
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    EXPECT_TRUE(Throws<CUserException>([&] { ar.ReadObject(NULL); }));
    EXPECT_EQ(ArchiveCause([&] { ar.ReadObject(NULL); }), CArchiveException::badIndex);
}

TEST(AfxArchiveObjects, WhatAFailedObjectReadAndFreedHasNoNumberAnyMore) {
    // The owner's class is 1 and the owner 2, the dot's class 3 and the dot 4. The class keeps its number.
    const Bytes bytes = Joined(
        {Record("CBreakingOwner", 1), Record("CDot", 5), {7, 0, 0, 0}, {4, 0}, {0x03, 0x80, 8, 0, 0, 0}, {5, 0}});
    Load(bytes, [](CArchive& ar) {
        EXPECT_TRUE(Throws<CUserException>([&] { ar.ReadObject(NULL); }));
        EXPECT_EQ(CDot::alive, 0);
        EXPECT_EQ(ArchiveCause([&] { ar.ReadObject(NULL); }), CArchiveException::badIndex);
        std::unique_ptr<CObject> next(ar.ReadObject(NULL));
        EXPECT_EQ(static_cast<CDot*>(next.get())->value, 8);
        EXPECT_EQ(ar.ReadObject(NULL), next.get());
    });
}

TEST(AfxArchiveObjects, ACycleComesBackAsACycle) {
    CLink self;
    self.next = &self;
    const Bytes bytes = Stored([&](CArchive& ar) { ar.WriteObject(&self); });
    EXPECT_EQ(bytes, Joined({Record("CLink", 2), {2, 0}}));
    Load(bytes, [](CArchive& ar) {
        std::unique_ptr<CObject> back(ar.ReadObject(NULL));
        EXPECT_EQ(static_cast<CLink*>(back.get())->next, back.get());
    });
}

// Links nested to this depth, without the end of the innermost.
Bytes Nested(int depth) {
    Bytes bytes = Record("CLink", 2);
    for (int i = 1; i < depth; ++i) {
        bytes.push_back(0x01);
        bytes.push_back(0x80);
    }
    return bytes;
}

TEST(AfxArchiveObjects, NestingBeyondTheLimitIsRefusedBeforeTheStackEnds) {
    EXPECT_EQ(Cause(Nested(300000), 1), CArchiveException::genericException);
    // Five hundred are fine.
    Load(Joined({Nested(500), {0, 0}}), [](CArchive& ar) {
        CObject* ob = ar.ReadObject(NULL);
        int depth = 0;
        while (ob != NULL) {
            CObject* next = static_cast<CLink*>(ob)->next;
            delete ob;
            ob = next;
            ++depth;
        }
        EXPECT_EQ(depth, 500);
    });
}

TEST(AfxArchiveObjects, ObjectsAreNestedAsDeepWhenStoringAsWhenLoading) {
    std::vector<CLink> links(1001);
    for (size_t i = 0; i + 1 < links.size(); ++i) {
        links[i].next = &links[i + 1];
    }
    CMemFile file;
    CArchive ar(&file, CArchive::store | CArchive::bNoFlushOnDelete);
    EXPECT_EQ(ArchiveCause([&] { ar.WriteObject(&links[0]); }), CArchiveException::genericException);
    // The failure has left all levels: the same archive takes a thousand, and they come back.
    EXPECT_EQ(ArchiveCause([&] { ar.WriteObject(&links[1]); }), -1);
    const Bytes bytes = Stored([&](CArchive& whole) { whole.WriteObject(&links[1]); });
    EXPECT_EQ(bytes, Joined({Nested(1000), {0, 0}}));
    Load(bytes, [](CArchive& back) {
        int depth = 0;
        CObject* next = NULL;
        for (CObject* ob = back.ReadObject(NULL); ob != NULL; ob = next, ++depth) {
            next = static_cast<CLink*>(ob)->next;
            delete ob;
        }
        EXPECT_EQ(depth, 1000);
    });
    EXPECT_EQ(Cause(Joined({Nested(1001), {0, 0}}), 1), CArchiveException::genericException);
}

TEST(AfxArchiveObjects, NumbersFrom7FFFOnAreWrittenInThirtyTwoBits) {
    // Class 1 and object 2; then numbers are taken without a byte written, up to 0x7FFD.
    CFixed first, last, high, filler;
    CDot dot(6), dot2(7);
    const Bytes bytes = Stored([&](CArchive& ar) {
        ar.WriteObject(&first);
        for (int i = 3; i <= 0x7FFD; ++i) {
            ar.MapObject(&filler);
        }
        ar.WriteObject(&last); // object 0x7FFE, the last that a short tag can name
        ar.WriteObject(&high); // object 0x7FFF; class 1 is still short
        ar.WriteObject(&dot);  // class 0x8000, object 0x8001
        ar.WriteObject(&dot2); // of class 0x8000, object 0x8002
        ar.WriteObject(&last);
        ar.WriteObject(&high);
        ar.WriteObject(&dot);
    });
    EXPECT_EQ(bytes, Joined({Record("CFixed", 3),
                             {0x01, 0x80},
                             {0x01, 0x80},
                             Record("CDot", 5),
                             {6, 0, 0, 0},
                             {0xFF, 0x7F, 0x00, 0x80, 0x00, 0x80, 7, 0, 0, 0},
                             {0xFE, 0x7F},
                             {0xFF, 0x7F, 0xFF, 0x7F, 0x00, 0x00},
                             {0xFF, 0x7F, 0x01, 0x80, 0x00, 0x00}}));
    Load(bytes, [&](CArchive& ar) {
        std::unique_ptr<CObject> firstBack(ar.ReadObject(NULL));
        for (int i = 3; i <= 0x7FFD; ++i) {
            ar.MapObject(&filler);
        }
        std::unique_ptr<CObject> lastBack(ar.ReadObject(NULL));
        std::unique_ptr<CObject> highBack(ar.ReadObject(NULL));
        std::unique_ptr<CObject> dotBack(ar.ReadObject(NULL));
        std::unique_ptr<CObject> dot2Back(ar.ReadObject(NULL));
        EXPECT_EQ(static_cast<CDot*>(dot2Back.get())->value, 7);
        EXPECT_EQ(ar.ReadObject(NULL), lastBack.get());
        EXPECT_EQ(ar.ReadObject(NULL), highBack.get());
        EXPECT_EQ(ar.ReadObject(NULL), dotBack.get());
    });
}

TEST(AfxArchiveObjects, ClassesAreStreamedByThemselvesToo) {
    const Bytes bytes = Stored([](CArchive& ar) {
        ar.SerializeClass(RUNTIME_CLASS(CDot));
        ar.WriteClass(RUNTIME_CLASS(CDot));
    });
    EXPECT_EQ(bytes, Joined({Record("CDot", 5), {0x01, 0x80}}));
    Load(bytes, [](CArchive& ar) {
        UINT schema = 0;
        DWORD tag = 0;
        EXPECT_EQ(ar.ReadClass(RUNTIME_CLASS(CDot), &schema, &tag), RUNTIME_CLASS(CDot));
        EXPECT_EQ(schema, 5u);
        EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu);
        ar.SerializeClass(RUNTIME_CLASS(CDot)); // with no place to put it, the archive keeps the schema
        EXPECT_EQ(ar.GetObjectSchema(), 5u);
    });
    // An object where only a class is looked for.
    Load({0, 0}, [](CArchive& ar) { EXPECT_EQ(ArchiveCause([&] { ar.ReadClass(); }), CArchiveException::badIndex); });
}

TEST(AfxArchiveObjects, AClassThatIsNotStoredIsRefusedInBothDirections) {
    CNotStored ob;
    EXPECT_TRUE(Throws<CNotSupportedException>([&] { Stored([&](CArchive& ar) { ar.WriteObject(&ob); }); }));
    EXPECT_TRUE(Throws<CNotSupportedException>([&] {
        Load({0, 0}, [](CArchive& ar) { ar.ReadObject(RUNTIME_CLASS(CNotStored)); });
    }));
}

TEST(AfxArchiveObjects, AnObjectStreamedByHandGetsANumberFromMapObject) {
    CDot dot(4);
    const Bytes bytes = Stored([&](CArchive& ar) {
        ar.MapObject(&dot); // object 1
        ar << dot.value;
        ar.WriteObject(&dot);
    });
    EXPECT_EQ(bytes, (Bytes{4, 0, 0, 0, 1, 0}));
    Load(bytes, [](CArchive& ar) {
        CDot back;
        ar.MapObject(&back);
        ar >> back.value;
        EXPECT_EQ(ar.ReadObject(NULL), &back);
    });
}

TEST(AfxArchiveObjects, AnArrayOfObjectsIsACountAndTheObjects) {
    CDot a(1), b(2);
    CObArray array;
    array.Add(&a);
    array.Add(NULL);
    array.Add(&b);
    const Bytes bytes = Stored([&](CArchive& ar) { array.Serialize(ar); });
    EXPECT_EQ(bytes, Joined({{3, 0}, Record("CDot", 5), {1, 0, 0, 0}, {0, 0}, {0x01, 0x80, 2, 0, 0, 0}}));
    Load(bytes, [](CArchive& ar) {
        CObArray back;
        back.Serialize(ar);
        ASSERT_EQ(back.GetSize(), 3);
        EXPECT_EQ(back[1], nullptr);
        EXPECT_EQ(static_cast<CDot*>(back[2])->value, 2);
        delete back[0];
        delete back[2];
    });
}

TEST(AfxArchiveObjects, RandomDamageNeverDoesMoreThanRaise) {
    CDot a(1), b(2);
    CFixed f;
    const Bytes good = Stored([&](CArchive& ar) {
        ar.WriteObject(&a);
        ar.WriteObject(&f);
        ar.WriteObject(&b);
        ar.WriteObject(&a);
    });
    unsigned seed = 12345;
    int failures = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes = good;
        for (int k = 0; k < 3; ++k) {
            seed = seed * 1664525 + 1013904223;
            bytes[(seed >> 8) % bytes.size()] = static_cast<BYTE>(seed >> 24);
        }
        if (Cause(bytes, 4) != -1) {
            ++failures;
        }
        ASSERT_EQ(CDot::alive, 2) << round;
    }
    EXPECT_GT(failures, 1000);
    EXPECT_LT(failures, 20000);
}

} // namespace
