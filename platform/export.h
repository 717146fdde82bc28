// The mark of a function that stands in a binary's export table. The only names so marked are the module's three
// entry points and the terminal's functions; everything else stays hidden.
#pragma once

#ifdef _WIN32
#define TRADEBOOK_EXPORT extern "C" __declspec(dllexport)
#else
#define TRADEBOOK_EXPORT extern "C" __attribute__((visibility("default")))
#endif

// The mark of a class or function that one of our shared libraries shows to our other binaries.
#ifdef _WIN32
#define SHARED_LIBRARY_EXPORT __declspec(dllexport)
#define SHARED_LIBRARY_IMPORT __declspec(dllimport)
#else
#define SHARED_LIBRARY_EXPORT __attribute__((visibility("default")))
#define SHARED_LIBRARY_IMPORT __attribute__((visibility("default")))
#endif
