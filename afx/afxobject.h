// The root class and its run-time class records: kind tests, creation by name, object streaming.
// Classes: CRuntimeClass, CObject.
// Layer 1: afx.
#pragma once

#include "afxapi.h"

class CObject;
class CArchive;
class CDumpContext;

// Set in a class schema: objects of other schema numbers may be read, and Serialize asks which one it has.
#define VERSIONABLE_SCHEMA (0x80000000)

// The record of one class. One exists per class for the life of its module; it is never made on the heap.
struct NRAFX_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;                              // 0xFFFF for a class that can't be streamed
    CObject*(PASCAL* m_pfnCreateObject)();       // NULL for a class that can't be made by its record
    CRuntimeClass*(PASCAL* m_pfnGetBaseClass)(); // NULL for CObject

    // A new object, owned by the caller; NULL when the class can't be made or memory is short.
    CObject* CreateObject();
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;

    // Finds classes made known by IMPLEMENT_SERIAL: those of the program, of this layer, and of each extension
    // module while it has a CDynLinkLibrary. NULL for an unknown name.
    static CRuntimeClass* PASCAL FromName(LPCSTR lpszClassName);
    static CRuntimeClass* PASCAL FromName(LPCWSTR lpszClassName);
    static CObject* PASCAL CreateObject(LPCSTR lpszClassName);
    static CObject* PASCAL CreateObject(LPCWSTR lpszClassName);

    // The class record of an object stream: schema, length and name. Load returns NULL for an unknown class.
    void Store(CArchive& ar) const;
    static CRuntimeClass* PASCAL Load(CArchive& ar, UINT* pwSchemaNum);
};

// Enters a class into its module's list of streamable classes and takes it out when the module is unloaded.
struct NRAFX_API AFX_CLASSINIT {
    explicit AFX_CLASSINIT(CRuntimeClass* pNewClass);
    ~AFX_CLASSINIT();
    AFX_CLASSINIT(const AFX_CLASSINIT&) = delete;
    AFX_CLASSINIT& operator=(const AFX_CLASSINIT&) = delete;

    CRuntimeClass* m_pClass;
    HMODULE m_hModule;
    AFX_CLASSINIT* m_pNext;
};

class NRAFX_API CObject {
public:
    virtual ~CObject();
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    virtual CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;
    BOOL IsSerializable() const;

    virtual void Serialize(CArchive& ar);

    // Diagnostics. AssertValid asserts what holds for a sound object, here nothing; Dump writes class name and address.
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& dc) const;

    static CRuntimeClass* PASCAL _GetBaseClass();
    static CRuntimeClass* PASCAL GetThisClass();
    static const CRuntimeClass classCObject;

protected:
    CObject();
};

// What ASSERT_VALID does in the debug build: asserts that there is an object and lets it check itself.
NRAFX_API void AFXAPI AfxAssertValidObject(const CObject* pOb, const char* lpszFileName, int nLine);

// A pointer as the named class, or NULL when the object is of another kind.
NRAFX_API CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject);
NRAFX_API CObject* AFXAPI AfxStaticDownCast(CRuntimeClass* pClass, CObject* pObject);

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())
#define _RUNTIME_CLASS(class_name) (const_cast<CRuntimeClass*>(&class_name::class##class_name))
#define DYNAMIC_DOWNCAST(class_name, object)                                                                           \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object)))
#ifdef _DEBUG
#define STATIC_DOWNCAST(class_name, object)                                                                            \
    (static_cast<class_name*>(AfxStaticDownCast(RUNTIME_CLASS(class_name), object)))
#else
#define STATIC_DOWNCAST(class_name, object) (static_cast<class_name*>(object))
#endif

#define DECLARE_DYNAMIC(class_name)                                                                                    \
public:                                                                                                                \
    static const CRuntimeClass class##class_name;                                                                      \
    static CRuntimeClass* PASCAL _GetBaseClass();                                                                      \
    static CRuntimeClass* PASCAL GetThisClass();                                                                       \
    virtual CRuntimeClass* GetRuntimeClass() const;

#define DECLARE_DYNCREATE(class_name)                                                                                  \
    DECLARE_DYNAMIC(class_name)                                                                                        \
    static CObject* PASCAL CreateObject();

// The reading operator is inline, so that it needs no export of its own.
#define DECLARE_SERIAL(class_name)                                                                                     \
    DECLARE_DYNCREATE(class_name)                                                                                      \
    friend CArchive& operator>>(CArchive& ar, class_name*& pOb) {                                                      \
        pOb = static_cast<class_name*>(AfxReadObject(ar, RUNTIME_CLASS(class_name)));                                  \
        return ar;                                                                                                     \
    }

#define IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, pfnNew)                                           \
    CRuntimeClass* PASCAL class_name::_GetBaseClass() {                                                                \
        return RUNTIME_CLASS(base_class_name);                                                                         \
    }                                                                                                                  \
    const CRuntimeClass class_name::class##class_name = {#class_name, static_cast<int>(sizeof(class_name)),            \
                                                         static_cast<UINT>(wSchema), pfnNew,                           \
                                                         &class_name::_GetBaseClass};                                  \
    CRuntimeClass* PASCAL class_name::GetThisClass() {                                                                 \
        return _RUNTIME_CLASS(class_name);                                                                             \
    }                                                                                                                  \
    CRuntimeClass* class_name::GetRuntimeClass() const {                                                               \
        return _RUNTIME_CLASS(class_name);                                                                             \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, NULL)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                               \
    CObject* PASCAL class_name::CreateObject() {                                                                       \
        return new class_name;                                                                                         \
    }                                                                                                                  \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, 0xFFFF, &class_name::CreateObject)

#define IMPLEMENT_SERIAL(class_name, base_class_name, wSchema)                                                         \
    CObject* PASCAL class_name::CreateObject() {                                                                       \
        return new class_name;                                                                                         \
    }                                                                                                                  \
    IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, wSchema, &class_name::CreateObject)                            \
    static AFX_CLASSINIT _init_##class_name(RUNTIME_CLASS(class_name));

// CArchive::ReadObject for headers in which CArchive is only declared.
NRAFX_API CObject* AFXAPI AfxReadObject(CArchive& ar, const CRuntimeClass* pClassRefRequested);
