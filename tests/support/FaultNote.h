// What a test that makes many calls is doing now, for the line that is printed at a fault.
// Layer 16: tests.
#pragma once

#include <string>

inline char g_faultNote[256] = "";

// Keeps the first 255 bytes. An empty text prints nothing.
inline void NoteForFault(const std::string& text) {
    g_faultNote[text.copy(g_faultNote, sizeof g_faultNote - 1)] = 0;
}
