// The memory of the benchmark process and its temporary folder.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// Resident bytes, counted in pages.
inline double ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  double total = 0;
  double resident = 0;
  statm >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// A folder for one group of benchmarks, removed at exit.
class BenchFolder {
 public:
  explicit BenchFolder(const std::string& name)
      : Path(std::filesystem::temp_directory_path() / ("tradebook_" + name + std::to_string(getpid()))) {
    std::filesystem::create_directories(Path);
  }
  ~BenchFolder() { std::filesystem::remove_all(Path); }
  const std::filesystem::path Path;
};

inline std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}
