// PlayClock: the time that playing a day goes by, apart from the machine's so that a test can turn it. One thread.
#pragma once

#include <chrono>
#include <thread>

class PlayClock {
 public:
  using Time = std::chrono::steady_clock::time_point;

  virtual ~PlayClock() = default;
  virtual Time Now() = 0;
  virtual void SleepUntil(Time time) = 0;
};

class CWallClock : public PlayClock {
 public:
  Time Now() override { return std::chrono::steady_clock::now(); }
  void SleepUntil(Time time) override { std::this_thread::sleep_until(time); }
};
