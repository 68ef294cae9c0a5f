#include "OperationCreateTextParm.h"

#include "MemoryInfo.h"
#include "TextParm.h"

IMPLEMENT_DYNAMIC(COperationCreateTextParm, COperationCreateText)

CText* COperationCreateTextParm::CreateTextObject() {
    auto* text = new CTextParm;
    KX_ADD_MEMORY(text);
    text->SetAngle(0.0f);
    return text;
}
