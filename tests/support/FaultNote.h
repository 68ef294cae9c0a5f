// What a test that makes many calls is doing now, for the line that a fault prints.
// Layer 16: tests.
#pragma once

#include <string>

inline char g_faultNote[256] = "";

// Keeps the first 255 bytes. An empty text says nothing.
inline void NoteForFault(const std::string& text) {
    g_faultNote[text.copy(g_faultNote, sizeof g_faultNote - 1)] = 0;
}
