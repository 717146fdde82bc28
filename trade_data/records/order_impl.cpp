#include "trade_data/records/order_impl.h"

#include "trade_data/records/order_record.h"
#include "trade_data/records/trade_fields.h"

namespace {

std::uint8_t* BytesOf(OrderRecord& record) noexcept {
  return reinterpret_cast<std::uint8_t*>(&record);
}

// The decoder loop of one section; true when its terminator was met. Here a terminator ends the body too, where the
// body of a trade goes on.
template <std::size_t Count>
bool ReadSection(CQORPacketReader& reader, const WireField (&fields)[Count], const FieldIndex<Count>& index,
                 OrderRecord& record) noexcept {
  FieldCursor cursor = reader.Place();
  bool terminated = false;
  while (!terminated && cursor.NextTag(reader.Tag)) {
    terminated = reader.Tag == kSectionTerminator;
    if (const std::size_t row = index.RowOf(reader.Tag); row < Count)
      ReadField(cursor, fields[row], BytesOf(record));
    else
      cursor.SkipValue(reader.Tag);
  }
  reader.GoTo(cursor);
  return terminated;
}

// The record with its security's fields as its master, if any, has them.
OrderRecord WithMasterFields(const OrderRecord& record) noexcept {
  OrderRecord merged = record;
  if (const SecurityMaster* master = record.MasterRecord; master != nullptr) {
    std::memcpy(merged.Exchange, master->Exchange, sizeof merged.Exchange);
    std::memcpy(merged.SecurityID, master->SecurityID, sizeof merged.SecurityID);
    std::memcpy(merged.SecurityType, master->SecurityType, sizeof merged.SecurityType);
    std::memcpy(merged.Symbol, master->Symbol, sizeof merged.Symbol);
    std::memcpy(merged.ExpiryDate, master->ExpiryDate, sizeof merged.ExpiryDate);
    std::memcpy(merged.OptionType, master->OptionType, sizeof merged.OptionType);
    merged.StrikePrice = master->StrikePrice;
  }
  return merged;
}

}  // namespace

void CQOROrderImpl::DecodeKeySection(CQORPacketReader& reader, OrderRecord& record) {
  if (ReadSection(reader, kOrderKeyFields, kOrderKeyIndex, record)) FetchRecord(record.VELDOrderID, record);
}

void CQOROrderImpl::DecodeBody(CQORPacketReader& reader, OrderRecord& record) const noexcept {
  ReadSection(reader, kOrderBodyFields, kOrderBodyIndex, record);
  if (record.ProductType == 0) record.ProductType = 1;
}

void CQOROrderImpl::DecodeMessage(CQORPacketReader& reader, OrderRecord& record) {
  DecodeKeySection(reader, record);
  DecodeBody(reader, record);
}

void CQOROrderImpl::LoadRecord(CQORPacketReader& reader) {
  OrderRecord record{};
  DecodeMessage(reader, record);
  StoreRecord(record);
}

void CQOROrderImpl::EncodeRecord(CQORPacketWriter& writer, const OrderRecord& record, bool fixed,
                                 std::uint16_t messageNumber) const noexcept {
  const OrderRecord merged = WithMasterFields(record);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&merged);
  writer.AddU16(10002, messageNumber);
  for (const WireField& field : kOrderKeyFields) AddField(writer, field, bytes, fixed);
  writer.AddTerminator();
  for (const WireField& field : kOrderBodyFields)
    if (kOrderKeyIndex.RowOf(field.Tag) == std::size(kOrderKeyFields)) AddField(writer, field, bytes, fixed);
}

bool CQOROrderImpl::FetchRecord(std::uint32_t orderId, OrderRecord& record) {
  const QOR::Thread::CQORLockGuard guard(Lock);
  const auto found = Records.find(orderId);
  if (found == Records.end()) return false;
  record = found->second;
  return true;
}

void CQOROrderImpl::StoreRecord(const OrderRecord& record) {
  const QOR::Thread::CQORLockGuard guard(Lock);
  Records.insert_or_assign(+record.VELDOrderID, record);
}

void CQOROrderImpl::ClearRecords() {
  const QOR::Thread::CQORLockGuard guard(Lock);
  Records.clear();
}
