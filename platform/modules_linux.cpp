#include "platform/modules.h"

#include <dlfcn.h>

#include <system_error>

void* MainProgramSymbol(const char* name) noexcept {
  void* program = dlopen(nullptr, RTLD_LAZY);
  return program == nullptr ? nullptr : dlsym(program, name);
}

ModuleHandle ModuleOfAddress(const void* address) noexcept {
  Dl_info info{};
  return dladdr(address, &info) == 0 ? nullptr : info.dli_fbase;
}

ModuleHandle LoadModule(const std::filesystem::path& path, std::string& error) {
  // Local: the module's OnMessage must not hide the main program's function of that name.
  void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    const char* reason = dlerror();
    error = reason == nullptr ? "unknown reason" : reason;
  }
  return module;
}

void UnloadModule(ModuleHandle module) noexcept {
  dlclose(module);
}
void* ModuleSymbol(ModuleHandle module, const char* name) noexcept {
  return dlsym(module, name);
}

std::filesystem::path ProgramFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

const char* ModuleSuffix() noexcept {
  return ".so";
}

std::vector<std::filesystem::path> CommandLineArguments(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

unsigned RegisterNamedMessage(const char* /*name*/) noexcept {
  return 0;
}

bool CloseOwnConsole() noexcept {
  return false;
}
