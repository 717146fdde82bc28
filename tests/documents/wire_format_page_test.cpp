#include <gtest/gtest.h>

#include "tests/documents/page.h"
#include "trade_data/records/trade_impl.h"

namespace {

TEST(WireFormatPage, ExampleDecodesToItsRemarks) {
  const std::vector<std::uint8_t> bytes = HexBlock("wire_format.md", "## A trade");
  CQORPacketReader reader(bytes.data(), static_cast<std::uint16_t>(bytes.size()));
  std::uint16_t needed = 0;
  std::uint16_t consumed = 0;
  ASSERT_TRUE(reader.ParseHeader(needed, consumed));
  EXPECT_EQ(consumed, bytes.size());
  EXPECT_EQ(reader.MessageNumber, 9101);
  TradeRecord record{};
  CQORTradeImpl decoder;
  decoder.DecodeMessage(reader, record);
  EXPECT_STREQ(record.UserID, "DEALER01");
  EXPECT_EQ(std::uint32_t{record.VELDTradeID}, 4711U);
  EXPECT_EQ(std::uint32_t{record.VELDOrderID}, 815U);
  EXPECT_STREQ(record.ExchangeTradeID, "700003");
  EXPECT_STREQ(record.ExchangeOrderNo, "1100000000004");
  EXPECT_STREQ(record.Exchange, "COMEX");
  EXPECT_STREQ(record.SecurityID, "GC201312");
  EXPECT_EQ(record.Side, 1);
  EXPECT_EQ(std::uint32_t{record.Quantity}, 2U);
  EXPECT_EQ(double{record.Price}, 1313.25);
}

TEST(WireFormatPage, HasTheWidthsOfAllTags) {
  std::vector<std::pair<int, int>> page, rules;  // last tag of a range, width
  for (const Match& row : Matches(PageSection(SourceText("docs/wire_format.md"), "\n## Body"),
                                  R"(\n\| (?:\d+ to )?(\d+) \| (none|a 16-bit count|\d+)\b[^|]* \|)"))
    page.emplace_back(std::stoi(row[1]), row[2] == "none"             ? 0
                                         : row[2] == "a 16-bit count" ? kCountedWidth
                                                                      : std::stoi(row[2]));
  for (const SkipRule& rule : kSkipRules) rules.emplace_back(rule.LastTag, rule.Width);
  EXPECT_EQ(page, rules);
}

}  // namespace
