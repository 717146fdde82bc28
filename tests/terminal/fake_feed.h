// A feed whose test says what comes, and when.
#pragma once

#include <memory>
#include <utility>

#include "terminal/day/feed_opener.h"
#include "tests/terminal/test_files.h"

// What a test sets; feeds look at it whenever they are asked.
struct FeedPlan {
  std::vector<std::string> Parts;  // each is what one call of Take gives
  std::size_t CaughtUpAfter = 0;   // so many parts
  FeedState State{FeedPhase::Live, "reading", 0};
  std::vector<Alarm> Alarms;
  int Made = 0;   // feeds so far
  int Ended = 0;  // as many, once all are gone
};

class FakeFeed : public Feed {
 public:
  explicit FakeFeed(FeedPlan& plan) : Plan(plan) { ++Plan.Made; }
  ~FakeFeed() override { ++Plan.Ended; }

  bool Take(std::vector<std::uint8_t>& messages) override {
    if (Given >= Plan.Parts.size()) return false;
    const std::string& part = Plan.Parts[Given++];
    messages.insert(messages.end(), part.begin(), part.end());
    return true;
  }
  bool IsCaughtUp() const override { return Given >= Plan.CaughtUpAfter; }
  FeedState State() const override { return Plan.State; }
  std::vector<Alarm> TakeAlarms() override { return std::exchange(Plan.Alarms, {}); }

 private:
  FeedPlan& Plan;
  std::size_t Given = 0;
};

inline FeedOpener OpenFake(FeedPlan& plan) {
  return [&plan](const DaySpec& day, const std::filesystem::path& /*work*/) -> FeedMaker {
    if (day.Address.find("bad") != std::string::npos) throw TerminalError(ExitCode::File, "there is no such log");
    return [&plan] { return std::make_unique<FakeFeed>(plan); };
  };
}

// A trade of IBM with that number.
inline std::string FeedTrade(std::uint32_t number, std::uint32_t quantity = 10, double price = 5) {
  return WireMessage(9101, WireU32(20008, number) + WireText(55101, std::to_string(number)) + WireText(55010, "ARCA") +
                               WireText(55104, "IBM") +
                               WireText(55118, "20131007-00:00:0" + std::to_string(number % 10)) +
                               WireU32(20014, quantity) + WireDouble(40002, price));
}
