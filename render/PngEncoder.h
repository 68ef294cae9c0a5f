// PngEncoder: pixels to a PNG file, by the system's own imaging component.
// Layer 8: render.
#pragma once

#include <afxwin.h>

#include <afxcoll.h>

namespace PngEncoder {

enum Depth { OneBit, Plain, WithAlpha };

// The bytes of a PNG file at 96 dots per inch. `pixels` are 0xAARRGGBB, rows from the top and from the left, width *
// height of them. OneBit makes a pixel white when its green is 128 or more. False when the system can't.
bool Encode(const DWORD* pixels, int width, int height, Depth depth, CByteArray& file);

} // namespace PngEncoder
