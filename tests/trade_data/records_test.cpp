// The decoders and encoders of trades and orders, and the records that they keep.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/sample_trade.h"
#include "tests/support/wire_bytes.h"
#include "trade_data/records/order_impl.h"
#include "trade_data/records/trade_impl.h"

namespace {

template <typename Record, typename Impl>
Record DecodeBy(Impl& impl, const std::string& body) {
  const ExactBytes bytes(body);
  CQORPacketReader reader(bytes.Data(), bytes.Size());
  Record record{};
  impl.DecodeMessage(reader, record);
  return record;
}
TradeRecord Decode(const std::string& body) {
  CQORTradeImpl impl;
  return DecodeBy<TradeRecord>(impl, body);
}
OrderRecord DecodeOrder(const std::string& body) {
  CQOROrderImpl impl;
  return DecodeBy<OrderRecord>(impl, body);
}

template <typename Impl, typename... Rest>
std::string EncodeBy(Impl&& impl, const Rest&... rest) {
  CQORPacketWriter writer(0);
  impl.EncodeRecord(writer, rest...);
  return std::string(reinterpret_cast<const char*>(writer.GetData()) + 10, writer.GetSize() - 10u);
}

constexpr SecurityMaster kMaster{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};

// The sample in the order in which it is written, and each section backwards.
TEST(TradeImplTest, DecodesTheFieldsBeforeACutAnywhere) {
  std::vector<SampleField> fields(std::begin(kSampleFields), std::end(kSampleFields));
  for (const char* order : {"written", "backwards"}) {
    std::string body(kSampleNumber);
    TradeRecord expected{};
    for (std::size_t i = 0; i <= fields.size(); ++i) {
      if (i == kSampleKeyFields) body += kSampleTerminator;
      const std::string wire = i < fields.size() ? fields[i].Wire() : "";
      for (std::size_t cut = 0; cut < wire.size() || cut == 0; ++cut) {
        expected.ProductType = std::max(+expected.ProductType, 1u);
        ASSERT_TRUE(BytesOfValue(Decode(body + wire.substr(0, cut))) == BytesOfValue(expected))
            << order << " " << i << " " << cut;
      }
      body += wire;
      if (i < fields.size()) PutSampleField(expected, fields[i]);
    }
    EXPECT_TRUE(BytesOfValue(expected) == BytesOfValue(SampleRecord()));
    std::reverse(fields.begin(), fields.begin() + kSampleKeyFields);
    std::reverse(fields.begin() + kSampleKeyFields, fields.end());
  }
}

TEST(TradeImplTest, ReadsWhatItCanOfOddMessages) {
  const std::string end = WireTerminator(), id5 = WireU32(20008, 5), side2 = WireU8(101, 2), twenty(20, 'c');
  // What is odd, the message, and what is read: VELDTradeID, VELDOrderID, Side, OrderID, ProductType.
  const std::tuple<const char*, std::string, std::string> kRows[] = {
      {"the key section alone", id5 + WireU32(20009, 6) + end, "5 6 0 0 1"},
      {"no terminator: the body is lost", id5 + side2 + WireU32(20084, 2), "5 0 0 0 1"},
      {"a key field in the body is none", end + id5 + side2, "0 0 2 0 1"},
      {"a body field in the key section is none", side2 + id5 + end, "5 0 0 0 1"},
      {"a later value wins", id5 + WireU32(20008, 6) + end + WireU8(101, 1) + side2, "6 0 2 0 1"},
      {"the message number is taken whole", WireU16(10002, 0x2323) + id5 + end, "5 0 0 0 1"},
      {"key: an unknown byte is scanned over", WireU8(7, 'x') + id5 + end, "5 0 0 0 1"},
      {"key: a mark in an unknown text opens a field", WireText(56000, "ab" + id5) + WireU32(20009, 6) + end,
       "5 6 0 0 1"},
      {"key: a mark that ends an unknown value takes the next field with it",
       WireU32(20001, 0x23000000) + WireU32(20009, 6) + id5 + end, "5 0 0 0 1"},
      {"key: terminator inside an unknown text", WireText(56000, end) + side2 + id5 + end, "0 0 2 0 1"},
      {"body: an unknown text is stepped over", end + WireText(56000, WireU8(101, 9)) + side2, "0 0 2 0 1"},
      {"body: an unknown number is stepped over", end + WireU32(20001, 0x23000000) + WireU32(20011, 8), "0 0 0 8 1"},
      {"body: another terminator is nothing", end + end + side2, "0 0 2 0 1"},
      {"body: 20007 is dropped whole", end + WireU32(20007, 0x23232323) + side2, "0 0 2 0 1"},
      {"body: 10002 is skipped", end + WireU16(10002, 0x2323) + side2, "0 0 2 0 1"},
      {"body: a mark in the cut part of a text opens a field", end + WireText(55102, twenty + side2), "0 0 2 0 1"},
      {"body: the cut part of a text is scanned over", end + WireText(55102, twenty + "\x65\x01\x09") + side2,
       "0 0 2 0 1"},
      {"a count beyond the end loses its text alone", end + WireU16(55102, 900) + side2, "0 0 2 0 1"},
      {"garbage between the fields", "xx" + id5 + "yy" + end + "zz" + side2, "5 0 2 0 1"},
      {"product type 0", end + WireU32(20084, 0), "0 0 0 0 1"},
      {"product type 7", end + WireU32(20084, 7), "0 0 0 0 7"},
  };
  for (const auto& [what, body, expected] : kRows) {
    const TradeRecord record = Decode(body);
    std::string read;
    for (const std::uint32_t number :
         {+record.VELDTradeID, +record.VELDOrderID, std::uint32_t{record.Side}, +record.OrderID, +record.ProductType})
      read += std::to_string(number) + " ";
    EXPECT_EQ(read, expected + " ") << what;
  }
}

TEST(TradeImplTest, ReplacesTheKeySectionByAStoredRecord) {
  CQORTradeImpl impl;
  const auto read = [&impl](std::uint32_t storedId, std::uint32_t wireId, const std::string& end) {
    TradeRecord stored{};
    stored.VELDTradeID = storedId;
    std::strcpy(stored.UserID, "stored");
    stored.Quantity = 70;
    impl.ClearRecords();
    impl.StoreRecord(stored);
    const auto record = DecodeBy<TradeRecord>(impl, WireU32(20008, wireId) + WireText(55001, "wire") + end);
    return record.UserID + (" " + std::to_string(record.Quantity)) + " " + std::to_string(record.Side);
  };
  const std::string body = WireTerminator() + WireU8(101, 2);
  EXPECT_EQ(read(5, 6, body), "wire 0 2");
  EXPECT_EQ(read(0, 0, body), "wire 0 2");
  EXPECT_EQ(read(5, 5, ""), "wire 0 0") << "without a terminator";
  EXPECT_EQ(read(5, 5, body), "stored 70 2");
  // At the end of a message nothing is fetched, even if the reader still has an earlier terminator as its tag.
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
  EXPECT_TRUE(!impl.FetchRecord(13, record) && record.Side == 9);
  EXPECT_TRUE(impl.FetchRecord(12, record) && record.Side == 0 && record.Quantity == 24);
  impl.ClearRecords();
  EXPECT_FALSE(impl.FetchRecord(12, record));
  EXPECT_EQ(impl.NextTradeID(), 14);
}

// What is written of the sample: 20083 never, 55107 only fixed, with texts at their limits, and 55109 twice. The other
// bytes, if there are any, replace the fields of the security.
std::string Written(bool fixed, const std::string& security = {}) {
  std::string wire(kSampleNumber);
  for (const SampleField& field : kSampleFields) {
    const std::ptrdiff_t at = &field - kSampleFields;
    if (at == 5) wire += std::string(kSampleTerminator) + security;
    const bool replaced = at >= 5 && at < 14 && !security.empty();
    if (replaced || field.Tag == 20083 || (field.Tag == 55107 && !fixed)) continue;
    std::string value(field.Value);
    if (fixed && field.IsText()) value.resize(field.Limit);
    wire += field.IsText() ? WireText(field.Tag, value) : field.Wire();
  }
  return wire + WireText(55109, fixed ? "ref, first" + std::string(54, '\0') : "ref, first");
}

std::string Encode(const TradeRecord& record, bool fixed, bool useMasterId) {
  return EncodeBy(CQORTradeImpl(), record, fixed, std::uint16_t{8111}, useMasterId);
}

TEST(TradeEncoderTest, WritesTheFieldsInTheirOrder) {
  for (const bool fixed : {false, true}) {
    EXPECT_EQ(Written(fixed).size(), fixed ? 957u : 412u);
    for (const bool useMasterId : {false, true}) EXPECT_EQ(Encode(SampleRecord(), fixed, useMasterId), Written(fixed));
  }
  // Fixed texts keep what follows their NUL.
  TradeRecord record = SampleRecord();
  record.UserID[7] = 'z';
  EXPECT_EQ(Encode(record, true, false).substr(10, 10), std::string("USER1\0\0z\0\0", 10));
}

TEST(TradeEncoderTest, WritesTheMasterForItsSecurity) {
  SecurityMaster master = kMaster;
  TradeRecord record = SampleRecord();
  record.MasterRecord = &master;
  const std::string fields = WireText(55010, "MX") + WireText(55104, "MID") + WireText(55105, "MTYPE") +
                             WireText(55103, "MSYM") + WireText(55143, "MEXP") + WireText(55106, "PE") +
                             WireDouble(40004, 1.5) + WireDouble(40008, 2.5);
  EXPECT_EQ(Encode(record, false, true), Written(false, WireU32(20007, 77)));
  EXPECT_EQ(Encode(record, false, false), Written(false, fields));
  const std::string fixed = Encode(record, true, true);
  EXPECT_EQ(fixed.size(), 957u);
  EXPECT_NE(fixed.find(WireText(55107, "Master name" + std::string(37, '\0'))), std::string::npos);
  EXPECT_EQ(fixed.find(WireHead(20007)), std::string::npos);
  master.SecurityNumber = 0;
  EXPECT_EQ(Encode(record, false, true), Written(false, fields));
}

// Tag, offset in the record, bytes of a value or characters of a text.
constexpr int kPlaces[][3] = {
    {20083, 0, 4},    {55001, 4, 20},   {55018, 25, 20},  {20009, 46, 4},    {20011, 50, 4},   {20010, 58, 4},
    {55100, 62, 32},  {55099, 95, 32},  {55116, 128, 22}, {55117, 151, 22},  {55010, 174, 48}, {55104, 223, 48},
    {55105, 272, 16}, {55103, 289, 32}, {55143, 322, 32}, {55106, 355, 16},  {40004, 372, 8},  {104, 380, 1},
    {50003, 381, 8},  {101, 389, 1},    {20012, 390, 4},  {20013, 394, 4},   {20014, 398, 4},  {20015, 402, 4},
    {40002, 406, 8},  {40003, 414, 8},  {55102, 422, 20}, {55131, 443, 20},  {55134, 464, 20}, {55012, 485, 20},
    {102, 506, 1},    {107, 507, 1},    {108, 508, 1},    {20084, 509, 4},   {55124, 513, 24}, {55123, 538, 16},
    {55328, 555, 16}, {11115, 572, 2},  {55329, 574, 16}, {5011, 591, 1},    {5012, 592, 1},   {55178, 593, 20},
    {55179, 614, 20}, {20052, 635, 4},  {55109, 639, 64}, {55111, 704, 512}, {11111, 1217, 2}, {20066, 1219, 4},
    {20068, 1223, 4}, {20081, 1227, 4}, {20082, 1231, 4}, {55151, 1235, 32}, {113, 1268, 1},   {115, 1269, 1},
    {40049, 1299, 8}, {20101, 1307, 4},
};

// A text of three characters more than its place takes.
std::string FieldOfPlace(const int (&place)[3]) {
  if (place[0] > 55000) return WireText(place[0], std::string(static_cast<std::size_t>(place[2]), 'x') + "yyy");
  return WireHead(place[0]) + std::string("\1\2\3\4\5\6\7\x08").substr(0, static_cast<std::size_t>(place[2]));
}

TEST(OrderImplTest, EndsSectionsAtTheirTerminators) {
  // A value in the key section is skipped whole, a mark in it included; a master's number changes nothing.
  const std::string key = WireU16(10002, 8001) + WireText(55100, "a" + WireU32(20009, 9)) + WireU32(20009, 7) +
                          WireU32(20011, 8) + WireText(55001, "USER1") + WireTerminator();
  const OrderRecord record = DecodeOrder(key + WireU32(20007, 0x23232323) + WireU32(20014, 150) + WireU32(20084, 3) +
                                         WireTerminator() + WireU32(20014, 151));
  EXPECT_EQ(std::tuple(+record.VELDOrderID, +record.OrderID, +record.Quantity, +record.ProductType),
            std::tuple(7u, 8u, 150u, 3u));
  EXPECT_EQ(record.UserID + std::string(record.ExchangeOrderNo), "USER1");
}

TEST(OrderImplTest, ReplacesTheKeySectionByAStoredOrder) {
  CQOROrderImpl impl;
  const ExactBytes message(WireU32(20009, 7) + WireText(55001, "stored") + WireTerminator());
  CQORPacketReader reader(message.Data(), message.Size());
  impl.LoadRecord(reader);
  const std::string wire = WireU32(20009, 7) + WireText(55001, "wire");
  EXPECT_STREQ(DecodeBy<OrderRecord>(impl, wire).UserID, "wire") << "without a terminator";
  OrderRecord record = DecodeBy<OrderRecord>(impl, wire + WireTerminator());
  EXPECT_STREQ(record.UserID, "stored");
  EXPECT_TRUE(impl.FetchRecord(7, record));
  impl.ClearRecords();
  EXPECT_FALSE(impl.FetchRecord(7, record));
}

TEST(OrderImplTest, DecodesEachTagIntoItsPlaceAndEncodesIt) {
  std::string body = WireTerminator(), expected(1316, '\0');
  for (const auto& place : kPlaces) {
    const auto size = static_cast<std::size_t>(place[2]);
    const std::string wire = FieldOfPlace(place);
    body += wire;
    expected.replace(static_cast<std::size_t>(place[1]), size,
                     place[0] > 55000 ? std::string(size, 'x') : wire.substr(3));
  }
  const OrderRecord record = DecodeOrder(body);
  EXPECT_TRUE(BytesOfValue(record) == expected);
  EXPECT_EQ(+DecodeOrder("").ProductType, 1u);
  for (const bool fixed : {false, true}) {
    const std::string wire = EncodeBy(CQOROrderImpl(), record, fixed, std::uint16_t{8001});
    EXPECT_TRUE(wire.starts_with(WireU16(10002, 8001) + WireHead(20009) + "\1\2\3\4" + WireHead(20011) + "\1\2\3\4" +
                                 WireText(55001, std::string(20, 'x')) + WireTerminator() + WireU8(101, 1) +
                                 WireU8(102, 1)));
    EXPECT_TRUE(BytesOfValue(DecodeOrder(wire)) == expected);
    for (std::size_t size = 0; size < wire.size(); ++size) DecodeOrder(wire.substr(0, size));
  }
}

TEST(OrderImplTest, WritesTheMasterForItsSecurity) {
  OrderRecord record{};
  record.MasterRecord = &kMaster;
  const OrderRecord decoded = DecodeOrder(EncodeBy(CQOROrderImpl(), record, false, std::uint16_t{8001}));
  EXPECT_EQ(std::string(decoded.Exchange) + decoded.SecurityID + decoded.SecurityType, "MXMIDMTYPE");
  EXPECT_EQ(std::string(decoded.Symbol) + decoded.ExpiryDate + decoded.OptionType, "MSYMMEXPPE");
  EXPECT_EQ(+decoded.StrikePrice, 1.5);
}

}  // namespace
