#include "terminal/chart/chart_layout.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <iterator>

namespace {

constexpr double kLeastSeconds = 20;   // of a range
constexpr double kMargin = 0.02;       // beside the first and the last trade
constexpr double kPriceMargin = 0.08;  // above and below, where marks stand
constexpr double kFlatMargin = 0.001;  // of the price, around prices that are all equal
constexpr double kLeastFlatMargin = 0.01;
constexpr int kMostTicks = 100;
constexpr std::int64_t kDay = 86'400;
constexpr std::int64_t kTimeSteps[] = {1,   2,    5,    10,   15,    30,    60,    120,    300,    600,
                                       900, 1800, 3600, 7200, 10800, 14400, 21600, 28'800, 43'200, kDay};

void InsertThousands(std::string& digits) {
  const std::size_t begin = digits.starts_with('-') ? 1 : 0;
  for (std::size_t place = std::min(digits.find('.'), digits.size()); place > begin + 3; place -= 3)
    digits.insert(place - 3, 1, ',');
}

// The smallest step that is at least so long; from a day on days, doubled.
std::int64_t TimeStep(double least) {
  for (const std::int64_t step : kTimeSteps)
    if (static_cast<double>(step) >= least) return step;
  std::int64_t step = kDay;
  while (static_cast<double>(step) < least && step < INT64_MAX / 4) step *= 2;
  return step;
}

double PowerOfTen(int exponent) {
  double power = 1;
  for (; exponent > 0; --exponent) power *= 10;
  return power;
}

// 1, 2 or 5 times a power of ten. A power below 1 divides, so that each multiple is the double next to its text, and
// both platforms have the same.
struct PriceStep {
  PriceStep(double factor, int exponent)
      : Factor(factor),
        Power(PowerOfTen(std::abs(exponent))),
        Divides(exponent < 0),
        Decimals(std::clamp(-exponent, 0, 9)) {}
  double Times(double count) const { return Divides ? count * Factor / Power : count * Factor * Power; }

  double Factor;
  double Power;
  bool Divides;
  int Decimals;
};

// The logarithm may be one off.
PriceStep PriceStepFor(double least) {
  const int near = static_cast<int>(std::floor(std::log10(least)));
  for (const int exponent : {near - 1, near, near + 1})
    for (const double factor : {1., 2., 5.})
      if (const PriceStep step(factor, exponent); step.Times(1) >= least) return step;
  return {5, near + 1};
}

double FloorDay(double seconds) {
  return std::floor(seconds / static_cast<double>(kDay));
}

ChartRange Within(ChartRange range, const ChartRange& full) {
  if (range.Length() >= full.Length()) return full;
  if (const double over = range.To - full.To; over > 0) return {full.To - range.Length(), full.To};
  if (range.From < full.From) return {full.From, full.From + range.Length()};
  return range;
}

double Share(double part, double whole) {
  return whole > 0 ? std::clamp(part / whole, 0., 1.) : 0;
}

}  // namespace

std::string FixedText(double value, int decimals) {
  if (!std::isfinite(value)) return {};
  char digits[400];
  const auto [end, error] =
      std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::fixed, decimals);
  if (error != std::errc()) return {};
  std::string text(digits, end);
  if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos) text.erase(0, 1);
  InsertThousands(text);
  return text;
}

std::string ChartPriceText(double price) {
  std::string text = FixedText(price, 4);
  for (int more = 0; more < 2 && text.ends_with('0'); ++more) text.pop_back();
  return text;
}

std::string ChartDateText(double seconds) {
  const std::chrono::sys_days day{std::chrono::days(static_cast<int>(std::clamp(FloorDay(seconds), -1e6, 1e6)))};
  const std::chrono::year_month_day date(day);
  const auto twoDigits = [](unsigned number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  return std::to_string(int(date.year())) + "-" + twoDigits(unsigned(date.month())) + "-" +
         twoDigits(unsigned(date.day()));
}

std::string ChartTimeText(double seconds) {
  const int ofDay = static_cast<int>(seconds - FloorDay(seconds) * static_cast<double>(kDay));
  char text[] = "00:00:00";
  const auto put = [&text](int place, int number) {
    text[place] = static_cast<char>('0' + number / 10);
    text[place + 1] = static_cast<char>('0' + number % 10);
  };
  put(0, ofDay / 3600 % 24);
  put(3, ofDay / 60 % 60);
  put(6, ofDay % 60);
  return text;
}

std::vector<ChartTick> PriceTicks(double low, double high, double leastPart) {
  std::vector<ChartTick> ticks;
  const double least = (high - low) * leastPart;
  if (!(least > 0) || !std::isfinite(least)) return ticks;
  const PriceStep step = PriceStepFor(least);
  double first = std::floor(low / step.Times(1));
  if (step.Times(first) < low) ++first;
  for (int at = 0; at < kMostTicks && step.Times(first + at) <= high; ++at) {
    const double value = step.Times(first + at);
    ticks.push_back({value, FixedText(value, step.Decimals)});
  }
  return ticks;
}

std::vector<ChartTick> TimeTicks(const ChartRange& range, double leastPart) {
  std::vector<ChartTick> ticks;
  const double least = range.Length() * leastPart;
  if (!(least > 0) || !std::isfinite(least)) return ticks;
  const std::int64_t step = TimeStep(least);
  const bool hasDates = FloorDay(range.From) < FloorDay(range.To);
  const auto length = static_cast<double>(step);
  const double first = std::ceil(range.From / length);
  for (int at = 0; at < kMostTicks && (first + at) * length < range.To; ++at) {
    const double value = (first + at) * length;
    const bool isMidnight = FloorDay(value) * static_cast<double>(kDay) == value;
    if (hasDates && isMidnight)
      ticks.push_back({value, ChartDateText(value).substr(5)});
    else
      ticks.push_back({value, ChartTimeText(value).substr(0, step < 60 ? 8 : 5)});
  }
  return ticks;
}

std::int64_t BarSecondsFor(double leastSeconds) {
  return TimeStep(std::max(60., leastSeconds));
}

ChartRange FullRange(std::span<const ChartPoint> points) {
  if (points.empty()) return {};
  const auto first = static_cast<double>(points.front().Seconds), last = static_cast<double>(points.back().Seconds);
  const double margin = std::max(kLeastSeconds, (last - first) * kMargin);
  return {first - margin, last + margin};
}

ChartRange RangeAround(double first, double last, const ChartRange& full) {
  if (first > last) std::swap(first, last);
  const double margin = std::max(kLeastSeconds, (last - first) * kMargin);
  return Within({first - margin, last + margin}, full);
}

ChartRange Zoomed(const ChartRange& range, const ChartRange& full, double factor, double anchor) {
  const double length = std::clamp(range.Length() * factor, std::min(kLeastSeconds, full.Length()), full.Length());
  const double from = anchor - length * Share(anchor - range.From, range.Length());
  return Within({from, from + length}, full);
}

ChartRange Moved(const ChartRange& range, const ChartRange& full, double seconds) {
  return Within({range.From + seconds, range.To + seconds}, full);
}

ChartRange Followed(const ChartRange& range, const ChartRange& before, const ChartRange& now) {
  if (range == before || before == ChartRange()) return now;
  if (range.To >= before.To) return Within({now.To - range.Length(), now.To}, now);
  return Within(range, now);
}

namespace {

double Between(const ChartPoint& left, const ChartPoint& right, double seconds) {
  const auto length = static_cast<double>(right.Seconds - left.Seconds);
  if (length <= 0) return right.Price;
  return left.Price + (right.Price - left.Price) * (seconds - static_cast<double>(left.Seconds)) / length;
}

void Include(ChartPrices& prices, double price) {
  prices.Low = std::min(prices.Low, price);
  prices.High = std::max(prices.High, price);
}

}  // namespace

ChartPrices PricesIn(std::span<const ChartPoint> points, const ChartRange& range) {
  const std::span<const ChartPoint> shown = PointsIn(points, range);
  const auto first = static_cast<std::size_t>(shown.data() - points.data());
  const std::size_t end = first + shown.size();
  ChartPrices prices;
  if (first > 0 && first < points.size()) prices.Entry = Between(points[first - 1], points[first], range.From);
  if (end > 0 && end < points.size()) prices.Exit = Between(points[end - 1], points[end], range.To);
  const double any = shown.empty() ? prices.Entry.value_or(points[first == 0 ? 0 : first - 1].Price) : shown[0].Price;
  prices.Low = prices.High = any;
  for (const ChartPoint& point : shown) Include(prices, point.Price);
  for (const auto& edge : {prices.Entry, prices.Exit})
    if (edge) Include(prices, *edge);
  const double flat = std::max(kLeastFlatMargin, std::fabs(any) * kFlatMargin);
  const double margin = prices.High > prices.Low ? (prices.High - prices.Low) * kPriceMargin : flat;
  prices.Low -= margin;
  prices.High += margin;
  return prices;
}

int ChartLayout::XOf(double seconds) const {
  return Prices.Left + static_cast<int>(Share(seconds - Range.From, Range.Length()) * (Prices.Width() - 1) + 0.5);
}

int ChartLayout::YOf(double price) const {
  return Prices.Bottom - 1 -
         static_cast<int>(Share(price - LowPrice, HighPrice - LowPrice) * (Prices.Height() - 1) + 0.5);
}

double ChartLayout::SecondsAt(int x) const {
  return Range.From + Range.Length() * Share(x - Prices.Left, Prices.Width() - 1);
}

double ChartLayout::PriceAt(int y) const {
  return LowPrice + (HighPrice - LowPrice) * Share(Prices.Bottom - 1 - y, Prices.Height() - 1);
}
