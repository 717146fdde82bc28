#include "grid_base/private_clipboard.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

#include <memory>

namespace {

constexpr const char* kFormatName = "VELD_CLIPBOARD";
constexpr std::size_t kHeaderSize = 10, kLengthPlace = 8, kLargestMessage = 0xFFFF;

}  // namespace

void ForEachClipboardRecord(std::span<const std::uint8_t> block,
                            const std::function<void(std::span<const std::uint8_t>)>& take) {
  while (block.size() >= kHeaderSize) {
    const std::size_t size = kHeaderSize + block[kLengthPlace] + 256u * block[kLengthPlace + 1];
    if (size > block.size() || size > kLargestMessage) return;
    take(block.first(size));
    block = block.subspan(size);
  }
}

void PrivateClipboard::Commit() {
  const std::vector<std::uint8_t> bytes = std::exchange(Collected, {});
  const wxClipboardLocker clipboard;
  if (!clipboard) return;
  auto data = std::make_unique<wxCustomDataObject>(wxDataFormat(kFormatName));
  data->SetData(bytes.size(), bytes.data());
  wxTheClipboard->SetData(data.release());
}

std::vector<std::uint8_t> PrivateClipboard::Take() {
  const wxClipboardLocker clipboard;
  wxCustomDataObject data{wxDataFormat(kFormatName)};
  if (!clipboard || !wxTheClipboard->GetData(data)) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(data.GetData());
  return {bytes, bytes + data.GetSize()};
}
