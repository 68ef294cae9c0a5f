// CMemFile: a file on a block of memory. Layer 1: afx.
#include "afxfile.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

// ---- construction --------------------------------------------------------------------------------------------------

CMemFile::CMemFile(UINT nGrowBytes)
    : m_nGrowBytes(nGrowBytes), m_nPosition(0), m_nBufferSize(0), m_nFileSize(0), m_lpBuffer(NULL),
      m_bAutoDelete(TRUE) {}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) : CMemFile(nGrowBytes) {
    Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile() {
    CMemFile::Abort();
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) {
    if (m_lpBuffer != NULL) {
        AfxThrowInvalidArgException(); // the block held so far would be lost
    }
    m_nGrowBytes = nGrowBytes;
    m_nPosition = 0;
    m_nBufferSize = lpBuffer == NULL ? 0 : nBufferSize;
    m_nFileSize = nGrowBytes == 0 ? m_nBufferSize : 0;
    m_lpBuffer = lpBuffer;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach() {
    BYTE* lpBuffer = m_lpBuffer;
    m_lpBuffer = NULL;
    m_nPosition = m_nBufferSize = m_nFileSize = 0;
    m_bAutoDelete = TRUE; // a further block will be allocated by the file
    return lpBuffer;
}

CFile* CMemFile::Duplicate() const {
    AfxThrowNotSupportedException();
}

void CMemFile::Close() {
    Abort();
}

void CMemFile::Abort() noexcept {
    if (m_bAutoDelete && m_lpBuffer != NULL) {
        Free(m_lpBuffer);
    }
    m_nGrowBytes = 0;
    m_nPosition = m_nBufferSize = m_nFileSize = 0;
    m_lpBuffer = NULL;
}

// ---- reading and writing -------------------------------------------------------------------------------------------

ULONGLONG CMemFile::GetPosition() const {
    return m_nPosition;
}

ULONGLONG CMemFile::GetLength() const {
    return m_nFileSize;
}

void CMemFile::SetLength(ULONGLONG dwNewLen) {
    if (dwNewLen > static_cast<ULONGLONG>(INTPTR_MAX)) {
        AfxThrowMemoryException();
    }
    const SIZE_T nNewLen = static_cast<SIZE_T>(dwNewLen);
    if (nNewLen > m_nBufferSize) {
        GrowFile(nNewLen);
    }
    if (nNewLen > m_nFileSize) {
        memset(m_lpBuffer + m_nFileSize, 0, nNewLen - m_nFileSize);
    }
    if (nNewLen < m_nPosition) {
        m_nPosition = nNewLen;
    }
    m_nFileSize = nNewLen;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom) {
    LONGLONG nBase = 0;
    if (nFrom == current) {
        nBase = static_cast<LONGLONG>(m_nPosition);
    } else if (nFrom == end) {
        nBase = static_cast<LONGLONG>(m_nFileSize);
    } else if (nFrom != begin) {
        AfxThrowInvalidArgException();
    }
    // The base is never negative, so that only a sum beyond the largest number can overflow.
    if (lOff > INT64_MAX - nBase || nBase + lOff < 0) {
        AfxThrowFileException(CFileException::badSeek);
    }
    m_nPosition = static_cast<SIZE_T>(nBase + lOff);
    return m_nPosition;
}

UINT CMemFile::Read(void* lpBuf, UINT nCount) {
    if (nCount == 0 || m_nPosition >= m_nFileSize) {
        return 0;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    if (nCount > m_nFileSize - m_nPosition) {
        nCount = static_cast<UINT>(m_nFileSize - m_nPosition);
    }
    Memcpy(static_cast<BYTE*>(lpBuf), m_lpBuffer + m_nPosition, nCount);
    m_nPosition += nCount;
    return nCount;
}

void CMemFile::Write(const void* lpBuf, UINT nCount) {
    if (nCount == 0) {
        return;
    }
    if (lpBuf == NULL) {
        AfxThrowInvalidArgException();
    }
    if (m_nPosition > static_cast<SIZE_T>(INTPTR_MAX) - nCount) {
        AfxThrowMemoryException();
    }
    const SIZE_T nEnd = m_nPosition + nCount;
    if (nEnd > m_nBufferSize) {
        GrowFile(nEnd);
    }
    if (m_nPosition > m_nFileSize) {
        memset(m_lpBuffer + m_nFileSize, 0, m_nPosition - m_nFileSize); // the gap that a seek left
    }
    Memcpy(m_lpBuffer + m_nPosition, static_cast<const BYTE*>(lpBuf), nCount);
    m_nPosition = nEnd;
    if (m_nPosition > m_nFileSize) {
        m_nFileSize = m_nPosition;
    }
}

void CMemFile::Flush() {}

void CMemFile::LockRange(ULONGLONG, ULONGLONG) {
    AfxThrowNotSupportedException();
}

void CMemFile::UnlockRange(ULONGLONG, ULONGLONG) {
    AfxThrowNotSupportedException();
}

// ---- the block -----------------------------------------------------------------------------------------------------

BYTE* CMemFile::Alloc(SIZE_T nBytes) {
    return static_cast<BYTE*>(malloc(nBytes));
}

BYTE* CMemFile::Realloc(BYTE* lpMem, SIZE_T nBytes) {
    return static_cast<BYTE*>(realloc(lpMem, nBytes));
}

BYTE* CMemFile::Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes) {
    return static_cast<BYTE*>(memcpy(lpMemTarget, lpMemSource, nBytes));
}

void CMemFile::Free(BYTE* lpMem) {
    free(lpMem);
}

void CMemFile::GrowFile(SIZE_T dwNewLen) {
    if (dwNewLen <= m_nBufferSize) {
        return;
    }
    if (m_nGrowBytes == 0) {
        AfxThrowMemoryException(); // a borrowed block, or a closed file
    }
    // Whole steps of m_nGrowBytes, and by half at least, so that many small writes stay cheap.
    SIZE_T nNewSize = m_nBufferSize + m_nBufferSize / 2;
    if (nNewSize < dwNewLen) {
        nNewSize = dwNewLen;
    }
    if (nNewSize > static_cast<SIZE_T>(INTPTR_MAX) - m_nGrowBytes) {
        AfxThrowMemoryException();
    }
    nNewSize = (nNewSize + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
    BYTE* lpNew = m_lpBuffer == NULL ? Alloc(nNewSize) : Realloc(m_lpBuffer, nNewSize);
    if (lpNew == NULL) {
        AfxThrowMemoryException();
    }
    m_lpBuffer = lpNew;
    m_nBufferSize = nNewSize;
}
