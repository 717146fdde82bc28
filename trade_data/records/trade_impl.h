// The fields of a trade message, and CQORTradeImpl, which decodes, encodes, stores and saves records.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>

#include "foundations/qor_lock.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "host_link/messages/wire_fields.h"
#include "trade_data/record_files/ada_write_async.h"
#include "trade_data/record_files/file_impl.h"
#include "trade_data/records/trade_record.h"

// Tag, kind and place of every field of a trade message, sorted by tag: the key section's five and the body's others.
//
//   trade message := 10002 key-section body-section
//   key-section   := 55001 20008 20009 55101 55100 65535
//   body-section  := every other field, to the end of the message
inline constexpr WireField kTradeKeyFields[] = {
    {10002, Field::Dropped16, 0},  // the message number, which the reader has read
    {20008, Field::U32, offsetof(TradeRecord, VELDTradeID)},
    {20009, Field::U32, offsetof(TradeRecord, VELDOrderID)},
    {55001, Field::Text, offsetof(TradeRecord, UserID), 20},
    {55100, Field::Text, offsetof(TradeRecord, ExchangeOrderNo), 32},
    {55101, Field::Text, offsetof(TradeRecord, ExchangeTradeID), 32},
};
static_assert(FieldsFit(kTradeKeyFields, sizeof(TradeRecord)) && ReadsSection(9101, 0, kTradeKeyFields));

inline constexpr WireField kTradeBodyFields[] = {
    {101, Field::U8, offsetof(TradeRecord, Side)},
    {102, Field::U8, offsetof(TradeRecord, OrderType)},
    {115, Field::U8, offsetof(TradeRecord, OpenClose)},
    {11115, Field::U16, offsetof(TradeRecord, AlgoCategory)},
    {20007, Field::Dropped32, 0},  // the number of a master record; none is attached here
    {20011, Field::U32, offsetof(TradeRecord, OrderID)},
    {20013, Field::U32, offsetof(TradeRecord, PendingQuantity)},
    {20014, Field::U32, offsetof(TradeRecord, Quantity)},
    {20036, Field::U32, offsetof(TradeRecord, Value20036)},
    {20068, Field::U32, offsetof(TradeRecord, StrategyID)},
    {20081, Field::U32, offsetof(TradeRecord, Value20081)},
    {20082, Field::U32, offsetof(TradeRecord, Value20082)},
    {20083, Field::U32, offsetof(TradeRecord, Value20083)},
    {20084, Field::U32, offsetof(TradeRecord, ProductType)},
    {20101, Field::U32, offsetof(TradeRecord, Value20101)},
    {40002, Field::Double, offsetof(TradeRecord, Price)},
    {40004, Field::Double, offsetof(TradeRecord, StrikePrice)},
    {40008, Field::Double, offsetof(TradeRecord, Multiplier)},
    {55010, Field::Text, offsetof(TradeRecord, Exchange), 48},
    {55012, Field::Text, offsetof(TradeRecord, CTCLID), 20},
    {55018, Field::Text, offsetof(TradeRecord, ManagerID), 20},
    {55102, Field::Text, offsetof(TradeRecord, ClientID), 20},
    {55103, Field::Text, offsetof(TradeRecord, Symbol), 32},
    {55104, Field::Text, offsetof(TradeRecord, SecurityID), 48},
    {55105, Field::Text, offsetof(TradeRecord, SecurityType), 16},
    {55106, Field::Text, offsetof(TradeRecord, OptionType), 16},
    {55107, Field::Text, offsetof(TradeRecord, Text55107), 48},
    {55109, Field::Text, offsetof(TradeRecord, ReferenceText), 64},
    {55116, Field::Text, offsetof(TradeRecord, OrderTime), 22},
    {55117, Field::Text, offsetof(TradeRecord, ExchangeOrderTime), 22},
    {55118, Field::Text, offsetof(TradeRecord, ExchangeTradeTime), 22},
    {55123, Field::Text, offsetof(TradeRecord, Pancard), 16},
    {55124, Field::Text, offsetof(TradeRecord, TerminalInfo), 24},
    {55131, Field::Text, offsetof(TradeRecord, MemberID), 20},
    {55143, Field::Text, offsetof(TradeRecord, ExpiryDate), 32},
    {55151, Field::Text, offsetof(TradeRecord, Text55151), 32},
    {55328, Field::Text, offsetof(TradeRecord, AlgoID), 16},
    {55329, Field::Text, offsetof(TradeRecord, ParticipantID), 16},
};
static_assert(FieldsFit(kTradeBodyFields, sizeof(TradeRecord)) && ReadsSection(9101, 1, kTradeBodyFields));

inline constexpr FieldIndex kTradeKeyIndex(kTradeKeyFields);
inline constexpr FieldIndex kTradeBodyIndex(kTradeBodyFields);

// Decodes and encodes trade messages, stores records by VELDTradeID and saves them to a record file. The decoders use
// only the reader and the caller's record; the store's operations hold the instance's lock.
class CQORTradeImpl : public QOR::Base::CQORFileImpl {
 public:
  // Decodes one stored message, stores its record and remembers the largest VELDTradeID.
  void LoadRecord(CQORPacketReader& reader) override;
  // Gets the messages of SaveRecord; null for none. It is made for this file and its BufferStore and does not outlive
  // the file.
  virtual void SetWriterHandle(QOR::Base::CQORADAWriteAsync* writer) noexcept;
  // Writes a record as a message of that number. With fixed true every text has its whole limit. With useMasterId true
  // and fixed false, tag 20007 replaces the fields of a security that has a numbered master.
  virtual void EncodeRecord(CQORPacketWriter& writer, const TradeRecord& record, bool fixed,
                            std::uint16_t messageNumber, bool useMasterId) const noexcept;
  // The second section of a trade message, to its end.
  virtual void DecodeBody(CQORPacketReader& reader, TradeRecord& record) const noexcept;
  virtual void DecodeMessage(CQORPacketReader& reader, TradeRecord& record);
  // Copies the stored record of that id. False, with the record unchanged, without one.
  virtual bool FetchRecord(std::int32_t tradeId, TradeRecord& record);
  // The first section, with its terminator. A record that is stored under the id then replaces everything read.
  virtual void DecodeKeySection(CQORPacketReader& reader, TradeRecord& record);
  virtual void StoreRecord(const TradeRecord& record);
  virtual void StoreRecordUnlocked(const TradeRecord& record);
  virtual void ClearRecords();
  // Increments the largest id and returns it; any thread.
  virtual std::int32_t NextTradeID() noexcept;

  // Saves the record as a message of that number and mode. False without a writer, or if the message will not be
  // written.
  bool SaveRecord(const TradeRecord& record, std::uint16_t messageNumber, std::uint16_t mode);
  QOR::Base::CQORADAStore& BufferStore() noexcept { return Buffers; }

 private:
  QOR::Thread::CQORLock Lock;
  std::atomic<std::int32_t> LargestTradeID{0};
  std::atomic<bool> HoldsRecords{false};  // without records FetchRecord needs no lock
  std::map<std::int32_t, TradeRecord> Records;
  QOR::Base::CQORADAWriteAsync* WriterHandle = nullptr;
  QOR::Base::CQORADAStore Buffers;
};
