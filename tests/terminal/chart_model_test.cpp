#include "terminal/chart/chart_model.h"

#include <gtest/gtest.h>

#include "tests/terminal/chart_trades.h"

namespace {

constexpr double kDay = 1'381'104'000;  // 2013-10-07

// A mark of interrogation for each trade without a time.
std::string PricesOf(const ChartModel& model) {
  std::string text;
  for (const ChartPoint& point : model.Source().Points)
    text += FixedText(point.Price, 0) + "*" + std::to_string(point.Quantity) + " ";
  return text + std::string(model.Source().Timeless, '?');
}

TEST(ChartModelTest, FollowsOneSecurityOfTheLedger) {
  ChartLedger ledger;
  ChartModel model(ledger);
  EXPECT_TRUE(model.Update()) << "nothing has been painted yet";
  EXPECT_EQ(model.Source().WhyEmpty, "No security is selected");
  model.Select("ARCA", "IBM");
  EXPECT_TRUE(model.Update());
  EXPECT_EQ(model.Source().WhyEmpty, "ARCA IBM: no trades yet");
  const std::tuple<const char*, std::function<void()>, bool, const char*> steps[] = {
      {"first", [&] { ledger.Trade(1, "10:00:00", 5, 2); }, true, "5*2 "},
      {"nothing", [] {}, false, "5*2 "},
      {"other", [&] { ledger.Trade(2, "10:00:01", 9, 9, 1, "BAC"); }, false, "5*2 "},
      {"late", [&] { ledger.Trade(3, "09:00:00", 6); }, true, "6*1 5*2 "},
      {"changed", [&] { ledger.Trade(1, "10:00:00", 7, 4); }, true, "6*1 7*4 "},
      {"busted", [&] { ledger.Trade(3, "09:00:00", 6, 0); }, true, "7*4 "},
      {"no time", [&] { ledger.Trade(4, "", 6); }, true, "7*4 ?"},
      {"same", [&] { model.Select("ARCA", "IBM"); }, false, "7*4 ?"},
      {"select", [&] { model.Select("ARCA", "BAC"); }, true, "9*9 "},
      {"back", [&] { model.Select("ARCA", "IBM"); }, true, "7*4 ?"},
      {"login", [&] { ledger.Clear(); }, true, ""},
      {"again", [&] { ledger.OnDownloadEndSent(), ledger.Trade(1, "10:00:00", 8); }, true, "8*1 "},
      {"login at once", [&] { ledger.Clear(), ledger.OnDownloadEndSent(), ledger.Trade(1, "11:00:00", 3); }, true,
       "3*1 "}};
  for (const auto& [name, step, isNew, prices] : steps) {
    step();
    EXPECT_EQ(model.Update(), isNew) << name;
    EXPECT_EQ(PricesOf(model), prices) << name;
  }
  EXPECT_EQ(model.Source().Title, "ARCA IBM");
}

TEST(ChartModelTest, RangeFollowsUserAndTrades) {
  ChartLedger ledger;
  ChartModel model(ledger);
  model.Select("ARCA", "IBM");
  EXPECT_FALSE(model.ShowTimes(std::vector<std::string>{"20131007-10:00:00"})) << "no trades";
  ledger.Trade(1, "10:00:00", 5);
  ledger.Trade(2, "11:00:00", 6);
  model.Update();
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 36'000 - 72, kDay + 39'600 + 72}));
  EXPECT_FALSE(model.ShowTimes(std::vector<std::string>{"", "10:00:00"}));
  EXPECT_FALSE(model.Update()) << "nothing has changed";
  EXPECT_TRUE(model.ShowTimes(std::vector<std::string>{"20131007-10:30:00", "x", "20131007-10:20:00"}));
  EXPECT_TRUE(model.Update());
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 37'180, kDay + 37'820}));
  model.Move(20);
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 37'200, kDay + 37'840}));
  ledger.Trade(3, "12:00:00", 6);
  EXPECT_TRUE(model.Update());
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 37'200, kDay + 37'840})) << "the user's range stays";
  model.ShowNewest();
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 43'344 - 640, kDay + 43'344}));
  ledger.Trade(4, "12:30:00", 6);
  EXPECT_TRUE(model.Update());
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 45'180 - 640, kDay + 45'180})) << "the newest stay in view";
  model.ShowAll();
  EXPECT_TRUE(model.Update());
  EXPECT_EQ(model.Range(), (ChartRange{kDay + 36'000 - 180, kDay + 45'180}));
}

TEST(ChartModelTest, TitlesAreUtf8) {
  EXPECT_EQ(Utf8OfCodePage("a\xE4"), "a\xC3\xA4");
}

}  // namespace
