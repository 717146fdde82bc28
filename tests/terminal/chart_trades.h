// A ledger of a day for tests of the chart.
#pragma once

#include <cstring>
#include <string>

#include "terminal/ledger/trade_ledger.h"

// The download is over: trades enter at once.
struct ChartLedger : TradeLedger {
  ChartLedger() { OnDownloadEndSent(); }

  // A number that is known changes that trade.
  void Trade(std::uint32_t number, const std::string& timeOfDay, double price, std::uint32_t quantity = 1,
             unsigned side = 1, const char* security = "IBM") {
    TradePrint print;
    std::strcpy(print.Exchange, "ARCA");
    std::strcpy(print.SecurityID, security);
    std::strcpy(print.Time, timeOfDay.empty() ? "" : ("20131007-" + timeOfDay).c_str());
    std::strcpy(print.ExchangeOrderNo, "1");
    std::strcpy(print.ExchangeTradeID, std::to_string(++Executions).c_str());
    print.Number = number;
    print.Price = price;
    print.Quantity = quantity;
    print.Side = static_cast<std::uint8_t>(side);
    OnTradeSent(print);
  }

 private:
  int Executions = 0;
};
