// Files in the temporary folder. Layer 16: tests.
#pragma once

#include "support/TestData.h"

// A path in the temporary folder that no file has, removed again at the end.
class TemporaryPath {
public:
    TemporaryPath() {
        wchar_t folder[MAX_PATH] = {};
        ::GetTempPath(MAX_PATH, folder);
        static int number = 0;
        m_path.Format(L"%snrv图%lu_%d.nrv", folder, ::GetCurrentProcessId(), ++number);
        ::DeleteFile(m_path);
    }
    ~TemporaryPath() {
        ::SetFileAttributes(m_path, FILE_ATTRIBUTE_NORMAL);
        ::DeleteFile(m_path);
    }
    operator LPCTSTR() const { return m_path; }
    operator CString() const { return m_path; }
    bool Exists() const { return ::GetFileAttributes(m_path) != INVALID_FILE_ATTRIBUTES; }
    Bytes Read() const {
        CFile file(m_path, CFile::modeRead);
        Bytes bytes(static_cast<size_t>(file.GetLength()));
        if (!bytes.empty()) {
            file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        }
        return bytes;
    }
    void Write(const Bytes& bytes) const {
        CFile file(m_path, CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    }

private:
    CString m_path;
};

// The number of files in the temporary folder that a save writes beside its target.
inline int FilesInTheMaking() {
    wchar_t folder[MAX_PATH] = {};
    ::GetTempPath(MAX_PATH, folder);
    int count = 0;
    WIN32_FIND_DATA found = {};
    const HANDLE search = ::FindFirstFile(CString(folder) + L"NRV*.tmp", &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            ++count;
        } while (::FindNextFile(search, &found));
        ::FindClose(search);
    }
    return count;
}
