#include "platform/memory.h"

#include <dlfcn.h>
#include <malloc.h>
#include <sys/mman.h>

#include <cstdint>
#include <filesystem>
#include <iterator>
#include <system_error>

// Maps twice the size and unmaps the ends, so that the block can be one large page: a million trades then cost hundreds
// of page faults instead of a hundred thousand.
void* AllocatePageBlock() noexcept {
  void* mapped = mmap(nullptr, 2 * kPageBlockSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  char* start = static_cast<char*>(mapped);
  const std::size_t head = (kPageBlockSize - reinterpret_cast<std::uintptr_t>(start) % kPageBlockSize) % kPageBlockSize;
  char* block = start + head;
  if (head != 0) munmap(start, head);
  munmap(block + kPageBlockSize, kPageBlockSize - head);
  madvise(block, kPageBlockSize, MADV_HUGEPAGE);
  return block;
}

void FreePageBlock(void* block) noexcept {
  munmap(block, kPageBlockSize);
}

namespace {

// The address sanitizer replaces the heap of the C library, which then counts nothing.
std::uint64_t HeapBytes() {
  using CountFunction = std::size_t (*)();
  void* sanitizer = dlsym(RTLD_DEFAULT, "__sanitizer_get_current_allocated_bytes");
  if (sanitizer != nullptr) return reinterpret_cast<CountFunction>(sanitizer)();
  const struct mallinfo2 counts = mallinfo2();
  return counts.uordblks + counts.hblkhd;
}

// One of them is the folder itself, open while it is read.
std::uint64_t OpenHandles() {
  std::error_code ignored;
  const auto count = std::distance(std::filesystem::directory_iterator("/proc/self/fd", ignored), {});
  return count > 0 ? static_cast<std::uint64_t>(count) - 1 : 0;
}

}  // namespace

ProcessUsage MeasureProcess() {
  return {.HeapBytes = HeapBytes(), .Handles = OpenHandles()};
}
