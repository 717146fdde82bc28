#include "terminal/positions/position_list.h"

#include <cmath>

#include "platform/locale.h"
#include "terminal/common/numbers.h"

namespace {

constexpr int kPriceDecimals = 4;
constexpr int kProfitDecimals = 2;
constexpr double kLeastShown = 0.005;

// A row of the table.
struct PositionPlace {
  const PositionTable& Table;
  std::uint32_t Row;
  const Position& Counted() const { return Table.At(Row); }
};

using Texts = std::wstring (*)(const PositionPlace& place);
using Values = SheetValue (*)(const PositionPlace& place);

template <std::string LedgerSecurity::*Member>
std::wstring OfSecurity(const PositionPlace& place) {
  return CodePageToWide(place.Table.SecurityAt(place.Row).*Member);
}
std::wstring Client(const PositionPlace& place) {
  return CodePageToWide(place.Table.ClientAt(place.Row));
}
template <Texts Text>
SheetValue AsText(const PositionPlace& place) {
  return Text(place);
}

std::int64_t Bought(const PositionPlace& place) {
  return static_cast<std::int64_t>(place.Counted().Bought());
}
std::int64_t Sold(const PositionPlace& place) {
  return static_cast<std::int64_t>(place.Counted().Sold());
}
std::int64_t Net(const PositionPlace& place) {
  return place.Counted().Net();
}
template <std::int64_t (*Quantity)(const PositionPlace& place)>
std::wstring QuantityOf(const PositionPlace& place) {
  return QuantityText(Quantity(place));
}
template <std::int64_t (*Quantity)(const PositionPlace& place)>
SheetValue AsQuantity(const PositionPlace& place) {
  return Quantity(place);
}

std::optional<double> Average(const PositionPlace& place) {
  return place.Counted().AveragePrice();
}
std::optional<double> Last(const PositionPlace& place) {
  return place.Table.LastPrice(place.Row);
}
template <std::optional<double> (*Price)(const PositionPlace& place)>
std::wstring PriceOf(const PositionPlace& place) {
  const std::optional<double> price = Price(place);
  return price ? PriceText(*price) : std::wstring();
}
// What is not finite would have no place in a sort.
SheetValue Finite(double value) {
  return std::isfinite(value) ? SheetValue(value) : SheetValue();
}
template <std::optional<double> (*Price)(const PositionPlace& place)>
SheetValue AsPrice(const PositionPlace& place) {
  const std::optional<double> price = Price(place);
  return price ? Finite(*price) : SheetValue();
}

double Realised(const PositionPlace& place) {
  return place.Counted().Realised();
}
double Open(const PositionPlace& place) {
  return place.Table.OpenProfit(place.Row);
}
double Total(const PositionPlace& place) {
  return place.Table.TotalProfit(place.Row);
}
template <double (*Profit)(const PositionPlace& place)>
std::wstring ProfitOf(const PositionPlace& place) {
  return ProfitText(Profit(place));
}
template <double (*Profit)(const PositionPlace& place)>
SheetValue AsProfit(const PositionPlace& place) {
  return Finite(Profit(place));
}
template <double (*Profit)(const PositionPlace& place)>
int ProfitSign(const PositionPlace& place) {
  return SignOf(Profit(place));
}
int NetSign(const PositionPlace& place) {
  return Net(place) < 0 ? -1 : (Net(place) > 0 ? 1 : 0);
}

// One row feeds display, sort, storage and sheets.
struct PositionColumn {
  ListColumn Shown;
  Texts Text;
  Values Value;
  int (*Sign)(const PositionPlace& place) = nullptr;  // null: always 0
};

template <Texts Text>
constexpr PositionColumn TextColumn(const wchar_t* title, int widthPx) {
  return {{title, widthPx}, Text, AsText<Text>};
}
template <double (*Profit)(const PositionPlace& place)>
constexpr PositionColumn ProfitColumn(const wchar_t* title) {
  return {{title, 100, SheetKind::Decimal, kProfitDecimals}, ProfitOf<Profit>, AsProfit<Profit>, ProfitSign<Profit>};
}

constexpr PositionColumn kColumns[] = {
    TextColumn<OfSecurity<&LedgerSecurity::Exchange>>(L"Exchange", 82),
    TextColumn<OfSecurity<&LedgerSecurity::SecurityID>>(L"Security", 150),
    TextColumn<OfSecurity<&LedgerSecurity::Symbol>>(L"Symbol", 72),
    TextColumn<OfSecurity<&LedgerSecurity::Name>>(L"Name", 140),
    TextColumn<Client>(L"Client", 80),
    {{L"Bought", 82, SheetKind::Whole}, QuantityOf<Bought>, AsQuantity<Bought>},
    {{L"Sold", 82, SheetKind::Whole}, QuantityOf<Sold>, AsQuantity<Sold>},
    {{L"Net", 76, SheetKind::Whole}, QuantityOf<Net>, AsQuantity<Net>, NetSign},
    {{L"Average", 92, SheetKind::Decimal, kPriceDecimals}, PriceOf<Average>, AsPrice<Average>},
    {{L"Last", 92, SheetKind::Decimal, kPriceDecimals}, PriceOf<Last>, AsPrice<Last>},
    ProfitColumn<Realised>(L"Realised"),
    ProfitColumn<Open>(L"Open"),
    ProfitColumn<Total>(L"Total"),
};
static_assert(kColumns[PositionList::kClientColumn].Text == Client);

}  // namespace

std::wstring ProfitText(double profit) {
  return DecimalText(profit, kProfitDecimals);
}

int SignOf(double profit) {
  return profit >= kLeastShown ? 1 : (profit <= -kLeastShown ? -1 : 0);
}

std::span<const ListColumn> PositionList::Columns() const {
  static constexpr auto kShown = ListColumnsOf(kColumns);
  return kShown;
}

std::wstring PositionList::Text(ListRow row, std::size_t column) const {
  return kColumns[column].Text({Table, static_cast<std::uint32_t>(row)});
}

SheetValue PositionList::Value(ListRow row, std::size_t column) const {
  return kColumns[column].Value({Table, static_cast<std::uint32_t>(row)});
}

int PositionList::SignAt(ListRow row, std::size_t column) const {
  const auto sign = kColumns[column].Sign;
  return sign == nullptr ? 0 : sign({Table, static_cast<std::uint32_t>(row)});
}

ListChanges PositionList::TakeChanges() {
  const PositionChanges changes = Table.TakeChanges();
  if (!changes.IsEmpty()) ++Changes;
  return {changes.All, {changes.Rows.begin(), changes.Rows.end()}};
}
