// A host whose objects do at random what no host should, whenever one of them is called: they change and free what the
// running calls were given, release the component, call it again, fail in every way, answer with what is no answer.
//
//   CORVELLE_SOAK         set: 1,000,000 calls
//   CORVELLE_SEED         the seed of the calls (default: 936)
//
// Left out, since nothing can be done against it: pointers to what never was, freeing the list of arguments or what the
// component handed over by value, exceptions, which no object may throw through its interface, errors of a last
// Release, objects whose default property is themselves. What a default property answers goes through the system's own
// conversion, and is a whole value here. What earlier calls left as error information is given up before a call looks
// at its arguments, so its end changes none of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "component/error_report.h"
#include "tests/component/published_call.h"
#include "tests/component/surroundings.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/error_object.h"
#include "tests/hosts/grid_host.h"
#include "tests/hosts/interposed.h"
#include "tests/reference/choices.h"

namespace corvelle::testing {
namespace {

// --- values -------------------------------------------------------------------------------------------------------

VARIANT zeros_of(VARTYPE type) {
  VARIANT value;
  std::memset(&value, 0, sizeof(value));
  V_VT(&value) = type;
  return value;
}

BSTR new_text(std::u16string_view content) {
  return SysAllocStringLen(as_wide(content.data()), static_cast<UINT>(content.size()));
}

VARIANT text_variant(std::u16string_view content) {
  VARIANT value = zeros_of(VT_BSTR);
  V_BSTR(&value) = new_text(content);
  return value;
}

VARIANT number_variant(VARTYPE type, double number) {
  VARIANT value = zeros_of(type);
  switch (type) {
    case VT_I2: V_I2(&value) = static_cast<SHORT>(number); break;
    case VT_I4: V_I4(&value) = static_cast<LONG>(number); break;
    default: V_R8(&value) = number; break;
  }
  return value;
}

std::u16string long_text() { return std::u16string(70'000, u'长'); }

// What no pointer leads to.
template <class Pointer>
Pointer nowhere() {
  return reinterpret_cast<Pointer>(std::uintptr_t{0x5A5A5A50});
}

// Empties a variable whose content somebody may still look at: what it held is made to look like nothing before.
void spoil_and_clear(VARIANT& variable) {
  if (V_VT(&variable) == VT_BSTR) std::fill_n(V_BSTR(&variable), SysStringLen(V_BSTR(&variable)), L'#');
  VariantClear(&variable);  // which refuses what no variable should hold
  variable = zeros_of(VT_EMPTY);
}

// A variable of the host's, of which a call has a reference.
class Variable {
 public:
  explicit Variable(VARIANT value) : own_(new VARIANT(value)), place_(own_.get()) {}
  // One that somebody else keeps, of a declared type.
  explicit Variable(VARIANT* place) : place_(place), typed_(true) {}
  ~Variable() {
    if (own_) spoil_and_clear(*own_);
  }
  Variable(Variable&&) = default;
  Variable& operator=(Variable&&) = default;

  VARIANT& value() { return *place_; }
  // The reference says what the variable holds, and it is not to hold anything else.
  void* typed() {
    typed_ = true;
    return &V_I8(place_);
  }
  // The caller's number that an operation asks for again and again, which must be there.
  void keep_number() { number_ = true; }

  // Changes the variable, or does away with it.
  void attack(Choices& choices) {
    if (place_ == nullptr) return;
    if (number_) {
      V_I2(place_) = static_cast<SHORT>(choices.below(10));
      return;
    }
    // First of all the variable, for the end of what it held may come here again.
    VARIANT held = std::exchange(*place_, zeros_of(VT_EMPTY));
    if (own_ && choices.once_in(3)) {
      std::memset(own_.get(), 0xDD, sizeof(VARIANT));
      own_.reset();
      place_ = nullptr;
    } else if (typed_) {
      *place_ = V_VT(&held) == VT_BSTR && choices.once_in(2) ? text_variant(u"instead") : zeros_of(V_VT(&held));
    } else if (!choices.once_in(3)) {
      *place_ = choices.once_in(2) ? text_variant(u"3") : number_variant(VT_I4, 5);
    }
    spoil_and_clear(held);
  }

 private:
  std::unique_ptr<VARIANT> own_;
  VARIANT* place_;
  bool typed_ = false;
  bool number_ = false;
};

// Arguments as their parameters declare them, some of which make an operation succeed.
VARIANT fitting_value(Choices& choices, const Parameter& parameter) {
  static const std::u16string kTexts[] = {u"a,b,c,", u"orders", u"Day",  u"1,234.5", u"20240229", u"C:\\a\\b.c",
                                          u"中a 文", u"",       u"City", u"一至三",  u"CUSTOMERS"};
  static const std::u16string kMarks[] = {u",", u"a", u"", u"Day"};
  const bool is_mark = parameter.name.find(u"Fl") != std::u16string_view::npos;
  switch (parameter.value_type()) {
    case VT_I2: return number_variant(VT_I2, choices.below(8));
    case VT_I4: return number_variant(VT_I4, choices.below(12));
    case VT_DATE: return number_variant(VT_DATE, 45000 + choices.below(1000));
    default: break;
  }
  if (choices.once_in(200)) return text_variant(long_text());
  if (choices.once_in(40)) return text_variant(std::u16string_view(u"a\0b", 3));
  return text_variant(is_mark ? choices.one_of(kMarks) : choices.one_of(kTexts));
}

// --- the host -----------------------------------------------------------------------------------------------------

// A call of the component's that is running, and what its caller holds meanwhile.
struct RunningCall {
  ComPtr<IDispatch> object;
  VtableCall* early = nullptr;
  std::vector<Variable> variables;
  bool honest = true;   // the host's objects answer as they should
  bool telling = true;  // the result is to be that of the same call with plain values
  bool begun = false;   // the component has come to its arguments
  int items_left = 0;   // that an enumerator has still to give, of hundreds
};

constexpr HRESULT kFailures[] = {E_FAIL,
                                 E_ACCESSDENIED,
                                 E_OUTOFMEMORY,
                                 E_NOTIMPL,
                                 E_POINTER,
                                 E_UNEXPECTED,
                                 E_ABORT,
                                 E_INVALIDARG,
                                 RPC_E_DISCONNECTED,
                                 RPC_E_SERVERFAULT,
                                 RPC_E_CALL_REJECTED,
                                 DISP_E_MEMBERNOTFOUND,
                                 DISP_E_TYPEMISMATCH,
                                 DISP_E_BADPARAMCOUNT,
                                 DISP_E_PARAMNOTFOUND,
                                 DISP_E_OVERFLOW,
                                 DISP_E_UNKNOWNNAME,
                                 static_cast<HRESULT>(0x800A01B6),
                                 static_cast<HRESULT>(0x800706BA),
                                 static_cast<HRESULT>(0xFFFFFFFF)};

constexpr VARTYPE kBareResults[] = {VT_EMPTY,
                                    VT_NULL,
                                    VT_ERROR,
                                    VT_BOOL,
                                    VT_RECORD,
                                    VT_BSTR,
                                    VT_DISPATCH,
                                    VT_UNKNOWN,
                                    VT_VARIANT,
                                    VT_DECIMAL,
                                    VT_ARRAY | VT_UI1,
                                    VT_ARRAY | VT_DISPATCH,
                                    VT_LPSTR,
                                    VT_BLOB,
                                    15,
                                    VT_VECTOR | VT_I2,
                                    VT_RESERVED | VT_BSTR,
                                    VT_BYREF | VT_BSTR,
                                    VT_BYREF | VT_DISPATCH,
                                    VT_BYREF | VT_VARIANT,
                                    VT_BYREF | VT_RECORD,
                                    VT_BYREF | VT_ARRAY | VT_UI1};

class HostileHosts : public ::testing::Test, public Interference {
 public:
  // Whether the host's objects may do something else than they should, this time.
  bool misbehaves() { return !runs_.empty() && !runs_.back()->honest && choices_.once_in(8); }
  // Something that no object should do while it is called.
  void meddle();
  HRESULT failure() { return choices_.one_of(kFailures); }
  void fill_in(EXCEPINFO& exception);

  std::optional<HRESULT> on_query(void** result) override;
  std::optional<HRESULT> on_lookup(DISPID* id) override;
  std::optional<HRESULT> on_invoke(const Invocation& call) override;
  std::optional<HRESULT> on_step(VARIANT* item, ULONG* fetched) override;
  HRESULT answered(const Invocation& call, HRESULT answer) override;
  void on_end() override { meddle(); }
  void on_unheld() override { ADD_FAILURE() << "the component calls an object without holding it"; }

  RandomChoices choices_{number_from_environment("CORVELLE_SEED", 936)};

 protected:
  void call_at_random(std::uint64_t calls);
  // What the answers were, and how many of them an honest host had.
  std::map<HRESULT, std::uint64_t> answers_;
  std::set<const Operation*> told_;
  std::uint64_t foreign_calls_ = 0;
  std::uint64_t compared_ = 0;
  std::uint64_t released_ = 0;

  Surroundings surroundings_;

 private:
  static constexpr std::size_t kDeepest = 3;

  struct Models {
    Models() { dao.ado_recordsets = true; }
    DaoModel dao;
    GridModel grid;
  };
  // What a call is made of.
  struct Making {
    Models models;
    RunningCall run;
    std::vector<Variable> kept;  // by the caller, until the call is over
    Arguments arguments;
  };
  // On top of the calls that are running.
  class Running;

  void call_once();
  Outcome call_with_plain_values(const ComPtr<IDispatch>& object, const Operation& operation,
                                 std::vector<ScopedVariant>& values);
  std::vector<ScopedVariant> any_values(const Operation& operation);
  void add_argument(Making& making, const Operation& operation, std::size_t place, VARIANT value);
  void add_wild_argument(Making& making);
  VARIANT host_object(Models& models, VARTYPE type);
  VARIANT object_with(VARIANT value);
  VARIANT interposed(IUnknown* object);
  Outcome run_late(Making& making, const Published& called);
  Outcome run_early(Making& making, const Published& called, std::vector<ScopedVariant>& values);
  void check(const Operation& operation, const Making& making, const Outcome& plain, const Outcome& outcome);

  void meddle_when_asked();
  void attack_a_variable();
  void release_a_component();
  void leave_error_information();
  HRESULT error_text(BSTR* text);
  void end_of_error_information();
  HRESULT strange_answer(const Invocation& call);
  HRESULT exception_in(EXCEPINFO* exception);
  VARIANT whole_value();
  HRESULT item_of_many(VARIANT* item);

  std::vector<RunningCall*> runs_;
  bool quiet_ = false;  // this program asks for error information, and not the component
  int live_errors_ = 0;
  Journal journal_;
};

HostileHosts* current_host = nullptr;  // for the function that fills an exception in, which is told nothing

HRESULT STDAPICALLTYPE fill_in_late(EXCEPINFO* exception) {
  current_host->meddle();
  current_host->fill_in(*exception);
  return current_host->choices_.once_in(4) ? E_FAIL : S_OK;
}

// Frames of the calls to come find nothing in them that looks like nothing.
[[gnu::noinline]] void spoil_stack_below() {
  char frame[4 * 1024];
  std::memset(frame, 0x5A, sizeof(frame));
  asm volatile("" : : "r"(frame) : "memory");  // or nobody would read it
}

// --- what it does --------------------------------------------------------------------------------------------------

void HostileHosts::meddle() {
  if (runs_.empty()) return;
  ++foreign_calls_;
  EXPECT_TRUE(surroundings_.component_in_use()) << "while a call is running";
  switch (choices_.below(12)) {
    case 0:
    case 1:
    case 2:
    case 3: attack_a_variable(); break;
    case 4: release_a_component(); break;
    case 5:
      if (runs_.size() < kDeepest) call_once();
      break;
    case 6: leave_error_information(); break;
    case 7: SetErrorInfo(0, nullptr); break;
    case 8: surroundings_.free_unused_libraries(); break;
    case 9: spoil_stack_below(); break;
    default: break;
  }
}

void HostileHosts::meddle_when_asked() {
  if (!runs_.empty()) runs_.back()->begun = true;
  meddle();
}

void HostileHosts::end_of_error_information() {
  if (runs_.empty()) return;
  EXPECT_TRUE(surroundings_.component_in_use()) << "while a call is running";
  if (choices_.once_in(2)) release_a_component();
  surroundings_.free_unused_libraries();
  spoil_stack_below();
}

void HostileHosts::attack_a_variable() {
  RunningCall& run = *choices_.one_of(runs_);
  if (run.variables.empty() || !run.begun) return;
  run.variables[choices_.below(static_cast<std::uint32_t>(run.variables.size()))].attack(choices_);
}

void HostileHosts::release_a_component() {
  RunningCall& run = *choices_.one_of(runs_);
  if (run.object) ++released_;
  run.object.Reset();
  if (run.early != nullptr) run.early->release_object();
}

void HostileHosts::leave_error_information() {
  ++live_errors_;
  const auto at_end = [this] {
    end_of_error_information();
    --live_errors_;
  };
  const auto error = owned<IErrorInfo>(new ErrorObject(at_end, [this](BSTR* text) { return error_text(text); }));
  SetErrorInfo(0, error.Get());
}

HRESULT HostileHosts::error_text(BSTR* text) {
  if (quiet_) return E_FAIL;
  meddle();
  if (choices_.once_in(4)) {
    *text = nowhere<BSTR>();
    return failure();
  }
  *text = choices_.once_in(4) ? nullptr : new_text(u"因故失败");
  return S_OK;
}

std::optional<HRESULT> HostileHosts::on_query(void** result) {
  meddle_when_asked();
  if (!misbehaves()) return {};
  *result = nullptr;
  return choices_.once_in(2) ? S_OK : failure();
}

std::optional<HRESULT> HostileHosts::on_lookup(DISPID* id) {
  meddle_when_asked();
  if (!misbehaves()) return {};
  if (choices_.once_in(3)) *id = DISPID_UNKNOWN;
  return choices_.once_in(3) ? S_OK : failure();
}

std::optional<HRESULT> HostileHosts::on_invoke(const Invocation& call) {
  meddle_when_asked();
  spoil_stack_below();
  if (call.exception != nullptr && choices_.once_in(8)) {
    // Not an exception, whatever stands here.
    call.exception->bstrDescription = call.exception->bstrSource = nowhere<BSTR>();
    if (misbehaves()) return failure();
    return {};
  }
  if (!misbehaves()) return {};
  return strange_answer(call);
}

HRESULT HostileHosts::strange_answer(const Invocation& call) {
  const bool is_default_property = call.id == DISPID_VALUE && call.parameters.cArgs == 0;
  switch (choices_.below(4)) {
    case 0: return exception_in(call.exception);
    case 1:
      if (call.result != nullptr && !is_default_property) {
        *call.result = zeros_of(VT_BSTR);
        V_BSTR(call.result) = nowhere<BSTR>();
      }
      return failure();
    case 2:
      if (call.result != nullptr && !is_default_property) V_VT(call.result) = choices_.one_of(kBareResults);
      return S_OK;
    default:
      if (call.result != nullptr) *call.result = whole_value();
      return S_OK;
  }
}

// A value that has all that belongs to it, and is none that was asked for.
VARIANT HostileHosts::whole_value() {
  switch (choices_.below(8)) {
    case 0: return text_variant(long_text());
    case 1: return text_variant(std::u16string_view(u"\0 1", 3));
    case 2: return number_variant(VT_R8, std::numeric_limits<double>::quiet_NaN());
    case 3: return number_variant(VT_R8, choices_.once_in(2) ? 1e300 : -1e300);
    case 4: return zeros_of(VT_BSTR);
    case 5: return zeros_of(VT_DISPATCH);
    case 6: return number_variant(VT_I4, 40000);
    default: return interposed(new LateBound(journal_));
  }
}

HRESULT HostileHosts::exception_in(EXCEPINFO* exception) {
  if (exception == nullptr) return DISP_E_EXCEPTION;
  *exception = {};
  switch (choices_.below(4)) {
    case 0: break;
    case 1: fill_in(*exception); break;
    case 2: exception->pfnDeferredFillIn = fill_in_late; break;
    default: exception->wCode = static_cast<WORD>(choices_.below(2000)); break;
  }
  return DISP_E_EXCEPTION;
}

void HostileHosts::fill_in(EXCEPINFO& exception) {
  exception.scode = choices_.once_in(4) ? S_OK : failure();
  if (choices_.once_in(2)) exception.bstrDescription = new_text(choices_.once_in(20) ? long_text() : u"因故失败");
  if (choices_.once_in(3)) exception.bstrSource = new_text(std::u16string_view(u"a\0b", 3));
  if (choices_.once_in(3)) exception.bstrHelpFile = new_text(u"");
}

HRESULT HostileHosts::answered(const Invocation& call, HRESULT answer) {
  const bool is_default_property = call.id == DISPID_VALUE && call.parameters.cArgs == 0;
  return answer == S_OK && !is_default_property && choices_.once_in(10) ? S_FALSE : answer;
}

std::optional<HRESULT> HostileHosts::on_step(VARIANT* item, ULONG* fetched) {
  meddle_when_asked();
  spoil_stack_below();
  if (!runs_.empty() && runs_.back()->items_left > 0) return item_of_many(item);
  if (!misbehaves()) return {};
  if (fetched != nullptr) *fetched = choices_.below(3) * 1000;
  switch (choices_.below(4)) {
    case 0: runs_.back()->items_left = 300; return item_of_many(item);
    case 1: V_VT(item) = choices_.one_of(kBareResults); return S_OK;
    case 2: *item = whole_value(); return S_OK;
    default:
      *item = zeros_of(VT_BSTR);
      V_BSTR(item) = nowhere<BSTR>();
      return choices_.once_in(3) ? S_FALSE : failure();
  }
}

// One of hundreds of tables that the host says it has.
HRESULT HostileHosts::item_of_many(VARIANT* item) {
  --runs_.back()->items_left;
  auto* object = new LateBound(journal_);
  object->add(L"Name", DISPATCH_PROPERTYGET, [](MemberCall& call) { call.give(u"many"); });
  *item = interposed(object);
  return S_OK;
}

// --- calls --------------------------------------------------------------------------------------------------------

VARIANT HostileHosts::interposed(IUnknown* object) { return object_variant(Interposed::before(object, *this)); }

VARIANT HostileHosts::host_object(Models& models, VARTYPE type) {
  return interposed(type == VT_VARIANT ? new_grid(models.grid) : new_dao_database(models.dao));
}

VARIANT HostileHosts::object_with(VARIANT value) {
  const auto held = std::make_shared<ScopedVariant>();
  EXPECT_EQ(VariantCopy(held->receive(), &value), S_OK);
  auto* object = new LateBound(journal_);
  object->add(
      L"Value", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
      [held](MemberCall& call) { EXPECT_EQ(VariantCopy(call.result(), &held->get()), S_OK); }, DISPID_VALUE);
  return interposed(object);
}

bool is_object_parameter(const Parameter& parameter) {
  return parameter.type == kDatabaseType || parameter.type == VT_VARIANT;
}

std::vector<ScopedVariant> HostileHosts::any_values(const Operation& operation) {
  std::vector<ScopedVariant> values(operation.parameter_count);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Parameter& parameter = operation.parameters()[i];
    if (!is_object_parameter(parameter)) values[i].get() = fitting_value(choices_, parameter);
  }
  return values;
}

Outcome HostileHosts::call_with_plain_values(const ComPtr<IDispatch>& object, const Operation& operation,
                                             std::vector<ScopedVariant>& values) {
  Models models;
  Arguments arguments;
  ComPtr<LateBound> given;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Parameter& parameter = operation.parameters()[i];
    if (!is_object_parameter(parameter)) {
      arguments.borrowed(values[i].get());
      continue;
    }
    given = owned(parameter.type == VT_VARIANT ? new_grid(models.grid) : new_dao_database(models.dao));
    arguments.borrowed(object_variant(given.Get()));
  }
  return invoke(object.Get(), operation.dispid, arguments);
}

// `value` by one of the ways that lead to it.
void HostileHosts::add_argument(Making& making, const Operation& operation, std::size_t place, VARIANT value) {
  const Parameter& parameter = operation.parameters()[place];
  const bool is_object = is_object_parameter(parameter);
  const bool is_alignment = parameter.type == (VT_BYREF | VT_I2);
  VARIANT given = value;
  if (is_object) {
    given = host_object(making.models, parameter.type);
  } else if (choices_.once_in(3)) {
    given = object_with(value);
  } else {
    EXPECT_EQ(VariantCopy(&(given = zeros_of(VT_EMPTY)), &value), S_OK);
  }
  std::vector<Variable>& variables = making.run.variables;
  if (is_object && choices_.once_in(4)) V_VT(&given) = VT_UNKNOWN;
  variables.emplace_back(given);
  Variable& variable = variables.back();
  const VARTYPE type = V_VT(&given);
  if (is_alignment && type == VT_I2) variable.keep_number();
  switch (choices_.below(4)) {
    case 0: {
      VARIANT reference = zeros_of(static_cast<VARTYPE>(VT_BYREF | type));
      V_BYREF(&reference) = variable.typed();
      making.arguments.borrowed(reference);
      break;
    }
    case 1: making.arguments.borrowed(reference_to(&variable.value())); break;
    case 2: {
      VARIANT* inner = &variable.value();
      variables.emplace_back(reference_to(inner));
      making.arguments.borrowed(reference_to(&variables.back().value()));
      break;
    }
    default:
      // The caller keeps what it gives by value.
      making.arguments.borrowed(given);
      making.kept.push_back(std::move(variable));
      variables.pop_back();
      break;
  }
}

// Something else than the parameter wants, or nothing at all.
void HostileHosts::add_wild_argument(Making& making) {
  static constexpr VARTYPE kWild[] = {VT_EMPTY, VT_NULL,  VT_R8, VT_BOOL, VT_CY,     VT_ERROR,  VT_DISPATCH,
                                      VT_BSTR,  VT_LPSTR, 15,    VT_BLOB, VT_VECTOR, VT_VARIANT};
  VARIANT value = zeros_of(choices_.one_of(kWild));
  switch (choices_.below(5)) {
    case 0: V_VT(&value) = static_cast<VARTYPE>(V_VT(&value) | VT_BYREF); break;
    case 3:
      making.run.variables.emplace_back(value);
      value = reference_to(&making.run.variables.back().value());
      break;
    case 1:
      making.kept.emplace_back(zeros_of(VT_EMPTY));
      value = reference_to(&making.kept.back().value());
      making.kept.back().value() = value;  // leads to itself
      break;
    case 2:
      making.run.variables.emplace_back(zeros_of(VT_ARRAY | VT_UI1));
      V_ARRAY(&making.run.variables.back().value()) = SafeArrayCreateVector(VT_UI1, 0, 8);
      value = reference_to(&making.run.variables.back().value());
      break;
    default: break;
  }
  making.run.telling = false;
  making.arguments.borrowed(value);
}

class HostileHosts::Running {
 public:
  Running(HostileHosts& host, RunningCall& run) : host_(host) { host_.runs_.push_back(&run); }
  ~Running() { host_.runs_.pop_back(); }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  HostileHosts& host_;
};

Outcome HostileHosts::run_late(Making& making, const Published& called) {
  IDispatch* object = called.object.Get();
  making.run.object = called.object;
  const_cast<Published&>(called).object.Reset();
  const Running running(*this, making.run);
  spoil_stack_below();
  return invoke(object, called.operation->dispid, making.arguments);
}

// As a compiled host calls, which has its arguments in variables of the declared types.
Outcome HostileHosts::run_early(Making& making, const Published& called, std::vector<ScopedVariant>& values) {
  Arguments plain;
  std::vector<Variable> given;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const Parameter& parameter = called.operation->parameters()[i];
    if (is_object_parameter(parameter)) given.emplace_back(host_object(making.models, parameter.type));
    plain.borrowed(is_object_parameter(parameter) ? given.back().value() : values[i].get());
  }
  VtableCall call(called, plain);
  given.clear();
  for (std::size_t i = 0; i < values.size(); ++i) {
    making.run.variables.emplace_back(&call.held(i));
    if (called.operation->parameters()[i].by_reference()) making.run.variables.back().keep_number();
  }
  making.run.early = &call;
  Outcome outcome;
  {
    const Running running(*this, making.run);
    spoil_stack_below();
    outcome.result = outcome.scode = call.run();
  }
  making.run.variables.clear();
  if (SUCCEEDED(outcome.result)) {
    VARIANT given_back = call.result();
    EXPECT_EQ(VariantCopy(outcome.value.receive(), &given_back), S_OK);
  } else {
    outcome.result = DISP_E_EXCEPTION;
    quiet_ = true;
    outcome.description = error_description().value_or(u"");
    quiet_ = false;
  }
  return outcome;
}

void HostileHosts::call_once() {
  const ClassDescription& description = *choices_.one_of(kClasses);
  const auto place = choices_.below(static_cast<std::uint32_t>(description.operations.size()));
  const Operation& operation = description.operations[place];
  Published called = {create(description.prog_id), &description, &operation, place};
  std::vector<ScopedVariant> values = any_values(operation);
  const Outcome plain = call_with_plain_values(called.object, operation, values);
  Making making;
  making.run.variables.reserve(2 * kMaxParameters);
  making.kept.reserve(kMaxParameters);
  making.run.honest = choices_.once_in(2);
  // What other calls change meanwhile, and what the caller's variable has to say at each step.
  making.run.telling =
      operation.name != u"SetGrdAlign" && (operation.parameter_count > 0 || operation.name != u"Get_Str");
  const bool has_object = operation.parameter_count > 0 && is_object_parameter(operation.parameters()[0]);
  const bool early = has_object && choices_.once_in(3);
  for (std::size_t i = 0; i < values.size() && !early; ++i) {
    choices_.once_in(40) ? add_wild_argument(making) : add_argument(making, operation, i, values[i].get());
  }
  if (choices_.once_in(10)) leave_error_information();
  const Outcome outcome = early ? run_early(making, called, values) : run_late(making, called);
  check(operation, making, plain, outcome);
}

void HostileHosts::check(const Operation& operation, const Making& making, const Outcome& plain,
                         const Outcome& outcome) {
  SCOPED_TRACE(utf8(operation.name));
  ++answers_[outcome.result == DISP_E_EXCEPTION ? outcome.scode : outcome.result];
  EXPECT_TRUE(is_documented(outcome.result) || outcome.result == E_OUTOFMEMORY) << std::hex << outcome.result;
  EXPECT_TRUE(SUCCEEDED(outcome.result) || V_VT(&outcome.value.get()) == VT_EMPTY) << "a failure leaves no result";
  EXPECT_TRUE(outcome.result != DISP_E_EXCEPTION || FAILED(outcome.scode));
  if (!making.run.honest || !making.run.telling) return;
  ++compared_;
  EXPECT_EQ(outcome.result, plain.result);
  EXPECT_EQ(FAILED(outcome.result) ? outcome.scode : 0, FAILED(plain.result) ? plain.scode : 0);
  EXPECT_EQ(utf8(outcome.description), utf8(plain.description));
  EXPECT_EQ(shown(value_of(outcome.value.get())), shown(value_of(plain.value.get())));
  if (SUCCEEDED(outcome.result)) told_.insert(&operation);
}

void HostileHosts::call_at_random(std::uint64_t calls) {
  current_host = this;
  for (std::uint64_t call = 0; call < calls && !HasFailure(); ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    call_once();
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(live_objects, 0) << "the component holds an object of the host's";
    EXPECT_EQ(journal_.live_objects(), 0);
    EXPECT_EQ(live_errors_, 0);
    EXPECT_FALSE(surroundings_.component_in_use()) << "somebody holds an object of the component's";
  }
}

TEST_F(HostileHosts, BringNothingDownAndChangeNoResult) {
  const bool soak = std::getenv("CORVELLE_SOAK") != nullptr;
  const std::uint64_t calls = soak ? 1'000'000 : 16'000;
  call_at_random(calls / 40);  // what the system keeps after its first conversions and errors
  const std::size_t before = surroundings_.blocks_in_use();
  call_at_random(calls);
  EXPECT_EQ(surroundings_.blocks_in_use(), before);
  std::printf("  %llu calls of objects, %llu results compared, the last reference released in %llu\n",
              static_cast<unsigned long long>(foreign_calls_), static_cast<unsigned long long>(compared_),
              static_cast<unsigned long long>(released_));
  // Enough of each, or the calls would not be worth making.
  EXPECT_GT(foreign_calls_, calls);
  EXPECT_GT(compared_, calls / 4);
  EXPECT_GT(released_, calls / 20);
  EXPECT_GE(told_.size(), 37u) << "all but Get_Str of ClsVexApp and SetGrdAlign";
}

}  // namespace
}  // namespace corvelle::testing
