// CQORTradeImpl: turns trade messages into records and back, and can hold records of its own by VELDTradeID and keep
// them in a record file. The decoders touch only the reader and the caller's record; the store's operations hold the
// instance's lock.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>

#include "foundations/qor_lock.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "trade_data/record_files/ada_write_async.h"
#include "trade_data/record_files/file_impl.h"
#include "trade_data/records/trade_record.h"

namespace QOR::Base {
class CQORADAWriteAsync;
}

class CQORTradeImpl : public QOR::Base::CQORFileImpl {
 public:
  // Decodes one stored message and stores its record; the largest VELDTradeID seen is kept.
  void LoadRecord(CQORPacketReader& reader) override;
  // The helper that SaveRecord hands messages to, made for this file and its BufferStore; null for none. It ends before
  // the record file does.
  virtual void SetWriterHandle(QOR::Base::CQORADAWriteAsync* writer) noexcept;
  // Writes a record as the fields of a message of that number. With fixed true every text takes its whole limit. A
  // record of a numbered master names it by tag 20007 alone, if useMasterId is true and fixed false.
  virtual void EncodeRecord(CQORPacketWriter& writer, const TradeRecord& record, bool fixed,
                            std::uint16_t messageNumber, bool useMasterId) const noexcept;
  // The second section of a trade message: everything to its end.
  virtual void DecodeBody(CQORPacketReader& reader, TradeRecord& record) const noexcept;
  virtual void DecodeMessage(CQORPacketReader& reader, TradeRecord& record);
  // Copies the stored record of that id; false, with the record as it was, when there is none.
  virtual bool FetchRecord(std::int32_t tradeId, TradeRecord& record);
  // The first section, up to and with its terminator. A record stored under the id then replaces all that was read.
  virtual void DecodeKeySection(CQORPacketReader& reader, TradeRecord& record);
  virtual void StoreRecord(const TradeRecord& record);
  virtual void StoreRecordUnlocked(const TradeRecord& record);
  virtual void ClearRecords();
  // Counts the largest id up by one and returns it; any thread.
  virtual std::int32_t NextTradeID() noexcept;

  // Hands the record to the file as a message of that number in that mode. False without a helper, or where the message
  // will not be written.
  bool SaveRecord(const TradeRecord& record, std::uint16_t messageNumber, std::uint16_t mode);
  QOR::Base::CQORADAStore& BufferStore() noexcept { return Buffers; }

 private:
  QOR::Thread::CQORLock Lock;
  std::atomic<std::int32_t> LargestTradeID{0};
  std::atomic<bool> HoldsRecords{false};  // lets FetchRecord answer for the empty store without the lock
  std::map<std::int32_t, TradeRecord> Records;
  QOR::Base::CQORADAWriteAsync* WriterHandle = nullptr;
  QOR::Base::CQORADAStore Buffers;
};
