// CArchive: buffering, values, text. The object format is in ArchiveObjects.cpp. Layer 1: afx.
#include "ArchiveMaps.h"

#include <climits>
#include <exception>
#include <memory>

namespace {

const int kSmallestBuffer = 128;
const UINT kNarrowTextCodePage = 936;
// Text of unknown length is read in pieces, so that a false length costs no more memory than the stream is long.
const ULONGLONG kFirstPiece = 4096;

} // namespace

// ---- construction and closing --------------------------------------------------------------------------------------

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_pDocument(NULL), m_bForceFlat(TRUE), m_pFile(pFile), m_nMode(nMode), m_bUserBuf(FALSE), m_nBufSize(0),
      m_lpBufStart(NULL), m_lpBufCur(NULL), m_lpBufMax(NULL), m_nObjectSchema(static_cast<UINT>(-1)), m_nObjectDepth(0),
      m_nUncaught(std::uncaught_exceptions()), m_pMaps(NULL) {
    if (pFile == NULL) {
        AfxThrowInvalidArgException();
    }
    if (nBufSize < kSmallestBuffer) {
        nBufSize = kSmallestBuffer;
        lpBuf = NULL;
    }
    m_strFileName = pFile->GetFilePath();
    m_nBufSize = static_cast<UINT>(nBufSize);
    m_bUserBuf = lpBuf != NULL;
    m_lpBufStart = static_cast<BYTE*>(lpBuf != NULL ? lpBuf : AfxAllocBlock(m_nBufSize));
    m_lpBufCur = m_lpBufStart;
    m_lpBufMax = IsLoading() ? m_lpBufStart : m_lpBufStart + m_nBufSize;
}

CArchive::~CArchive() noexcept(false) {
    if (m_pFile != NULL && (m_nMode & bNoFlushOnDelete) == 0) {
        try {
            Close();
        } catch (CException* e) {
            Abort();
            // Code that throws a second exception while another one is being thrown ends the program.
            if (std::uncaught_exceptions() <= m_nUncaught) {
                throw;
            }
            e->Delete();
        } catch (...) {
            Abort();
            if (std::uncaught_exceptions() <= m_nUncaught) {
                throw;
            }
        }
    }
    Abort();
}

void CArchive::Abort() {
    m_pFile = NULL;
    if (!m_bUserBuf) {
        AfxFreeBlock(m_lpBufStart);
    }
    m_lpBufStart = m_lpBufCur = m_lpBufMax = NULL;
    delete m_pMaps;
    m_pMaps = NULL;
}

void CArchive::Close() {
    if (m_pFile == NULL) {
        return;
    }
    Flush();
    Abort();
}

void CArchive::Flush() {
    if (m_pFile == NULL) {
        Fail(CArchiveException::genericException);
    }
    if (IsLoading()) {
        if (m_lpBufCur != m_lpBufMax) {
            m_pFile->Seek(-static_cast<LONGLONG>(m_lpBufMax - m_lpBufCur), CFile::current);
        }
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
        return;
    }
    const UINT nBytes = static_cast<UINT>(m_lpBufCur - m_lpBufStart);
    // The buffer is emptied first: after a failure nothing is written a second time.
    m_lpBufCur = m_lpBufStart;
    if (nBytes > 0) {
        m_pFile->Write(m_lpBufStart, nBytes);
    }
}

void CArchive::Fail(int cause) {
    AfxThrowArchiveException(cause, m_strFileName);
}

void CArchive::CheckDirection(bool bLoading) {
    if (bLoading != (IsLoading() != FALSE)) {
        Fail(bLoading ? CArchiveException::writeOnly : CArchiveException::readOnly);
    }
    if (m_pFile == NULL) {
        Fail(CArchiveException::genericException);
    }
}

// ---- bytes ---------------------------------------------------------------------------------------------------------

UINT CArchive::Read(void* lpBuf, UINT nMax) {
    CheckDirection(true);
    if (nMax == 0) {
        return 0;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    BYTE* pDest = static_cast<BYTE*>(lpBuf);
    UINT nLeft = nMax;
    for (;;) {
        UINT nHere = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
        if (nHere > nLeft) {
            nHere = nLeft;
        }
        if (nHere > 0) {
            memcpy(pDest, m_lpBufCur, nHere);
        }
        m_lpBufCur += nHere;
        pDest += nHere;
        nLeft -= nHere;
        if (nLeft == 0) {
            return nMax;
        }
        // The buffer is empty. Large blocks are read directly into the caller's memory.
        m_lpBufCur = m_lpBufMax = m_lpBufStart;
        if (nLeft >= m_nBufSize) {
            UINT nRead = m_pFile->Read(pDest, nLeft);
            if (nRead > nLeft) {
                nRead = nLeft;
            }
            pDest += nRead;
            nLeft -= nRead;
            if (nLeft == 0 || nRead == 0) {
                return nMax - nLeft;
            }
            continue;
        }
        UINT nRead = m_pFile->Read(m_lpBufStart, m_nBufSize);
        if (nRead == 0) {
            return nMax - nLeft;
        }
        m_lpBufMax = m_lpBufStart + (nRead > m_nBufSize ? m_nBufSize : nRead);
    }
}

void CArchive::EnsureRead(void* lpBuf, UINT nCount) {
    CheckDirection(true);
    if (nCount == 0) {
        return;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    // Read into a separate block first: where the data ends too early, the caller's bytes stay as they were.
    BYTE value[16];
    std::unique_ptr<void, decltype(&AfxFreeBlock)> block(NULL, AfxFreeBlock);
    if (nCount > sizeof(value)) {
        block.reset(AfxAllocBlock(nCount));
    }
    void* pWhole = block ? block.get() : value;
    if (Read(pWhole, nCount) != nCount) {
        Fail(CArchiveException::endOfFile);
    }
    memcpy(lpBuf, pWhole, nCount);
}

void CArchive::Write(const void* lpBuf, UINT nMax) {
    CheckDirection(false);
    if (nMax == 0) {
        return;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    if (nMax > static_cast<size_t>(m_lpBufMax - m_lpBufCur)) {
        Flush();
        if (nMax >= m_nBufSize) {
            m_pFile->Write(lpBuf, nMax);
            return;
        }
    }
    memcpy(m_lpBufCur, lpBuf, nMax);
    m_lpBufCur += nMax;
}

// ---- lines and counts ----------------------------------------------------------------------------------------------

LPTSTR CArchive::ReadString(LPTSTR lpsz, UINT nMax) {
    if (lpsz == NULL) {
        AfxThrowInvalidArgException();
    }
    CheckDirection(true);
    CString strLine;
    wchar_t ch = 0;
    bool bAny = false;
    // A line feed ends the line, and a carriage return before it is dropped too.
    while (static_cast<UINT>(strLine.GetLength()) < nMax) {
        const UINT nRead = Read(&ch, sizeof(ch));
        if (nRead == 0) {
            break;
        }
        if (nRead != sizeof(ch)) {
            Fail(CArchiveException::endOfFile);
        }
        bAny = true;
        if (ch == L'\n') {
            if (strLine.GetLength() > 0 && strLine[strLine.GetLength() - 1] == L'\r') {
                strLine.Truncate(strLine.GetLength() - 1);
            }
            break;
        }
        strLine.AppendChar(ch);
    }
    memcpy(lpsz, strLine.GetString(), static_cast<size_t>(strLine.GetLength() + 1) * sizeof(wchar_t));
    return bAny || nMax == 0 ? lpsz : NULL;
}

BOOL CArchive::ReadString(CString& rString) {
    CString strLine;
    wchar_t szPiece[129];
    bool bAny = false;
    for (;;) {
        const ULONGLONG nAlready = static_cast<ULONGLONG>(strLine.GetLength());
        UINT nLength = 0;
        bool bEnd = false;
        while (nLength < 128) {
            wchar_t ch;
            const UINT nRead = Read(&ch, sizeof(ch));
            if (nRead == 0) {
                bEnd = true;
                break;
            }
            if (nRead != sizeof(ch)) {
                Fail(CArchiveException::endOfFile);
            }
            bAny = true;
            if (ch == L'\n') {
                bEnd = true;
                break;
            }
            szPiece[nLength++] = ch;
        }
        strLine.Append(szPiece, static_cast<int>(nLength));
        if (bEnd) {
            break;
        }
        if (nAlready > INT_MAX - 256) {
            AfxThrowMemoryException();
        }
    }
    if (strLine.GetLength() > 0 && strLine[strLine.GetLength() - 1] == L'\r') {
        strLine.Truncate(strLine.GetLength() - 1);
    }
    rString = strLine;
    return bAny;
}

void CArchive::WriteString(LPCTSTR lpsz) {
    if (lpsz == NULL) {
        AfxThrowInvalidArgException();
    }
    Write(lpsz, static_cast<UINT>(wcslen(lpsz) * sizeof(wchar_t)));
}

DWORD_PTR CArchive::ReadCount() {
    WORD wCount;
    *this >> wCount;
    if (wCount != 0xFFFF) {
        return wCount;
    }
    DWORD dwCount;
    *this >> dwCount;
    if (dwCount != 0xFFFFFFFF) {
        return dwCount;
    }
    ULONGLONG nCount;
    *this >> nCount;
    return static_cast<DWORD_PTR>(nCount);
}

void CArchive::WriteCount(DWORD_PTR dwCount) {
    if (dwCount < 0xFFFF) {
        *this << static_cast<WORD>(dwCount);
        return;
    }
    *this << static_cast<WORD>(0xFFFF);
    if (dwCount < 0xFFFFFFFF) {
        *this << static_cast<DWORD>(dwCount);
        return;
    }
    *this << static_cast<DWORD>(0xFFFFFFFF) << static_cast<ULONGLONG>(dwCount);
}

// ---- text ----------------------------------------------------------------------------------------------------------

void AFXAPI AfxWriteStringLength(CArchive& ar, UINT_PTR nLength, BOOL bUnicode) {
    if (bUnicode && nLength < 255) {
        // Writes the mark and the length, which follow below separately, in one call, for speed.
        ar << (0x00FFFEFFu | static_cast<DWORD>(nLength) << 24);
        return;
    }
    if (bUnicode) {
        ar << static_cast<BYTE>(0xFF) << static_cast<WORD>(0xFFFE);
    }
    if (nLength < 255) {
        ar << static_cast<BYTE>(nLength);
        return;
    }
    ar << static_cast<BYTE>(0xFF);
    if (nLength < 0xFFFE) {
        ar << static_cast<WORD>(nLength);
        return;
    }
    ar << static_cast<WORD>(0xFFFF);
    if (nLength < 0xFFFFFFFF) {
        ar << static_cast<DWORD>(nLength);
        return;
    }
    ar << static_cast<DWORD>(0xFFFFFFFF) << static_cast<ULONGLONG>(nLength);
}

UINT_PTR AFXAPI AfxReadStringLength(CArchive& ar, int& nCharSize) {
    int nSize = sizeof(char);
    BYTE bLength;
    WORD wLength = 0;
    DWORD dwLength = 0;
    ULONGLONG nLength;
    ar >> bLength;
    if (bLength == 0xFF) {
        ar >> wLength;
        if (wLength == 0xFFFE) {
            // The mark of 16-bit text; the length follows in the same forms once more.
            nSize = sizeof(wchar_t);
            ar >> bLength;
            if (bLength == 0xFF) {
                ar >> wLength;
            }
        }
    }
    if (bLength < 0xFF) {
        nLength = bLength;
    } else if (wLength < 0xFFFF) {
        nLength = wLength;
    } else {
        ar >> dwLength;
        nLength = dwLength;
        if (dwLength == 0xFFFFFFFF) {
            ar >> nLength;
        }
    }
    nCharSize = nSize; // only with a whole length
    return static_cast<UINT_PTR>(nLength);
}

template <typename T>
void CArchive::ReadText(CStringT<T>& str, ULONGLONG nLength) {
    str.Empty();
    const size_t nBuffered = static_cast<size_t>(m_lpBufMax - m_lpBufCur);
    if (nLength <= nBuffered / sizeof(T)) {
        T* pszText = str.GetBufferSetLength(static_cast<int>(nLength));
        if (nLength > 0) {
            memcpy(pszText, m_lpBufCur, static_cast<size_t>(nLength) * sizeof(T));
        }
        m_lpBufCur += nLength * sizeof(T);
        return;
    }
    for (ULONGLONG nDone = 0; nDone < nLength;) {
        ULONGLONG nPiece = nDone < kFirstPiece ? kFirstPiece : nDone;
        if (nPiece > nLength - nDone) {
            nPiece = nLength - nDone;
        }
        if (nDone + nPiece > INT_MAX / 4) {
            AfxThrowMemoryException(); // more than a text can hold, and the stream really has it
        }
        T* pszText = str.GetBuffer(static_cast<int>(nDone + nPiece));
        const UINT nBytes = static_cast<UINT>(nPiece * sizeof(T));
        if (Read(pszText + nDone, nBytes) != nBytes) {
            Fail(CArchiveException::endOfFile);
        }
        nDone += nPiece;
        str.ReleaseBufferSetLength(static_cast<int>(nDone));
    }
}

CArchive& AFXAPI operator<<(CArchive& ar, const CString& string) {
    AfxWriteStringLength(ar, static_cast<UINT_PTR>(string.GetLength()), TRUE);
    ar.Write(string.GetString(), static_cast<UINT>(string.GetLength()) * static_cast<UINT>(sizeof(wchar_t)));
    return ar;
}

CArchive& AFXAPI operator<<(CArchive& ar, const CStringA& string) {
    AfxWriteStringLength(ar, static_cast<UINT_PTR>(string.GetLength()), FALSE);
    ar.Write(string.GetString(), static_cast<UINT>(string.GetLength()));
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CString& string) {
    int nCharSize;
    const ULONGLONG nLength = AfxReadStringLength(ar, nCharSize);
    CString strText;
    if (nCharSize == sizeof(wchar_t)) {
        ar.ReadText(strText, nLength);
    } else {
        CStringA strNarrow;
        ar.ReadText(strNarrow, nLength);
        const int nBytes = strNarrow.GetLength();
        const int nWide = nBytes == 0 ? 0 : MultiByteToWideChar(kNarrowTextCodePage, 0, strNarrow, nBytes, NULL, 0);
        if (nWide > 0) {
            MultiByteToWideChar(kNarrowTextCodePage, 0, strNarrow, nBytes, strText.GetBufferSetLength(nWide), nWide);
        }
    }
    string = static_cast<CString&&>(strText);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CStringA& string) {
    int nCharSize;
    const ULONGLONG nLength = AfxReadStringLength(ar, nCharSize);
    CStringA strText;
    if (nCharSize == sizeof(char)) {
        ar.ReadText(strText, nLength);
    } else {
        CStringW strWide;
        ar.ReadText(strWide, nLength);
        strText = CStringA(strWide);
    }
    string = static_cast<CStringA&&>(strText);
    return ar;
}
