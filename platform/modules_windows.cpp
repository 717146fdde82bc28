#include "platform/modules.h"

#include <windows.h>

// shellapi.h needs the types of windows.h before it.
#include <shellapi.h>

#include <system_error>

namespace {
void* AsPointer(FARPROC function) {
  return reinterpret_cast<void*>(function);
}
HMODULE AsModule(ModuleHandle module) {
  return static_cast<HMODULE>(module);
}
}  // namespace

void* MainProgramSymbol(const char* name) noexcept {
  return AsPointer(GetProcAddress(GetModuleHandleW(nullptr), name));
}

ModuleHandle ModuleOfAddress(const void* address) noexcept {
  HMODULE module = nullptr;
  const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  return GetModuleHandleExW(flags, static_cast<const wchar_t*>(address), &module) != 0 ? module : nullptr;
}

ModuleHandle LoadModule(const std::filesystem::path& path, std::string& error) {
  const HMODULE module = LoadLibraryW(path.c_str());
  if (module == nullptr) error = std::system_category().message(static_cast<int>(GetLastError()));
  return module;
}

void UnloadModule(ModuleHandle module) noexcept {
  FreeLibrary(AsModule(module));
}
void* ModuleSymbol(ModuleHandle module, const char* name) noexcept {
  return AsPointer(GetProcAddress(AsModule(module), name));
}

std::filesystem::path ProgramFolder() {
  std::wstring name(32768, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return std::filesystem::path(name).parent_path();
}

const char* ModuleSuffix() noexcept {
  return ".dll";
}

std::vector<std::filesystem::path> CommandLineArguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (words == nullptr) return {};
  std::vector<std::filesystem::path> arguments(words + (count > 0 ? 1 : 0), words + count);
  LocalFree(words);
  return arguments;
}

unsigned RegisterNamedMessage(const char* name) noexcept {
  return RegisterWindowMessageA(name);
}

bool CloseOwnConsole() noexcept {
  DWORD processes[2] = {};
  if (GetConsoleProcessList(processes, 2) != 1) return false;
  return FreeConsole() != 0;
}
