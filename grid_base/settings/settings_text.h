// The settings tree as text and as the bytes of a file, a format without attributes, comments and escapes:
//
//   branch := "<" name ">" LF element* "</" name ">" LF     a node with children, and a root
//   leaf   := "<" name ">" quote value quote "</" name ">" LF
//
// Tags are protected: values that contain them, and tags that close one another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "grid_base/settings/settings_tree.h"

// The lines of the node and its descendants.
std::wstring SerializeNode(const CVELDPXMLNode& node);

// Reads the first element of a text without line ends into the node: its name, value and children are replaced. False
// at a fault; what comes before it stays. Time and memory are linear, the stack is O(1).
bool ParseNode(CVELDPXMLNode& node, std::wstring_view text);

// The text of the tree in the system code page, with CR LF line ends on every platform.
std::string SettingsFileBytes(const CVELDPXMLNode& root);

// The text of a file for ParseNode: its lines, which end with LF or CR LF, joined. Nothing if the file cannot be read
// to its end.
std::optional<std::wstring> JoinedLines(std::istream& file);

// The format has no escape: a value with the tag of an enclosing element ends that element when it is read, and the
// rest of the file is lost. In such a tag a parenthesis replaces the bracket; other text stays. Compares values as they
// are read back: without line feeds, and with '?' for characters outside the code page. Linear in the size of the file:
// one hash look-up per bracket.
void BreakTagsInValues(CVELDPXMLNode& root);

// Finds the closing tag of each opening tag of a text. Construction is linear in the text and ClosingOf logarithmic,
// even if tags overlap or names are as long as the text.
//
// The tag at a "<" ends at the next ">", so it is the same for every name. The tags of one name match like brackets, by
// one stack per name; a name is known by its hash, which running sums give for any part of the text. Names of equal
// hash count as one: the caller compares.
class TagMatcher {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit TagMatcher(std::wstring_view text);

  // The place of the "<" of the tag that closes the tag at this place, or kNone.
  std::size_t ClosingOf(std::size_t opening) const noexcept;

 private:
  struct Tag {
    std::size_t Place;
    std::size_t Closing;
  };
  std::vector<Tag> Tags;  // one for each "<" that a ">" follows, by place
};

// The hash of any part of a text in O(1). Different parts have equal hashes with a probability of about 2^-60.
// Polynomials over the characters modulo 2^61 - 1, summed up from the end, so that a text can be changed while it is
// walked from its end.
class StretchHashes {
 public:
  // For a text of that length; Put its characters from the last to the first.
  explicit StretchHashes(std::size_t size);
  explicit StretchHashes(std::wstring_view text);

  void Put(std::size_t at, wchar_t character) noexcept;
  std::uint64_t Of(std::size_t begin, std::size_t end) const noexcept;
  static std::uint64_t OfWhole(std::wstring_view text) noexcept;

 private:
  std::vector<std::uint64_t> Sums;
  std::vector<std::uint64_t> Powers;
};
