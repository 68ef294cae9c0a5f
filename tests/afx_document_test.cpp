// The MFC layer's documents: path, title and flag; loading; saving that never loses a good file.
// Layer 16: tests.
#include "support/BoxAnswer.h"
#include "support/UiLanguage.h"

#include <afxwin.h>

#include <gtest/gtest.h>

#include <new>

namespace {

// Holds bytes; can be set to fail half-way.
class Bytes : public CDocument {
public:
    enum Failure { None, Throw, SwallowAndAbort, SwallowAndClose, User, BreakFile, Number, NoMemory };
    Bytes() { m_bAutoDelete = FALSE; }
    std::string m_bytes;
    Failure m_failure = None;
    int m_deleted = 0;
    CDocument* m_archiveDocument = nullptr;

    void DeleteContents() override { ++m_deleted; }
    void Serialize(CArchive& ar) override {
        m_archiveDocument = ar.m_pDocument;
        if (ar.IsLoading()) {
            char byte = 0;
            m_bytes.clear();
            while (ar.Read(&byte, 1) == 1) {
                m_bytes += byte;
            }
        } else {
            ar.Write(m_bytes.data(), static_cast<UINT>(m_bytes.size()));
        }
        switch (m_failure) {
        case Throw:
            AfxThrowArchiveException(CArchiveException::badClass);
        case User:
            AfxThrowUserException();
        case BreakFile:
            // What is still in the archive's buffer can't be written any more.
            ::CloseHandle(ar.GetFile()->m_hFile);
            break;
        case Number:
            throw 7;
        case NoMemory:
            throw std::bad_alloc();
        case SwallowAndAbort:
            ar.Abort();
            break;
        case SwallowAndClose:
            ar.Close();
            break;
        default:
            break;
        }
    }
};

class DesktopAfxDocument : public testing::Test {
protected:
    const UiLanguage m_language{UiLanguage::kChinese}; // Of the messages.

    void SetUp() override {
        TCHAR temp[MAX_PATH] = {};
        ::GetTempPath(MAX_PATH, temp);
        m_folder.Format(L"%lsnrafx%lu", temp, ::GetCurrentProcessId());
        ::CreateDirectory(m_folder, nullptr);
        m_path = m_folder + L"\\图 1.bin";
    }
    void TearDown() override {
        for (const CString& name : Names()) {
            ::SetFileAttributes(m_folder + L"\\" + name, FILE_ATTRIBUTE_NORMAL);
            ::DeleteFile(m_folder + L"\\" + name);
        }
        ::RemoveDirectory(m_folder);
    }
    std::vector<CString> Names() const {
        std::vector<CString> names;
        WIN32_FIND_DATA found = {};
        const HANDLE search = ::FindFirstFile(m_folder + L"\\*", &found);
        if (search == INVALID_HANDLE_VALUE) {
            return names;
        }
        do {
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                names.push_back(found.cFileName);
            }
        } while (::FindNextFile(search, &found));
        ::FindClose(search);
        return names;
    }
    void Put(const std::string& bytes) {
        CFile file(m_path, CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    }
    std::string Get() {
        CFile file(m_path, CFile::modeRead);
        std::string bytes(static_cast<size_t>(file.GetLength()), '\0');
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        return bytes;
    }

    // Whether no handle to the file is open.
    bool IsFree() const {
        CFile file;
        return file.Open(m_path, CFile::modeReadWrite | CFile::shareExclusive) != FALSE;
    }

    CString m_folder, m_path;
};

} // namespace

TEST_F(DesktopAfxDocument, ThePathBringsTheTitle) {
    Bytes document;
    document.SetPathName(m_path);
    EXPECT_EQ(Utf8(document.GetPathName()), Utf8(m_path));
    EXPECT_EQ(Utf8(document.GetTitle()), "图 1.bin");
    EXPECT_FALSE(document.IsModified());
    document.SetModifiedFlag();
    EXPECT_TRUE(document.IsModified());
    EXPECT_TRUE(document.OnNewDocument());
    EXPECT_FALSE(document.IsModified());
    EXPECT_TRUE(document.GetPathName().IsEmpty());
    EXPECT_EQ(document.m_deleted, 1);
}

TEST_F(DesktopAfxDocument, WhatIsSavedIsLoadedAgain) {
    Bytes document;
    document.m_bytes = std::string(10000, 'x') + "end";
    document.SetModifiedFlag();
    ASSERT_TRUE(document.OnSaveDocument(m_path));
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(document.m_archiveDocument, &document);
    EXPECT_EQ(Get(), document.m_bytes);
    Bytes other;
    ASSERT_TRUE(other.OnOpenDocument(m_path));
    EXPECT_EQ(other.m_bytes, document.m_bytes);
    EXPECT_EQ(other.m_deleted, 1);
    EXPECT_FALSE(other.IsModified());
    // Over an old file.
    document.m_bytes = "short";
    ASSERT_TRUE(document.OnSaveDocument(m_path));
    EXPECT_EQ(Get(), "short");
    EXPECT_EQ(Names().size(), 1u);
}

TEST_F(DesktopAfxDocument, ASaveThatThrowsLeavesTheOldFileAndShowsWhy) {
    Put("good");
    Bytes document;
    document.m_bytes = std::string(20000, 'x');
    document.m_failure = Bytes::Throw;
    document.SetModifiedFlag();
    BoxAnswer boxes({IDOK});
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_EQ(Get(), "good");
    EXPECT_EQ(Names().size(), 1u) << "no temporary file may stay";
    EXPECT_TRUE(document.IsModified());
    document.m_failure = Bytes::User; // has informed the user already
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    EXPECT_EQ(boxes.Texts().size(), 1u);
}

TEST_F(DesktopAfxDocument, ASaveWhoseArchiveWasEndedBySerializeCountsAsFailed) {
    Put("good");
    Bytes document;
    document.m_bytes = std::string(20000, 'x');
    BoxAnswer boxes({IDOK});
    for (const auto failure : {Bytes::SwallowAndAbort, Bytes::SwallowAndClose}) {
        document.m_failure = failure;
        document.SetModifiedFlag();
        EXPECT_FALSE(document.OnSaveDocument(m_path));
        EXPECT_EQ(Get(), "good");
        EXPECT_EQ(Names().size(), 1u);
        EXPECT_TRUE(document.IsModified());
    }
    EXPECT_TRUE(boxes.Texts().empty()); // Serialize has reported it
}

TEST_F(DesktopAfxDocument, AFailureOfTheLastWriteLeavesTheOldFileAndIsShown) {
    Put("good");
    Bytes document;
    document.m_bytes = "in the buffer until the end";
    document.m_failure = Bytes::BreakFile;
    document.SetModifiedFlag();
    BoxAnswer boxes({IDOK});
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_EQ(Get(), "good");
    EXPECT_EQ(Names().size(), 1u);
    EXPECT_TRUE(document.IsModified());
}

TEST_F(DesktopAfxDocument, AFailedFirstSaveLeavesNoFile) {
    Bytes document;
    document.m_failure = Bytes::SwallowAndAbort;
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    EXPECT_TRUE(Names().empty());
}

TEST_F(DesktopAfxDocument, AReadOnlyFileIsNotReplaced) {
    Put("good");
    ::SetFileAttributes(m_path, FILE_ATTRIBUTE_READONLY);
    Bytes document;
    document.m_bytes = "new";
    BoxAnswer boxes({IDOK});
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    ASSERT_EQ(boxes.Texts().size(), 1u);
    EXPECT_NE(boxes.Texts()[0].find("图 1.bin"), std::string::npos);
    EXPECT_NE(boxes.Texts()[0].find("只读"), std::string::npos);
    EXPECT_EQ(Get(), "good");
}

TEST_F(DesktopAfxDocument, ASavedFileKeepsTheAttributesAndTheTimeOfMakingOfTheOldOne) {
    Put("good");
    const FILETIME made = {0x12345678, 0x01C00000};
    const HANDLE old = ::CreateFile(m_path, FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(::SetFileTime(old, &made, nullptr, nullptr));
    ::CloseHandle(old);
    ASSERT_TRUE(::SetFileAttributes(m_path, FILE_ATTRIBUTE_HIDDEN));
    WIN32_FILE_ATTRIBUTE_DATA before = {};
    ASSERT_TRUE(::GetFileAttributesEx(m_path, GetFileExInfoStandard, &before));
    Bytes document;
    document.m_bytes = "new";
    EXPECT_TRUE(document.OnSaveDocument(m_path));
    WIN32_FILE_ATTRIBUTE_DATA after = {};
    ASSERT_TRUE(::GetFileAttributesEx(m_path, GetFileExInfoStandard, &after));
    EXPECT_EQ(before.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN, after.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN);
    // Where the system keeps no time of making, it tells that of the last change.
    if (before.ftCreationTime.dwHighDateTime == made.dwHighDateTime) {
        EXPECT_EQ(before.ftCreationTime.dwLowDateTime, after.ftCreationTime.dwLowDateTime);
    }
    EXPECT_EQ(Get(), "new");
}

TEST_F(DesktopAfxDocument, AFileThatIsOpenElsewhereIsNotReplaced) {
    Put("good");
    CFile held(m_path, CFile::modeRead | CFile::shareExclusive);
    Bytes document;
    document.m_bytes = "new";
    BoxAnswer boxes({IDOK});
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    held.Close();
    EXPECT_EQ(Get(), "good");
    EXPECT_EQ(Names().size(), 1u);
}

TEST_F(DesktopAfxDocument, AMissingFolderOrFileIsNamed) {
    Bytes document;
    document.m_bytes = "kept";
    BoxAnswer boxes({IDOK});
    EXPECT_FALSE(document.OnSaveDocument(m_folder + L"\\nowhere\\a.bin"));
    EXPECT_FALSE(document.OnOpenDocument(m_folder + L"\\b.bin"));
    ASSERT_EQ(boxes.Texts().size(), 2u);
    EXPECT_NE(boxes.Texts()[0].find("a.bin"), std::string::npos);
    EXPECT_NE(boxes.Texts()[1].find("找不到"), std::string::npos);
    EXPECT_EQ(document.m_bytes, "kept");
    EXPECT_EQ(document.m_deleted, 0);
}

TEST_F(DesktopAfxDocument, ALoadThatThrowsEmptiesTheDocument) {
    Put("bad");
    Bytes document;
    document.m_failure = Bytes::Throw;
    BoxAnswer boxes({IDOK});
    EXPECT_FALSE(document.OnOpenDocument(m_path));
    EXPECT_EQ(document.m_deleted, 2);
    ASSERT_EQ(boxes.Texts().size(), 1u);
    EXPECT_NE(boxes.Texts()[0].find("格式"), std::string::npos);
    EXPECT_EQ(Get(), "bad");
}

TEST_F(DesktopAfxDocument, AnExceptionOfAnyTypeLeavesASaveWithNoFileOpenAndTheOldOneInItsPlace) {
    Put("good");
    Bytes document;
    document.m_bytes = std::string(20000, 'x');
    document.m_failure = Bytes::Number;
    document.SetModifiedFlag();
    BoxAnswer boxes({IDOK});
    EXPECT_THROW(document.OnSaveDocument(m_path), int);
    EXPECT_EQ(boxes.Texts().size(), 0u);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(Names().size(), 1u);
    EXPECT_TRUE(IsFree());
    EXPECT_EQ(Get(), "good");
    document.m_failure = Bytes::NoMemory;
    EXPECT_FALSE(document.OnSaveDocument(m_path));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_EQ(Names().size(), 1u);
    EXPECT_EQ(Get(), "good");
}

TEST_F(DesktopAfxDocument, AnExceptionOfAnyTypeLeavesALoadWithNoFileOpenAndAnEmptyDocument) {
    Put("bad");
    Bytes document;
    document.m_failure = Bytes::Number;
    BoxAnswer boxes({IDOK});
    EXPECT_THROW(document.OnOpenDocument(m_path), int);
    EXPECT_EQ(document.m_deleted, 2);
    EXPECT_EQ(boxes.Texts().size(), 0u);
    EXPECT_TRUE(IsFree());
    document.m_failure = Bytes::NoMemory;
    EXPECT_FALSE(document.OnOpenDocument(m_path));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    EXPECT_TRUE(IsFree());
    EXPECT_EQ(Get(), "bad");
}

TEST_F(DesktopAfxDocument, AnEmptyFileIsNotSerialised) {
    Put("");
    Bytes document;
    document.m_failure = Bytes::Throw;
    EXPECT_TRUE(document.OnOpenDocument(m_path));
}

TEST_F(DesktopAfxDocument, DoSaveToAPathKeepsItAsTheDocuments) {
    Bytes document;
    document.m_bytes = "abc";
    ASSERT_TRUE(document.DoSave(m_path, FALSE));
    EXPECT_TRUE(document.GetPathName().IsEmpty());
    ASSERT_TRUE(document.DoSave(m_path));
    EXPECT_EQ(Utf8(document.GetPathName()), Utf8(m_path));
    document.m_bytes = "abcd";
    ASSERT_TRUE(document.DoFileSave());
    EXPECT_EQ(Get(), "abcd");
}

TEST_F(DesktopAfxDocument, SaveModifiedAsksOnlyWhenSomethingChanged) {
    Bytes document;
    ASSERT_TRUE(document.DoSave(m_path));
    EXPECT_TRUE(document.SaveModified());
    document.SetModifiedFlag();
    {
        BoxAnswer boxes({IDCANCEL});
        EXPECT_FALSE(document.SaveModified());
        ASSERT_EQ(boxes.Texts().size(), 1u);
        EXPECT_NE(boxes.Texts()[0].find("图 1.bin"), std::string::npos);
    }
    {
        BoxAnswer boxes({IDNO});
        EXPECT_TRUE(document.SaveModified());
        EXPECT_TRUE(document.IsModified());
    }
    BoxAnswer boxes({IDYES});
    EXPECT_TRUE(document.SaveModified());
    EXPECT_FALSE(document.IsModified());
}
