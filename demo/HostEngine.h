// The demo's command engine: the library's, which tells where the rubber band runs and when a command has done its
// work. Layer 13: demo.
#pragma once

#include <CommandOperationManager.h>

#include <functional>

class CHostEngine : public CCommandOperationManager {
public:
    using CCommandOperationManager::CCommandOperationManager;

    using CCommandOperationManager::DrawShirrLine;
    void DrawShirrLine(CPoint from, CPoint to, int erasing) override;
    void ErasShirrLine() override;

    // Both ends of the band in client pixels; false while there is none, or one without length.
    bool GetBand(CPoint& from, CPoint& to) const;
    // Called when a command has done its work and before the change is marked as a step. Must not call the engine.
    void SetDone(std::function<void()> done) { m_done = std::move(done); }

protected:
    void OnToolEnded(CCommandOperation* tool, ToolEnd how) override;

private:
    std::function<void()> m_done;
    CPoint m_from;
    CPoint m_to;
    bool m_hasBand = false;
};
