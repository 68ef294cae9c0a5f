#include "ParmEditSession.h"

#include "Document.h"
#include "TextParm.h"
#include "VectorGraphic.h"

// ---- A watched parameter -------------------------------------------------------------------------------------------

CWatchedParm::CWatchedParm(CTextParm* parm, const CKxAlive& view, CVectorGraphic* graphic)
    : m_pParm(parm), m_ParmAlive(parm->GetAlive()), m_ViewAlive(view), m_pGraphic(graphic), m_bListed(IsListed()) {}

bool CWatchedParm::IsListed() const {
    CDrawableArray* objs = m_pGraphic->GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        if (objs->GetAt(i) == m_pParm) {
            return true;
        }
    }
    return false;
}

bool CWatchedParm::HasGone() {
    if (!m_ViewAlive.IsAlive() || !m_ParmAlive.IsAlive()) {
        return true;
    }
    if (m_bListed) {
        return !IsListed();
    }
    m_bListed = IsListed();
    return false;
}

// ---- The session ---------------------------------------------------------------------------------------------------

CParmEditSession::Phase CParmEditSession::GetPhase() const {
    if (m_Hook != Phase::Closed) {
        return m_Hook;
    }
    if (!m_Parm.has_value()) {
        return Phase::Closed;
    }
    return m_bRefused ? Phase::Refused : Phase::Open;
}

void CParmEditSession::Open(const CWatchedParm& parm) {
    m_Parm.emplace(parm);
    ++m_Number;
    m_bRefused = false;
}

void CParmEditSession::Close() {
    m_Parm.reset();
    m_bRefused = false;
}

void CParmEditSession::Abandon() {
    Close();
    m_Hook = Phase::Closed;
}
