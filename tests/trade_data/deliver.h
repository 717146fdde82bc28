// The messages of trades, delivered to a trade cache as the plug-in's router does.
#pragma once

#include "trade_data/cache/trade_cache.h"

inline void Deliver(TradeCache& cache, CQORPacketReader& reader) {
  const unsigned number = reader.MessageNumber;
  if (number == 8111 || number == 9101) cache.OnTrade(reader);
  if (number == 9112) cache.OnTradeAmend(reader);
  if (number == 8112) cache.OnDownloadEnd();
  if (number == 30022) cache.OnClearTrades();
}

// A whole message. Allocates nothing itself.
inline void Deliver(TradeCache& cache, std::string_view message) {
  CQORPacketReader reader(reinterpret_cast<const std::uint8_t*>(message.data()),
                          static_cast<std::uint16_t>(message.size()));
  std::uint16_t needed = 0, consumed = 0;
  if (reader.ParseHeader(needed, consumed)) Deliver(cache, reader);
}
