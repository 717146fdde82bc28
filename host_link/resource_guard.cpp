#include "host_link/resource_guard.h"

namespace {

ModuleHandle selectedResources = nullptr;

// The module that this code stands in.
ModuleHandle OwnModule() noexcept {
  static const ModuleHandle module = ModuleOfAddress(&selectedResources);
  return module;
}

}  // namespace

ModuleHandle SelectedResources() noexcept {
  return selectedResources;
}

CQORDLLResource::CQORDLLResource() noexcept : SavedHandle(selectedResources) {
  selectedResources = OwnModule();
}
CQORDLLResource::~CQORDLLResource() {
  selectedResources = SavedHandle;
}
