// HtmlTable: a table of a page: titles, rows of texts and a line of sums.
#pragma once

#include <span>
#include <string>
#include <vector>

// Texts are UTF-8. The texts of a column are words, numbers, or results, which have the colour of their sign.
class HtmlTable {
 public:
  enum class Kind : unsigned char { Words, Number, Result };
  struct Column {
    const char* Title;
    Kind What;
  };
  // Requires: the columns outlive the table, and each row has as many texts.
  explicit HtmlTable(std::span<const Column> columns) : Columns(columns) {}

  // An anchor is put around the first text if it is not empty.
  void AddRow(const std::vector<std::string>& texts, const std::string& anchor = {});
  void SetSums(const std::vector<std::string>& texts);
  // The whole element.
  std::string Html() const;

 private:
  std::string RowOf(const char* tag, const std::vector<std::string>& texts, const std::string& anchor) const;

  std::span<const Column> Columns;
  std::string Body;
  std::string Foot;
};
