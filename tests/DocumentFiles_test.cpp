// Opening and saving by path and by dialog, and the messages that a document shows for bad streams.

#include "CommandOperationManager.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/BoxAnswer.h"
#include "support/FileDialogAnswer.h"
#include "support/TemporaryPath.h"
#include "support/TestData.h"
#include "support/ViewHost.h"
#include "support/WatchedCalls.h"

#include <gtest/gtest.h>

#include <new>

namespace {

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

// A document whose own fields, stored after the drawing, throw what is no exception of the MFC.
class NumberThrowingDocument : public CGraphicDocument {
public:
    int StoreData(CArchive& ar) override {
        CGraphicDocument::StoreData(ar);
        throw 7;
    }
    int ReadData(CArchive& ar) override {
        CGraphicDocument::ReadData(ar);
        throw 7;
    }
};

// A document with a save of its own: it writes the file and reports a failure.
class HalfSavingDocument : public CGraphicDocument {
public:
    BOOL OnSaveDocument(LPCTSTR path) override {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.Write("half", 4);
        ++saves;
        return FALSE;
    }
    int saves = 0;
};

// A document that notes what a load looks like from within.
class WatchingDocument : public CGraphicDocument {
public:
    int ReadData(CArchive& ar) override {
        ++reads;
        document = ar.m_pDocument;
        flat = ar.m_bForceFlat;
        modified = IsModified();
        emptiedBefore = emptied;
        objectsBefore = GetDrawableObjs()->GetSize();
        return CGraphicDocument::ReadData(ar);
    }
    void DeleteContents() override {
        ++emptied;
        CGraphicDocument::DeleteContents();
    }
    int reads = 0;
    CDocument* document = nullptr;
    BOOL flat = -1;
    BOOL modified = -1;
    int emptied = 0;
    int emptiedBefore = -1;
    INT_PTR objectsBefore = -1;
};

// A document with fields of its own before the stream and after it.
class FramedDocument : public CGraphicDocument {
public:
    int StoreData(CArchive& ar) override {
        ar << front;
        const int result = CGraphicDocument::StoreData(ar);
        ar << back;
        return result;
    }
    int ReadData(CArchive& ar) override {
        ar >> front;
        const int result = CGraphicDocument::ReadData(ar);
        ar >> back;
        return result;
    }
    DWORD front = 0;
    CString back;
};

// A file that can't go back: the end of a load, which gives the unread bytes back, fails.
class OneWayFile : public CMemFile {
public:
    ULONGLONG Seek(LONGLONG offset, UINT from) override {
        if (from == CFile::current) {
            ++refused;
            AfxThrowFileException(CFileException::badSeek);
        }
        return CMemFile::Seek(offset, from);
    }
    int refused = 0;
};

using Texts = std::vector<std::string>;

#ifdef NR_GUARDED
constexpr WatchedCalls::Extent kExtents[] = {WatchedCalls::One, WatchedCalls::AllFromThere};
#else
// Without any memory the compiler's runtime cannot throw.
constexpr WatchedCalls::Extent kExtents[] = {WatchedCalls::One};
#endif

// Does `work(number)` with the nth request for memory refused, for each n, until nothing is refused any more; in the
// guarded build, the same with all requests from the nth on. `work` gives the number of refused requests.
template <typename F>
void ForEachRefusal(F work) {
    for (const auto extent : kExtents) {
        LONG nth = 1;
        for (; nth < 1000; ++nth) {
            SCOPED_TRACE(testing::Message() << (extent == WatchedCalls::One ? "only" : "from ") << nth);
            const auto before = CKXMemoryManager::Instance()->GetCount();
            const LONG refused = work(nth, extent);
            EXPECT_EQ(before, CKXMemoryManager::Instance()->GetCount());
            if (refused == 0) {
                break;
            }
        }
        EXPECT_LT(3, nth); // The buffer of the archive, its numbers, their table.
        EXPECT_GT(1000, nth);
    }
}

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

TEST(DocumentFiles, WhateverALoadThrowsShowsTheSameMessageOnce) {
    CVectorViewCoordTran tran;
    NumberThrowingDocument document;
    document.SetVectorViewCoordTran(&tran);
    Bytes bytes = ReadTestData("lines_two.nrv");
    BoxAnswer boxes;
    EXPECT_EQ(1, document.CGraphicDocument::OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
    EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
    EXPECT_EQ(2, document.GetDrawableObjs()->GetSize()) << "what was read stays";
    EXPECT_FALSE(document.IsModified());
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

TEST(DocumentFiles, EachOddCharacterCutsTheProposedTitle) {
    for (wchar_t odd : {L' ', L'#', L'%', L';', L'/', L'\\'}) {
        SCOPED_TRACE(static_cast<int>(odd));
        LoneDocument lone;
        lone.document.SetTitle(CString(L"plan") + odd + L"2");
        FileDialogAnswer dialog(L"");
        EXPECT_EQ(0, lone.document.DoSave(nullptr, TRUE));
        EXPECT_EQ((Texts{"另存为|plan"}), dialog.Seen());
    }
}

TEST(DocumentFiles, ACopyOfANewDrawingIsProposedNoName) {
    LoneDocument lone;
    lone.document.SetTitle(L"mine");
    FileDialogAnswer dialog(L"");
    EXPECT_EQ(0, lone.document.DoSave(nullptr, FALSE));
    EXPECT_EQ((Texts{"保存副本|"}), dialog.Seen()) << "the title is for saves that give the drawing its name";
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

TEST(DocumentFiles, AStoreThatThrowsANumberFailsTheSaveToo) {
    TemporaryPath path;
    path.Write({'g', 'o', 'o', 'd'});
    CVectorViewCoordTran tran;
    NumberThrowingDocument document;
    document.SetVectorViewCoordTran(&tran);
    document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    document.SetModifiedFlag(TRUE);
    BoxAnswer boxes;
    EXPECT_EQ(0, document.DoSave(path, TRUE));
    EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
    EXPECT_EQ((Bytes{'g', 'o', 'o', 'd'}), path.Read());
    EXPECT_TRUE(document.IsModified());
    EXPECT_TRUE(document.GetPathName().IsEmpty());
}

TEST(DocumentFiles, AFailedStoreUnderAChosenNameKeepsTheFileThatWasThere) {
    TemporaryPath path;
    path.Write({'g', 'o', 'o', 'd'});
    const int making = FilesInTheMaking();
    CVectorViewCoordTran tran;
    FailingDocument document;
    document.SetVectorViewCoordTran(&tran);
    FileDialogAnswer dialog(path);
    BoxAnswer boxes({IDYES}); // Also to the dialog's question whether to replace it.
    EXPECT_EQ(0, document.DoSave(nullptr, TRUE));
    EXPECT_EQ(1u, dialog.Seen().size());
    ASSERT_EQ(2u, boxes.Texts().size()) << "the dialog's question, then the failure";
    EXPECT_NE("CGraphicDocument::Serialize错误", boxes.Texts()[0]);
    EXPECT_EQ("CGraphicDocument::Serialize错误", boxes.Texts()[1]);
    ASSERT_TRUE(path.Exists());
    EXPECT_EQ((Bytes{'g', 'o', 'o', 'd'}), path.Read());
    EXPECT_TRUE(document.GetPathName().IsEmpty()) << "the name is not taken";
    EXPECT_EQ(making, FilesInTheMaking());
}

TEST(DocumentFiles, AFailedStoreUnderANewNameLeavesNoFile) {
    const int making = FilesInTheMaking();
    for (int replace : {TRUE, FALSE}) {
        TemporaryPath path;
        CVectorViewCoordTran tran;
        FailingDocument document;
        document.SetVectorViewCoordTran(&tran);
        FileDialogAnswer dialog(path);
        BoxAnswer boxes;
        EXPECT_EQ(0, document.DoSave(nullptr, replace));
        EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
        EXPECT_FALSE(path.Exists());
    }
    EXPECT_EQ(making, FilesInTheMaking());
}

TEST(DocumentFiles, WhatAFailedSaveLeavesIsDeletedOnlyUnderAChosenNewName) {
    const Bytes half = {'h', 'a', 'l', 'f'};
    CVectorViewCoordTran tran;
    {
        TemporaryPath path;
        HalfSavingDocument document;
        document.SetVectorViewCoordTran(&tran);
        FileDialogAnswer dialog(path);
        EXPECT_EQ(0, document.DoSave(nullptr, TRUE));
        EXPECT_EQ(1, document.saves);
        EXPECT_FALSE(path.Exists()) << "chosen, and new";
        EXPECT_TRUE(document.GetPathName().IsEmpty());
    }
    {
        TemporaryPath path;
        HalfSavingDocument document;
        document.SetVectorViewCoordTran(&tran);
        EXPECT_EQ(0, document.DoSave(path, TRUE));
        EXPECT_EQ(1, document.saves);
        ASSERT_TRUE(path.Exists()) << "the caller's path is the caller's";
        EXPECT_EQ(half, path.Read());
    }
    {
        TemporaryPath path;
        path.Write({'g', 'o', 'o', 'd'});
        HalfSavingDocument document;
        document.SetVectorViewCoordTran(&tran);
        FileDialogAnswer dialog(path);
        BoxAnswer boxes({IDYES}); // To the question whether to replace it.
        EXPECT_EQ(0, document.DoSave(nullptr, TRUE));
        EXPECT_EQ(1, document.saves);
        ASSERT_TRUE(path.Exists()) << "chosen, but there before";
        EXPECT_EQ(half, path.Read());
    }
}

TEST(DocumentFiles, AChosenNameInAFolderThatIsNotThereIsRefusedByTheDialog) {
    LoneDocument lone;
    {
        FileDialogAnswer dialog(L"C:\\no such folder\\drawing.nrv");
        BoxAnswer boxes;
        EXPECT_EQ(0, lone.document.DoSave(nullptr, TRUE));
        EXPECT_EQ(1, dialog.Refused());
        EXPECT_EQ(1u, boxes.Texts().size());
    }
    FileDialogAnswer dialog(L"C:\\no such folder\\drawing.nrv");
    BoxAnswer boxes;
    EXPECT_EQ(0, lone.document.OpenDocument());
    EXPECT_EQ(1, dialog.Refused());
    EXPECT_EQ(1u, boxes.Texts().size());
}

TEST(DocumentFiles, EveryDialogOffersAllFilesAlone) {
    LoneDocument lone;
    FileDialogAnswer dialog(L"");
    lone.document.OpenDocument();
    lone.document.DoSave(nullptr, TRUE);
    EXPECT_EQ((Texts{"所有文件 (*.*)\n", "所有文件 (*.*)\n"}), dialog.Filters());
}

TEST(DocumentFiles, AVanishedFileAsksForAName) {
    TemporaryPath path;
    LoneDocument lone;
    ASSERT_EQ(1, lone.document.DoSave(path, TRUE));
    ASSERT_TRUE(::DeleteFile(path));
    FileDialogAnswer dialog(path);
    EXPECT_EQ(1, lone.document.DoFileSave());
    ASSERT_EQ(1u, dialog.Seen().size());
    EXPECT_NE(std::string::npos, dialog.Seen()[0].find("nrv图")) << "its old name is proposed: " << dialog.Seen()[0];
    EXPECT_TRUE(path.Exists());
}

TEST(DocumentFiles, EachDialogHasItsTitle) {
    LoneDocument lone;
    FileDialogAnswer dialog(L"");
    lone.document.OpenDocument();
    lone.document.DoSave(nullptr, TRUE);
    lone.document.DoSave(nullptr, FALSE);
    lone.document.OnFileSaveAs();
    ASSERT_EQ(4u, dialog.Seen().size());
    EXPECT_EQ(0u, dialog.Seen()[0].find("打开|")) << dialog.Seen()[0];
    EXPECT_EQ(0u, dialog.Seen()[1].find("另存为|")) << dialog.Seen()[1];
    EXPECT_EQ(0u, dialog.Seen()[2].find("保存副本|")) << dialog.Seen()[2];
    EXPECT_EQ(0u, dialog.Seen()[3].find("另存为|")) << dialog.Seen()[3];
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

TEST(DocumentFiles, ATruncatedFileAddsWhatWasReadToTheOldObjects) {
    TemporaryPath path;
    Bytes bytes = ReadTestData("lines_two.nrv");
    bytes.pop_back();
    path.Write(bytes);
    LoneDocument lone;
    lone.Load(ReadTestData("line_schema5.nrv"));
    CDrawable* old = lone.Objects()[0];
    FileDialogAnswer dialog(path);
    BoxAnswer boxes;
    EXPECT_EQ(1, lone.document.OpenDocument());
    EXPECT_EQ((Texts{"CGraphicDocument::Serialize错误"}), boxes.Texts());
    ASSERT_EQ(2, lone.Objects().GetSize());
    EXPECT_EQ(old, lone.Objects()[0]);
    EXPECT_EQ(0.5f, lone.tran.GetScale()) << "the view is the file's";
}

// ---- Loads from memory, from within --------------------------------------------------------------------------------

TEST(DocumentFiles, AMemoryLoadTellsTheArchiveItsDocument) {
    CVectorViewCoordTran tran;
    WatchingDocument document;
    document.SetVectorViewCoordTran(&tran);
    document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    Bytes bytes = ReadTestData("lines_two.nrv");
    EXPECT_EQ(1, document.CGraphicDocument::OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
    EXPECT_EQ(1, document.reads);
    EXPECT_EQ(&document, document.document);
    EXPECT_EQ(FALSE, document.flat);
    EXPECT_TRUE(document.modified) << "until all is read";
    EXPECT_EQ(1, document.emptiedBefore);
    EXPECT_EQ(0, document.objectsBefore) << "the old drawing is gone by then";
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(1, document.emptied);
    EXPECT_EQ(2, document.GetDrawableObjs()->GetSize());
}

TEST(DocumentFiles, AMemoryFileOfNoLengthReadsNothing) {
    CVectorViewCoordTran tran;
    WatchingDocument document;
    document.SetVectorViewCoordTran(&tran);
    CMemFile file;
    EXPECT_EQ(1, document.OpenDocument(file));
    EXPECT_EQ(0, document.reads);
    EXPECT_EQ(1, document.emptied);
}

TEST(DocumentFiles, AMemoryLoadThatFailsAtItsEndEmptiesOnceMoreAndStillCounts) {
    CVectorViewCoordTran tran;
    WatchingDocument document;
    document.SetVectorViewCoordTran(&tran);
    Bytes bytes = ReadTestData("lines_two.nrv");
    bytes.insert(bytes.end(), {1, 2, 3}); // Something to give back.
    OneWayFile file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()), 0);
    BoxAnswer boxes;
    EXPECT_EQ(1, document.OpenDocument(file));
    file.Detach();
    EXPECT_EQ(1, file.refused);
    EXPECT_EQ(2, document.emptied);
    EXPECT_TRUE(boxes.Texts().empty()) << "silently";
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(2, document.GetDrawableObjs()->GetSize()) << "the base's DeleteContents knows no objects";
}

TEST(DocumentFiles, FieldsOfADerivedDocumentAreStoredAndLoadedInMemoryAndByPath) {
    CVectorViewCoordTran tran;
    FramedDocument document;
    document.SetVectorViewCoordTran(&tran);
    document.front = 0xCAFE1234;
    document.back = L"尾";
    document.AddLine(0, 0, 0, 0, 0, 0, 1, 2, 3, 4);
    CMemFile memory;
    ASSERT_EQ(1, document.StoreToMemFile(&memory));
    FramedDocument loaded;
    loaded.SetVectorViewCoordTran(&tran);
    EXPECT_EQ(1, loaded.OpenDocument(memory));
    EXPECT_EQ(0xCAFE1234u, loaded.front);
    EXPECT_EQ(CString(L"尾"), loaded.back);
    EXPECT_EQ(1, loaded.GetDrawableObjs()->GetSize());
    TemporaryPath path;
    ASSERT_EQ(1, document.DoSave(path, TRUE));
    FramedDocument opened;
    opened.SetVectorViewCoordTran(&tran);
    EXPECT_TRUE(opened.OnOpenDocument(path));
    EXPECT_EQ(0xCAFE1234u, opened.front);
    EXPECT_EQ(CString(L"尾"), opened.back);
    EXPECT_EQ(1, opened.GetDrawableObjs()->GetSize());
    EXPECT_EQ(memory.GetLength(), path.Read().size());
}

TEST(DocumentFiles, AStoreToMemoryAnswersWithTheDerivedDocumentsResult) {
    class Refusing : public CGraphicDocument {
    public:
        int StoreData(CArchive& ar) override { return CGraphicDocument::StoreData(ar) - 1; }
    } refusing;
    CVectorViewCoordTran tran;
    refusing.SetVectorViewCoordTran(&tran);
    CMemFile file;
    EXPECT_EQ(0, refusing.StoreToMemFile(&file));
    EXPECT_EQ(38u, file.GetLength()) << "what it wrote is there";
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

TEST(DocumentFiles, WithMarksByChangeTheWordOpenMarksTheDocumentByWhatItAdds) {
    const TemporaryPath path;
    path.Write(ReadTestData("lines_two.nrv"));
    for (const bool isCancelled : {false, true}) {
        ViewHost host;
        CEditingOptions options;
        options.modifiedByChange = true;
        host.Document().SetEditingOptions(options);
        FileDialogAnswer dialog(isCancelled ? CString() : CString(path));
        host.view.DoCommand(L"open");
        EXPECT_EQ(1u, dialog.Seen().size());
        EXPECT_EQ(isCancelled ? 0 : 2, host.Objects().GetSize());
        EXPECT_EQ(!isCancelled, host.Document().IsModified() != 0);
    }
}

// ---- Too little memory ---------------------------------------------------------------------------------------------

TEST(DocumentFiles, ALoadThatIsRefusedMemoryAnywhereIsReported) {
    Bytes bytes = ReadTestData("lines_two.nrv");
    ForEachRefusal([&](LONG nth, WatchedCalls::Extent extent) {
        LoneDocument lone;
        BoxAnswer boxes({IDOK});
        LONG refused = 0;
        {
            WatchedCalls calls;
            calls.Refuse(WatchedCalls::Memory, nth, extent);
            EXPECT_EQ(1, lone.document.OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
            refused = calls.Refused();
        }
        EXPECT_EQ(refused == 0 ? Texts{} : Texts{"CGraphicDocument::Serialize错误"}, boxes.Texts());
        EXPECT_FALSE(lone.document.IsModified());
        // The drawing is still one that can be stored and filled.
        EXPECT_LE(38u, lone.Store().size());
        EXPECT_EQ(-1, lone.LoadRaw(bytes));
        EXPECT_EQ(bytes, lone.Store());
        return refused;
    });
}

TEST(DocumentFiles, ALoadByPathThatIsRefusedMemoryAnywhereIsReported) {
    const TemporaryPath path;
    const Bytes bytes = ReadTestData("lines_two.nrv");
    path.Write(bytes);
    ForEachRefusal([&](LONG nth, WatchedCalls::Extent extent) {
        LoneDocument lone;
        BoxAnswer boxes({IDOK});
        LONG refused = 0;
        {
            WatchedCalls calls;
            calls.Refuse(WatchedCalls::Memory, nth, extent);
            lone.document.OnOpenDocument(path);
            refused = calls.Refused();
        }
        EXPECT_EQ(refused == 0 ? 0u : 1u, boxes.Texts().size());
        CFile whole; // No other code has it open any more.
        EXPECT_TRUE(whole.Open(path, CFile::modeReadWrite | CFile::shareExclusive));
        return refused;
    });
}

TEST(DocumentFiles, ASaveThatIsRefusedMemoryAnywhereIsReportedAndLeavesTheOldFile) {
    const TemporaryPath path;
    const Bytes old = ReadTestData("empty.nrv");
    const Bytes bytes = ReadTestData("lines_two.nrv");
    const int before = FilesInTheMaking();
    ForEachRefusal([&](LONG nth, WatchedCalls::Extent extent) {
        path.Write(old);
        LoneDocument lone;
        EXPECT_EQ(-1, lone.LoadRaw(bytes));
        BoxAnswer boxes({IDOK});
        LONG refused = 0;
        BOOL saved = FALSE;
        {
            WatchedCalls calls;
            calls.Refuse(WatchedCalls::Memory, nth, extent);
            saved = lone.document.OnSaveDocument(path);
            refused = calls.Refused();
        }
        EXPECT_EQ(refused == 0 ? 0u : 1u, boxes.Texts().size());
        EXPECT_EQ(refused == 0, saved != FALSE);
        EXPECT_EQ(saved ? bytes : old, path.Read());
        EXPECT_EQ(before, FilesInTheMaking());
        return refused;
    });
}

TEST(DocumentFiles, AStoreToMemoryThatIsRefusedMemoryAnywhereLetsTheFailureThrough) {
    const Bytes bytes = ReadTestData("lines_two.nrv");
    LoneDocument lone;
    ASSERT_EQ(-1, lone.LoadRaw(bytes));
    ForEachRefusal([&](LONG nth, WatchedCalls::Extent extent) {
        CMemFile file(1024);
        bool whole = false;
        LONG refused = 0;
        {
            WatchedCalls calls;
            calls.Refuse(WatchedCalls::Memory, nth, extent);
            try {
                whole = lone.document.StoreToMemFile(&file) == 1;
            } catch (CMemoryException* e) {
                e->Delete();
            } catch (const std::bad_alloc&) {
            }
            refused = calls.Refused();
        }
        EXPECT_EQ(refused == 0, whole);
        EXPECT_EQ(bytes, lone.Store());
        return refused;
    });
}
