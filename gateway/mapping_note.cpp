#include "gateway/mapping_note.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include "platform/files.h"

// A new choice does not compile here until it has its line.
std::string MappingText(const MappingChoices& choices) {
  const auto& [exchange, clientTag, userTag, ctclTag, userId, multiplier, memberRole, userRole, ctclRole] = choices;
  char multiplierText[40];
  std::snprintf(multiplierText, sizeof multiplierText, "%.17g", multiplier);
  std::string text = "exchange = " + exchange + "\nuser_id = " + userId + "\nmultiplier = " + multiplierText;
  for (const auto& [name, number] : {std::pair{"client_tag", clientTag},
                                     {"user_tag", userTag},
                                     {"ctcl_tag", ctclTag},
                                     {"member_role", memberRole},
                                     {"user_role", userRole},
                                     {"ctcl_role", ctclRole}})
    text += std::string("\n") + name + " = " + std::to_string(number);
  return text + "\n";
}

bool IsMappingOfLog(const std::filesystem::path& journal, const std::string& logName, const MappingChoices& choices,
                    std::uint64_t messages) {
  std::filesystem::path note = journal;
  note += "." + logName + ".mapping";
  const std::string text = MappingText(choices);
  std::ifstream stream(note, std::ios::binary);
  const std::string known{std::istreambuf_iterator<char>(stream), {}};
  if (known == text) return true;
  if (messages > 0 && !known.empty()) return false;
  unsigned long ignored = 0;
  ReplaceFileContent(note, text, ignored);
  return true;
}
