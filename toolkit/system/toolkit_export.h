// What the toolkit's library shows to the terminal and to the module.
#pragma once

#include "platform/modules.h"

#ifdef TOOLKIT_BUILD
#define TOOLKIT_EXPORT SHARED_LIBRARY_EXPORT
#else
#define TOOLKIT_EXPORT SHARED_LIBRARY_IMPORT
#endif
