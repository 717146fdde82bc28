// What a book was told by the trade cache, and what a book of a test answers: for the books of the cache and of its
// slow twin.
#pragma once

#include <string>
#include <vector>

#include "foundations/byte_words.h"
#include "trade_data/records/trade_record.h"

struct BookSettings {
  bool FilterActive = false;
  int RefusedSide = -1;  // records of this side do not enter
};

struct BookCall {
  std::string Text;   // book key, call and trade, to be read
  std::string Bytes;  // of the records handed over
  bool operator==(const BookCall&) const = default;
};
using BookCalls = std::vector<BookCall>;

inline BookCall CallWith(const std::string& book, const char* call, const TradeRecord& record) {
  return {book + " " + call + " " + std::to_string(TradeIdOf(record)), BytesOfValue(record)};
}
