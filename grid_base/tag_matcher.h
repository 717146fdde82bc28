// TagMatcher: for each opening tag of a text the closing tag that ends its element. Not a check of nesting: only tags
// of the same name are counted against each other, whatever stands between them. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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
