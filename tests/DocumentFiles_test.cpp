// Opening and saving by path and by dialog, and the messages that a document shows for bad streams.

#include "CommandOperationManager.h"
#include "Line.h"
#include "support/BoxAnswer.h"
#include "support/FileDialogAnswer.h"
#include "support/TestData.h"
#include "support/ViewHost.h"

#include <gtest/gtest.h>

namespace {

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

// A document whose store fails after some objects.
class FailingDocument : public CGraphicDocument {
public:
    int StoreData(CArchive& ar) override {
        CGraphicDocument::StoreData(ar);
        if (fails) {
            AfxThrowArchiveException(CArchiveException::genericException);
        }
        return 1;
    }
    bool fails = true;
};

using Texts = std::vector<std::string>;

} // namespace

// ---- Messages for bad streams --------------------------------------------------------------------------------------

TEST(DocumentFiles, AnUnknownVersionShowsTheFormatMessageAndEmptiesTheDrawing) {
    LoneDocument lone;
    lone.Load(ReadTestData("lines_two.nrv"));
    BoxAnswer boxes;
    EXPECT_EQ(1, lone.Load({2, 0, 0, 0}));
    EXPECT_EQ((Texts{"文件格式错误!"}), boxes.Texts());
    EXPECT_EQ(0, lone.Objects().GetSize());
    EXPECT_EQ(0.5f, lone.tran.GetScale()) << "the view stays as it was";
    EXPECT_FALSE(lone.document.IsModified());
}

TEST(DocumentFiles, ATruncatedStreamShowsItsMessageAndKeepsWhatWasRead) {
    Bytes bytes = ReadTestData("lines_two.nrv");
    bytes.pop_back();
    LoneDocument lone;
    BoxAnswer boxes;
    EXPECT_EQ(1, lone.Load(bytes));
    EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
    EXPECT_EQ(1, lone.Objects().GetSize());
    EXPECT_EQ(0.5f, lone.tran.GetScale());
}

TEST(DocumentFiles, AnUnknownClassShowsTheSameMessage) {
    Bytes bytes = ReadTestData("line_schema5.nrv");
    bytes[38 + 6] = 'X';
    LoneDocument lone;
    BoxAnswer boxes;
    EXPECT_EQ(1, lone.Load(bytes));
    EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
    EXPECT_EQ(0, lone.Objects().GetSize());
}

TEST(DocumentFiles, GarbageShowsOneMessageAndNeverMore) {
    const Bytes samples[] = {{'P', 'K', 3, 4}, {1}, {1, 0, 0, 0}, Bytes(5000, 0xFF), {1, 0, 0, 0, 9, 9, 9, 9, 9, 9}};
    for (const Bytes& bytes : samples) {
        LoneDocument lone;
        BoxAnswer boxes;
        EXPECT_EQ(1, lone.Load(bytes));
        EXPECT_EQ(1u, boxes.Texts().size());
        EXPECT_EQ(0, lone.Objects().GetSize());
    }
}

// ---- Saving --------------------------------------------------------------------------------------------------------

TEST(DocumentFiles, SavingUnderAPathWritesTheStreamAndTakesPathAndTitle) {
    TemporaryPath path;
    LoneDocument lone;
    lone.Load(ReadTestData("lines_two.nrv"));
    lone.document.SetModifiedFlag(TRUE);
    EXPECT_EQ(1, lone.document.DoSave(path, TRUE));
    EXPECT_EQ(ReadTestData("lines_two.nrv"), path.Read());
    EXPECT_FALSE(lone.document.IsModified());
    EXPECT_EQ(0, lone.document.GetPathName().CompareNoCase(path));
    EXPECT_EQ(0u, Utf8(lone.document.GetTitle()).find("nrv图"));
}

TEST(DocumentFiles, SavingACopyKeepsPathAndTitle) {
    TemporaryPath path;
    LoneDocument lone;
    lone.document.SetTitle(L"mine");
    EXPECT_EQ(1, lone.document.DoSave(path, FALSE));
    EXPECT_TRUE(path.Exists());
    EXPECT_TRUE(lone.document.GetPathName().IsEmpty());
    EXPECT_EQ(CString(L"mine"), lone.document.GetTitle());
}

TEST(DocumentFiles, ANewDrawingAsksForItsNameAndProposesTheTitleUpToItsFirstOddCharacter) {
    TemporaryPath path;
    LoneDocument lone;
    lone.document.SetTitle(L"plan#2 draft");
    FileDialogAnswer dialog(path);
    EXPECT_EQ(1, lone.document.DoFileSave());
    ASSERT_EQ(1u, dialog.Seen().size());
    EXPECT_NE(std::string::npos, dialog.Seen()[0].find("|plan")) << dialog.Seen()[0];
    EXPECT_EQ(std::string::npos, dialog.Seen()[0].find('#'));
    EXPECT_TRUE(path.Exists());
}

TEST(DocumentFiles, AKnownPathIsSavedWithoutAQuestion) {
    TemporaryPath path;
    LoneDocument lone;
    ASSERT_EQ(1, lone.document.DoSave(path, TRUE));
    lone.document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    FileDialogAnswer dialog(L"");
    EXPECT_EQ(1, lone.document.DoFileSave());
    EXPECT_TRUE(dialog.Seen().empty());
    EXPECT_LT(38u, path.Read().size());
}

TEST(DocumentFiles, AReadOnlyFileAsksForAnotherName) {
    TemporaryPath path;
    TemporaryPath other;
    LoneDocument lone;
    ASSERT_EQ(1, lone.document.DoSave(path, TRUE));
    const Bytes before = path.Read();
    ASSERT_TRUE(::SetFileAttributes(path, FILE_ATTRIBUTE_READONLY));
    lone.document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    FileDialogAnswer dialog(other);
    EXPECT_EQ(1, lone.document.DoFileSave());
    EXPECT_EQ(1u, dialog.Seen().size());
    EXPECT_EQ(before, path.Read());
    EXPECT_TRUE(other.Exists());
}

TEST(DocumentFiles, CancellingTheDialogSavesNothing) {
    LoneDocument lone;
    lone.document.SetModifiedFlag(TRUE);
    FileDialogAnswer dialog(L"");
    EXPECT_EQ(0, lone.document.DoSave(nullptr, TRUE));
    EXPECT_EQ(0, lone.document.DoFileSave());
    lone.document.OnFileSaveAs();
    EXPECT_EQ(3u, dialog.Seen().size());
    EXPECT_TRUE(lone.document.IsModified());
    EXPECT_TRUE(lone.document.GetPathName().IsEmpty());
}

TEST(DocumentFiles, AStoreThatFailsMidwayNeverTakesThePlaceOfAGoodFile) {
    TemporaryPath path;
    path.Write({'g', 'o', 'o', 'd'});
    CVectorViewCoordTran tran;
    FailingDocument document;
    document.SetVectorViewCoordTran(&tran);
    document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    document.SetModifiedFlag(TRUE);
    BoxAnswer boxes;
    EXPECT_EQ(0, document.DoSave(path, TRUE)) << "such a save counts as failed";
    EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
    EXPECT_EQ((Bytes{'g', 'o', 'o', 'd'}), path.Read());
    EXPECT_TRUE(document.IsModified());
    document.fails = false;
    EXPECT_EQ(1, document.DoSave(path, TRUE));
    EXPECT_LT(38u, path.Read().size());
}

TEST(DocumentFiles, APathThatCannotBeWrittenShowsAMessage) {
    LoneDocument lone;
    BoxAnswer boxes;
    EXPECT_EQ(0, lone.document.DoSave(L"C:\\no such folder\\drawing.nrv", TRUE));
    EXPECT_EQ(1u, boxes.Texts().size());
    EXPECT_TRUE(lone.document.GetPathName().IsEmpty());
}

TEST(DocumentFiles, AStoreToMemoryLetsItsFailureThrough) {
    CVectorViewCoordTran tran;
    FailingDocument document;
    document.SetVectorViewCoordTran(&tran);
    CMemFile file;
    bool thrown = false;
    try {
        document.StoreToMemFile(&file);
    } catch (CArchiveException* e) {
        thrown = true;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
}

// ---- Opening -------------------------------------------------------------------------------------------------------

TEST(DocumentFiles, OpeningByTheDialogAddsToTheDrawing) {
    TemporaryPath path;
    path.Write(ReadTestData("lines_two.nrv"));
    LoneDocument lone;
    FileDialogAnswer dialog(path);
    EXPECT_EQ(1, lone.document.OpenDocument());
    EXPECT_EQ(2, lone.Objects().GetSize());
    EXPECT_EQ(1, lone.document.OpenDocument());
    EXPECT_EQ(4, lone.Objects().GetSize()) << "opening twice doubles the objects";
}

TEST(DocumentFiles, ACancelledDialogOpensNothing) {
    LoneDocument lone;
    FileDialogAnswer dialog(L"");
    EXPECT_EQ(0, lone.document.OpenDocument());
}

TEST(DocumentFiles, ABadFileKeepsTheOldObjects) {
    TemporaryPath path;
    path.Write({2, 0, 0, 0});
    LoneDocument lone;
    lone.Load(ReadTestData("line_schema5.nrv"));
    FileDialogAnswer dialog(path);
    BoxAnswer boxes;
    EXPECT_EQ(1, lone.document.OpenDocument()) << "whatever the base gave";
    EXPECT_EQ((Texts{"文件格式错误!"}), boxes.Texts());
    EXPECT_EQ(1, lone.Objects().GetSize());
}

TEST(DocumentFiles, TheWordOpenRepaintsAndTheWordSaveSavesAndBothLeaveTheDocumentMarked) {
    TemporaryPath path;
    path.Write(ReadTestData("lines_two.nrv"));
    ViewHost host;
    FileDialogAnswer dialog(path);
    host.view.DoCommand(L"open");
    EXPECT_EQ(2, host.Objects().GetSize());
    EXPECT_TRUE(::GetUpdateRect(host.view.m_hWnd, nullptr, FALSE));
    EXPECT_TRUE(host.Document().IsModified());
    ASSERT_EQ(1, host.Document().DoSave(path, TRUE));
    host.Document().AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    host.view.DoCommand(L"save");
    EXPECT_TRUE(host.Document().IsModified()) << "also after a save";
    LoneDocument loaded;
    loaded.Load(path.Read());
    EXPECT_EQ(3, loaded.Objects().GetSize());
}
