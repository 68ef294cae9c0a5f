#include "Command.h"

IMPLEMENT_DYNAMIC(CCommand, CObject)
