// The exchange of values between members and controls, and its checks.
// Layer 1: afx.
#include "ThreadState.h"

#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cwchar>
#include <limits>

// --- CDataExchange -----------------------------------------------------------------------------------------------

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd), m_hWndLastControl(nullptr), m_bEditLastControl(FALSE),
      m_nIDLastControl(0) {}

HWND CDataExchange::PrepareCtrl(int nIDC) {
    const HWND control = ::GetDlgItem(AfxHandleOf(m_pDlgWnd), nIDC);
    if (control == nullptr) {
        AfxThrowNotSupportedException();
    }
    m_hWndLastControl = control;
    m_nIDLastControl = nIDC;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) {
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate && m_hWndLastControl != nullptr) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl) {
            ::SendMessage(m_hWndLastControl, EM_SETSEL, 0, -1);
        }
    }
    AfxThrowUserException();
}

// --- text --------------------------------------------------------------------------------------------------------

namespace {

CString TextOf(HWND control) {
    CString text;
    const int length = ::GetWindowTextLength(control);
    ::GetWindowText(control, text.GetBufferSetLength(length), length + 1);
    text.ReleaseBuffer();
    return text;
}

// Does not set a text that the control has already: no flicker, no EN_CHANGE.
void SetTextOf(HWND control, LPCTSTR text) {
    if (TextOf(control) != text) {
        ::SetWindowText(control, text);
    }
}

[[noreturn]] void Refuse(CDataExchange* pDX, UINT idPrompt) {
    AfxMessageBox(idPrompt, MB_OK | MB_ICONEXCLAMATION);
    pDX->Fail();
}

LPCTSTR SkipBlanks(LPCTSTR text) {
    while (*text == L' ' || *text == L'\t') {
        ++text;
    }
    return text;
}

// A whole number, with blanks allowed around it, within the limits.
template <class T>
void ExchangeInteger(CDataExchange* pDX, int nIDC, T& value, LONGLONG low, LONGLONG high, LPCTSTR format,
                     UINT idPrompt) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        TCHAR text[32] = {};
        _snwprintf(text, 31, format, static_cast<LONGLONG>(value));
        SetTextOf(control, text);
        return;
    }
    const CString text = TextOf(control);
    LPCTSTR start = SkipBlanks(text);
    LPTSTR end = nullptr;
    errno = 0;
    const LONGLONG number = _wcstoi64(start, &end, 10);
    if (end == start || errno == ERANGE || *SkipBlanks(end) != 0 || number < low || number > high) {
        Refuse(pDX, idPrompt);
    }
    value = static_cast<T>(number);
}

template <class T>
void ExchangeReal(CDataExchange* pDX, int nIDC, T& value, int digits) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        TCHAR text[64] = {};
        _snwprintf(text, 63, L"%.*g", digits, static_cast<double>(value));
        SetTextOf(control, text);
        return;
    }
    const CString text = TextOf(control);
    LPCTSTR start = SkipBlanks(text);
    LPTSTR end = nullptr;
    const double number = std::wcstod(start, &end);
    // The runtime's function also reads "inf", "nan" and hexadecimal digits. A comma may be the user's decimal point.
    const bool decimal = end == start + std::wcsspn(start, L"0123456789.,+-eE");
    if (end == start || !decimal || *SkipBlanks(end) != 0 || std::abs(number) > std::numeric_limits<T>::max()) {
        Refuse(pDX, AFX_IDP_PARSE_REAL);
    }
    value = static_cast<T>(number);
}

} // namespace

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = TextOf(control);
    } else {
        SetTextOf(control, value);
    }
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value) {
    ExchangeInteger(pDX, nIDC, value, 0, UCHAR_MAX, L"%I64d", AFX_IDP_PARSE_BYTE);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, short& value) {
    ExchangeInteger(pDX, nIDC, value, SHRT_MIN, SHRT_MAX, L"%I64d", AFX_IDP_PARSE_INT);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value) {
    ExchangeInteger(pDX, nIDC, value, INT_MIN, INT_MAX, L"%I64d", AFX_IDP_PARSE_INT);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value) {
    ExchangeInteger(pDX, nIDC, value, 0, UINT_MAX, L"%I64d", AFX_IDP_PARSE_UINT);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, long& value) {
    ExchangeInteger(pDX, nIDC, value, LONG_MIN, LONG_MAX, L"%I64d", AFX_IDP_PARSE_INT);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, DWORD& value) {
    ExchangeInteger(pDX, nIDC, value, 0, ULONG_MAX, L"%I64d", AFX_IDP_PARSE_UINT);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, LONGLONG& value) {
    ExchangeInteger(pDX, nIDC, value, LLONG_MIN, LLONG_MAX, L"%I64d", AFX_IDP_PARSE_INT);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, ULONGLONG& value) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        TCHAR text[32] = {};
        _snwprintf(text, 31, L"%I64u", value);
        SetTextOf(control, text);
        return;
    }
    const CString text = TextOf(control);
    LPCTSTR start = SkipBlanks(text);
    LPTSTR end = nullptr;
    errno = 0;
    const ULONGLONG number = _wcstoui64(start, &end, 10);
    if (end == start || *start == L'-' || errno == ERANGE || *SkipBlanks(end) != 0) {
        Refuse(pDX, AFX_IDP_PARSE_UINT);
    }
    value = number;
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, float& value) {
    ExchangeReal(pDX, nIDC, value, FLT_DIG);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, double& value) {
    ExchangeReal(pDX, nIDC, value, DBL_DIG);
}

// --- buttons, lists, scroll bars ---------------------------------------------------------------------------------

void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessage(control, BM_GETCHECK, 0, 0));
    } else {
        ::SendMessage(control, BM_SETCHECK, static_cast<WPARAM>(value < 0 || value > 2 ? 0 : value), 0);
    }
}

void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = -1;
    }
    int index = 0;
    // The first button of the group carries WS_GROUP, and so does the first control after it.
    do {
        if ((::SendMessage(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0) {
            if (!pDX->m_bSaveAndValidate) {
                ::SendMessage(control, BM_SETCHECK, index == value, 0);
            } else if (::SendMessage(control, BM_GETCHECK, 0, 0) != 0) {
                value = index;
            }
            ++index;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control != nullptr && (::GetWindowLongPtr(control, GWL_STYLE) & WS_GROUP) == 0);
}

static void ExchangeSelection(CDataExchange* pDX, int nIDC, int& index, UINT get, UINT set) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        index = static_cast<int>(::SendMessage(control, get, 0, 0));
    } else {
        ::SendMessage(control, set, static_cast<WPARAM>(index), 0);
    }
}

void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index) {
    ExchangeSelection(pDX, nIDC, index, LB_GETCURSEL, LB_SETCURSEL);
}

void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index) {
    ExchangeSelection(pDX, nIDC, index, CB_GETCURSEL, CB_SETCURSEL);
}

void AFXAPI DDX_LBString(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        ::SendMessage(control, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                      reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(value)));
        return;
    }
    const auto index = static_cast<WPARAM>(::SendMessage(control, LB_GETCURSEL, 0, 0));
    const int length = static_cast<int>(::SendMessage(control, LB_GETTEXTLEN, index, 0));
    value.Empty();
    if (length < 0) {
        return;
    }
    ::SendMessage(control, LB_GETTEXT, index, reinterpret_cast<LPARAM>(value.GetBufferSetLength(length)));
    value.ReleaseBuffer();
}

void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = TextOf(control);
        return;
    }
    // A text that is not in the list can be in the box's edit part.
    if (::SendMessage(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                      reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(value))) == CB_ERR) {
        SetTextOf(control, value);
    }
}

void AFXAPI DDX_Scroll(CDataExchange* pDX, int nIDC, int& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = ::GetScrollPos(control, SB_CTL);
    } else {
        ::SetScrollPos(control, SB_CTL, value, TRUE);
    }
}

void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    if (rControl.m_hWnd != nullptr) {
        return;
    }
    if (!rControl.SubclassWindow(pDX->PrepareCtrl(nIDC))) {
        AfxThrowNotSupportedException();
    }
}

// --- checks ------------------------------------------------------------------------------------------------------

namespace {

template <class T>
void CheckRange(CDataExchange* pDX, T value, T low, T high, LPCTSTR format, UINT idPrompt) {
    // The members' own values are never refused: the user could not correct them.
    if (!pDX->m_bSaveAndValidate || (value >= low && value <= high)) {
        return;
    }
    TCHAR lowText[64] = {}, highText[64] = {};
    _snwprintf(lowText, 63, format, low);
    _snwprintf(highText, 63, format, high);
    CString prompt;
    AfxFormatString2(prompt, idPrompt, lowText, highText);
    AfxMessageBox(prompt, MB_ICONEXCLAMATION);
    pDX->Fail();
}

void CheckInteger(CDataExchange* pDX, LONGLONG value, LONGLONG low, LONGLONG high) {
    CheckRange<LONGLONG>(pDX, value, low, high, L"%I64d", AFX_IDP_PARSE_INT_RANGE);
}

} // namespace

void AFXAPI DDV_MinMaxByte(CDataExchange* pDX, BYTE value, BYTE minVal, BYTE maxVal) {
    CheckInteger(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxShort(CDataExchange* pDX, short value, short minVal, short maxVal) {
    CheckInteger(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal) {
    CheckInteger(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxLong(CDataExchange* pDX, long value, long minVal, long maxVal) {
    CheckInteger(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxUInt(CDataExchange* pDX, UINT value, UINT minVal, UINT maxVal) {
    CheckInteger(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxDWord(CDataExchange* pDX, DWORD value, DWORD minVal, DWORD maxVal) {
    CheckInteger(pDX, value, minVal, maxVal);
}

void AFXAPI DDV_MinMaxFloat(CDataExchange* pDX, const float& value, float minVal, float maxVal) {
    CheckRange<double>(pDX, value, minVal, maxVal, L"%.6g", AFX_IDP_PARSE_REAL_RANGE);
}

void AFXAPI DDV_MinMaxDouble(CDataExchange* pDX, const double& value, double minVal, double maxVal) {
    CheckRange<double>(pDX, value, minVal, maxVal, L"%.15g", AFX_IDP_PARSE_REAL_RANGE);
}

void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars) {
    if (!pDX->m_bSaveAndValidate) {
        if (pDX->m_hWndLastControl != nullptr && pDX->m_bEditLastControl) {
            ::SendMessage(pDX->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
        }
        return;
    }
    if (value.GetLength() <= nChars) {
        return;
    }
    TCHAR count[32] = {};
    _snwprintf(count, 31, L"%d", nChars);
    CString prompt;
    AfxFormatString1(prompt, AFX_IDP_PARSE_STRING_SIZE, count);
    AfxMessageBox(prompt, MB_ICONEXCLAMATION);
    pDX->Fail();
}
