// FIX messages as tests write them, with | for SOH, and what the mapper makes of them, decoded.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "feeds/fix/trade_mapper.h"
#include "trade_data/records/trade_impl.h"

inline std::string WithSoh(std::string_view text) {
  std::string message(text);
  std::replace(message.begin(), message.end(), '|', '\x01');
  return message;
}

// A whole message around "35=...|...|".
inline std::string FixMessage(std::string_view body, std::string_view beginString = "FIX.4.4") {
  return WithSoh("8=" + std::string(beginString) + "|9=" + std::to_string(body.size()) + "|" + std::string(body) +
                 "10=000|");
}

// A fill that lacks nothing, in which own fields "tag=value|" replace those of the same tag.
inline std::string Fill(std::string_view own) {
  std::string body = "35=8|" + std::string(own);
  for (const char* field : {"150=F|", "54=1|", "55=GC|", "31=1313.5|", "32=2|", "60=20131007-09:30:01|"})
    if (body.find("|" + std::string(field).substr(0, std::string_view(field).find('=') + 1)) == std::string::npos)
      body += field;
  return body;
}

struct DecodedTrade : TradeRecord {
  std::string Key() const { return std::string(ExchangeOrderNo) + "/" + ExchangeTradeID; }
};

// The trades of whole frames; empty if there is anything else.
inline std::vector<DecodedTrade> DecodeTrades(const std::vector<std::uint8_t>& messages) {
  std::vector<DecodedTrade> trades;
  for (std::size_t at = 0; at < messages.size();) {
    const std::size_t left = messages.size() - at;
    const auto size = static_cast<std::uint16_t>(std::min<std::size_t>(left, 65535));
    CQORPacketReader reader(&messages[at], size);
    std::uint16_t needed = 0, consumed = 0;
    if (left < 10 || messages[at] != '#' || !reader.ParseHeader(needed, consumed) || reader.MessageNumber != 9101)
      return {};
    CQORTradeImpl decoder;
    decoder.DecodeMessage(reader, trades.emplace_back(DecodedTrade{}));
    at += reader.End;
  }
  return trades;
}

// A mapper with the texts that it has been given, by their number.
class MappedDay {
 public:
  explicit MappedDay(MappingChoices choices = {})
      : Mapper(std::move(choices), [this](std::uint64_t place) { return Texts.at(place); }) {}

  // The outcome, the reason and, for each trade message, its number and ids.
  std::string Map(const std::string& text) {
    Texts.push_back(text);
    std::vector<std::uint8_t> messages;
    Last = Mapper.Map(text, Texts.size() - 1, messages);
    Bytes.insert(Bytes.end(), messages.begin(), messages.end());
    Trades = DecodeTrades(messages);
    std::string told = kNames[static_cast<std::size_t>(Last.Outcome)];
    if (Last.Messages != Trades.size()) told += " of broken messages";
    for (const DecodedTrade& trade : Trades) told += " " + std::to_string(trade.VELDTradeID) + "=" + trade.Key();
    return Last.Reason.empty() ? told : told + ": " + Last.Reason;
  }
  std::string MapBody(std::string_view body) { return Map(FixMessage(body)); }
  const DecodedTrade& Trade() const { return Trades.at(0); }

  MappedReport Last;
  std::vector<DecodedTrade> Trades;  // of the last message
  std::vector<std::uint8_t> Bytes;   // of all

 private:
  static constexpr const char* kNames[] = {"Trade", "Correction", "Bust", "Repeat", "NoTrade", "Refused", "Unknown"};
  std::vector<std::string> Texts;
  TradeMapper Mapper;
};
