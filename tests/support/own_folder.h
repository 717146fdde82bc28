// OwnFolder: a test with a folder of its own, which is removed with it.
#pragma once

#include <gtest/gtest.h>

#include "tests/support/files.h"

class OwnFolder : public testing::Test {
 protected:
  OwnFolder() {
    const std::string suite = testing::UnitTest::GetInstance()->current_test_info()->test_suite_name();
    for (int i = 0; !std::filesystem::create_directory(Folder); ++i)
      Folder = std::filesystem::temp_directory_path() / ("tradebook_" + suite + "_" + std::to_string(i));
  }
  ~OwnFolder() override {
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
  }

  std::filesystem::path Folder = std::filesystem::temp_directory_path();
};
