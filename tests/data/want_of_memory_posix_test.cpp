// The operations on databases, grids, files and the machine where there is no memory.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "data/computer_name.h"
#include "data/file_find.h"
#include "data/grid_helpers.h"
#include "data/schema_helpers.h"
#include "tests/hosts/dao_ports.h"
#include "tests/hosts/grid_ports.h"
#include "tests/support/failing_memory.h"
#include "tests/support/runtime_error.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

// Each allocation of `operation` fails in turn; every time that is its error, and the next call is as ever.
template <class Operation>
void expect_wants_of_memory(Operation operation) {
  const auto text_of_outcome = [&] { return ::testing::PrintToString(operation()); };
  const std::string as_ever = text_of_outcome();
  const std::size_t failures = for_each_failure(operation, [&](auto outcome) {
    EXPECT_OUT_OF_MEMORY(std::move(outcome));
    EXPECT_EQ(text_of_outcome(), as_ever) << "the next call";
  });
  EXPECT_GT(failures, 0u) << as_ever;
}

TEST(WantOfMemory, EndsWhatLooksIntoADatabase) {
  DaoModel model;
  model.ado_recordsets = true;
  const auto database = ports_to(model);
  expect_wants_of_memory([&] { return IFTable(*database, u"订单"); });
  expect_wants_of_memory([&] { return IFTable(*database, u"Goods"); });
  expect_wants_of_memory([&] { return IFField(*database, u"Orders", u"Day", 0); });
  expect_wants_of_memory([&] { return IFField(*database, u"Orders", u"Sum", 1); });
  expect_wants_of_memory([&] { return IFField(*database, u"Goods", u"Day", 0); });
  model.dao_fields = false;
  expect_wants_of_memory([&] { return IFField(*database, u"Orders", u"Day", 0); });
  model.ado_recordsets = false;
  expect_wants_of_memory([&] { return IFField(*database, u"Orders", u"Day", 0); });
  model.closed = true;
  expect_wants_of_memory([&] { return IFTable(*database, u"Orders"); });
}

class IndexesWithoutMemory : public ::testing::Test {
 protected:
  // Each allocation of `create`, which makes an index of CUSTOMERS, fails in turn. No error is left, and the next call
  // adds the index, where it is one to add.
  void expect_no_trace(const std::function<void(Database&)>& create, const std::vector<IndexModel>& added) {
    std::vector<IndexModel>& indexes = model_.tables[1].indexes;
    const auto database = ports_to(model_);
    const auto run = [&] {
      indexes.clear();
      create(*database);
      return database->errors().any();
    };
    const std::size_t failures = for_each_failure(run, [&](bool failed) {
      EXPECT_FALSE(failed);
      EXPECT_TRUE(indexes.empty() || indexes == added);
      EXPECT_FALSE(run());
      EXPECT_EQ(indexes, added) << "the next call";
    });
    EXPECT_GT(failures, 2u) << "the copies of its names at least";
  }

  DaoModel model_;
};

TEST_F(IndexesWithoutMemory, AreNotMadeAndNothingIsSaid) {
  expect_no_trace([](Database& database) { CreateIndex(database, u"CUSTOMERS", u"ByCode", u"Code"); },
                  {{u"ByCode", {u"Code"}}});
  expect_no_trace([](Database& database) { CreateIndex2(database, u"CUSTOMERS", u"Both", u"Code", u"City"); },
                  {{u"Both", {u"Code", u"City"}}});
  expect_no_trace([](Database& database) { CreateIndex2(database, u"CUSTOMERS", u"Both", u"Code", u"Sum"); }, {});
  expect_no_trace([](Database& database) { CreateIndex(database, u"Goods", u"ByCode", u"Code"); }, {});
}

// Where a copy of a name fails, the database is not asked for anything.
TEST_F(IndexesWithoutMemory, AreNoneOfAPartOfTheNames) {
  const auto database = ports_to(model_);
  for (std::size_t failing = 1; failing <= 4; ++failing) {
    const FailingMemory memory(failing);
    CreateIndex2(*database, u"CUSTOMERS", u"Both", u"Code", u"City");
    EXPECT_TRUE(model_.journal.calls().empty()) << failing;
  }
}

TEST(WantOfMemory, EndsWhatFailsAtAGrid) {
  GridModel model;
  const auto grid = ports_to(model);
  expect_wants_of_memory([&] { return SetGrdAlign(*grid, 10); });
  model.cols = 40000;
  expect_wants_of_memory([&] { return SetGrdCenter(*grid); });
  expect_wants_of_memory([&] { return ClearGrd(*grid); });
  model.rows = 0;
  expect_wants_of_memory([&] { return SetGrdCenter(*grid); });
}

TEST(WantOfMemory, EndsASearchForFiles) {
  TemporaryFolder folder;
  const std::u16string file = folder.add_file("orders.mdb").u16string();
  const std::u16string all = (folder.path() / "*").u16string();
  expect_wants_of_memory([&] { return File_Find(file); });
  expect_wants_of_memory([&] { return File_Find(all); });
  expect_wants_of_memory([&] { return File_Find(all + u".txt"); });
  expect_wants_of_memory([&] { return File_Find(file + std::u16string(300, u'x')); });
  expect_wants_of_memory([&] { return File_Find(u"/\xD800"); });
}

TEST(WantOfMemory, LeavesTheComputerWithoutAName) { expect_wants_of_memory(GetComputerNm); }

}  // namespace
}  // namespace corvelle::testing
