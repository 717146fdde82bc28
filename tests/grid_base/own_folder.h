// A folder of its own for each test, gone with it, and whole files as bytes.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class OwnFolder : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; !std::filesystem::create_directory(Folder); ++i)
      Folder = std::filesystem::temp_directory_path() / ("tradebook_grid_base_" + std::to_string(i));
  }
  void TearDown() override { std::filesystem::remove_all(Folder); }

  std::filesystem::path Folder = std::filesystem::temp_directory_path();
};

inline void WriteBytes(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}
inline std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}
