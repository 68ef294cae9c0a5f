// What a user and a host do with a drawing from its beginning to its end, step by step.
// Layer 16: tests.
#pragma once

#include "support/TemporaryPath.h"

#include <functional>
#include <string>
#include <vector>

// Steps: a view is made and filled, painted, drawn in by commands, edited, a parameter is changed, the drawing is saved
// to `path`, stored to memory, loaded from both, fitted, painted for a host, and closed. Each step is tried whatever
// happened in the one before. `step` is called with the name of each step before it, `thrown` with the class of an
// exception that a step lets out. Boxes and dialogs must be answered by the caller.
void RunLongSession(const TemporaryPath& path, const std::function<void(const char*)>& step,
                    std::vector<std::string>& thrown);
