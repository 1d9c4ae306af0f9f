// The database operations on a real engine with a real file, whose errors are its own.
#include "tests/hosts/sqlite_database.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "data/schema_helpers.h"
#include "tests/support/runtime_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Mode = SqliteDatabase::Mode;

class OnSqlite : public ::testing::Test {
 protected:
  void SetUp() override {
    database_.run("CREATE TABLE CUSTOMERS(Code INTEGER PRIMARY KEY AUTOINCREMENT, City TEXT, 姓名 TEXT)");
    database_.run("CREATE TABLE a_sOrders(Day TEXT, \" Total\" REAL)");
    database_.run("CREATE VIEW Query AS SELECT City FROM CUSTOMERS");
  }

  // The fields of the index, in order, each with whether the index is unique; none where there is no such index.
  std::vector<std::u16string> index(const std::string& name) {
    return database_.run("SELECT i.name, l.\"unique\" FROM pragma_index_list('CUSTOMERS') l, pragma_index_info('" +
                         name + "') i WHERE l.name = '" + name + "' ORDER BY i.seqno");
  }

  TemporaryFolder folder_;
  std::string file_ = (folder_.path() / "orders.db").string();
  SqliteDatabase database_{file_, Mode::read_write};
};

TEST_F(OnSqlite, IFTableFindsTablesSystemTablesAndAttachedOnesButNoViews) {
  EXPECT_EQ(IFTable(database_, u"  customers "), true);
  EXPECT_EQ(IFTable(database_, u"sqlite_sequence"), true) << "a system table";
  EXPECT_EQ(IFTable(database_, u"Query"), false);
  EXPECT_EQ(IFTable(database_, u"Prices"), false);
  SqliteDatabase((folder_.path() / "prices.db").string(), Mode::read_write).run("CREATE TABLE Prices(Price REAL)");
  database_.run("ATTACH '" + (folder_.path() / "prices.db").string() + "' AS linked");
  EXPECT_EQ(IFTable(database_, u"Prices"), true);
}

TEST_F(OnSqlite, IFTableSeesATableThatAnotherConnectionAdded) {
  EXPECT_EQ(IFTable(database_, u"Invoices"), false);
  SqliteDatabase(file_, Mode::read_write).run("CREATE TABLE Invoices(Number TEXT)");
  EXPECT_EQ(IFTable(database_, u"Invoices"), true);
}

TEST_F(OnSqlite, IFFieldFindsFields) {
  EXPECT_EQ(IFField(database_, u"customers", u" city ", 0), true);
  EXPECT_EQ(IFField(database_, u"CUSTOMERS", u"姓名", 0), true);
  EXPECT_EQ(IFField(database_, u"Orders", u"day", 1), true);
  EXPECT_EQ(IFField(database_, u"CUSTOMERS", u"Day", 0), false);
  EXPECT_EQ(IFField(database_, u"Orders", u" Total", 1), false) << "the field's own name is not trimmed";
}

TEST_F(OnSqlite, IFFieldFailsWithTheEnginesErrorForAMissingTable) {
  const Error error = error_of(IFField(database_, u"Orders", u"Day", 0));
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), sqlite_error(SQLITE_ERROR));
  EXPECT_NE(error.description().find(u"Orders"), std::u16string_view::npos) << "the engine's own words, with our name";
  EXPECT_EQ(error.source(), u"SQLite");
}

TEST_F(OnSqlite, CreateIndexAddsAnIndexThatIsNotUnique) {
  CreateIndex(database_, u"customers", u"ByCity", u"City");
  EXPECT_THAT(index("ByCity"), ElementsAre(u"City", u"0"));
}

TEST_F(OnSqlite, CreateIndex2AddsAnIndexOnTwoFieldsInOrder) {
  CreateIndex2(database_, u"CUSTOMERS", u"Both", u"姓名", u"City");
  EXPECT_THAT(index("Both"), ElementsAre(u"姓名", u"0", u"City", u"0"));
}

TEST_F(OnSqlite, CreateIndexSwallowsWhatTheEngineRefuses) {
  CreateIndex(database_, u"CUSTOMERS", u"ByCity", u"City");
  const auto schema = database_.run("SELECT sql FROM sqlite_schema");
  CreateIndex(database_, u"Orders", u"ByDay", u"Day");                     // no such table
  CreateIndex(database_, u"CUSTOMERS", u"BYCITY", u"Code");                // the name is in use
  CreateIndex(database_, u"CUSTOMERS", u"ByName", u"Name");                // no such field
  CreateIndex2(database_, u"CUSTOMERS", u"ByName", u"City", u"No\"such");  // nor that
  CreateIndex(database_, u"sqlite_sequence", u"BySequence", u"seq");       // a system table may not be indexed
  SqliteDatabase read_only(file_, Mode::read_only);
  CreateIndex(read_only, u"CUSTOMERS", u"ByCode", u"Code");
  EXPECT_EQ(database_.run("SELECT sql FROM sqlite_schema"), schema);
}

// So that the test above cannot pass because nothing ever reaches the engine. Its words are its own, and change.
TEST_F(OnSqlite, TheEngineRefusesWithErrorsOfItsOwn) {
  CreateIndex(database_, u"CUSTOMERS", u"ByCity", u"City");
  const auto append = [](SqliteDatabase& database, std::u16string_view name, std::u16string_view field) {
    TableDef& table = database.table_defs().item(u"CUSTOMERS");
    Index& index = table.create_index(name);
    index.fields().append(index.create_field(field));
    EXPECT_FALSE(database.errors().any());
    table.indexes().append(index);
    return database.errors().take();
  };
  SqliteDatabase read_only(file_, Mode::read_only);
  EXPECT_HOST_ERROR(append(database_, u"ByCity", u"Code"), sqlite_error(SQLITE_ERROR));
  EXPECT_HOST_ERROR(append(database_, u"ByName", u"Name"), sqlite_error(SQLITE_ERROR));
  EXPECT_HOST_ERROR(append(read_only, u"ByCode", u"Code"), sqlite_error(SQLITE_READONLY));
  database_.table_defs().item(u"Orders");
  EXPECT_HOST_ERROR(database_.errors().take(), sqlite_error(SQLITE_ERROR));
  EXPECT_THAT(index("ByCity"), ElementsAre(u"City", u"0"));
  EXPECT_THAT(index("ByName"), IsEmpty());
  EXPECT_THAT(index("ByCode"), IsEmpty());
}

}  // namespace
}  // namespace corvelle::testing
