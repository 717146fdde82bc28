// The text form of the settings tree by its rules, one element after the other, at any cost: ParseNode must agree with
// it. Shares no code with ParseNode.
#pragma once

#include <string>

#include "grid_base/settings/settings_tree.h"

inline constexpr wchar_t kSlowBlanks[] = L" \t\n\v\f\r\x85\xA0";

inline bool SlowExtract(std::wstring& text, const std::wstring& name, std::wstring& content) {
  const std::wstring opening = L"<" + name + L">", closing = L"</" + name + L">";
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
        content.erase(0, content.find_first_not_of(kSlowBlanks));
        content.erase(content.find_last_not_of(kSlowBlanks) + 1);
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

inline bool SlowTakeElement(CVELDPXMLNode& node, std::wstring& text) {
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
    if (!SlowTakeElement(*child, content)) return false;
    node.AdoptChild(std::move(child));
  }
  return true;
}

inline bool SlowParse(CVELDPXMLNode& node, std::wstring text) {
  return SlowTakeElement(node, text);
}

// The tree in one line, name(child,child) or name=value, to compare whole trees.
inline std::wstring ShapeOf(const CVELDPXMLNode& node) {
  if (node.Children().empty()) return node.Name + L"=" + node.Value;
  std::wstring shape = node.Name + L"(";
  for (const auto& child : node.Children()) shape += ShapeOf(*child) + L",";
  shape.back() = L')';
  return shape;
}
