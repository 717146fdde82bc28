// The properties of a book: one table of them, and the font's stored block.
#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_grid.h"
#include "foundations/text_tools.h"
#include "host_link/messages/packet_writer.h"
#include "toolkit/dialogs/dialog.h"

namespace {

constexpr std::uint32_t kWarningIcon = 1;
constexpr std::uint32_t kFontDialog = CQORPFontProp::kScreenFonts | CQORPFontProp::kEffects;
static_assert(kFontDialog == 257);
// Intentional: the same text for all four colours, though it describes none of them.
constexpr const wchar_t* kColorDescription = L"Specifies the default dialog border color";
// Intentional: "Default" differs from a new grid's colours, and is the same for rows and their texts.
constexpr ColorRef kBuyDefault = 0xFF875F, kSellDefault = 0x9B82FF;

bool& ManyBooks(PluginState& state) {
  return state.MultipleTradeBookDisable;
}
bool& AutoWrite(PluginState& state) {
  return state.TradeStore.AutoTradeWriteCSV;
}

}  // namespace

// In the order of the pane; the index is the id. Rows of one group are adjacent.
struct GridProperties::Row {
  struct FontOf {};  // the grid owns the font
  using Member = std::variant<FontOf, ColorRef GridSettings::*, std::int32_t GridSettings::*, bool GridSettings::*,
                              bool& (*)(PluginState&)>;
  const wchar_t* Group;
  const wchar_t* Label;
  Member Value;
  ColorRef Default = 0;
};

const GridProperties::Row GridProperties::kRows[] = {
    {L"Font", L"Font", Row::FontOf{}},
    {L"Color", L"Buy Color", &GridSettings::BuyColor, kBuyDefault},
    {L"Color", L"Sell Color", &GridSettings::SellColor, kSellDefault},
    {L"Color", L"Font Buy Color", &GridSettings::FontBuyColor, kBuyDefault},
    {L"Color", L"Font Sell Color", &GridSettings::FontSellColor, kSellDefault},
    {nullptr, L"No. of Frozen Columns", &GridSettings::ColumnFreeze},
    {L"Property", L"Whole Row Select", &GridSettings::WholeRowSel},
    {L"Property", L"Show Grid Row", &GridSettings::GridLine},
    {L"Property", L"Header Hide", &GridSettings::HeaderHide},
    {L"Global", L"Multiple Trade Book Disable", &ManyBooks},
    {L"Global", L"Auto Trade Write CSV", &AutoWrite},
};

GridProperties::GridProperties(TradeBookScreen& screen, Book& book, CTradeBookGrid& grid)
    : Screen(screen), Shown(book), Settings(book.Settings), Grid(grid) {}

std::unique_ptr<CQORPProp> GridProperties::MakeItem(const Row& row, int id) const {
  struct Maker {
    const GridProperties& Owner;
    const Row& Of;
    int Id;
    using Made = std::unique_ptr<CQORPProp>;
    Made operator()(Row::FontOf) const {
      return std::make_unique<CQORPFontProp>(Of.Label, Owner.Grid.GetGridFont(), kFontDialog, CQORPFontProp::kNoColor,
                                             Id, L"Change Font");
    }
    Made operator()(ColorRef GridSettings::*color) const {
      return std::make_unique<CQORPColorProp>(Of.Label, Owner.Settings.*color,
                                              CQORPColorProp::Buttons{L"Other...", L"Default", Of.Default}, Id,
                                              kColorDescription);
    }
    Made operator()(std::int32_t GridSettings::*number) const {
      return std::make_unique<CQORPProp>(Of.Label, Owner.Settings.*number, Id);
    }
    Made operator()(bool GridSettings::*flag) const {
      return std::make_unique<CQORPProp>(Of.Label, Owner.Settings.*flag, Id);
    }
    Made operator()(bool& (*flag)(PluginState&)) const {
      return std::make_unique<CQORPProp>(Of.Label, flag(Owner.Screen.State), Id);
    }
  };
  return std::visit(Maker{*this, row, id}, row.Value);
}

void GridProperties::PopulateProperties(CQORPPropList& list) {
  list.RemoveAll();
  PropertyItems& items = Screen.State.Properties;
  items.clear();
  std::unique_ptr<CQORPProp> group;
  for (const Row& row : kRows) {
    auto item = MakeItem(row, static_cast<int>(items.size()));
    items.push_back(item.get());
    if (row.Group == nullptr) {
      list.AddProperty(std::move(item));
      continue;
    }
    if (group == nullptr) group = std::make_unique<CQORPProp>(row.Group);
    group->AddSubItem(std::move(item));
    const Row* next = &row + 1;
    if (next == std::end(kRows) || next->Group == nullptr || group->GetName() != next->Group)
      list.AddProperty(std::move(group));
  }
  CQORPacketWriter message(0);
  message.AddU16(10002, 32004);
  Screen.Terminal.PluginDataSend(message);
}

void GridProperties::FreezeColumns() {
  Grid.FreezeColumns(Settings.ColumnFreeze == 0 ? -1 : Settings.ColumnFreeze);
}

// Switched off while several books are open, it warns once, not once per book; the other books save it.
bool GridProperties::WarnsOfOpenBooks() {
  PluginState& state = Screen.State;
  if (state.MultipleTradeBookDisable) state.WarnCount = 0;
  if (state.MultipleTradeBookDisable || state.WarnCount != 0 || Screen.Registry.BarsById.size() < 2) return false;
  ++state.WarnCount;
  wxWindow* focused = wxWindow::FindFocus();
  const FocusReturn focus(focused == nullptr ? Grid : *focused);
  Screen.Terminal.ShowMessage(&Grid, std::wstring(kExportCaption), L"Please Close All TradeBook Except One.", kOkButton,
                              kWarningIcon, 0);
  return true;
}

bool GridProperties::TakeValue(const Row& row, const CQORPProp::Value& value) {
  struct Taker {
    GridProperties& Owner;
    const Row& Of;
    const CQORPProp::Value& Value;
    bool operator()(Row::FontOf) const {
      Owner.Grid.SetGridFont(std::get<wxFont>(Value));
      return true;
    }
    bool operator()(ColorRef GridSettings::*color) const {
      const ColorRef chosen = std::get<ColorRef>(Value);
      Owner.Settings.*color = chosen == CQORPColorProp::kAutomatic ? Of.Default : chosen;
      return true;
    }
    bool operator()(std::int32_t GridSettings::*number) const {
      Owner.Settings.*number = std::get<std::int32_t>(Value);
      Owner.FreezeColumns();
      return true;
    }
    bool operator()(bool GridSettings::*flag) const {
      Owner.Settings.*flag = std::get<bool>(Value);
      Owner.ShowSwitch(flag);
      return true;
    }
    bool operator()(bool& (*flag)(PluginState&)) const {
      flag(Owner.Screen.State) = std::get<bool>(Value);
      return flag != &ManyBooks || !Owner.WarnsOfOpenBooks();
    }
  };
  return std::visit(Taker{*this, row, value}, row.Value);
}

void GridProperties::ApplyProperty(const CQORPProp& property) {
  const PropertyItems& items = Screen.State.Properties;
  const auto item = std::ranges::find(items, &property);
  if (item == items.end() || !TakeValue(kRows[item - items.begin()], property.GetValue())) return;
  Shown.SaveGridSettings();
  Grid.RefreshRows(false);
  Grid.RedrawRows();
}

void GridProperties::ShowSwitch(bool GridSettings::*flag) {
  if (flag == &GridSettings::WholeRowSel) Grid.EnableWholeRowSelection(Settings.WholeRowSel);
  if (flag == &GridSettings::GridLine) Grid.EnableGridLines(Settings.GridLine);
  if (flag == &GridSettings::HeaderHide) Grid.EnableHeader(!Settings.HeaderHide);
}

void GridProperties::ShowSettings() {
  if (Settings.Font) Grid.SetGridFont(WindowFontOf(*Settings.Font));
  FreezeColumns();
  ShowSwitch(&GridSettings::WholeRowSel);
  ShowSwitch(&GridSettings::GridLine);
  ShowSwitch(&GridSettings::HeaderHide);
}

namespace {

constexpr std::int32_t kUsualPx = 12, kMostPx = 200, kMostWeight = 1000;

// A stored height may be any number.
int PixelsOf(std::int32_t height) {
  const std::int32_t pixels = std::abs(std::clamp(height, -kMostPx, kMostPx));
  return pixels == 0 ? kUsualPx : pixels;
}

}  // namespace

wxFont WindowFontOf(const GridFont& block) {
  wxFontInfo info(wxSize(0, PixelsOf(block.Height)));
  info.Weight(block.Weight > 0 ? std::min(block.Weight, kMostWeight) : 400);
  info.Italic(block.Italic != 0).Underlined(block.Underline != 0).Strikethrough(block.StrikeOut != 0);
  info.FaceName(Utf16ToWide(block.FaceName));
  return wxFont(info);
}

GridFont FontBlockOf(const wxFont& font) {
  GridFont block;
  block.Height = -font.GetPixelSize().y;
  block.Weight = font.GetNumericWeight();
  block.Italic = font.GetStyle() == wxFONTSTYLE_NORMAL ? 0 : 1;
  block.Underline = font.GetUnderlined() ? 1 : 0;
  block.StrikeOut = font.GetStrikethrough() ? 1 : 0;
  SetFaceName(block, font.GetFaceName().ToStdWstring());
  return block;
}
