#include "grid_base/tag_matcher.h"

#include <algorithm>
#include <unordered_map>

namespace {

constexpr std::uint64_t kModulus = (std::uint64_t{1} << 61) - 1;
constexpr std::uint64_t kBase = 0x0F1E2D3C4B5A6979;

// The product modulo 2^61 - 1, put together from 32-bit halves.
std::uint64_t Times(std::uint64_t a, std::uint64_t b) noexcept {
  const std::uint64_t aHigh = a >> 31, aLow = a & 0x7FFFFFFF, bHigh = b >> 31, bLow = b & 0x7FFFFFFF;
  const std::uint64_t middle = aLow * bHigh + aHigh * bLow;
  const std::uint64_t sum = aHigh * bHigh * 2 + (middle >> 30) + ((middle & 0x3FFFFFFF) << 31) + aLow * bLow;
  const std::uint64_t folded = (sum & kModulus) + (sum >> 61);
  return folded >= kModulus ? folded - kModulus : folded;
}

// Polynomial hashes of every stretch of a text.
class StretchHashes {
 public:
  explicit StretchHashes(std::wstring_view text) : Sums(text.size() + 1), Powers(text.size() + 1) {
    Powers[0] = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
      Sums[i + 1] = (Times(Sums[i], kBase) + static_cast<std::uint64_t>(text[i]) + 1) % kModulus;
      Powers[i + 1] = Times(Powers[i], kBase);
    }
  }
  std::uint64_t Of(std::size_t begin, std::size_t end) const noexcept {
    return (Sums[end] + kModulus - Times(Sums[begin], Powers[end - begin])) % kModulus;
  }

 private:
  std::vector<std::uint64_t> Sums;
  std::vector<std::uint64_t> Powers;
};

}  // namespace

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
