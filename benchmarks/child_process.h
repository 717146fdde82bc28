// Programs beside a benchmark: a process that ends with its object, and what it writes for others.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

class ChildProcess {
 public:
  // Its output is dropped.
  explicit ChildProcess(const std::vector<std::string>& words) : Id(fork()) {
    if (Id != 0) return;
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    if (std::freopen("/dev/null", "w", stdout) != nullptr && std::freopen("/dev/null", "w", stderr) != nullptr)
      execv(arguments.front(), arguments.data());
    _exit(127);
  }
  ~ChildProcess() {
    if (Id <= 0) return;
    kill(Id, SIGTERM);
    waitpid(Id, nullptr, 0);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t Number() const noexcept { return Id; }

 private:
  pid_t Id;
};

// The first line of a file that another process writes; empty after half a minute.
inline std::string WaitForLine(const std::filesystem::path& file) {
  std::string line;
  for (int tries = 0; tries < 3000 && line.empty(); ++tries) {
    std::ifstream stream(file);
    if (!std::getline(stream, line)) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return line;
}
