// For the one source of an extension module that holds its entry point: AfxInitExtensionModule and CDynLinkLibrary.
// Layer: afx.
#pragma once

#include "afxext.h"
