// The database operations against a database that behaves like one of Data Access Objects. Compiled twice: natively
// the operations' own port stands before it, on Windows also the component's adapters and late-bound COM objects.
#include "data/schema_helpers.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>

#include "tests/data/faces.h"
#include "tests/hosts/dao_model.h"
#include "tests/support/runtime_error.h"

namespace corvelle::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Calls = std::vector<std::string>;

const HostFailure kFailure{dao_error(3146), u"the call failed, as planned", u"DAO.Test"};

class SchemaHelpers : public ::testing::Test {
 protected:
  // Every reference must be back, whatever the outcome.
  void TearDown() override { EXPECT_EQ(model_.journal.live_objects(), 0); }

  // Runs `operation` on the database, and lets go of the database behind it.
  template <class Operation>
  auto on_database(Operation operation) {
    const auto database = face_of(model_);
    return operation(*database);
  }
  Result<bool> has_table(std::u16string_view name) {
    return on_database([&](Database& database) { return IFTable(database, name); });
  }
  Result<bool> has_field(std::u16string_view table, std::u16string_view field, std::int16_t flag = 0) {
    return on_database([&](Database& database) { return IFField(database, table, field, flag); });
  }
  void create_index(std::u16string_view table, std::u16string_view index, std::u16string_view field) {
    on_database([&](Database& database) { CreateIndex(database, table, index, field); });
  }
  void create_index(std::u16string_view table, std::u16string_view index, std::u16string_view first,
                    std::u16string_view second) {
    on_database([&](Database& database) { CreateIndex2(database, table, index, first, second); });
  }

  const std::vector<IndexModel>& indexes_of_customers() const { return model_.tables[1].indexes; }

  DaoModel model_;
};

class IFTableTest : public SchemaHelpers {};

TEST_F(IFTableTest, ComparesTrimmedNamesWithoutRegardToCase) {
  EXPECT_EQ(has_table(u"  customers "), true);
  EXPECT_EQ(has_table(u"CUSTOMERS"), true);
  EXPECT_EQ(has_table(u"prices"), true) << "the table's own name is trimmed too";
  EXPECT_EQ(has_table(u"订单"), true);
  EXPECT_EQ(has_table(u"msysobjects"), true) << "system tables count";
  EXPECT_EQ(has_table(u"customer"), false);
  EXPECT_EQ(has_table(u"\tcustomers"), false) << "only spaces are trimmed";
  EXPECT_EQ(has_table(u"\u3000customers"), false) << "an ideographic space is no space";
}

TEST_F(IFTableTest, MapsLettersBeyondAsciiToo) {
  model_.tables.push_back({u"Ärzte", {}, {}});
  EXPECT_EQ(has_table(u"ärzte"), true);
}

TEST_F(IFTableTest, KnowsNoEmptyName) {
  EXPECT_EQ(has_table(u""), false);
  EXPECT_EQ(has_table(u"   "), false);
}

TEST_F(IFTableTest, StopsAtTheFirstMatch) {
  EXPECT_EQ(has_table(u"Customers"), true);
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Refresh", "Database.TableDefs", "TableDefs.each",
                          "TableDefs.next", "TableDef.Name", "TableDefs.next", "TableDef.Name"));
}

TEST_F(IFTableTest, WalksToTheEndWithoutAMatch) {
  model_.tables.resize(2);
  EXPECT_EQ(has_table(u"Orders"), false);
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Refresh", "Database.TableDefs", "TableDefs.each",
                          "TableDefs.next", "TableDef.Name", "TableDefs.next", "TableDef.Name", "TableDefs.next"));
}

TEST_F(IFTableTest, SeesATableThatAnotherProgramAdded) {
  model_.added_elsewhere = {{u"Invoices", {}, {}}};
  EXPECT_EQ(has_table(u"Invoices"), true);
}

TEST_F(IFTableTest, PassesOnTheErrorOfAClosedDatabase) {
  model_.closed = true;
  const Error error = error_of(has_table(u"Orders"));
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), dao_error(kObjectInvalid));
  EXPECT_EQ(error.description(), u"Object invalid or no longer set.");
  EXPECT_EQ(error.source(), u"DAO.Database");
}

TEST_F(IFTableTest, EndsAtAnyCallThatFails) {
  EXPECT_EQ(has_table(u"Customers"), true);
  const Calls all = model_.journal.calls();
  for (std::size_t failing = 1; failing <= all.size(); ++failing) {
    SCOPED_TRACE(failing);
    model_.journal.start_anew();
    model_.journal.fail_call(failing, kFailure);
    const Error error = error_of(has_table(u"Customers"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error.hresult(), kFailure.hresult);
    EXPECT_EQ(error.description(), kFailure.description);
    EXPECT_EQ(error.source(), kFailure.source);
    EXPECT_THAT(model_.journal.calls(), ElementsAreArray(all.data(), failing));
    EXPECT_EQ(model_.journal.live_objects(), 0);
  }
}

class IFFieldTest : public SchemaHelpers {};

TEST_F(IFFieldTest, IsATypeMismatchForAnyTableOfDataAccessObjects) {
  EXPECT_RUNTIME_ERROR_SAYING(has_field(u"Orders", u"Day"), ErrorNumber::type_mismatch,
                              u"IFField: DB opens \"Orders\" as a recordset without the ADO recordset interface");
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Refresh", "Database.OpenRecordset(Orders)"));
}

TEST_F(IFFieldTest, FailsWithTheDatabasesOwnErrorForAMissingTable) {
  EXPECT_HOST_ERROR(has_field(u"Invoices", u"Day"), dao_error(kNoSuchTable));
  EXPECT_HOST_ERROR(has_field(u"", u"Day"), dao_error(kNoSuchTable));
}

TEST_F(IFFieldTest, PutsThePrefixBeforeTheNameForFlagOneOnly) {
  EXPECT_RUNTIME_ERROR(has_field(u"Orders", u"Sum", 1), ErrorNumber::type_mismatch);
  EXPECT_EQ(model_.journal.calls().back(), "Database.OpenRecordset(a_sOrders)");
  for (const std::int16_t flag : std::initializer_list<std::int16_t>{-1, 0, 2, 32767}) {
    EXPECT_RUNTIME_ERROR(has_field(u"Orders", u"Sum", flag), ErrorNumber::type_mismatch);
    EXPECT_EQ(model_.journal.calls().back(), "Database.OpenRecordset(Orders)");
  }
}

TEST_F(IFFieldTest, DoesNotTrimTheTableName) {
  EXPECT_HOST_ERROR(has_field(u" Orders", u"Day"), dao_error(kNoSuchTable));
  EXPECT_EQ(model_.journal.calls().back(), "Database.OpenRecordset( Orders)");
}

TEST_F(IFFieldTest, FindsFieldsOfARecordsetWithTheAdoInterface) {
  model_.ado_recordsets = true;
  EXPECT_EQ(has_field(u"orders", u"  day "), true);
  EXPECT_EQ(has_field(u"订单", u"日期"), true);
  EXPECT_EQ(has_field(u"Orders", u"sum", 1), true);
  EXPECT_EQ(has_field(u"Orders", u"Sum"), false);
  EXPECT_EQ(has_field(u"Orders", u""), false);
}

TEST_F(IFFieldTest, DoesNotTrimTheFieldsOwnName) {
  model_.ado_recordsets = true;
  EXPECT_EQ(has_field(u"Orders", u"Total"), false);
  EXPECT_EQ(has_field(u"Orders", u" Total"), false) << "what is looked for is trimmed, the field's name is not";
}

TEST_F(IFFieldTest, WalksOnAfterAMatchAndClosesNothing) {
  model_.ado_recordsets = true;
  EXPECT_EQ(has_field(u"Orders", u"Day"), true);
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Refresh", "Database.OpenRecordset(Orders)",
                          "Recordset.Fields", "Fields.each", "Fields.next", "Field.Name", "Fields.next", "Field.Name",
                          "Fields.next", "Field.Name", "Fields.next"));
}

TEST_F(IFFieldTest, IsATypeMismatchForAFieldThatIsNoneOfDataAccessObjects) {
  model_.ado_recordsets = true;
  model_.dao_fields = false;
  EXPECT_RUNTIME_ERROR_SAYING(has_field(u"Orders", u"Day"), ErrorNumber::type_mismatch,
                              u"IFField: DB lists a field of \"Orders\" that is none of Data Access Objects");
  EXPECT_EQ(model_.journal.calls().back(), "Fields.next");
}

TEST_F(IFFieldTest, EndsAtAnyCallThatFails) {
  model_.ado_recordsets = true;
  EXPECT_EQ(has_field(u"Orders", u"Day"), true);
  const Calls all = model_.journal.calls();
  for (std::size_t failing = 1; failing <= all.size(); ++failing) {
    SCOPED_TRACE(failing);
    model_.journal.start_anew();
    model_.journal.fail_call(failing, kFailure);
    EXPECT_HOST_ERROR(has_field(u"Orders", u"Day"), kFailure.hresult);
    EXPECT_THAT(model_.journal.calls(), ElementsAreArray(all.data(), failing));
    EXPECT_EQ(model_.journal.live_objects(), 0);
  }
}

class CreateIndexTest : public SchemaHelpers {};

TEST_F(CreateIndexTest, AddsAnIndexStepByStep) {
  create_index(u"customers", u"ByCode", u"Code");
  EXPECT_THAT(indexes_of_customers(), ElementsAre(IndexModel{u"ByCode", {u"Code"}}));
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Item(customers)", "TableDef.CreateIndex(ByCode)",
                          "Index.CreateField(Code)", "Index.Fields", "Fields.Append(Code)", "TableDef.Indexes",
                          "Indexes.Append(ByCode)", "TableDef.Indexes", "Indexes.Refresh"));
}

TEST_F(CreateIndexTest, AddsAnIndexOnTwoFieldsInOrder) {
  create_index(u"CUSTOMERS", u"Both", u"City", u"Code");
  EXPECT_THAT(indexes_of_customers(), ElementsAre(IndexModel{u"Both", {u"City", u"Code"}}));
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Item(CUSTOMERS)", "TableDef.CreateIndex(Both)",
                          "Index.CreateField(City)", "Index.Fields", "Fields.Append(City)", "Index.CreateField(Code)",
                          "Index.Fields", "Fields.Append(Code)", "TableDef.Indexes", "Indexes.Append(Both)",
                          "TableDef.Indexes", "Indexes.Refresh"));
}

TEST_F(CreateIndexTest, TakesNamesAsTheyAre) {
  create_index(u" CUSTOMERS", u"ByCode", u"Code");
  EXPECT_THAT(model_.journal.calls(), ElementsAre("Database.TableDefs", "TableDefs.Item( CUSTOMERS)"));
}

TEST_F(CreateIndexTest, LeavesTheSchemaAsItWasForAMissingTable) {
  create_index(u"Invoices", u"ByCode", u"Code");
  create_index(u"", u"ByCode", u"Code", u"City");
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Database.TableDefs", "TableDefs.Item(Invoices)", "Database.TableDefs", "TableDefs.Item()"));
}

TEST_F(CreateIndexTest, LeavesTheSchemaAsItWasWhereTheIndexIsRefused) {
  create_index(u"Orders", u"BYCITY", u"Day");
  EXPECT_THAT(model_.tables[2].indexes, ElementsAre(IndexModel{u"ByCity", {u"City"}})) << "the name is in use";
  create_index(u"CUSTOMERS", u"ByName", u"Name");
  EXPECT_THAT(indexes_of_customers(), ElementsAre()) << "there is no such field";
  model_.read_only = true;
  create_index(u"CUSTOMERS", u"ByCode", u"Code");
  EXPECT_THAT(indexes_of_customers(), ElementsAre()) << "the database is read-only";
  EXPECT_EQ(model_.journal.calls().back(), "Indexes.Refresh");
}

TEST_F(CreateIndexTest, SwallowsTheErrorOfAClosedDatabase) {
  model_.closed = true;
  create_index(u"CUSTOMERS", u"ByCode", u"Code");
  EXPECT_THAT(model_.journal.calls(), ElementsAre("Database.TableDefs"));
}

TEST_F(CreateIndexTest, MakesOneFieldOfEqualNames) {
  create_index(u"CUSTOMERS", u"ByCode", u"Code", u"CODE");
  EXPECT_THAT(indexes_of_customers(), ElementsAre(IndexModel{u"ByCode", {u"Code"}}));
}

// The calls that are still made when one of them fails, by their place in the undisturbed transcript.
TEST_F(CreateIndexTest, GoesOnWithTheNextStatementAfterAnyCallThatFails) {
  const std::vector<std::vector<int>> made_when_failing = {
      {1},                                          // no table definitions
      {1, 2},                                       // no such table
      {1, 2, 3, 12, 13},                            // no index to work on, but the refresh
      {1, 2, 3, 4, 7, 8, 9, 10, 11, 12, 13},        // no first field
      {1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12, 13},     // nor when the index's fields are not to be had
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},  // nor when it is not appended
      {1, 2, 3, 4, 5, 6, 7, 10, 11, 12, 13},        // no second field
      {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13},     // likewise
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},  // likewise
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13},      // nothing to append the index to
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},  // the index is refused
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},      // nothing to refresh
      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},  // the refresh fails
  };
  const IndexModel both{u"Both", {u"Code", u"City"}};
  const IndexModel second_only{u"Both", {u"City"}};
  const IndexModel first_only{u"Both", {u"Code"}};
  const std::vector<std::vector<IndexModel>> added_when_failing = {
      {},           {}, {}, {second_only}, {second_only}, {second_only}, {first_only}, {first_only},
      {first_only}, {}, {}, {both},        {both}};

  create_index(u"CUSTOMERS", u"Both", u"Code", u"City");
  const Calls all = model_.journal.calls();
  ASSERT_EQ(all.size(), made_when_failing.size());
  for (std::size_t failing = 1; failing <= all.size(); ++failing) {
    SCOPED_TRACE(failing);
    Calls expected;
    for (const int number : made_when_failing[failing - 1])
      expected.push_back(all[static_cast<std::size_t>(number) - 1]);
    model_.tables[1].indexes.clear();
    model_.journal.start_anew();
    model_.journal.fail_call(failing, kFailure);
    create_index(u"CUSTOMERS", u"Both", u"Code", u"City");
    EXPECT_THAT(model_.journal.calls(), ElementsAreArray(expected));
    EXPECT_THAT(indexes_of_customers(), ElementsAreArray(added_when_failing[failing - 1]));
    EXPECT_EQ(model_.journal.live_objects(), 0);
  }
}

TEST_F(CreateIndexTest, SwallowsRunningOutOfMemory) {
  for (const char* exhausted : {"Database.TableDefs", "TableDef.CreateIndex(ByCode)", "Fields.Append(Code)"}) {
    model_.journal.on_call = [&](const std::string& call) {
      if (call == exhausted) throw std::bad_alloc();
    };
    create_index(u"CUSTOMERS", u"ByCode", u"Code");
    EXPECT_THAT(indexes_of_customers(), ElementsAre());
  }
}

// --- texts that the caller loses ----------------------------------------------------------------------------------

// The texts of one call, which their owner can take away while it runs.
class LostTexts {
 public:
  explicit LostTexts(const std::vector<std::u16string>& contents) {
    for (const std::u16string& content : contents) texts_.push_back(std::make_unique<std::u16string>(content));
    for (const auto& text : texts_) views_.emplace_back(*text);
  }
  // Overwrites and frees them.
  void lose() {
    for (const auto& text : texts_) std::fill(text->begin(), text->end(), u'x');
    texts_.clear();
  }
  std::u16string_view operator[](std::size_t index) const { return views_[index]; }

 private:
  std::vector<std::unique_ptr<std::u16string>> texts_;
  std::vector<std::u16string_view> views_;
};

class OwnTexts : public SchemaHelpers {
 protected:
  using Operation = std::function<Result<bool>(Database& database, const LostTexts& texts)>;

  void SetUp() override { model_.ado_recordsets = true; }

  // The operation does the same whether it keeps its texts or loses them at any of the calls that it makes.
  void expect_no_difference(const std::vector<std::u16string>& contents, const Operation& operation) {
    const Trace expected = trace(contents, operation, 0);
    ASSERT_GT(expected.calls.size(), 4u);
    for (std::size_t losing = 1; losing <= expected.calls.size(); ++losing) {
      SCOPED_TRACE(expected.calls[losing - 1]);
      EXPECT_TRUE(trace(contents, operation, losing) == expected);
    }
  }

 private:
  struct Trace {
    Calls calls;
    std::vector<IndexModel> indexes;
    bool result;
    bool operator==(const Trace&) const = default;
  };

  Trace trace(const std::vector<std::u16string>& contents, const Operation& operation, std::size_t losing) {
    LostTexts texts(contents);
    model_.tables[1].indexes.clear();
    model_.journal.start_anew();
    model_.journal.on_call = [&](const std::string&) {
      if (model_.journal.calls().size() == losing) texts.lose();
    };
    const bool result = value_of(on_database([&](Database& database) { return operation(database, texts); }));
    return {model_.journal.calls(), indexes_of_customers(), result};
  }
};

TEST_F(OwnTexts, AreAllThatOperationsLookAt) {
  expect_no_difference({u"customers"}, [](Database& DB, const LostTexts& texts) { return IFTable(DB, texts[0]); });
  expect_no_difference({u"customers", u" city "},
                       [](Database& DB, const LostTexts& texts) { return IFField(DB, texts[0], texts[1], 0); });
  expect_no_difference({u"customers", u"ByCode", u"Code"}, [](Database& DB, const LostTexts& texts) {
    CreateIndex(DB, texts[0], texts[1], texts[2]);
    return true;
  });
  expect_no_difference({u"customers", u"Both", u"Code", u"City"}, [](Database& DB, const LostTexts& texts) {
    CreateIndex2(DB, texts[0], texts[1], texts[2], texts[3]);
    return true;
  });
}

// --- collections without an end -----------------------------------------------------------------------------------

class Endless final : public TableDef, public Field {
 public:
  Text name() override { return Text(u"Orders"); }
  Index& create_index(std::u16string_view /*name*/) override { std::abort(); }  // nobody looks for these
  Indexes& indexes() override { std::abort(); }
};

// A database of which every collection has `members` members.
class CountedDatabase final : public Database {
 public:
  explicit CountedDatabase(std::int64_t members) : tables_(members), opened_(members) {}
  TableDefs& table_defs() override { return tables_; }
  Recordset& open_recordset(std::u16string_view /*name*/) override { return opened_; }

 private:
  template <class Member>
  class CountedWalk final : public Walk<Member> {
   public:
    explicit CountedWalk(std::int64_t members) : left_(members) {}
    bool advance() override { return left_-- > 0; }
    Member* member() override { return &member_; }

   private:
    std::int64_t left_;
    Endless member_;
  };
  struct Tables final : TableDefs {
    explicit Tables(std::int64_t count) : members(count), last_walk(0) {}
    void refresh() override {}
    Walk<TableDef>& walk() override { return last_walk = CountedWalk<TableDef>(members); }
    TableDef& item(std::u16string_view /*name*/) override { std::abort(); }
    std::int64_t members;
    CountedWalk<TableDef> last_walk;
  };
  struct Opened final : Recordset, AdoRecordset {
    explicit Opened(std::int64_t count) : members(count), last_walk(0) {}
    AdoRecordset* ado_recordset() override { return this; }
    Walk<Field>& fields() override { return last_walk = CountedWalk<Field>(members); }
    std::int64_t members;
    CountedWalk<Field> last_walk;
  };

  Tables tables_;
  Opened opened_;
};

TEST(EndlessCollections, AreGivenUp) {
  constexpr std::int64_t kMost = 1048576;
  CountedDatabase full(kMost);
  EXPECT_EQ(IFTable(full, u"Goods"), false);
  EXPECT_EQ(IFField(full, u"Stock", u"ORDERS", 0), true) << "that many are no error";
  CountedDatabase endless(kMost + 1);
  EXPECT_EQ(IFTable(endless, u"Orders"), true) << "what is there is found";
  EXPECT_RUNTIME_ERROR_SAYING(IFTable(endless, u"Goods"), ErrorNumber::overflow,
                              u"IFTable: DB has a collection of more than 1048576 members");
  EXPECT_RUNTIME_ERROR_SAYING(IFField(endless, u"Stock", u"Orders", 0), ErrorNumber::overflow,
                              u"IFField: DB has a collection of more than 1048576 members");
}

// --- members that cannot be had -----------------------------------------------------------------------------------

// A database whose collections fail at each member, and then have none to give.
class UnreadableDatabase final : public Database {
 public:
  TableDefs& table_defs() override { return tables_; }
  Recordset& open_recordset(std::u16string_view /*name*/) override { return opened_; }

 private:
  template <class Member>
  struct FailingWalk final : Walk<Member> {
    explicit FailingWalk(FirstError& kept) : errors(kept) {}
    bool advance() override { return !errors.any(); }
    Member* member() override {
      errors.keep(Error(kFailure.hresult, kFailure.description, kFailure.source));
      return nullptr;
    }
    FirstError& errors;
  };
  struct Tables final : TableDefs {
    explicit Tables(FirstError& kept) : failing_walk(kept) {}
    void refresh() override {}
    Walk<TableDef>& walk() override { return failing_walk; }
    TableDef& item(std::u16string_view /*name*/) override { std::abort(); }
    FailingWalk<TableDef> failing_walk;
  };
  struct Opened final : Recordset, AdoRecordset {
    explicit Opened(FirstError& kept) : failing_walk(kept) {}
    AdoRecordset* ado_recordset() override { return this; }
    Walk<Field>& fields() override { return failing_walk; }
    FailingWalk<Field> failing_walk;
  };

  Tables tables_{errors()};
  Opened opened_{errors()};
};

TEST(UnreadableMembers, FailWithTheDatabasesOwnErrorAndLeaveNone) {
  UnreadableDatabase database;
  EXPECT_HOST_ERROR(IFTable(database, u"Orders"), kFailure.hresult);
  EXPECT_FALSE(database.errors().any());
  EXPECT_HOST_ERROR(IFField(database, u"Orders", u"Day", 0), kFailure.hresult);
  EXPECT_FALSE(database.errors().any());
}

}  // namespace
}  // namespace corvelle::testing
