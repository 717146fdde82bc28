#include "terminal/program/window_memory.h"

#include <algorithm>

#include "foundations/paths.h"

namespace {

constexpr int kLeastFramePx = 200;
constexpr int kMostPx = 32000;  // of a screen's coordinates
constexpr int kLeastColumnPx = 10;
constexpr int kMostColumnPx = 4000;
constexpr std::int32_t kMostColumns = 100;

constexpr const wchar_t* kFramePath = L"Frame";
constexpr const wchar_t* kPositionsPath = L"PositionSettings";
constexpr const wchar_t* kDayPath = L"Day";
constexpr const wchar_t* kFeedsPath = L"Feeds";

std::wstring PlaceKey(const wchar_t* what, std::size_t place) {
  return std::wstring(what) + L"-" + std::to_wstring(place);
}

bool IsSound(const SettingsRectangle& rectangle) {
  const auto within = [](std::int32_t value) { return value >= -kMostPx && value <= kMostPx; };
  return within(rectangle.Left) && within(rectangle.Top) && within(rectangle.Right) && within(rectangle.Bottom) &&
         rectangle.Right - rectangle.Left >= kLeastFramePx && rectangle.Bottom - rectangle.Top >= kLeastFramePx;
}

bool ReadColumn(CQORPRegistry& settings, std::size_t place, ColumnPlace& column) {
  settings.Read(PlaceKey(L"Filter", place), column.Filter);
  return settings.Read(PlaceKey(L"Title", place), column.Title) &&
         settings.Read(PlaceKey(L"Width", place), column.WidthPx) && !column.Title.empty() &&
         column.WidthPx >= kLeastColumnPx && column.WidthPx <= kMostColumnPx;
}

}  // namespace

// A file that cannot be looked up counts as there.
WindowMemory::WindowMemory(const std::filesystem::path& folder) : Store(RegistryStore::Make(folder / kFileName)) {
  std::error_code error;
  FileIsNew = std::filesystem::status(folder / kFileName, error).type() == std::filesystem::file_type::not_found;
}

std::optional<FramePlace> WindowMemory::LoadFrame() {
  const auto settings = Open();
  FramePlace place;
  std::int32_t maximized = 0;
  if (!settings->OpenPath(kFramePath) || !settings->Read(L"Rectangle", place.Rectangle) || !IsSound(place.Rectangle))
    return std::nullopt;
  settings->Read(L"Maximized", maximized);
  place.Maximized = maximized != 0;
  return place;
}

void WindowMemory::SaveFrame(const FramePlace& place) {
  const auto settings = Open();
  settings->CreatePath(kFramePath);
  settings->Write(L"Rectangle", place.Rectangle);
  settings->Write(L"Maximized", std::int32_t{place.Maximized});
}

std::optional<ListPlace> WindowMemory::LoadList(const std::wstring& section) {
  const auto settings = Open();
  std::int32_t count = 0;
  if (!settings->OpenPath(section) || !settings->Read(L"Columns", count) || count < 1 || count > kMostColumns)
    return std::nullopt;
  ListPlace place;
  for (std::size_t at = 0; at < static_cast<std::size_t>(count); ++at) {
    ColumnPlace column;
    if (!ReadColumn(*settings, at, column)) return std::nullopt;
    place.Columns.push_back(column);
  }
  std::wstring sorted;
  std::int32_t rising = 1;
  std::int32_t filterShown = 0;
  if (settings->Read(L"Sort", sorted) && !sorted.empty()) place.SortColumn = sorted;
  settings->Read(L"Rising", rising);
  place.Rising = rising != 0;
  settings->Read(L"FilterBar", filterShown);
  place.FilterShown = filterShown != 0;
  return place;
}

void WindowMemory::SaveList(const std::wstring& section, const ListPlace& place) {
  const auto settings = Open();
  settings->CreatePath(section);
  settings->Write(L"Columns", static_cast<std::int32_t>(place.Columns.size()));
  for (std::size_t at = 0; at < place.Columns.size(); ++at) {
    settings->Write(PlaceKey(L"Title", at), place.Columns[at].Title);
    settings->Write(PlaceKey(L"Width", at), std::int32_t{place.Columns[at].WidthPx});
    settings->Write(PlaceKey(L"Filter", at), place.Columns[at].Filter);
  }
  settings->Write(L"Sort", place.SortColumn.value_or(L""));
  settings->Write(L"Rising", std::int32_t{place.Rising});
  settings->Write(L"FilterBar", std::int32_t{place.FilterShown});
}

PositionSettings WindowMemory::LoadPositions() {
  const auto settings = Open();
  std::int32_t byClient = 0;
  std::int32_t firstOut = 0;
  if (settings->OpenPath(kPositionsPath)) {
    settings->Read(L"ByClient", byClient);
    settings->Read(L"FirstInFirstOut", firstOut);
  }
  return {byClient != 0, firstOut != 0 ? CostMethod::FirstInFirstOut : CostMethod::Average};
}

void WindowMemory::SavePositions(const PositionSettings& positions) {
  const auto settings = Open();
  settings->CreatePath(kPositionsPath);
  settings->Write(L"ByClient", std::int32_t{positions.ByClient});
  settings->Write(L"FirstInFirstOut", std::int32_t{positions.Method == CostMethod::FirstInFirstOut});
}

std::optional<DaySpec> WindowMemory::LoadDay() {
  const auto settings = Open();
  std::wstring file;
  std::wstring access;
  if (!settings->OpenPath(kDayPath) || !settings->Read(L"File", file) || file.empty()) return std::nullopt;
  settings->Read(L"LogAccess", access);
  return DaySpec(PathOfWide(file), PathOfWide(access));
}

void WindowMemory::SaveDay(const RunFiles& files) {
  const auto settings = Open();
  settings->CreatePath(kDayPath);
  settings->Write(L"File", files.IsSampleDay() ? std::wstring() : WideOfPath(files.Day.Given()));
  settings->Write(L"LogAccess", WideOfPath(files.Day.Access));
}

std::vector<DaySpec> WindowMemory::LoadFeeds() {
  const auto settings = Open();
  std::vector<DaySpec> feeds;
  if (!settings->OpenPath(kFeedsPath)) return feeds;
  for (std::size_t place = 0; place < kMostFeeds; ++place) {
    std::wstring address;
    std::wstring access;
    if (!settings->Read(PlaceKey(L"Address", place), address)) break;
    settings->Read(PlaceKey(L"LogAccess", place), access);
    if (DaySpec feed(PathOfWide(address), PathOfWide(access)); feed.IsFeed()) feeds.push_back(std::move(feed));
  }
  return feeds;
}

void WindowMemory::SaveFeed(const DaySpec& feed) {
  std::vector<DaySpec> feeds = LoadFeeds();
  std::erase_if(feeds, [&feed](const DaySpec& other) { return other.Given() == feed.Given(); });
  feeds.insert(feeds.begin(), feed);
  feeds.resize(std::min(feeds.size(), kMostFeeds));
  const auto settings = Open();
  settings->CreatePath(kFeedsPath);
  for (std::size_t place = 0; place < feeds.size(); ++place) {
    settings->Write(PlaceKey(L"Address", place), WideOfPath(feeds[place].Given()));
    settings->Write(PlaceKey(L"LogAccess", place), WideOfPath(feeds[place].Access));
  }
}
