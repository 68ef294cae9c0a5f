// CFile on real files and CMemFile on owned and borrowed blocks. Layer 16: tests.
#include "support/AfxCaught.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

// A path of a file that does not exist; the file is deleted after the test.
class TemporaryPath {
public:
    TemporaryPath() {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        static int count = 0;
        m_path.Format(L"%safx_file_test_%u_%d.tmp", folder, GetCurrentProcessId(), ++count);
        Remove();
    }
    ~TemporaryPath() { Remove(); }
    operator LPCTSTR() const { return m_path; }

private:
    void Remove() {
        SetFileAttributesW(m_path, FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(m_path);
    }
    CString m_path;
};

void WriteWhole(LPCTSTR path, const std::string& text) {
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    file.Write(text.data(), static_cast<UINT>(text.size()));
    file.Close();
}

std::string ReadWhole(LPCTSTR path) {
    CFile file(path, CFile::modeRead);
    std::string text(static_cast<size_t>(file.GetLength()), '?');
    text.resize(file.Read(text.data(), static_cast<UINT>(text.size())));
    return text;
}

TEST(AfxFile, WritesReadsSeeksAndTellsItsLength) {
    TemporaryPath path;
    CFile file(path, CFile::modeCreate | CFile::modeReadWrite);
    file.Write("hello", 5);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(file.GetLength(), 5u);
    EXPECT_EQ(file.Seek(1, CFile::begin), 1u);
    char text[8] = {};
    EXPECT_EQ(file.Read(text, 8), 4u);
    EXPECT_STREQ(text, "ello");
    EXPECT_EQ(file.Read(text, 8), 0u); // at the end: nothing, and no exception
    EXPECT_EQ(file.Seek(-2, CFile::end), 3u);
    EXPECT_EQ(file.Seek(1, CFile::current), 4u);
    EXPECT_EQ(file.SeekToEnd(), 5u);
    file.SeekToBegin();
    EXPECT_EQ(file.GetPosition(), 0u);
    file.SetLength(3);
    EXPECT_EQ(file.GetLength(), 3u);
    file.SetLength(10);
    EXPECT_EQ(file.GetLength(), 10u);
    file.Flush();
    file.Close();
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_EQ(ReadWhole(path).substr(0, 3), "hel");
}

TEST(AfxFile, OpenModesKeepOrEmptyAnOldFile) {
    TemporaryPath path;
    EXPECT_EQ(FileCause([&] { CFile file(path, CFile::modeRead); }), CFileException::fileNotFound);
    WriteWhole(path, "old");
    {
        CFile file(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite);
        EXPECT_EQ(file.GetLength(), 3u);
        file.SeekToEnd();
        file.Write("+", 1);
    }
    EXPECT_EQ(ReadWhole(path), "old+");
    { CFile file(path, CFile::modeCreate | CFile::modeWrite); }
    EXPECT_EQ(ReadWhole(path), "");
}

TEST(AfxFile, AFailedOpenTellsCauseErrorAndPath) {
    TemporaryPath path;
    CFile file;
    CFileException failure;
    EXPECT_FALSE(file.Open(path, CFile::modeRead, &failure));
    EXPECT_EQ(failure.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(failure.m_lOsError, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(failure.m_strFileName.CompareNoCase(path), 0);
    EXPECT_FALSE(file.Open(path, CFile::modeRead));
    CString deeper = CString(path) + L"\\no\\such.dat";
    EXPECT_FALSE(file.Open(deeper, CFile::modeCreate | CFile::modeWrite, &failure));
    EXPECT_EQ(failure.m_cause, CFileException::badPath);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { file.Open(NULL, CFile::modeRead); }));
}

TEST(AfxFile, SharingKeepsOthersOut) {
    TemporaryPath path;
    WriteWhole(path, "x");
    CFile first(path, CFile::modeRead | CFile::shareExclusive);
    EXPECT_EQ(FileCause([&] { CFile second(path, CFile::modeRead | CFile::shareDenyNone); }),
              CFileException::sharingViolation);
    first.Close();
    CFile third(path, CFile::modeRead | CFile::shareDenyWrite);
    CFile fourth(path, CFile::modeRead | CFile::shareDenyWrite);
    EXPECT_EQ(FileCause([&] { CFile fifth(path, CFile::modeWrite | CFile::shareDenyNone); }),
              CFileException::sharingViolation);
}

TEST(AfxFile, WrongDirectionAndWrongPlaceAreFileExceptions) {
    TemporaryPath path;
    WriteWhole(path, "abc");
    CFile reading(path, CFile::modeRead);
    EXPECT_EQ(FileCause([&] { reading.Write("x", 1); }), CFileException::accessDenied);
    EXPECT_EQ(FileCause([&] { reading.Seek(-1, CFile::begin); }), CFileException::badSeek);
    reading.Close();
    char c;
    EXPECT_EQ(FileCause([&] { reading.Read(&c, 1); }), CFileException::invalidFile);
    CFile writing(path, CFile::modeWrite);
    EXPECT_EQ(FileCause([&] { writing.Read(&c, 1); }), CFileException::accessDenied);
    writing.Write(NULL, 0);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { writing.Write(NULL, 1); }));
}

TEST(AfxFile, TheReadOnlyMarkIsSetAndTakenOff) {
    TemporaryPath path;
    WriteWhole(path, "keep");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path, status));
    EXPECT_EQ(status.m_size, 4u);
    EXPECT_EQ(CString(status.m_szFullName).CompareNoCase(path), 0);
    status.m_attribute = CFile::readOnly;
    CFile::SetStatus(path, status);
    ASSERT_TRUE(CFile::GetStatus(path, status));
    EXPECT_EQ(status.m_attribute & CFile::readOnly, CFile::readOnly);
    // Some systems let a privileged user write it nevertheless; CFile behaves like the system.
    HANDLE h = CreateFileW(path, GENERIC_WRITE, 0, NULL, OPEN_EXISTING, 0, NULL);
    const bool refused = h == INVALID_HANDLE_VALUE;
    CloseHandle(h);
    EXPECT_EQ(FileCause([&] { CFile file(path, CFile::modeWrite); }), refused ? +CFileException::accessDenied : -1);
    EXPECT_EQ(ReadWhole(path), "keep");
    status.m_attribute = CFile::normal;
    CFile::SetStatus(path, status);
    CFile::GetStatus(path, status);
    EXPECT_EQ(status.m_attribute & CFile::readOnly, 0);
}

TEST(AfxFile, StatusCarriesTimes) {
    TemporaryPath path;
    WriteWhole(path, "x");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path, status));
    status.m_mtime = CTime(1000000000);
    CFile::SetStatus(path, status);
    CFileStatus again;
    CFile file(path, CFile::modeRead);
    ASSERT_TRUE(file.GetStatus(again));
    EXPECT_EQ(again.m_mtime.GetTime(), 1000000000);
    EXPECT_FALSE(CFile::GetStatus(L"no such file", again));
    EXPECT_EQ(CTime(2001, 9, 9, 12, 30, 15).GetYear(), 2001);
    EXPECT_EQ(CTime(2001, 9, 9, 12, 30, 15).GetMinute(), 30);
    EXPECT_TRUE(CTime(5) < CTime(6) && CTime(5) == CTime(5));
}

TEST(AfxFile, RenamesAndRemoves) {
    TemporaryPath a;
    TemporaryPath b;
    WriteWhole(a, "moved");
    CFile::Rename(a, b);
    EXPECT_EQ(ReadWhole(b), "moved");
    EXPECT_EQ(FileCause([&] { CFile::Rename(a, b); }), CFileException::fileNotFound);
    WriteWhole(a, "other");
    EXPECT_EQ(FileCause([&] { CFile::Rename(a, b); }), CFileException::accessDenied); // the target is there
    CFile::Remove(b);
    EXPECT_EQ(FileCause([&] { CFile::Remove(b); }), CFileException::fileNotFound);
}

TEST(AfxFile, ABorrowedHandleStaysOpen) {
    TemporaryPath path;
    HANDLE h = CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    {
        CFile file(h);
        file.Write("ab", 2);
    }
    LARGE_INTEGER size;
    EXPECT_TRUE(GetFileSizeEx(h, &size));
    EXPECT_EQ(size.QuadPart, 2);
    CFile file(h);
    CFile* twin = file.Duplicate();
    EXPECT_EQ(twin->GetLength(), 2u);
    delete twin;
    file.Close();
    EXPECT_FALSE(GetFileSizeEx(h, &size));
}

TEST(AfxFile, NamesAreTakenFromThePath) {
    TemporaryPath path;
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(file.GetFilePath().CompareNoCase(path), 0);
    EXPECT_EQ(file.GetFileName().Left(14), L"afx_file_test_");
    EXPECT_EQ(file.GetFileName().Right(4), L".tmp");
    EXPECT_EQ(file.GetFileTitle() + L".tmp", file.GetFileName());
    file.SetFilePath(L"C:\\dir\\other");
    EXPECT_EQ(file.GetFileName(), L"other");
    EXPECT_EQ(file.GetFileTitle(), L"other");
    file.Abort();
    EXPECT_EQ(file.GetFilePath(), L"");
    file.Close(); // closing twice does no harm
}

// ---- CMemFile ------------------------------------------------------------------------------------------------------

TEST(AfxMemFile, GrowsAsItIsWritten) {
    CMemFile file(16);
    EXPECT_EQ(file.GetLength(), 0u);
    for (int i = 0; i < 1000; ++i) {
        file.Write(&i, sizeof(i));
    }
    EXPECT_EQ(file.GetLength(), 4000u);
    EXPECT_EQ(file.GetPosition(), 4000u);
    file.SeekToBegin();
    for (int i = 0; i < 1000; ++i) {
        int value = -1;
        ASSERT_EQ(file.Read(&value, sizeof(value)), sizeof(value));
        ASSERT_EQ(value, i);
    }
    char c;
    EXPECT_EQ(file.Read(&c, 1), 0u);
}

TEST(AfxMemFile, ReadsWhatIsThereAndNoMore) {
    CMemFile file;
    file.Write("abcdef", 6);
    file.Seek(4, CFile::begin);
    char text[8] = {};
    EXPECT_EQ(file.Read(text, 8), 2u);
    EXPECT_STREQ(text, "ef");
}

TEST(AfxMemFile, ASeekBeyondTheEndLeavesAGapOfZerosWhenWritten) {
    CMemFile file;
    file.Write("ab", 2);
    EXPECT_EQ(file.Seek(5, CFile::begin), 5u);
    EXPECT_EQ(file.GetLength(), 2u);
    char c = '?';
    EXPECT_EQ(file.Read(&c, 1), 0u);
    file.Write("x", 1);
    EXPECT_EQ(file.GetLength(), 6u);
    file.SeekToBegin();
    char text[6];
    EXPECT_EQ(file.Read(text, 6), 6u);
    EXPECT_EQ(std::string(text, 6), std::string("ab\0\0\0x", 6));
    EXPECT_EQ(FileCause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(FileCause([&] { file.Seek(-7, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(FileCause([&] { file.Seek(INT64_MAX, CFile::end); }), CFileException::badSeek);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { file.Seek(0, 3); }));
    EXPECT_EQ(file.Seek(-6, CFile::end), 0u);
    EXPECT_EQ(file.Seek(INT64_MAX, CFile::begin), static_cast<ULONGLONG>(INT64_MAX));
    EXPECT_TRUE(Throws<CMemoryException>([&] { file.Write("x", 1); }));
}

TEST(AfxMemFile, SetLengthCutsAndExtendsWithZeros) {
    CMemFile file;
    file.Write("abcdef", 6);
    file.SetLength(3);
    EXPECT_EQ(file.GetLength(), 3u);
    EXPECT_EQ(file.GetPosition(), 3u);
    file.SetLength(5);
    file.SeekToBegin();
    char text[5];
    EXPECT_EQ(file.Read(text, 5), 5u);
    EXPECT_EQ(std::string(text, 5), std::string("abc\0\0", 5));
    EXPECT_TRUE(Throws<CMemoryException>([&] { file.SetLength(UINT64_MAX); }));
}

TEST(AfxMemFile, ABorrowedBlockWithoutGrowthIsTheContentAndIsNotCopied) {
    BYTE block[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    CMemFile file(1024);
    file.Attach(block, 4, 0);
    EXPECT_EQ(file.GetLength(), 4u);
    BYTE read[8] = {};
    EXPECT_EQ(file.Read(read, 8), 4u);
    EXPECT_EQ(read[3], 4);
    file.Seek(2, CFile::begin);
    file.Write("\x63\x64", 2);
    EXPECT_EQ(block[2], 0x63);
    EXPECT_EQ(block[3], 0x64);
    EXPECT_TRUE(Throws<CMemoryException>([&] { file.Write("\x65", 1); }));
    EXPECT_EQ(block[4], 5);
    EXPECT_TRUE(Throws<CMemoryException>([&] { file.SetLength(5); }));
    file.SetLength(2);
    EXPECT_EQ(file.GetLength(), 2u);
    EXPECT_TRUE(Throws<CInvalidArgException>([&] { file.Attach(block, 4, 0); }));
    EXPECT_EQ(file.Detach(), block);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(AfxMemFile, AnAttachedBlockThatMayGrowStartsEmpty) {
    BYTE* block = static_cast<BYTE*>(malloc(4));
    memcpy(block, "abcd", 4);
    CMemFile file(block, 4, 16);
    EXPECT_EQ(file.GetLength(), 0u);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.GetLength(), 10u);
    BYTE* grown = file.Detach();
    EXPECT_EQ(std::string(reinterpret_cast<char*>(grown), 10), "0123456789");
    free(grown);
}

TEST(AfxMemFile, DetachHandsTheBlockOver) {
    CMemFile file;
    file.Write("abc", 3);
    BYTE* block = file.Detach();
    EXPECT_EQ(memcmp(block, "abc", 3), 0);
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.GetPosition(), 0u);
    file.Write("xy", 2); // and it can be filled anew
    EXPECT_EQ(file.GetLength(), 2u);
    free(block);
}

TEST(AfxMemFile, WhatGrowsAfterDetachIsTheFilesOwn) {
    struct Watched : CMemFile {
        explicit Watched(int& freed) : CMemFile(16), m_freed(freed) {}
        ~Watched() override { Close(); } // while the hook below is there to be called
        void Free(BYTE* p) override {
            ++m_freed;
            CMemFile::Free(p);
        }
        int& m_freed;
    };
    int freed = 0;
    {
        Watched file(freed);
        BYTE* block = static_cast<BYTE*>(malloc(4));
        file.Attach(block, 4, 16);
        free(file.Detach());
        EXPECT_EQ(freed, 0);
        file.Write("0123456789", 10);
        EXPECT_EQ(file.GetLength(), 10u);
    }
    EXPECT_EQ(freed, 1);
    // An attached block stays the caller's until Detach.
    freed = 0;
    BYTE borrowed[4] = {};
    {
        Watched file(freed);
        file.Attach(borrowed, 4);
    }
    EXPECT_EQ(freed, 0);
}

TEST(AfxMemFile, ClosedItIsEmptyAndCannotBeWritten) {
    CMemFile file;
    file.Write("abc", 3);
    file.Flush();
    file.Close();
    EXPECT_EQ(file.GetLength(), 0u);
    char c;
    EXPECT_EQ(file.Read(&c, 1), 0u);
    EXPECT_TRUE(Throws<CMemoryException>([&] { file.Write("x", 1); }));
    EXPECT_TRUE(Throws<CNotSupportedException>([&] { file.LockRange(0, 1); }));
    EXPECT_TRUE(Throws<CNotSupportedException>([&] { file.Duplicate(); }));
}

TEST(AfxMemFile, GrowthGoesThroughTheOverridableHooks) {
    struct Watched : CMemFile {
        explicit Watched(UINT grow) : CMemFile(grow) {}
        int allocs = 0;
        int reallocs = 0;
        SIZE_T last = 0;
        BYTE* Alloc(SIZE_T n) override {
            ++allocs;
            last = n;
            return CMemFile::Alloc(n);
        }
        BYTE* Realloc(BYTE* p, SIZE_T n) override {
            ++reallocs;
            last = n;
            return n > 100000 ? NULL : CMemFile::Realloc(p, n);
        }
    };
    Watched file(100);
    file.Write("x", 1);
    EXPECT_EQ(file.allocs, 1);
    EXPECT_EQ(file.last, 100u);
    BYTE more[300] = {};
    file.Write(more, 300);
    EXPECT_EQ(file.reallocs, 1);
    EXPECT_EQ(file.last, 400u); // whole steps
    EXPECT_TRUE(Throws<CMemoryException>([&] { file.SetLength(200000); }));
    EXPECT_EQ(file.GetLength(), 301u);
}

} // namespace
