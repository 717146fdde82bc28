#include "feeds/day_log/secret_file.h"

bool OthersMayRead(const std::filesystem::path& file) {
  std::error_code failure;
  const auto mode = std::filesystem::status(file, failure).permissions();
  return failure || (mode & (std::filesystem::perms::group_all | std::filesystem::perms::others_all)) !=
                        std::filesystem::perms::none;
}
