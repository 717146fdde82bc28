// Memory before it is needed: a change that must happen as a whole reserves its room first and cannot fail afterwards.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

// Room for that many more elements: adding them does not throw. At least doubles, so that a call before each element is
// O(1) on average. On std::bad_alloc nothing has changed.
template <typename Element>
void MakeRoom(std::vector<Element>& elements, std::size_t count) {
  if (elements.capacity() - elements.size() >= count) return;
  elements.reserve(std::max(elements.size() + count, 2 * elements.capacity()));
}
