// What callers leave uninitialised, and arguments in the forms that few of them use.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "component/error_report.h"
#include "tests/component/process.h"
#include "tests/component/published_call.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/error_object.h"
#include "tests/hosts/grid_host.h"
#include "tests/support/loaded_image.h"

namespace corvelle::testing {
namespace {

// Memory as a caller may hand it over.
template <class Type>
Type uninitialised() {
  Type value;
  std::memset(&value, 0xCC, sizeof(value));
  return value;
}

template <class Type>
bool is_all_zeros(const Type& value) {
  const auto* bytes = reinterpret_cast<const char*>(&value);
  return std::all_of(bytes, bytes + sizeof(value), [](char byte) { return byte == 0; });
}

VARIANT variant_of_type(VARTYPE type) {
  VARIANT value = {};
  V_VT(&value) = type;
  return value;
}

class RareCallers : public ::testing::Test {
 protected:
  struct Answer {
    HRESULT result;
    VARIANT value = uninitialised<VARIANT>();
    EXCEPINFO exception = uninitialised<EXCEPINFO>();
    UINT wrong_argument = 99;
  };

  // Nothing of what the call is given is initialised. The caller frees what is in the answer.
  static Answer call(const Published& called, const Arguments& arguments, DISPID dispid, WORD flags = DISPATCH_METHOD) {
    Answer answer;
    DISPPARAMS parameters = arguments.parameters();
    answer.result = called.object->Invoke(dispid, IID_NULL, 0, flags, &parameters, &answer.value, &answer.exception,
                                          &answer.wrong_argument);
    return answer;
  }
  static Answer call(const Published& called, const Arguments& arguments) {
    return call(called, arguments, called.operation->dispid);
  }
  static HRESULT result_of(const Published& called, const Arguments& arguments) {
    Answer answer = call(called, arguments);
    VariantClear(&answer.value);
    SysFreeString(answer.exception.bstrDescription);
    SysFreeString(answer.exception.bstrSource);
    return answer.result == DISP_E_EXCEPTION ? answer.exception.scode : answer.result;
  }

  static void expect_nothing(const Answer& answer, HRESULT result) {
    EXPECT_EQ(answer.result, result);
    EXPECT_EQ(V_VT(&answer.value), VT_EMPTY);
    EXPECT_TRUE(is_all_zeros(answer.exception));
  }

  Apartment apartment_;
  PublishedObjects published_;
};

TEST_F(RareCallers, FindNoResultAfterARefusal) {
  constexpr DISPID kNoSuchOperation = 0x60030001;
  for (const Published& called : published_.all()) {
    SCOPED_TRACE(utf8(called.operation->name));
    Arguments too_many;
    for (int i = 0; i < 6; ++i) too_many.text(u"x");
    expect_nothing(call(called, too_many), DISP_E_BADPARAMCOUNT);
    expect_nothing(call(called, too_many, kNoSuchOperation), DISP_E_MEMBERNOTFOUND);
    for (const int flags :
         {DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF, DISPATCH_METHOD | DISPATCH_PROPERTYPUT,
          DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUTREF}) {
      expect_nothing(call(called, Arguments(), called.operation->dispid, static_cast<WORD>(flags)),
                     DISP_E_MEMBERNOTFOUND);
    }
    if (called.operation->required_count == 0) continue;
    Arguments missing;
    for (std::size_t i = 0; i < called.operation->required_count; ++i) missing.missing();
    expect_nothing(call(called, missing), DISP_E_PARAMNOTOPTIONAL);
  }
}

// By both ways through Invoke: with the declared types, and with others.
TEST_F(RareCallers, FindNoResultAfterAnError) {
  const Published field = published_.find(u"getStr_Pf");
  Arguments declared;
  declared.text(u"a,b").int16(9).text(u",");
  Arguments converted;
  converted.text(u"a,b").int32(9).text(u",");
  for (const Arguments* arguments : {&declared, &converted}) {
    const Answer answer = call(field, *arguments);
    EXPECT_EQ(answer.result, DISP_E_EXCEPTION);
    EXPECT_EQ(V_VT(&answer.value), VT_EMPTY);
    EXPECT_EQ(answer.exception.scode, hresult_of(ErrorNumber::invalid_argument));
    EXPECT_EQ(text_of(answer.exception.bstrSource), u"Corvelle.ClsValidate");
    EXPECT_GT(SysStringLen(answer.exception.bstrDescription), 0u);
    SysFreeString(answer.exception.bstrSource);
    SysFreeString(answer.exception.bstrDescription);
    EXCEPINFO rest = answer.exception;
    rest.bstrSource = rest.bstrDescription = nullptr;
    rest.scode = 0;
    EXPECT_TRUE(is_all_zeros(rest));
  }
}

TEST_F(RareCallers, FindNothingElseAfterASuccess) {
  const Answer none = call(published_.find(u"CreateIndex"),
                           Arguments().borrowed(variant_of_type(VT_DISPATCH)).text(u"T").text(u"I").text(u"F"));
  expect_nothing(none, S_OK);
  const Answer number = call(published_.find(u"GetByte_Pf"), Arguments().text(u"ab").int16(0));
  EXPECT_EQ(number.result, S_OK);
  EXPECT_EQ(V_VT(&number.value), VT_I2);
  EXPECT_TRUE(is_all_zeros(number.exception));
}

// Where nobody takes the error information, it stays on the thread, as after an early-bound call.
TEST_F(RareCallers, WithoutExcepinfoFindTheErrorOnTheThread) {
  const Published field = published_.find(u"getStr_Pf");
  Arguments arguments;
  arguments.text(u"a,b").int16(9).text(u",");
  DISPPARAMS parameters = arguments.parameters();
  const auto call_with = [&](EXCEPINFO* exception) {
    return field.object->Invoke(field.operation->dispid, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, exception,
                                nullptr);
  };
  EXPECT_EQ(call_with(nullptr), DISP_E_EXCEPTION);
  const auto left = error_description();
  ASSERT_TRUE(left.has_value());
  EXPECT_TRUE(left->starts_with(u"getStr_Pf: Num")) << utf8(*left);
  EXCEPINFO exception = {};
  EXPECT_EQ(call_with(&exception), DISP_E_EXCEPTION);
  EXPECT_FALSE(error_description().has_value()) << "it was given in EXCEPINFO";
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
}

// Error information as an operation would leave it that has nothing to say.
HRESULT WINAPI give_wordless_error(ULONG /*reserved*/, IErrorInfo** result) {
  *result = new ErrorObject([] {},
                            [](BSTR* text) {
                              *text = SysAllocString(L"");
                              return S_OK;
                            });
  return S_OK;
}

TEST_F(RareCallers, FindNoDescriptionWhereThereIsNothingToSay) {
  const ReplacedImport error(loaded_component(), "GetErrorInfo", reinterpret_cast<void*>(&give_wordless_error));
  ASSERT_TRUE(error.found());
  const Answer answer = call(published_.find(u"getStr_Pf"), Arguments().text(u"a,b").int16(9).text(u","));
  EXPECT_EQ(answer.result, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.exception.bstrDescription, nullptr) << "so that clients show a text of their own";
  SysFreeString(answer.exception.bstrSource);
}

TEST_F(RareCallers, MarkMissingArgumentsByReference) {
  SCODE missing = DISP_E_PARAMNOTFOUND;
  VARIANT by_reference = variant_of_type(VT_BYREF | VT_ERROR);
  V_ERRORREF(&by_reference) = &missing;
  VARIANT in_a_variant = reference_to(&by_reference);
  VARIANT value = variant_of_type(VT_ERROR);
  V_ERROR(&value) = DISP_E_PARAMNOTFOUND;
  const Published days = published_.find(u"getDays_Pf");
  for (const VARIANT& left_out : {by_reference, in_a_variant, reference_to(&value)}) {
    EXPECT_EQ(result_of(days, Arguments().int16(2004).borrowed(left_out)), S_OK);
    EXPECT_EQ(result_of(published_.find(u"Center"), Arguments().borrowed(left_out)), DISP_E_PARAMNOTOPTIONAL);
  }
}

TEST_F(RareCallers, AnErrorsCodeIsNoArgument) {
  VARIANT code = variant_of_type(VT_ERROR);
  V_ERROR(&code) = E_FAIL;
  SCODE failed = E_FAIL;
  VARIANT by_reference = variant_of_type(VT_BYREF | VT_ERROR);
  V_ERRORREF(&by_reference) = &failed;
  for (const VARIANT& argument : {code, reference_to(&code), by_reference, reference_to(&by_reference)}) {
    for (const Published& called : published_.all()) {
      SCOPED_TRACE(utf8(called.operation->name));
      const auto parameters = called.operation->parameters();
      for (std::size_t place = 0; place < parameters.size(); ++place) {
        Arguments arguments;
        for (std::size_t i = 0; i < parameters.size(); ++i) {
          const VARTYPE type = parameters[i].value_type();
          if (i == place) {
            arguments.borrowed(argument);
          } else if (type == kDatabaseType || type == VT_VARIANT) {
            arguments.borrowed(variant_of_type(VT_DISPATCH));
          } else {
            arguments.text(u"1");
          }
        }
        const HRESULT wanted =
            parameters[place].type == VT_VARIANT ? hresult_of(ErrorNumber::object_required) : DISP_E_TYPEMISMATCH;
        EXPECT_EQ(result_of(called, arguments), wanted) << place;
      }
    }
  }
}

// A database in each form of an object, and Nothing in each.
TEST_F(RareCallers, PassADatabaseInEveryForm) {
  DaoModel model;
  const auto database = owned(new_dao_database(model));
  IDispatch* late = database.Get();
  IUnknown* plain = late;
  const Published table = published_.find(u"IFTable");
  const auto answer_to = [&](const VARIANT& argument) {
    Answer answer = call(table, Arguments().borrowed(argument).text(u"customers"));
    return answer.result == S_OK && V_VT(&answer.value) == VT_BOOL && V_BOOL(&answer.value) == VARIANT_TRUE;
  };
  for (const bool nothing : {false, true}) {
    if (nothing) {
      late = nullptr;
      plain = nullptr;
    }
    VARIANT forms[4] = {variant_of_type(VT_DISPATCH), variant_of_type(VT_UNKNOWN),
                        variant_of_type(VT_BYREF | VT_DISPATCH), variant_of_type(VT_BYREF | VT_UNKNOWN)};
    V_DISPATCH(&forms[0]) = late;
    V_UNKNOWN(&forms[1]) = plain;
    V_DISPATCHREF(&forms[2]) = &late;
    V_UNKNOWNREF(&forms[3]) = &plain;
    for (VARIANT& form : forms) {
      SCOPED_TRACE(V_VT(&form));
      for (const VARIANT& argument : {form, reference_to(&form)}) {
        EXPECT_EQ(answer_to(argument), !nothing);
        if (nothing) {
          EXPECT_EQ(result_of(table, Arguments().borrowed(argument).text(u"customers")),
                    hresult_of(ErrorNumber::object_not_set));
        }
      }
    }
  }
  EXPECT_EQ(database->references(), 1u);
}

TEST_F(RareCallers, LearnTheIndexOfTheWrongArgumentWithNamesToo) {
  const Published field = published_.find(u"getStr_Pf");
  for (const bool with_object : {false, true}) {  // which has the other arguments copied first
    GridModel model;
    const auto grid = owned(new_grid(model));
    const auto flag = [&](Arguments& arguments) -> Arguments& {
      return with_object ? arguments.borrowed(object_variant(grid.Get())) : arguments.text(u"no number");
    };
    Arguments named;
    named.text(u",").at(2);
    flag(named).at(1);
    named.text(u"a,b,").at(0);
    const DISPPARAMS parameters = named.parameters();
    const DISPID* names = parameters.rgdispidNamedArgs;
    const auto wrong = static_cast<UINT>(std::find(names, names + parameters.cNamedArgs, 1) - names);
    const Answer answer = call(field, named);
    EXPECT_EQ(answer.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(answer.wrong_argument, wrong);
  }
}

TEST(Locks, TakenBackOnceTooOftenChangeNothing) {
  const Apartment apartment;
  {
    const auto factory = factory_of(kClsValidateId);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  }
  EXPECT_EQ(can_unload(), S_FALSE) << "the lock counts";
  const auto factory = factory_of(kClsValidateId);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(can_unload(), S_FALSE) << "the factory counts";
}

TEST(Locks, RequestsThatFailLeaveNothing) {
  const Apartment apartment;
  const auto get_class_object = [] {
    const auto loads = create(L"Corvelle.ClsValidate");
    return exported<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  }();
  void* object = nullptr;
  EXPECT_EQ(get_class_object(kClsValidateId, IID_IDispatch, &object), E_NOINTERFACE);
  EXPECT_EQ(get_class_object(kLibraryId, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(can_unload(), S_OK);
  {
    const auto factory = factory_of(kClsVexAppId);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, kClsValidateInterfaceId, &object), E_NOINTERFACE);
  }
  EXPECT_TRUE(unload_component());
}

}  // namespace
}  // namespace corvelle::testing
