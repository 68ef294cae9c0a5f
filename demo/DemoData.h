// Where the demo keeps what outlives it: the recent files, and the recovery copy of an unsaved drawing.
// Layer 13: demo.
#pragma once

#include <Document.h>

#include <vector>

// A file in the demo's own folder, which is made when it is missing: that of the environment variable NRVV_DEMO_DATA,
// else "NRVectorView demo" among the user's application data.
CString GetDataFile(const CString& name);

// The files opened and saved last, the last one first.
class CRecentFiles {
public:
    static const int Most = 6;

    CRecentFiles();
    void Add(const CString& path);
    void Remove(const CString& path);
    const std::vector<CString>& Get() const { return m_paths; }

private:
    void Store();
    std::vector<CString> m_paths;
};

// A copy of the unsaved drawing, one for each running demo. It is removed when the drawing is saved or discarded, so
// that a copy whose program does not run is that of a killed program.
class CRecoveryCopy {
public:
    CRecoveryCopy();
    ~CRecoveryCopy();
    CRecoveryCopy(const CRecoveryCopy&) = delete;
    CRecoveryCopy& operator=(const CRecoveryCopy&) = delete;

    // Writes the drawing, if it is modified and differs from the last copy; removes the copy, if it is not modified.
    void Keep(CGraphicDocument& document);
    void Remove();
    // The copies that killed programs have left.
    static std::vector<CString> FindLeft();

private:
    HANDLE m_alive; // A mutex with the program's number in its name, which exists as long as the program.
    CString m_path;
    std::vector<BYTE> m_kept;
};
