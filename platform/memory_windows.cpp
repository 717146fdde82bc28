#include "platform/memory.h"

#include <windows.h>

#include <vector>

void* AllocatePageBlock() noexcept {
  return VirtualAlloc(nullptr, kPageBlockSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreePageBlock(void* block) noexcept {
  VirtualFree(block, 0, MEM_RELEASE);
}

namespace {

// Blocks of one heap; 0 if it cannot be walked.
std::uint64_t BytesIn(HANDLE heap) {
  std::uint64_t bytes = 0;
  if (HeapLock(heap) == 0) return 0;
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry) != 0)
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  HeapUnlock(heap);
  return bytes;
}

std::uint64_t HeapBytes() {
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  if (count < heaps.size()) heaps.resize(count);
  std::uint64_t bytes = 0;
  for (const HANDLE heap : heaps) bytes += BytesIn(heap);
  return bytes;
}

}  // namespace

ProcessUsage MeasureProcess() {
  const HANDLE process = GetCurrentProcess();
  DWORD handles = 0;
  GetProcessHandleCount(process, &handles);
  const std::uint64_t drawing = GetGuiResources(process, GR_GDIOBJECTS) + GetGuiResources(process, GR_USEROBJECTS);
  return {.HeapBytes = HeapBytes(), .Handles = handles + drawing};
}
