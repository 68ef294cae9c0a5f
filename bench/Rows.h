// What is measured; each function appends its rows. Layer 15: bench.
#pragma once

#include "Report.h"

#include <vector>

namespace bench {

// Repaints of a view's window: the whole drawing, and a hundredth of it. False when the library and the bare calls do
// not paint the same pixels.
bool PaintRows(std::vector<Row>& rows, int objects);
// Loading, saving, and the first extents of texts.
void DataRows(std::vector<Row>& rows, int objects);
// What a mouse move and a click cost.
void EditRows(std::vector<Row>& rows, int objects);
// From the start of the demo to its empty drawing on the screen; the programs are beside this one.
void StartRows(std::vector<Row>& rows);

} // namespace bench
