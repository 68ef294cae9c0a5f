// A view in a window of its own, whose paints can be those of the bare calls. Layer 15: bench.
#pragma once

#include "BareCalls.h"
#include "Scenes.h"

#include "Document.h"
#include "vectorview.h"

#include <memory>

namespace bench {

class BenchView : public CVectorView {
public:
    BenchView();
    ~BenchView() override;

    CVectorGraphic& Graphic() { return m_Graphic; }
    // Null: the library paints again. The drawing is borrowed.
    void SetBare(const BareDrawing* bare, bool part) { m_bare = bare, m_part = part; }
    void Repaint();
    std::vector<DWORD> Shown();

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void PaintBare();

    CWnd m_parent;
    const BareDrawing* m_bare = nullptr;
    bool m_part = false;
};

} // namespace bench
