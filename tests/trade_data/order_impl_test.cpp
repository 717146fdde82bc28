#include "trade_data/records/order_impl.h"

#include <gtest/gtest.h>

#include "tests/support/wire_bytes.h"

namespace {

OrderRecord Decode(const std::string& body, CQOROrderImpl&& impl = {}) {
  const ExactBytes bytes(body);
  CQORPacketReader reader(bytes.Data(), bytes.Size());
  OrderRecord record{};
  impl.DecodeMessage(reader, record);
  return record;
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

TEST(OrderImplTest, PutsEachTagIntoItsPlace) {
  for (const auto& place : kPlaces) {
    SCOPED_TRACE(place[0]);
    std::string expected(1316, '\0');
    expected[509] = 1;  // a product type of 0 becomes 1
    const auto size = static_cast<std::size_t>(place[2]);
    const std::string value = place[0] > 55000 ? std::string(size, 'x') : FieldOfPlace(place).substr(3);
    expected.replace(static_cast<std::size_t>(place[1]), size, value);
    EXPECT_TRUE(BytesOfValue(Decode(WireTerminator() + FieldOfPlace(place))) == expected);
  }
}

TEST(OrderImplTest, EndsSectionsAtTheirTerminators) {
  // A value in the key section is skipped whole, a mark in it included; a master's number changes nothing.
  const std::string key = WireU16(10002, 8001) + WireText(55100, "a" + WireU32(20009, 9)) + WireU32(20009, 7) +
                          WireU32(20011, 8) + WireText(55001, "USER1") + WireTerminator();
  const OrderRecord record = Decode(key + WireU32(20007, 0x23232323) + WireU32(20014, 150) + WireU32(20084, 3) +
                                    WireTerminator() + WireU32(20014, 151));
  EXPECT_EQ(+record.VELDOrderID, 7u);
  EXPECT_EQ(+record.OrderID, 8u);
  EXPECT_STREQ(record.UserID, "USER1");
  EXPECT_STREQ(record.ExchangeOrderNo, "");
  EXPECT_EQ(+record.Quantity, 150u);
  EXPECT_EQ(+record.ProductType, 3u);
}

TEST(OrderImplTest, ReplacesTheKeySectionByAStoredOrder) {
  const std::string wire = WireU32(20009, 7) + WireText(55001, "wire");
  for (const bool terminated : {true, false}) {
    CQOROrderImpl impl;
    OrderRecord stored{};
    stored.VELDOrderID = 7;
    std::strcpy(stored.UserID, "stored");
    impl.StoreRecord(stored);
    const ExactBytes bytes(wire + (terminated ? WireTerminator() : ""));
    CQORPacketReader reader(bytes.Data(), bytes.Size());
    OrderRecord record{};
    impl.DecodeMessage(reader, record);
    EXPECT_STREQ(record.UserID, terminated ? "stored" : "wire");
    impl.ClearRecords();
    EXPECT_FALSE(impl.FetchRecord(7, record));
  }
}

TEST(OrderImplTest, EncodesWhatItDecodes) {
  std::string body = WireTerminator();
  for (const auto& place : kPlaces) body += FieldOfPlace(place);
  const OrderRecord record = Decode(body);
  for (const bool fixed : {false, true}) {
    CQORPacketWriter writer(0);
    CQOROrderImpl().EncodeRecord(writer, record, fixed, 8001);
    const std::string wire(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
    EXPECT_TRUE(wire.substr(10).starts_with(WireU16(10002, 8001) + WireHead(20009) + "\1\2\3\4" + WireHead(20011) +
                                            "\1\2\3\4" + WireText(55001, std::string(20, 'x')) + WireTerminator() +
                                            WireU8(101, 1) + WireU8(102, 1)));
    EXPECT_TRUE(BytesOfValue(Decode(wire.substr(10))) == BytesOfValue(record));
    for (std::size_t size = 10; size < wire.size(); ++size) Decode(wire.substr(10, size - 10));
  }
}

TEST(OrderImplTest, WritesTheMasterForItsSecurity) {
  const SecurityMaster master{77, "MX", "MID", "MTYPE", "MSYM", "MEXP", "PE", "Master name", 1.5, 2.5};
  OrderRecord record{};
  record.ProductType = 1;
  OrderRecord expected = record;
  record.MasterRecord = &master;
  std::strcpy(expected.Exchange, "MX");
  std::strcpy(expected.SecurityID, "MID");
  std::strcpy(expected.SecurityType, "MTYPE");
  std::strcpy(expected.Symbol, "MSYM");
  std::strcpy(expected.ExpiryDate, "MEXP");
  std::strcpy(expected.OptionType, "PE");
  expected.StrikePrice = 1.5;
  CQORPacketWriter writer(0);
  CQOROrderImpl().EncodeRecord(writer, record, false, 8001);
  EXPECT_TRUE(BytesOfValue(Decode({writer.GetData() + 10, writer.GetData() + writer.GetSize()})) ==
              BytesOfValue(expected));
}

}  // namespace
