// The exception family: which function throws which, texts, causes, the catching macros. Layer 16: tests.
#include "support/AfxCaught.h"
#include "support/UiLanguage.h"

#include <afxdisp.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace {

// Records when it is deleted.
class CWatchedException : public CException {
    DECLARE_DYNAMIC(CWatchedException)
public:
    explicit CWatchedException(int* deleted) : m_deleted(deleted) {}
    ~CWatchedException() override { ++*m_deleted; }
    int* m_deleted;
};
IMPLEMENT_DYNAMIC(CWatchedException, CException)

std::wstring Message(const CException& e) {
    wchar_t text[256] = L"?";
    return e.GetErrorMessage(text, 256) ? text : L"";
}

TEST(AfxExceptions, EachThrowFunctionThrowsItsOwnKind) {
    EXPECT_TRUE(Throws<CMemoryException>([] { AfxThrowMemoryException(); }));
    EXPECT_TRUE(Throws<CNotSupportedException>([] { AfxThrowNotSupportedException(); }));
    EXPECT_TRUE(Throws<CResourceException>([] { AfxThrowResourceException(); }));
    EXPECT_TRUE(Throws<CUserException>([] { AfxThrowUserException(); }));
    EXPECT_TRUE(Throws<CInvalidArgException>([] { AfxThrowInvalidArgException(); }));
    EXPECT_TRUE(Throws<CArchiveException>([] { AfxThrowArchiveException(CArchiveException::badClass); }));
    EXPECT_TRUE(Throws<CFileException>([] { AfxThrowFileException(CFileException::diskFull); }));
    EXPECT_TRUE(Throws<COleException>([] { AfxThrowOleException(E_FAIL); }));
    // Thrown again and again, since the fixed ones are not on the heap.
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(Throws<CMemoryException>([] { AfxThrowMemoryException(); }));
    }
}

TEST(AfxExceptions, CarryCauseErrorNumberAndFileName) {
    try {
        AfxThrowFileException(CFileException::sharingViolation, 32, L"c:\\x.dat");
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::sharingViolation);
        EXPECT_EQ(e->m_lOsError, 32);
        EXPECT_EQ(e->m_strFileName, L"c:\\x.dat");
        EXPECT_NE(Message(*e).find(L"x.dat"), std::wstring::npos);
        e->Delete();
    }
    try {
        AfxThrowArchiveException(CArchiveException::badSchema, L"y");
    } catch (CException* e) {
        ASSERT_TRUE(e->IsKindOf(RUNTIME_CLASS(CArchiveException)));
        EXPECT_EQ(static_cast<CArchiveException*>(e)->m_strFileName, L"y");
        e->Delete();
    }
}

TEST(AfxExceptions, CausesHaveTheirPublishedNumbers) {
    EXPECT_EQ(CArchiveException::readOnly, 2);
    EXPECT_EQ(CArchiveException::endOfFile, 3);
    EXPECT_EQ(CArchiveException::writeOnly, 4);
    EXPECT_EQ(CArchiveException::badIndex, 5);
    EXPECT_EQ(CArchiveException::badClass, 6);
    EXPECT_EQ(CArchiveException::badSchema, 7);
    EXPECT_EQ(CFileException::fileNotFound, 2);
    EXPECT_EQ(CFileException::badPath, 3);
    EXPECT_EQ(CFileException::accessDenied, 5);
    EXPECT_EQ(CFileException::sharingViolation, 11);
    EXPECT_EQ(CFileException::diskFull, 13);
    EXPECT_EQ(CFileException::endOfFile, 14);
}

TEST(AfxExceptions, SystemErrorsBecomeCauses) {
    EXPECT_EQ(CFileException::OsErrorToException(0), CFileException::none);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_FILE_NOT_FOUND), CFileException::fileNotFound);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_PATH_NOT_FOUND), CFileException::badPath);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_TOO_MANY_OPEN_FILES), CFileException::tooManyOpenFiles);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_ACCESS_DENIED), CFileException::accessDenied);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_INVALID_HANDLE), CFileException::invalidFile);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_CURRENT_DIRECTORY), CFileException::removeCurrentDir);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_NEGATIVE_SEEK), CFileException::badSeek);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_CRC), CFileException::hardIO);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_SHARING_VIOLATION), CFileException::sharingViolation);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_LOCK_VIOLATION), CFileException::lockViolation);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_DISK_FULL), CFileException::diskFull);
    EXPECT_EQ(CFileException::OsErrorToException(ERROR_HANDLE_EOF), CFileException::endOfFile);
    EXPECT_EQ(CFileException::OsErrorToException(123456), CFileException::genericException);
    EXPECT_EQ(CFileException::ErrnoToException(ENOENT), CFileException::fileNotFound);
    EXPECT_EQ(CFileException::ErrnoToException(EACCES), CFileException::accessDenied);
    EXPECT_EQ(CFileException::ErrnoToException(ENOSPC), CFileException::diskFull);
    EXPECT_EQ(FileCause([] { CFileException::ThrowOsError(ERROR_DISK_FULL); }), CFileException::diskFull);
}

TEST(AfxExceptions, TextsAreCutToTheGivenSize) {
    const UiLanguage english(UiLanguage::kEnglish);
    wchar_t text[8] = L"unused!";
    UINT help = 7;
    EXPECT_TRUE(CMemoryException(FALSE).GetErrorMessage(text, 4, &help));
    EXPECT_STREQ(text, L"Out");
    EXPECT_EQ(help, 0u);
    EXPECT_FALSE(CMemoryException(FALSE).GetErrorMessage(text, 0));
    EXPECT_FALSE(CMemoryException(FALSE).GetErrorMessage(NULL, 4));
    EXPECT_FALSE(CUserException(FALSE).GetErrorMessage(text, 8));
    EXPECT_STREQ(text, L"");
    for (int cause = CArchiveException::genericException; cause <= CArchiveException::badSchema; ++cause) {
        EXPECT_FALSE(Message(CArchiveException(cause)).empty());
    }
    EXPECT_EQ(Message(CFileException(999)), Message(CFileException(CFileException::genericException)));
}

TEST(AfxExceptions, TextsFollowTheLanguageOfTheInterface) {
    const UiLanguage outer(UiLanguage::kEnglish);
    EXPECT_EQ(Message(CFileException(CFileException::endOfFile, -1, L"a.nrv")), L"a.nrv: the file ends too early");
    EXPECT_EQ(Message(CFileException(CFileException::diskFull)), L"(unnamed file): the disk is full");
    EXPECT_EQ(Message(CArchiveException(CArchiveException::endOfFile, L"%2")), L"%2: the data ends too early");
    EXPECT_EQ(Message(CMemoryException(FALSE)), L"Out of memory.");
    EXPECT_EQ(Message(CNotSupportedException(FALSE)), L"This operation is not supported.");
    const UiLanguage chinese(UiLanguage::kChinese);
    EXPECT_EQ(Message(CFileException(CFileException::endOfFile, -1, L"a.nrv")), L"a.nrv：文件不完整，提前结束");
    EXPECT_EQ(Message(CFileException(CFileException::diskFull)), L"（未命名的文件）：磁盘已满");
    EXPECT_EQ(Message(CArchiveException(CArchiveException::endOfFile, L"%2")), L"%2：数据不完整，提前结束");
    EXPECT_EQ(Message(CMemoryException(FALSE)), L"内存不足。");
    EXPECT_EQ(Message(CResourceException(FALSE)), L"缺少所需的资源。");
    EXPECT_EQ(Message(CInvalidArgException(FALSE)), L"参数无效。");
    EXPECT_EQ(Message(CArchiveException(99)), Message(CArchiveException(CArchiveException::genericException)));
    EXPECT_EQ(Message(CFileException(-1)), Message(CFileException(CFileException::genericException)));
}

// clang-format off: it can't format these macros
TEST(AfxExceptions, CatchMacrosDeleteWhatTheyCaught) {
    int deleted = 0;
    int handled = 0;
    TRY {
        throw new CWatchedException(&deleted);
    }
    CATCH(CArchiveException, e) {
        handled = 1;
    }
    AND_CATCH(CWatchedException, e) {
        handled = 2;
        EXPECT_EQ(deleted, 0);
    }
    AND_CATCH_ALL(e) {
        handled = 3;
    }
    END_CATCH_ALL
    EXPECT_EQ(handled, 2);
    EXPECT_EQ(deleted, 1);
    TRY {
        throw new CWatchedException(&deleted);
    }
    END_TRY
    EXPECT_EQ(deleted, 2);
}

TEST(AfxExceptions, ThrowLastPassesTheSameExceptionOn) {
    int deleted = 0;
    CException* inner = NULL;
    TRY{TRY{THROW(new CWatchedException(&deleted));
}
CATCH_ALL(e) {
    inner = e;
    THROW_LAST();
}
END_CATCH_ALL
} // namespace
CATCH(CException, e) {
    EXPECT_EQ(e, inner);
    EXPECT_TRUE(e->IsKindOf(RUNTIME_CLASS(CWatchedException)));
    EXPECT_EQ(deleted, 0);
}
END_CATCH
EXPECT_EQ(deleted, 1);
}
// clang-format on

TEST(AfxExceptions, AnExceptionOnTheStackIsNotDeleted) {
    int deleted = 0;
    {
        CWatchedException e(&deleted);
        e.m_bAutoDelete = FALSE;
        e.Delete();
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(AfxExceptions, OleExceptionsCarryTheStatusCode) {
    try {
        AfxCheckError(DISP_E_TYPEMISMATCH);
        FAIL();
    } catch (COleException* e) {
        EXPECT_EQ(e->m_sc, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(COleException::Process(e), DISP_E_TYPEMISMATCH);
        e->Delete();
    }
    AfxCheckError(S_FALSE);
    EXPECT_TRUE(Throws<CMemoryException>([] { AfxCheckError(E_OUTOFMEMORY); }));
    CMemoryException memory(FALSE);
    EXPECT_EQ(COleException::Process(&memory), E_OUTOFMEMORY);
}

} // namespace
