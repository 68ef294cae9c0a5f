// The schema of the object that is being read, for every level of its class.
// Layer 5: drawables.
#pragma once

#include "VectorViewApi.h"

// The schema of the class record in the stream; kNoSchema outside ReadObject. Classes of hosts use this function too:
// CArchive::GetObjectSchema gives the schema once for each object and resets it, while each level of a class needs it.
inline UINT ObjectSchema(CArchive& ar) {
    const UINT schema = ar.GetObjectSchema();
    ar.SetObjectSchema(schema);
    return schema;
}
