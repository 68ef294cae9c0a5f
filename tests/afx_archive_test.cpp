// CArchive: values, text, counts and buffering, byte by byte. Layer 16: tests.
#include "support/AfxCaught.h"

#include <afxcoll.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

typedef std::vector<BYTE> Bytes;

// What the code writes through an archive of the given buffer size.
template <typename F>
Bytes Stored(F code, int buffer = 4096) {
    CMemFile file;
    CArchive ar(&file, CArchive::store, buffer);
    code(ar);
    ar.Close();
    Bytes bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    if (!bytes.empty()) {
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    }
    return bytes;
}

// Lets the code read from exactly these bytes.
template <typename F>
void Load(const Bytes& bytes, F code, int buffer = 4096) {
    Bytes copy(bytes);
    CMemFile file;
    BYTE none = 0;
    file.Attach(copy.empty() ? &none : copy.data(), static_cast<UINT>(copy.size()), 0);
    CArchive ar(&file, CArchive::load | CArchive::bNoFlushOnDelete, buffer);
    code(ar);
}

std::wstring LoadedText(const Bytes& bytes) {
    CString s(L"before");
    Load(bytes, [&](CArchive& ar) { ar >> s; });
    return std::wstring(s.GetString(), static_cast<size_t>(s.GetLength()));
}

int LoadTextCause(const Bytes& bytes) {
    return ArchiveCause([&] { LoadedText(bytes); });
}

// A file that refuses or breaks off.
class FaultyFile : public CMemFile {
public:
    bool full = false;
    UINT most = 1000000;
    int writes = 0;
    UINT Read(void* lpBuf, UINT nCount) override { return CMemFile::Read(lpBuf, nCount < most ? nCount : most); }
    void Write(const void* lpBuf, UINT nCount) override {
        ++writes;
        if (full) {
            AfxThrowFileException(CFileException::diskFull);
        }
        CMemFile::Write(lpBuf, nCount);
    }
};

TEST(AfxArchive, WritesEachTypeInLittleEndianOrder) {
    const Bytes bytes = Stored([](CArchive& ar) {
        ar << static_cast<BYTE>(0x01) << static_cast<WORD>(0x0302) << static_cast<short>(-2) << 0x07060504
           << 0xFFFFFFFEu << static_cast<LONG>(-3) << static_cast<DWORD>(0x0B0A0908) << 1.0f << -2.0
           << static_cast<LONGLONG>(-2) << static_cast<ULONGLONG>(0x0807060504030201ULL) << true << false << 'A'
           << L'\x56fe';
    });
    const Bytes expected = {0x01, 0x02, 0x03, 0xFE, 0xFF, 0x04, 0x05, 0x06, 0x07, 0xFE, 0xFF, 0xFF, 0xFF, 0xFD,
                            0xFF, 0xFF, 0xFF, 0x08, 0x09, 0x0A, 0x0B, 0x00, 0x00, 0x80, 0x3F, 0x00, 0x00, 0x00,
                            0x00, 0x00, 0x00, 0x00, 0xC0, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01,
                            0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x01, 0x00, 0x41, 0xFE, 0x56};
    EXPECT_EQ(bytes, expected);
    Load(bytes, [](CArchive& ar) {
        BYTE by;
        WORD w;
        short sh;
        int i;
        unsigned u;
        LONG l;
        DWORD dw;
        float f;
        double d;
        LONGLONG ll;
        ULONGLONG ull;
        bool yes, no;
        char ch;
        wchar_t wch;
        ar >> by >> w >> sh >> i >> u >> l >> dw >> f >> d >> ll >> ull >> yes >> no >> ch >> wch;
        EXPECT_EQ(by, 1);
        EXPECT_EQ(w, 0x0302);
        EXPECT_EQ(sh, -2);
        EXPECT_EQ(i, 0x07060504);
        EXPECT_EQ(u, 0xFFFFFFFEu);
        EXPECT_EQ(l, -3);
        EXPECT_EQ(dw, 0x0B0A0908u);
        EXPECT_EQ(f, 1.0f);
        EXPECT_EQ(d, -2.0);
        EXPECT_EQ(ll, -2);
        EXPECT_EQ(ull, 0x0807060504030201ULL);
        EXPECT_TRUE(yes);
        EXPECT_FALSE(no);
        EXPECT_EQ(ch, 'A');
        EXPECT_EQ(wch, L'\x56fe');
        EXPECT_EQ(ArchiveCause([&] { ar >> by; }), CArchiveException::endOfFile);
    });
}

TEST(AfxArchive, EveryValueThatBreaksOffIsAnEndOfFile) {
    for (size_t length = 0; length < 8; ++length) {
        Load(Bytes(length, 0), [](CArchive& ar) {
            double d;
            EXPECT_EQ(ArchiveCause([&] { ar >> d; }), CArchiveException::endOfFile);
        });
    }
}

// What the value of this type is after a read that the data ends in, for each number of missing bytes. The bytes before
// it fill the archive's buffer up to a place in the value.
template <typename T>
void ExpectKeptWhenCut(T value) {
    for (size_t have = 0; have < sizeof(T); ++have) {
        for (size_t before : {size_t(0), size_t(127), size_t(128)}) {
            Load(
                Bytes(before + have, 0xA5),
                [&](CArchive& ar) {
                    Bytes skipped(before + 1);
                    ar.Read(skipped.data(), static_cast<UINT>(before));
                    T read = value;
                    EXPECT_EQ(ArchiveCause([&] { ar >> read; }), CArchiveException::endOfFile);
                    EXPECT_EQ(read, value) << sizeof(T) << " bytes, " << have << " there, after " << before;
                },
                128);
        }
    }
}

TEST(AfxArchive, AValueThatIsNotReadWholeStaysAsItWas) {
    ExpectKeptWhenCut<BYTE>(0x11);
    ExpectKeptWhenCut<char>(0x11);
    ExpectKeptWhenCut<bool>(false);
    ExpectKeptWhenCut<WORD>(0x1111);
    ExpectKeptWhenCut<short>(0x1111);
    ExpectKeptWhenCut<wchar_t>(L'\x1111');
    ExpectKeptWhenCut<int>(0x11111111);
    ExpectKeptWhenCut<unsigned>(0x11111111);
    ExpectKeptWhenCut<LONG>(0x11111111);
    ExpectKeptWhenCut<DWORD>(0x11111111);
    ExpectKeptWhenCut<float>(1.5f);
    ExpectKeptWhenCut<double>(1.5);
    ExpectKeptWhenCut<LONGLONG>(0x1111111111111111);
    ExpectKeptWhenCut<ULONGLONG>(0x1111111111111111);
}

TEST(AfxArchive, ATextThatIsNotReadWholeStaysAsItWas) {
    for (const Bytes& whole : {Bytes{0xFF, 0xFE, 0xFF, 2, 'a', 0, 'b', 0}, Bytes{2, 'a', 'b'}}) {
        for (size_t have = 0; have < whole.size(); ++have) {
            Load(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(have)), [&](CArchive& ar) {
                CString wide(L"before");
                EXPECT_EQ(ArchiveCause([&] { ar >> wide; }), CArchiveException::endOfFile);
                EXPECT_EQ(std::wstring(wide), L"before") << have;
            });
            Load(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(have)), [&](CArchive& ar) {
                CStringA narrow("before");
                EXPECT_EQ(ArchiveCause([&] { ar >> narrow; }), CArchiveException::endOfFile);
                EXPECT_EQ(std::string(narrow), "before") << have;
            });
        }
    }
    Load({}, [](CArchive& ar) {
        int size = 77;
        EXPECT_EQ(ArchiveCause([&] { AfxReadStringLength(ar, size); }), CArchiveException::endOfFile);
        EXPECT_EQ(size, 77);
    });
    // A line that breaks off inside a character.
    Load({'a', 0, 'b'}, [](CArchive& ar) {
        wchar_t line[8] = L"before";
        EXPECT_EQ(ArchiveCause([&] { ar.ReadString(line, 7); }), CArchiveException::endOfFile);
        EXPECT_EQ(std::wstring(line), L"before");
    });
}

TEST(AfxArchive, ABlockThatIsNotReadWholeStaysAsItWas) {
    for (UINT wanted : {4u, 100u, 5000u}) {
        for (size_t have : {size_t(0), size_t(1), static_cast<size_t>(wanted - 1)}) {
            Load(
                Bytes(have, 0xA5),
                [&](CArchive& ar) {
                    Bytes block(wanted, 0x11);
                    EXPECT_EQ(ArchiveCause([&] { ar.EnsureRead(block.data(), wanted); }), CArchiveException::endOfFile);
                    EXPECT_EQ(block, Bytes(wanted, 0x11)) << wanted << ", " << have << " there";
                },
                128);
        }
    }
    // The elements of an array are read as blocks: the one that was cut off is as new.
    Load({2, 0, 1, 1, 1, 1, 2, 2}, [](CArchive& ar) {
        CDWordArray array;
        EXPECT_EQ(ArchiveCause([&] { array.Serialize(ar); }), CArchiveException::endOfFile);
        for (INT_PTR i = 0; i < array.GetSize(); ++i) {
            EXPECT_TRUE(array[i] == 0 || array[i] == 0x01010101) << array[i];
        }
    });
    Load({5, 0}, [](CArchive& ar) {
        UINT schema = 77;
        EXPECT_EQ(ArchiveCause([&] { CRuntimeClass::Load(ar, &schema); }), CArchiveException::endOfFile);
        EXPECT_EQ(schema, 77u);
    });
}

TEST(AfxArchive, TheWrongDirectionIsRefusedEvenInTheMiddleOfTheBuffer) {
    Load({1, 2, 3, 4, 5, 6, 7, 8}, [](CArchive& ar) {
        int i;
        ar >> i;
        EXPECT_EQ(ArchiveCause([&] { ar << i; }), CArchiveException::readOnly);
        EXPECT_EQ(ArchiveCause([&] { ar.Write(&i, 4); }), CArchiveException::readOnly);
        EXPECT_EQ(ArchiveCause([&] { ar.WriteObject(NULL); }), CArchiveException::readOnly);
        EXPECT_EQ(ArchiveCause([&] { ar.WriteCount(1); }), CArchiveException::readOnly);
        EXPECT_EQ(ArchiveCause([&] { ar << CString(L"x"); }), CArchiveException::readOnly);
        ar >> i; // and nothing was lost by trying
        EXPECT_EQ(i, 0x08070605);
    });
    const Bytes bytes = Stored([](CArchive& ar) {
        int i = 5;
        ar << i;
        EXPECT_EQ(ArchiveCause([&] { ar >> i; }), CArchiveException::writeOnly);
        EXPECT_EQ(ArchiveCause([&] { ar.Read(&i, 4); }), CArchiveException::writeOnly);
        EXPECT_EQ(ArchiveCause([&] { ar.ReadObject(NULL); }), CArchiveException::writeOnly);
        EXPECT_EQ(ArchiveCause([&] { ar.ReadCount(); }), CArchiveException::writeOnly);
        CString s;
        EXPECT_EQ(ArchiveCause([&] { ar >> s; }), CArchiveException::writeOnly);
        EXPECT_EQ(i, 5);
    });
    EXPECT_EQ(bytes, (Bytes{5, 0, 0, 0}));
}

TEST(AfxArchive, BuffersOfEverySizeGiveTheSameBytes) {
    const auto write = [](CArchive& ar) {
        for (int i = 0; i < 500; ++i) {
            ar << i << static_cast<BYTE>(i);
            BYTE block[333];
            memset(block, i, sizeof(block));
            ar.Write(block, static_cast<UINT>(i % 334));
        }
    };
    const Bytes reference = Stored(write);
    for (int buffer : {-5, 0, 1, 127, 128, 129, 200, 4096, 1000000}) {
        EXPECT_TRUE(Stored(write, buffer) == reference);
        Load(
            reference,
            [](CArchive& ar) {
                for (int i = 0; i < 500; ++i) {
                    int value;
                    BYTE by;
                    ar >> value >> by;
                    ASSERT_EQ(value, i);
                    BYTE block[333];
                    const UINT n = static_cast<UINT>(i % 334);
                    ASSERT_EQ(ar.Read(block, n), n);
                    for (UINT k = 0; k < n; ++k) {
                        ASSERT_EQ(block[k], static_cast<BYTE>(i));
                    }
                }
                char c;
                ASSERT_EQ(ar.Read(&c, 1), 0u);
            },
            buffer);
    }
}

TEST(AfxArchive, AGivenBufferIsUsedAndLeftToItsOwner) {
    BYTE buffer[256] = {};
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store, sizeof(buffer), buffer);
        ar << 0x04030201;
        EXPECT_EQ(buffer[0], 1);
        EXPECT_EQ(file.GetLength(), 0u);
    }
    EXPECT_EQ(file.GetLength(), 4u);
}

TEST(AfxArchive, AFileThatGivesLittleAtATimeIsReadToItsEnd) {
    FaultyFile file;
    for (int i = 0; i < 1000; ++i) {
        static_cast<CMemFile&>(file).CMemFile::Write(&i, 4);
    }
    file.SeekToBegin();
    file.most = 3;
    CArchive ar(&file, CArchive::load, 128);
    for (int i = 0; i < 500; ++i) {
        int value;
        ar >> value;
        ASSERT_EQ(value, i);
    }
    std::vector<int> rest(501);
    EXPECT_EQ(ar.Read(rest.data(), 501 * 4), 500u * 4);
    EXPECT_EQ(rest[499], 999);
}

TEST(AfxArchive, ClosingALoadingArchiveGivesUnreadBytesBack) {
    CMemFile file;
    file.Write("abcdefgh", 8);
    file.SeekToBegin();
    {
        CArchive ar(&file, CArchive::load);
        short s;
        ar >> s;
        EXPECT_EQ(file.GetPosition(), 8u);
        EXPECT_FALSE(ar.IsBufferEmpty());
    }
    EXPECT_EQ(file.GetPosition(), 2u);
}

TEST(AfxArchive, TheDestructorFlushesUnlessToldNotTo) {
    CMemFile a;
    { CArchive(&a, CArchive::store) << 1; }
    EXPECT_EQ(a.GetLength(), 4u);
    CMemFile b;
    { CArchive(&b, CArchive::store | CArchive::bNoFlushOnDelete) << 1; }
    EXPECT_EQ(b.GetLength(), 0u);
    CMemFile c;
    {
        CArchive ar(&c, CArchive::store);
        ar << 1;
        ar.Abort();
    }
    EXPECT_EQ(c.GetLength(), 0u);
    CArchive closed(&c, CArchive::store);
    closed.Close();
    closed.Close();
    EXPECT_EQ(closed.GetFile(), nullptr);
    EXPECT_EQ(ArchiveCause([&] { closed << 1; }), CArchiveException::genericException);
    EXPECT_EQ(ArchiveCause([&] { closed.Flush(); }), CArchiveException::genericException);
}

TEST(AfxArchive, AFullDiskComesOutOfTheDestructorOnceAndIsNotRetried) {
    FaultyFile file;
    file.full = true;
    EXPECT_EQ(FileCause([&] {
                  CArchive ar(&file, CArchive::store);
                  ar << 1;
              }),
              CFileException::diskFull);
    EXPECT_EQ(file.writes, 1);
    // Under way already, the first exception is kept and the program continues.
    EXPECT_EQ(FileCause([&] {
                  CArchive ar(&file, CArchive::store);
                  ar << 1;
                  AfxThrowFileException(CFileException::badSeek);
              }),
              CFileException::badSeek);
    EXPECT_EQ(file.writes, 2);
    EXPECT_EQ(FileCause([&] {
                  CArchive ar(&file, CArchive::store, 128);
                  for (int i = 0; i < 1000; ++i) {
                      ar << i;
                  }
              }),
              CFileException::diskFull);
    EXPECT_EQ(file.writes, 3);
}

TEST(AfxArchive, ReadsShortWithoutAnExceptionAndEnsureReadWithOne) {
    Load({1, 2, 3}, [](CArchive& ar) {
        BYTE b[4] = {};
        EXPECT_EQ(ar.Read(b, 4), 3u);
        EXPECT_EQ(b[2], 3);
        EXPECT_EQ(ar.Read(b, 4), 0u);
    });
    Load({1, 2, 3}, [](CArchive& ar) {
        BYTE b[4];
        EXPECT_EQ(ArchiveCause([&] { ar.EnsureRead(b, 4); }), CArchiveException::endOfFile);
    });
}

// ---- counts --------------------------------------------------------------------------------------------------------

TEST(AfxArchive, CountsEscapeToWiderForms) {
    const struct {
        DWORD_PTR count;
        Bytes bytes;
    } rows[] = {
        {0, {0, 0}},
        {0x1234, {0x34, 0x12}},
        {0xFFFE, {0xFE, 0xFF}},
        {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0, 0}},
        {0x12345678, {0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12}},
        {0xFFFFFFFE, {0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}},
        {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}},
        {0x123456789A, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x9A, 0x78, 0x56, 0x34, 0x12, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Stored([&](CArchive& ar) { ar.WriteCount(row.count); }), row.bytes);
        Load(row.bytes, [&](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), row.count); });
        for (size_t cut = 0; cut < row.bytes.size(); ++cut) {
            Load(Bytes(row.bytes.begin(), row.bytes.begin() + static_cast<ptrdiff_t>(cut)),
                 [](CArchive& ar) { EXPECT_EQ(ArchiveCause([&] { ar.ReadCount(); }), CArchiveException::endOfFile); });
        }
    }
}

// ---- text ----------------------------------------------------------------------------------------------------------

TEST(AfxArchive, TextLengthsTakeOneThreeOrSevenBytesAfterTheWideMark) {
    const struct {
        UINT_PTR length;
        Bytes bytes;
    } rows[] = {
        {0, {0xFF, 0xFE, 0xFF, 0}},
        {254, {0xFF, 0xFE, 0xFF, 254}},
        {255, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}},
        {0xFFFD, {0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}},
        {0xFFFE, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
        {0x12345678, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Stored([&](CArchive& ar) { AfxWriteStringLength(ar, row.length, TRUE); }), row.bytes);
        Load(row.bytes, [&](CArchive& ar) {
            int size = 0;
            EXPECT_EQ(AfxReadStringLength(ar, size), row.length);
            EXPECT_EQ(size, 2);
        });
        // The same without the mark: one-byte characters.
        const Bytes narrow(row.bytes.begin() + 3, row.bytes.end());
        EXPECT_EQ(Stored([&](CArchive& ar) { AfxWriteStringLength(ar, row.length, FALSE); }), narrow);
        Load(narrow, [&](CArchive& ar) {
            int size = 0;
            EXPECT_EQ(AfxReadStringLength(ar, size), row.length);
            EXPECT_EQ(size, 1);
        });
    }
}

TEST(AfxArchive, WideTextIsWrittenUnitByUnit) {
    const Bytes bytes = Stored([](CArchive& ar) { ar << CString(L"A图"); });
    EXPECT_EQ(bytes, (Bytes{0xFF, 0xFE, 0xFF, 2, 'A', 0, 0xFE, 0x56}));
    EXPECT_EQ(LoadedText(bytes), L"A图");
    EXPECT_EQ(Stored([](CArchive& ar) { ar << CString(); }), (Bytes{0xFF, 0xFE, 0xFF, 0}));
    EXPECT_EQ(LoadedText({0xFF, 0xFE, 0xFF, 0}), L"");
    EXPECT_EQ(Stored([](CArchive& ar) { ar << CStringA("ab"); }), (Bytes{2, 'a', 'b'}));
}

TEST(AfxArchive, TheOlderOneByteTextIsReadInCodePage936) {
    EXPECT_EQ(LoadedText({2, 'a', 'b'}), L"ab");
    EXPECT_EQ(LoadedText({4, 0xCB, 0xCE, 0xCC, 0xE5}), L"宋体");
    EXPECT_EQ(LoadedText({0}), L"");
    EXPECT_EQ(LoadedText({0xFF, 2, 0, 'a', 'b'}), L"ab");                   // a length longer than it need be
    EXPECT_EQ(LoadedText({0xFF, 0xFF, 0xFF, 2, 0, 0, 0, 'a', 'b'}), L"ab"); // and longer still
    EXPECT_EQ(LoadedText({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 0, 0, 0, 0, 'a'}), L"a");
}

TEST(AfxArchive, TextsOfEveryLengthClassComeBack) {
    for (int length : {0, 1, 254, 255, 256, 2047, 2048, 4096, 65533, 65534, 65535, 65536, 200000}) {
        CString text;
        wchar_t* p = text.GetBufferSetLength(length);
        for (int i = 0; i < length; ++i) {
            p[i] = static_cast<wchar_t>(0x4E00 + i % 0x5000);
        }
        const Bytes bytes = Stored([&](CArchive& ar) { ar << text << 77; });
        Load(bytes, [&](CArchive& ar) {
            CString back;
            int mark;
            ar >> back >> mark;
            EXPECT_TRUE(back == text) << length;
            EXPECT_EQ(back.GetLength(), length);
            EXPECT_EQ(mark, 77);
        });
    }
}

TEST(AfxArchive, ATextThatBreaksOffAnywhereIsAnEndOfFileAndChangesNothing) {
    const Bytes bytes = Stored([](CArchive& ar) { ar << CString(L'x', 300); });
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        CString s(L"before");
        Load(Bytes(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(cut)),
             [&](CArchive& ar) { EXPECT_EQ(ArchiveCause([&] { ar >> s; }), CArchiveException::endOfFile) << cut; });
        EXPECT_EQ(s, L"before");
    }
}

TEST(AfxArchive, AFalseTextLengthCostsNoMemoryBeyondTheStream) {
    // Four billion characters, of which two are there; a text of that size could not even be made.
    EXPECT_EQ(LoadTextCause({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 'a', 0, 'b', 0}),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadTextCause({0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0x7F, 'a'}), CArchiveException::endOfFile);
    EXPECT_EQ(LoadTextCause({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                             0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'a',  0}),
              CArchiveException::endOfFile);
    // One more byte than whole characters.
    EXPECT_EQ(LoadTextCause({0xFF, 0xFE, 0xFF, 2, 'a', 0, 'b'}), CArchiveException::endOfFile);
}

TEST(AfxArchive, LinesEndAtALineFeed) {
    const Bytes bytes = Stored([](CArchive& ar) { ar.WriteString(L"one\r\n\ntwo"); });
    EXPECT_EQ(bytes.size(), 18u);
    Load(bytes, [](CArchive& ar) {
        CString line;
        EXPECT_TRUE(ar.ReadString(line));
        EXPECT_EQ(line, L"one");
        EXPECT_TRUE(ar.ReadString(line));
        EXPECT_EQ(line, L"");
        EXPECT_TRUE(ar.ReadString(line));
        EXPECT_EQ(line, L"two");
        EXPECT_FALSE(ar.ReadString(line));
    });
    Load(bytes, [](CArchive& ar) {
        wchar_t text[8];
        EXPECT_EQ(std::wstring(ar.ReadString(text, 2)), L"on");
        EXPECT_EQ(std::wstring(ar.ReadString(text, 7)), L"e");
        EXPECT_EQ(std::wstring(ar.ReadString(text, 7)), L"");
        EXPECT_EQ(std::wstring(ar.ReadString(text, 7)), L"two");
        EXPECT_EQ(ar.ReadString(text, 7), nullptr);
    });
}

// ---- arrays --------------------------------------------------------------------------------------------------------

TEST(AfxArchive, ArraysAreACountAndTheirElements) {
    CWordArray words;
    words.Add(0x0201);
    words.Add(0x0403);
    EXPECT_EQ(Stored([&](CArchive& ar) { words.Serialize(ar); }), (Bytes{2, 0, 1, 2, 3, 4}));
    CStringArray texts;
    texts.Add(L"a");
    texts.Add(L"");
    const Bytes bytes = Stored([&](CArchive& ar) { texts.Serialize(ar); });
    EXPECT_EQ(bytes, (Bytes{2, 0, 0xFF, 0xFE, 0xFF, 1, 'a', 0, 0xFF, 0xFE, 0xFF, 0}));
    Load(bytes, [](CArchive& ar) {
        CStringArray back;
        back.Add(L"gone");
        back.Serialize(ar);
        ASSERT_EQ(back.GetSize(), 2);
        EXPECT_EQ(back[0], L"a");
        EXPECT_EQ(back[1], L"");
    });
    CUIntArray numbers;
    EXPECT_TRUE(Throws<CNotSupportedException>([&] { Stored([&](CArchive& ar) { numbers.Serialize(ar); }); }));
    CDWordArray many;
    for (DWORD i = 0; i < 100000; ++i) {
        many.Add(i * 7);
    }
    Load(Stored([&](CArchive& ar) { many.Serialize(ar); }), [](CArchive& ar) {
        CDWordArray back;
        back.Serialize(ar);
        ASSERT_EQ(back.GetSize(), 100000);
        EXPECT_EQ(back[99999], 99999u * 7);
    });
}

TEST(AfxArchive, AFalseElementCountIsAnEndOfFileAndCostsNoMemory) {
    const Bytes hostile = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 1, 2, 3};
    Load(hostile, [](CArchive& ar) {
        CByteArray array;
        EXPECT_EQ(ArchiveCause([&] { array.Serialize(ar); }), CArchiveException::endOfFile);
        EXPECT_LE(array.GetSize(), 0x4000);
    });
    Load(hostile, [](CArchive& ar) {
        CStringArray array;
        EXPECT_EQ(ArchiveCause([&] { array.Serialize(ar); }), CArchiveException::endOfFile);
    });
    Load(hostile, [](CArchive& ar) {
        CObArray array;
        EXPECT_NE(ArchiveCause([&] { array.Serialize(ar); }), -1);
        EXPECT_EQ(array.GetSize(), 0);
    });
}

TEST(AfxArchive, ANewArchiveTellsItsModeFileAndNoSchema) {
    EXPECT_EQ(CArchive::store, 0);
    EXPECT_EQ(CArchive::load, 1);
    EXPECT_EQ(CArchive::bNoFlushOnDelete, 2);
    EXPECT_EQ(CArchive::bNoByteSwap, 4);
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    EXPECT_TRUE(ar.IsStoring());
    EXPECT_FALSE(ar.IsLoading());
    EXPECT_EQ(ar.GetFile(), &file);
    EXPECT_EQ(ar.m_pDocument, nullptr);
    EXPECT_EQ(ar.GetObjectSchema(), 0xFFFFFFFFu);
    EXPECT_TRUE(Throws<CInvalidArgException>([] { CArchive none(NULL, CArchive::load); }));
}

} // namespace
