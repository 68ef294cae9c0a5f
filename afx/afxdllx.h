// For the one source of an extension module that holds its entry point: AfxInitExtensionModule and CDynLinkLibrary.
// Layer 1: afx.
#pragma once

#include "afxext.h"
