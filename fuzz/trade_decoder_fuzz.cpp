#include <algorithm>
#include <span>
#include <string_view>

#include "fuzz/fuzz_functions.h"
#include "tests/support/wire_bytes.h"
#include "tests/trade_data/slow_trade_cache.h"
#include "trade_data/records/trade_impl.h"

namespace {

TradeRecord Decode(std::string_view body) {
  const ExactBytes bytes(body);
  CQORPacketReader reader(bytes.Data(), bytes.Size());
  CQORTradeImpl decoder;
  TradeRecord record{};
  decoder.DecodeMessage(reader, record);
  return record;
}

TradeRecord EncodeAndDecode(const TradeRecord& record, bool fixed) {
  CQORPacketWriter writer(0);
  CQORTradeImpl().EncodeRecord(writer, record, fixed, 8111, false);
  return Decode({reinterpret_cast<const char*>(writer.GetData()) + 10, writer.GetSize() - 10u});
}

template <typename Act>
void EachText(TradeRecord& record, Act act) {
  for (const auto fields : {std::span<const WireField>(kTradeKeyFields), std::span<const WireField>(kTradeBodyFields)})
    for (const WireField& field : fields)
      if (field.Kind == Field::Text) act(reinterpret_cast<char*>(&record) + field.Offset, field.Limit + 1u);
}

}  // namespace

int FuzzTradeDecoder(const std::uint8_t* data, std::size_t size) {
  const std::string_view body(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 65535));
  TradeRecord record = Decode(body);
  EachText(record, [](const char* text, std::size_t room) {
    RequireProperty(std::find(text, text + room, '\0') != text + room, "every text ends with a NUL");
  });
  RequireProperty(record.ProductType != 0, "a product type is never 0");
  RequireProperty(record.Reserved == 0 && record.MasterRecord == nullptr, "what no tag names stays zero");
  RequireProperty(BytesOfValue(record) == BytesOfValue(SlowDecodeTrade(body)), "the slow decoder agrees");

  record.Value20083 = 0;  // the one field that is read and never written
  RequireProperty(BytesOfValue(EncodeAndDecode(record, true)) == BytesOfValue(record), "the fixed form keeps all");
  // The short form drops what follows a NUL, and the security's name.
  EachText(record,
           [](char* text, std::size_t room) { std::fill(std::find(text, text + room, '\0'), text + room, '\0'); });
  std::fill(std::begin(record.Text55107), std::end(record.Text55107), '\0');
  RequireProperty(BytesOfValue(EncodeAndDecode(record, false)) == BytesOfValue(record),
                  "the short form keeps its part");
  return 0;
}
