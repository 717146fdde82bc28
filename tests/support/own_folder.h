// OwnFolder: a test with a folder of its own, which is removed with it. ProcessFolder: the same for a whole process.
#pragma once

#include <gtest/gtest.h>

#include "tests/support/files.h"

// A new folder whose name no other process has: this one and the first free number.
inline std::filesystem::path MakeFolder(const std::u8string& name) {
  std::filesystem::path folder;
  for (int i = 0; folder.empty() || !std::filesystem::create_directory(folder); ++i)
    (folder = std::filesystem::temp_directory_path() / name) += std::to_string(i);
  return folder;
}

struct ProcessFolder {
  explicit ProcessFolder(const std::u8string& name) : Path(MakeFolder(name)) {}
  ~ProcessFolder() {
    std::error_code ignored;
    std::filesystem::current_path(std::filesystem::temp_directory_path(), ignored);
    std::filesystem::remove_all(Path, ignored);
  }
  const std::filesystem::path Path;
};

class OwnFolder : public testing::Test {
 protected:
  ~OwnFolder() override {
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
  }

  const std::filesystem::path Folder = MakeFolder(u8"tradebook test ");
};
