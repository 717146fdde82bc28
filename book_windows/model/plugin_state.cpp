#include "book_windows/model/plugin_state.h"

#include "foundations/paths.h"
#include "grid_base/settings/registry_store.h"

PluginState::PluginState(CQORTradeImpl& decoder)
    : WorkingFolder(CurrentFolder()), TradeStore(decoder, BooksByKey, WorkingFolder) {}

namespace {

// The plug-in stores everything below its own node.
std::wstring PathOf(const std::wstring& key) {
  return L"PLUGINDLLS\\Trade Book\\" + key + L"\\";
}

// One switch is written under a name that ends with a blank. The store drops blanks, so that it is read back.
struct SwitchKey {
  const wchar_t* Read;
  const wchar_t* Written = Read;
  bool Missing = false;  // the value if nothing is stored. Intentional: a new book has another
};
constexpr SwitchKey kAutoWrite{L"AutoTradeWriteCSV", L"AutoTradeWriteCSV ", true};

// All keys in the order of writing.
template <typename Settings, typename State, typename Visitor>
void ForEachKey(Settings& settings, State& state, Visitor visitor) {
  visitor.Number(L"BuyColor", settings.BuyColor);
  visitor.Number(L"SellColor", settings.SellColor);
  visitor.Number(L"FontBuyColor", settings.FontBuyColor);
  visitor.Number(L"FontSellColor", settings.FontSellColor);
  visitor.Number(L"ColumnFreeze", settings.ColumnFreeze);
  visitor.Switch({L"WholeRowSel"}, settings.WholeRowSel);
  visitor.Switch({L"GridLine"}, settings.GridLine);
  visitor.Zero(L"Total Row Show");
  visitor.Switch({L"HeaderHide"}, settings.HeaderHide);
  visitor.Switch({L"MultipleTradeBookDisable"}, state.MultipleTradeBookDisable);
  visitor.Switch(kAutoWrite, state.TradeStore.AutoTradeWriteCSV);
}

// A number that is not stored keeps its value.
struct KeyReader {
  CQORPRegistry& Store;

  void Number(const wchar_t* key, auto& value) const { Store.Read(key, value); }
  void Switch(const SwitchKey& key, bool& value) const {
    std::int32_t number = key.Missing ? 1 : 0;
    Store.Read(key.Read, number);
    value = number != 0;
  }
  void Zero(const wchar_t*) const {}
};

struct KeyWriter {
  CQORPRegistry& Store;

  void Number(const wchar_t* key, auto value) const { Store.Write(key, value); }
  void Switch(const SwitchKey& key, bool value) const { Store.Write(key.Written, std::int32_t{value}); }
  void Zero(const wchar_t* key) const { Store.Write(key, std::int32_t{0}); }
};

}  // namespace

bool ReadGridSettings(const std::wstring& key, GridSettings& settings, PluginState& state) {
  const auto store = CQORPRegistrySP::Create(0, 1);
  if (!store->OpenPath(PathOf(key))) return false;
  std::vector<std::uint8_t> bytes;
  settings.Font = store->Read(L"Font", bytes) ? FontFromBytes(bytes) : std::nullopt;
  ForEachKey(settings, state, KeyReader{*store});
  return true;
}

void WriteGridSettings(const std::wstring& key, const GridSettings& settings, const PluginState& state) {
  const auto store = CQORPRegistrySP::Create(0, 0);
  if (!store->CreatePath(PathOf(key))) return;
  if (settings.Font) WriteFont(*store, *settings.Font);
  ForEachKey(settings, state, KeyWriter{*store});
}
