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
    CVELDSGridCtrl::PasteRecord(record);
    Pasted.push_back(record.Cursor);
  }
  void CopyToClipboard(bool cut) override { Copied += cut ? 'x' : 'c'; }
  std::vector<int> Pasted;
  std::string Copied;
};

std::vector<std::uint8_t> RecordOf(std::uint16_t content) {
  std::vector<std::uint8_t> bytes(10u + content);
  bytes[8] = static_cast<std::uint8_t>(content);
  bytes[9] = static_cast<std::uint8_t>(content >> 8);
  return bytes;
}

TEST(PrivateClipboardTest, CutsABlockAtItsLengths) {
  const auto records = [](const std::vector<std::uint8_t>& block) {
    std::size_t count = 0;
    ForEachClipboardRecord(block, [&count](std::span<const std::uint8_t>) { ++count; });
    return count;
  };
  std::vector<std::uint8_t> block = RecordOf(3);
  for (const std::uint8_t byte : RecordOf(0)) block.push_back(byte);
  for (std::ptrdiff_t size = 0; size <= 23; ++size)
    EXPECT_EQ(records({block.begin(), block.begin() + size}), size < 13 ? 0u : size < 23 ? 1u : 2u) << size;
  EXPECT_EQ(records(RecordOf(0xFFFF - 10)), 1u);
  EXPECT_EQ(records(RecordOf(0xFFFF - 9)), 0u) << "no message is that long";
}

class BaseGridTest : public GuiTest {
 protected:
  PasteGrid& MakeGrid() {
    PasteGrid& grid = MakeChild<PasteGrid>(Host);
    EXPECT_TRUE(grid.Create(Frame, 1));
    return grid;
  }
  const GridHost Host{{}};
};

TEST_F(BaseGridTest, KeysReachTheClipboardWithControlAlone) {
  PasteGrid& grid = MakeGrid();
  Pump();
  wxWindow& rows = *grid.GetRowsWindow();
  std::string goneOn;
  rows.Bind(wxEVT_KEY_DOWN, [&goneOn](wxKeyEvent& key) { goneOn += static_cast<char>(key.GetKeyCode()); });
  grid.ClipboardAppend(RecordOf(3)), grid.ClipboardAppend(RecordOf(7));
  grid.ClipboardCommit();
  Press(rows, 'V', kControl);
  grid.ClipboardAppend(RecordOf(1)), grid.ClipboardCommit();
  Press(rows, 'V', kControl);
  EXPECT_EQ(grid.Pasted, (std::vector<int>{13, 17, 11}));
  for (const auto& [key, held] : {std::pair('C', kControl + 0),
                                  {'X', kControl},
                                  {'C', kControl | kShift},
                                  {'X', kControl | kAlt},
                                  {'Z', kControl}})
    Press(rows, key, held);
  EXPECT_EQ(grid.Copied, "cx");
  EXPECT_EQ(goneOn, "CXZ");
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
