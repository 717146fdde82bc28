#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/trade_data/sample_trade.h"
#include "tests/trade_data/wire_bytes.h"
#include "trade_data/records/trade_impl.h"

namespace {

using Tags = std::vector<int>;

const Tags kKeyOrder = {55001, 20008, 20009, 55101, 55100};
const Tags kSecurityOrder = {55010, 55104, 55105, 55103, 55143, 55106, 40004, 40008};
const Tags kRestOrder = {55118, 20011, 55116, 55117, 101,   102,   20084, 20014, 20013, 20036,
                         40002, 55018, 55102, 55131, 55012, 55109, 20068, 20081, 20082, 55151,
                         115,   20101, 55124, 55123, 55328, 11115, 55329, 55109};

std::size_t LimitOf(int tag) {
  for (const auto& [limit, tags] : {std::pair<std::size_t, Tags>{16, {55105, 55106, 55123, 55328, 55329}},
                                    {20, {55001, 55018, 55102, 55131, 55012}},
                                    {22, {55118, 55116, 55117}},
                                    {24, {55124}},
                                    {32, {55101, 55100, 55103, 55143, 55151}},
                                    {48, {55010, 55104, 55107}},
                                    {64, {55109}}})
    if (std::find(tags.begin(), tags.end(), tag) != tags.end()) return limit;
  return 0;
}

std::string WireOf(const Tags& tags, bool fixed) {
  std::string wire;
  for (const int tag : tags) {
    const auto* field =
        std::find_if(kSampleFields, std::end(kSampleFields), [&](const auto& each) { return each.Tag == tag; });
    if (fixed && field->IsText()) {
      std::string value(field->Value);
      value.resize(LimitOf(tag));
      wire += WireText(tag, value);
    } else {
      wire += field->Wire();
    }
  }
  return wire;
}

std::string Encode(const TradeRecord& record, bool fixed, bool useMasterId) {
  CQORPacketWriter writer(0);
  CQORTradeImpl().EncodeRecord(writer, record, fixed, 8111, useMasterId);
  return std::string(reinterpret_cast<const char*>(writer.GetData()) + 10, writer.GetSize() - 10u);
}

TEST(TradeEncoderTest, WritesTheFieldsInTheirOrder) {
  const std::string start = std::string(kSampleNumber) + WireOf(kKeyOrder, false) + std::string(kSampleTerminator);
  const std::string expected = start + WireOf(kSecurityOrder, false) + WireOf(kRestOrder, false);
  EXPECT_EQ(expected.size(), 412u);
  for (const bool useMasterId : {false, true}) EXPECT_EQ(Encode(SampleRecord(), false, useMasterId), expected);
  EXPECT_TRUE(expected.ends_with("#\x45\xD7\x0A" + std::string(1, '\0') + "ref, first"));
}

TEST(TradeEncoderTest, FixedTextsTakeTheirWholeLimitAndTheSecurityItsName) {
  Tags security = kSecurityOrder;
  security.push_back(55107);
  const std::string expected = std::string(kSampleNumber) + WireOf(kKeyOrder, true) + std::string(kSampleTerminator) +
                               WireOf(security, true) + WireOf(kRestOrder, true);
  EXPECT_EQ(expected.size(), 957u);
  for (const bool useMasterId : {false, true}) EXPECT_EQ(Encode(SampleRecord(), true, useMasterId), expected);
  // What follows the NUL in a text goes out as well.
  TradeRecord record = SampleRecord();
  record.UserID[7] = 'z';
  EXPECT_EQ(Encode(record, true, false).substr(5, 25),
            "#\xD9\xD6\x14" + std::string(1, '\0') + "USER1" + std::string(2, '\0') + "z" + std::string(12, '\0'));
}

TEST(TradeEncoderTest, AMasterStandsForItsSecurity) {
  SecurityMaster master{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};
  TradeRecord record = SampleRecord();
  record.MasterRecord = &master;
  const std::string start = std::string(kSampleNumber) + WireOf(kKeyOrder, false) + std::string(kSampleTerminator);
  const std::string fields = WireText(55010, "MX") + WireText(55104, "MID") + WireText(55105, "MTYPE") +
                             WireText(55103, "MSYM") + WireText(55143, "MEXP") + WireText(55106, "PE") +
                             WireDouble(40004, 1.5) + WireDouble(40008, 2.5);
  const std::string rest = WireOf(kRestOrder, false);
  EXPECT_EQ(Encode(record, false, true), start + WireU32(20007, 77) + rest);
  EXPECT_EQ(Encode(record, false, false), start + fields + rest);
  const std::string fixed = Encode(record, true, true);
  EXPECT_EQ(fixed.size(), 957u);
  EXPECT_NE(fixed.find(WireText(55107, "Master name" + std::string(37, '\0'))), std::string::npos);
  EXPECT_EQ(fixed.find(WireHead(20007)), std::string::npos);
  master.SecurityNumber = 0;
  EXPECT_EQ(Encode(record, false, true), start + fields + rest);
}

}  // namespace
