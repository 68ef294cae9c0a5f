// Class records: kinds, creation by name, lists of classes per module. Layer 16: tests.
#include "support/AfxCaught.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class CPlainThing : public CObject {
    DECLARE_DYNAMIC(CPlainThing)
};
IMPLEMENT_DYNAMIC(CPlainThing, CObject)

class CMadeThing : public CPlainThing {
    DECLARE_DYNCREATE(CMadeThing)
};
IMPLEMENT_DYNCREATE(CMadeThing, CPlainThing)

class CStoredThing : public CMadeThing {
    DECLARE_SERIAL(CStoredThing)
};
IMPLEMENT_SERIAL(CStoredThing, CMadeThing, VERSIONABLE_SCHEMA | 5)

class CThrowingThing : public CObject {
    DECLARE_SERIAL(CThrowingThing)
public:
    CThrowingThing() { AfxThrowMemoryException(); }
};
IMPLEMENT_SERIAL(CThrowingThing, CObject, 1)

TEST(AfxObject, AClassRecordTellsNameSizeSchemaAndBase) {
    CRuntimeClass* c = RUNTIME_CLASS(CStoredThing);
    EXPECT_STREQ(c->m_lpszClassName, "CStoredThing");
    EXPECT_EQ(c->m_nObjectSize, static_cast<int>(sizeof(CStoredThing)));
    EXPECT_EQ(c->m_wSchema, 0x80000005u);
    EXPECT_EQ(c->m_pfnGetBaseClass(), RUNTIME_CLASS(CMadeThing));
    EXPECT_EQ(RUNTIME_CLASS(CMadeThing)->m_wSchema, 0xFFFFu);
    EXPECT_EQ(RUNTIME_CLASS(CPlainThing)->m_pfnCreateObject, nullptr);
    EXPECT_EQ(CStoredThing::GetThisClass(), &CStoredThing::classCStoredThing);
    EXPECT_STREQ(RUNTIME_CLASS(CObject)->m_lpszClassName, "CObject");
}

TEST(AfxObject, KindsFollowTheLineOfBases) {
    CStoredThing thing;
    EXPECT_TRUE(thing.IsKindOf(RUNTIME_CLASS(CStoredThing)));
    EXPECT_TRUE(thing.IsKindOf(RUNTIME_CLASS(CPlainThing)));
    EXPECT_TRUE(thing.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(CPlainThing().IsKindOf(RUNTIME_CLASS(CMadeThing)));
    EXPECT_FALSE(thing.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_TRUE(thing.IsSerializable());
    EXPECT_FALSE(CMadeThing().IsSerializable());
}

TEST(AfxObject, DownCastsGiveNullForAnotherKind) {
    CStoredThing stored;
    CPlainThing plain;
    CObject* nothing = NULL;
    EXPECT_EQ(DYNAMIC_DOWNCAST(CMadeThing, &stored), &stored);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CMadeThing, &plain), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CMadeThing, nothing), nullptr);
    CObject* object = &stored;
    EXPECT_EQ(STATIC_DOWNCAST(CStoredThing, object), &stored);
}

TEST(AfxObject, ClassesAreMadeByRecordAndByName) {
    std::unique_ptr<CObject> a(RUNTIME_CLASS(CMadeThing)->CreateObject());
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->GetRuntimeClass(), RUNTIME_CLASS(CMadeThing));
    EXPECT_EQ(RUNTIME_CLASS(CPlainThing)->CreateObject(), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("CStoredThing"), RUNTIME_CLASS(CStoredThing));
    EXPECT_EQ(CRuntimeClass::FromName(L"CStoredThing"), RUNTIME_CLASS(CStoredThing));
    std::unique_ptr<CObject> b(CRuntimeClass::CreateObject(L"CStoredThing"));
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->GetRuntimeClass(), RUNTIME_CLASS(CStoredThing));
    EXPECT_EQ(CRuntimeClass::FromName("CStoredThingX"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("cstoredthing"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(""), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName(static_cast<LPCSTR>(NULL)), nullptr);
    EXPECT_EQ(CRuntimeClass::CreateObject("CNoSuchThing"), nullptr);
    // Only streamable classes are listed.
    EXPECT_EQ(CRuntimeClass::FromName("CMadeThing"), nullptr);
}

TEST(AfxObject, TooLittleMemoryForANewObjectGivesNull) {
    EXPECT_EQ(RUNTIME_CLASS(CThrowingThing)->CreateObject(), nullptr);
}

TEST(AfxObject, AClassLeavesTheListWithItsModule) {
    {
        AFX_CLASSINIT passing(RUNTIME_CLASS(CMadeThing));
        EXPECT_EQ(CRuntimeClass::FromName("CMadeThing"), RUNTIME_CLASS(CMadeThing));
    }
    EXPECT_EQ(CRuntimeClass::FromName("CMadeThing"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("CStoredThing"), RUNTIME_CLASS(CStoredThing));
}

TEST(AfxObject, ClassesOfAnExtensionModuleAreFoundWhileItIsLinkedIn) {
    HMODULE extension = LoadLibraryW(L"afx_test_extension.dll");
    ASSERT_NE(extension, nullptr);
    const auto link = reinterpret_cast<void (*)(HMODULE)>(GetProcAddress(extension, "LinkExtension"));
    const auto unlink = reinterpret_cast<void (*)()>(GetProcAddress(extension, "UnlinkExtension"));
    ASSERT_TRUE(link && unlink);
    EXPECT_EQ(CRuntimeClass::FromName("CExtensionThing"), nullptr);
    link(extension);
    CRuntimeClass* record = CRuntimeClass::FromName("CExtensionThing");
    ASSERT_NE(record, nullptr);
    std::unique_ptr<CObject> thing(record->CreateObject());
    ASSERT_NE(thing, nullptr);
    EXPECT_STREQ(thing->GetRuntimeClass()->m_lpszClassName, "CExtensionThing");
    thing.reset();
    unlink();
    EXPECT_EQ(CRuntimeClass::FromName("CExtensionThing"), nullptr);
    EXPECT_TRUE(FreeLibrary(extension));
    EXPECT_EQ(CRuntimeClass::FromName("CExtensionThing"), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("CStoredThing"), RUNTIME_CLASS(CStoredThing));
}

} // namespace
