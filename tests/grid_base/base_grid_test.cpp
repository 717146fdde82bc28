#include "grid_base/base_grid.h"

#include <filesystem>

#include "host_link/packet_reader.h"
#include "tests/toolkit/gui_test.h"

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
  const GridHost host{std::filesystem::temp_directory_path(), [&](void*, bool closed) { focused += closed ? 100 : 1; }};
  auto grid = new PasteGrid(host);
  ASSERT_TRUE(grid->Create(Frame, 1));
  Pump();
  grid->ClipboardAppend(RecordOf(3));
  grid->ClipboardAppend(RecordOf(7));
  grid->ClipboardCommit();
  Press(*grid->GetRowsWindow(), 'V', kControl);
  EXPECT_EQ(grid->Pasted, (std::vector<int>{13, 17}));
  Press(*grid->GetRowsWindow(), 'C', kControl);
  Press(*grid->GetRowsWindow(), 'X', kControl);
  Press(*grid->GetRowsWindow(), 'C', kControl | kShift);
  Press(*grid->GetRowsWindow(), 'C', kControl | kAlt);
  EXPECT_EQ(grid->Copied, "cx");
  grid->OnGridFocus();
  EXPECT_GE(focused, 1);
  EXPECT_LT(focused, 100);
}

}  // namespace
