// What a piece of code threw, as a value that a test can compare; the exception itself is deleted. Layer 16: tests.
#pragma once

#include <afx.h>

// The cause of the archive exception, -1 when none was thrown. Any other exception is passed on.
template <typename F>
int ArchiveCause(F code) {
    try {
        code();
    } catch (CArchiveException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return -1;
}

template <typename F>
int FileCause(F code) {
    try {
        code();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return -1;
}

// Whether exactly an E was thrown, not one of its bases or of its derived classes.
template <typename E, typename F>
bool Throws(F code) {
    try {
        code();
    } catch (CException* e) {
        const bool same = e->GetRuntimeClass() == RUNTIME_CLASS(E);
        e->Delete();
        return same;
    }
    return false;
}
