#include "terminal/csv_line.h"

#include <algorithm>

namespace {

// Takes the field up to the next comma from the front of rest.
void TakePlainField(std::string_view& rest, std::string& field) {
  const std::size_t end = std::min(rest.find(','), rest.size());
  field.assign(rest.substr(0, end));
  rest.remove_prefix(end);
}

// Takes the field between quotes from the front of rest; false when its closing quote is missing.
bool TakeQuotedField(std::string_view& rest, std::string& field) {
  field.clear();
  for (rest.remove_prefix(1);; rest.remove_prefix(1)) {
    const std::size_t quote = rest.find('"');
    if (quote == std::string_view::npos) return false;
    field.append(rest.substr(0, quote));
    rest.remove_prefix(quote + 1);
    if (!rest.starts_with('"')) return true;
    field.push_back('"');
  }
}

}  // namespace

std::size_t SplitCsvLine(std::string_view line, std::vector<std::string>& fields, std::string& reason) {
  for (std::size_t count = 0;; line.remove_prefix(1)) {
    if (fields.size() == count) fields.emplace_back();
    std::string& field = fields[count++];
    if (!line.starts_with('"')) {
      TakePlainField(line, field);
    } else if (!TakeQuotedField(line, field)) {
      reason = "field " + std::to_string(count) + " has no closing quote";
      return 0;
    }
    if (line.empty()) return count;
    if (line.front() == ',') continue;
    reason = "field " + std::to_string(count) + " has text behind its closing quote";
    return 0;
  }
}
