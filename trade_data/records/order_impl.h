// CQOROrderImpl: turns order messages into records and back, and can hold records of its own by VELDOrderID. The twin
// of CQORTradeImpl. In the plug-in, which shows trades only, no message reaches it and its store stays empty. The
// decoders touch only the reader and the caller's record; the store's operations hold the instance's lock.
#pragma once

#include <cstdint>
#include <map>

#include "host_link/messages/packet_writer.h"
#include "trade_data/record_files/file_impl.h"
#include "trade_data/records/order_record.h"

class CQOROrderImpl : public QOR::Base::CQORFileImpl {
 public:
  // Decodes one stored message and stores its record.
  void LoadRecord(CQORPacketReader& reader) override;
  // Writes a record as the fields of a message of that number. With fixed true every text takes its whole limit.
  virtual void EncodeRecord(CQORPacketWriter& writer, const OrderRecord& record, bool fixed,
                            std::uint16_t messageNumber) const noexcept;
  // The second section of an order message, up to and with its terminator.
  virtual void DecodeBody(CQORPacketReader& reader, OrderRecord& record) const noexcept;
  virtual void DecodeMessage(CQORPacketReader& reader, OrderRecord& record);
  // Copies the stored record of that id; false, with the record as it was, when there is none.
  virtual bool FetchRecord(std::uint32_t orderId, OrderRecord& record);
  // The first section, up to and with its terminator. A record stored under the id then replaces all that was read.
  virtual void DecodeKeySection(CQORPacketReader& reader, OrderRecord& record);
  virtual void StoreRecord(const OrderRecord& record);
  virtual void ClearRecords();

 private:
  QOR::Thread::CQORLock Lock;
  std::map<std::uint32_t, OrderRecord> Records;
};
