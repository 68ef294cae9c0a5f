// What a user and a host do with a drawing from its beginning to its end, step by step.
// Layer 16: tests.
#pragma once

#include "support/TemporaryPath.h"

#include <functional>
#include <string>
#include <vector>

// Steps: a view is made and filled, painted, drawn in by commands, edited, a parameter is changed, the drawing is
// saved to `path`, stored to memory, loaded from both, fitted, painted for a host, and closed. Each step is tried
// whatever became of the one before; what a step lets out is told to `thrown` by the name of its class, and `step` is
// told the name of each step before it. Boxes and dialogs must be answered by the caller.
void RunLongSession(const TemporaryPath& path, const std::function<void(const char*)>& step,
                    std::vector<std::string>& thrown);
