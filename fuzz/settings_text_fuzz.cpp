#include <algorithm>
#include <sstream>
#include <vector>

#include "fuzz/fuzz_functions.h"
#include "grid_base/settings/settings_text.h"
#include "tests/grid_base/slow_settings_text.h"

namespace {

constexpr std::size_t kLargestFile = 65535;
constexpr std::size_t kLargestForTheSlowWay = 2048;

std::wstring TextOf(const std::string& file) {
  std::istringstream stream(file);
  return JoinedLines(stream).value_or(L"");
}

template <typename Test>
bool AnyNode(const CVELDPXMLNode& root, Test test) {
  std::vector<const CVELDPXMLNode*> waiting{&root};
  while (!waiting.empty()) {
    const CVELDPXMLNode* node = waiting.back();
    waiting.pop_back();
    if (test(*node)) return true;
    for (const auto& child : node->Children()) waiting.push_back(child.get());
  }
  return false;
}

}  // namespace

int FuzzSettingsText(const std::uint8_t* data, std::size_t size) {
  const std::string file(reinterpret_cast<const char*>(data), std::min(size, kLargestFile));
  const std::wstring text = TextOf(file);
  CVELDPXMLNode root;
  const bool loaded = ParseNode(root, text);
  const bool small = file.size() <= kLargestForTheSlowWay;
  if (small) {
    CVELDPXMLNode slow;
    RequireProperty(SlowParse(slow, text) == loaded, "the slow way agrees on whether the text is whole");
    RequireProperty(ShapeOf(slow) == ShapeOf(root), "the slow way reads the same tree");
  }
  const auto has = [](const std::wstring& whole) { return whole.find(L'<') != std::wstring::npos; };
  const auto holdsTag = [&](const CVELDPXMLNode& node) { return has(node.Value); };
  // By a name that the store itself would not give.
  const auto bendsTags = [&](const CVELDPXMLNode& node) { return has(node.Name) || node.Name.starts_with(L'/'); };
  if (!loaded || (AnyNode(root, holdsTag) && AnyNode(root, bendsTags))) return 0;
  // A root that is no branch keeps no value.
  root.Value.clear();
  BreakTagsInValues(root);
  const std::string saved = SettingsFileBytes(root);
  CVELDPXMLNode again;
  RequireProperty(ParseNode(again, TextOf(saved)), "what was saved loads");
  RequireProperty(SettingsFileBytes(again) == saved, "what was loaded saves the same");
  if (small) RequireProperty(ShapeOf(again) == ShapeOf(root), "what was saved loads as the same tree");
  return 0;
}
