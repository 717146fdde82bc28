#include "trade_data/records/trade_impl.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/sample_trade.h"
#include "tests/support/wire_bytes.h"

namespace {

TradeRecord Decode(const std::string& body, CQORTradeImpl&& impl = {}) {
  const ExactBytes bytes(body);
  CQORPacketReader reader(bytes.Data(), bytes.Size());
  TradeRecord record{};
  impl.DecodeMessage(reader, record);
  return record;
}

// The offset of the first byte that differs, or -1.
std::ptrdiff_t FirstDifference(const TradeRecord& left, const TradeRecord& right) {
  const auto* a = reinterpret_cast<const char*>(&left);
  const auto* b = reinterpret_cast<const char*>(&right);
  const auto* end = std::mismatch(a, a + sizeof left, b).first;
  return end == a + sizeof left ? -1 : end - a;
}

TEST(TradeImplTest, DecodesEveryField) {
  const TradeRecord record = Decode(SampleMessageBody());
  EXPECT_EQ(FirstDifference(record, SampleRecord()), -1);
  EXPECT_EQ(TradeIdOf(record), -0x7EFDFCFC);
  EXPECT_EQ(+record.Reserved, 0u);
  EXPECT_TRUE(record.MasterRecord == nullptr);
  EXPECT_EQ(+record.Price, 101.75);
  EXPECT_STREQ(record.ReferenceText, "ref, first");
}

TEST(TradeImplTest, AcceptsTheFieldsOfASectionInAnyOrder) {
  std::string body(kSampleNumber);
  for (std::size_t i = kSampleKeyFields; i-- > 0;) body += kSampleFields[i].Wire();
  body += kSampleTerminator;
  for (std::size_t i = std::size(kSampleFields); i-- > kSampleKeyFields;) body += kSampleFields[i].Wire();
  EXPECT_EQ(FirstDifference(Decode(body), SampleRecord()), -1);
}

TEST(TradeImplTest, KeepsTheFieldsBeforeACutAnywhere) {
  const std::string body = SampleMessageBody();
  for (std::size_t size = 0; size <= body.size(); ++size) {
    SCOPED_TRACE(size);
    TradeRecord expected{};
    std::size_t end = kSampleNumber.size();
    for (std::size_t i = 0; i < std::size(kSampleFields); ++i) {
      if (i == kSampleKeyFields) end += kSampleTerminator.size();
      end += kSampleFields[i].Wire().size();
      if (end <= size) PutSampleField(expected, kSampleFields[i]);
    }
    if (expected.ProductType == 0) expected.ProductType = 1;
    ASSERT_EQ(FirstDifference(Decode(body.substr(0, size)), expected), -1);
  }
}

TEST(TradeImplTest, CutsTextsAtTheirLimits) {
  for (const SampleField& field : kSampleFields) {
    for (const std::size_t size : {field.Limit - 1, field.Limit, field.Limit + 1, field.Limit + 40}) {
      if (!field.IsText()) continue;
      SCOPED_TRACE(std::to_string(field.Tag) + " of " + std::to_string(size));
      const bool inKey = field.Tag == 55001 || field.Tag == 55101 || field.Tag == 55100;
      const std::string text = WireText(field.Tag, std::string(size, 'x'));
      const TradeRecord record = Decode(inKey ? text + WireU32(20009, 8) + WireTerminator() + WireU8(101, 7)
                                              : WireU32(20009, 8) + WireTerminator() + text + WireU8(101, 7));
      TradeRecord expected{};
      expected.VELDOrderID = 8;
      expected.Side = 7;
      expected.ProductType = 1;
      std::memset(reinterpret_cast<char*>(&expected) + field.Offset, 'x', std::min(size, field.Limit));
      EXPECT_EQ(FirstDifference(record, expected), -1);
    }
  }
}

struct Odd {
  const char* What;
  std::string Body;
  std::uint32_t TradeId, OrderId, Side, InnerOrder, ProductType;
};

TEST(TradeImplTest, ReadsWhatItCanOfOddMessages) {
  const std::string end = WireTerminator();
  const std::string id5 = WireU32(20008, 5);
  const std::string twenty(20, 'c');
  const Odd kRows[] = {
      {"nothing", "", 0, 0, 0, 0, 1},
      {"the key section alone", id5 + WireU32(20009, 6) + end, 5, 6, 0, 0, 1},
      {"no terminator: the body is lost", id5 + WireU8(101, 1) + WireU32(20084, 2), 5, 0, 0, 0, 1},
      {"a key field in the body is none", end + id5 + WireU8(101, 1), 0, 0, 1, 0, 1},
      {"a body field in the key section is none", WireU8(101, 1) + id5 + end, 5, 0, 0, 0, 1},
      {"a later value wins", id5 + WireU32(20008, 6) + end + WireU8(101, 1) + WireU8(101, 2), 6, 0, 2, 0, 1},
      {"the message number is taken whole", WireU16(10002, 0x2323) + id5 + end, 5, 0, 0, 0, 1},
      {"key: an unknown byte is scanned over", WireU8(7, 'x') + id5 + end, 5, 0, 0, 0, 1},
      {"key: a mark in an unknown text opens a field", WireText(56000, "ab" + id5) + WireU32(20009, 6) + end, 5, 6, 0,
       0, 1},
      {"key: a mark that ends an unknown value takes the next field with it",
       WireU32(20001, 0x23000000) + WireU32(20009, 6) + id5 + end, 5, 0, 0, 0, 1},
      {"key: terminator inside an unknown text", WireText(56000, end) + WireU8(101, 2) + id5 + end, 0, 0, 2, 0, 1},
      {"body: an unknown text is stepped over", end + WireText(56000, WireU8(101, 9)) + WireU8(101, 2), 0, 0, 2, 0, 1},
      {"body: an unknown number is stepped over", end + WireU32(20001, 0x23000000) + WireU32(20011, 8), 0, 0, 0, 8, 1},
      {"body: another terminator is nothing", end + end + WireU8(101, 2), 0, 0, 2, 0, 1},
      {"body: 20007 is dropped whole", end + WireU32(20007, 0x23232323) + WireU8(101, 2), 0, 0, 2, 0, 1},
      {"body: 10002 is skipped", end + WireU16(10002, 0x2323) + WireU8(101, 2), 0, 0, 2, 0, 1},
      {"body: a mark in the cut part of a text opens a field", end + WireText(55102, twenty + WireU8(101, 9)), 0, 0, 9,
       0, 1},
      {"body: the cut part of a text is scanned over", end + WireText(55102, twenty + "\x65\x01\x09") + WireU8(102, 3),
       0, 0, 0, 0, 1},
      {"a count beyond the end loses its text alone", end + WireU16(55102, 900) + WireU8(101, 2), 0, 0, 2, 0, 1},
      {"garbage between the fields", "xx" + id5 + "yy" + end + "zz" + WireU8(101, 2), 5, 0, 2, 0, 1},
      {"product type 0", end + WireU32(20084, 0), 0, 0, 0, 0, 1},
      {"product type 2", end + WireU32(20084, 2), 0, 0, 0, 0, 2},
      {"product type 7", end + WireU32(20084, 7), 0, 0, 0, 0, 7},
  };
  for (const Odd& row : kRows) {
    SCOPED_TRACE(row.What);
    const TradeRecord record = Decode(row.Body);
    TradeRecord expected{};
    std::memcpy(expected.ClientID, record.ClientID, sizeof expected.ClientID);
    expected.OrderType = record.OrderType;
    expected.VELDTradeID = row.TradeId;
    expected.VELDOrderID = row.OrderId;
    expected.Side = static_cast<std::uint8_t>(row.Side);
    expected.OrderID = row.InnerOrder;
    expected.ProductType = row.ProductType;
    EXPECT_EQ(FirstDifference(record, expected), -1);
  }
  EXPECT_EQ(Decode(end + WireText(55102, twenty + "\x65\x01\x09") + WireU8(102, 3)).OrderType, 3);
}

TEST(TradeImplTest, ReplacesTheKeySectionByAStoredRecord) {
  const struct {
    std::uint32_t StoredId, WireId;
    bool Terminated;
    const char* UserID;
    std::uint32_t Quantity;
  } kRows[] = {{5, 5, true, "stored", 70}, {5, 6, true, "wire", 0}, {5, 5, false, "wire", 0}, {0, 0, true, "wire", 0}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.StoredId) + " " + std::to_string(row.WireId) + " " +
                 std::to_string(row.Terminated));
    CQORTradeImpl impl;
    TradeRecord stored{};
    stored.VELDTradeID = row.StoredId;
    std::strcpy(stored.UserID, "stored");
    stored.Quantity = 70;
    impl.StoreRecord(stored);
    const ExactBytes bytes(WireU32(20008, row.WireId) + WireText(55001, "wire") +
                           (row.Terminated ? WireTerminator() + WireU8(101, 2) : ""));
    CQORPacketReader reader(bytes.Data(), bytes.Size());
    TradeRecord record{};
    impl.DecodeMessage(reader, record);
    EXPECT_STREQ(record.UserID, row.UserID);
    EXPECT_EQ(+record.Quantity, row.Quantity);
    EXPECT_EQ(record.Side, row.Terminated ? 2 : 0);
  }
}

// The reader still has the terminator of an earlier section as its tag.
TEST(TradeImplTest, FetchesNothingAtTheEndOfTheMessage) {
  CQORTradeImpl impl;
  TradeRecord stored{};
  stored.VELDTradeID = 5;
  stored.Quantity = 70;
  impl.StoreRecord(stored);
  CQORPacketReader reader(nullptr, 0);
  reader.Tag = 65535;
  TradeRecord record{};
  record.VELDTradeID = 5;
  impl.DecodeKeySection(reader, record);
  EXPECT_EQ(+record.Quantity, 0u);
}

TEST(TradeImplTest, KeepsRecordsAndCountsTheLargestId) {
  CQORTradeImpl impl;
  TradeRecord record{};
  record.Side = 9;
  EXPECT_FALSE(impl.FetchRecord(7, record));
  EXPECT_EQ(impl.NextTradeID(), 1);
  for (const std::uint32_t id : {7u, 12u, 3u, 0x80000001u}) {
    const ExactBytes bytes(WireU32(20008, id) + WireTerminator() + WireU32(20014, id * 2));
    CQORPacketReader reader(bytes.Data(), bytes.Size());
    impl.LoadRecord(reader);
  }
  EXPECT_EQ(impl.NextTradeID(), 13);
  EXPECT_EQ(impl.NextTradeID(), 14);
  EXPECT_FALSE(impl.FetchRecord(13, record));
  EXPECT_EQ(record.Side, 9);
  EXPECT_TRUE(impl.FetchRecord(12, record));
  EXPECT_EQ(+record.Quantity, 24u);
  EXPECT_EQ(record.Side, 0);
  record.Quantity = 1;
  impl.StoreRecordUnlocked(record);
  record.Quantity = 2;
  EXPECT_TRUE(impl.FetchRecord(12, record));
  EXPECT_EQ(+record.Quantity, 1u);
  impl.ClearRecords();
  EXPECT_FALSE(impl.FetchRecord(12, record));
  EXPECT_EQ(impl.NextTradeID(), 15);
}

}  // namespace
