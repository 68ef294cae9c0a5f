// The demo's command engine: the library's, which tells where the rubber band runs.
// Layer 13: demo.
#pragma once

#include <CommandOperationManager.h>

class CHostEngine : public CCommandOperationManager {
public:
    using CCommandOperationManager::CCommandOperationManager;

    using CCommandOperationManager::DrawShirrLine;
    void DrawShirrLine(CPoint from, CPoint to, int erasing) override;
    void ErasShirrLine() override;

    // Both ends of the band in client pixels; false while there is none, or one without length.
    bool GetBand(CPoint& from, CPoint& to) const;

private:
    CPoint m_from;
    CPoint m_to;
    bool m_hasBand = false;
};
