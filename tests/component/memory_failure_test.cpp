// Each allocation of each operation fails in turn: E_OUTOFMEMORY, nothing lost, and the next call works.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <thread>
#include <utility>

#include "component/error_report.h"
#include "tests/cases/classification_cases.h"
#include "tests/cases/date_cases.h"
#include "tests/cases/decimal_cases.h"
#include "tests/cases/fields_cases.h"
#include "tests/cases/pinyin_cases.h"
#include "tests/cases/replacement_cases.h"
#include "tests/cases/substrings_cases.h"
#include "tests/cases/text_slot_cases.h"
#include "tests/cases/width_cases.h"
#include "tests/component/component_memory.h"
#include "tests/component/published_call.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

// What a call came to, by whichever binding.
struct Answer {
  HRESULT result = E_UNEXPECTED;
  std::string value;  // shown
};

Answer call(Binding binding, const Published& called, const Arguments& arguments) {
  if (binding == Binding::early) {
    VtableCall early(called, arguments);
    const HRESULT result = early.run();
    return {result, shown(value_of(early.result()))};
  }
  const Outcome outcome = invoke(called.object.Get(), called.operation->dispid, arguments);
  return {outcome.result == DISP_E_EXCEPTION ? outcome.scode : outcome.result, shown(value_of(outcome.value.get()))};
}

class MemoryFailure : public ::testing::Test {
 protected:
  // Where all tests have run, each operation must have had an allocation fail, or asked for none by either binding.
  static void TearDownTestSuite() {
    const auto* suite = ::testing::UnitTest::GetInstance()->current_test_suite();
    if (suite->test_to_run_count() < suite->total_test_count()) return;  // a filter's choice
    const Apartment apartment;
    for (const Published& each : PublishedObjects().all()) {
      EXPECT_EQ(tried().count(each.operation), 1u) << utf8(each.operation->name) << " was not tried";
    }
  }

  // An early-bound call that fails leaves its error on the thread.
  void TearDown() override {
    SetErrorInfo(0, nullptr);
    RecordProperty("failures", failures_);
  }

  // Lets each allocation of the call fail in turn until it comes through, once it alone and once with all later ones.
  // `undo` takes back what a call that came through has done.
  void fail_each_allocation(
      const Published& called, const Arguments& arguments, const std::function<void()>& undo = [] {}) {
    tried().insert(called.operation);
    for (const Binding binding : {Binding::late, Binding::early}) {
      const Answer expected = call(binding, called, arguments);
      undo();
      for (const bool for_good : {false, true}) {
        SCOPED_TRACE((binding == Binding::late ? "late" : "early") + std::string(for_good ? ", for good" : ", once"));
        fail_each_allocation_of(binding, called, arguments, for_good, expected, undo);
      }
    }
  }

  void fail_each_allocation(std::span<const OperationCase> cases) {
    for (const OperationCase& row : cases) {
      SCOPED_TRACE(utf8(row.operation) + ": " + row.reason);
      const Published called = objects_.find(row.operation);
      Arguments arguments;
      append(row.arguments, *called.operation, arguments);
      fail_each_allocation(called, arguments);
    }
  }

  ComponentMemory& memory() { return memory_; }
  int failures() const { return failures_; }
  // For operations that swallow want of memory like any other error: a call that meets it must still return S_OK.
  void expect_it_swallowed() { swallowed_ = true; }

  const PublishedObjects& objects() const { return objects_; }

 private:
  void fail_each_allocation_of(Binding binding, const Published& called, const Arguments& arguments, bool for_good,
                               const Answer& expected, const std::function<void()>& undo) {
    for (int number = 0;; ++number) {
      SetErrorInfo(0, nullptr);  // an earlier call's texts would count as lost
      const std::size_t before = memory_.blocks_in_use();
      for_good ? memory_.fail_from_allocation(number) : memory_.fail_allocation(number);
      const Answer answer = call(binding, called, arguments);
      if (!memory_.stop_failing()) {
        EXPECT_EQ(answer.result, expected.result);
        EXPECT_EQ(answer.value, expected.value);
        undo();
        return;
      }
      SCOPED_TRACE("allocation " + std::to_string(number));
      expect_want_of_memory(answer, expected);
      SetErrorInfo(0, nullptr);
      undo();
      EXPECT_EQ(memory_.blocks_in_use(), before) << "something is lost";
      const Answer next = call(binding, called, arguments);
      EXPECT_EQ(next.result, expected.result) << "of the next call";
      EXPECT_EQ(next.value, expected.value) << "of the next call";
      undo();
      if (HasFailure()) return;
      ++failures_;
    }
  }

  void expect_want_of_memory(const Answer& answer, const Answer& expected) const {
    // An operation that ends in an error may say so, only with less to say.
    const bool as_ever = FAILED(expected.result) && answer.result == expected.result;
    const HRESULT wanted = swallowed_ ? S_OK : E_OUTOFMEMORY;
    EXPECT_TRUE(as_ever || answer.result == wanted) << answer.result;
    EXPECT_EQ(answer.value, "nothing");
  }

  static std::set<const Operation*>& tried() {
    static std::set<const Operation*> operations;
    return operations;
  }

  Apartment apartment_;
  PublishedObjects objects_;
  ComponentMemory memory_;
  int failures_ = 0;
  bool swallowed_ = false;
};

TEST_F(MemoryFailure, InTheOperationsOnTextsAndNumbers) {
  fail_each_allocation(width_cases());
  fail_each_allocation(fields_cases());
  fail_each_allocation(substrings_cases());
  fail_each_allocation(replacement_cases());
  fail_each_allocation(pinyin_cases());
  fail_each_allocation(decimal_cases());
  fail_each_allocation(date_cases());
  fail_each_allocation(classification_cases());
  EXPECT_GT(failures(), 3000);
}

TEST_F(MemoryFailure, InTheTextSlot) {
  const auto clear_slot = [&] {
    const Published set = objects().find(u"ClsVexApp.Set_Str");
    call(Binding::late, set, Arguments().text(u""));
  };
  const auto content = [&] {
    const Published get = objects().find(u"ClsVexApp.Get_Str");
    return call(Binding::early, get, Arguments()).value;
  };
  fail_each_allocation(objects().find(u"ClsVexApp.Set_Str"), Arguments().text(u"stored"), clear_slot);
  call(Binding::late, objects().find(u"ClsVexApp.Set_Str"), Arguments().text(u"kept"));
  fail_each_allocation(objects().find(u"ClsVexApp.Get_Str"), Arguments());
  EXPECT_EQ(content(), shown(text(u"kept")));
  clear_slot();
}

// Numbers for texts and texts for numbers: automation allocates what it converts.
TEST_F(MemoryFailure, InConversions) {
  fail_each_allocation(objects().find(u"Center"), Arguments().int32(12345));
  fail_each_allocation(objects().find(u"Get_String"), Arguments().real(12.5).text(u"1").text(u"3"));
  fail_each_allocation(objects().find(u"strDateFmt_Pf"), Arguments().int32(20240131).int16(5));
  EXPECT_GE(failures(), 8);
}

TEST_F(MemoryFailure, InTheMachinesOperations) {
  fail_each_allocation(objects().find(u"GetComputerNm"), Arguments());
  fail_each_allocation(objects().find(u"ClsVexApp.GetComputerNm"), Arguments());
  fail_each_allocation(objects().find(u"File_Find"), Arguments().text(u"C:\\windows\\*.ini"));
  EXPECT_GE(failures(), 8);
}

TEST_F(MemoryFailure, InQuestionsToADatabase) {
  DaoModel model;
  model.ado_recordsets = true;
  const auto database = owned(new_dao_database(model));
  const VARIANT given = object_variant(database.Get());
  fail_each_allocation(objects().find(u"IFTable"), Arguments().borrowed(given).text(u" orders "));
  fail_each_allocation(objects().find(u"IFTable"), Arguments().borrowed(given).text(u"nowhere"));
  fail_each_allocation(objects().find(u"IFField"), Arguments().borrowed(given).text(u"Orders").text(u"Day").int16(0));
  fail_each_allocation(objects().find(u"IFField"), Arguments().borrowed(given).text(u"none").text(u"Day").int16(0));
  EXPECT_GT(failures(), 100);
  EXPECT_EQ(database->references(), 1u);
  EXPECT_EQ(model.journal.live_objects(), 1);
}

TEST_F(MemoryFailure, InGrids) {
  GridModel model;
  const auto grid = owned(new_grid(model));
  const VARIANT given = object_variant(grid.Get());
  fail_each_allocation(objects().find(u"SetGrdCenter"), Arguments().borrowed(given));
  fail_each_allocation(objects().find(u"SetGrdAlign"), Arguments().borrowed(given).int16(4));
  fail_each_allocation(objects().find(u"ClearGrd"), Arguments().borrowed(given));
  fail_each_allocation(objects().find(u"SetGrdAlign"), Arguments().borrowed(given).int16(99));
  EXPECT_GT(failures(), 25);
  EXPECT_EQ(grid->references(), 1u);
}

// These swallow every error by their published behaviour, want of memory too; what they lose is the index.
TEST_F(MemoryFailure, InIndexesPassesSilently) {
  DaoModel model;
  const auto database = owned(new_dao_database(model));
  const VARIANT given = object_variant(database.Get());
  int made = 0;
  const auto forget_the_index = [&] {
    EXPECT_EQ(error_description(), std::nullopt);
    EXPECT_EQ(database->references(), 1u);
    EXPECT_EQ(model.journal.live_objects(), 1);
    made += static_cast<int>(std::exchange(model.tables[2].indexes, {}).size());
  };
  forget_the_index();
  expect_it_swallowed();
  Arguments one_field;
  one_field.borrowed(given).text(u"Orders").text(u"ByDay").text(u"Day");
  fail_each_allocation(objects().find(u"CreateIndex"), one_field, forget_the_index);
  Arguments two_fields;
  two_fields.borrowed(given).text(u"Orders").text(u"Both").text(u"Day").text(u"City");
  fail_each_allocation(objects().find(u"CreateIndex2"), two_fields, forget_the_index);
  EXPECT_GT(failures(), 50);
  // Each next call makes one, and of those without memory only those that could.
  EXPECT_GT(made, failures());
  EXPECT_LT(made, 2 * failures());
}

TEST_F(MemoryFailure, InTheMakingOfObjects) {
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(CoGetClassObject(kClsValidateId, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&factory)), S_OK);
  const std::size_t before = memory().blocks_in_use();
  ComPtr<IDispatch> object;
  memory().fail_allocation(0);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), E_OUTOFMEMORY);
  EXPECT_TRUE(memory().stop_failing());
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(memory().blocks_in_use(), before);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
}

TEST_F(MemoryFailure, InDescriptions) {
  const Published called = objects().find(u"Center");
  for (int number = 0;; ++number) {
    const std::size_t before = memory().blocks_in_use();
    ComPtr<ITypeInfo> type;
    memory().fail_allocation(number);
    const HRESULT result = called.object->GetTypeInfo(0, 0, &type);
    const bool struck = memory().stop_failing();
    EXPECT_EQ(result, struck ? E_OUTOFMEMORY : S_OK);
    EXPECT_EQ(type == nullptr, struck);
    if (!struck) break;
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(memory().blocks_in_use(), before) << "allocation " << number;
  }
}

// Nothing is set up at a thread's first error, which would want memory then.
TEST_F(MemoryFailure, AtAThreadsFirstError) {
  const Published called = objects().find(u"GetByte_Pf");
  const ScopedBstr text(std::u16string(32767, u'a'));
  auto* validate = static_cast<_ClsValidate*>(called.object.Get());
  for (const bool for_good : {false, true}) {
    bool struck = true;
    for (int number = 0; struck; ++number) {
      HRESULT result = S_OK;
      std::thread([&] {
        for_good ? memory().fail_from_allocation(number) : memory().fail_allocation(number);
        SHORT width = 0;
        result = validate->GetByte_Pf(text.get(), 0, &width);
        struck = memory().stop_failing();
      }).join();
      const HRESULT overflow = hresult_of(ErrorNumber::overflow);
      EXPECT_TRUE(result == overflow || (struck && result == E_OUTOFMEMORY)) << result;
    }
  }
}

}  // namespace
}  // namespace corvelle::testing
