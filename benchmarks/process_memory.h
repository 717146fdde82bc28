// The memory that this process holds now.
#pragma once

#include <unistd.h>

#include <fstream>

// Resident bytes, as the system counts them in pages.
inline double ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  double total = 0;
  double resident = 0;
  statm >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}
