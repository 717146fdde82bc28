// OrderRecord, the flat record of one order, the fields of its message, and CQOROrderImpl, which decodes, encodes and
// stores records. The plug-in shows only trades: no message reaches it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "foundations/qor_lock.h"
#include "host_link/messages/wire_fields.h"
#include "trade_data/record_files/file_impl.h"
#include "trade_data/records/trade_record.h"

// The twin of TradeRecord. Packed, 1316 bytes. A field means the same as the field with its tag in TradeRecord; those
// named after their tag are kept and not used. Texts hold one character less than their size. Decoders require a zeroed
// record.
#pragma pack(push, 1)
struct OrderRecord {
  std::uint32_t Value20083;
  char UserID[21];
  char ManagerID[21];
  std::uint32_t VELDOrderID;
  std::uint32_t OrderID;
  std::uint32_t Reserved;
  std::uint32_t Value20010;
  char ExchangeOrderNo[33];
  char Text55099[33];
  char OrderTime[23];
  char ExchangeOrderTime[23];
  char Exchange[49];
  char SecurityID[49];
  char SecurityType[17];
  char Symbol[33];
  char ExpiryDate[33];
  char OptionType[17];
  double StrikePrice;
  std::uint8_t Value104;
  std::uint64_t Value50003;
  std::uint8_t Side;
  std::uint32_t Value20012;
  std::uint32_t PendingQuantity;
  std::uint32_t Quantity;
  std::uint32_t Value20015;
  double Price;
  double Value40003;
  char ClientID[21];
  char MemberID[21];
  char Text55134[21];
  char CTCLID[21];
  std::uint8_t OrderType;
  std::uint8_t Value107;
  std::uint8_t Value108;
  std::uint32_t ProductType;
  char TerminalInfo[25];
  char Pancard[17];
  char AlgoID[17];
  std::uint16_t AlgoCategory;
  char ParticipantID[17];
  std::uint8_t Value5011;
  std::uint8_t Value5012;
  char Text55178[21];
  char Text55179[21];
  std::uint32_t Value20052;
  char ReferenceText[65];
  char Text55111[513];
  std::uint16_t Value11111;
  std::uint32_t Value20066;
  std::uint32_t StrategyID;
  std::uint32_t Value20081;
  std::uint32_t Value20082;
  char Text55151[33];
  std::uint8_t Value113;
  std::uint8_t OpenClose;
  std::uint8_t Spare[21];
  const SecurityMaster* MasterRecord;
  double Value40049;
  std::uint32_t Value20101;
  std::uint8_t Tail[5];
};
#pragma pack(pop)

static_assert(sizeof(OrderRecord) == 1316 && alignof(OrderRecord) == 1);
static_assert(offsetof(OrderRecord, VELDOrderID) == 46 && offsetof(OrderRecord, ExchangeOrderNo) == 62 &&
              offsetof(OrderRecord, Exchange) == 174 && offsetof(OrderRecord, StrikePrice) == 372 &&
              offsetof(OrderRecord, Value50003) == 381 && offsetof(OrderRecord, Price) == 406 &&
              offsetof(OrderRecord, ProductType) == 509 && offsetof(OrderRecord, AlgoCategory) == 572 &&
              offsetof(OrderRecord, Text55111) == 704 && offsetof(OrderRecord, StrategyID) == 1223 &&
              offsetof(OrderRecord, Spare) == 1270 && offsetof(OrderRecord, MasterRecord) == 1291 &&
              offsetof(OrderRecord, Value20101) == 1307 && offsetof(OrderRecord, Tail) == 1311);

// Tag, kind and place of every field of an order message, sorted by tag.
//
//   order message := 10002 key-section body-section
//   key-section   := 55001 20009 20011 65535
//   body-section  := every other field, to a 65535 or the end of the message
inline constexpr WireField kOrderKeyFields[] = {
    {20009, Field::U32, offsetof(OrderRecord, VELDOrderID)},
    {20011, Field::U32, offsetof(OrderRecord, OrderID)},
    {55001, Field::Text, offsetof(OrderRecord, UserID), 20},
};
static_assert(FieldsFit(kOrderKeyFields, sizeof(OrderRecord)));

// The fields of the key section are read here as well.
inline constexpr WireField kOrderBodyFields[] = {
    {101, Field::U8, offsetof(OrderRecord, Side)},
    {102, Field::U8, offsetof(OrderRecord, OrderType)},
    {104, Field::U8, offsetof(OrderRecord, Value104)},
    {107, Field::U8, offsetof(OrderRecord, Value107)},
    {108, Field::U8, offsetof(OrderRecord, Value108)},
    {113, Field::U8, offsetof(OrderRecord, Value113)},
    {115, Field::U8, offsetof(OrderRecord, OpenClose)},
    {5011, Field::U8, offsetof(OrderRecord, Value5011)},
    {5012, Field::U8, offsetof(OrderRecord, Value5012)},
    {11111, Field::U16, offsetof(OrderRecord, Value11111)},
    {11115, Field::U16, offsetof(OrderRecord, AlgoCategory)},
    {20007, Field::Dropped32, 0},  // the number of a master record; none is attached here
    {20009, Field::U32, offsetof(OrderRecord, VELDOrderID)},
    {20010, Field::U32, offsetof(OrderRecord, Value20010)},
    {20011, Field::U32, offsetof(OrderRecord, OrderID)},
    {20012, Field::U32, offsetof(OrderRecord, Value20012)},
    {20013, Field::U32, offsetof(OrderRecord, PendingQuantity)},
    {20014, Field::U32, offsetof(OrderRecord, Quantity)},
    {20015, Field::U32, offsetof(OrderRecord, Value20015)},
    {20052, Field::U32, offsetof(OrderRecord, Value20052)},
    {20066, Field::U32, offsetof(OrderRecord, Value20066)},
    {20068, Field::U32, offsetof(OrderRecord, StrategyID)},
    {20081, Field::U32, offsetof(OrderRecord, Value20081)},
    {20082, Field::U32, offsetof(OrderRecord, Value20082)},
    {20083, Field::U32, offsetof(OrderRecord, Value20083)},
    {20084, Field::U32, offsetof(OrderRecord, ProductType)},
    {20101, Field::U32, offsetof(OrderRecord, Value20101)},
    {40002, Field::Double, offsetof(OrderRecord, Price)},
    {40003, Field::Double, offsetof(OrderRecord, Value40003)},
    {40004, Field::Double, offsetof(OrderRecord, StrikePrice)},
    {40049, Field::Double, offsetof(OrderRecord, Value40049)},
    {50003, Field::U64, offsetof(OrderRecord, Value50003)},
    {55001, Field::Text, offsetof(OrderRecord, UserID), 20},
    {55010, Field::Text, offsetof(OrderRecord, Exchange), 48},
    {55012, Field::Text, offsetof(OrderRecord, CTCLID), 20},
    {55018, Field::Text, offsetof(OrderRecord, ManagerID), 20},
    {55099, Field::Text, offsetof(OrderRecord, Text55099), 32},
    {55100, Field::Text, offsetof(OrderRecord, ExchangeOrderNo), 32},
    {55102, Field::Text, offsetof(OrderRecord, ClientID), 20},
    {55103, Field::Text, offsetof(OrderRecord, Symbol), 32},
    {55104, Field::Text, offsetof(OrderRecord, SecurityID), 48},
    {55105, Field::Text, offsetof(OrderRecord, SecurityType), 16},
    {55106, Field::Text, offsetof(OrderRecord, OptionType), 16},
    {55109, Field::Text, offsetof(OrderRecord, ReferenceText), 64},
    {55111, Field::Text, offsetof(OrderRecord, Text55111), 512},
    {55116, Field::Text, offsetof(OrderRecord, OrderTime), 22},
    {55117, Field::Text, offsetof(OrderRecord, ExchangeOrderTime), 22},
    {55123, Field::Text, offsetof(OrderRecord, Pancard), 16},
    {55124, Field::Text, offsetof(OrderRecord, TerminalInfo), 24},
    {55131, Field::Text, offsetof(OrderRecord, MemberID), 20},
    {55134, Field::Text, offsetof(OrderRecord, Text55134), 20},
    {55143, Field::Text, offsetof(OrderRecord, ExpiryDate), 32},
    {55151, Field::Text, offsetof(OrderRecord, Text55151), 32},
    {55178, Field::Text, offsetof(OrderRecord, Text55178), 20},
    {55179, Field::Text, offsetof(OrderRecord, Text55179), 20},
    {55328, Field::Text, offsetof(OrderRecord, AlgoID), 16},
    {55329, Field::Text, offsetof(OrderRecord, ParticipantID), 16},
};
static_assert(FieldsFit(kOrderBodyFields, sizeof(OrderRecord)));

inline constexpr FieldIndex kOrderKeyIndex(kOrderKeyFields);
inline constexpr FieldIndex kOrderBodyIndex(kOrderBodyFields);

// The twin of CQORTradeImpl, with records by VELDOrderID. The decoders use only the reader and the caller's record; the
// store's operations hold the instance's lock.
class CQOROrderImpl : public QOR::Base::CQORFileImpl {
 public:
  // Decodes one stored message and stores its record.
  void LoadRecord(CQORPacketReader& reader) override;
  // Writes a record as a message of that number. With fixed true every text has its whole limit.
  virtual void EncodeRecord(CQORPacketWriter& writer, const OrderRecord& record, bool fixed,
                            std::uint16_t messageNumber) const noexcept;
  // The second section of an order message, with its terminator.
  virtual void DecodeBody(CQORPacketReader& reader, OrderRecord& record) const noexcept;
  virtual void DecodeMessage(CQORPacketReader& reader, OrderRecord& record);
  // Copies the stored record of that id. False, with the record unchanged, without one.
  virtual bool FetchRecord(std::uint32_t orderId, OrderRecord& record);
  // The first section, with its terminator. A record that is stored under the id then replaces everything read.
  virtual void DecodeKeySection(CQORPacketReader& reader, OrderRecord& record);
  virtual void StoreRecord(const OrderRecord& record);
  virtual void ClearRecords();

 private:
  QOR::Thread::CQORLock Lock;
  std::map<std::uint32_t, OrderRecord> Records;
};
