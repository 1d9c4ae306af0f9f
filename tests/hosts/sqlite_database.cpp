#include "tests/hosts/sqlite_database.h"

#include <sqlite3.h>

#include <utility>

#include "base/errors.h"
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
    if (code != SQLITE_OK) throw HostError(sqlite_error(code), wide(sqlite3_errmsg(handle)), u"SQLite");
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

namespace {

using Shared = std::shared_ptr<SqliteDatabase::Connection>;

struct SqliteName final : Field {
  explicit SqliteName(std::u16string_view named) : own_name(named) {}
  std::u16string name() override { return own_name; }
  std::u16string own_name;
};

struct SqliteIndex final : Index {
  explicit SqliteIndex(std::u16string_view named) : name(named) {}
  std::unique_ptr<Field> create_field(std::u16string_view field) override {
    return std::make_unique<SqliteName>(field);
  }

  struct AppendedFields final : IndexFields {
    explicit AppendedFields(SqliteIndex& of) : index(of) {}
    void append(Field& field) override {
      if (!index.field_list.empty()) index.field_list += ',';
      index.field_list += quoted(field.name());
    }
    SqliteIndex& index;
  };
  std::unique_ptr<IndexFields> fields() override { return std::make_unique<AppendedFields>(*this); }

  std::u16string name;
  std::string field_list;  // as SQL wants it
};

struct SqliteIndexes final : Indexes {
  SqliteIndexes(Shared shared, std::u16string_view of) : connection(std::move(shared)), table(of) {}
  void append(Index& index) override {
    const auto& made = dynamic_cast<SqliteIndex&>(index);
    connection->run("CREATE INDEX " + quoted(made.name) + " ON " + quoted(table) + "(" + made.field_list + ")");
  }
  void refresh() override {}  // the engine reads its schema anew by itself
  Shared connection;
  std::u16string table;
};

struct SqliteTableDef final : TableDef {
  SqliteTableDef(Shared shared, std::u16string_view named) : connection(std::move(shared)), table(named) {}
  std::u16string name() override { return table; }
  std::unique_ptr<Index> create_index(std::u16string_view index) override {
    return std::make_unique<SqliteIndex>(index);
  }
  std::unique_ptr<Indexes> indexes() override { return std::make_unique<SqliteIndexes>(connection, table); }
  Shared connection;
  std::u16string table;
};

struct SqliteTableWalk final : Walk<TableDef> {
  // Tables of the file, its system tables and those of attached files; views are no tables.
  explicit SqliteTableWalk(Shared shared)
      : connection(std::move(shared)),
        rows(connection->prepare("SELECT name FROM pragma_table_list WHERE type <> 'view'")) {}
  bool advance() override { return connection->step(rows); }
  std::unique_ptr<TableDef> member() override {
    return std::make_unique<SqliteTableDef>(connection, column_text(rows, 0));
  }
  Shared connection;
  Statement rows;
};

struct SqliteTableDefs final : TableDefs {
  explicit SqliteTableDefs(Shared shared) : connection(std::move(shared)) {}
  void refresh() override { connection->run("PRAGMA schema_version"); }
  std::unique_ptr<Walk<TableDef>> walk() override { return std::make_unique<SqliteTableWalk>(connection); }
  std::unique_ptr<TableDef> item(std::u16string_view name) override {
    connection->prepare("SELECT 1 FROM " + quoted(name));  // the engine's own error for a missing table
    return std::make_unique<SqliteTableDef>(connection, name);
  }
  Shared connection;
};

struct SqliteFieldWalk final : Walk<Field> {
  explicit SqliteFieldWalk(std::shared_ptr<Statement> opened) : rows(std::move(opened)) {}
  bool advance() override { return ++column < sqlite3_column_count(rows->get()); }
  std::unique_ptr<Field> member() override {
    return std::make_unique<SqliteName>(static_cast<const char16_t*>(sqlite3_column_name16(rows->get(), column)));
  }
  std::shared_ptr<Statement> rows;
  int column = -1;
};

struct SqliteRecordset final : Recordset, AdoRecordset {
  SqliteRecordset(Shared shared, std::shared_ptr<Statement> opened)
      : connection(std::move(shared)), rows(std::move(opened)) {}
  std::unique_ptr<AdoRecordset> ado_recordset() override { return std::make_unique<SqliteRecordset>(connection, rows); }
  std::unique_ptr<Walk<Field>> fields() override { return std::make_unique<SqliteFieldWalk>(rows); }
  Shared connection;  // outlives `rows`
  std::shared_ptr<Statement> rows;
};

}  // namespace

SqliteDatabase::SqliteDatabase(const std::string& file, Mode mode)
    : connection_(std::make_shared<Connection>(file, mode)) {}

std::unique_ptr<TableDefs> SqliteDatabase::table_defs() { return std::make_unique<SqliteTableDefs>(connection_); }

std::unique_ptr<Recordset> SqliteDatabase::open_recordset(std::u16string_view name) {
  return std::make_unique<SqliteRecordset>(
      connection_, std::make_shared<Statement>(connection_->prepare("SELECT * FROM " + quoted(name))));
}

std::vector<std::u16string> SqliteDatabase::run(const std::string& sql) { return connection_->run(sql); }

}  // namespace corvelle::testing
