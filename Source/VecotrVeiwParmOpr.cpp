#include "VecotrVeiwParmOpr.h"

#include "MemoryInfo.h"
#include "TextParm.h"
#include "VectorViewParm.h"

CVecotrVeiwParmOpr& CVecotrVeiwParmOpr::Instance() {
    static CVecotrVeiwParmOpr instance;
    return instance;
}

CVecotrVeiwParmOpr::~CVecotrVeiwParmOpr() {
    // Runs at the end of the process, when the DLLs below may have been unloaded. ReleaseVector has freed the view when
    // this library was detached.
    m_pVector = nullptr;
}

int CVecotrVeiwParmOpr::LoadFile(unsigned char* data, unsigned int size) {
    if (m_pVector == nullptr) {
        CreateVector();
    }
    // Compatibility 128: a load of a null or empty buffer empties the reader and gives 1.
    m_pVector->GetDocument()->Reset();
    return m_pVector->LoadFile(data, size);
}

int CVecotrVeiwParmOpr::LoadFileV2(const void* data, unsigned int size) {
    // The buffer is only read.
    return LoadFile(static_cast<unsigned char*>(const_cast<void*>(data)), size);
}

int CVecotrVeiwParmOpr::GetParm(CStringArray& names) {
    if (m_pVector == nullptr) {
        return 0;
    }
    CDrawableArray* objs = m_pVector->GetDocument()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, objs->GetAt(i))) {
            names.Add(parm->GetParmName());
        }
    }
    return 1;
}

void CVecotrVeiwParmOpr::ReleaseVector() {
    KX_REMOVE_MEMORY(m_pVector);
    delete m_pVector;
    m_pVector = nullptr;
}

void CVecotrVeiwParmOpr::CreateVector() {
    m_pVector = new CVectorViewParm;
    KX_ADD_MEMORY(m_pVector);
}
