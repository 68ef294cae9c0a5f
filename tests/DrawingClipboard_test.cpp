// CDrawingClipboard: what is on the clipboard after copying, and what comes back.

#include <DrawingClipboard.h>

#include "support/ViewHost.h"

#include <Line.h>
#include <ObjectStream.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

CLine* AddLine(ViewHost& host, double x) {
    auto* line = new CLine;
    line->SetStartPoint(CGePoint2d(x, 0));
    line->SetEndPoint(CGePoint2d(x + 10, 20));
    host.Document().AddDrawAobject(line);
    return line;
}

TEST(DesktopDrawingClipboard, ObjectsComeBackAsTheyWere) {
    ViewHost host;
    AddLine(host, 1);
    host.Document().AddSelected(AddLine(host, 7));
    ASSERT_TRUE(
        CDrawingClipboard::CopyObjects(&host.parent, &host.Document(), *host.Document().GetSelectedDrawableObjs()));
    EXPECT_TRUE(CDrawingClipboard::HasObjects());
    CByteArray bytes;
    ASSERT_TRUE(CDrawingClipboard::PasteObjects(&host.parent, bytes));
    ViewHost other;
    other.Document().OpenDocument(bytes.GetData(), static_cast<unsigned int>(bytes.GetSize()));
    ASSERT_EQ(1, other.Objects().GetSize());
    EXPECT_EQ(7.0, static_cast<CLine*>(other.Objects()[0])->GetStartPoint().x);
}

TEST(DesktopDrawingClipboard, NothingSelectedLeavesTheClipboardAsItIs) {
    ViewHost host;
    CLine* line = AddLine(host, 7);
    host.Document().AddSelected(line);
    const CDrawableArray& selected = *host.Document().GetSelectedDrawableObjs();
    ASSERT_TRUE(CDrawingClipboard::CopyObjects(&host.parent, &host.Document(), selected));
    host.Document().RemoveAllSelected();
    EXPECT_FALSE(CDrawingClipboard::CopyObjects(&host.parent, &host.Document(), selected));
    EXPECT_TRUE(CDrawingClipboard::HasObjects());
}

TEST(DesktopDrawingClipboard, APictureIsAMetafileAndAPng) {
    ViewHost host;
    AddLine(host, 7);
    CRenderOptions options;
    options.size = CSize(120, 90);
    ASSERT_TRUE(CDrawingClipboard::CopyPicture(&host.parent, &host.Document(), options));
    EXPECT_FALSE(CDrawingClipboard::HasObjects());
    CByteArray bytes;
    EXPECT_FALSE(CDrawingClipboard::PasteObjects(&host.parent, bytes));
    ASSERT_TRUE(::OpenClipboard(host.parent.m_hWnd));
    const auto metafile = static_cast<HENHMETAFILE>(::GetClipboardData(CF_ENHMETAFILE));
    ENHMETAHEADER header = {};
    EXPECT_NE(0u, ::GetEnhMetaFileHeader(metafile, sizeof(header), &header));
    EXPECT_NEAR(119, header.rclBounds.right, 1);
    const HANDLE png = ::GetClipboardData(::RegisterClipboardFormatW(L"PNG"));
    const auto* file = static_cast<const BYTE*>(::GlobalLock(png));
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(0, std::memcmp(file, "\x89PNG\r\n\x1a\n", 8));
    EXPECT_EQ(120, file[19]); // The last byte of the width, and of the height.
    EXPECT_EQ(90, file[23]);
    ::GlobalUnlock(png);
    ::CloseClipboard();
}

TEST(DesktopDrawingClipboard, AClipboardThatIsOpenElsewhereIsLeftAlone) {
    ViewHost host;
    host.Document().AddSelected(AddLine(host, 7));
    const CDrawableArray& selected = *host.Document().GetSelectedDrawableObjs();
    ViewHost other;
    ASSERT_TRUE(::OpenClipboard(other.parent.m_hWnd));
    EXPECT_FALSE(CDrawingClipboard::CopyObjects(&host.parent, &host.Document(), selected));
    EXPECT_FALSE(CDrawingClipboard::CopyPicture(&host.parent, &host.Document(), CRenderOptions()));
    ::CloseClipboard();
}

} // namespace
