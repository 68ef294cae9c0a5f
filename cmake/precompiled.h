// What nearly every source includes, compiled once for each kind of target: reading it takes four times as long as the
// rest of a usual source. A source still includes what it uses; the check of the headers compiles without this.
#pragma once

#include <afxwin.h>

#include <afxcmn.h>
#include <afxdisp.h>
#include <afxdlgs.h>
#include <afxext.h>
#include <afxtempl.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>
