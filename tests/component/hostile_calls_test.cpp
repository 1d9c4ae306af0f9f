// A host that calls at random, with whatever automation can put into an argument: the component answers with documented
// HRESULTs, leaves the arguments alone and loses nothing.
//
//   CORVELLE_SOAK         set: 1,000,000 calls instead of 20,000
//   CORVELLE_SEED         the seed of the calls (default: 936)
#include <gtest/gtest.h>
#include <ocidl.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <limits>
#include <map>
#include <set>

#include "component/error_report.h"
#include "tests/component/component_memory.h"
#include "tests/component/published_call.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"
#include "tests/reference/choices.h"

namespace corvelle::testing {
namespace {

// --- texts and objects ------------------------------------------------------------------------------------------

std::u16string random_text(Choices& choices) {
  static const std::u16string kTexts[] = {
      u"",        u"0",         u"-1",       u"3",    u"32767",  u"32768",  u"-2147483649", u"1e400",  u"1,234.5",
      u"¥12.005", u"20240229",  u"99999999", u"中a",  u"  a b ", u"a,b,c",  u"C:\\a\\b.c",  u"*?",     u"NaN",
      u"True",    u"2024-1-31", u"&HFFFF",   u"Name", u"Orders", u"\xD800", u"一二三",      u"年月日", u"City"};
  if (choices.once_in(50)) return std::u16string(32760 + choices.below(12), choices.once_in(2) ? u'中' : u'7');
  if (choices.once_in(4)) {
    std::u16string text(choices.below(20), u'\0');
    for (char16_t& unit : text) unit = static_cast<char16_t>(choices.below(choices.once_in(2) ? 0x80 : 0x10000));
    return text;
  }
  return choices.one_of(kTexts);
}

// The objects that the host has at hand. They outlive every argument, which holds no reference of its own.
class HostObjects {
 public:
  explicit HostObjects(IDispatch* own) {
    dao_.ado_recordsets = true;
    plain_->add(
        L"Value", DISPATCH_METHOD | DISPATCH_PROPERTYGET, [](MemberCall& call) { call.give(u"12"); }, DISPID_VALUE);
    objects_ = {nullptr, own, database_.Get(), grid_.Get(), plain_.Get(), enumerator_.Get()};
  }

  IUnknown* any(Choices& choices) const { return choices.one_of(objects_); }
  IDispatch* any_late_bound(Choices& choices) const {
    return static_cast<IDispatch*>(objects_[choices.below(static_cast<std::uint32_t>(objects_.size() - 1))]);
  }
  // One that fits the parameter mostly.
  IDispatch* fitting(VARTYPE type) const { return type == VT_VARIANT ? grid_.Get() : database_.Get(); }

  void forget_calls() {
    dao_.journal.start_anew();
    grid_model_.journal.start_anew();
    journal_.start_anew();
    dao_.tables[1].indexes.clear();
  }
  void expect_no_references() const {
    EXPECT_EQ(database_->references(), 1u);
    EXPECT_EQ(grid_->references(), 1u);
    EXPECT_EQ(plain_->references(), 1u);
    EXPECT_EQ(dao_.journal.live_objects(), 1);
  }

 private:
  Journal journal_;
  DaoModel dao_;
  GridModel grid_model_;
  ComPtr<LateBound> database_ = owned(new_dao_database(dao_));
  ComPtr<LateBound> grid_ = owned(new_grid(grid_model_));
  ComPtr<LateBound> plain_ = owned(new LateBound(journal_));
  ComPtr<IUnknown> enumerator_ = owned(new_enumerator(journal_, [](VARIANT&) { return false; }));
  std::vector<IUnknown*> objects_;  // the last has no late binding
};

// --- arguments ----------------------------------------------------------------------------------------------------

constexpr VARTYPE kValueTypes[] = {VT_EMPTY, VT_NULL, VT_I1,   VT_UI1,  VT_I2,   VT_UI2,      VT_I4,      VT_UI4,
                                   VT_I8,    VT_UI8,  VT_R4,   VT_R8,   VT_CY,   VT_DATE,     VT_BOOL,    VT_ERROR,
                                   VT_INT,   VT_UINT, VT_BSTR, VT_BSTR, VT_BSTR, VT_DISPATCH, VT_UNKNOWN, VT_DECIMAL};
// What may stand in an array, and what no VARIANT may hold by itself.
constexpr VARTYPE kElementTypes[] = {VT_UI1, VT_I2, VT_I4, VT_R8, VT_BSTR, VT_VARIANT, VT_DISPATCH};
constexpr VARTYPE kStrayTypes[] = {VT_VOID,   VT_HRESULT, VT_PTR,  VT_SAFEARRAY, VT_CARRAY, VT_USERDEFINED,
                                   VT_LPSTR,  VT_LPWSTR,  VT_BLOB, VT_CLSID,     15,        VT_BSTR_BLOB,
                                   VT_VECTOR, VT_RESERVED};

// The arguments of one call and all that they refer to.
class RandomArguments {
 public:
  RandomArguments(Choices& choices, const HostObjects& objects) : choices_(choices), objects_(objects) {}
  ~RandomArguments() {
    for (BSTR text : texts_) SysFreeString(text);
    for (SAFEARRAY* array : arrays_) SafeArrayDestroy(array);
  }
  RandomArguments(const RandomArguments&) = delete;
  RandomArguments& operator=(const RandomArguments&) = delete;

  VARIANT any() {
    if (choices_.once_in(40)) return stray();
    if (choices_.once_in(12)) return array();
    if (choices_.once_in(4)) return reference();
    if (choices_.once_in(20)) return missing();
    return value(choices_.one_of(kValueTypes));
  }

  // A value of the declared type, so that most calls reach their operation.
  VARIANT fitting(const Parameter& parameter) {
    const VARTYPE type = parameter.value_type();
    if (type != kDatabaseType && type != VT_VARIANT) return value(type);
    VARIANT result = of_type(VT_DISPATCH);
    V_DISPATCH(&result) = choices_.once_in(10) ? nullptr : objects_.fitting(type);
    return result;
  }

 private:
  static VARIANT of_type(VARTYPE type) {
    VARIANT result;
    std::memset(&result, 0, sizeof(result));
    V_VT(&result) = type;
    return result;
  }

  static VARIANT missing() {
    VARIANT result = of_type(VT_ERROR);
    V_ERROR(&result) = DISP_E_PARAMNOTFOUND;
    return result;
  }

  VARIANT value(VARTYPE type) {
    VARIANT result = of_type(type);
    switch (type) {
      case VT_BSTR: V_BSTR(&result) = text(); break;
      case VT_DISPATCH: V_DISPATCH(&result) = objects_.any_late_bound(choices_); break;
      case VT_UNKNOWN: V_UNKNOWN(&result) = objects_.any(choices_); break;
      case VT_R4: V_R4(&result) = static_cast<float>(real()); break;
      case VT_R8:
      case VT_DATE: V_R8(&result) = real(); break;
      case VT_BOOL: V_BOOL(&result) = static_cast<VARIANT_BOOL>(integer()); break;
      case VT_DECIMAL:
        V_DECIMAL(&result).Lo64 = static_cast<ULONGLONG>(integer());
        V_DECIMAL(&result).scale = static_cast<BYTE>(choices_.below(29));
        V_VT(&result) = VT_DECIMAL;
        break;
      default: V_I8(&result) = integer(); break;
    }
    return result;
  }

  BSTR text() {
    if (choices_.once_in(10)) return nullptr;
    const std::u16string content = random_text(choices_);
    texts_.push_back(SysAllocStringLen(as_wide(content.data()), static_cast<UINT>(content.size())));
    return texts_.back();
  }

  double real() {
    static constexpr double kReals[] = {0,       -0.0,       1,       -1.5,  2.5,    32767.5,
                                        -657434, 2958465.99, 2958466, 1e300, -1e300, 45000.25};
    return choices_.once_in(8) ? std::numeric_limits<double>::quiet_NaN() : choices_.one_of(kReals);
  }

  std::int64_t integer() {
    static constexpr std::int64_t kIntegers[] = {0,     1,      2,          7,           -1,         8,
                                                 12,    32767,  32768,      -32768,      65535,      2024,
                                                 -4096, 100000, 2147483647, -2147483648, 4294967295, 20240229};
    return choices_.one_of(kIntegers);
  }

  // By reference to a value, to another VARIANT, to an array or to nothing.
  VARIANT reference() {
    const VARTYPE type = choices_.one_of(kValueTypes);
    if (type == VT_EMPTY || type == VT_NULL || choices_.once_in(3)) {
      referred_.push_back(choices_.once_in(5) ? reference() : choices_.once_in(8) ? array() : value(type));
      return reference_of(VT_VARIANT, &referred_.back());
    }
    if (choices_.once_in(20)) return reference_of(type, nullptr);
    referred_.push_back(value(type));
    VARIANT& target = referred_.back();
    return reference_of(type, type == VT_DECIMAL ? static_cast<void*>(&target) : &V_I8(&target));
  }

  static VARIANT reference_of(VARTYPE type, void* target) {
    VARIANT result = of_type(static_cast<VARTYPE>(VT_BYREF | type));
    V_BYREF(&result) = target;
    return result;
  }

  VARIANT array() {
    const VARTYPE type = choices_.one_of(kElementTypes);
    SAFEARRAY* content = nullptr;
    if (!choices_.once_in(5)) {
      content = SafeArrayCreateVector(type, static_cast<LONG>(choices_.below(3)), choices_.below(5));
      arrays_.push_back(content);
      fill(*content, type);
    }
    if (choices_.once_in(2)) {
      VARIANT result = of_type(static_cast<VARTYPE>(VT_ARRAY | type));
      V_ARRAY(&result) = content;
      return result;
    }
    array_pointers_.push_back(content);
    return reference_of(static_cast<VARTYPE>(VT_ARRAY | type), choices_.once_in(6) ? nullptr : &array_pointers_.back());
  }

  // Numbers and texts; what else an array holds stays empty.
  void fill(SAFEARRAY& content, VARTYPE type) {
    if (type == VT_VARIANT || type == VT_DISPATCH) return;
    for (ULONG i = 0; i < content.rgsabound[0].cElements; ++i) {
      if (type == VT_BSTR) {
        const std::u16string element = random_text(choices_);
        static_cast<BSTR*>(content.pvData)[i] =
            SysAllocStringLen(as_wide(element.data()), static_cast<UINT>(element.size()));
      } else {
        std::memset(static_cast<char*>(content.pvData) + i * content.cbElements, static_cast<int>(choices_.below(256)),
                    content.cbElements);
      }
    }
  }

  // A type that no argument can have, with nothing in it.
  VARIANT stray() { return of_type(choices_.one_of(kStrayTypes)); }

  Choices& choices_;
  const HostObjects& objects_;
  std::vector<BSTR> texts_;
  std::vector<SAFEARRAY*> arrays_;
  std::deque<VARIANT> referred_;  // addresses stay
  std::deque<SAFEARRAY*> array_pointers_;
};

void append_image(const SAFEARRAY* array, std::string& image) {
  if (array == nullptr) return;
  image.append(reinterpret_cast<const char*>(array), sizeof(*array));
  image.append(static_cast<const char*>(array->pvData), std::size_t{array->cbElements} * array->rgsabound[0].cElements);
}

// All that an argument is made of, to be compared with what it is made of afterwards.
void append_image(const VARIANT& argument, std::string& image) {
  image.append(reinterpret_cast<const char*>(&argument), sizeof(argument));
  const auto append_text = [&](BSTR text) {
    image.append(reinterpret_cast<const char*>(text), SysStringByteLen(text));
  };
  const VARTYPE type = V_VT(&argument);
  if ((type & VT_BYREF) != 0 && V_BYREF(&argument) == nullptr) return;
  switch (type) {
    case VT_BSTR: append_text(V_BSTR(&argument)); break;
    case VT_BYREF | VT_BSTR:
      image.append(static_cast<const char*>(V_BYREF(&argument)), sizeof(BSTR));
      append_text(*V_BSTRREF(&argument));
      break;
    case VT_BYREF | VT_VARIANT: append_image(*V_VARIANTREF(&argument), image); break;
    case VT_BYREF | VT_DECIMAL: image.append(static_cast<const char*>(V_BYREF(&argument)), sizeof(DECIMAL)); break;
    default:
      if ((type & VT_ARRAY) != 0) {
        append_image((type & VT_BYREF) != 0 ? *V_ARRAYREF(&argument) : V_ARRAY(&argument), image);
      } else if ((type & VT_BYREF) != 0) {
        image.append(static_cast<const char*>(V_BYREF(&argument)), 8);
      }
      break;
  }
}

std::string image_of(const std::vector<VARIANT>& arguments) {
  std::string image;
  for (const VARIANT& argument : arguments) append_image(argument, image);
  return image;
}

// --- calls --------------------------------------------------------------------------------------------------------

// The errors of the operations themselves, and of the host's objects in this program.
bool is_known_error(HRESULT error, DISPID dispid) {
  constexpr DISPID kSetString1 = 0x60030030;
  constexpr DISPID kFileFind = 0x60030031;
  if (dispid == kSetString1 && error == E_OUTOFMEMORY) return true;  // 2,147,483,647 columns
  if (dispid == kFileFind && HRESULT_FACILITY(error) == FACILITY_WIN32) return true;
  constexpr HRESULT kKnown[] = {hresult_of(ErrorNumber::invalid_argument),
                                hresult_of(ErrorNumber::overflow),
                                hresult_of(ErrorNumber::type_mismatch),
                                hresult_of(ErrorNumber::object_not_set),
                                hresult_of(ErrorNumber::object_required),
                                hresult_of(ErrorNumber::no_such_member),
                                dao_error(kNoSuchTable),
                                kInvalidPropertyValue};
  return std::find(std::begin(kKnown), std::end(kKnown), error) != std::end(kKnown);
}

class HostileHost : public ::testing::Test {
 protected:
  void call_at_random(std::uint64_t calls);
  // Makes one call; the seed's next choices say which.
  void call_once();

  Apartment apartment_;
  PublishedObjects published_;
  std::vector<Published> operations_ = published_.all();
  HostObjects host_{published_.find(u"Center").object.Get()};
  RandomChoices choices_{number_from_environment("CORVELLE_SEED", 936)};
  std::map<HRESULT, int> answers_;
  std::set<std::pair<const ClassDescription*, DISPID>> succeeded_;

 private:
  DISPID any_dispid(const Published& called);
  WORD any_flags();
  std::vector<VARIANT> any_arguments(RandomArguments& source, const Operation& operation);
  std::vector<DISPID> any_names(std::size_t arguments);
  void check(DISPID dispid, HRESULT result, const EXCEPINFO* exception, const VARIANT& value);
};

DISPID HostileHost::any_dispid(const Published& called) {
  if (!choices_.once_in(20)) return called.operation->dispid;
  static constexpr DISPID kOthers[] = {DISPID_VALUE, DISPID_UNKNOWN, DISPID_NEWENUM, DISPID_PROPERTYPUT, 1};
  return choices_.once_in(2) ? choices_.one_of(kOthers) : static_cast<DISPID>(0x60030000 + choices_.below(0x60));
}

WORD HostileHost::any_flags() {
  static constexpr WORD kMethods[] = {DISPATCH_METHOD, DISPATCH_METHOD | DISPATCH_PROPERTYGET};
  return choices_.once_in(20) ? static_cast<WORD>(choices_.below(0x10000)) : choices_.one_of(kMethods);
}

std::vector<VARIANT> HostileHost::any_arguments(RandomArguments& source, const Operation& operation) {
  std::size_t count = operation.parameter_count;
  if (choices_.once_in(8)) count = choices_.below(8);
  std::vector<VARIANT> arguments(count);
  const bool wild = choices_.once_in(3);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t place = count - 1 - i;
    const bool fits = place < operation.parameter_count && (!wild || choices_.once_in(2)) && !choices_.once_in(6);
    arguments[i] = fits ? source.fitting(operation.parameters()[place]) : source.any();
  }
  return arguments;
}

// Mostly none; else places that may be right, repeated, negative or far away.
std::vector<DISPID> HostileHost::any_names(std::size_t arguments) {
  if (!choices_.once_in(6)) return {};
  std::vector<DISPID> names(choices_.below(static_cast<std::uint32_t>(arguments + 2)));
  for (DISPID& name : names) {
    name = choices_.once_in(12) ? DISPID_PROPERTYPUT : static_cast<DISPID>(choices_.between(-2, 6));
  }
  return names;
}

void HostileHost::check(DISPID dispid, HRESULT result, const EXCEPINFO* exception, const VARIANT& value) {
  EXPECT_TRUE(is_documented(result)) << std::hex << result;
  EXPECT_TRUE(SUCCEEDED(result) || V_VT(&value) == VT_EMPTY) << "a failure leaves no result";
  ++answers_[result];
  if (exception == nullptr) return;
  if (result != DISP_E_EXCEPTION) {
    EXPECT_EQ(exception->bstrDescription, nullptr);
    return;
  }
  EXPECT_TRUE(is_known_error(exception->scode, dispid)) << std::hex << exception->scode;
  EXPECT_GT(SysStringLen(exception->bstrDescription), 0u);
  EXPECT_GT(SysStringLen(exception->bstrSource), 0u);
  ++answers_[exception->scode];
}

void HostileHost::call_once() {
  const Published& called = choices_.one_of(operations_);
  RandomArguments source(choices_, host_);
  std::vector<VARIANT> arguments = any_arguments(source, *called.operation);
  std::vector<DISPID> names = any_names(arguments.size());
  static constexpr LCID kLocales[] = {0, 0x0400, 0x0800, 0x0804, 0x0409, 0x0407, 0x041F, 0x007F, 0xFFFFFFFF, 0x12345};
  DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                           static_cast<UINT>(names.size())};
  if (choices_.once_in(200)) parameters.rgvarg = nullptr;
  if (choices_.once_in(200)) parameters.rgdispidNamedArgs = nullptr;
  const DISPID dispid = any_dispid(called);
  const WORD flags = any_flags();
  ScopedVariant value;
  EXCEPINFO exception = {};
  UINT wrong_argument = 0;
  const bool wants_exception = !choices_.once_in(6);
  const std::string before = image_of(arguments);
  const HRESULT result = called.object->Invoke(
      dispid, choices_.once_in(200) ? IID_IUnknown : IID_NULL, choices_.one_of(kLocales), flags,
      choices_.once_in(300) ? nullptr : &parameters, choices_.once_in(6) ? nullptr : value.receive(),
      wants_exception ? &exception : nullptr, choices_.once_in(6) ? nullptr : &wrong_argument);
  check(dispid, result, wants_exception ? &exception : nullptr, value.get());
  EXPECT_TRUE(image_of(arguments) == before) << "an argument is changed";
  if (result == S_OK) succeeded_.insert({called.description, dispid});
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  host_.forget_calls();
}

void HostileHost::call_at_random(std::uint64_t calls) {
  for (std::uint64_t call = 0; call < calls && !HasFailure(); ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    call_once();
  }
}

TEST_F(HostileHost, GetsDocumentedAnswersAndLosesNothing) {
  const bool soak = std::getenv("CORVELLE_SOAK") != nullptr;
  const std::uint64_t calls = soak ? 1'000'000 : 20'000;
  call_at_random(500);  // what the system keeps after its first conversions and errors
  const ComponentMemory memory;
  call_at_random(calls);
  const Published set_slot = published_.find(u"ClsVexApp.Set_Str");
  invoke(set_slot.object.Get(), set_slot.operation->dispid, Arguments().text(u""));
  SetErrorInfo(0, nullptr);
  EXPECT_EQ(memory.blocks_in_use(), 0u);
  host_.expect_no_references();
  // Enough of each, or the calls would not be worth making.
  EXPECT_EQ(succeeded_.size(), operations_.size());
  EXPECT_GT(answers_[S_OK], static_cast<int>(calls / 4));
  for (const HRESULT answer :
       {DISP_E_BADPARAMCOUNT, DISP_E_EXCEPTION, DISP_E_MEMBERNOTFOUND, DISP_E_PARAMNOTFOUND, DISP_E_PARAMNOTOPTIONAL,
        DISP_E_TYPEMISMATCH, DISP_E_UNKNOWNINTERFACE, E_INVALIDARG, HRESULT{hresult_of(ErrorNumber::overflow)},
        HRESULT{hresult_of(ErrorNumber::object_not_set)}}) {
    EXPECT_GT(answers_[answer], 10) << std::hex << answer;
  }
}

// --- results without a place ------------------------------------------------------------------------------------

// Arguments of the declared types, objects being Nothing.
void append_plain(const Operation& operation, Arguments& arguments) {
  for (const Parameter& parameter : operation.parameters()) {
    switch (parameter.value_type()) {
      case VT_BSTR: arguments.text(u"1"); break;
      case VT_I2: arguments.int16(1); break;
      case VT_I4: arguments.int32(1); break;
      case VT_DATE: arguments.date(1); break;
      default: {
        VARIANT nothing;
        VariantInit(&nothing);
        V_VT(&nothing) = VT_DISPATCH;
        V_DISPATCH(&nothing) = nullptr;
        arguments.borrowed(nothing);
      }
    }
  }
}

class NullPointers : public ::testing::Test {
 protected:
  static HRESULT call_with_null(const Published& called, std::size_t place) {
    Arguments arguments;
    append_plain(*called.operation, arguments);
    VtableCall call(called, arguments);
    call.pass_null(place);
    return call.run();
  }

  Apartment apartment_;
  PublishedObjects published_;
};

TEST_F(NullPointers, AreRefusedForResultsAndInOutParameters) {
  int refused = 0;
  for (const Published& called : published_.all()) {
    SCOPED_TRACE(utf8(called.operation->name));
    const auto parameters = called.operation->parameters();
    if (called.operation->result != VT_VOID) {
      EXPECT_EQ(call_with_null(called, parameters.size()), E_POINTER);
      ++refused;
    }
    for (std::size_t place = 0; place < parameters.size(); ++place) {
      if (!parameters[place].by_reference()) continue;
      EXPECT_EQ(call_with_null(called, place), E_POINTER);
      ++refused;
    }
  }
  EXPECT_EQ(refused, 36 + 2);
}

TEST_F(NullPointers, AreRefusedByTheStandardInterfaces) {
  const auto object = published_.find(u"Center").object;
  EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(object->GetTypeInfo(0, 0, nullptr), E_POINTER);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr), E_INVALIDARG);
  ComPtr<IProvideClassInfo> provider;
  ASSERT_EQ(object.As(&provider), S_OK);
  EXPECT_EQ(provider->GetClassInfo(nullptr), E_POINTER);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(CoGetClassObject(kClsValidateId, CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&factory)), S_OK);
  EXPECT_EQ(factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

// By reference to nothing: neither the reference nor the VARIANT that it is to lead to is there.
TEST_F(NullPointers, AreATypeMismatchInsideArguments) {
  for (const VARTYPE type : {VT_BSTR, VT_I2, VT_I4, VT_DISPATCH, VT_VARIANT, VT_DECIMAL}) {
    VARIANT nowhere;
    VariantInit(&nowhere);
    V_VT(&nowhere) = static_cast<VARTYPE>(VT_BYREF | type);
    V_BYREF(&nowhere) = nullptr;
    for (const Published& called : published_.all()) {
      if (called.operation->parameter_count == 0) continue;
      Arguments arguments;
      arguments.borrowed(nowhere);
      for (std::size_t i = 1; i < called.operation->required_count; ++i) arguments.borrowed(nowhere);
      const Outcome outcome = invoke(called.object.Get(), called.operation->dispid, arguments);
      EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH) << utf8(called.operation->name);
      EXPECT_EQ(outcome.wrong_argument + 1, arguments.parameters().cArgs) << "the first one";
    }
  }
  VARIANT nowhere;
  VariantInit(&nowhere);
  V_VT(&nowhere) = VT_BYREF | VT_BSTR;
  V_BYREF(&nowhere) = nullptr;
  const Published center = published_.find(u"Center");
  const Outcome outcome =
      invoke(center.object.Get(), center.operation->dispid, Arguments().borrowed(reference_to(&nowhere)));
  EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
}

TEST_F(NullPointers, AreNotWhatAReferenceToAReferenceIs) {
  const Published center = published_.find(u"Center");
  const auto centred = [&](VARIANT argument) {
    return invoke(center.object.Get(), center.operation->dispid, Arguments().borrowed(argument));
  };
  const ScopedBstr spaced(u"a b");
  BSTR pointed_at = spaced.get();
  VARIANT inner = reference_to(&pointed_at);
  VARIANT outer = reference_to(&inner);
  EXPECT_EQ(shown(value_of(centred(reference_to(&outer)).value.get())), shown(text(u"ab")));
  VARIANT endless;
  endless = reference_to(&endless);
  EXPECT_EQ(centred(endless).result, DISP_E_TYPEMISMATCH);
}

}  // namespace
}  // namespace corvelle::testing
