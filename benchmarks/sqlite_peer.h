// The peer of filter, sort, totals and export: the same million trades as a table of 37 columns in SQLite, in memory.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

class SqlitePeer {
 public:
  // The table, made once.
  static SqlitePeer& Get();

  // Steps through the query and takes the first column of every row, a row number, into memory; the count of rows.
  std::size_t TakeRows(const std::string& query);
  // The database as a file, for the command-line shell.
  void SaveTo(const std::filesystem::path& file);

 private:
  SqlitePeer();
  void* Database = nullptr;
};
