// CQORDLLResource: for as long as it lives, dialogs, menus and windows take their resources from the plug-in's module;
// after it from the one selected before. Every entry that can reach a window holds one for the call.
// The selection is the process's and belongs to the terminal's calling thread.
#pragma once

#include "platform/module.h"

// The module whose resources are selected now; null stands for the terminal's own.
ModuleHandle SelectedResources() noexcept;

class CQORDLLResource {
 public:
  CQORDLLResource() noexcept;
  virtual ~CQORDLLResource();
  CQORDLLResource(const CQORDLLResource&) = delete;
  CQORDLLResource& operator=(const CQORDLLResource&) = delete;

 private:
  ModuleHandle SavedHandle;
};
static_assert(sizeof(CQORDLLResource) == 2 * sizeof(void*));
