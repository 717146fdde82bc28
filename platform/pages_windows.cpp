#include "platform/pages.h"

#include <windows.h>

void* AllocatePageBlock() noexcept {
  return VirtualAlloc(nullptr, kPageBlockSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreePageBlock(void* block) noexcept {
  VirtualFree(block, 0, MEM_RELEASE);
}
