// Gdiplus::Color and Gdiplus::PointF as plain value types; nothing of GDI+ is started or called.
// Layer 3: base.
#pragma once

#include <afxwin.h>
#include <objidl.h>
#include <gdiplus.h>
