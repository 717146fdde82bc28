#include "book_windows/model/book_state.h"

#include <algorithm>
#include <cstring>

#include "foundations/text_tools.h"
#include "platform/locale.h"

std::string BookState::ScriptTitleOf(std::string_view exchange, std::string_view scriptName) {
  return std::string(BlankTitle).append(exchange).append(" ").append(scriptName);
}

void BookState::BeginSecurity(const std::string& scriptTitle) {
  Filtered = true;
  BlankFilter = false;
  CurrentTitle = ScriptTitle = scriptTitle;
}

void BookState::BeginAll() {
  Filtered = false;
  CurrentTitle = AllMark = kAllTitle;
}

void BookState::BeginBlank() {
  Filtered = true;
  NarrowToBlank();
}

void BookState::BeginWidened(const std::string& scriptTitle) {
  CurrentTitle = kAllTitle;
  ScriptTitle = scriptTitle;
}

// A blank book becomes one of all trades: the next Escape makes it blank again.
void BookState::Widen() {
  Filtered = false;
  AllMark = BlankFilter ? kAllTitle : std::string_view();
  CurrentTitle = kAllTitle;
}

void BookState::Narrow() {
  if (AllMark.empty() && !CurrentTitle.empty())
    NarrowToSecurity();
  else if (AllMark == CurrentTitle)
    NarrowToBlank();
  Filtered = true;
}

void BookState::NarrowToSecurity() {
  BlankFilter = false;
  CurrentTitle = ScriptTitle;
}

void BookState::NarrowToBlank() {
  BlankFilter = true;
  CurrentTitle.clear();
  AllMark.clear();
}

std::string BookState::Key(std::string_view bookName, std::uint32_t barId) const {
  return Title().append(bookName).append(std::to_string(barId));
}

namespace {

constexpr const wchar_t* kSection = L"PLUGINDLLS\\Trade Book\\RecentFiles\\";

// The values of one entry, in the settings' open section.
class Entry {
 public:
  Entry(CQORPRegistry& settings, int number) : Settings(settings), Number(std::to_wstring(number)) {}

  void Put(const wchar_t* name, const std::string& text) { Settings.Write(name + Number, CodePageToWide(text)); }
  template <typename Value>
  void Put(const wchar_t* name, const Value& value) {
    Settings.Write(name + Number, value);
  }

  std::optional<std::string> Text(const wchar_t* name) {
    std::wstring text;
    if (!Settings.Read(name + Number, text)) return std::nullopt;
    return WideToNarrow(std::move(text));
  }
  template <typename Value>
  void Take(const wchar_t* name, Value& value) {
    Settings.Read(name + Number, value);
  }

 private:
  CQORPRegistry& Settings;
  std::wstring Number;
};

// An over-long text is cut; the NUL behind it is there already.
template <std::size_t N>
void CopyCut(char (&field)[N], const std::string& text) {
  std::memcpy(field, text.data(), std::min(text.size(), N - 1));
}

}  // namespace

std::optional<std::string> ScriptTradeNameOf(const BookState& state) {
  if (!state.ScriptTitle.empty()) {
    if (!state.AllMark.empty()) return std::nullopt;
    return state.CurrentTitle == BookState::kAllTitle ? state.CurrentTitle : state.ScriptTitle;
  }
  const bool blank = state.AllMark.empty() && state.CurrentTitle.empty();
  return std::string(blank ? BookState::BlankTitle : BookState::kAllTitle);
}

RestoredState RestoredStateOf(const BookRecord& record) {
  const bool all = record.ScriptTradeName == BookState::kAllTitle;
  if (record.ScriptTitle.empty()) return all ? RestoredState::All : RestoredState::Blank;
  if (all) return RestoredState::Widened;
  return record.Security.Complete() ? RestoredState::Security : RestoredState::Unknown;
}

bool WriteBookRecord(CQORPRegistry& settings, int number, const BookRecord& record) {
  if (!settings.CreatePath(kSection)) return false;
  Entry entry(settings, number);
  entry.Put(L"", record.BookName);
  entry.Put(L"FilterKeyExchange", std::string(record.Security.Exchange));
  entry.Put(L"FilterKeySecurityID", std::string(record.Security.SecurityID));
  entry.Put(L"ScriptName", record.ScriptTitle);
  entry.Put(L"LastNum", NumberToWide(record.LastNum));
  if (record.ScriptTradeName) entry.Put(L"ScriptTradeName", *record.ScriptTradeName);
  entry.Put(L"Dock", std::int32_t{record.Place.Docked});
  entry.Put(L"Tab", std::int32_t{record.Place.Tabbed});
  entry.Put(L"Rect", record.Place.Rect);
  settings.ClosePath();
  return true;
}

std::optional<BookRecord> ReadBookRecord(CQORPRegistry& settings, int number) {
  if (!settings.OpenPath(kSection)) return std::nullopt;
  Entry entry(settings, number);
  const std::optional<std::string> name = entry.Text(L"");
  if (!name) return std::nullopt;
  BookRecord record;
  record.BookName = *name;
  CopyCut(record.Security.Exchange, entry.Text(L"FilterKeyExchange").value_or(""));
  CopyCut(record.Security.SecurityID, entry.Text(L"FilterKeySecurityID").value_or(""));
  record.ScriptTitle = entry.Text(L"ScriptName").value_or("");
  record.ScriptTradeName = entry.Text(L"ScriptTradeName");
  entry.Take(L"LastNum", record.LastNum);
  entry.Take(L"Rect", record.Place.Rect);
  settings.ClosePath();
  return record;
}
