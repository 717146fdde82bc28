#include "trade_data/cache/execution_set.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace {

TEST(ExecutionSetTest, JoinsTheTwoTextsOfAKey) {
  const std::string full(32, 'o');
  const struct {
    const char *OrderNo, *TradeId;
    std::string Text;
    bool IsNew;
  } kRows[] = {
      {"", "", "", true},
      {"", "", "", false},
      {"1", "23", "123", true},
      {"12", "3", "123", false},
      {"123", "", "123", false},
      {"", "123", "123", false},
      {"12", "34", "1234", true},
      {"12", "", "12", true},
      {"ab", "C", "abC", true},
      {"ab", "c", "abc", true},
      {full.c_str(), full.c_str(), std::string(64, 'o'), true},
      {full.c_str(), full.c_str(), std::string(64, 'o'), false},
      {full.c_str(), full.c_str() + 1, std::string(63, 'o'), true},
  };
  ExecutionSet executions;
  EXPECT_FALSE(executions.Contains({"", ""}));
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Text);
    const ExecutionKey key(row.OrderNo, row.TradeId);
    EXPECT_EQ(key.Text(), row.Text);
    EXPECT_EQ(executions.Contains(key), !row.IsNew);
    EXPECT_EQ(executions.Insert(key), row.IsNew);
    EXPECT_TRUE(executions.Contains(key));
  }
  EXPECT_EQ(executions.Size(), 8u);
}

// Enough keys for the table to double eight times and the characters to fill several blocks.
TEST(ExecutionSetTest, AgreesWithASetOfTexts) {
  std::minstd_rand random(7);
  ExecutionSet executions;
  for (int round = 0; round < 2; ++round) {
    std::set<std::string> expected;
    for (int i = 0; i < 60000; ++i) {
      const std::string order = std::to_string(random() % 300);
      const std::string trade = (random() % 2 == 0 ? "execution-" : "") + std::to_string(random() % 400);
      const ExecutionKey key(order.c_str(), trade.c_str());
      executions.Prefetch(key);
      ASSERT_EQ(executions.Contains(key), expected.contains(order + trade)) << order << ' ' << trade;
      ASSERT_EQ(executions.Insert(key), expected.insert(order + trade).second) << order << ' ' << trade;
      ASSERT_EQ(executions.Size(), expected.size());
    }
    ASSERT_GT(expected.size(), 30000u);
    for (const std::string& text : expected) ASSERT_TRUE(executions.Contains({"", text.c_str()})) << text;
    executions.Clear();
    ASSERT_EQ(executions.Size(), 0u);
    ASSERT_FALSE(executions.Contains({"", expected.begin()->c_str()}));
  }
}

}  // namespace
