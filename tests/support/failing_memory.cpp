#include "tests/support/failing_memory.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/memory.h"

namespace {

int allocationsLeft = 0;  // up to the one that fails; 0 for none
bool failed = false;

void* Allocate(std::size_t size) noexcept {
  if (allocationsLeft > 0 && --allocationsLeft == 0) {
    failed = true;
    return nullptr;
  }
  return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

void FailAllocation(int count) noexcept {
  allocationsLeft = count;
  failed = false;
}
bool StopFailing() noexcept {
  allocationsLeft = 0;
  return failed;
}

// Replace the functions of the library in the whole program.
void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}

// Replace the functions of the platform.
void* AllocatePageBlock() noexcept {
  void* block = Allocate(kPageBlockSize);
  return block == nullptr ? nullptr : std::memset(block, 0, kPageBlockSize);
}
void FreePageBlock(void* block) noexcept {
  std::free(block);
}
