// CResourceScope: makes a module the first place where resources are looked up, for the length of a block.
// Layer 3: base.
#pragma once

#include <afxwin.h>

class CResourceScope {
public:
    explicit CResourceScope(HINSTANCE module) : m_Previous(AfxGetResourceHandle()) { AfxSetResourceHandle(module); }
    ~CResourceScope() { AfxSetResourceHandle(m_Previous); }
    CResourceScope(const CResourceScope&) = delete;
    CResourceScope& operator=(const CResourceScope&) = delete;

private:
    HINSTANCE m_Previous;
};
