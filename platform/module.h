// Modules of the process: symbols of the main program, loading and unloading a module by path, the module that an
// address belongs to. Not a plug-in interface: that is host_link. Any thread may call.
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
