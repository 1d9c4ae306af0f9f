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

// `result` with texts as error information of the thread.
HRESULT described(HRESULT result) {
  ComPtr<ICreateErrorInfo> information;
  ComPtr<IErrorInfo> finished;
  EXPECT_EQ(CreateErrorInfo(&information), S_OK);
  std::wstring text = L"因故失败";
  information->SetDescription(text.data());
  EXPECT_EQ(information.As(&finished), S_OK);
  SetErrorInfo(0, finished.Get());
  return result;
}

// One way to refuse, and what the operation must say then. There is an exception to fill in where a member is called.
struct Refusal {
  const char* name;
  std::function<HRESULT(EXCEPINFO* exception)> answer;
  HRESULT error;
  std::u16string_view description;
};

// Where a host's object can fail: when a member's name is looked up, when a member is called, when an enumerator steps.
enum class Point { lookup, call, step };

constexpr HRESULT kNoSuchMember = hresult_of(ErrorNumber::no_such_member);
constexpr HRESULT kUnavailable = static_cast<HRESULT>(0x800706BA);  // of the system's RPC: the server is gone

const std::vector<Refusal>& refusals_of(Point point) {
  static const std::vector<Refusal> of_calls = {
      {"a plain HRESULT", [](EXCEPINFO*) { return E_ACCESSDENIED; }, E_ACCESSDENIED, u""},
      {"a severed connection", [](EXCEPINFO*) { return RPC_E_DISCONNECTED; }, RPC_E_DISCONNECTED, u""},
      {"want of memory", [](EXCEPINFO*) { return E_OUTOFMEMORY; }, E_OUTOFMEMORY, u""},
      {"an exception with texts", [](EXCEPINFO* exception) { return describe(*exception), DISP_E_EXCEPTION; }, kRefused,
       u"因故失败"},
      {"an exception without texts", [](EXCEPINFO* exception) { return exception->scode = kRefused, DISP_E_EXCEPTION; },
       kRefused, u""},
      {"an exception by number", [](EXCEPINFO* exception) { return exception->wCode = 3021, DISP_E_EXCEPTION; },
       kRefused, u""},
      {"an exception filled in late",
       [](EXCEPINFO* exception) { return exception->pfnDeferredFillIn = describe_late, DISP_E_EXCEPTION; }, kRefused,
       u"因故失败"},
      {"an empty exception", [](EXCEPINFO*) { return DISP_E_EXCEPTION; }, DISP_E_EXCEPTION, u""},
      {"the thread's error information", [](EXCEPINFO*) { return described(E_FAIL); }, E_FAIL, u"因故失败"},
      {"a lost member", [](EXCEPINFO*) { return DISP_E_MEMBERNOTFOUND; }, kNoSuchMember, u"has no member"},
  };
  static const std::vector<Refusal> of_lookups = {
      {"an unknown name", [](EXCEPINFO*) { return DISP_E_UNKNOWNNAME; }, kNoSuchMember, u"has no member"},
      {"a plain HRESULT", [](EXCEPINFO*) { return E_ACCESSDENIED; }, kNoSuchMember, u"has no member"},
      {"nothing made for it", [](EXCEPINFO*) { return E_NOTIMPL; }, kNoSuchMember, u"has no member"},
      {"the thread's error information", [](EXCEPINFO*) { return described(E_FAIL); }, kNoSuchMember, u"has no member"},
      {"a severed connection", [](EXCEPINFO*) { return described(RPC_E_DISCONNECTED); }, RPC_E_DISCONNECTED,
       u"因故失败"},
      {"a server that is gone", [](EXCEPINFO*) { return kUnavailable; }, kUnavailable, u""},
      {"want of memory", [](EXCEPINFO*) { return E_OUTOFMEMORY; }, E_OUTOFMEMORY, u""},
  };
  static const std::vector<Refusal> of_steps = {
      {"a plain HRESULT", [](EXCEPINFO*) { return E_ACCESSDENIED; }, E_ACCESSDENIED, u""},
      {"the thread's error information", [](EXCEPINFO*) { return described(kRefused); }, kRefused, u"因故失败"},
      {"a severed connection", [](EXCEPINFO*) { return RPC_E_DISCONNECTED; }, RPC_E_DISCONNECTED, u""},
      {"want of memory", [](EXCEPINFO*) { return E_OUTOFMEMORY; }, E_OUTOFMEMORY, u""},
  };
  switch (point) {
    case Point::lookup: return of_lookups;
    case Point::call: return of_calls;
    default: return of_steps;
  }
}

// Results that no member and no enumerator of a database or grid should have.
constexpr VARTYPE kStrangeResults[] = {VT_EMPTY, VT_NULL,     VT_I4,      VT_R8,   VT_BSTR,
                                       VT_ERROR, VT_DISPATCH, VT_UNKNOWN, VT_BOOL, VT_ARRAY | VT_UI1};

class HostFailure : public ::testing::Test {
 protected:
  void TearDown() override {
    expect_nothing_held();
    RecordProperty("failures", failures_);
  }

  VARIANT database() const { return object_variant(database_.Get()); }
  VARIANT grid() const { return object_variant(grid_.Get()); }

  // What an operation asks of its host fails in each way, one request at a time, by both bindings. `swallows` where the
  // operation lets no error out.
  void fail_each(Point point, std::u16string_view operation, const Arguments& arguments, bool swallows = false) {
    const std::size_t requests = requests_of(point, operation, arguments);
    EXPECT_GE(requests, 2u);
    for (const Binding binding : {Binding::late, Binding::early}) {
      binding_ = binding;
      refuse_each(point, operation, arguments, requests, swallows);
      if (point != Point::lookup) give_strange_results(point, operation, arguments, requests, swallows);
    }
  }

  int failures_ = 0;

 private:
  // What comes before a request is answered: an HRESULT instead of it, or none. `result` is where a call or a step puts
  // its value.
  using Interference = std::function<std::optional<HRESULT>(EXCEPINFO* exception, VARIANT* result)>;

  void interfere(Point point, const Interference& answer) {
    for (Journal* journal : {&dao_.journal, &grid_model_.journal}) {
      journal->looks_up_instead = nullptr;
      journal->answers_instead = nullptr;
      journal->steps_instead = nullptr;
      switch (point) {
        case Point::lookup: journal->looks_up_instead = [=] { return answer(nullptr, nullptr); }; break;
        case Point::call:
          journal->answers_instead = [=](MemberCall& call) { return answer(call.exception, call.result()); };
          break;
        case Point::step: journal->steps_instead = [=](VARIANT& item) { return answer(nullptr, &item); }; break;
      }
    }
  }

  // How many there are where none fails.
  std::size_t requests_of(Point point, std::u16string_view operation, const Arguments& arguments) {
    std::size_t requests = 0;
    interfere(point, [&](EXCEPINFO*, VARIANT*) { return ++requests, std::nullopt; });
    EXPECT_EQ(run(operation, arguments).result, S_OK);
    return requests;
  }

  Outcome run(std::u16string_view operation, const Arguments& arguments) {
    dao_.tables[2].indexes.clear();
    const Published called = objects_.find(operation);
    Outcome outcome = binding_ == Binding::late ? invoke(called.object.Get(), called.operation->dispid, arguments)
                                                : run_early(called, arguments);
    EXPECT_EQ(error_description(), std::nullopt) << "left behind beside the answer";
    return outcome;
  }

  // A failure is given as the exception that a late-bound host would see.
  static Outcome run_early(const Published& called, const Arguments& arguments) {
    Outcome outcome;
    VtableCall call(called, arguments);
    outcome.result = outcome.scode = call.run();
    if (FAILED(outcome.scode)) {
      outcome.result = DISP_E_EXCEPTION;
      outcome.description = error_description().value_or(u"");
      EXPECT_EQ(V_VT(&call.result()), VT_EMPTY);
    }
    return outcome;
  }

  void expect_nothing_held() const {
    EXPECT_EQ(database_->references(), 1u);
    EXPECT_EQ(dao_.journal.live_objects(), 1);
    EXPECT_EQ(grid_->references(), 1u);
  }

  // The operation with its `failing`th request answered by `answer`; nothing may be lost.
  Outcome outcome_with(Point point, std::u16string_view operation, const Arguments& arguments, std::size_t failing,
                       const std::function<HRESULT(EXCEPINFO* exception, VARIANT* result)>& answer) {
    std::size_t requests = 0;
    interfere(point, [&](EXCEPINFO* exception, VARIANT* result) {
      return ++requests == failing ? std::optional(answer(exception, result)) : std::nullopt;
    });
    const std::size_t before = memory_.blocks_in_use();
    Outcome outcome = run(operation, arguments);
    ++failures_;
    EXPECT_GE(requests, failing);
    expect_nothing_held();
    const bool holds_text = outcome.value.get().vt == VT_BSTR;
    EXPECT_LE(memory_.blocks_in_use(), before + (holds_text ? 1 : 0)) << "something is lost";
    return outcome;
  }

  void refuse_each(Point point, std::u16string_view operation, const Arguments& arguments, std::size_t requests,
                   bool swallows) {
    for (const Refusal& refusal : refusals_of(point)) {
      for (std::size_t failing = 1; failing <= requests; ++failing) {
        SCOPED_TRACE(where(point, operation, failing) + " is " + refusal.name);
        const auto refuse = [&](EXCEPINFO* exception, VARIANT*) {
          EXPECT_EQ(exception != nullptr, point == Point::call);
          return refusal.answer(exception);
        };
        const Outcome outcome = outcome_with(point, operation, arguments, failing, refuse);
        if (swallows) {
          EXPECT_EQ(outcome.result, S_OK);
          continue;
        }
        EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
        EXPECT_EQ(outcome.scode, refusal.error);
        EXPECT_NE(outcome.description.find(refusal.description), std::u16string::npos) << utf8(outcome.description);
        EXPECT_EQ(V_VT(&outcome.value.get()), VT_EMPTY);
      }
    }
  }

  // A value of another type is an error of the runtime, or does not matter.
  void give_strange_results(Point point, std::u16string_view operation, const Arguments& arguments,
                            std::size_t requests, bool swallows) {
    int noticed = 0;
    for (const auto& give : strange_results()) {
      for (std::size_t failing = 1; failing <= requests; ++failing) {
        SCOPED_TRACE(where(point, operation, failing));
        const Outcome outcome = outcome_with(point, operation, arguments, failing, [&](EXCEPINFO*, VARIANT* result) {
          give(*result);
          return S_OK;
        });
        if (outcome.result == S_OK) continue;
        ++noticed;
        EXPECT_FALSE(swallows);
        EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
        constexpr HRESULT kExpected[] = {hresult_of(ErrorNumber::type_mismatch),
                                         hresult_of(ErrorNumber::object_not_set),
                                         hresult_of(ErrorNumber::object_required), kNoSuchMember};
        EXPECT_NE(std::find(std::begin(kExpected), std::end(kExpected), outcome.scode), std::end(kExpected))
            << std::hex << outcome.scode;
        EXPECT_FALSE(outcome.description.empty());
      }
    }
    EXPECT_TRUE(noticed > 0 || swallows || operation == u"ClearGrd") << "assignments have no result";
  }

  // Zeros of each type, an object without any member, and one without late binding.
  std::vector<std::function<void(VARIANT&)>> strange_results() {
    std::vector<std::function<void(VARIANT&)>> all;
    for (const VARTYPE type : kStrangeResults) {
      all.emplace_back([type](VARIANT& result) {
        std::fill_n(reinterpret_cast<char*>(&result), sizeof(result), '\0');
        V_VT(&result) = type;
      });
    }
    all.emplace_back([this](VARIANT& result) { result = object_variant(new LateBound(dao_.journal)); });
    all.emplace_back([this](VARIANT& result) {
      V_VT(&result) = VT_UNKNOWN;
      V_UNKNOWN(&result) = new_enumerator(dao_.journal, [](VARIANT&) { return false; });
    });
    return all;
  }

  std::string where(Point point, std::u16string_view operation, std::size_t failing) const {
    constexpr const char* kPoints[] = {": lookup ", ": call ", ": step "};
    return utf8(operation) + (binding_ == Binding::late ? ", late" : ", early") + kPoints[static_cast<int>(point)] +
           std::to_string(failing);
  }

  Apartment apartment_;
  PublishedObjects objects_;
  Binding binding_ = Binding::late;
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
  Arguments of_table;
  of_table.borrowed(database()).text(u"orders");
  Arguments of_field;
  of_field.borrowed(database()).text(u"Orders").text(u"Day").int16(0);
  for (const Point point : {Point::lookup, Point::call, Point::step}) {
    fail_each(point, u"IFTable", of_table);
    fail_each(point, u"IFField", of_field);
  }
  EXPECT_GT(failures_, 1000);
}

TEST_F(HostFailure, OfADatabaseThatIsToHaveAnIndex) {
  Arguments one_field;
  one_field.borrowed(database()).text(u"Orders").text(u"ByDay").text(u"Day");
  Arguments two_fields;
  two_fields.borrowed(database()).text(u"Orders").text(u"Both").text(u"Day").text(u"City");
  for (const Point point : {Point::lookup, Point::call}) {
    fail_each(point, u"CreateIndex", one_field, true);
    fail_each(point, u"CreateIndex2", two_fields, true);
  }
  EXPECT_GT(failures_, 1000);
}

TEST_F(HostFailure, OfAGrid) {
  for (const Point point : {Point::lookup, Point::call}) {
    fail_each(point, u"SetGrdCenter", Arguments().borrowed(grid()));
    fail_each(point, u"SetGrdAlign", Arguments().borrowed(grid()).int16(7));
    fail_each(point, u"ClearGrd", Arguments().borrowed(grid()));
  }
  EXPECT_GT(failures_, 1000);
}

}  // namespace
}  // namespace corvelle::testing
