#include "tests/documents/page.h"

#include <regex>
#include <stdexcept>

#include "foundations/text_tools.h"
#include "tests/support/files.h"

std::vector<std::string> FencedBlock(const std::string& page, const std::string& behind, const std::string& language) {
  const std::string text = SourceText("docs/" + page);
  const std::string fence = "\n```" + language + "\n";
  const std::size_t begin = text.find(fence, text.find(behind));
  const std::size_t end = text.find("\n```\n", begin + 1);
  if (text.find(behind) == std::string::npos || end == std::string::npos)
    throw std::runtime_error(page + " has no block of " + language + " behind '" + behind + "'");
  return SplitText(text.substr(begin + fence.size(), end - begin - fence.size()), '\n');
}

std::string SourceText(const std::string& path) {
  std::string text = ReadFile(std::string(TRADEBOOK_SOURCE_FOLDER "/") + path);
  if (text.empty()) throw std::runtime_error(path + " cannot be read");
  std::erase(text, '\r');
  return text;
}

std::string PageSection(const std::string& page, const std::string& heading) {
  const std::size_t begin = page.find(heading);
  if (begin == std::string::npos) throw std::runtime_error("no heading" + heading);
  return page.substr(begin, page.find("\n#", begin + heading.size()) - begin);
}

std::vector<Match> Matches(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::vector<Match> matches;
  for (std::sregex_iterator at(text.begin(), text.end(), expression); at != std::sregex_iterator(); ++at)
    matches.emplace_back(at->begin(), at->end());
  return matches;
}
