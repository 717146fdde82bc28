// Session: an engine with a store and a listener in memory, against a FixPeer.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <vector>

#include "feeds/common/feed_report.h"
#include "feeds/engine/fix_engine.h"
#include "tests/feeds/engine/fix_peer.h"
#include "tests/support/own_folder.h"

using Texts = std::vector<std::string>;

// A store and a listener in memory.
class Desk : public FixStore, public FixEngineEvents {
 public:
  std::uint32_t NextSender() override { return Locked(Sender); }
  std::uint32_t NextTarget() override { return Locked(Target); }
  std::int64_t Created() override { return std::time(nullptr); }
  bool Keep(std::uint32_t nextSender, std::uint32_t nextTarget, const std::string* text, bool refused) override {
    const std::lock_guard guard(Mutex);
    if (text && FailingKeeps > 0) return --FailingKeeps, false;
    Sender = nextSender;
    Target = nextTarget;
    if (text) (refused ? Refused : Kept).push_back(*text);
    Changed.notify_all();
    return true;
  }
  bool Reset() override {
    const std::lock_guard guard(Mutex);
    Sender = Target = 1;
    ++Resets;
    return true;
  }
  void OnState(bool loggedOn, const std::string& text) override {
    const std::lock_guard guard(Mutex);
    IsLoggedOn = loggedOn;
    Told.push_back(text);
    Changed.notify_all();
  }
  void OnEngineAlarm(int kind, const std::string& text) override {
    const std::lock_guard guard(Mutex);
    Told.push_back(std::string(NameOf(static_cast<AlarmKind>(kind))) + ": " + text);
    Changed.notify_all();
  }

  template <typename Condition>
  bool WaitFor(Condition condition) {
    std::unique_lock lock(Mutex);
    return Changed.wait_for(lock, std::chrono::seconds(30), condition);
  }
  // Waits for a text that was told with these words.
  bool IsTold(const std::string& words) {
    return WaitFor(
        [&] { return std::ranges::any_of(Told, [&](auto& text) { return text.find(words) != text.npos; }); });
  }

  std::mutex Mutex;
  std::condition_variable Changed;
  std::uint32_t Sender = 1, Target = 1;
  int FailingKeeps = 0, Resets = 0;
  bool IsLoggedOn = false;
  Texts Kept, Refused, Told;

 private:
  template <typename T>
  T Locked(const T& value) {
    const std::lock_guard guard(Mutex);
    return value;
  }
};

struct Session {
  explicit Session(FixPeer& peer, const std::string& beginString = "FIX.4.4") : Peer(peer) {
    Settings.BeginString = beginString;
    Settings.SenderCompID = "DESK";
    Settings.TargetCompID = "VENUE";
    Settings.Host = "127.0.0.1";
    Settings.Port = peer.Port();
    Settings.ReconnectSeconds = 1;
  }
  ~Session() { Peer.Close(); }  // else the engine waits for the answer to its logout
  void Start() {
    Engine = std::make_unique<FixEngine>(Settings, Venue, Venue);
    Engine->Start();
  }
  bool HasTarget(std::uint32_t number) {
    return Venue.WaitFor([&] { return Venue.Target == number; });
  }

  FixPeer& Peer;
  FixEngineSettings Settings;
  Desk Venue;
  std::unique_ptr<FixEngine> Engine;
};
