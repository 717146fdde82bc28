// Memory ahead of need: what has to happen whole or not at all asks for its room first and cannot fail after that.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

// Room for that many more elements, so that adding them throws nothing. Doubles at least, so that asking before each
// element stays linear over all of them. Nothing changes when memory runs out.
template <typename Element>
void MakeRoom(std::vector<Element>& elements, std::size_t count) {
  if (elements.capacity() - elements.size() >= count) return;
  elements.reserve(std::max(elements.size() + count, 2 * elements.capacity()));
}
