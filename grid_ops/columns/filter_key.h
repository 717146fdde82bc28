// FilterKey: the exchange and security of a book of one security.
#pragma once

#include <cstring>

#include "trade_data/records/trade_record.h"

struct FilterKey {
  char Exchange[49];
  char SecurityID[49];

  // Compares bytes up to the NUL, case-sensitive; ignores a linked master.
  bool Matches(const TradeRecord& record) const noexcept {
    return std::strncmp(record.Exchange, Exchange, sizeof Exchange) == 0 &&
           std::strncmp(record.SecurityID, SecurityID, sizeof SecurityID) == 0;
  }
  // Both parts are non-empty.
  bool Complete() const noexcept { return Exchange[0] != '\0' && SecurityID[0] != '\0'; }
};
static_assert(sizeof(FilterKey) == 98);
