// CVecotrVeiwParmOpr: lists the parameters of a stored drawing without showing it.
// Layer 11: views and dialogs. The spelling of the name is part of the interface.
#pragma once

#include "VectorViewApi.h"

#include <afxcoll.h>

class CVectorViewParm;

// A singleton around one hidden view that never gets a window. All users share it: each load replaces the one before.
// One thread.
class NRVECTORVIEW_API CVecotrVeiwParmOpr {
public:
    static CVecotrVeiwParmOpr& Instance(); // Made at the first call, for the life of the process.
    // A copy shares the view; only one may release it.
    CVecotrVeiwParmOpr(const CVecotrVeiwParmOpr&) = default;
    CVecotrVeiwParmOpr& operator=(const CVecotrVeiwParmOpr&) = default;
    virtual ~CVecotrVeiwParmOpr();

    // Replaces what was loaded before. Always 1, also for a null buffer and a stream that can't be read.
    int LoadFile(unsigned char* data, unsigned int size);
    int LoadFileV2(const void* data, unsigned int size);
    // Appends the name of each parameter, in drawing order, doubles included. 1; 0 before the first load.
    int GetParm(CStringArray& names);
    // Frees the view; the next load makes a new one.
    void ReleaseVector();

protected:
    void CreateVector(); // Makes the view, which this object owns.

private:
    CVecotrVeiwParmOpr() = default;

    CVectorViewParm* m_pVector = nullptr; // Owned.
};
