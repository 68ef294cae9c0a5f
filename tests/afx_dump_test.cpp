// The checks and dumps of objects: AssertValid, Dump and the dump context. Layer 16: tests.
#include <afx.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

class CHolder : public CObject {
    DECLARE_DYNAMIC(CHolder)
public:
    int m_count = 3;
    CObject* m_inner = NULL;
    mutable int m_checked = 0;
    void AssertValid() const override {
        CObject::AssertValid();
        ++m_checked;
    }
    void Dump(CDumpContext& dc) const override {
        CObject::Dump(dc);
        dc << L"count = " << m_count << L"\n";
        if (dc.GetDepth() > 0) {
            dc << m_inner;
        }
    }
};
IMPLEMENT_DYNAMIC(CHolder, CObject)

namespace {

std::string Dumped(const CObject& object, int depth) {
    CMemFile file;
    CDumpContext dc(&file);
    dc.SetDepth(depth);
    dc << object;
    dc.Flush();
    std::string text(static_cast<size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    return text;
}

std::string Address(const void* p) {
    std::ostringstream text;
    text << std::hex << std::uppercase << reinterpret_cast<ULONG_PTR>(p);
    return text.str();
}

} // namespace

TEST(AfxDump, AnObjectDumpsItsClassAndAddress) {
    CHolder holder;
    const std::string own = "a CHolder at $" + Address(&holder) + "\ncount = 3\n";
    EXPECT_EQ(Dumped(holder, 0), own);
    EXPECT_EQ(Dumped(holder, 1), own + "NULL");
    CHolder inner;
    holder.m_inner = &inner;
    EXPECT_EQ(Dumped(holder, 0), own);
    EXPECT_EQ(Dumped(holder, 1), own + "a CHolder at $" + Address(&inner) + "\ncount = 3\nNULL");
}

TEST(AfxDump, EachKindOfValueIsWrittenAsText) {
    CMemFile file;
    CDumpContext dc(&file);
    dc << BYTE{200} << L" " << WORD{65535} << L" " << -7 << L" " << 4000000000u << L" " << LONG{-5} << L" " << DWORD{6}
       << L" " << -9223372036854775807LL << L" " << 18446744073709551615ull << L" " << 2.5f << L" " << -0.125 << L" "
       << reinterpret_cast<const void*>(static_cast<UINT_PTR>(0xABC)) << L" " << static_cast<LPCTSTR>(NULL);
    std::string text(static_cast<size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    EXPECT_EQ(text, "200 65535 -7 4000000000 -5 6 -9223372036854775807 18446744073709551615 2.5 -0.125 $ABC NULL");
}

TEST(AfxDump, WithoutAFileItGoesToTheDebugger) {
    EXPECT_EQ(afxDump.m_pFile, nullptr);
    afxDump << L"text for the debugger\n";
    afxDump.Flush();
}

TEST(AfxDump, AValidityCheckAsksTheObject) {
    CHolder holder;
    AfxAssertValidObject(&holder, __FILE__, __LINE__);
    EXPECT_EQ(holder.m_checked, 1);
}
