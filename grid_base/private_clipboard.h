// PrivateClipboard: records on the clipboard in the system's own format "VELD_CLIPBOARD": messages one behind the
// other, each with its length at byte 8. Not text or HTML. Used on the calling thread of the windows only.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

// Cuts a block into its records: length at byte 8, ten bytes of header before the content. What claims to be longer
// than the rest of the block, or is shorter than a header, ends the walk. Pure.
void ForEachClipboardRecord(std::span<const std::uint8_t> block,
                            const std::function<void(std::span<const std::uint8_t>)>& take);

class PrivateClipboard {
 public:
  // Collects records for the next Commit.
  void Append(std::vector<std::uint8_t> bytes) { Collected.insert(Collected.end(), bytes.begin(), bytes.end()); }
  // Puts what was collected on the clipboard, beside nothing else, and forgets it, whether the clipboard took it or
  // not.
  void Commit();
  // The block on the clipboard; empty where there is none of this format.
  static std::vector<std::uint8_t> Take();

 private:
  std::vector<std::uint8_t> Collected;
};
