#include "feeds/day_log/secret_file.h"

#include <fstream>

#include "feeds/common/feed_report.h"

namespace {
constexpr std::size_t kLongestSecret = 4096;
}

void CheckSecretFile(const std::filesystem::path& file) {
  if (!std::ifstream(file, std::ios::binary)) throw FeedError("the secret file " + file.string() + " cannot be read");
  if (OthersMayRead(file))
    throw FeedError("the secret file " + file.string() +
                    " may be read by others than its owner: take that right away, as chmod 600 does");
}

std::string ReadSecretLine(const std::filesystem::path& file) {
  CheckSecretFile(file);
  std::string line(kLongestSecret + 1, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(line.data(), static_cast<std::streamsize>(line.size()));
  line.resize(static_cast<std::size_t>(stream.gcount()));
  const bool whole = line.find('\n') != std::string::npos || line.size() <= kLongestSecret;
  line.resize(std::min(line.find_first_of("\r\n"), line.size()));
  if (line.empty() || !whole)
    throw FeedError("the secret file " + file.string() + " holds no secret of at most 4,096 bytes in its first line");
  return line;
}
