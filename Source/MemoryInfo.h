// Registration of the system's heap objects with the leak tracer: right after new, right before delete.
// Layer 3: base.
#pragma once

#include <KXBaseOpr.h>

#define KX_ADD_MEMORY(pointer) CKXMemoryManager::Instance()->AddMemoryInfo((pointer), __FILE__, __LINE__)
#define KX_REMOVE_MEMORY(pointer) CKXMemoryManager::Instance()->RemoveMemoryInfo((pointer), __FILE__, __LINE__)
