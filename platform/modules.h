// The process and its modules: loading, symbols, export marks, command line, console, and window messages by name.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

using ModuleHandle = void*;

// The function that the main program exports under that name; null without one.
void* MainProgramSymbol(const char* name) noexcept;

// The module that the address belongs to. The handle does not keep the module loaded.
ModuleHandle ModuleOfAddress(const void* address) noexcept;

// Null on failure, with the system's reason in error.
ModuleHandle LoadModule(const std::filesystem::path& path, std::string& error);
void UnloadModule(ModuleHandle module) noexcept;
void* ModuleSymbol(ModuleHandle module, const char* name) noexcept;

// The folder of the running program, and the ending of a module's file name (".so" or ".dll").
std::filesystem::path ProgramFolder();
const char* ModuleSuffix() noexcept;

// The command line without the program's name, as paths: no character of a file name is lost on either platform.
std::vector<std::filesystem::path> CommandLineArguments(int argc, char** argv);

// Closes the console that Windows opens for a program started from the desktop; true if there was one, and output is
// not visible from then on. Any other console stays. Main thread, before anything is written.
bool CloseOwnConsole() noexcept;

// Marks an exported function: the module's three entry points and the terminal's functions. All else is hidden.
#ifdef _WIN32
#define TRADEBOOK_EXPORT extern "C" __declspec(dllexport)
#else
#define TRADEBOOK_EXPORT extern "C" __attribute__((visibility("default")))
#endif

// Marks a class or function that one of our shared libraries exports to our other binaries.
#ifdef _WIN32
#define SHARED_LIBRARY_EXPORT __declspec(dllexport)
#define SHARED_LIBRARY_IMPORT __declspec(dllimport)
#else
#define SHARED_LIBRARY_EXPORT __attribute__((visibility("default")))
#define SHARED_LIBRARY_IMPORT __attribute__((visibility("default")))
#endif

// The number of the window message that programs agree on by name; 0 on a platform without window messages.
unsigned RegisterNamedMessage(const char* name) noexcept;
