#include "Scenes.h"

#include "Arc.h"
#include "Circle.h"
#include "Document.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "PLine.h"
#include "Text.h"

#include <random>

namespace bench {

namespace {

class Maker {
public:
    explicit Maker(CGraphicDocument& document) : m_document(document) {}

    void AddLine(int i) {
        auto* line = new CLine;
        const CGePoint2d start = Place();
        line->SetStartPoint(start);
        line->SetEndPoint(Near(start, 40));
        line->SetLockMode(1);
        line->SetLineType(i % 8 == 0 ? PS_DASH : PS_SOLID);
        Take(line);
    }
    void AddPolyline() {
        auto* line = new CPLine;
        CGePoint2d p = Place();
        for (int k = 0; k < 4; ++k) {
            line->AddPoint(p, k == 1 ? Between(0.2, 0.9) : 0.0);
            p = Near(p, 25);
        }
        line->SetLockMode(1);
        line->SetLineType(PS_SOLID);
        Take(line);
    }
    void AddCircle() {
        const CGePoint2d p = Place();
        auto* circle = new CCircle(Gdiplus::PointF(static_cast<float>(p.x), static_cast<float>(p.y)),
                                   static_cast<float>(Between(2, 15)));
        circle->SetLockMode(1);
        circle->SetLineType(PS_SOLID);
        Take(circle);
    }
    void AddArc() {
        const CGePoint2d p = Place();
        const float start = static_cast<float>(Between(0, 6));
        auto* arc = new CArc(Gdiplus::PointF(static_cast<float>(p.x), static_cast<float>(p.y)),
                             static_cast<float>(Between(2, 15)), start, start + static_cast<float>(Between(0.5, 3)));
        arc->SetLockMode(1);
        arc->SetLineType(PS_SOLID);
        Take(arc);
    }
    void AddText(int i) {
        auto* text = new CText;
        CString words;
        words.Format(L"M%d-%d", i % 97, i);
        text->SetPos(Place());
        text->SetText(words);
        text->SetTextHeight(i % 3 == 0 ? 8.0f : 12.0f);
        text->SetAngle(i % 10 == 0 ? 90.0f : 0.0f);
        Take(text);
    }

private:
    double Between(double low, double high) { return low + (high - low) * m_random() / 4294967296.0; }
    CGePoint2d Place() {
        const double x = Between(20, kWidth - 20);
        return CGePoint2d(x, Between(20, kHeight - 20));
    }
    CGePoint2d Near(const CGePoint2d& p, double reach) {
        const double x = p.x + Between(-reach, reach);
        return CGePoint2d(x, p.y + Between(-reach, reach));
    }
    // Without the search for doubles, which would make the filling quadratic.
    void Take(CDrawable* object) {
        object->SetPenColor(m_random() & 0xFFFFFF);
        object->SetLineWide(1);
        m_document.GetDrawableObjs()->Add(object);
        KX_ADD_MEMORY(object);
    }

    CGraphicDocument& m_document;
    std::mt19937 m_random{7};
};

} // namespace

const char* NameOf(Scene scene) {
    return scene == Scene::Lines ? "S1 lines" : scene == Scene::Polylines ? "S2 polylines" : "S3 mixed";
}

void Fill(CGraphicDocument& document, Scene scene, int count) {
    Maker maker(document);
    document.GetDrawableObjs()->SetSize(0, count);
    for (int i = 0; i < count; ++i) {
        if (scene == Scene::Lines) {
            maker.AddLine(i);
        } else if (scene == Scene::Polylines) {
            maker.AddPolyline();
        } else if (i % 4 == 0) {
            maker.AddText(i);
        } else if (i % 8 == 1) {
            maker.AddLine(i);
        } else if (i % 8 == 5) {
            maker.AddPolyline();
        } else if (i % 4 == 2) {
            maker.AddCircle();
        } else {
            maker.AddArc();
        }
    }
}

void FillTexts(CGraphicDocument& document, int count) {
    Maker maker(document);
    for (int i = 0; i < count; ++i) {
        maker.AddText(i);
    }
}

} // namespace bench
