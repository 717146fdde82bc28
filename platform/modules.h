// Modules of the process: symbols of the main program, loading and unloading a module by path, the module that an
// address belongs to. Any thread may call.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

using ModuleHandle = void*;

// The address of a function that the process's main program exports under that name; null when it exports none.
void* MainProgramSymbol(const char* name) noexcept;

// The module whose code holds the address: a handle to compare and to keep, which does not hold the module loaded.
ModuleHandle ModuleOfAddress(const void* address) noexcept;

// Loads the module; null on failure, with the system's reason in error.
ModuleHandle LoadModule(const std::filesystem::path& path, std::string& error);
void UnloadModule(ModuleHandle module) noexcept;
void* ModuleSymbol(ModuleHandle module, const char* name) noexcept;

// The folder of the running program, and the ending of a module's file name (".so" or ".dll").
std::filesystem::path ProgramFolder();
const char* ModuleSuffix() noexcept;

// The command line behind the program's name as paths, so that file names come through in full on both platforms.
std::vector<std::filesystem::path> CommandLineArguments(int argc, char** argv);

// The mark of a function that stands in a binary's export table. The only names so marked are the module's three entry
// points and the terminal's functions; everything else stays hidden.
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

// Window messages that programs agree on by name. Any thread may call.

// The number of the window message of that name; 0 on a platform without window messages.
unsigned RegisterNamedMessage(const char* name) noexcept;
