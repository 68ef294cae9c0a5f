#include "DemoData.h"

#include <shlobj.h>

#include <algorithm>

namespace {

const wchar_t Section[] = L"recent";
const wchar_t Prefix[] = L"recovery-";

CString AliveName(const CString& number) {
    return L"NRVectorView demo " + number;
}

CString OwnNumber() {
    CString number;
    number.Format(L"%lu", ::GetCurrentProcessId());
    return number;
}

bool IsRunning(const CString& number) {
    const HANDLE alive = ::OpenMutexW(SYNCHRONIZE, FALSE, AliveName(number));
    if (alive != nullptr) {
        ::CloseHandle(alive);
    }
    return alive != nullptr;
}

} // namespace

CString GetDataFile(const CString& name) {
    wchar_t folder[MAX_PATH] = L"";
    const DWORD length = ::GetEnvironmentVariableW(L"NRVV_DEMO_DATA", folder, MAX_PATH);
    CString path = folder;
    if (length == 0 || length >= MAX_PATH) {
        ::SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, 0, folder);
        path = CString(folder) + L"\\NRVectorView demo";
    }
    ::CreateDirectoryW(path, nullptr);
    return path + L"\\" + name;
}

// ---- Recent files

CRecentFiles::CRecentFiles() {
    for (int i = 0; i < Most; ++i) {
        CString key;
        key.Format(L"%d", i);
        wchar_t path[MAX_PATH] = L"";
        if (::GetPrivateProfileStringW(Section, key, L"", path, MAX_PATH, GetDataFile(L"demo.ini")) > 0) {
            m_paths.emplace_back(path);
        }
    }
}

void CRecentFiles::Add(const CString& path) {
    Remove(path);
    m_paths.insert(m_paths.begin(), path);
    m_paths.resize(std::min<size_t>(m_paths.size(), Most));
    Store();
}

void CRecentFiles::Remove(const CString& path) {
    const auto same = [&](const CString& other) { return other.CompareNoCase(path) == 0; };
    m_paths.erase(std::remove_if(m_paths.begin(), m_paths.end(), same), m_paths.end());
    Store();
}

void CRecentFiles::Store() {
    // A new file begins with a byte order mark: without it names are stored in the system's code page.
    CFile file;
    if (file.Open(GetDataFile(L"demo.ini"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite) &&
        file.GetLength() == 0) {
        file.Write("\xFF\xFE", 2);
    }
    if (file.m_hFile != CFile::hFileNull) {
        file.Close();
    }
    for (int i = 0; i < Most; ++i) {
        CString key;
        key.Format(L"%d", i);
        const bool has = static_cast<size_t>(i) < m_paths.size();
        ::WritePrivateProfileStringW(Section, key,
                                     has ? static_cast<LPCTSTR>(m_paths[static_cast<size_t>(i)]) : nullptr,
                                     GetDataFile(L"demo.ini"));
    }
}

// ---- The recovery copy

CRecoveryCopy::CRecoveryCopy()
    : m_alive(::CreateMutexW(nullptr, FALSE, AliveName(OwnNumber()))),
      m_path(GetDataFile(Prefix + OwnNumber() + L".nrv")) {}

CRecoveryCopy::~CRecoveryCopy() {
    Remove();
    ::CloseHandle(m_alive);
}

void CRecoveryCopy::Keep(CGraphicDocument& document) {
    if (!document.IsModified()) {
        Remove();
        return;
    }
    CMemFile stream;
    document.StoreToMemFile(&stream);
    std::vector<BYTE> bytes(static_cast<size_t>(stream.GetLength()));
    stream.SeekToBegin();
    stream.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    if (bytes == m_kept) {
        return;
    }
    // Written under another name first, so that a kill in the middle leaves the former copy.
    const CString fresh = m_path + L".new";
    CFile file;
    if (file.Open(fresh, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive)) {
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file.Close();
        ::MoveFileExW(fresh, m_path, MOVEFILE_REPLACE_EXISTING);
        m_kept.swap(bytes);
    }
}

void CRecoveryCopy::Remove() {
    ::DeleteFileW(m_path);
    m_kept.clear();
}

std::vector<CString> CRecoveryCopy::FindLeft() {
    std::vector<CString> left;
    WIN32_FIND_DATAW found;
    const HANDLE search = ::FindFirstFileW(GetDataFile(CString(Prefix) + L"*.nrv"), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return left;
    }
    do {
        const CString name = found.cFileName;
        const int begin = static_cast<int>(wcslen(Prefix));
        if (!IsRunning(name.Mid(begin, name.GetLength() - begin - 4))) {
            left.push_back(GetDataFile(name));
        }
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
    return left;
}
