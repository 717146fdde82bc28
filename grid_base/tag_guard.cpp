#include "grid_base/tag_guard.h"

#include <unordered_map>

#include "foundations/wide_text.h"
#include "grid_base/stretch_hashes.h"

namespace {

// A text as it comes back from a file.
std::wstring FileForm(const std::wstring& text) {
  std::wstring form = NarrowToWide(WideToNarrow(text));
  std::erase(form, L'\n');
  return form;
}

class TagGuard {
 public:
  void Enter(const CVELDPXMLNode& node) { ++NamesAround[HashOf(node)]; }
  void Leave(const CVELDPXMLNode& node) {
    const auto row = NamesAround.find(HashOf(node));
    if (--row->second == 0) NamesAround.erase(row);
  }

  // From the end, so that what stands behind each bracket is final. A tag may reach into the closing tag of the value's
  // own element. The code page makes no other character a bracket, so the brackets of value and file form are the same.
  void BreakTags(CVELDPXMLNode& leaf) const {
    std::size_t source = leaf.Value.size();
    if (leaf.Value.find(L'<') == std::wstring::npos) return;
    std::wstring text = FileForm(leaf.Value);
    const std::size_t size = text.size();
    text.append(L"\"</").append(FileForm(leaf.Name)).append(L">");
    StretchHashes hashes(text.size());
    std::size_t end = text.size();
    for (std::size_t at = text.size(); at-- > 0; hashes.Put(at, text[at])) {
      if (text[at] == L'>') end = at;
      if (at >= size || text[at] != L'<') continue;
      source = leaf.Value.rfind(L'<', source - 1);
      if (IsTagAround(hashes, text, at, end)) text[at] = leaf.Value[source] = L'(';
    }
  }

 private:
  static std::uint64_t HashOf(const CVELDPXMLNode& node) { return StretchHashes::OfWhole(FileForm(node.Name)); }

  bool IsTagAround(const StretchHashes& hashes, std::wstring_view text, std::size_t at, std::size_t end) const {
    const bool closes = text[at + 1] == L'/' && NamesAround.contains(hashes.Of(at + 2, end));
    return closes || NamesAround.contains(hashes.Of(at + 1, end));
  }

  std::unordered_map<std::uint64_t, std::size_t> NamesAround;  // and how many elements around have each
};

}  // namespace

void BreakTagsInValues(CVELDPXMLNode& root) {
  struct Open {
    CVELDPXMLNode* Node;
    std::size_t NextChild;
  };
  TagGuard guard;
  std::vector<Open> open;
  const auto enter = [&](CVELDPXMLNode& node) {
    guard.Enter(node);
    if (!node.IsBranch()) guard.BreakTags(node);
    open.push_back({&node, 0});
  };
  enter(root);
  while (!open.empty()) {
    Open& top = open.back();
    if (top.NextChild < top.Node->Children().size()) {
      enter(*top.Node->Children()[top.NextChild++]);
    } else {
      guard.Leave(*top.Node);
      open.pop_back();
    }
  }
}
