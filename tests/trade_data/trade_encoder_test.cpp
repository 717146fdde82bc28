#include <gtest/gtest.h>

#include "tests/support/sample_trade.h"
#include "tests/support/wire_bytes.h"
#include "trade_data/records/trade_impl.h"

namespace {

enum Section { kKey, kSecurity, kRest };

// The fields of a part in the order of the sample, texts at their own length or, fixed, at their limit. 20083 is never
// written, 55107 only fixed, and 55109 twice.
std::string WireOf(Section part, bool fixed) {
  std::string wire;
  for (const SampleField& field : kSampleFields) {
    const std::ptrdiff_t at = &field - kSampleFields;
    const Section partOfField = at < 5 ? kKey : at < 14 ? kSecurity : kRest;
    if (partOfField != part || field.Tag == 20083 || (field.Tag == 55107 && !fixed)) continue;
    std::string value(field.Value);
    if (fixed && field.IsText()) value.resize(field.Limit);
    wire += field.IsText() ? WireText(field.Tag, value) : field.Wire();
  }
  if (part == kRest) wire += WireText(55109, fixed ? "ref, first" + std::string(54, '\0') : "ref, first");
  return wire;
}

std::string Start(bool fixed) {
  return std::string(kSampleNumber) + WireOf(kKey, fixed) + std::string(kSampleTerminator);
}

std::string Encode(const TradeRecord& record, bool fixed, bool useMasterId) {
  CQORPacketWriter writer(0);
  CQORTradeImpl().EncodeRecord(writer, record, fixed, 8111, useMasterId);
  return std::string(reinterpret_cast<const char*>(writer.GetData()) + 10, writer.GetSize() - 10u);
}

TEST(TradeEncoderTest, WritesTheFieldsInTheirOrder) {
  for (const bool fixed : {false, true}) {
    const std::string expected = Start(fixed) + WireOf(kSecurity, fixed) + WireOf(kRest, fixed);
    EXPECT_EQ(expected.size(), fixed ? 957u : 412u);
    for (const bool useMasterId : {false, true}) EXPECT_EQ(Encode(SampleRecord(), fixed, useMasterId), expected);
  }
}

TEST(TradeEncoderTest, FixedTextsKeepWhatFollowsTheirNul) {
  TradeRecord record = SampleRecord();
  record.UserID[7] = 'z';
  EXPECT_EQ(Encode(record, true, false).substr(5, 25),
            "#\xD9\xD6\x14" + std::string(1, '\0') + "USER1" + std::string(2, '\0') + "z" + std::string(12, '\0'));
}

TEST(TradeEncoderTest, WritesTheMasterForItsSecurity) {
  SecurityMaster master{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};
  TradeRecord record = SampleRecord();
  record.MasterRecord = &master;
  const std::string fields = WireText(55010, "MX") + WireText(55104, "MID") + WireText(55105, "MTYPE") +
                             WireText(55103, "MSYM") + WireText(55143, "MEXP") + WireText(55106, "PE") +
                             WireDouble(40004, 1.5) + WireDouble(40008, 2.5);
  const std::string rest = WireOf(kRest, false);
  EXPECT_EQ(Encode(record, false, true), Start(false) + WireU32(20007, 77) + rest);
  EXPECT_EQ(Encode(record, false, false), Start(false) + fields + rest);
  const std::string fixed = Encode(record, true, true);
  EXPECT_EQ(fixed.size(), 957u);
  EXPECT_NE(fixed.find(WireText(55107, "Master name" + std::string(37, '\0'))), std::string::npos);
  EXPECT_EQ(fixed.find(WireHead(20007)), std::string::npos);
  master.SecurityNumber = 0;
  EXPECT_EQ(Encode(record, false, true), Start(false) + fields + rest);
}

}  // namespace
