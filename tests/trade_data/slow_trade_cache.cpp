#include "tests/trade_data/slow_trade_cache.h"

#include <algorithm>
#include <iterator>

#include "tests/support/sample_trade.h"

namespace {

// The bytes of fields that are not read yet.
class SlowReader {
 public:
  explicit SlowReader(std::string_view bytes) : Rest(bytes) {}

  // The next field's tag, -1 at the end.
  int NextTag() {
    const std::size_t mark = Rest.find('#');
    Rest.remove_prefix(mark == std::string_view::npos ? Rest.size() : mark + 1);
    return TakeU16();
  }

  // The next bytes, so many of them; empty, and nothing is taken, if there are fewer.
  std::string Take(std::size_t width) {
    if (Rest.size() < width) return {};
    const std::string taken(Rest.substr(0, width));
    Rest.remove_prefix(width);
    return taken;
  }

  void TakeInto(const SampleField& field, TradeRecord& record) {
    char* place = reinterpret_cast<char*>(&record) + field.Offset;
    const int count = field.IsText() ? TakeU16() : static_cast<int>(field.Value.size());
    if (count < 0) return;
    const std::size_t width = field.IsText() ? std::min<std::size_t>(static_cast<std::size_t>(count), field.Limit)
                                             : static_cast<std::size_t>(count);
    if (Rest.size() < width) return;
    std::string value = Take(width);
    if (width < field.Limit) value += '\0';
    value.copy(place, value.size());
  }

  void Skip(int tag) {
    static const std::map<int, std::size_t> widths = {{0, 0},     {1, 1},     {10001, 2},  {20001, 4}, {30001, 8},
                                                      {35001, 4}, {40001, 8}, {45001, 16}, {50001, 8}, {65001, 0}};
    const bool counted = tag > 55000 && tag <= 65000;
    const int count = counted ? TakeU16() : 0;
    Take(counted ? static_cast<std::size_t>(std::max(count, 0)) : std::prev(widths.upper_bound(tag))->second);
  }

 private:
  int TakeU16() {
    const std::string bytes = Take(2);
    return bytes.empty() ? -1 : static_cast<unsigned char>(bytes[0]) + 256 * static_cast<unsigned char>(bytes[1]);
  }

  std::string_view Rest;
};

bool IsKeyField(const SampleField* field) {
  return field != nullptr && field < kSampleFields + kSampleKeyFields;
}

const std::set<int> kAmendable = {101, 55001, 55010, 55012, 55018, 55100, 55102, 55104, 55109, 55131};

}  // namespace

TradeRecord SlowDecodeTrade(std::string_view body) {
  TradeRecord record{};
  SlowReader reader(body);
  for (int tag = reader.NextTag(); tag != -1 && tag != 65535; tag = reader.NextTag()) {
    if (const SampleField* field = FindSampleField(tag); IsKeyField(field)) reader.TakeInto(*field, record);
    if (tag == 10002) reader.Take(2);
  }
  for (int tag = reader.NextTag(); tag != -1; tag = reader.NextTag()) {
    const SampleField* field = FindSampleField(tag);
    if (field == nullptr || IsKeyField(field))
      reader.Skip(tag);
    else
      reader.TakeInto(*field, record);
  }
  if (record.ProductType == 0) record.ProductType = 1;
  return record;
}

void SlowTradeCache::Handle(unsigned number, std::string_view body) {
  if (number == 8111 || number == 9101) Trade(SlowDecodeTrade(body));
  if (number == 9112) Amend(body);
  if (number == 8112) EndDownload();
  if (number == 30022) Clear();
  if (number == kReopenDownload) DownloadComplete = false;
}

void SlowTradeCache::Trade(const TradeRecord& record) {
  if (!KnownExecutions.insert(std::string(record.ExchangeOrderNo) + record.ExchangeTradeID).second) return;
  const std::int32_t id = TradeIdOf(record);
  if (!DownloadComplete) {
    Pending[id] = record;
    return;
  }
  if (Live.insert_or_assign(id, record).second) {
    Rows[NextNumber--] = id;
    TellBooks(record);
  }
  GridsRefreshed = false;
}

void SlowTradeCache::TellBooks(const TradeRecord& record) {
  for (const auto& [key, book] : Books) {
    Told.push_back(CallWith(key, "admit", record));
    if (record.Side != book.RefusedSide) Told.push_back(CallWith(key, "totals", record));
  }
}

void SlowTradeCache::Merge() {
  for (const auto& [id, record] : Pending) {
    if (!Live.insert_or_assign(id, record).second) continue;
    for (; !Rows.empty() && TradeIdOf(Live[Rows.begin()->second]) > id; ++NextNumber) Rows.erase(Rows.begin());
    Rows[NextNumber--] = id;
  }
  Pending.clear();
}

void SlowTradeCache::EndDownload() {
  DownloadComplete = true;
  Merge();
  std::string rows;
  for (const auto& [number, id] : Rows) rows += std::to_string(number) + BytesOfValue(Live[id]);
  for (const auto& [key, book] : Books) Told.push_back({key + " copy", rows + std::to_string(NextNumber)});
  GridsRefreshed = false;
}

void SlowTradeCache::Clear() {
  Rows.clear();
  Pending.clear();
  Live.clear();
  KnownExecutions.clear();
  DownloadComplete = false;
  for (const auto& [key, book] : Books) Told.push_back({key + " clear", ""});
}

void SlowTradeCache::Amend(std::string_view body) {
  std::map<int, std::string> numbers;
  SlowReader reader(body);
  for (int tag = reader.NextTag(); tag != -1; tag = reader.NextTag()) {
    if (tag == 20008 || tag == 20084 || tag == 20103 || tag == 20104) {
      if (const std::string value = reader.Take(4); !value.empty()) numbers[tag] = value;
    } else if (kAmendable.contains(tag)) {
      reader.TakeInto(*FindSampleField(tag), AmendRecord);
    } else {
      reader.Skip(tag);
    }
  }
  const auto number = [&](int tag) {
    return numbers.contains(tag) ? LoadValue<std::uint32_t>(numbers[tag].data()) : 0;
  };
  const auto id = static_cast<std::int32_t>(number(20008));
  AmendCopy = AmendRecord;
  if (Live.empty()) return;
  if (!Live.contains(id)) {
    AmendCopy.VELDTradeID = number(20008);
    AmendCopy.ProductType = number(20084);
    AmendCopy.Quantity = number(20104);
    if (number(20104) != 0) AmendUnknown(id);
    return;
  }
  TradeRecord& stored = Live[id];
  if (number(20103) != 0) stored.Quantity = number(20103);
  stored.ProductType = number(20084);
  AmendRecord = stored;
  for (std::size_t times = number(20103) != 0 ? Books.size() : 1; times > 0; --times) TellBooks(stored);
  Pending[TradeIdOf(AmendRecord)] = AmendRecord;
  Merge();
  GridsRefreshed = false;
}

void SlowTradeCache::AmendUnknown(std::int32_t tradeId) {
  if (!KnownExecutions.insert(std::string(AmendCopy.ExchangeOrderNo) + AmendRecord.ExchangeTradeID).second) return;
  if (!DownloadComplete) Pending[tradeId] = AmendRecord;
  if (!DownloadComplete || Books.empty()) return;
  for (const auto& [key, book] : Books) {
    if (book.FilterActive) {
      Told.push_back(CallWith(key, "refilter", AmendCopy));
    } else if (Live.insert_or_assign(tradeId, AmendCopy).second) {
      Rows[NextNumber--] = tradeId;
      TellBooks(AmendCopy);
    }
  }
  GridsRefreshed = false;
}
