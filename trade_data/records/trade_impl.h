// CQORTradeImpl decodes and encodes trade messages, stores records by VELDTradeID and saves them to a record file. The
// decoders use only the reader and the caller's record; the store's operations hold the instance's lock.
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
