#include "HostEngine.h"

void CHostEngine::DrawShirrLine(CPoint from, CPoint to, int erasing) {
    CCommandOperationManager::DrawShirrLine(from, to, erasing);
    m_from = from;
    m_to = to;
    m_hasBand = erasing == 0;
}

void CHostEngine::ErasShirrLine() {
    CCommandOperationManager::ErasShirrLine();
    m_hasBand = false;
}

bool CHostEngine::GetBand(CPoint& from, CPoint& to) const {
    from = m_from;
    to = m_to;
    return m_hasBand && from != to;
}

void CHostEngine::OnToolEnded(CCommandOperation* tool, ToolEnd how) {
    CCommandOperationManager::OnToolEnded(tool, how);
    if (how == ToolEnd::Done && m_done) {
        m_done();
    }
}
