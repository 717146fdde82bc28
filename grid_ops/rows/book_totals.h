// BookTotals: the eight totals of a book's rows, and its summary line.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "grid_ops/rows/column_filter.h"
#include "grid_ops/rows/row_map.h"

enum class SummaryValue { BuyQty, BuyAmt, BuyAvg, SellQty, SellAmt, SellAvg, NetQty, NetAmt };
enum class TradeColor { Buy, Sell };

inline constexpr const wchar_t* kSummaryLabels[] = {L"Buy:",     L"BuyAmt:",  L"BuyAvg:", L"Sell:",
                                                    L"SellAmt:", L"SellAvg:", L"Net:",    L"NetAmt:"};
constexpr const wchar_t* LabelOf(SummaryValue value) noexcept {
  return kSummaryLabels[static_cast<std::size_t>(value)];
}

// The values of the eight controls. Numbers, not texts: a trade prints nothing, however many books are open.
class SummaryLine {
 public:
  struct Control {
    double Number = 0;
    bool Written = false;  // else the control is empty
    std::optional<TradeColor> Color;
    bool Changed = false;  // since a window has last cleared it
  };

  void Show(SummaryValue value, double number) noexcept {
    Control& control = Controls[static_cast<std::size_t>(value)];
    control.Number = number;
    control.Written = control.Changed = true;
  }
  void Paint(SummaryValue value, TradeColor color) noexcept {
    Control& control = Controls[static_cast<std::size_t>(value)];
    control.Changed |= control.Color != color;
    control.Color = color;
  }
  const Control& Of(SummaryValue value) const noexcept { return Controls[static_cast<std::size_t>(value)]; }
  // Quantities as signed decimals, amounts and averages with two decimals.
  std::wstring TextOf(SummaryValue value) const;
  // A line per total with its label, in the order of SummaryValue; averages on request.
  std::wstring AllTotals(bool averages) const;
  void ClearChanged() noexcept {
    for (Control& control : Controls) control.Changed = false;
  }

 private:
  std::array<Control, 8> Controls;
};

// The terminal's master records; nothing for an unknown security.
class SecurityMasters {
 public:
  virtual ~SecurityMasters() = default;
  virtual std::optional<double> MultiplierOf(const FilterKey& security) const = 0;
};

// Input of the averages beside the rows.
struct AverageBasis {
  bool Filtered;              // the book is kept to one security
  const FilterKey& Selected;  // the security that another window last answered with
  const FilterKey& Restored;  // the security of the book that was last brought back
  const SecurityMasters& Masters;
};

class BookTotals {
 public:
  // Sums over the rows, the first row first, and shows all values. Intentional: SellAvg is 0 without a master record.
  void RecountTotals(const RowMap& rows, const AverageBasis& basis, SummaryLine& line);
  // The same sums; writes only what differs from the line, and averages only with a master record.
  void ResumTotals(const RowMap& rows, const AverageBasis& basis, SummaryLine& line);
  // Adds a new row. Averages are updated, by the record's own multiplier, only while a security is selected.
  void UpdateTotals(const TradeRecord& record, const AverageBasis& basis, SummaryLine& line);

  std::int32_t BuyQty = 0, SellQty = 0, NetQty = 0;
  double BuyAmt = 0, SellAmt = 0, NetAmt = 0, BuyAvg = 0, SellAvg = 0;
  // The values in the line.
  std::int32_t ShownBuyQty = -1, ShownSellQty = -1, ShownNetQty = -1;
  double ShownBuyAmt = -1, ShownSellAmt = -1, ShownNetAmt = -1;

 private:
  // True if a master record gave the averages.
  bool Sum(const RowMap& rows, const AverageBasis& basis);
  void AddRow(const TradeRecord& record) noexcept;
  void AverageBy(double multiplier) noexcept;
  void Net() noexcept;
  void ShowAverages(SummaryLine& line) const;
  void ShowChanges(SummaryLine& line);
  // Writes quantities and amounts that changed, or all; true if NetAmt was among them.
  bool ShowTotals(SummaryLine& line, bool always);
};
