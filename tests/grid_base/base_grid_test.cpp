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
  std::vector<std::uint8_t> block = RecordOf(3);
  for (const std::uint8_t byte : RecordOf(0)) block.push_back(byte);
  for (std::size_t size = 0; size <= block.size(); ++size) {
    const std::vector<std::uint8_t> cut(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size));
    std::size_t records = 0;
    ForEachClipboardRecord(cut, [&](std::span<const std::uint8_t>) { ++records; });
    EXPECT_EQ(records, size < 13 ? 0u : size < 23 ? 1u : 2u) << size;
  }
}

class BaseGridTest : public GuiTest {
 protected:
  PasteGrid& MakeGrid() {
    PasteGrid& grid = MakeChild<PasteGrid>(Host);
    EXPECT_TRUE(grid.Create(Frame, 1));
    return grid;
  }
  int Focused = 0;
  const GridHost Host{[this](void*, bool closed) { Focused += closed ? 100 : 1; }};
};

TEST_F(BaseGridTest, KeysReachTheClipboardWithControlAlone) {
  PasteGrid& grid = MakeGrid();
  Pump();
  for (const std::uint8_t content : {std::uint8_t{3}, std::uint8_t{7}}) grid.ClipboardAppend(RecordOf(content));
  grid.ClipboardCommit();
  Press(*grid.GetRowsWindow(), 'V', kControl);
  EXPECT_EQ(grid.Pasted, (std::vector<int>{13, 17}));
  for (const auto& [key, held] :
       {std::pair('C', kControl + 0), {'X', kControl}, {'C', kControl | kShift}, {'C', kControl | kAlt}})
    Press(*grid.GetRowsWindow(), key, held);
  EXPECT_EQ(grid.Copied, "cx");
  grid.OnGridFocus();
  EXPECT_TRUE(Focused >= 1 && Focused < 100);
}

TEST_F(BaseGridTest, ResetFilterClearsSelectionAndFields) {
  PasteGrid& grid = MakeGrid();
  grid.InsertColumn(0, L"Server", 80);
  grid.SetVirtualRows(3);
  wxUpdateUIEvent update;
  grid.EnableCommand(update);
  EXPECT_TRUE(update.GetSetEnabled() && update.GetEnabled());
  grid.ToggleFilterBar();
  grid.SetCurSel(1);
  grid.SetFilterText(0, L"A*");
  grid.ResetFilter();
  EXPECT_EQ(grid.GetCurSel(), -1);
  EXPECT_TRUE(grid.GetFilterText(0).empty() && grid.IsFilterBarEnabled());
}

// The labels of the box from top left to bottom right.
wxString PartsOf(wxDialog& dialog) {
  wxString text;
  for (wxWindow* part : dialog.GetChildren()) text += L"|" + wxControl::RemoveMnemonics(part->GetLabel());
  return text;
}

TEST_F(BaseGridTest, ShowsTheBoxesOfTheFunctionTable) {
  wxFrame& other = MakeChild<wxFrame>(Frame, wxID_ANY, L"Other");
  other.Show();
  wxWindow& inOther = MakeChild<wxWindow>(&other, wxID_ANY);
  WindowBoxes boxes;
  CQORDLLComman terminal([](const char*) -> void* { return nullptr; });
  terminal.Boxes = &boxes;
  terminal.ButtonCaptions = {L"Left", L"Right"};
  for (const bool withCheck : {false, true}) {
    Frame->CallAfter([&] {
      ASSERT_TRUE(PumpUntil([] { return ModalDialog() != nullptr; }));
      EXPECT_TRUE(wxIsBusy());
      EXPECT_EQ(PartsOf(*ModalDialog()), withCheck ? L"|Sure?| Don't Ask Again|Left|Right" : L"|Sure?|Retry|Cancel");
      EXPECT_TRUE(!withCheck || ModalDialog()->GetParent() == &other) << "without a window it is the active one's";
      wxWindow* last = ModalDialog()->GetChildren().back();
      wxCommandEvent click(wxEVT_BUTTON, last->GetId());
      last->GetEventHandler()->ProcessEvent(click);
    });
    // A pointer that is no window of the toolkit counts as none.
    const int answer = withCheck ? terminal.ShowMessageWithCheck(&inOther, L"Book", L"Sure?", 7, 5, 0, true)
                                 : terminal.ShowMessage(&boxes, L"Book", L"Sure?", 3, 5, 0);
    EXPECT_EQ(answer, withCheck ? 1001 : 2);
    EXPECT_FALSE(wxIsBusy());
  }
}

class MinimizedBox : public CQORPMessageBoxXML {
 public:
  using CQORPMessageBoxXML::CQORPMessageBoxXML;
  void CloseWindow() override { ++Minimized; }
  int Minimized = 0;
};

TEST_F(BaseGridTest, MessageNumber27Minimizes) {
  MinimizedBox box({.Parent = Frame, .Text = L"Sure?", .Style = 1});
  for (const CQORPMessage& message : {CQORPMessage{0x100, 27}, {26, 0}, {28, 27}, {27, 0}}) {
    EXPECT_FALSE(box.PreTranslateMessage(message));
    EXPECT_EQ(box.Minimized, message.Number == 27 ? 1 : 0);
  }
}

}  // namespace
