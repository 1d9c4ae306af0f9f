#include "tests/hosts/sqlite_database.h"

#include <sqlite3.h>

#include <utility>

#include "tests/hosts/host_failure.h"
#include "tests/support/utf8.h"

namespace corvelle::testing {
namespace {

std::u16string wide(const char* ascii) { return {ascii, ascii + std::char_traits<char>::length(ascii)}; }

struct StatementDeleter {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

// `name` as an identifier of SQL.
std::string quoted(std::u16string_view name) {
  std::string result = "\"";
  for (const char unit : utf8(name)) result.append(unit == '"' ? 2 : 1, unit);
  return result + "\"";
}

std::u16string column_text(const Statement& statement, int column) {
  const auto* text = static_cast<const char16_t*>(sqlite3_column_text16(statement.get(), column));
  return text == nullptr ? std::u16string() : text;
}

}  // namespace

struct SqliteDatabase::Connection {
  Connection(const std::string& file, Mode mode) {
    check(sqlite3_open_v2(file.c_str(), &handle,
                          mode == Mode::read_only ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                          nullptr));
    // Otherwise a field that does not exist would be taken for a text.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  }
  ~Connection() { sqlite3_close(handle); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void check(int code) const {
    if (code != SQLITE_OK) throw HostFailure{sqlite_error(code), wide(sqlite3_errmsg(handle)), u"SQLite"};
  }

  Statement prepare(const std::string& sql) const {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement, nullptr));
    return Statement(statement);
  }

  bool step(const Statement& statement) const {
    const int code = sqlite3_step(statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) check(code);
    return code == SQLITE_ROW;
  }

  std::vector<std::u16string> run(const std::string& sql) const {
    const Statement statement = prepare(sql);
    std::vector<std::u16string> result;
    while (step(statement)) {
      for (int i = 0; i < sqlite3_column_count(statement.get()); ++i) result.push_back(column_text(statement, i));
    }
    return result;
  }

  sqlite3* handle = nullptr;
};

struct SqliteDatabase::SqlitePart {
  const Connection& connection;
  FirstError& errors;
};

namespace {

using SqlitePart = SqliteDatabase::SqlitePart;

struct SqliteName final : Field, SqlitePart {
  SqliteName(const SqlitePart& owner, std::u16string_view named) : SqlitePart(owner), own_name(named) {}
  Text name() override { return Text(own_name); }
  std::u16string own_name;
};

struct SqliteIndex final : Index, SqlitePart {
  SqliteIndex(const SqlitePart& table, std::u16string_view named)
      : SqlitePart(table), name(named), index_fields(*this) {}
  Field& create_field(std::u16string_view field) override {
    return *(new_field = std::make_unique<SqliteName>(*this, field));
  }

  struct AppendedFields final : IndexFields {
    explicit AppendedFields(SqliteIndex& of) : index(of) {}
    void append(Field& field) override {
      if (!index.field_list.empty()) index.field_list += ',';
      index.field_list += quoted(field.name());
    }
    SqliteIndex& index;
  };
  IndexFields& fields() override { return index_fields; }

  std::u16string name;
  std::string field_list;  // as SQL wants it
  std::unique_ptr<SqliteName> new_field;
  AppendedFields index_fields;
};

struct SqliteIndexes final : Indexes, SqlitePart {
  SqliteIndexes(const SqlitePart& owner, std::u16string_view of) : SqlitePart(owner), table(of) {}
  void append(Index& index) override {
    const auto& made = dynamic_cast<SqliteIndex&>(index);
    attempt(errors, [&] {
      connection.run("CREATE INDEX " + quoted(made.name) + " ON " + quoted(table) + "(" + made.field_list + ")");
    });
  }
  void refresh() override {}  // the engine reads its schema anew by itself
  std::u16string table;
};

struct SqliteTableDef final : TableDef {
  SqliteTableDef(const SqlitePart& owner, std::u16string_view named) : table(owner, named), all_indexes(owner, named) {}
  Text name() override { return table.name(); }
  Index& create_index(std::u16string_view index) override {
    return *(new_index = std::make_unique<SqliteIndex>(table, index));
  }
  Indexes& indexes() override { return all_indexes; }
  SqliteName table;
  SqliteIndexes all_indexes;
  std::unique_ptr<SqliteIndex> new_index;
};

struct SqliteTableWalk final : Walk<TableDef>, SqlitePart {
  // Tables of the file, its system tables and those of attached files; views are no tables.
  explicit SqliteTableWalk(const SqlitePart& owner) : SqlitePart(owner) {
    attempt(errors, [&] { rows = connection.prepare("SELECT name FROM pragma_table_list WHERE type <> 'view'"); });
  }
  bool advance() override {
    return attempted(errors, [&] { return connection.step(rows); });
  }
  TableDef* member() override { return (table = std::make_unique<SqliteTableDef>(*this, column_text(rows, 0))).get(); }
  Statement rows;
  std::unique_ptr<SqliteTableDef> table;
};

struct SqliteTableDefs final : TableDefs, SqlitePart {
  explicit SqliteTableDefs(const SqlitePart& owner) : SqlitePart(owner) {}
  void refresh() override {
    attempt(errors, [&] { connection.run("PRAGMA schema_version"); });
  }
  Walk<TableDef>& walk() override { return *(table_walk = std::make_unique<SqliteTableWalk>(*this)); }
  TableDef& item(std::u16string_view name) override {
    // The engine's own error for a missing table.
    attempt(errors, [&] { connection.prepare("SELECT 1 FROM " + quoted(name)); });
    return *(table = std::make_unique<SqliteTableDef>(*this, name));
  }
  std::unique_ptr<SqliteTableWalk> table_walk;
  std::unique_ptr<SqliteTableDef> table;
};

struct SqliteFieldWalk final : Walk<Field>, SqlitePart {
  SqliteFieldWalk(const SqlitePart& owner, const Statement& opened) : SqlitePart(owner), rows(opened) {}
  bool advance() override { return !errors.any() && ++column < sqlite3_column_count(rows.get()); }
  Field* member() override {
    const auto* name = static_cast<const char16_t*>(sqlite3_column_name16(rows.get(), column));
    return (field = std::make_unique<SqliteName>(*this, name)).get();
  }
  const Statement& rows;
  int column = -1;
  std::unique_ptr<SqliteName> field;
};

struct SqliteRecordset final : Recordset, AdoRecordset, SqlitePart {
  SqliteRecordset(const SqlitePart& owner, std::u16string_view name) : SqlitePart(owner) {
    attempt(errors, [&] { rows = connection.prepare("SELECT * FROM " + quoted(name)); });
  }
  AdoRecordset* ado_recordset() override { return this; }
  Walk<Field>& fields() override { return *(field_walk = std::make_unique<SqliteFieldWalk>(*this, rows)); }
  Statement rows;
  std::unique_ptr<SqliteFieldWalk> field_walk;
};

}  // namespace

SqliteDatabase::SqliteDatabase(const std::string& file, Mode mode)
    : connection_(std::make_unique<Connection>(file, mode)) {}

SqliteDatabase::~SqliteDatabase() = default;

TableDefs& SqliteDatabase::table_defs() {
  return *(table_defs_ = std::make_shared<SqliteTableDefs>(SqlitePart{*connection_, errors()}));
}

Recordset& SqliteDatabase::open_recordset(std::u16string_view name) {
  return *(recordset_ = std::make_shared<SqliteRecordset>(SqlitePart{*connection_, errors()}, name));
}

std::vector<std::u16string> SqliteDatabase::run(const std::string& sql) { return connection_->run(sql); }

}  // namespace corvelle::testing
