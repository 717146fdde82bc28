// ChartModel: the chart of one security of the ledger and the part of its day that is shown, without windows.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/chart/chart_drawing.h"
#include "terminal/ledger/trade_ledger.h"

std::string Utf8OfCodePage(std::string_view text);

// The ledger's trades of a security that can be shown, in its order. timeless counts those without a time.
std::vector<ChartPoint> ChartPointsOf(const TradeLedger& ledger, const LedgerSecurity& security,
                                      std::uint64_t& timeless);

// New trades are appended. A change of a known trade, and a new login, read the security's trades again.
class ChartModel {
 public:
  explicit ChartModel(const TradeLedger& ledger) : Ledger(ledger) {}

  // Shows the whole day of another security; a no-op for the one that is shown.
  void Select(std::string_view exchange, std::string_view securityId);
  bool IsOf(std::string_view exchange, std::string_view securityId) const {
    return Exchange == exchange && SecurityID == securityId;
  }
  // Takes over the trades that have come; true if the picture has changed since the last call, by them or by the user.
  bool Update();

  // The range that is shown.
  const ChartRange& Range() const noexcept { return Shown; }
  void ShowAll() { Show(Full); }
  void ShowNewest() { Show(Moved(Shown, Full, Full.Length())); }
  void Zoom(double factor, double anchor) { Show(Zoomed(Shown, Full, factor, anchor)); }
  void Move(double seconds) { Show(Moved(Shown, Full, seconds)); }
  // Of texts as "20131007-09:30:00" in any order; false if none is a time or if there are no trades.
  bool ShowTimes(std::span<const std::string> times);

  // Valid until the next Update.
  ChartSource Source() const;
  // "COMEX GC201312", in the code page; empty without a security.
  std::string Name() const;

 private:
  void Read(const LedgerSecurity& security, bool again);
  void Show(const ChartRange& range);

  const TradeLedger& Ledger;
  std::string Exchange;
  std::string SecurityID;
  ChartData Data;
  std::uint64_t Timeless = 0;
  ChartRange Full;
  ChartRange Shown;
  bool Changed = true;
  // Of the ledger, when it was read.
  std::uint64_t Epoch = 0;
  std::uint64_t Rewrites = 0;
  std::size_t TradesRead = 0;
};
