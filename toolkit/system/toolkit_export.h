// TOOLKIT_EXPORT marks what the toolkit's library exports to the terminal and the module.
#pragma once

#include "platform/modules.h"

#ifdef TOOLKIT_BUILD
#define TOOLKIT_EXPORT SHARED_LIBRARY_EXPORT
#else
#define TOOLKIT_EXPORT SHARED_LIBRARY_IMPORT
#endif
