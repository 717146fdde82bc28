#include "grid_base/tag_matcher.h"

#include <algorithm>
#include <unordered_map>

#include "grid_base/stretch_hashes.h"

TagMatcher::TagMatcher(std::wstring_view text) {
  const StretchHashes hashes(text);
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> open;  // by name: tags that nothing has closed yet
  std::size_t end = text.find(L'>');
  for (std::size_t at = text.find(L'<'); at != std::wstring_view::npos; at = text.find(L'<', at + 1)) {
    if (end != std::wstring_view::npos && end < at) end = text.find(L'>', at);
    if (end == std::wstring_view::npos) break;
    // A tag that begins with a stroke closes the name behind it, and may itself be a name that is opened.
    if (at + 1 < end && text[at + 1] == L'/') {
      if (const auto row = open.find(hashes.Of(at + 2, end)); row != open.end() && !row->second.empty()) {
        Tags[row->second.back()].Closing = at;
        row->second.pop_back();
      }
    }
    open[hashes.Of(at + 1, end)].push_back(Tags.size());
    Tags.push_back({at, kNone});
  }
}

std::size_t TagMatcher::ClosingOf(std::size_t opening) const noexcept {
  const auto found = std::lower_bound(Tags.begin(), Tags.end(), opening,
                                      [](const Tag& tag, std::size_t place) { return tag.Place < place; });
  return found == Tags.end() || found->Place != opening ? kNone : found->Closing;
}
