#include <algorithm>

#include "fuzz/fuzz_functions.h"
#include "tests/trade_data/cache_player.h"

int FuzzMessageSequence(const std::uint8_t* data, std::size_t size) {
  static const std::pair<std::string, BookSettings> kBooks[] = {
      {"A", {}}, {"B", {true, 1}}, {"C", {true, 2}}, {"D", {false, 1}}};
  if (size == 0) return 0;
  std::map<std::string, BookSettings> books;
  for (int i = 0; i < 4; ++i)
    if ((data[0] >> i & 1) != 0) books.insert(kBooks[i]);
  CachePlayer player(books);
  const std::string_view messages(reinterpret_cast<const char*>(data) + 1, std::min<std::size_t>(size - 1, 65535));
  const std::string difference = player.Play(messages);
  RequireProperty(difference.empty(), difference.c_str());
  return 0;
}
