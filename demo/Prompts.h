// What the user does next while a command runs.
// Layer 11: demo.
#pragma once

#include <CommandWords.h>

// The prompt of a command after so many left clicks, with the keys that mean something then; the command's hint where a
// command has no steps.
CString GetPrompt(const CommandWord& row, int clicks);
