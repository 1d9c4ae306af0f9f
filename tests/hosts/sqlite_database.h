// tests/hosts/sqlite_database.h - a database of another engine behind the operations' port: SQLite, in a real file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/database.h"

struct sqlite3;

namespace corvelle::testing {

// The HRESULT under which an error of SQLite reaches the operations' caller; `code` is one of its result codes.
constexpr std::int32_t sqlite_error(int code) {
  return static_cast<std::int32_t>(0x80040000u | static_cast<std::uint32_t>(code));
}

// A database file. Its errors are the engine's own, with its message and the source "SQLite". Its recordsets can be
// walked: they provide what the operations want of the ADO recordset interface. Names are found without regard to the
// case of ASCII letters.
class SqliteDatabase final : public Database {
 public:
  enum class Mode { read_write, read_only };
  SqliteDatabase(const std::string& file, Mode mode);

  ~SqliteDatabase();

  TableDefs& table_defs() override;
  Recordset& open_recordset(std::u16string_view name) override;

  // Runs a statement of the host's own and gives the texts of its result, row by row.
  std::vector<std::u16string> run(const std::string& sql);

  // What its objects share.
  struct Connection;
  struct SqlitePart;

 private:
  std::unique_ptr<Connection> connection_;  // outlives the objects
  std::shared_ptr<TableDefs> table_defs_;
  std::shared_ptr<Recordset> recordset_;
};

}  // namespace corvelle::testing
