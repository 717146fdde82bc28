#include "trade_data/trade_impl.h"

#include <algorithm>

#include "trade_data/ada_write_async.h"
#include "trade_data/trade_fields.h"

namespace {

std::uint8_t* BytesOf(TradeRecord& record) noexcept {
  return reinterpret_cast<std::uint8_t*>(&record);
}

}  // namespace

void CQORTradeImpl::DecodeKeySection(CQORPacketReader& reader, TradeRecord& record) {
  FieldCursor cursor = reader.Place();
  bool terminated = false;
  while (!terminated && cursor.NextTag(reader.Tag)) {
    terminated = reader.Tag == kSectionTerminator;
    if (const std::size_t row = kTradeKeyIndex.RowOf(reader.Tag); row < std::size(kTradeKeyFields))
      ReadField(cursor, kTradeKeyFields[row], BytesOf(record));
    // No other value is skipped here, but searched for the next field: alone among the decoders, and kept.
  }
  reader.GoTo(cursor);
  if (terminated && record.VELDTradeID != 0) FetchRecord(TradeIdOf(record), record);
}

void CQORTradeImpl::DecodeBody(CQORPacketReader& reader, TradeRecord& record) const noexcept {
  ReadFields(reader, kTradeBodyFields, kTradeBodyIndex, BytesOf(record));
  if (record.ProductType == 0) record.ProductType = 1;
}

void CQORTradeImpl::DecodeMessage(CQORPacketReader& reader, TradeRecord& record) {
  DecodeKeySection(reader, record);
  DecodeBody(reader, record);
}

void CQORTradeImpl::LoadRecord(CQORPacketReader& reader) {
  TradeRecord record{};
  DecodeMessage(reader, record);
  StoreRecordUnlocked(record);
  LargestTradeID = std::max(LargestTradeID.load(), TradeIdOf(record));
}

bool CQORTradeImpl::FetchRecord(std::int32_t tradeId, TradeRecord& record) {
  if (!HoldsRecords) return false;
  const QOR::Thread::CQORLockGuard guard(Lock);
  const auto found = Records.find(tradeId);
  if (found == Records.end()) return false;
  record = found->second;
  return true;
}

void CQORTradeImpl::StoreRecord(const TradeRecord& record) {
  const QOR::Thread::CQORLockGuard guard(Lock);
  StoreRecordUnlocked(record);
}

void CQORTradeImpl::StoreRecordUnlocked(const TradeRecord& record) {
  Records.insert_or_assign(TradeIdOf(record), record);
  HoldsRecords = true;
}

void CQORTradeImpl::ClearRecords() {
  const QOR::Thread::CQORLockGuard guard(Lock);
  Records.clear();
  HoldsRecords = false;
}

std::int32_t CQORTradeImpl::NextTradeID() noexcept {
  return ++LargestTradeID;
}

void CQORTradeImpl::SetWriterHandle(QOR::Base::CQORADAWriteAsync* writer) noexcept {
  WriterHandle = writer;
}

bool CQORTradeImpl::SaveRecord(const TradeRecord& record, std::uint16_t messageNumber, std::uint16_t mode) {
  if (WriterHandle == nullptr) return false;
  CQORPacketWriter message(mode);
  EncodeRecord(message, record, false, messageNumber, false);
  message.Finish();
  return WriterHandle->Write({message.GetData(), message.GetSize()});
}
