// CCommand: the root of the command engine's classes. It has no data of its own.
// Layer 9: command operations.
#pragma once

#include "VectorViewApi.h"

class NRVECTORVIEW_API CCommand : public CObject {
    DECLARE_DYNAMIC(CCommand)
public:
    CCommand() = default;
};
