#include "tests/grid_base/slow_settings_text.h"

namespace {

constexpr wchar_t kBlanks[] = L" \t\n\v\f\r\x85\xA0";

bool SlowExtract(std::wstring& text, const std::wstring& name, std::wstring& content) {
  const std::wstring opening = L"<" + name + L">";
  const std::wstring closing = L"</" + name + L">";
  const std::size_t start = text.find(opening);
  if (start == std::wstring::npos) return false;
  std::size_t at = start + opening.size();
  for (int depth = 1; at + closing.size() <= text.size();) {
    if (at + opening.size() < text.size() && text.compare(at, opening.size(), opening) == 0) {
      ++depth;
      at += opening.size();
    } else if (text.compare(at, closing.size(), closing) == 0) {
      if (--depth == 0) {
        content = text.substr(start + opening.size(), at - start - opening.size());
        content.erase(0, content.find_first_not_of(kBlanks));
        content.erase(content.find_last_not_of(kBlanks) + 1);
        text.erase(start, at + closing.size() - start);
        return true;
      }
      at += closing.size();
    } else {
      ++at;
    }
  }
  return false;
}

bool TakeElement(CVELDPXMLNode& node, std::wstring& text) {
  node.Value.clear();
  node.RemoveChildren();
  if (text.empty() || text[0] != L'<' || text.find(L'>') == std::wstring::npos) return false;
  node.Name = text.substr(1, text.find(L'>') - 1);
  std::wstring content;
  if (!SlowExtract(text, node.Name, content)) return false;
  if (content.empty()) return true;
  if (content[0] == L'"') {
    node.Value = content.size() > 2 ? content.substr(1, content.size() - 2) : L"";
    return true;
  }
  if (content[0] != L'<') return false;
  while (!content.empty()) {
    auto child = std::make_unique<CVELDPXMLNode>();
    if (!TakeElement(*child, content)) return false;
    node.AdoptChild(std::move(child));
  }
  return true;
}

}  // namespace

bool SlowParse(CVELDPXMLNode& node, std::wstring text) {
  return TakeElement(node, text);
}

std::wstring ShapeOf(const CVELDPXMLNode& node) {
  if (node.Children().empty()) return node.Name + L"=" + node.Value;
  std::wstring shape = node.Name + L"(";
  for (const auto& child : node.Children()) shape += ShapeOf(*child) + L",";
  shape.back() = L')';
  return shape;
}
