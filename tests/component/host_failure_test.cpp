// Each call that an operation makes of a host's database or grid fails in turn, in each way that a call can fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "component/error_report.h"
#include "tests/component/component_memory.h"
#include "tests/component/published_call.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

constexpr HRESULT kRefused = dao_error(3021);

void describe(EXCEPINFO& exception) {
  exception.scode = kRefused;
  exception.bstrDescription = SysAllocString(L"因故失败");
  exception.bstrSource = SysAllocString(L"DAO.Test");
}

HRESULT STDAPICALLTYPE describe_late(EXCEPINFO* exception) {
  describe(*exception);
  return S_OK;
}

// One way for a call to fail, and what the operation must say then.
struct Refusal {
  const char* name;
  std::function<HRESULT(EXCEPINFO& exception)> answer;
  HRESULT error;
  std::u16string_view description;
};

const std::vector<Refusal>& refusals() {
  static const std::vector<Refusal> all = {
      {"a plain HRESULT", [](EXCEPINFO&) { return E_ACCESSDENIED; }, E_ACCESSDENIED, u""},
      {"a severed connection", [](EXCEPINFO&) { return RPC_E_DISCONNECTED; }, RPC_E_DISCONNECTED, u""},
      {"want of memory", [](EXCEPINFO&) { return E_OUTOFMEMORY; }, E_OUTOFMEMORY, u""},
      {"an exception with texts", [](EXCEPINFO& exception) { return describe(exception), DISP_E_EXCEPTION; }, kRefused,
       u"因故失败"},
      {"an exception without texts", [](EXCEPINFO& exception) { return exception.scode = kRefused, DISP_E_EXCEPTION; },
       kRefused, u""},
      {"an exception by number", [](EXCEPINFO& exception) { return exception.wCode = 3021, DISP_E_EXCEPTION; },
       kRefused, u""},
      {"an exception filled in late",
       [](EXCEPINFO& exception) { return exception.pfnDeferredFillIn = describe_late, DISP_E_EXCEPTION; }, kRefused,
       u"因故失败"},
      {"an empty exception", [](EXCEPINFO&) { return DISP_E_EXCEPTION; }, DISP_E_EXCEPTION, u""},
      {"a lost member", [](EXCEPINFO&) { return DISP_E_MEMBERNOTFOUND; }, hresult_of(ErrorNumber::no_such_member),
       u"has no member"},
  };
  return all;
}

// Results that no member of a database or grid should have.
constexpr VARTYPE kStrangeResults[] = {VT_EMPTY, VT_NULL,     VT_I4,      VT_R8,   VT_BSTR,
                                       VT_ERROR, VT_DISPATCH, VT_UNKNOWN, VT_BOOL, VT_ARRAY | VT_UI1};

class HostFailure : public ::testing::Test {
 protected:
  void SetUp() override { objects_.meet_an_exception(); }

  void TearDown() override {
    EXPECT_EQ(database_->references(), 1u);
    EXPECT_EQ(dao_.journal.live_objects(), 1);
    EXPECT_EQ(grid_->references(), 1u);
  }

  VARIANT database() const { return object_variant(database_.Get()); }
  VARIANT grid() const { return object_variant(grid_.Get()); }

  // How many calls `operation` makes of its host where none fails.
  std::size_t calls_of(std::u16string_view operation, const Arguments& arguments) {
    std::size_t calls = 0;
    interfere([&](MemberCall&) { return ++calls, std::nullopt; });
    EXPECT_EQ(run(operation, arguments).result, S_OK);
    return calls;
  }

  // Each call fails in each way; `swallows` where the operation lets none of it out.
  void fail_each_call(std::u16string_view operation, const Arguments& arguments, bool swallows = false) {
    const std::size_t calls = calls_of(operation, arguments);
    EXPECT_GE(calls, 3u);
    for (const Refusal& refusal : refusals()) {
      for (std::size_t failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE(utf8(operation) + ": call " + std::to_string(failing) + " is " + refusal.name);
        expect_refusal(refusal,
                       outcome_with(operation, arguments, failing,
                                    [&](MemberCall& call) {
                                      EXPECT_NE(call.exception, nullptr);
                                      return refusal.answer(*call.exception);
                                    }),
                       swallows);
        ++failures_;
      }
    }
    give_strange_results(operation, arguments, calls, swallows);
  }

  int failures_ = 0;

 private:
  static VARIANT object_variant(IDispatch* object) {
    VARIANT variant;
    VariantInit(&variant);
    V_VT(&variant) = VT_DISPATCH;
    V_DISPATCH(&variant) = object;
    return variant;
  }

  void interfere(std::function<std::optional<HRESULT>(MemberCall&)> answer) {
    dao_.journal.answers_instead = answer;
    grid_model_.journal.answers_instead = std::move(answer);
  }

  Outcome run(std::u16string_view operation, const Arguments& arguments) {
    dao_.tables[2].indexes.clear();
    const Published called = objects_.find(operation);
    Outcome outcome = invoke(called.object.Get(), called.operation->dispid, arguments);
    EXPECT_EQ(error_description(), std::nullopt) << "left behind beside the answer";
    return outcome;
  }

  // The operation with its `failing`th call answered by `answer`; nothing may be lost.
  Outcome outcome_with(std::u16string_view operation, const Arguments& arguments, std::size_t failing,
                       const std::function<HRESULT(MemberCall&)>& answer) {
    std::size_t calls = 0;
    interfere([&](MemberCall& call) { return ++calls == failing ? std::optional(answer(call)) : std::nullopt; });
    const std::size_t before = memory_.blocks_in_use();
    Outcome outcome = run(operation, arguments);
    EXPECT_GE(calls, failing);
    EXPECT_EQ(database_->references(), 1u);
    EXPECT_EQ(grid_->references(), 1u);
    const bool holds_text = outcome.value.get().vt == VT_BSTR;
    EXPECT_LE(memory_.blocks_in_use(), before + (holds_text ? 1 : 0)) << "something is lost";
    return outcome;
  }

  static void expect_refusal(const Refusal& refusal, const Outcome& outcome, bool swallows) {
    if (swallows) {
      EXPECT_EQ(outcome.result, S_OK);
      return;
    }
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.scode, refusal.error);
    EXPECT_NE(outcome.description.find(refusal.description), std::u16string::npos) << utf8(outcome.description);
    EXPECT_EQ(V_VT(&outcome.value.get()), VT_EMPTY);
  }

  // A member that answers with a value of another type is an error of the runtime, or does not matter.
  void give_strange_results(std::u16string_view operation, const Arguments& arguments, std::size_t calls,
                            bool swallows) {
    int noticed = 0;
    for (const VARTYPE type : kStrangeResults) {
      for (std::size_t failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE(utf8(operation) + ": call " + std::to_string(failing) + " gives type " + std::to_string(type));
        const Outcome outcome = outcome_with(operation, arguments, failing, [&](MemberCall& call) {
          VARIANT& result = *call.result();
          std::fill_n(reinterpret_cast<char*>(&result), sizeof(result), '\0');
          V_VT(&result) = type;
          return S_OK;
        });
        ++failures_;
        if (outcome.result == S_OK) continue;
        ++noticed;
        EXPECT_FALSE(swallows);
        EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
        constexpr HRESULT kExpected[] = {
            hresult_of(ErrorNumber::type_mismatch), hresult_of(ErrorNumber::object_not_set),
            hresult_of(ErrorNumber::object_required), hresult_of(ErrorNumber::no_such_member)};
        EXPECT_NE(std::find(std::begin(kExpected), std::end(kExpected), outcome.scode), std::end(kExpected))
            << std::hex << outcome.scode;
        EXPECT_FALSE(outcome.description.empty());
      }
    }
    EXPECT_TRUE(noticed > 0 || swallows || operation == u"ClearGrd") << "assignments have no result";
  }

  Apartment apartment_;
  PublishedObjects objects_;
  DaoModel dao_ = [] {
    DaoModel model;
    model.ado_recordsets = true;
    return model;
  }();
  GridModel grid_model_;
  ComPtr<LateBound> database_ = owned(new_dao_database(dao_));
  ComPtr<LateBound> grid_ = owned(new_grid(grid_model_));
  ComponentMemory memory_;
};

TEST_F(HostFailure, OfADatabaseThatIsAsked) {
  fail_each_call(u"IFTable", Arguments().borrowed(database()).text(u"orders"));
  fail_each_call(u"IFField", Arguments().borrowed(database()).text(u"Orders").text(u"Day").int16(0));
  EXPECT_GT(failures_, 200);
}

TEST_F(HostFailure, OfADatabaseThatIsToHaveAnIndex) {
  fail_each_call(u"CreateIndex", Arguments().borrowed(database()).text(u"Orders").text(u"ByDay").text(u"Day"), true);
  fail_each_call(u"CreateIndex2",
                 Arguments().borrowed(database()).text(u"Orders").text(u"Both").text(u"Day").text(u"City"), true);
  EXPECT_GT(failures_, 300);
}

TEST_F(HostFailure, OfAGrid) {
  fail_each_call(u"SetGrdCenter", Arguments().borrowed(grid()));
  fail_each_call(u"SetGrdAlign", Arguments().borrowed(grid()).int16(7));
  fail_each_call(u"ClearGrd", Arguments().borrowed(grid()));
  EXPECT_GT(failures_, 300);
}

}  // namespace
}  // namespace corvelle::testing
