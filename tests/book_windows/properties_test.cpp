// The properties of books, from the change in a list as a user makes it to grids, totals, settings file and restart.
#include <wx/app.h>
#include <wx/grid.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/propgrid.h>
#include <wx/uiaction.h>

#include "tests/book_windows/books_fixture.h"
#include "tests/support/files.h"

namespace {

class PropertiesTest : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
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
  void Choose(const wchar_t* label, const wxVariant& value) {
    wxPGProperty* property = Window().GetPropertyByLabel(label);
    ASSERT_NE(property, nullptr) << label;
    if (property->IsCategory()) property = property->Item(0);  // "Font" is the group's label too
    EXPECT_TRUE(Window().ChangePropertyValue(property, value));
    Pump();
  }
  static wxVariant Color(int type, const wxColour& color) {
    wxVariant value;
    value << wxColourPropertyValue(static_cast<wxUint32>(type), color);
    return value;
  }
  // The value between the quotes in the file.
  std::string Stored(const std::string& key) {
    const std::string file = ReadFile(Desk->Folder / "TradeBookSettings.xml");
    const std::size_t at = file.find("<" + key + ">\"");
    if (at == std::string::npos) return "nothing";
    const std::size_t begin = at + key.size() + 3;
    return file.substr(begin, file.find('"', begin) - begin);
  }
  static bool HasLines(CTradeBookBar& bar) {
    return dynamic_cast<wxGrid&>(*bar.Grid()->GetRowsWindow()->GetParent()).GridLinesEnabled();
  }
  static bool SelectsWholeRows(CTradeBookBar& bar) {
    const CQORPGridRange selected = bar.Grid()->GetSelection(0);
    return selected.Left != selected.Right;
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
    if ((*at)->GetAttributeAsLong(wxPG_BOOL_USE_CHECKBOX, 0) != 0) listed += L"[]";
  }
  const std::wstring border = L",Specifies the default dialog border color,Default,Other...,";
  EXPECT_EQ(listed,
            L"|Font -Font,0,Change Font|Color -Buy Color,1" + border + L"16746335,(0,0,255) -Sell Color,2" + border +
                L"10191615,(255,0,0) -Font Buy Color,3" + border + L"16746335,(255,255,255) -Font Sell Color,4" +
                border + L"10191615,(255,255,255)|No. of Frozen Columns,5,,0|Property -Whole Row Select,6,,True[]" +
                L" -Show Grid Row,7,,True[] -Header Hide,8,,False[]|Global -Multiple Trade Book Disable,9,,True[]" +
                L" -Auto Trade Write CSV,10,,False[]");
  Pump();
  wxSizeEvent same(Window().GetSize());
  Window().GetEventHandler()->ProcessEvent(same);
  EXPECT_FALSE(wxTheApp->HasPendingEvents()) << "fitting the names reports the same size: it would never end";
  Registry().PropertyListRequest(Properties, this);
  EXPECT_EQ(Properties->GetProperties().size(), 5u) << "filled anew";
  EXPECT_EQ(State().Properties.size(), 11u);
}

TEST_F(PropertiesTest, AChangeGoesToEveryBookAndToTheFile) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk->Trade(2, "COMEX", "GC1", 2, 7, 10);
  Desk->Trade(3, "COMEX", "GC1", 1, 5, 10);
  CTradeBookBar &one = Open(), &two = OpenGold();
  FillFor(two);
  const wxVariant automatic = Color(1, *wxBLACK);
  // The item, its new value, the key and the text in the file, and whether a book shows it.
  using IsShown = std::function<bool(CTradeBookBar&)>;
  const std::tuple<const wchar_t*, wxVariant, const char*, const char*, IsShown> kRows[] = {
      {L"Buy Color", Color(wxPG_COLOUR_CUSTOM, wxColour(10, 20, 30)), "BuyColor", "1971210",
       [](CTradeBookBar& bar) { return Cell(bar, 0, 2).Background == 0x1E140Au; }},
      {L"Buy Color", automatic, "BuyColor", "16746335",
       [](CTradeBookBar& bar) { return bar.Dialog->GetStatic(30031)->GetTextColor() == 0xFF875Fu; }},
      {L"Sell Color", automatic, "SellColor", "10191615",
       [](CTradeBookBar& bar) { return bar.Dialog->GetStatic(30037)->GetTextColor() == 0x9B82FFu; }},
      {L"Font Buy Color", automatic, "FontBuyColor", "16746335",
       [](CTradeBookBar& bar) { return Cell(bar, 0, 2).TextColor == 0xFF875Fu; }},
      {L"Font Sell Color", automatic, "FontSellColor", "10191615",
       [](CTradeBookBar& bar) { return Cell(bar, 1, 2).TextColor == 0x9B82FFu; }},
      {L"No. of Frozen Columns", 3L, "ColumnFreeze", "3", Frozen},
      {L"No. of Frozen Columns", 0L, "ColumnFreeze", "0", std::not_fn(Frozen)},
      {L"No. of Frozen Columns", 4L, "ColumnFreeze", "4", Frozen},
      {L"Whole Row Select", false, "WholeRowSel", "0", std::not_fn(SelectsWholeRows)},
      {L"Show Grid Row", false, "GridLine", "0", std::not_fn(HasLines)},
      {L"Header Hide", true, "HeaderHide", "1", [](CTradeBookBar& bar) { return !bar.Grid()->IsHeaderEnabled(); }},
      {L"Auto Trade Write CSV", true, "AutoTradeWriteCSV", "1",
       [this](CTradeBookBar&) { return State().TradeStore.AutoTradeWriteCSV; }},
      {L"Auto Trade Write CSV", false, "AutoTradeWriteCSV", "0",
       [this](CTradeBookBar&) { return !State().TradeStore.AutoTradeWriteCSV; }},
  };
  int paints = 0;
  one.Grid()->GetRowsWindow()->Bind(wxEVT_PAINT, [&paints](wxPaintEvent& event) { event.Skip(), ++paints; });
  for (const auto& [label, value, key, text, isShown] : kRows) {
    SCOPED_TRACE(key + std::string(text));
    Choose(label, value);
    EXPECT_EQ(Stored(key), text);
    EXPECT_TRUE(isShown(one) && isShown(two));
    EXPECT_TRUE(paints > 0 || PumpUntil([&paints] { return paints > 0; }));
    paints = 0;
  }
  EXPECT_EQ(Stored("TotalRowShow"), "0");
  Desk->Trade(4, "COMEX", "GC1", 1, 5, 10);
  wxVariant font;
  font << wxFont(wxFontInfo(wxSize(0, 24)).FaceName(L"Sans").Bold().Italic());
  Choose(L"Font", font);
  EXPECT_EQ(one.Grid()->GetGridFont(), two.Grid()->GetGridFont());
  EXPECT_EQ(one.Grid()->GetVirtualRows(), 4) << "new rows show with a change";
  const std::string stored = Stored("Font");
  EXPECT_EQ(stored.substr(32, 10), "bc02000001") << "bold and italic";

  CQORPProp &buyColor = *Properties->GetProperties()[1]->GetSubItems()[0], foreign(L"Buy Color", false, 1);
  buyColor.SetValue(ColorRef{0x123456});
  CTradeBookGrid windowless(*Screen, one.Shown);
  TradeBookScreen::PropertyChanged(&foreign, one.Grid()), TradeBookScreen::PropertyChanged(nullptr, one.Grid());
  TradeBookScreen::PropertyChanged(&buyColor, nullptr), TradeBookScreen::PropertyChanged(&buyColor, &windowless);
  EXPECT_EQ(Stored("BuyColor"), "16746335") << "another's item, or an address or the window is missing";
  TradeBookScreen::PropertyChanged(&buyColor, one.Grid());
  EXPECT_EQ(Stored("BuyColor"), "1193046");
  Stop();
  Start();
  CTradeBookBar& again = Open();
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Desk->Trade(2, "COMEX", "GC1", 2, 5, 10);
  Beat();
  EXPECT_EQ(Cell(again, 1, 2).Background, 0x123456u);
  EXPECT_EQ(Cell(again, 0, 2).TextColor, 0x9B82FFu);
  EXPECT_FALSE(!Frozen(again) || SelectsWholeRows(again) || HasLines(again) || again.Grid()->IsHeaderEnabled());
  EXPECT_FALSE(State().TradeStore.AutoTradeWriteCSV) << "one key for the two names";
  again.OnPressCloseButton();
  EXPECT_EQ(Stored("Font"), stored) << "neither size nor face wanders from start to start";
}

// By the display's own keyboard.
TEST_F(PropertiesTest, TakesKeys) {
  CTradeBookBar& bar = Open();
  FillFor(bar);
  ASSERT_TRUE(GiveRealFocus(Window()));
  Properties->SetFocus();
  EXPECT_EQ(ItemOf(Window().GetSelection()), Properties->GetProperties()[0]->GetSubItems()[0].get()) << "the first";
  EXPECT_TRUE(Window().SelectProperty(Window().GetPropertyByLabel(L"No. of Frozen Columns"), true));
  ASSERT_TRUE(PumpUntil([this] { return Window().IsEditorFocused(); }));
  wxUIActionSimulator user;
  user.Char('A', wxMOD_CONTROL);
  user.Char('2');
  user.Char(WXK_RETURN);
  EXPECT_TRUE(PumpUntil([this] { return Stored("ColumnFreeze") == "2"; }));
  EXPECT_TRUE(Frozen(bar));
}

TEST_F(PropertiesTest, WarnsOnceWhileOtherBooksAreOpen) {
  CTradeBookBar& one = Open();
  CTradeBookBar& gold = OpenGold();
  FillFor(one);
  FocusGrid(gold);
  for (std::size_t times = 1; times <= 2; ++times) {
    Choose(L"Multiple Trade Book Disable", false);
    EXPECT_EQ(Answers.Said, std::vector<std::wstring>(times, L"Trade Book: Please Close All TradeBook Except One."));
    EXPECT_EQ(State().WarnCount, 1u);
    EXPECT_TRUE(PumpUntil([&gold] { return gold.HoldsFocus(); })) << "as before the message";
    EXPECT_EQ(Stored("MultipleTradeBookDisable"), "0") << "the other books save it";
    Choose(L"Multiple Trade Book Disable", true);
    EXPECT_EQ(State().WarnCount, 0u);
  }
  gold.OnPressCloseButton();
  Choose(L"Multiple Trade Book Disable", false);
  EXPECT_EQ(Answers.Said.size(), 2u) << "one book is left";
  EXPECT_EQ(Stored("MultipleTradeBookDisable"), "0");
}

// A stored height or weight may be any number.
TEST_F(PropertiesTest, FontsComeBackFromTheirBlocks) {
  // Height and weight, as stored and as shown.
  const std::int32_t kRows[][4] = {{-24, 700, 24, 700},
                                   {24, 400, 24, 400},
                                   {0, 0, 12, 400},
                                   {-1000, 1001, 200, 1000},
                                   {std::numeric_limits<std::int32_t>::min(), -7, 200, 400}};
  for (const auto& [height, weight, shownPx, shownWeight] : kRows) {
    SCOPED_TRACE(height);
    GridFont block;
    block.Height = height, block.Weight = weight;
    SetFaceName(block, L"Sans");
    const wxFont font = WindowFontOf(block);
    EXPECT_EQ(font.GetPixelSize().y, shownPx);
    EXPECT_EQ(font.GetNumericWeight(), shownWeight);
    EXPECT_EQ(font.GetFaceName(), L"Sans");
    EXPECT_EQ(std::u16string(FontBlockOf(font).FaceName), u"Sans");
  }
  for (std::uint8_t GridFont::*style : {&GridFont::Italic, &GridFont::Underline, &GridFont::StrikeOut}) {
    GridFont block;
    block.*style = 1;
    const GridFont back = FontBlockOf(WindowFontOf(block));
    EXPECT_TRUE(back.*style == 1 && back.Italic + back.Underline + back.StrikeOut == 1);
  }
}

}  // namespace
