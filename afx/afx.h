// The window-less half of the layer in one include: objects, text, exceptions, files, archives, geometry.
// Layer 1: afx.
#pragma once

#include "afxapi.h"
#include "afxobject.h"
#include "cstringt.h"
#include "afxexcept.h"
#include "atltime.h"
#include "atltypes.h"
#include "afxfile.h"
#include "afxarchive.h"
#include "afxdump_.h"
