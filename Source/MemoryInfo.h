// Registration of the system's heap objects with the leak tracer: right after new, right before delete.
// Layer 3: base.
#pragma once

#include <KXBaseOpr.h>

#include <memory>

#define KX_ADD_MEMORY(pointer) CKXMemoryManager::Instance()->AddMemoryInfo((pointer), __FILE__, __LINE__)
#define KX_REMOVE_MEMORY(pointer) CKXMemoryManager::Instance()->RemoveMemoryInfo((pointer), __FILE__, __LINE__)

// The owner of a registered object that is not given to its final owner yet: deregisters and deletes it.
struct CTracedDeleter {
    template <class Object>
    void operator()(Object* object) const {
        KX_REMOVE_MEMORY(object);
        delete object;
    }
};
template <class Object>
using CTracedOwner = std::unique_ptr<Object, CTracedDeleter>;
