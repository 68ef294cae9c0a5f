// The drawings of samples/: their dimension labels, and texts that no stroke runs through.

#include "Text.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

const CRect kPaper(0, 0, 1600, 1000);

// A black picture, and what was drawn on it.
class Paper {
public:
    Paper() {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = kPaper.Width();
        info.bmiHeader.biHeight = -kPaper.Height();
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        m_Bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        m_Pixels = static_cast<const DWORD*>(bits);
        dc.CreateCompatibleDC(nullptr);
        m_Old = dc.SelectObject(&m_Bitmap);
        dc.PatBlt(0, 0, kPaper.Width(), kPaper.Height(), BLACKNESS);
    }
    ~Paper() { dc.SelectObject(m_Old); }
    DWORD At(int x, int y) const { return m_Pixels[y * kPaper.Width() + x] & 0xFFFFFF; }

    CDC dc;

private:
    CBitmap m_Bitmap;
    CBitmap* m_Old;
    const DWORD* m_Pixels;
};

class Sample {
public:
    explicit Sample(const std::string& name) {
        m_Graphic.SetVectorViewCoordTran(&m_Tran);
        Bytes bytes = ReadTestData("../../samples/" + name);
        EXPECT_EQ(1, m_Graphic.GetDocument()->OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())));
        m_Graphic.ZoomAll(kPaper);
    }
    CDrawableArray& Objects() { return *m_Graphic.GetDocument()->GetDrawableObjs(); }
    void Draw(Paper& paper, CDrawable* object) { m_Graphic.OnDraw(&paper.dc, object); }

    // The lengths that the labels show, rounded, in ascending order.
    std::vector<int> Figures() {
        std::vector<int> figures;
        for (int i = 0; i < Objects().GetSize(); ++i) {
            auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, Objects()[i]);
            if (label != nullptr && label->GetTextShow() != 0) {
                figures.push_back(
                    static_cast<int>(std::lround(label->GetLeftLabelEntPt().distance(label->GetRightLabelEndPt()))));
            }
        }
        std::sort(figures.begin(), figures.end());
        return figures;
    }

    // The box around the characters of a text or of a label's figure, one pixel larger on each side.
    CRect CharactersOf(CDrawable* object) {
        auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, object);
        if (label == nullptr && !object->IsKindOf(RUNTIME_CLASS(CText))) {
            return CRect(0, 0, 0, 0);
        }
        Paper with;
        Paper without;
        Draw(with, object);
        if (label != nullptr) {
            const int shown = label->GetTextShow();
            label->SetTextShow(0);
            Draw(without, object);
            label->SetTextShow(shown);
        }
        CRect box(0, 0, 0, 0);
        for (int y = 0; y < kPaper.Height(); ++y) {
            for (int x = 0; x < kPaper.Width(); ++x) {
                if (with.At(x, y) != without.At(x, y)) {
                    box.UnionRect(&box, CRect(x - 1, y - 1, x + 2, y + 2));
                }
            }
        }
        return box;
    }

    // Draws everything but the characters; of a label its strokes.
    void DrawStrokesBut(Paper& paper, CDrawable* own) {
        for (int i = 0; i < Objects().GetSize(); ++i) {
            CDrawable* object = Objects()[i];
            if (object == own || object->IsKindOf(RUNTIME_CLASS(CText))) {
                continue;
            }
            if (auto* label = DYNAMIC_DOWNCAST(CKXVectorLabel, object)) {
                label->SetTextShow(0);
                Draw(paper, label);
                label->SetTextShow(1);
            } else {
                Draw(paper, object);
            }
        }
    }

private:
    CVectorViewCoordTran m_Tran;
    CVectorGraphic m_Graphic;
};

} // namespace

TEST(Samples, TheTrussShowsItsPanelsItsHeightAndItsChords) {
    EXPECT_EQ((std::vector<int>{400, 400, 400, 400, 400, 400, 400, 400, 480, 2400, 3200}),
              Sample("truss.nrv").Figures());
}

TEST(Samples, ThePartShowsItsLengthItsDepthAndWhereHubAndSlotsAre) {
    EXPECT_EQ((std::vector<int>{450, 450, 500, 700, 1400, 1700, 2400}), Sample("mechanical_part.nrv").Figures());
}

TEST(Samples, NoStrokeOfAnotherObjectRunsThroughTheCharactersOfAText) {
    int texts = 0;
    for (const char* name : {"truss.nrv", "mechanical_part.nrv", "texts.nrv"}) {
        Sample sample(name);
        for (int i = 0; i < sample.Objects().GetSize(); ++i) {
            const CRect box = sample.CharactersOf(sample.Objects()[i]);
            if (box.IsRectEmpty()) {
                continue;
            }
            ++texts;
            Paper paper;
            sample.DrawStrokesBut(paper, sample.Objects()[i]);
            int met = 0;
            for (int y = box.top; y < box.bottom; ++y) {
                for (int x = box.left; x < box.right; ++x) {
                    met += paper.At(x, y) != 0;
                }
            }
            EXPECT_EQ(0, met) << name << ", object " << i << ", characters in " << box.left << "," << box.top << " to "
                              << box.right << "," << box.bottom;
        }
    }
    EXPECT_EQ(11 + 7 + 26, texts);
}
