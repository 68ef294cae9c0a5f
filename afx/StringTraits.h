// The C runtime's text functions under one name for either character width. Only for the sources of CString.
// Layer 1: afx.
#pragma once

#include "afxexcept.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <new>

namespace AfxStringTraits {

// The C runtime's functions for either width.
inline size_t Length(const wchar_t* s) {
    return wcslen(s);
}
inline size_t Length(const char* s) {
    return strlen(s);
}
inline int CompareText(const wchar_t* a, const wchar_t* b) {
    return wcscmp(a, b);
}
inline int CompareText(const char* a, const char* b) {
    return strcmp(a, b);
}
inline int CompareTextNoCase(const wchar_t* a, const wchar_t* b) {
    return _wcsicmp(a, b);
}
inline int CompareTextNoCase(const char* a, const char* b) {
    return _stricmp(a, b);
}
inline int CollateText(const wchar_t* a, const wchar_t* b) {
    return wcscoll(a, b);
}
inline int CollateText(const char* a, const char* b) {
    return strcoll(a, b);
}
inline int CollateTextNoCase(const wchar_t* a, const wchar_t* b) {
    return _wcsicoll(a, b);
}
inline int CollateTextNoCase(const char* a, const char* b) {
    return _stricoll(a, b);
}
inline const wchar_t* FindText(const wchar_t* s, const wchar_t* sub) {
    return wcsstr(s, sub);
}
inline const char* FindText(const char* s, const char* sub) {
    return strstr(s, sub);
}
inline const wchar_t* FindChar(const wchar_t* s, wchar_t c) {
    return wcschr(s, c);
}
inline const char* FindChar(const char* s, char c) {
    return strchr(s, c);
}
inline const wchar_t* FindLastChar(const wchar_t* s, wchar_t c) {
    return wcsrchr(s, c);
}
inline const char* FindLastChar(const char* s, char c) {
    return strrchr(s, c);
}
inline const wchar_t* FindAny(const wchar_t* s, const wchar_t* set) {
    return wcspbrk(s, set);
}
inline const char* FindAny(const char* s, const char* set) {
    return strpbrk(s, set);
}
inline size_t Span(const wchar_t* s, const wchar_t* set) {
    return wcsspn(s, set);
}
inline size_t Span(const char* s, const char* set) {
    return strspn(s, set);
}
inline size_t SpanNot(const wchar_t* s, const wchar_t* set) {
    return wcscspn(s, set);
}
inline size_t SpanNot(const char* s, const char* set) {
    return strcspn(s, set);
}
inline bool IsSpace(wchar_t c) {
    return iswspace(c) != 0;
}
inline bool IsSpace(char c) {
    return isspace(static_cast<unsigned char>(c)) != 0;
}
inline wchar_t Upper(wchar_t c) {
    return static_cast<wchar_t>(towupper(c));
}
inline char Upper(char c) {
    return static_cast<char>(toupper(static_cast<unsigned char>(c)));
}
inline wchar_t Lower(wchar_t c) {
    return static_cast<wchar_t>(towlower(c));
}
inline char Lower(char c) {
    return static_cast<char>(tolower(static_cast<unsigned char>(c)));
}
inline int FormattedLength(const wchar_t* f, va_list args) {
    return _vscwprintf(f, args);
}
inline int FormattedLength(const char* f, va_list args) {
    return _vscprintf(f, args);
}
inline void FormatInto(wchar_t* s, size_t n, const wchar_t* f, va_list args) {
    _vsnwprintf(s, n, f, args);
}
inline void FormatInto(char* s, size_t n, const char* f, va_list args) {
    _vsnprintf(s, n, f, args);
}

// The length after conversion of nLength characters, and the conversion itself.
inline int ConvertedLength(const char* s, int n, const wchar_t*) {
    return MultiByteToWideChar(CP_ACP, 0, s, n, NULL, 0);
}
inline int ConvertedLength(const wchar_t* s, int n, const char*) {
    return WideCharToMultiByte(CP_ACP, 0, s, n, NULL, 0, NULL, NULL);
}
inline void ConvertInto(const char* s, int n, wchar_t* pDest, int nDest) {
    MultiByteToWideChar(CP_ACP, 0, s, n, pDest, nDest);
}
inline void ConvertInto(const wchar_t* s, int n, char* pDest, int nDest) {
    WideCharToMultiByte(CP_ACP, 0, s, n, pDest, nDest, NULL, NULL);
}

template <typename T>
void CopyText(T* pDest, const T* pSrc, int nLength) {
    if (nLength > 0) {
        memmove(pDest, pSrc, static_cast<size_t>(nLength) * sizeof(T));
    }
}

template <typename T>
int CheckedLength(const T* psz) {
    if (psz == NULL) {
        return 0;
    }
    size_t nLength = Length(psz);
    if (nLength > INT_MAX) {
        AfxThrowMemoryException();
    }
    return static_cast<int>(nLength);
}

inline int Sum(int a, int b) {
    if (a > INT_MAX - b) {
        AfxThrowMemoryException();
    }
    return a + b;
}

} // namespace AfxStringTraits
