// TradeBook: what the trade cache tells one open book. The windows implement it; the cache knows nothing else of them.
// All calls come on the terminal's calling thread. Records stay at their addresses until ClearRows.
#pragma once

#include <map>
#include <string>

#include "trade_data/trade_numbers.h"
#include "trade_data/trade_record.h"

class TradeBook {
 public:
  virtual ~TradeBook() = default;

  virtual bool HasGrid() const = 0;
  virtual bool HasWindow() const = 0;
  virtual bool FilterActive() const = 0;

  // The next rows, so many of them, enter without taking memory: a trade reaches all books or fails before any.
  virtual void MakeRoom(std::size_t rows) = 0;
  // Offers a record; true when it entered the book.
  virtual bool AdmitRow(TradeRecord& record) = 0;
  // Moves the summary line by a record that has just entered.
  virtual void UpdateTotals(const TradeRecord& record) = 0;
  virtual void RefilterRow(TradeRecord& record) = 0;
  // Takes all numbered trades as rows; later ones go on from the next number.
  virtual void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) = 0;
  virtual void ClearRows() = 0;
};

// The books that take part in trades, refresh and properties, by book key.
using TradeBooks = std::map<std::string, TradeBook*>;
