// FilterKey: a security on an exchange, as a book of one security knows it. Plain data.
#pragma once

#include <cstring>

#include "trade_data/records/trade_record.h"

struct FilterKey {
  char Exchange[49];
  char SecurityID[49];

  // Byte by byte, case included, up to the NUL; a linked master does not count.
  bool Matches(const TradeRecord& record) const noexcept {
    return std::strncmp(record.Exchange, Exchange, sizeof Exchange) == 0 &&
           std::strncmp(record.SecurityID, SecurityID, sizeof SecurityID) == 0;
  }
  // Both parts are there.
  bool Complete() const noexcept { return Exchange[0] != '\0' && SecurityID[0] != '\0'; }
};
static_assert(sizeof(FilterKey) == 98);
