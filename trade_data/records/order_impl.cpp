#include "trade_data/records/order_impl.h"

namespace {

// The second section ends at a terminator too, unlike the body of a trade.
constexpr SectionRules kOrderSection{true, true};

}  // namespace

void CQOROrderImpl::DecodeKeySection(CQORPacketReader& reader, OrderRecord& record) {
  if (ReadFields<kOrderSection>(reader, kOrderKeyFields, kOrderKeyIndex, &record))
    FetchRecord(record.VELDOrderID, record);
}

void CQOROrderImpl::DecodeBody(CQORPacketReader& reader, OrderRecord& record) const noexcept {
  ReadFields<kOrderSection>(reader, kOrderBodyFields, kOrderBodyIndex, &record);
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
