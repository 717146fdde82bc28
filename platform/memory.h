// Memory: large zeroed blocks for data that grows all day, room before it is needed, and what the process holds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

inline constexpr std::size_t kPageBlockSize = std::size_t{2} << 20;  // one large page, if the system has them

// One block of kPageBlockSize zeroed bytes, aligned to its size if the system can. Null without memory.
void* AllocatePageBlock() noexcept;
void FreePageBlock(void* block) noexcept;

// Room for that many more elements: adding them does not throw, so a change that must happen as a whole reserves all
// its room first. At least doubles, so that a call before each element is O(1) on average. On std::bad_alloc nothing
// has changed.
template <typename Element>
void MakeRoom(std::vector<Element>& elements, std::size_t count) {
  if (elements.capacity() - elements.size() >= count) return;
  elements.reserve(std::max(elements.size() + count, 2 * elements.capacity()));
}

// What the process holds at this moment; compare two moments to find a leak. HeapBytes is less exact while other
// threads allocate.
struct ProcessUsage {
  std::uint64_t HeapBytes = 0;  // in blocks that are not freed
  std::uint64_t Handles = 0;    // open files and, on Windows, USER and GDI objects
};

// Takes milliseconds on Windows, where it walks the heap.
ProcessUsage MeasureProcess();
