#include "grid_base/settings/settings_text.h"

#include <algorithm>
#include <istream>
#include <unordered_map>

#include "foundations/text_tools.h"

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

  // From the end, so that the text after each bracket is final. A tag may reach into the closing tag of the value's own
  // element. The code page makes no other character a bracket, so value and file form have the same brackets.
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

TagMatcher::TagMatcher(std::wstring_view text) {
  const StretchHashes hashes(text);
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> open;  // by name: tags that nothing has closed yet
  std::size_t end = text.find(L'>');
  for (std::size_t at = text.find(L'<'); at != std::wstring_view::npos; at = text.find(L'<', at + 1)) {
    if (end != std::wstring_view::npos && end < at) end = text.find(L'>', at);
    if (end == std::wstring_view::npos) break;
    // A tag that begins with a slash closes the name after it, and may itself open a name.
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

std::uint64_t WithCharacterAhead(wchar_t character, std::uint64_t rest) noexcept {
  return (Times(rest, kBase) + static_cast<std::uint64_t>(character) + 1) % kModulus;
}

}  // namespace

StretchHashes::StretchHashes(std::size_t size) : Sums(size + 1), Powers(size + 1) {
  Powers[0] = 1;
  for (std::size_t i = 0; i < size; ++i) Powers[i + 1] = Times(Powers[i], kBase);
}

StretchHashes::StretchHashes(std::wstring_view text) : StretchHashes(text.size()) {
  for (std::size_t at = text.size(); at-- > 0;) Put(at, text[at]);
}

void StretchHashes::Put(std::size_t at, wchar_t character) noexcept {
  Sums[at] = WithCharacterAhead(character, Sums[at + 1]);
}

std::uint64_t StretchHashes::Of(std::size_t begin, std::size_t end) const noexcept {
  return (Sums[begin] + kModulus - Times(Sums[end], Powers[end - begin])) % kModulus;
}

std::uint64_t StretchHashes::OfWhole(std::wstring_view text) noexcept {
  std::uint64_t sum = 0;
  for (std::size_t at = text.size(); at-- > 0;) sum = WithCharacterAhead(text[at], sum);
  return sum;
}
