// Class records, the lists of streamable classes of every module, and the debug checks. Layer 1: afx.
#include "AfxInternal.h"
#include "afxarchive.h"
#include "afxexcept.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

// Guards both lists below; they change only while modules are loaded and unloaded.
SRWLOCK classLock = SRWLOCK_INIT;

struct ClassLock {
    ClassLock() { AcquireSRWLockExclusive(&classLock); }
    ~ClassLock() { ReleaseSRWLockExclusive(&classLock); }
    ClassLock(const ClassLock&) = delete;
    ClassLock& operator=(const ClassLock&) = delete;
};

// Every streamable class of every loaded module, the latest first.
AFX_CLASSINIT* firstClass = NULL;

// The modules beside the program and this DLL whose classes are found by name.
struct AttachedModule {
    HMODULE hModule;
    int nTimes;
    AttachedModule* pNext;
};
AttachedModule* firstModule = NULL;

HMODULE ModuleOf(const void* pAddress) {
    HMODULE hModule = NULL;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(pAddress), &hModule);
    return hModule;
}

bool IsFindable(HMODULE hModule) {
    static const HMODULE hThis = ModuleOf(&firstClass);
    static const HMODULE hProgram = GetModuleHandleW(NULL);
    if (hModule == hThis || hModule == hProgram) {
        return true;
    }
    for (AttachedModule* p = firstModule; p != NULL; p = p->pNext) {
        if (p->hModule == hModule) {
            return true;
        }
    }
    return false;
}

} // namespace

// ---- lists of classes ----------------------------------------------------------------------------------------------

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* pNewClass)
    : m_pClass(pNewClass), m_hModule(ModuleOf(pNewClass)), m_pNext(NULL) {
    ClassLock lock;
    m_pNext = firstClass;
    firstClass = this;
}

AFX_CLASSINIT::~AFX_CLASSINIT() {
    ClassLock lock;
    for (AFX_CLASSINIT** pp = &firstClass; *pp != NULL; pp = &(*pp)->m_pNext) {
        if (*pp == this) {
            *pp = m_pNext;
            break;
        }
    }
}

void AfxAttachModuleClasses(HMODULE hModule) {
    ClassLock lock;
    for (AttachedModule* p = firstModule; p != NULL; p = p->pNext) {
        if (p->hModule == hModule) {
            ++p->nTimes;
            return;
        }
    }
    firstModule = new AttachedModule{hModule, 1, firstModule};
}

void AfxDetachModuleClasses(HMODULE hModule) {
    ClassLock lock;
    for (AttachedModule** pp = &firstModule; *pp != NULL; pp = &(*pp)->pNext) {
        AttachedModule* p = *pp;
        if (p->hModule == hModule) {
            if (--p->nTimes == 0) {
                *pp = p->pNext;
                delete p;
            }
            return;
        }
    }
}

// ---- CRuntimeClass -------------------------------------------------------------------------------------------------

CObject* CRuntimeClass::CreateObject() {
    if (m_pfnCreateObject == NULL) {
        return NULL;
    }
    try {
        return (*m_pfnCreateObject)();
    } catch (const std::bad_alloc&) {
        return NULL;
    } catch (CMemoryException* e) {
        e->Delete();
        return NULL;
    }
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
    for (const CRuntimeClass* pClass = this; pClass != NULL;
         pClass = pClass->m_pfnGetBaseClass == NULL ? NULL : (*pClass->m_pfnGetBaseClass)()) {
        if (pClass == pBaseClass) {
            return TRUE;
        }
    }
    return FALSE;
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCSTR lpszClassName) {
    if (lpszClassName == NULL) {
        return NULL;
    }
    ClassLock lock;
    for (AFX_CLASSINIT* p = firstClass; p != NULL; p = p->m_pNext) {
        if (strcmp(p->m_pClass->m_lpszClassName, lpszClassName) == 0 && IsFindable(p->m_hModule)) {
            return p->m_pClass;
        }
    }
    return NULL;
}

CRuntimeClass* PASCAL CRuntimeClass::FromName(LPCWSTR lpszClassName) {
    return lpszClassName == NULL ? NULL : FromName(CStringA(lpszClassName).GetString());
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCSTR lpszClassName) {
    CRuntimeClass* pClass = FromName(lpszClassName);
    return pClass == NULL ? NULL : pClass->CreateObject();
}

CObject* PASCAL CRuntimeClass::CreateObject(LPCWSTR lpszClassName) {
    CRuntimeClass* pClass = FromName(lpszClassName);
    return pClass == NULL ? NULL : pClass->CreateObject();
}

void CRuntimeClass::Store(CArchive& ar) const {
    const WORD nLength = static_cast<WORD>(strlen(m_lpszClassName));
    ar << static_cast<WORD>(m_wSchema) << nLength;
    ar.Write(m_lpszClassName, nLength);
}

CRuntimeClass* PASCAL CRuntimeClass::Load(CArchive& ar, UINT* pwSchemaNum) {
    char szClassName[64];
    WORD nSchema;
    WORD nLength;
    ar >> nSchema >> nLength;
    if (nLength < sizeof(szClassName)) {
        ar.EnsureRead(szClassName, nLength);
    }
    *pwSchemaNum = nSchema;
    if (nLength >= sizeof(szClassName)) {
        return NULL; // no class has so long a name
    }
    szClassName[nLength] = 0;
    return strlen(szClassName) == nLength ? FromName(szClassName) : NULL;
}

// ---- CObject -------------------------------------------------------------------------------------------------------

const CRuntimeClass CObject::classCObject = {"CObject", static_cast<int>(sizeof(CObject)), 0xFFFF, NULL, NULL};

CObject::CObject() {}

CObject::~CObject() {}

CRuntimeClass* PASCAL CObject::_GetBaseClass() {
    return NULL;
}

CRuntimeClass* PASCAL CObject::GetThisClass() {
    return _RUNTIME_CLASS(CObject);
}

CRuntimeClass* CObject::GetRuntimeClass() const {
    return _RUNTIME_CLASS(CObject);
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const {
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

BOOL CObject::IsSerializable() const {
    return GetRuntimeClass()->m_wSchema != 0xFFFF;
}

void CObject::Serialize(CArchive&) {}

CObject* AFXAPI AfxDynamicDownCast(CRuntimeClass* pClass, CObject* pObject) {
    return pObject != NULL && pObject->IsKindOf(pClass) ? pObject : NULL;
}

CObject* AFXAPI AfxStaticDownCast(CRuntimeClass* pClass, CObject* pObject) {
    if (pObject != NULL && !pObject->IsKindOf(pClass)) {
        AfxAssertFailedLine(__FILE__, __LINE__);
    }
    return pObject;
}

CObject* AFXAPI AfxReadObject(CArchive& ar, const CRuntimeClass* pClassRefRequested) {
    return ar.ReadObject(pClassRefRequested);
}

// ---- memory and debug checks ---------------------------------------------------------------------------------------

void* AFXAPI AfxAllocBlock(size_t nBytes) {
    try {
        return ::operator new(nBytes);
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

void AFXAPI AfxFreeBlock(void* pBlock) {
    ::operator delete(pBlock);
}

BOOL AFXAPI AfxAssertFailedLine(const char* lpszFileName, int nLine) {
    char szText[512];
    _snprintf(szText, sizeof(szText) - 1, "%s(%d): assertion failed\n", lpszFileName, nLine);
    szText[sizeof(szText) - 1] = 0;
    OutputDebugStringA(szText);
    fputs(szText, stderr);
    abort();
}

void AFX_CDECL AfxTrace(LPCWSTR lpszFormat, ...) {
    wchar_t szText[512];
    va_list args;
    va_start(args, lpszFormat);
    _vsnwprintf(szText, _countof(szText) - 1, lpszFormat, args);
    va_end(args);
    szText[_countof(szText) - 1] = 0;
    OutputDebugStringW(szText);
}
