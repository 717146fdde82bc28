// The properties of books, from the change in a list as a user makes it to grids, totals, settings file and restart.
#include <wx/app.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/propgrid.h>
#include <wx/uiaction.h>

#include <fstream>
#include <sstream>

#include "grid_base/settings/registry_store.h"
#include "tests/book_windows/books_fixture.h"

namespace {

constexpr const wchar_t* kPath = L"PLUGINDLLS\\Trade Book\\TradeBook";

class PropertiesTest : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    if (IsSkipped()) return;
    Properties = std::make_unique<CQORPPropList>().release();  // the frame owns it
    ASSERT_TRUE(Properties->Create(Frame, wxID_ANY, L"Properties"));
    Properties->SetSize(Frame->GetClientSize());
    Properties->OnChange = [this](CQORPProp& item) { TradeBookScreen::PropertyChanged(&item, Asker); };
  }
  // As the terminal does for message 32003.
  void FillFor(CTradeBookBar& bar) {
    Asker = bar.Grid();
    bar.SetFocus();
    Pump();
    Registry().PropertyListRequest(Properties, this);
    ASSERT_EQ(fakeTerminal.SentNumbers().back(), 32004);
  }
  static CQORPProp* ItemOf(const wxPGProperty* property) { return static_cast<CQORPProp*>(property->GetClientData()); }
  wxPropertyGrid& Window() { return dynamic_cast<wxPropertyGrid&>(*Properties->GetChildren().front()); }
  void Choose(int id, const wxVariant& value) {
    for (auto at = Window().GetIterator(wxPG_ITERATE_ALL); !at.AtEnd(); ++at)
      if (ItemOf(*at) != nullptr && ItemOf(*at)->GetId() == id) {
        EXPECT_TRUE(Window().ChangePropertyValue(*at, value));
        return Pump();
      }
    FAIL() << id;
  }
  static wxVariant Color(int type, const wxColour& color) {
    wxVariant value;
    value << wxColourPropertyValue(static_cast<wxUint32>(type), color);
    return value;
  }
  // The value between the quotes in the file.
  std::string Stored(const std::string& key) {
    std::ifstream stream(Desk->Folder / "TradeBookSettings.xml", std::ios::binary);
    std::stringstream text;
    text << stream.rdbuf();
    const std::string file = text.str();
    const std::size_t at = file.find("<" + key + ">\"");
    if (at == std::string::npos) return "nothing";
    const std::size_t begin = at + key.size() + 3;
    return file.substr(begin, file.find('"', begin) - begin);
  }
  static CQORPGridCell Painted(CTradeBookBar& bar) {
    CQORPGridCell cell;
    bar.Grid()->ShowCell(0, 2, cell);
    return cell;
  }
  static bool Frozen(CTradeBookBar& bar) { return bar.Grid()->GetRowsWindow(3) != bar.Grid()->GetRowsWindow(); }

  CQORPPropList* Properties = nullptr;
  CTradeBookGrid* Asker = nullptr;
};

TEST_F(PropertiesTest, ListsElevenItemsInTheirGroups) {
  FillFor(Open());
  std::wstring listed;
  for (auto at = Window().GetIterator(wxPG_ITERATE_ALL); !at.AtEnd(); ++at) {
    const CQORPProp* item = ItemOf(*at);
    if (item == nullptr) continue;
    listed += (*at)->GetParent() == Window().GetRoot() ? L"|" : L" -";
    listed += (*at)->GetLabel().ToStdWstring();
    if (!item->IsGroup()) listed += L"," + std::to_wstring(item->GetId()) + L"," + item->GetDescription();
    if (const auto* color = dynamic_cast<const CQORPColorProp*>(item)) {
      for (unsigned i = 0; i < (*at)->GetChoices().GetCount(); ++i)
        listed += L"," + (*at)->GetChoices().GetLabel(i).ToStdWstring();
      listed += L"," + std::to_wstring(color->GetButtons().AutomaticColor);
    }
    if (item->GetId() > 0) listed += L"," + (*at)->GetValueAsString().ToStdWstring();
  }
  const std::wstring border = L",Specifies the default dialog border color,Default,Other...,";
  EXPECT_EQ(listed,
            L"|Font -Font,0,Change Font|Color -Buy Color,1" + border + L"16746335,(0,0,255) -Sell Color,2" + border +
                L"10191615,(255,0,0) -Font Buy Color,3" + border + L"16746335,(255,255,255) -Font Sell Color,4" +
                border +
                L"10191615,(255,255,255)|No. of Frozen Columns,5,,0|Property -Whole Row Select,6,,True -Show Grid Row,"
                L"7,,True -Header Hide,8,,False|Global -Multiple Trade Book Disable,9,,True -Auto Trade Write "
                L"CSV,10,,False");
  const auto& font = static_cast<CQORPFontProp&>(*Properties->GetProperties()[0]->GetSubItems()[0]);
  EXPECT_EQ(font.GetDialogFlags(), 257u);
  EXPECT_EQ(font.GetDialogColor(), 0xFFFFFFFFu);
  Pump();
  wxSizeEvent same(Window().GetSize());
  Window().GetEventHandler()->ProcessEvent(same);
  EXPECT_FALSE(wxTheApp->HasPendingEvents()) << "fitting the names reports the same size: it would never end";
  Properties->RemoveAll();
  Registry().PropertyListRequest(Properties, nullptr);
  Registry().PropertyListRequest(nullptr, this);
  EXPECT_TRUE(Properties->GetProperties().empty()) << "an address is missing";
  Registry().PropertyListRequest(Properties, this);
  EXPECT_EQ(Properties->GetProperties().size(), 5u) << "that was all that was missing";
  FocusMain();
  Properties->RemoveAll();
  Registry().PropertyListRequest(Properties, this);
  EXPECT_TRUE(Properties->GetProperties().empty()) << "no book has the focus";
}

TEST_F(PropertiesTest, AChangeGoesToEveryBookAndToTheFile) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk->Trade(2, "COMEX", "GC1", 2, 7, 10);
  Desk->Trade(3, "COMEX", "GC1", 1, 5, 10);
  CTradeBookBar &one = Open(), &two = OpenGold();
  FillFor(two);
  const wxVariant automatic = Color(1, *wxBLACK);
  using Look = std::function<bool(CTradeBookBar&)>;
  const struct {
    int Id;
    wxVariant Value;
    const char *Key, *Text;
    Look IsShown;
  } kRows[] = {
      {1, Color(wxPG_COLOUR_CUSTOM, wxColour(10, 20, 30)), "BuyColor", "1971210",
       [](CTradeBookBar& bar) { return Painted(bar).Background == 0x1E140Au; }},
      {1, automatic, "BuyColor", "16746335",
       [](CTradeBookBar& bar) {
         return Painted(bar).Background == 0xFF875Fu && bar.Dialog->GetStatic(30031)->GetTextColor() == 0xFF875Fu;
       }},
      {2, automatic, "SellColor", "10191615",
       [](CTradeBookBar& bar) { return bar.Dialog->GetStatic(30037)->GetTextColor() == 0x9B82FFu; }},
      {3, automatic, "FontBuyColor", "16746335",
       [](CTradeBookBar& bar) { return Painted(bar).TextColor == 0xFF875Fu; }},
      {4, automatic, "FontSellColor", "10191615",
       [](CTradeBookBar& bar) { return bar.Shown.Settings.FontSellColor == 0x9B82FF; }},
      {5, 3L, "ColumnFreeze", "3", Frozen},
      {5, 0L, "ColumnFreeze", "0", [](CTradeBookBar& bar) { return !Frozen(bar); }},
      {5, 4L, "ColumnFreeze", "4", Frozen},
      {5, -7L, "ColumnFreeze", "-7", [](CTradeBookBar& bar) { return !Frozen(bar); }},
      {6, false, "WholeRowSel", "0",
       [](CTradeBookBar& bar) {
         const CQORPGridRange selected = bar.Grid()->GetSelection(0);
         return selected.Left == selected.Right;
       }},
      {7, false, "GridLine", "0", [](CTradeBookBar& bar) { return !bar.Shown.Settings.GridLine; }},
      {8, true, "HeaderHide", "1", [](CTradeBookBar& bar) { return !bar.Grid()->IsHeaderEnabled(); }},
      {10, true, "AutoTradeWriteCSV", "1", [this](CTradeBookBar&) { return State().TradeStore.AutoTradeWriteCSV; }},
      {10, false, "AutoTradeWriteCSV", "0", [this](CTradeBookBar&) { return !State().TradeStore.AutoTradeWriteCSV; }},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Text + std::to_string(row.Id));
    Choose(row.Id, row.Value);
    EXPECT_EQ(Stored(row.Key), row.Text);
    EXPECT_TRUE(row.IsShown(one));
    EXPECT_TRUE(row.IsShown(two));
  }
  EXPECT_EQ(Stored("TotalRowShow"), "0");
  wxVariant font;
  font << wxFont(wxFontInfo(wxSize(0, 24)).FaceName(L"Sans").Bold().Italic());
  Choose(0, font);
  EXPECT_EQ(one.Grid()->GetGridFont(), two.Grid()->GetGridFont());
  EXPECT_EQ(two.Grid()->GetGridFont().GetStyle(), wxFONTSTYLE_ITALIC);
  const std::string stored = Stored("Font");
  EXPECT_EQ(stored.size(), 184u);
  EXPECT_EQ(stored.substr(32, 10), "bc02000001") << "bold and italic";

  CQORPProp foreign(L"Buy Color", false, 1);
  TradeBookScreen::PropertyChanged(&foreign, one.Grid());
  EXPECT_EQ(Stored("BuyColor"), "16746335");
  CQORPProp& buyColor = *Properties->GetProperties()[1]->GetSubItems()[0];
  buyColor.SetValue(ColorRef{0x123456});
  CTradeBookGrid windowless(*Screen, one.Shown);
  TradeBookScreen::PropertyChanged(nullptr, one.Grid());
  TradeBookScreen::PropertyChanged(&buyColor, nullptr);
  TradeBookScreen::PropertyChanged(&buyColor, &windowless);
  EXPECT_EQ(Stored("BuyColor"), "16746335") << "an address or the window is missing";
  TradeBookScreen::PropertyChanged(&buyColor, one.Grid());
  EXPECT_EQ(Stored("BuyColor"), "1193046");

  Stop();
  Start();
  CTradeBookBar& again = Open();
  EXPECT_EQ(Painted(again).Background, std::nullopt) << "there are no trades yet";
  const GridSettings& settings = again.Shown.Settings;
  EXPECT_EQ(settings.BuyColor, 0x123456u);
  EXPECT_EQ(settings.FontSellColor, 0x9B82FFu);
  EXPECT_EQ(settings.ColumnFreeze, -7);
  EXPECT_FALSE(settings.WholeRowSel || settings.GridLine || again.Grid()->IsHeaderEnabled());
  EXPECT_FALSE(State().TradeStore.AutoTradeWriteCSV) << "one key for the two names";
  again.OnPressCloseButton();
  EXPECT_EQ(Stored("Font"), stored) << "neither size nor face wanders from start to start";
}

// By the display's own keyboard and pointer.
TEST_F(PropertiesTest, TakesKeysAndClicks) {
  CTradeBookBar& bar = Open();
  FillFor(bar);
  ASSERT_TRUE(GiveRealFocus(Window()));
  Properties->SetFocus();
  wxUIActionSimulator user;
  const auto selected = [this] { return ItemOf(Window().GetSelection()); };
  const auto goDownTo = [&](int id) {
    int lost = 0;  // keys, to a window that got the focus late
    for (int step = 0; step < 14 && (selected() == nullptr || selected()->GetId() != id); ++step) {
      const wxPGProperty* before = Window().GetSelection();
      user.Char(WXK_DOWN);
      if (PumpUntil([&] { return Window().GetSelection() != before; })) continue;
      if (++lost > 2 || !GiveRealFocus(Window())) return false;
      Properties->SetFocus();
    }
    return selected() != nullptr && selected()->GetId() == id;
  };
  ASSERT_TRUE(goDownTo(5));
  user.Char(WXK_TAB);
  ASSERT_TRUE(PumpUntil([this] { return Window().IsEditorFocused(); }));
  user.Char('A', wxMOD_CONTROL);
  user.Char('2');
  user.Char(WXK_RETURN);
  EXPECT_TRUE(PumpUntil([this] { return Stored("ColumnFreeze") == "2"; }));
  EXPECT_TRUE(Frozen(bar));
  // A click on the box of a switch, which stands at the left of its value. Nothing may lie over it.
  bar.DockControlBar(DockSide::Left);
  Main->Hide();
  Pump();
  wxPGProperty* headerHide = Window().GetPropertyByLabel(L"Header Hide");
  const wxRect row = Window().GetPropertyRect(headerHide, headerHide);
  const wxPoint box(Window().GetSplitterPosition() + Window().FromDIP(10), row.y + row.height / 2);
  const auto isStored = [this] { return Stored("HeaderHide") == "1"; };
  for (int lost = 0; lost < 3 && !isStored(); ++lost) {  // clicks, to a window that came up late
    ASSERT_TRUE(GiveRealFocus(Window()));
    user.MouseMove(Window().GetPanel()->ClientToScreen(box));
    user.MouseClick();
    PumpUntil(isStored);
  }
  EXPECT_TRUE(isStored());
  EXPECT_FALSE(Asker->IsHeaderEnabled());
}

TEST_F(PropertiesTest, WarnsOnceWhileOtherBooksAreOpen) {
  CTradeBookBar& one = Open();
  FillFor(one);
  Choose(9, false);
  EXPECT_TRUE(Answers.Said.empty()) << "of one book";
  EXPECT_EQ(Stored("MultipleTradeBookDisable"), "0");
  Choose(9, true);
  for (int i = 0; i < 2; ++i) OpenGold();
  const std::wstring said = L"Trade Book: Please Close All TradeBook Except One.";
  for (std::size_t times = 1; times <= 2; ++times) {
    Choose(9, false);
    EXPECT_EQ(Answers.Said, std::vector<std::wstring>(times, said));
    EXPECT_EQ(State().WarnCount, 1u);
    EXPECT_EQ(Stored("MultipleTradeBookDisable"), "0") << "the other books save it";
    FocusMain();
    Registry().OnBookCommand();
    EXPECT_EQ(Registry().BarsById.size(), 3u);
    Choose(9, true);
    EXPECT_EQ(State().WarnCount, 0u);
  }
}

TEST_F(PropertiesTest, TakesWhateverIsStored) {
  const auto write = [](const wchar_t* key, const std::wstring& text) {
    const auto store = CQORPRegistrySP::Create(0, 0);
    store->CreatePath(kPath);
    store->Write(key, text);
  };
  GridSettings settings;
  EXPECT_FALSE(ReadGridSettings(L"TradeBook", settings, State()));
  EXPECT_TRUE(settings.WholeRowSel && settings.GridLine && State().MultipleTradeBookDisable);
  const wxFont usual = Open().Grid()->GetGridFont();
  write(L"SellColor", L"-1");
  CTradeBookBar& bar = OpenGold();
  CTradeBookGrid& grid = *bar.Grid();
  EXPECT_EQ(bar.Shown.Settings.SellColor, 0xFFFFFFFFu);
  EXPECT_EQ(bar.Shown.Settings.BuyColor, 0xFF0000u);
  EXPECT_FALSE(bar.Shown.Settings.WholeRowSel || bar.Shown.Settings.GridLine);
  EXPECT_TRUE(grid.IsHeaderEnabled());
  EXPECT_FALSE(State().MultipleTradeBookDisable);
  EXPECT_TRUE(State().TradeStore.AutoTradeWriteCSV);
  const struct {
    const wchar_t *Key, *Text;
  } kRows[] = {
      {L"Font", L"f4ffffff"},
      {L"Font", L"f4f"},
      {L"Font", L""},
      {L"Font",
       L"00000080"
       L"00000000"
       L"00000000"
       L"00000000"
       L"ffffff7f"},
      {L"ColumnFreeze", L"-2147483648"},
      {L"ColumnFreeze", L"2147483647"},
      {L"HeaderHide", L"many"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.Key);
    write(row.Key, row.Text);
    bar.Shown.LoadGridSettings();
    Pump();
    EXPECT_EQ(grid.GetGridFont(), usual);
  }
  EXPECT_EQ(bar.Shown.Settings.ColumnFreeze, 2147483647);
  EXPECT_TRUE(grid.IsHeaderEnabled());
  write(L"Font", L"0000008000000000000000000000000000ffff7f" + std::wstring(144, L'f'));
  bar.Shown.LoadGridSettings();
  Pump();
  EXPECT_TRUE(grid.GetGridFont().IsOk());
}

}  // namespace
