// What the functions for pictures and for the clipboard share.
// Layer 12: capi.
#pragma once

#include "NrvControl.h"

struct CRenderOptions;

// The options that a record of a host asks for, null for the default ones. They come with their own defaults. The
// numbers are checked by the renderer.
NrvResult NrvOptionsOf(CNrvControl& control, const NrvPicture* picture, CRenderOptions& options);
