// Objects of a host that, while they are called, take away what the call was given, or give what is not whole.
//
// Not tried, since nothing can be done against it: pointers to what never was, freeing the list of arguments, freeing
// what the component handed over by value.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <utility>

#include "component/error_report.h"
#include "tests/component/published_call.h"
#include "tests/component/surroundings.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/error_object.h"
#include "tests/hosts/grid_host.h"
#include "tests/hosts/interposed.h"

namespace corvelle::testing {
namespace {

// A host whose objects do one thing whenever one of them is called.
class Mischief final : public Interference {
 public:
  std::function<std::optional<HRESULT>(void** result)> query;
  std::function<std::optional<HRESULT>()> lookup;
  std::function<std::optional<HRESULT>(const Invocation& call)> invocation;
  std::function<std::optional<HRESULT>(VARIANT* item)> step;

  // Once, at the next request of any kind.
  void once(std::function<void()> deed) { deed_ = std::move(deed); }

  std::optional<HRESULT> on_query(void** result) override {
    do_it();
    return query ? query(result) : std::nullopt;
  }
  std::optional<HRESULT> on_lookup(DISPID* /*id*/) override { return lookup ? lookup() : std::nullopt; }
  std::optional<HRESULT> on_invoke(const Invocation& call) override {
    do_it();
    return invocation ? invocation(call) : std::nullopt;
  }
  std::optional<HRESULT> on_step(VARIANT* item, ULONG* /*fetched*/) override {
    return step ? step(item) : std::nullopt;
  }
  void on_unheld() override { ADD_FAILURE() << "the component holds no reference to what it calls"; }

 private:
  void do_it() {
    if (deed_) std::exchange(deed_, nullptr)();
  }

  std::function<void()> deed_;
};

void assign(BSTR& text, const wchar_t* content) {
  for (UINT i = 0; i < SysStringLen(text); ++i) text[i] = L'#';
  SysFreeString(std::exchange(text, content == nullptr ? nullptr : SysAllocString(content)));
}

class HostMischief : public ::testing::Test {
 protected:
  void SetUp() override { model_.ado_recordsets = true; }
  void TearDown() override { EXPECT_EQ(mischief_.live_objects, 0) << "a reference to the host's objects is lost"; }

  // An object whose default property is `value`.
  ComPtr<IDispatch> object_with(VARIANT value) {
    auto* object = new LateBound(journal_);
    object->add(
        L"Value", DISPATCH_METHOD | DISPATCH_PROPERTYGET, [value](MemberCall& call) { *call.result() = value; },
        DISPID_VALUE);
    return interposed(object);
  }
  ComPtr<IDispatch> object_with_number(SHORT number) {
    VARIANT value = {};
    V_VT(&value) = VT_I2;
    V_I2(&value) = number;
    return object_with(value);
  }
  ComPtr<IDispatch> database() { return interposed(new_dao_database(model_)); }
  ComPtr<IDispatch> grid() { return interposed(new_grid(grid_model_)); }
  ComPtr<IDispatch> interposed(IUnknown* object) { return owned<IDispatch>(Interposed::before(object, mischief_)); }

  static Outcome call(const ComPtr<IDispatch>& object, const wchar_t* name, const Arguments& arguments) {
    return invoke(object.Get(), name, arguments);
  }
  ComPtr<IDispatch> validate() const { return create(L"Corvelle.ClsValidate"); }
  // A call that may end in any error, but not the process.
  void survives(const wchar_t* name, const Arguments& arguments) {
    const Outcome outcome = call(validate(), name, arguments);
    EXPECT_TRUE(is_documented(outcome.result)) << std::hex << outcome.result;
  }

  Surroundings surroundings_;
  Mischief mischief_;
  Journal journal_;
  DaoModel model_;
  GridModel grid_model_;
};

// --- arguments --------------------------------------------------------------------------------------------------

TEST_F(HostMischief, AReferencedTextIsWhatItWasWhenTheCallBegan) {
  for (const wchar_t* instead : {static_cast<const wchar_t*>(nullptr), L"x,y,z,"}) {
    BSTR text = SysAllocString(L"a,b,c,");
    mischief_.once([&] { assign(text, instead); });
    const Outcome field = call(
        validate(), L"getStr_Pf",
        Arguments().borrowed(reference_to(&text)).borrowed(object_variant(object_with_number(2).Get())).text(u","));
    SysFreeString(text);
    EXPECT_EQ(field.result, S_OK);
    EXPECT_EQ(shown(value_of(field.value.get())), shown(testing::text(u"b")));
  }
}

TEST_F(HostMischief, AReferencedVariantIsWhatItWasWhenTheCallBegan) {
  auto separator = std::make_unique<VARIANT>();
  V_VT(separator.get()) = VT_BSTR;
  V_BSTR(separator.get()) = SysAllocString(L",");
  mischief_.once([&] {
    assign(V_BSTR(separator.get()), nullptr);
    *separator = {};
    V_VT(separator.get()) = VT_I4;
    separator.reset();
  });
  const Outcome field = call(validate(), L"getStr_Pf",
                             Arguments()
                                 .text(u"a,b,c,")
                                 .borrowed(object_variant(object_with_number(2).Get()))
                                 .borrowed(reference_to(separator.get())));
  EXPECT_EQ(field.result, S_OK);
  EXPECT_EQ(shown(value_of(field.value.get())), shown(text(u"b")));
}

TEST_F(HostMischief, AReferencedNumberIsWhatItWasWhenTheCallBegan) {
  SHORT flag = 0;
  mischief_.once([&] { flag = 1; });
  const Outcome padded =
      call(validate(), L"Set_String1",
           Arguments().text(u"a").borrowed(object_variant(object_with_number(3).Get())).borrowed(reference_to(&flag)));
  EXPECT_EQ(shown(value_of(padded.value.get())), shown(text(u"a  ")));
}

TEST_F(HostMischief, AReferencedObjectIsWhatItWasWhenTheCallBegan) {
  VARIANT last = object_variant(object_with_number(3).Detach());
  mischief_.once([&] { VariantClear(&last); });
  const Outcome columns = call(
      validate(), L"Get_String",
      Arguments().text(u"abcd").borrowed(object_variant(object_with_number(2).Get())).borrowed(reference_to(&last)));
  EXPECT_EQ(columns.result, S_OK);
  EXPECT_EQ(shown(value_of(columns.value.get())), shown(text(u"bc")));
}

TEST_F(HostMischief, ATableNameIsWhatItWasWhenTheCallBegan) {
  const auto instead_of_refreshing = [&](BSTR& name) {
    model_.journal.on_call = [&](const std::string& call) {
      if (call == "TableDefs.Refresh") assign(name, nullptr);
    };
  };
  {
    BSTR name = SysAllocString(L"orders");
    instead_of_refreshing(name);
    const Outcome found = call(validate(), L"IFTable",
                               Arguments().borrowed(object_variant(database().Get())).borrowed(reference_to(&name)));
    EXPECT_EQ(shown(value_of(found.value.get())), shown(boolean(true))) << "late bound";
    EXPECT_EQ(name, nullptr);
  }
  PublishedObjects objects;
  Arguments arguments;
  const auto given = database();
  arguments.borrowed(object_variant(given.Get())).text(u"orders");
  VtableCall early(objects.find(u"IFTable"), arguments);
  instead_of_refreshing(V_BSTR(&early.held(1)));
  EXPECT_EQ(early.run(), S_OK);
  EXPECT_EQ(shown(value_of(early.result())), shown(boolean(true))) << "early bound";
  EXPECT_EQ(V_BSTR(&early.held(1)), nullptr);
}

// The variable says what it held when it was looked at, and is not looked at again.
TEST_F(HostMischief, AGridIsReadFromItsVariableOnce) {
  VARIANT variable = object_variant(grid().Detach());
  mischief_.query = [&](void**) {
    if (V_VT(&variable) == VT_DISPATCH) VariantClear(&variable);
    return E_NOINTERFACE;
  };
  Arguments arguments;
  arguments.borrowed(reference_to(&variable));
  VtableCall call(PublishedObjects().find(u"ClearGrd"), arguments);
  EXPECT_EQ(call.run(), hresult_of(ErrorNumber::no_such_member));
}

// What no variable can hold is refused, and not looked for where it was once another argument's object was asked.
TEST_F(HostMischief, AReferencedVariantThatHoldsNothingWholeIsReadOnce) {
  for (const VARTYPE type : {VARTYPE{VT_LPSTR}, VARTYPE{VT_RECORD}, VARTYPE{VT_VARIANT}, VARTYPE{15}}) {
    auto variable = std::make_unique<VARIANT>();
    std::memset(variable.get(), 0, sizeof(VARIANT));
    V_VT(variable.get()) = type;
    mischief_.once([&] {
      std::memset(variable.get(), 0xDD, sizeof(VARIANT));
      variable.reset();
    });
    const Outcome outcome = call(validate(), L"getStr_Pf",
                                 Arguments()
                                     .text(u"a,b,")
                                     .borrowed(object_variant(object_with_number(2).Get()))
                                     .borrowed(reference_to(variable.get())));
    EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
  }
}

// --- the life of the component's object and module ----------------------------------------------------------------

TEST_F(HostMischief, TheComponentIsHeldThroughACallThatTakesItsLastReference) {
  auto object = validate();
  const auto release = [&] {
    object.Reset();
    EXPECT_TRUE(surroundings_.component_in_use());
    surroundings_.free_unused_libraries();
    EXPECT_TRUE(surroundings_.component_in_use()) << "and was let go by COM";
  };
  mischief_.once(release);
  const Outcome field =
      call(object, L"getStr_Pf",
           Arguments().text(u"a,b,c,").borrowed(object_variant(object_with_number(2).Get())).text(u","));
  EXPECT_EQ(shown(value_of(field.value.get())), shown(text(u"b"))) << "a default property";
  object = validate();
  mischief_.once(release);
  EXPECT_EQ(call(object, L"ClearGrd", Arguments().borrowed(object_variant(grid().Get()))).result, S_OK) << "a grid";
  object = validate();
  mischief_.once(release);
  const Outcome found =
      call(object, L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
  EXPECT_EQ(shown(value_of(found.value.get())), shown(boolean(true))) << "a database";
  EXPECT_FALSE(surroundings_.component_in_use()) << "and nothing longer";
}

TEST_F(HostMischief, TheComponentIsHeldThroughAnEarlyBoundCall) {
  for (const char16_t* operation : {u"ClearGrd", u"IFTable", u"CreateIndex"}) {
    SCOPED_TRACE(utf8(operation));
    auto objects = std::make_unique<PublishedObjects>();
    Arguments arguments;
    const bool of_grid = operation == std::u16string_view(u"ClearGrd");
    const auto given = of_grid ? grid() : database();
    arguments.borrowed(object_variant(given.Get()));
    for (int i = of_grid ? 3 : 0; i < 3; ++i) arguments.text(u"Orders");
    VtableCall call(objects->find(operation), arguments);
    objects.reset();
    mischief_.once([&] {
      call.release_object();
      EXPECT_TRUE(surroundings_.component_in_use());
    });
    EXPECT_EQ(call.run(), S_OK);
    EXPECT_FALSE(surroundings_.component_in_use());
  }
}

// A call gives up what an earlier one left as error information, and with it runs the host's code before all else.
TEST_F(HostMischief, ErrorInformationMayTakeTheLastReferenceAtItsEnd) {
  const auto with_last_words = [&](const std::function<Outcome(IDispatch * object)>& called) {
    auto object = validate();
    IDispatch* called_object = object.Get();
    bool ended = false;
    SetErrorInfo(0, owned(new ErrorObject([&] {
                      ended = true;
                      object.Reset();
                      EXPECT_TRUE(surroundings_.component_in_use());
                    })).Get());
    const Outcome outcome = called(called_object);
    EXPECT_TRUE(ended);
    EXPECT_EQ(shown(value_of(outcome.value.get())), shown(text(u"b")));
    EXPECT_FALSE(surroundings_.component_in_use());
  };
  with_last_words(
      [](IDispatch* object) { return invoke(object, 0x60030020, Arguments().text(u"a,b,").int16(2).text(u",")); });
  with_last_words(
      [](IDispatch* object) { return invoke(object, 0x60030020, Arguments().text(u"a,b,").text(u"2").text(u",")); });
  with_last_words([&](IDispatch* object) {
    return invoke(object, 0x60030020,
                  Arguments().text(u"a,b,").borrowed(object_variant(object_with_number(2).Get())).text(u","));
  });
}

// --- what objects answer ------------------------------------------------------------------------------------------

// Types that were written, and nothing else with them.
constexpr VARTYPE kBareTypes[] = {VT_RECORD,
                                  VT_BSTR,
                                  VT_DISPATCH,
                                  VT_UNKNOWN,
                                  VT_VARIANT,
                                  VT_ARRAY | VT_UI1,
                                  VT_ARRAY | VT_VARIANT,
                                  VT_LPSTR,
                                  VT_BLOB,
                                  15,
                                  VT_VECTOR | VT_I2,
                                  VT_RESERVED,
                                  VT_BYREF | VT_BSTR,
                                  VT_BYREF | VT_DISPATCH,
                                  VT_BYREF | VT_VARIANT,
                                  VT_BYREF | VT_RECORD,
                                  VT_BYREF | VT_ARRAY | VT_UI1};

// Frames of the calls to come find nothing in them that looks like nothing.
[[gnu::noinline]] void spoil_the_stack() {
  volatile char frame[16 * 1024];
  for (volatile char& byte : frame) byte = '\x5A';
}

TEST_F(HostMischief, AResultOfATypeAloneIsNoResult) {
  for (const VARTYPE type : kBareTypes) {
    SCOPED_TRACE(type);
    const auto write = [&](VARIANT* result) -> std::optional<HRESULT> {
      if (result == nullptr) return {};
      V_VT(result) = type;
      return S_OK;
    };
    mischief_.invocation = [&](const Invocation& call) { return write(call.result); };
    spoil_the_stack();
    survives(L"SetGrdCenter", Arguments().borrowed(object_variant(grid().Get())));
    survives(L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
    mischief_.invocation = nullptr;
    mischief_.step = write;
    spoil_the_stack();
    survives(L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
    mischief_.step = nullptr;
  }
}

TEST_F(HostMischief, AResultThatLeadsToItselfIsNoResult) {
  VARIANT endless = {};
  endless = reference_to(&endless);
  mischief_.invocation = [&](const Invocation& call) -> std::optional<HRESULT> {
    if (call.result == nullptr) return {};
    *call.result = endless;
    return S_OK;
  };
  survives(L"SetGrdCenter", Arguments().borrowed(object_variant(grid().Get())));
  survives(L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
}

// What a failure leaves behind belongs to nobody, and so do the texts of an exception that was none.
TEST_F(HostMischief, WhatComesWithAFailureIsNotTouched) {
  auto* nowhere = reinterpret_cast<BSTR>(std::uintptr_t{0x5A5A5A50});
  const auto spoil = [&](VARIANT* result) {
    if (result == nullptr) return;
    V_VT(result) = VT_BSTR;
    V_BSTR(result) = nowhere;
  };
  mischief_.invocation = [&](const Invocation& call) -> std::optional<HRESULT> {
    spoil(call.result);
    call.exception->bstrDescription = call.exception->bstrHelpFile = nowhere;
    return E_FAIL;
  };
  survives(L"SetGrdCenter", Arguments().borrowed(object_variant(grid().Get())));
  survives(L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
  mischief_.invocation = [&](const Invocation& call) -> std::optional<HRESULT> {
    if (call.exception != nullptr) call.exception->bstrSource = call.exception->bstrDescription = nowhere;
    return {};
  };
  survives(L"SetGrdCenter", Arguments().borrowed(object_variant(grid().Get())));
  mischief_.invocation = nullptr;
  for (const HRESULT answer : {S_FALSE, E_FAIL}) {
    mischief_.step = [&](VARIANT* item) {
      spoil(item);
      return answer;
    };
    survives(L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
  }
}

TEST_F(HostMischief, AnInterfaceThatIsNullIsNone) {
  for (const int at : {0, 1, 2, 3, 4, 5, 6, 7}) {
    int asked = 0;
    // Beside the first few, names are looked up in the second way, for which another interface is asked.
    int lookups = 0;
    mischief_.lookup = [&]() -> std::optional<HRESULT> {
      if (at < 4 || lookups++ % 2 != 0) return {};
      return E_NOTIMPL;
    };
    mischief_.query = [&](void** result) -> std::optional<HRESULT> {
      if (asked++ != at) return {};
      *result = nullptr;
      return S_OK;
    };
    survives(L"SetGrdCenter", Arguments().borrowed(object_variant(grid().Get())));
    asked = 0;
    survives(L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
    asked = 0;
    survives(L"IFField", Arguments().borrowed(object_variant(database().Get())).text(u"orders").text(u"Day"));
    asked = 0;
    survives(L"Center", Arguments().borrowed(object_variant(object_with_number(1).Get())));
  }
}

TEST_F(HostMischief, AnEnumeratorWithoutAnEndIsGivenUp) {
  constexpr int kFarTooMany = 1'200'000;
  auto* table = new LateBound(journal_);
  table->add(L"Name", DISPATCH_PROPERTYGET, [](MemberCall& call) { call.give(u"a"); });
  const auto held = owned(table);
  int steps = 0;
  mischief_.step = [&](VARIANT* item) -> std::optional<HRESULT> {
    if (++steps == kFarTooMany) return S_FALSE;
    held->AddRef();
    *item = object_variant(held.Get());
    return S_OK;
  };
  const Outcome outcome =
      call(validate(), L"IFTable", Arguments().borrowed(object_variant(database().Get())).text(u"orders"));
  EXPECT_EQ(outcome.scode, hresult_of(ErrorNumber::overflow));
  EXPECT_LT(steps, kFarTooMany);
}

}  // namespace
}  // namespace corvelle::testing
