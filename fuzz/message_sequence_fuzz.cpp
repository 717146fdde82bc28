#include <algorithm>

#include "fuzz/fuzz_functions.h"
#include "tests/trade_data/cache_player.h"

namespace {

std::map<std::string, BookSettings> BooksOf(unsigned choice) {
  std::map<std::string, BookSettings> books;
  if (choice & 1) books["A"] = {};
  if (choice & 2) books["B"] = {true, 1};
  if (choice & 4) books["C"] = {true, 2};
  if (choice & 8) books["D"] = {false, 1};
  return books;
}

}  // namespace

int FuzzMessageSequence(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  CachePlayer player(BooksOf(data[0]));
  const std::string_view messages(reinterpret_cast<const char*>(data) + 1, std::min<std::size_t>(size - 1, 65535));
  const std::string difference = player.Play(messages);
  RequireProperty(difference.empty(), difference.c_str());
  return 0;
}
