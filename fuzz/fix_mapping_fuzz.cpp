#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "feeds/fix/trade_mapper.h"
#include "foundations/text_tools.h"
#include "fuzz/fuzz_functions.h"
#include "tests/support/wire_bytes.h"
#include "trade_data/records/trade_impl.h"

namespace {

// A line that does not begin a message gets head and trailer, so that few inputs end at those.
std::vector<std::string> MessagesOf(std::string_view text) {
  std::vector<std::string> messages;
  for (std::string& line : SplitText(text, '\n')) {
    if (!line.starts_with("8=")) line = "8=FIX.4.4|9=0|" + line + "10=000|";
    std::replace(line.begin(), line.end(), '|', '\x01');
    messages.push_back(std::move(line));
  }
  return messages;
}

// Every byte belongs to a plain message 9101 that decodes to a trade with both ids. Adds them to the pairs, joined.
std::size_t CountTrades(const std::vector<std::uint8_t>& messages, std::set<std::string>& pairs) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < messages.size(); ++count) {
    const auto size = static_cast<std::uint16_t>(std::min<std::size_t>(messages.size() - at, 65535));
    CQORPacketReader reader(&messages[at], size);
    std::uint16_t needed = 0, consumed = 0;
    RequireProperty(reader.ParseHeader(needed, consumed) && reader.MessageNumber == 9101 && consumed == reader.End,
                    "a frame is whole and begins where the one before ends");
    TradeRecord record{};
    CQORTradeImpl().DecodeMessage(reader, record);
    RequireProperty(record.VELDTradeID != 0 && record.VELDOrderID != 0 && record.ExchangeTradeID[0] != 0 &&
                        record.ExchangeOrderNo[0] != 0 && (record.Side == 1 || record.Side == 2),
                    "a trade has numbers, ids and a side");
    RequireProperty(pairs.insert(std::string(record.ExchangeOrderNo) + record.ExchangeTradeID).second,
                    "no pair of ids is shown twice");
    at += consumed;
  }
  return count;
}

std::vector<std::uint8_t> MapAll(const std::vector<std::string>& texts) {
  std::vector<std::uint8_t> all;
  std::set<std::string> pairs;
  TradeMapper mapper({}, [&](std::uint64_t place) { return texts[place]; });
  for (std::size_t place = 0; place < texts.size(); ++place) {
    const ExactBytes text(texts[place]);
    std::vector<std::uint8_t> messages;
    const MappedReport report = mapper.Map({reinterpret_cast<const char*>(text.Data()), text.Count}, place, messages);
    RequireProperty(CountTrades(messages, pairs) == report.Messages, "the messages are those that it tells of");
    const bool mustTell = report.Outcome == ReportOutcome::Refused || report.Outcome == ReportOutcome::Unknown;
    RequireProperty(!mustTell || !report.Reason.empty(), "nothing is refused or unknown without a word");
    all.insert(all.end(), messages.begin(), messages.end());
  }
  return all;
}

}  // namespace

int FuzzFixMapping(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> texts = MessagesOf({reinterpret_cast<const char*>(data), size});
  RequireProperty(MapAll(texts) == MapAll(texts), "the same messages give the same bytes");
  return 0;
}
