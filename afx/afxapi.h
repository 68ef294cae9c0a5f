// What every header of the layer needs first: Windows, the export macro of nrafx.dll and the calling conventions.
// Layer 1: afx (uses Win32 only).
#pragma once

#if !defined(UNICODE) || !defined(_UNICODE)
#error The layer has the Unicode form only: define UNICODE and _UNICODE.
#endif

#include <windows.h>
#include <tchar.h>
#include <cstddef>

// The version of this layer, 0xMMmmpp.
#define NRAFX_VERSION 0x010000

#ifdef NRAFX_BUILD
#define NRAFX_API __declspec(dllexport)
#else
#define NRAFX_API __declspec(dllimport)
#endif

#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
#define AFX_CLASS_EXPORT __declspec(dllexport)
#define AFX_CLASS_IMPORT __declspec(dllimport)

// An extension module builds with _AFXEXT and marks what it exports with these two.
#ifdef _AFXEXT
#define AFX_EXT_CLASS AFX_CLASS_EXPORT
#define AFX_EXT_API AFX_CLASS_EXPORT
#else
#define AFX_EXT_CLASS AFX_CLASS_IMPORT
#define AFX_EXT_API AFX_CLASS_IMPORT
#endif

#ifndef PASCAL
#define PASCAL __stdcall
#endif

// An opaque place in a list or a set of views; NULL is the end.
struct __POSITION {};
typedef __POSITION* POSITION;

#ifndef _countof
#define _countof(array) (sizeof(array) / sizeof(array[0]))
#endif

#define UNUSED_ALWAYS(x) static_cast<void>(x)
#ifdef _DEBUG
#define UNUSED(x)
#else
#define UNUSED(x) static_cast<void>(x)
#endif

// Checks of the debug build (_DEBUG). VERIFY evaluates its expression in every build.
NRAFX_API BOOL AFXAPI AfxAssertFailedLine(const char* lpszFileName, int nLine);
NRAFX_API void AFX_CDECL AfxTrace(LPCWSTR lpszFormat, ...);

#ifdef _DEBUG
#define ASSERT(f) static_cast<void>((f) || AfxAssertFailedLine(__FILE__, __LINE__))
#define VERIFY(f) ASSERT(f)
#define TRACE AfxTrace
#define ASSERT_VALID(p) AfxAssertValidObject(p, __FILE__, __LINE__)
#else
#define ASSERT(f) static_cast<void>(0)
#define VERIFY(f) static_cast<void>(f)
#define TRACE(...) static_cast<void>(0)
#define ASSERT_VALID(p) static_cast<void>(0)
#endif
#define DEBUG_NEW new

// Memory of strings and arrays. It comes from nrafx.dll whichever module asks, so that a buffer may be grown in
// one module and freed in another. Throws CMemoryException.
NRAFX_API void* AFXAPI AfxAllocBlock(size_t nBytes);
NRAFX_API void AFXAPI AfxFreeBlock(void* pBlock);
