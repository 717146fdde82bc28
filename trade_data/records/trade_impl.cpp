#include "trade_data/records/trade_impl.h"

#include <algorithm>
#include <span>

namespace {

// Intentional: values of unknown tags are not skipped, unlike in every other section, so a field inside one is read.
constexpr SectionRules kTradeKeySection{true, false};

// The order of the fields on the wire. The decoders do not depend on it, but stored files and other readers do.
constexpr std::uint16_t kKeyOrder[] = {55001, 20008, 20009, 55101, 55100};
constexpr std::uint16_t kSecurityOrder[] = {55010, 55104, 55105, 55103, 55143, 55106, 40004, 40008, 55107};
constexpr std::size_t kSecurityNameFields = 1;  // 55107, which only the fixed form carries
// Intentional: 55109 twice; readers of the format expect it last.
constexpr std::uint16_t kTradeOrder[] = {55118, 20011, 55116, 55117, 101,   102,   20084, 20014, 20013, 20036,
                                         40002, 55018, 55102, 55131, 55012, 55109, 20068, 20081, 20082, 55151,
                                         115,   20101, 55124, 55123, 55328, 11115, 55329, 55109};

const WireField& FieldOf(std::uint16_t tag) noexcept {
  const std::size_t keyRow = kTradeKeyIndex.RowOf(tag);
  return keyRow < std::size(kTradeKeyFields) ? kTradeKeyFields[keyRow] : kTradeBodyFields[kTradeBodyIndex.RowOf(tag)];
}

constexpr bool HasField(std::uint16_t tag) {
  return kTradeKeyIndex.RowOf(tag) < std::size(kTradeKeyFields) ||
         kTradeBodyIndex.RowOf(tag) < std::size(kTradeBodyFields);
}

constexpr bool HasFields(std::span<const std::uint16_t> tags) {
  for (const std::uint16_t tag : tags)
    if (!HasField(tag)) return false;
  return true;
}
static_assert(HasFields(kKeyOrder) && HasFields(kSecurityOrder) && HasFields(kTradeOrder));

void AddFields(CQORPacketWriter& writer, std::span<const std::uint16_t> tags, const TradeRecord& record,
               bool fixed) noexcept {
  for (const std::uint16_t tag : tags)
    AddField(writer, FieldOf(tag), reinterpret_cast<const std::uint8_t*>(&record), fixed);
}

}  // namespace

void CQORTradeImpl::DecodeKeySection(CQORPacketReader& reader, TradeRecord& record) {
  if (ReadFields<kTradeKeySection>(reader, kTradeKeyFields, kTradeKeyIndex, &record) && record.VELDTradeID != 0)
    FetchRecord(TradeIdOf(record), record);
}

void CQORTradeImpl::DecodeBody(CQORPacketReader& reader, TradeRecord& record) const noexcept {
  ReadFields(reader, kTradeBodyFields, kTradeBodyIndex, &record);
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

void CQORTradeImpl::EncodeRecord(CQORPacketWriter& writer, const TradeRecord& record, bool fixed,
                                 std::uint16_t messageNumber, bool useMasterId) const noexcept {
  const SecurityMaster* master = record.MasterRecord;
  writer.AddU16(10002, messageNumber);
  AddFields(writer, kKeyOrder, record, fixed);
  writer.AddTerminator();
  if (!fixed && useMasterId && master != nullptr && master->SecurityNumber != 0) {
    writer.AddU32(20007, master->SecurityNumber);
  } else {
    const std::size_t left = fixed ? 0 : kSecurityNameFields;
    AddFields(writer, std::span(kSecurityOrder).first(std::size(kSecurityOrder) - left), WithMasterFields(record),
              fixed);
  }
  AddFields(writer, kTradeOrder, record, fixed);
}
