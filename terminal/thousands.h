// Whole numbers with a comma at the thousands, for what the user reads. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>

inline std::string WithThousands(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t place = text.size(); place > 3; place -= 3) text.insert(place - 3, 1, ',');
  return text;
}
