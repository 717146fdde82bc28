// Large blocks of zeroed memory straight from the system, for data that grows all day. Any thread may call.
#pragma once

#include <cstddef>

inline constexpr std::size_t kPageBlockSize = std::size_t{2}
                                              << 20;  // two megabytes: one large page where there are any

// One block of kPageBlockSize zeroed bytes, aligned to its size where the system can; null when memory is out.
void* AllocatePageBlock() noexcept;
void FreePageBlock(void* block) noexcept;
