// CString and CStringA: formatting with the C runtime of Windows. Layer 1: afx.
#include "StringTraits.h"
#include "cstringt.h"

using namespace AfxStringTraits;

template <typename T>
void CStringT<T>::FormatV(PCXSTR pszFormat, va_list args) {
    CheckIndex(pszFormat != NULL);
    va_list measure;
    va_copy(measure, args);
    const int nLength = FormattedLength(pszFormat, measure);
    va_end(measure);
    CheckIndex(nLength >= 0);
    CStringT str; // an argument may be this very text
    if (nLength > 0) {
        str.Reserve(nLength, true);
        FormatInto(str.m_pszData, static_cast<size_t>(nLength) + 1, pszFormat, args);
        str.SetLength(nLength);
    }
    *this = static_cast<CStringT&&>(str);
}

template <typename T>
void CStringT<T>::AppendFormatV(PCXSTR pszFormat, va_list args) {
    CStringT str;
    str.FormatV(pszFormat, args);
    Append(str);
}

template <typename T>
void AFX_CDECL CStringT<T>::Format(PCXSTR pszFormat, ...) {
    va_list args;
    va_start(args, pszFormat);
    FormatV(pszFormat, args);
    va_end(args);
}

template <typename T>
void AFX_CDECL CStringT<T>::Format(UINT nFormatID, ...) {
    CStringT strFormat;
    CheckIndex(strFormat.LoadString(nFormatID) != FALSE);
    va_list args;
    va_start(args, nFormatID);
    FormatV(strFormat, args);
    va_end(args);
}

template <typename T>
void AFX_CDECL CStringT<T>::AppendFormat(PCXSTR pszFormat, ...) {
    va_list args;
    va_start(args, pszFormat);
    AppendFormatV(pszFormat, args);
    va_end(args);
}

template <typename T>
void AFX_CDECL CStringT<T>::AppendFormat(UINT nFormatID, ...) {
    CStringT strFormat;
    CheckIndex(strFormat.LoadString(nFormatID) != FALSE);
    va_list args;
    va_start(args, nFormatID);
    AppendFormatV(strFormat, args);
    va_end(args);
}

// Of the class only what is defined here and in its declaration: the rest is made in String.cpp.
template class CStringT<wchar_t>;
template class CStringT<char>;
