// Keeps values of a settings tree from being read as tags of their file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "grid_base/settings/settings_tree.h"

// The format has no escape: a value with the tag of an element around it would end that element, and all behind it
// would be lost. Such a tag loses its bracket to a parenthesis; all other text stays. What counts is what will be read
// back: without line feeds, and with '?' for what the code page does not have. Linear in the size of the file: each
// bracket costs one look-up among the names around it, by hash.
void BreakTagsInValues(CVELDPXMLNode& root);

// TagMatcher: for each opening tag of a text the closing tag that ends its element.

// Promises: ClosingOf takes logarithmic time after a set-up in proportion to the text, even where tags overlap or names
// are as long as the text. Works because the tag at a "<" runs to the next ">" and so is the same for every name that
// is looked for. The tags of one name form a row of brackets, matched with a stack for each name; a name is known by a
// hash of its characters, which for every stretch of the text follows from running sums. Names of equal hash are taken
// for one: the caller compares.
class TagMatcher {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit TagMatcher(std::wstring_view text);

  // The place of the "<" of the tag that closes the one which opens at this place; kNone when nothing closes it.
  std::size_t ClosingOf(std::size_t opening) const noexcept;

 private:
  struct Tag {
    std::size_t Place;
    std::size_t Closing;
  };
  std::vector<Tag> Tags;  // one for each "<" that has a ">" behind it, by place
};

// StretchHashes: hashes of every stretch of a text, each in constant time.

// Equal stretches have equal hashes; of different ones two in about 2^60 have. Polynomials modulo 2^61 - 1 over the
// characters, summed up from the end, so that a text may still be changed while it is walked from its end.
class StretchHashes {
 public:
  // Of a text of that length whose characters are then put, from the last to the first.
  explicit StretchHashes(std::size_t size);
  explicit StretchHashes(std::wstring_view text);

  void Put(std::size_t at, wchar_t character) noexcept;
  std::uint64_t Of(std::size_t begin, std::size_t end) const noexcept;
  static std::uint64_t OfWhole(std::wstring_view text) noexcept;

 private:
  std::vector<std::uint64_t> Sums;
  std::vector<std::uint64_t> Powers;
};
