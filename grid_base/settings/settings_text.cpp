#include "grid_base/settings/settings_text.h"

#include <istream>

#include "foundations/text_tools.h"
#include "grid_base/settings/tag_guard.h"

namespace {

void AppendOpening(std::wstring& text, const std::wstring& name) {
  text.append(L"<").append(name).append(L">");
}
void AppendClosing(std::wstring& text, const std::wstring& name) {
  text.append(L"</").append(name).append(L">\n");
}

struct Span {
  std::size_t Begin;
  std::size_t End;
};

// Without the white space around the content of an element.
Span Trimmed(std::wstring_view text, Span span) {
  while (span.Begin < span.End && IsWideSpace(text[span.Begin])) ++span.Begin;
  while (span.Begin < span.End && IsWideSpace(text[span.End - 1])) --span.End;
  return span;
}

// A branch whose elements are being read, and the rest of its content.
struct OpenBranch {
  CVELDPXMLNode* Node;
  Span Rest;
};

class Parser {
 public:
  explicit Parser(std::wstring_view text) : Text(text), Tags(text) {}

  bool ParseRoot(CVELDPXMLNode& root) {
    Span rest{0, Text.size()};
    if (!ReadElement(root, rest)) return false;
    while (!Branches.empty()) {
      if (Branches.back().Rest.Begin == Branches.back().Rest.End) {
        Close();
      } else if (!ReadChild()) {
        return false;
      }
    }
    return true;
  }

 private:
  // A child is attached when it is read whole; until then it is in Unattached.
  bool ReadChild() {
    Unattached.push_back(std::make_unique<CVELDPXMLNode>());
    const std::size_t depth = Branches.size();
    if (!ReadElement(*Unattached.back(), Branches.back().Rest)) return false;
    if (Branches.size() == depth) Attach();
    return true;
  }

  void Close() {
    Branches.pop_back();
    if (!Branches.empty()) Attach();
  }

  void Attach() {
    Branches.back().Node->AdoptChild(std::move(Unattached.back()));
    Unattached.pop_back();
  }

  // Removes one element from the front of the span. A branch is only opened; its elements follow.
  bool ReadElement(CVELDPXMLNode& node, Span& rest) {
    node.Value.clear();
    node.RemoveChildren();
    if (rest.Begin == rest.End || Text[rest.Begin] != L'<') return false;
    const std::size_t nameEnd = Text.find(L'>', rest.Begin);
    if (nameEnd == std::wstring_view::npos || nameEnd >= rest.End) return false;
    node.Name = Text.substr(rest.Begin + 1, nameEnd - rest.Begin - 1);
    const std::size_t closing = Tags.ClosingOf(rest.Begin);
    const std::size_t closingSize = node.Name.size() + 3;
    if (closing == TagMatcher::kNone || closing + closingSize > rest.End) return false;
    if (Text.substr(closing + 2, node.Name.size()) != node.Name) return false;
    const Span content = Trimmed(Text, {nameEnd + 1, closing});
    rest.Begin = closing + closingSize;
    return ReadContent(node, content);
  }

  bool ReadContent(CVELDPXMLNode& node, Span content) {
    const std::size_t size = content.End - content.Begin;
    if (size == 0) return true;
    if (Text[content.Begin] == L'"') {
      if (size > 2) node.Value = Text.substr(content.Begin + 1, size - 2);
      return true;
    }
    if (Text[content.Begin] != L'<') return false;
    Branches.push_back({&node, content});
    return true;
  }

  std::wstring_view Text;
  TagMatcher Tags;
  std::vector<OpenBranch> Branches;
  std::vector<std::unique_ptr<CVELDPXMLNode>> Unattached;
};

}  // namespace

std::wstring SerializeNode(const CVELDPXMLNode& root) {
  struct Open {
    const CVELDPXMLNode* Node;
    std::size_t NextChild;
  };
  std::wstring text;
  std::vector<Open> open;
  const auto write = [&](const CVELDPXMLNode& node) {
    AppendOpening(text, node.Name);
    if (node.IsBranch()) {
      text += L'\n';
      open.push_back({&node, 0});
    } else {
      text.append(L"\"").append(node.Value).append(L"\"");
      AppendClosing(text, node.Name);
    }
  };
  write(root);
  while (!open.empty()) {
    Open& top = open.back();
    if (top.NextChild < top.Node->Children().size()) {
      write(*top.Node->Children()[top.NextChild++]);
    } else {
      AppendClosing(text, top.Node->Name);
      open.pop_back();
    }
  }
  return text;
}

bool ParseNode(CVELDPXMLNode& node, std::wstring_view text) {
  return Parser(text).ParseRoot(node);
}

std::string SettingsFileBytes(const CVELDPXMLNode& root) {
  std::string bytes;
  for (const char character : WideToNarrow(SerializeNode(root))) {
    if (character == '\n') bytes += '\r';
    bytes += character;
  }
  return bytes;
}

std::optional<std::wstring> JoinedLines(std::istream& file) {
  std::string text;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    text += line;
  }
  if (file.bad()) return std::nullopt;
  return NarrowToWide(std::move(text));
}
