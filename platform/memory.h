// Memory from the system: large zeroed blocks for data that grows all day, and what the process holds.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr std::size_t kPageBlockSize = std::size_t{2} << 20;  // one large page, if the system has them

// One block of kPageBlockSize zeroed bytes, aligned to its size if the system can. Null without memory.
void* AllocatePageBlock() noexcept;
void FreePageBlock(void* block) noexcept;

// What the process holds at this moment; compare two moments to find a leak. HeapBytes is less exact while other
// threads allocate.
struct ProcessUsage {
  std::uint64_t HeapBytes = 0;  // in blocks that are not freed
  std::uint64_t Handles = 0;    // open files and, on Windows, USER and GDI objects
};

// Takes milliseconds on Windows, where it walks the heap.
ProcessUsage MeasureProcess();
