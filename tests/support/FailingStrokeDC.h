// A device context whose strokes throw: the message of such a drawing, and what it restores. Layer 16: tests.
#pragma once

#include "support/DrawStage.h"

#include <string>
#include <vector>

class FailingStrokeDC : public RecordingDC {
public:
    // `plain`: the exception thrown is no CException.
    explicit FailingStrokeDC(bool plain = false) : RecordingDC(100, 100), m_plain(plain) {}

    using RecordingDC::Arc;
    using RecordingDC::Ellipse;
    using RecordingDC::LineTo;
    BOOL LineTo(int, int) override { return Fail(); }
    BOOL Ellipse(int, int, int, int) override { return Fail(); }
    BOOL Arc(int, int, int, int, int, int, int, int) override { return Fail(); }

private:
    BOOL Fail() {
        if (m_plain) {
            throw 7;
        }
        AfxThrowResourceException();
        return FALSE;
    }

    bool m_plain;
};

// The calls of a drawing that fails in its stroke, on a context in R2_MASKPEN: what it did before, and what it
// restored. The stroke itself is not among them.
inline Calls FailStroke(DrawStage& stage, CDrawable& object, bool plain = false) {
    FailingStrokeDC dc(plain);
    dc.SetROP2(R2_MASKPEN);
    dc.Clear();
    object.Draw(&dc, &stage.geometry);
    return dc.Calls();
}
