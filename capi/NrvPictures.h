// What the functions for pictures and for the clipboard share.
// Layer 12: capi.
#pragma once

#include "NrvControl.h"

struct CRenderOptions;

// Converts a host's record; null means the default options. Coordinates and sizes are checked by the renderer.
NrvResult NrvOptionsOf(CNrvControl& control, const NrvPicture* picture, CRenderOptions& options);
