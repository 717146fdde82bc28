// SQLite, to compare with filter, sort, totals and export: the same million trades in a table of 37 columns, in memory.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

class SqlitePeer {
 public:
  // The table, created once.
  static SqlitePeer& Get();

  // Runs the query, stores the first column of every row, a row number, and returns the count of rows.
  std::size_t TakeRows(const std::string& query);
  // Saves the database for the command-line shell.
  void SaveTo(const std::filesystem::path& file);

 private:
  SqlitePeer();
  void* Database = nullptr;
};
