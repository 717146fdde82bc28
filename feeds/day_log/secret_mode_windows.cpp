#include "feeds/day_log/secret_file.h"

bool OthersMayRead(const std::filesystem::path&) {
  return false;
}
