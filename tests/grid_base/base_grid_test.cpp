#include "grid_base/windows/base_grid.h"

#include "grid_base/windows/window_boxes.h"
#include "host_link/messages/packet_reader.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/system/make_child.h"

namespace {

class PasteGrid : public CVELDSGridCtrl {
 public:
  explicit PasteGrid(const GridHost& host) : CVELDSGridCtrl(41, "Paste", L"ColumnProfile", host) {}
  void PasteRecord(CQORPacketReader& record) override {
    Pasted.push_back(record.End);
    CVELDSGridCtrl::PasteRecord(record);
  }
  void CopyToClipboard(bool cut) override { Copied += cut ? 'x' : 'c'; }
  std::vector<int> Pasted;
  std::string Copied;
};

std::vector<std::uint8_t> RecordOf(std::uint8_t content) {
  std::vector<std::uint8_t> bytes(10 + content, 0xAB);
  bytes[8] = content;
  bytes[9] = 0;
  return bytes;
}

TEST(PrivateClipboardTest, CutsABlockAtItsLengths) {
  const std::vector<std::uint8_t> first = RecordOf(3), empty = RecordOf(0);
  std::vector<std::uint8_t> block(first);
  block.insert(block.end(), empty.begin(), empty.end());
  for (std::size_t size = 0; size <= block.size(); ++size) {
    SCOPED_TRACE(size);
    const std::vector<std::uint8_t> cut(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size));
    std::vector<std::size_t> sizes;
    ForEachClipboardRecord(cut, [&](std::span<const std::uint8_t> record) { sizes.push_back(record.size()); });
    EXPECT_EQ(sizes.size(), size < 13 ? 0u : size < 23 ? 1u : 2u);
  }
}

class BaseGridTest : public GuiTest {};

TEST_F(BaseGridTest, KeysReachTheClipboardWithControlAlone) {
  int focused = 0;
  const GridHost host{[&](void*, bool closed) { focused += closed ? 100 : 1; }};
  PasteGrid& grid = MakeChild<PasteGrid>(host);
  ASSERT_TRUE(grid.Create(Frame, 1));
  Pump();
  grid.ClipboardAppend(RecordOf(3));
  grid.ClipboardAppend(RecordOf(7));
  grid.ClipboardCommit();
  Press(*grid.GetRowsWindow(), 'V', kControl);
  EXPECT_EQ(grid.Pasted, (std::vector<int>{13, 17}));
  Press(*grid.GetRowsWindow(), 'C', kControl);
  Press(*grid.GetRowsWindow(), 'X', kControl);
  Press(*grid.GetRowsWindow(), 'C', kControl | kShift);
  Press(*grid.GetRowsWindow(), 'C', kControl | kAlt);
  EXPECT_EQ(grid.Copied, "cx");
  grid.OnGridFocus();
  EXPECT_GE(focused, 1);
  EXPECT_LT(focused, 100);
}

TEST_F(BaseGridTest, FilterCommands) {
  const GridHost host{{}};
  PasteGrid& grid = MakeChild<PasteGrid>(host);
  ASSERT_TRUE(grid.Create(Frame, 1));
  grid.InsertColumn(0, L"Server", 80);
  grid.SetVirtualRows(3);
  for (const wchar_t* text : {L"Show Filter", L"Hide Filter", L"Show Filter"}) {
    wxUpdateUIEvent update(30023);
    update.Enable(false);
    grid.UpdateFilterMenuText(update);
    grid.EnableCommand(update);
    EXPECT_EQ(update.GetText(), text);
    EXPECT_TRUE(update.GetEnabled());
    grid.ToggleFilterBar();
  }
  grid.SetCurSel(1);
  grid.SetFilterText(0, L"A*");
  grid.ResetFilter();
  EXPECT_EQ(grid.GetCurSel(), -1);
  EXPECT_EQ(grid.GetFilterText(0), L"");
  EXPECT_TRUE(grid.IsFilterBarEnabled());
}

TEST_F(BaseGridTest, ShowsAPopupAtOnce) {
  const std::size_t before = wxTopLevelWindows.size();
  ShowPopupMessage("0601TRD.txt Successfully exported..!!");
  ASSERT_EQ(wxTopLevelWindows.size(), before + 1);
  wxWindow* popup = wxTopLevelWindows.back();
  EXPECT_TRUE(popup->IsShown());
  EXPECT_EQ(popup->GetChildren().front()->GetLabel(), L"0601TRD.txt Successfully exported..!!");
  popup->Close(true);
}

// The labels of the box from top left to bottom right.
std::wstring PartsOf(wxDialog& dialog) {
  std::wstring text;
  for (wxWindow* part : dialog.GetChildren())
    text += (text.empty() ? L"" : L"|") + wxControl::RemoveMnemonics(part->GetLabel()).ToStdWstring();
  return text;
}

TEST_F(BaseGridTest, ButtonCodesBecomeButtons) {
  wxFrame& other = MakeChild<wxFrame>(Frame, wxID_ANY, L"Other");
  other.Show();
  wxWindow& inOther = MakeChild<wxWindow>(&other, wxID_ANY);
  WindowBoxes boxes;
  CQORDLLComman terminal([](const char*) -> void* { return nullptr; });
  terminal.Boxes = &boxes;
  terminal.ButtonCaptions = {L"Left", L"Right"};
  const struct {
    const wchar_t* Parts;
    std::size_t Pressed;
    int Id;
  } rows[] = {
      {L"OK", 0, 1},
      {L"Yes|No", 1, 7},
      {L"OK|Cancel", 1, 2},
      {L"Retry|Cancel", 0, 4},
      {L"Abort|Retry|Ignore", 2, 5},
      {L"Cancel|Try Again|Continue", 1, 10},
      {L"Yes|No|Cancel", 0, 6},
      {L"Left|Right", 1, 1001},
  };
  for (std::uint32_t code = 0; code < std::size(rows); ++code) {
    SCOPED_TRACE(code);
    const auto& row = rows[code];
    const bool withCheck = code % 2 == 1;
    Frame->CallAfter([&] {
      ASSERT_TRUE(PumpUntil([] { return ModalDialog() != nullptr; }));
      EXPECT_TRUE(wxIsBusy());
      EXPECT_EQ(PartsOf(*ModalDialog()),
                std::wstring(L"Sure?|") + (withCheck ? L" Don't Ask Again|" : L"") + row.Parts);
      if (withCheck) {
        EXPECT_EQ(ModalDialog()->GetParent(), &other);
      }
      wxWindow* button = ModalDialog()->GetChildren()[(withCheck ? 2 : 1) + row.Pressed];
      wxCommandEvent click(wxEVT_BUTTON, button->GetId());
      button->GetEventHandler()->ProcessEvent(click);
    });
    // A pointer that is no window of the toolkit counts as none.
    const int answer = withCheck ? terminal.ShowMessageWithCheck(&inOther, L"Book", L"Sure?", code, 5, 0, true)
                                 : terminal.ShowMessage(&boxes, L"Book", L"Sure?", code, 5, 0);
    EXPECT_EQ(answer, row.Id);
    EXPECT_FALSE(wxIsBusy());
  }
}

class MinimizedBox : public CQORPMessageBoxXML {
 public:
  using CQORPMessageBoxXML::CQORPMessageBoxXML;
  void CloseWindow() override { ++Minimized; }
  int Minimized = 0;
};

TEST_F(BaseGridTest, MessageNumber27MinimizesAndEscapeAnswers) {
  MinimizedBox box({.Parent = Frame, .Text = L"Sure?", .Style = 1});
  for (const CQORPMessage& message : {CQORPMessage{0x100, 27}, {0x101, 27}, {26, 0}, {28, 27}})
    EXPECT_FALSE(box.PreTranslateMessage(message));
  EXPECT_EQ(box.Minimized, 0);
  EXPECT_FALSE(box.PreTranslateMessage({27, 0}));
  EXPECT_EQ(box.Minimized, 1);
  Frame->CallAfter([] {
    ASSERT_TRUE(PumpUntil([] { return ModalDialog() != nullptr; }));
    Press(*ModalDialog(), WXK_ESCAPE);
  });
  EXPECT_EQ(box.ShowModal(), 2);
  EXPECT_EQ(box.Minimized, 1);
}

}  // namespace
