// What the terminal's tests share: files in a folder of its own for each test, which is empty at its begin, samples of
// each kind of file, a clock that stands still, and runs of the built terminal.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <tuple>

#include "terminal/common/errors.h"
#include "terminal/link/terminal_host.h"
#include "tests/support/programs.h"
#include "tests/support/wire_bytes.h"

inline std::filesystem::path TestFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const auto folder =
      ProgramFolder() / "terminal_test_files" / (std::string(test->test_suite_name()) + "." + test->name());
  static std::filesystem::path made;
  if (std::exchange(made, folder) != folder) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  return folder;
}

inline std::filesystem::path WriteTestFile(const std::string& name, const std::string& bytes) {
  const auto path = TestFolder() / name;
  std::filesystem::create_directories(path.parent_path());
  WriteFile(path, bytes);
  return path;
}

// The text without every occurrence of a part of it.
inline std::string Without(std::string text, const std::string& part) {
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos;) text.erase(at, part.size());
  return text;
}

// Keeps the text of its reports.
struct TestReport : std::ostringstream, BadLineReport {
  TestReport() : BadLineReport(static_cast<std::ostream&>(*this)) {}
};

inline constexpr const char* kTradeHeader =
    "exchange_trade_time,exchange,security_id,symbol,security_type,expiry_date,option_type,strike_price,side,quantity,"
    "price,multiplier,exchange_order_no,exchange_trade_id\n";
inline constexpr const char* kSecurityHeader =
    "exchange,security_id,symbol,name,security_type,expiry_date,option_type,strike_price,multiplier\n";
inline constexpr const char* kDeskHeader =
    "user_id,manager_id,member_id,client_id,ctcl_id,product_type,order_type,open_close,strategy_id,pancard,"
    "terminal_info,algo_id,algo_category,participant_id,reference_text\n";
inline constexpr const char* kDeskLine =
    "ANITA,DESK1,10412,C1001,4000,3,2,1,11,AAAPA1001A,TERM-A01,ALGO7,2,PART9,ref\n";
inline constexpr const char* kSecurityLine = "ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,2.5\n";
inline std::filesystem::path WriteSecurities(const std::string& lines = kSecurityLine) {
  return WriteTestFile("securities.csv", kSecurityHeader + lines);
}

// A line of a trade CSV with that time and trade number.
inline std::string TradeLine(const std::string& time, const std::string& tradeId) {
  return time + ",ARCA,IBM,IBM,EQ,,XX,0,Sell,25,182.5,1,1100," + tradeId + "\n";
}
// A day of a trade at each of the times, numbered from 1, with securities and desk beside it.
inline std::filesystem::path WriteDay(std::initializer_list<const char*> times) {
  WriteSecurities();
  WriteTestFile("desk.csv", kDeskHeader + std::string(kDeskLine));
  std::string day = kTradeHeader;
  int number = 0;
  for (const char* time : times) day += TradeLine(std::string("20131007-") + time, std::to_string(++number));
  return WriteTestFile("day.csv", day);
}

// A message of that number; the time of a trade, tag 55118, follows when it is not empty.
inline std::string DayMessage(unsigned number, const std::string& time = {}, unsigned mode = 0) {
  return WireMessage(number, time.empty() ? "" : WireText(55118, time), mode);
}

// What the callback of message 32022 gets, whole.
inline std::vector<std::string> Answers;
inline void NoteAnswer(CQORPacketReader* message) {
  EXPECT_EQ(message->Cursor, 0) << "raw, as to the plug-in's own function";
  Answers.emplace_back(reinterpret_cast<const char*>(message->Data), message->End);
}

// Stands still but for sleeps and for what a test adds.
class TestClock : public PlayClock {
 public:
  Time Now() override { return Current; }
  void SleepUntil(Time time) override { Current = std::max(Current, time); }
  std::int64_t Ms() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Current.time_since_epoch()).count();
  }
  Time Current;
};

inline std::filesystem::path TestModule(const char* name) {
  return ProgramFolder() / (std::string(name) + ModuleSuffix());
}

// What a run of the built terminal says.
struct RunResult {
  int Code;
  std::string Out, Errors;
};

inline RunResult RunProgram(const std::string& arguments, const std::string& environment = {}) {
  const auto out = TestFolder() / "out.txt", errors = TestFolder() / "errors.txt";
  const int status = RunCommand(environment + BuiltProgram("../bin/terminal") + " " + arguments + " > " + Quoted(out) +
                                " 2> " + Quoted(errors));
  return {kWindows ? status : status >> 8, Without(ReadFile(out), "\r"), Without(ReadFile(errors), "\r")};
}
