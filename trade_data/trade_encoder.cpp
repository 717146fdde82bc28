// The way of a record onto the wire: the order of the fields, which the decoders do not depend on but stored files and
// other readers do.
#include <cstring>
#include <span>

#include "trade_data/field_writer.h"
#include "trade_data/trade_fields.h"
#include "trade_data/trade_impl.h"

namespace {

constexpr std::uint16_t kKeyOrder[] = {55001, 20008, 20009, 55101, 55100};
constexpr std::uint16_t kSecurityOrder[] = {55010, 55104, 55105, 55103, 55143, 55106, 40004, 40008, 55107};
constexpr std::size_t kSecurityNameFields = 1;  // 55107, which only the fixed form carries
// 55109 stands twice: readers of the format expect it last.
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

// The record with its security's fields as its master, if any, has them.
TradeRecord WithMasterFields(const TradeRecord& record) noexcept {
  TradeRecord merged = record;
  if (const SecurityMaster* master = record.MasterRecord; master != nullptr) {
    std::memcpy(merged.Exchange, master->Exchange, sizeof merged.Exchange);
    std::memcpy(merged.SecurityID, master->SecurityID, sizeof merged.SecurityID);
    std::memcpy(merged.SecurityType, master->SecurityType, sizeof merged.SecurityType);
    std::memcpy(merged.Symbol, master->Symbol, sizeof merged.Symbol);
    std::memcpy(merged.ExpiryDate, master->ExpiryDate, sizeof merged.ExpiryDate);
    std::memcpy(merged.OptionType, master->OptionType, sizeof merged.OptionType);
    std::memcpy(merged.Text55107, master->Text55107, sizeof merged.Text55107);
    merged.StrikePrice = master->StrikePrice;
    merged.Multiplier = master->Multiplier;
  }
  return merged;
}

}  // namespace

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
