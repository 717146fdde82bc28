// RunningProgram: a program beside the test, which dies with it.
#pragma once

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/modules.h"

// Waits for a condition, for a minute at most.
inline bool ComesTrue(const std::function<bool()>& holds) {
  for (const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1); !holds();) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

class RunningProgram {
 public:
  // A program of the build with its words; both outputs go into the file.
  RunningProgram(const std::string& name, std::vector<std::string> words, const std::filesystem::path& output) {
    words.insert(words.begin(), (ProgramFolder() / ".." / "bin" / name).string());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    Pid = fork();
    if (Pid != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    for (const int handle : {1, 2}) dup2(file, handle);
    execv(pointers[0], pointers.data());
    _exit(127);
  }
  ~RunningProgram() { Kill(); }
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  void Signal(int signal) const { kill(Pid, signal); }
  // The exit code; -1 for an end by a signal or none within a minute.
  int Wait() {
    int status = 0;
    if (!ComesTrue([&] { return waitpid(Pid, &status, WNOHANG) == Pid; })) return -1;
    Pid = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void Kill() {
    if (Pid == 0) return;
    Signal(SIGKILL);
    waitpid(Pid, nullptr, 0);
    Pid = 0;
  }

 private:
  pid_t Pid = 0;
};
