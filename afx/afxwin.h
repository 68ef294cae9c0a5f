// The window half of the layer in one include: windows, messages, device contexts, dialogs, documents, the application.
// Layer 1: afx.
#pragma once

#include "afx.h"
#include "afxcoll.h"
#include "atltypes.h"

#include "afxres.h"

#include "afxstat_.h"
#include "afxmsg_.h"
#include "afxgdi_.h"
#include "afxdcwnd_.h"
#include "afxtarg_.h"
#include "afxwnd_.h"
#include "afxdlg_.h"
#include "afxctl_.h"
#include "afxapp_.h"
#include "afxdoc_.h"
