#include "benchmarks/sqlite_peer.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "benchmarks/million_trades.h"
#include "grid_ops/columns/cell_text.h"

namespace {

sqlite3* Of(void* database) {
  return static_cast<sqlite3*>(database);
}

void Check(int result, void* database) {
  if (result == SQLITE_OK || result == SQLITE_DONE || result == SQLITE_ROW) return;
  std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(Of(database)));
  std::exit(1);
}

void Run(void* database, const std::string& statement) {
  Check(sqlite3_exec(Of(database), statement.c_str(), nullptr, nullptr, nullptr), database);
}

const char* TypeOf(const TradeColumn& column) {
  if (column.Value.Form == ColumnField::Kind::Integer || column.Value.Form == ColumnField::Kind::Short)
    return "INTEGER";
  return column.Value.Form == ColumnField::Kind::Double ? "REAL" : "TEXT";
}

void Bind(sqlite3_stmt* insert, int at, const TradeRecord& record, const ColumnField& field) {
  using Kind = ColumnField::Kind;
  if (field.Form == Kind::Integer) {
    sqlite3_bind_int(insert, at, FieldAs<std::int32_t>(record, field));
  } else if (field.Form == Kind::Short) {
    sqlite3_bind_int(insert, at, FieldAs<std::int16_t>(record, field));
  } else if (field.Form == Kind::Double) {
    sqlite3_bind_double(insert, at, FieldAs<double>(record, field));
  } else {
    const std::string_view text = field.Form == Kind::Text     ? TextOfField(record, field)
                                  : field.Form == Kind::Server ? "Default"
                                                               : CodeName(record, field.Form);
    sqlite3_bind_text(insert, at, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
  }
}

}  // namespace

SqlitePeer& SqlitePeer::Get() {
  static SqlitePeer peer;
  return peer;
}

SqlitePeer::SqlitePeer() {
  sqlite3* opened = nullptr;
  Check(sqlite3_open(":memory:", &opened), opened);
  Database = opened;
  std::string columns, places;
  for (const TradeColumn& column : kTradeColumns) {
    columns += (columns.empty() ? "" : ", ") + std::string(column.Title) + " " + TypeOf(column);
    places += places.empty() ? "?" : ", ?";
  }
  Run(Database, "CREATE TABLE trades (" + columns + "); BEGIN");
  sqlite3_stmt* insert = nullptr;
  Check(sqlite3_prepare_v2(opened, ("INSERT INTO trades VALUES (" + places + ")").c_str(), -1, &insert, nullptr),
        opened);
  for (const TradeMap::Entry trade : *MillionTrades().LiveTradesOf("Default")) {
    for (int column = 0; column < kTradeColumnCount; ++column)
      Bind(insert, column + 1, *trade.Record, kTradeColumns[column].Value);
    Check(sqlite3_step(insert), opened);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  Run(Database, "COMMIT");
}

std::size_t SqlitePeer::TakeRows(const std::string& query) {
  sqlite3_stmt* statement = nullptr;
  Check(sqlite3_prepare_v2(Of(Database), query.c_str(), -1, &statement, nullptr), Database);
  std::vector<sqlite3_int64> rows;
  int result = SQLITE_ROW;
  while ((result = sqlite3_step(statement)) == SQLITE_ROW) rows.push_back(sqlite3_column_int64(statement, 0));
  Check(result, Database);
  sqlite3_finalize(statement);
  return rows.size();
}

void SqlitePeer::SaveTo(const std::filesystem::path& file) {
  Run(Database, "VACUUM INTO '" + file.string() + "'");
}
