// Compiled so that the inline operations of the public headers are in the DLL's table as well: a host that takes
// their address, or looks them up by name, finds them. Layer 11: views and dialogs.

// Every inline function of every header is kept, so those that call into system libraries stay outside: of GDI+ only
// the plain values are wanted.
#define NO_COMMCTRL_DA
#define __GDIPLUS_BASE_H
#define __GDIPLUS_HEADERS_H
#define __GDIPLUS_IMAGEATTRIBUTES_H
#define __GDIPLUS_MATRIX_H
#define __GDIPLUS_BRUSH_H
#define __GDIPLUS_METAFILE_H
#define __GDIPLUS_PEN_H
#define __GDIPLUS_STRINGFORMAT_H
#define __GDIPLUS_PATH_H
#define __GDIPLUS_GRAPHICS_H
#define __GDIPLUS_LINECAPS_H
#define __GDIPLUS_IMPL_H
#define __GDIPLUS_IMAGECODEC_H
#define __GDIPLUS_EFFECTS_H

#include "Arc.h"
#include "CenterPoint.h"
#include "Circle.h"
#include "CombRect.h"
#include "CommandOperationManager.h"
#include "DrawCommon.h"
#include "DrawingHistory.h"
#include "Line.h"
#include "OperationCreateObjAb.h"
#include "OperationPlaceObjects.h"
#include "PLine.h"
#include "Text.h"
#include "TextFormator.h"
#include "TextParm.h"
#include "VecotrVeiwParmOpr.h"
#include "VectorLabel.h"
#include "VectorViewParm.h"

// Called by a destructor among the kept functions; no code here makes such a path.
void Gdiplus::PathData::FreeArrays() {}
