#include "tests/host_link/failing_new.h"

#include <new>

namespace {
int allocationsLeft = 0;  // up to and with the one that fails; 0: none fails
}

FailingNew::FailingNew(int count) noexcept {
  allocationsLeft = count;
}
FailingNew::~FailingNew() {
  allocationsLeft = 0;
}

// Replaces the library's own in the whole program. It hands on to the throwing one, which a sanitizer may have
// replaced.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  if (allocationsLeft > 0 && --allocationsLeft == 0) return nullptr;
  try {
    return ::operator new[](size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
