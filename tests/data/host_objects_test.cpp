// The adapters with host objects that are not what they should be, and what only late binding can get wrong. The
// operations' own behaviour through the adapters is in schema_helpers_test.cpp and grid_helpers_test.cpp.
#include <windows.h>

#include <dispex.h>
#include <gmock/gmock.h>
#include <oleauto.h>
#include <psapi.h>
#include <wrl/client.h>

#include <functional>
#include <string>
#include <vector>

#include "component/host_database.h"
#include "component/host_grid.h"
#include "data/grid_helpers.h"
#include "data/schema_helpers.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"
#include "tests/support/runtime_error.h"

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

VARIANT variant_of(VARTYPE type) {
  VARIANT result;
  VariantInit(&result);
  V_VT(&result) = type;
  return result;
}

VARIANT variant_of(IUnknown* object, VARTYPE type = VT_DISPATCH) {
  VARIANT result = variant_of(type);
  V_UNKNOWN(&result) = object;
  return result;
}

void set_text(VARIANT& value, const wchar_t* text) {
  V_VT(&value) = VT_BSTR;
  V_BSTR(&value) = SysAllocString(text);
}

bool has_error_information() {
  ComPtr<IErrorInfo> information;
  return GetErrorInfo(0, &information) == S_OK;
}

void set_error_information(const wchar_t* description, const wchar_t* source) {
  ComPtr<ICreateErrorInfo> information;
  ComPtr<IErrorInfo> finished;
  ASSERT_TRUE(SUCCEEDED(CreateErrorInfo(&information)));
  information->SetDescription(const_cast<wchar_t*>(description));
  information->SetSource(const_cast<wchar_t*>(source));
  ASSERT_TRUE(SUCCEEDED(information.As(&finished)));
  SetErrorInfo(0, finished.Get());
}

HRESULT STDAPICALLTYPE fill_in_late(EXCEPINFO* exception) {
  exception->scode = dao_error(3021);
  exception->bstrDescription = SysAllocString(L"filled in late");
  exception->bstrSource = SysAllocString(L"DAO.Late");
  return S_OK;
}

// --- how an object refuses a call -------------------------------------------------------------------------------

constexpr std::u16string_view kWordless = u"IFTable: DB fails at \"Refresh\" and does not say why";

class Refusal : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_FALSE(has_error_information()) << "a caller who carries on must leave none behind";
    object_.Reset();
    EXPECT_EQ(journal_.live_objects(), 0);
  }

  // What comes of a call of a member that does `answer`.
  Error outcome(LateBound::Member answer) {
    object_ = owned(new LateBound(journal_));
    object_->add(L"Refresh", DISPATCH_METHOD, std::move(answer));
    FirstError errors;
    const HostCall call{{u"IFTable", u"DB"}, errors};
    const HostObject object(object_.Get(), call);
    HostMember(object, u"Refresh").call();
    return errors.take();
  }

  Journal journal_;
  ComPtr<LateBound> object_;
};

TEST_F(Refusal, KeepsTheHresultTheDescriptionAndTheSource) {
  const Error error = outcome([](MemberCall&) { throw HostFailure{dao_error(3420), u"对象无效", u"DAO.Database"}; });
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), dao_error(3420));
  EXPECT_EQ(error.description(), u"对象无效");
  EXPECT_EQ(error.source(), u"DAO.Database");
}

TEST_F(Refusal, TakesANumberOfSixteenBitsForARuntimeError) {
  const Error error = outcome([](MemberCall& call) {
    call.exception->wCode = 1004;
    call.exception->bstrDescription = SysAllocString(L"by number");
    throw BareAnswer{DISP_E_EXCEPTION};
  });
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), static_cast<HRESULT>(0x800A03ECu));
  EXPECT_EQ(error.description(), u"by number");
  EXPECT_EQ(error.source(), u"");
}

TEST_F(Refusal, HasADeferredExceptionFilledIn) {
  const Error error = outcome([](MemberCall& call) {
    call.exception->pfnDeferredFillIn = fill_in_late;
    throw BareAnswer{DISP_E_EXCEPTION};
  });
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), dao_error(3021));
  EXPECT_EQ(error.description(), u"filled in late");
  EXPECT_EQ(error.source(), u"DAO.Late");
}

TEST_F(Refusal, IsAnExceptionWhereTheObjectNamesNoError) {
  const Error nameless = outcome([](MemberCall&) { throw BareAnswer{DISP_E_EXCEPTION}; });
  ASSERT_TRUE(nameless);
  EXPECT_EQ(nameless.hresult(), DISP_E_EXCEPTION);
  EXPECT_EQ(nameless.description(), kWordless);
  const Error success = outcome([](MemberCall& call) {
    call.exception->scode = S_FALSE;
    throw BareAnswer{DISP_E_EXCEPTION};
  });
  ASSERT_TRUE(success);
  EXPECT_EQ(success.hresult(), DISP_E_EXCEPTION) << "a code of success is none";
}

TEST_F(Refusal, KeepsAnHresultWithoutAnyText) {
  for (const HRESULT result : {E_FAIL, E_NOTIMPL, DISP_E_TYPEMISMATCH, DISP_E_BADPARAMCOUNT, RPC_E_DISCONNECTED}) {
    const Error error = outcome([&](MemberCall&) { throw BareAnswer{result}; });
    ASSERT_TRUE(error);
    EXPECT_EQ(error.hresult(), result);
    EXPECT_EQ(error.description(), kWordless);
  }
}

TEST_F(Refusal, TakesTheThreadsErrorInformationWhereTheAnswerHasNoText) {
  const Error error = outcome([](MemberCall&) {
    set_error_information(L"set for the thread", L"DAO.Thread");
    throw BareAnswer{E_FAIL};
  });
  ASSERT_TRUE(error);
  EXPECT_EQ(error.description(), u"set for the thread");
  EXPECT_EQ(error.source(), u"DAO.Thread");
}

TEST_F(Refusal, LeavesNoErrorInformationBesideAnAnswerOfItsOwn) {
  const Error error = outcome([](MemberCall&) {
    set_error_information(L"set for the thread", L"DAO.Thread");
    throw HostFailure{dao_error(3021), u"its own", u"DAO"};
  });
  ASSERT_TRUE(error);
  EXPECT_EQ(error.description(), u"its own");
}

// --- databases ----------------------------------------------------------------------------------------------------

class HostDatabaseTest : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(journal().live_objects(), 0); }
  Journal& journal() { return model_.journal; }

  // An object whose only member is `name`.
  ComPtr<LateBound> object_with(const wchar_t* name, LateBound::Member member, DISPID id = DISPID_UNKNOWN) {
    auto object = owned(new LateBound(journal()));
    object->add(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(member), id);
    return object;
  }

  // A database whose table definitions are these items.
  ComPtr<LateBound> database_listing(std::function<bool(VARIANT& item)> next) {
    return object_with(L"TableDefs", [this, next](MemberCall& call) {
      auto* tables = new LateBound(journal());
      tables->add(L"Refresh", DISPATCH_METHOD, [](MemberCall&) {});
      tables->add(
          L"_NewEnum", DISPATCH_PROPERTYGET,
          [this, next](MemberCall& listing) { listing.give_unknown(new_enumerator(journal(), next)); }, DISPID_NEWENUM);
      call.give_object(tables);
    });
  }

  static Result<bool> has_table(IUnknown* object, std::u16string_view name = u"Orders") {
    HostDatabase database(object, u"IFTable");
    return IFTable(database, name);
  }

  DaoModel model_;
};

TEST_F(HostDatabaseTest, IsObjectNotSetForANullDatabase) {
  EXPECT_RUNTIME_ERROR_SAYING(has_table(nullptr), ErrorNumber::object_not_set,
                              u"IFTable: DB is Nothing where the member \"TableDefs\" is wanted");
  HostDatabase database(nullptr, u"IFField");
  EXPECT_RUNTIME_ERROR(IFField(database, u"Orders", u"Day", 0), ErrorNumber::object_not_set);
  CreateIndex(database, u"Orders", u"ByDay", u"Day");
  CreateIndex2(database, u"Orders", u"ByDay", u"Day", u"City");
}

TEST_F(HostDatabaseTest, HoldsItsReferenceForItsOwnLifeOnly) {
  const auto object = owned(new_dao_database(model_));
  {
    const HostDatabase database(object.Get(), u"IFTable");
    EXPECT_EQ(object->references(), 2u);
  }
  EXPECT_EQ(object->references(), 1u);
}

// Each operation, at each call that can fail: afterwards nobody holds anything but the host its database.
TEST_F(HostDatabaseTest, GivesEveryReferenceBackAtEveryOutcome) {
  const auto object = owned(new_dao_database(model_));
  model_.ado_recordsets = true;
  const std::vector<std::function<Error(Database&)>> operations = {
      [](Database& database) { return error_of(IFTable(database, u"Orders")); },
      [](Database& database) { return error_of(IFField(database, u"Orders", u"Day", 0)); },
      [](Database& database) { return CreateIndex(database, u"Orders", u"ByDay", u"Day"), Error(); },
      [](Database& database) { return CreateIndex2(database, u"Orders", u"ByDay", u"Day", u"City"), Error(); },
  };
  for (const auto& operation : operations) {
    const auto run = [&] {
      HostDatabase database(object.Get(), u"test");
      const Error error = operation(database);
      EXPECT_TRUE(!error || error.hresult() == E_FAIL) << ::testing::PrintToString(error);
    };
    const std::size_t before = journal().calls().size();
    run();
    const std::size_t calls = journal().calls().size() - before;
    EXPECT_GE(calls, 8u);
    for (std::size_t failing = 1; failing <= calls; ++failing) {
      journal().fail_call(journal().calls().size() + failing, HostFailure{E_FAIL, u"planned", u"test"});
      run();
      EXPECT_EQ(object->references(), 1u);
      EXPECT_EQ(journal().live_objects(), 1);
      EXPECT_FALSE(has_error_information());
    }
  }
}

TEST_F(HostDatabaseTest, IsNoSuchMemberForObjectsThatLackOne) {
  const auto bare = object_with(L"Name", [](MemberCall&) {});
  EXPECT_RUNTIME_ERROR_SAYING(has_table(bare.Get()), ErrorNumber::no_such_member,
                              u"IFTable: DB has no member \"TableDefs\"");
  const auto enumerator = owned(new_enumerator(journal(), [](VARIANT&) { return false; }));
  EXPECT_RUNTIME_ERROR(has_table(enumerator.Get()), ErrorNumber::no_such_member);  // it has no late binding at all
}

TEST_F(HostDatabaseTest, IsNoSuchMemberForAMemberThatIsLostWhenItIsCalled) {
  const auto object = object_with(L"TableDefs", [](MemberCall&) { throw BareAnswer{DISP_E_MEMBERNOTFOUND}; });
  EXPECT_RUNTIME_ERROR(has_table(object.Get()), ErrorNumber::no_such_member);
}

TEST_F(HostDatabaseTest, IsNoSuchMemberForACollectionThatCannotBeWalked) {
  const auto walking = [&](LateBound::Member new_enum, DISPID id) {
    return object_with(L"TableDefs", [this, new_enum, id](MemberCall& call) {
      auto* tables = new LateBound(journal());
      tables->add(L"Refresh", DISPATCH_METHOD, [](MemberCall&) {});
      tables->add(L"_NewEnum", DISPATCH_PROPERTYGET, new_enum, id);
      call.give_object(tables);
    });
  };
  const auto without = walking([](MemberCall&) {}, 77);
  EXPECT_RUNTIME_ERROR(has_table(without.Get()), ErrorNumber::no_such_member);
  const auto number = walking([](MemberCall& call) { call.give(1); }, DISPID_NEWENUM);
  EXPECT_RUNTIME_ERROR(has_table(number.Get()), ErrorNumber::no_such_member);
  const auto nothing = walking([](MemberCall& call) { call.give_unknown(nullptr); }, DISPID_NEWENUM);
  EXPECT_RUNTIME_ERROR(has_table(nothing.Get()), ErrorNumber::no_such_member);
  const auto liar = walking(
      [this](MemberCall& call) {
        class Liar final : public LateBound {
         public:
          using LateBound::LateBound;
          STDMETHODIMP QueryInterface(REFIID, void** result) override { return *result = nullptr, S_OK; }
        };
        call.give_object(new Liar(journal()));
      },
      DISPID_NEWENUM);
  EXPECT_RUNTIME_ERROR(has_table(liar.Get()), ErrorNumber::no_such_member);  // it promises an interface and gives none
  const auto other = walking([this](MemberCall& call) { call.give_object(new LateBound(journal())); }, DISPID_NEWENUM);
  EXPECT_RUNTIME_ERROR(has_table(other.Get()), ErrorNumber::no_such_member);
}

TEST_F(HostDatabaseTest, TellsNothingFromNoObjectWhereAnObjectIsWanted) {
  const auto nothing = object_with(L"TableDefs", [](MemberCall& call) { call.give_object(nullptr); });
  EXPECT_RUNTIME_ERROR(has_table(nothing.Get()), ErrorNumber::object_not_set);
  const auto number = object_with(L"TableDefs", [](MemberCall& call) { call.give(5); });
  EXPECT_RUNTIME_ERROR_SAYING(has_table(number.Get()), ErrorNumber::object_required,
                              u"IFTable: DB is no object with the member \"Refresh\"");
  const auto empty = object_with(L"TableDefs", [](MemberCall&) {});
  EXPECT_RUNTIME_ERROR(has_table(empty.Get()), ErrorNumber::object_required);
}

TEST_F(HostDatabaseTest, IsATypeMismatchForItemsThatAreNoTableDefinitions) {
  const auto numbers = database_listing([](VARIANT& item) { return V_VT(&item) = VT_I4, true; });
  EXPECT_RUNTIME_ERROR_SAYING(has_table(numbers.Get()), ErrorNumber::type_mismatch,
                              u"IFTable: DB lists a table definition that is none");
  const auto unbound = database_listing([this](VARIANT& item) {
    item = variant_of(new_enumerator(journal(), [](VARIANT&) { return false; }), VT_UNKNOWN);
    return true;
  });
  EXPECT_RUNTIME_ERROR(has_table(unbound.Get()), ErrorNumber::type_mismatch);
  const auto nothing = database_listing([](VARIANT& item) { return item = variant_of(nullptr), true; });
  EXPECT_RUNTIME_ERROR(has_table(nothing.Get()), ErrorNumber::object_not_set);
}

TEST_F(HostDatabaseTest, PassesOnTheErrorOfAnEnumerator) {
  const auto object =
      database_listing([](VARIANT&) -> bool { throw HostFailure{RPC_E_DISCONNECTED, u"the host hung up", u"host"}; });
  const Error error = error_of(has_table(object.Get()));
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), RPC_E_DISCONNECTED);
  EXPECT_EQ(error.description(), u"the host hung up");
}

TEST_F(HostDatabaseTest, MakesATextOfANameThatIsNone) {
  const auto named = [&](std::function<void(MemberCall&)> name) {
    return database_listing([this, name, done = false](VARIANT& item) mutable {
      if (std::exchange(done, true)) return false;
      auto* table = new LateBound(journal());
      table->add(L"Name", DISPATCH_PROPERTYGET, name);
      item = variant_of(table);
      return true;
    });
  };
  EXPECT_EQ(has_table(named([](MemberCall& call) { call.give(5); }).Get(), u"5"), true);
  EXPECT_EQ(has_table(named([](MemberCall&) {}).Get(), u"Orders"), false) << "an empty value is an empty name";
  const auto null = named([](MemberCall& call) { V_VT(call.result()) = VT_NULL; });
  EXPECT_RUNTIME_ERROR_SAYING(has_table(null.Get()), ErrorNumber::type_mismatch,
                              u"IFTable: DB answers \"Name\" with Null that makes no text");
  const auto object = named([this](MemberCall& call) { call.give_object(new LateBound(journal())); });
  EXPECT_RUNTIME_ERROR(has_table(object.Get()), ErrorNumber::type_mismatch);
}

TEST_F(HostDatabaseTest, CarriesOnWithObjectsThatAreNone) {
  for (const auto& answer :
       std::vector<LateBound::Member>{[](MemberCall& call) { call.give_object(nullptr); },
                                      [](MemberCall& call) { call.give(5); }, [](MemberCall&) {}}) {
    const auto object = object_with(L"TableDefs", answer);
    HostDatabase database(object.Get(), u"CreateIndex");
    CreateIndex2(database, u"Orders", u"ByDay", u"Day", u"City");
  }
}

TEST_F(HostDatabaseTest, TakesARecordsetThatIsNothingForAnObjectNotSet) {
  const auto object = owned(new_dao_database(model_));
  object->remove(L"OpenRecordset");
  object->add(L"OpenRecordset", DISPATCH_METHOD, [](MemberCall& call) { call.give_object(nullptr); });
  HostDatabase database(object.Get(), u"IFField");
  EXPECT_RUNTIME_ERROR(IFField(database, u"Orders", u"Day", 0), ErrorNumber::object_not_set);
}

// --- grids --------------------------------------------------------------------------------------------------------

class HostGridTest : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(object_->references(), 1u);
    object_.Reset();
    EXPECT_EQ(model_.journal.live_objects(), 0);
  }

  VARIANT value() { return variant_of(object_.Get()); }
  const std::vector<std::string>& calls() const { return model_.journal.calls(); }

  static Error center(const VARIANT& Msfg) {
    HostGrid grid(Msfg, u"SetGrdCenter");
    return SetGrdCenter(grid);
  }
  static Error align(const VARIANT& Msfg) {
    HostGrid grid(Msfg, u"SetGrdAlign");
    return SetGrdAlign(grid, 1);
  }
  static Error clear(const VARIANT& Msfg) {
    HostGrid grid(Msfg, u"ClearGrd");
    return ClearGrd(grid);
  }

  // How many columns are aligned when `Cols` answers with what `cols` fills in.
  Result<std::size_t> columns_aligned(std::function<void(VARIANT&)> cols) {
    object_ = owned(new_grid(model_, std::move(cols)));
    const std::size_t before = calls().size() + 1;
    if (Error error = align(value())) return error;
    return calls().size() - before;
  }

  GridModel model_;
  ComPtr<LateBound> object_ = owned(new_grid(model_));
};

TEST_F(HostGridTest, TakesTheGridHoweverTheVariantHoldsIt) {
  IDispatch* dispatch = object_.Get();
  IUnknown* unknown = object_.Get();
  VARIANT by_reference = variant_of(VT_DISPATCH | VT_BYREF);
  V_DISPATCHREF(&by_reference) = &dispatch;
  VARIANT unknown_by_reference = variant_of(VT_UNKNOWN | VT_BYREF);
  V_UNKNOWNREF(&unknown_by_reference) = &unknown;
  VARIANT inner = value();
  VARIANT of_variant = variant_of(VT_VARIANT | VT_BYREF);
  V_VARIANTREF(&of_variant) = &inner;
  VARIANT inner_by_reference = by_reference;
  VARIANT twice = variant_of(VT_VARIANT | VT_BYREF);
  V_VARIANTREF(&twice) = &inner_by_reference;
  for (const VARIANT& held :
       {value(), variant_of(unknown, VT_UNKNOWN), by_reference, unknown_by_reference, of_variant, twice}) {
    SCOPED_TRACE(V_VT(&held));
    const std::size_t before = calls().size();
    EXPECT_FALSE(center(held));
    EXPECT_EQ(calls().size() - before, 12u);
    EXPECT_EQ(object_->references(), 1u);
  }
}

TEST_F(HostGridTest, WorksOnItsOwnCopyOfTheVariant) {
  VARIANT callers = value();
  object_->AddRef();
  VARIANT by_reference = variant_of(VT_VARIANT | VT_BYREF);
  V_VARIANTREF(&by_reference) = &callers;
  model_.journal.on_call = [&](const std::string&) { VariantClear(&callers); };
  EXPECT_FALSE(center(by_reference));
  EXPECT_EQ(V_VT(&callers), VT_EMPTY);
  EXPECT_EQ(calls().size(), 12u);
}

TEST_F(HostGridTest, IsObjectRequiredWhereTheVariantHoldsNone) {
  VARIANT number = variant_of(VT_I4);
  VARIANT text;
  set_text(text, L"grid");
  VARIANT inner = variant_of(VT_EMPTY);
  VARIANT reference = variant_of(VT_VARIANT | VT_BYREF);
  V_VARIANTREF(&reference) = &inner;
  VARIANT omitted = variant_of(VT_ERROR);
  V_ERROR(&omitted) = DISP_E_PARAMNOTFOUND;
  for (const VARIANT& held : {variant_of(VT_EMPTY), variant_of(VT_NULL), number, text, reference, omitted}) {
    SCOPED_TRACE(V_VT(&held));
    EXPECT_RUNTIME_ERROR(center(held), ErrorNumber::object_required);
    EXPECT_RUNTIME_ERROR(align(held), ErrorNumber::object_required);
    EXPECT_RUNTIME_ERROR_SAYING(clear(held), ErrorNumber::object_required,
                                u"ClearGrd: Msfg is no object with the member \"Rows\"");
  }
  VariantClear(&text);
}

TEST_F(HostGridTest, IsObjectNotSetForNothing) {
  IDispatch* nothing = nullptr;
  VARIANT by_reference = variant_of(VT_DISPATCH | VT_BYREF);
  V_DISPATCHREF(&by_reference) = &nothing;
  for (const VARIANT& held : {variant_of(nullptr), variant_of(nullptr, VT_UNKNOWN), by_reference}) {
    EXPECT_RUNTIME_ERROR(center(held), ErrorNumber::object_not_set);
    EXPECT_RUNTIME_ERROR(align(held), ErrorNumber::object_not_set);
    EXPECT_RUNTIME_ERROR(clear(held), ErrorNumber::object_not_set);
  }
}

TEST_F(HostGridTest, IsNoSuchMemberWhereTheGridLacksOneThatIsUsed) {
  struct Row {
    const wchar_t* lacking;
    Error (*operation)(const VARIANT&);
    std::vector<std::string> calls_before;
  };
  const std::vector<Row> rows = {
      {L"Row", center, {}},
      {L"Cols", center, {"Row=0"}},
      {L"Col", center, {"Row=0", "Cols?"}},
      {L"CellAlignment", center, {"Row=0", "Cols?", "Col=0"}},
      {L"Cols", align, {}},
      {L"ColAlignment", align, {"Cols?"}},
      {L"Rows", clear, {}},
      {L"Cols", clear, {"Rows=200"}},
      {L"TextMatrix", clear, {"Rows=200", "Cols?"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(::testing::Message() << row.lacking);
    model_.journal.start_anew();
    const auto object = owned(new_grid(model_));
    object->remove(row.lacking);
    EXPECT_RUNTIME_ERROR(row.operation(variant_of(object.Get())), ErrorNumber::no_such_member);
    EXPECT_THAT(calls(), ElementsAreArray(row.calls_before));
    EXPECT_EQ(object->references(), 1u);
  }
}

// A script class as Wine's VBScript makes it: its members are found through IDispatchEx only. It lives as long as the
// test says, and passes calls on to `inner`.
class ScriptClass final : public IDispatchEx {
 public:
  ScriptClass(IDispatch* inner, bool extended) : inner_(inner), extended_(extended) {}
  virtual ~ScriptClass() = default;
  ScriptClass(const ScriptClass&) = delete;
  ScriptClass& operator=(const ScriptClass&) = delete;

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    const bool provided = interface_id == IID_IUnknown || interface_id == IID_IDispatch ||
                          (extended_ && interface_id == __uuidof(IDispatchEx));
    *result = provided ? static_cast<IDispatchEx*>(this) : nullptr;
    if (!provided) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  STDMETHODIMP GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*result*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                             DISPID* /*ids*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override {
    return inner_->Invoke(id, interface_id, locale, flags, parameters, result, exception, wrong_argument);
  }
  STDMETHODIMP GetDispID(BSTR name, DWORD /*flags*/, DISPID* id) override {
    return inner_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, id);
  }
  STDMETHODIMP InvokeEx(DISPID /*id*/, LCID /*locale*/, WORD /*flags*/, DISPPARAMS* /*parameters*/, VARIANT* /*result*/,
                        EXCEPINFO* /*exception*/, IServiceProvider* /*caller*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP DeleteMemberByName(BSTR /*name*/, DWORD /*flags*/) override { return E_NOTIMPL; }
  STDMETHODIMP DeleteMemberByDispID(DISPID /*id*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetMemberProperties(DISPID /*id*/, DWORD /*wanted*/, DWORD* /*properties*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetMemberName(DISPID /*id*/, BSTR* /*name*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetNextDispID(DWORD /*flags*/, DISPID /*id*/, DISPID* /*next*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetNameSpaceParent(IUnknown** /*parent*/) override { return E_NOTIMPL; }

  ULONG references = 0;

 private:
  IDispatch* inner_;
  bool extended_;
};

TEST_F(HostGridTest, FindsTheMembersOfAScriptClassThroughItsOwnInterface) {
  ScriptClass grid(object_.Get(), true);
  EXPECT_FALSE(center(variant_of(&grid)));
  EXPECT_EQ(calls().size(), 12u);
  EXPECT_EQ(object_->lookups(L"Col"), 1);
  object_->remove(L"ColAlignment");
  EXPECT_RUNTIME_ERROR(align(variant_of(&grid)), ErrorNumber::no_such_member);
  EXPECT_EQ(grid.references, 0u);
}

TEST_F(HostGridTest, IsNoSuchMemberForAnObjectThatFindsNoneAtAll) {
  ScriptClass grid(object_.Get(), false);
  EXPECT_RUNTIME_ERROR(center(variant_of(&grid)), ErrorNumber::no_such_member);
  EXPECT_EQ(grid.references, 0u);
}

TEST_F(HostGridTest, DoesNotAskForMembersThatItDoesNotUse) {
  model_.cols = 0;
  EXPECT_FALSE(center(value()));
  EXPECT_FALSE(align(value()));
  EXPECT_FALSE(clear(value()));
  EXPECT_EQ(object_->lookups(L"Row"), 1);
  EXPECT_EQ(object_->lookups(L"Cols"), 3);
  EXPECT_EQ(object_->lookups(L"Rows"), 1);
  for (const wchar_t* unused : {L"Col", L"CellAlignment", L"ColAlignment", L"TextMatrix"}) {
    EXPECT_EQ(object_->lookups(unused), 0);
  }
}

TEST_F(HostGridTest, LooksEachMemberUpOnceACall) {
  model_.cols = 300;
  EXPECT_FALSE(center(value()));
  EXPECT_FALSE(align(value()));
  EXPECT_FALSE(clear(value()));
  EXPECT_EQ(object_->lookups(L"Cols"), 3) << "once in each of three operations";
  for (const wchar_t* used : {L"Rows", L"Row", L"Col", L"CellAlignment", L"ColAlignment", L"TextMatrix"}) {
    EXPECT_EQ(object_->lookups(used), 1) << used;
  }
}

TEST_F(HostGridTest, TakesAnyNumberForTheNumberOfColumns) {
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_I2, V_I2(&value) = 5; }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_UI1, V_UI1(&value) = 5; }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_I8, V_I8(&value) = 5; }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_R4, V_R4(&value) = 5; }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_DATE, V_DATE(&value) = 5; }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_CY, V_CY(&value).int64 = 50000; }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { set_text(value, L"5"); }), 5u);
  EXPECT_EQ(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_BOOL, V_BOOL(&value) = VARIANT_TRUE; }), 0u);
  EXPECT_EQ(columns_aligned([](VARIANT&) {}), 0u) << "an empty value is 0";
}

TEST_F(HostGridTest, IsATypeMismatchForColumnsThatAreNoNumber) {
  const auto mismatch = [&](const std::u16string& kind, std::function<void(VARIANT&)> cols) {
    EXPECT_RUNTIME_ERROR_SAYING(columns_aligned(std::move(cols)), ErrorNumber::type_mismatch,
                                u"SetGrdAlign: Msfg answers \"Cols\" with " + kind + u" that makes no number");
    EXPECT_EQ(calls().back(), "Cols?") << "no column was touched";
  };
  mismatch(u"a text", [](VARIANT& value) { set_text(value, L""); });
  mismatch(u"a text", [](VARIANT& value) { set_text(value, L"five"); });
  mismatch(u"Null", [](VARIANT& value) { V_VT(&value) = VT_NULL; });
  mismatch(u"the code of an error",
           [](VARIANT& value) { V_VT(&value) = VT_ERROR, V_ERROR(&value) = DISP_E_PARAMNOTFOUND; });
  mismatch(u"an object", [this](VARIANT& value) { value = variant_of(new LateBound(model_.journal)); });
  mismatch(u"an array", [](VARIANT& value) {
    V_VT(&value) = VT_ARRAY | VT_I4;
    V_ARRAY(&value) = SafeArrayCreateVector(VT_I4, 0, 1);
  });
  mismatch(u"a value", [](VARIANT& value) { V_VT(&value) = VT_BLOB; });
}

TEST_F(HostGridTest, OverflowsForColumnsOutOfAnyRange) {
  EXPECT_RUNTIME_ERROR(columns_aligned([](VARIANT& value) { V_VT(&value) = VT_UI4, V_UI4(&value) = 0xFFFFFFFF; }),
                       ErrorNumber::overflow);
  EXPECT_RUNTIME_ERROR(columns_aligned([](VARIANT& value) { set_text(value, L"40000"); }), ErrorNumber::overflow);
  EXPECT_RUNTIME_ERROR(columns_aligned([](VARIANT& value) { set_text(value, L"1e400"); }), ErrorNumber::overflow);
}

TEST_F(HostGridTest, PassesOnTheErrorOfAGridThatHangsUpBeforeItIsAsked) {
  class Disconnected final : public LateBound {
   public:
    using LateBound::LateBound;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return answer; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
      return E_UNEXPECTED;
    }
    HRESULT answer = RPC_E_DISCONNECTED;
  };
  const auto object = owned(new Disconnected(model_.journal));
  EXPECT_HOST_ERROR(center(variant_of(object.Get())), RPC_E_DISCONNECTED);
  object->answer = HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE);
  EXPECT_HOST_ERROR(center(variant_of(object.Get())), HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE));
  for (const HRESULT refusal : {E_NOTIMPL, E_FAIL, S_OK}) {
    object->answer = refusal;  // S_OK without an id is a lie
    EXPECT_RUNTIME_ERROR(center(variant_of(object.Get())), ErrorNumber::no_such_member);
  }
}

// --- memory -------------------------------------------------------------------------------------------------------

// The memory in use by this process.
std::size_t working_set() {
  PROCESS_MEMORY_COUNTERS counters = {};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.WorkingSetSize;
}

// Texts so long that one leaked a call would show.
TEST(Memory, IsGivenBackByCallsThatSucceedAndCallsThatAreRefused) {
  constexpr std::size_t kTextLength = 50'000;
  constexpr int kRounds = 200;
  DaoModel model;
  model.ado_recordsets = true;
  model.tables.push_back({std::u16string(kTextLength, u'N'), {std::u16string(kTextLength, u'F')}, {}});
  const std::u16string name = model.tables.back().name;
  const auto database = owned(new_dao_database(model));
  const auto grid = owned(new LateBound(model.journal));
  grid->add(L"Rows", DISPATCH_PROPERTYPUT, [&](MemberCall& call) {
    call.exception->bstrHelpFile = SysAllocStringLen(nullptr, kTextLength);
    throw HostFailure{kInvalidPropertyValue, name, name};
  });
  const std::size_t before = working_set();
  for (int round = 0; round < kRounds; ++round) {
    model.journal.start_anew();
    HostDatabase host(database.Get(), u"test");
    EXPECT_EQ(IFTable(host, name), true);
    EXPECT_EQ(IFField(host, name, u"Day", 0), false);
    CreateIndex2(host, name, name, name, name);
    HostGrid host_grid(variant_of(grid.Get()), u"ClearGrd");
    EXPECT_HOST_ERROR(ClearGrd(host_grid), kInvalidPropertyValue);
  }
  EXPECT_LT(working_set(), before + kRounds * kTextLength * sizeof(OLECHAR) / 4);
}

}  // namespace
}  // namespace corvelle::testing
