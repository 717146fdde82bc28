// What a book was told by the trade cache, and what a book of a test answers. Shared by the books that the cache tells
// and by those of its slow twin.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "trade_data/records/trade_record.h"

struct BookSettings {
  bool HasGrid = true;
  bool HasWindow = true;
  bool FilterActive = false;
  int RefusedSide = -1;  // records of this side do not enter
};

struct BookCall {
  std::string Text;   // book key, call and trade, to be read
  std::string Bytes;  // of the records handed over
  bool operator==(const BookCall&) const = default;
};
using BookCalls = std::vector<BookCall>;

inline std::string BytesOfRecord(const TradeRecord& record) {
  return std::string(reinterpret_cast<const char*>(&record), sizeof record);
}
inline BookCall CallWith(const std::string& book, const char* call, const TradeRecord& record) {
  return {book + " " + call + " " + std::to_string(TradeIdOf(record)), BytesOfRecord(record)};
}
