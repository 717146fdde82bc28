// The mark of a function that stands in a binary's export table. The only names so marked are the module's three
// entry points and the terminal's functions; everything else stays hidden.
#pragma once

#ifdef _WIN32
#define TRADEBOOK_EXPORT extern "C" __declspec(dllexport)
#else
#define TRADEBOOK_EXPORT extern "C" __attribute__((visibility("default")))
#endif
