// VenueRun: a venue that serves on a thread of its own, and the trades of a journal as lines that are compared with it.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

#include "demo_venue/venue_server.h"
#include "feeds/common/feed_report.h"
#include "tests/feeds/venue/venue_files.h"

inline constexpr std::chrono::seconds kBound{30};

// Waits for a condition; false if it does not come.
bool WaitFor(const std::function<bool()>& condition);

struct VenuePlan {
  std::uint64_t Trades = 0;  // made up
  std::string Faults;
  VenueSettings Settings;
  VenuePace Pace;
};

class VenueRun {
 public:
  VenueRun(const std::filesystem::path& folder, const VenuePlan& plan);
  ~VenueRun();
  VenueRun(const VenueRun&) = delete;
  VenueRun& operator=(const VenueRun&) = delete;

  int Port() const { return Server.Port(); }
  std::uint64_t TradesSent() const { return Server.TradesSent(); }
  // The client has the whole day and logs out; false if that does not come.
  bool WaitForEnd() { return Served.wait_for(kBound) == std::future_status::ready; }
  // Each trade as it must come out in the end, by its number.
  std::map<std::uint32_t, std::string> ExpectedTrades() const;
  // What the venue told, for the message of a failure.
  std::string Notices() const;

 private:
  std::ostringstream Errors;
  BadLineReport BadLines{Errors};
  VenueDay Day;
  std::vector<VenueFault> Faults;
  VenueSession Session;
  VenueServer Server;
  mutable std::mutex Lock;
  std::string Told;
  std::future<void> Served;
};

using TradeLines = std::map<std::uint32_t, std::string>;  // by number

// Both lines of the first trade that differs; empty if all are the same.
std::string FirstDifference(const TradeLines& kept, const TradeLines& expected);

// The trades of all journals of the folder.
struct JournalTrades {
  TradeLines Last;  // as they are in the end
  std::uint64_t Messages = 0;
  std::uint64_t Reports = 0;  // trades, corrections and busts
  std::map<AlarmKind, int> Alarms;
  std::string AlarmTexts;
};
JournalTrades ReadJournals(const std::filesystem::path& folder);
