// Large blocks of zeroed memory straight from the system, for data that grows all day. Any thread may call.
#pragma once

#include <cstddef>
#include <cstdint>

inline constexpr std::size_t kPageBlockSize = std::size_t{2}
                                              << 20;  // two megabytes: one large page where there are any

// One block of kPageBlockSize zeroed bytes, aligned to its size where the system can; null when memory is out.
void* AllocatePageBlock() noexcept;
void FreePageBlock(void* block) noexcept;

// What the process holds at this moment: bytes of heap and open handles. For finding leaks by comparing two moments;
// not how much memory the system has given to the process, which does not fall when the process frees some. Any thread
// may call; other threads that allocate meanwhile make the figure of the heap vague.
struct ProcessUsage {
  std::uint64_t HeapBytes = 0;  // in blocks that are not freed
  std::uint64_t Handles = 0;  // files and what else the system counts for the process: on Windows objects of USER, GDI
};

// On Windows it walks the heap, which takes milliseconds.
ProcessUsage MeasureProcess();
