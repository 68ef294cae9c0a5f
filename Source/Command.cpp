// CCommand: the root of the command engine's classes. Layer: command operations.

#include "Command.h"

IMPLEMENT_DYNAMIC(CCommand, CObject)
