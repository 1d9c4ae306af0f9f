// What the component takes for granted of automation: calls of the system and nothing else.
#include <windows.h>

#include <gtest/gtest.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <cstring>
#include <string>
#include <thread>

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;

std::wstring content_of(BSTR text) { return {text, SysStringLen(text)}; }

TEST(PlatformText, IsMadeWithoutASourceAndEndsWithANul) {
  for (const UINT length : {1U, 2U, 255U, 32768U, 1000000U}) {
    const BSTR text = SysAllocStringLen(nullptr, length);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(SysStringLen(text), length);
    EXPECT_EQ(text[length], L'\0');
    SysFreeString(text);
  }
}

TEST(PlatformText, IsATextAlsoWithoutACharacter) {
  const BSTR text = SysAllocStringLen(nullptr, 0);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(SysStringLen(text), 0U);
  EXPECT_EQ(text[0], L'\0');
  SysFreeString(text);
}

TEST(PlatformText, CopiesNulsAndEndsBehindThem) {
  const wchar_t units[] = {L'a', L'\0', L'b', L'\0', L'c'};
  const BSTR text = SysAllocStringLen(units, 4);
  EXPECT_EQ(content_of(text), std::wstring(units, 4));
  EXPECT_EQ(text[4], L'\0');
  SysFreeString(text);
}

TEST(PlatformText, IsNoneForNull) {
  EXPECT_EQ(SysStringLen(nullptr), 0U);
  SysFreeString(nullptr);
}

TEST(PlatformText, KeepsItsBeginningWhenItIsItsOwnSource) {
  for (const UINT length : {0U, 1U, 100U, 99999U, 100000U}) {
    const std::wstring before(100000, L'中');
    BSTR text = SysAllocStringLen(before.data(), static_cast<UINT>(before.size()));
    ASSERT_TRUE(SysReAllocStringLen(&text, text, length));
    EXPECT_EQ(content_of(text), before.substr(0, length));
    EXPECT_EQ(text[length], L'\0');
    SysFreeString(text);
  }
}

TEST(PlatformText, ChangesCaseOneToOneAndInPlace) {
  std::wstring text = L"aZ\u00E9\u00DF\uFB01\u0131i1\u4E2D";  // é ß ﬁ ı, and a Chinese character
  EXPECT_EQ(CharUpperBuffW(text.data(), static_cast<DWORD>(text.size())), text.size());
  EXPECT_EQ(text.substr(0, 5), L"AZ\u00C9\u00DF\uFB01");
  EXPECT_EQ(text.substr(6), L"I1\u4E2D");
}

// An object that has its default property alone, and counts who holds it.
class Property final : public IDispatch {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    if (id != IID_IUnknown && id != IID_IDispatch) return *result = nullptr, E_NOINTERFACE;
    *result = this;
    ++references;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  STDMETHODIMP GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*result*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID /*id*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                             DISPID* /*ids*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID /*interface_id*/, LCID /*locale*/, WORD flags, DISPPARAMS* /*parameters*/,
                      VARIANT* result, EXCEPINFO* /*exception*/, UINT* /*wrong*/) override {
    if (id != DISPID_VALUE || (flags & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    V_VT(result) = VT_I4;
    V_I4(result) = 42;
    return S_OK;
  }

  ULONG references = 1;
};

VARIANT text_variant(const wchar_t* content) {
  VARIANT value;
  V_VT(&value) = VT_BSTR;
  V_BSTR(&value) = SysAllocString(content);
  return value;
}

VARIANT reference_to(VARIANT& value) {
  VARIANT reference;
  V_VT(&reference) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&reference) = &value;
  return reference;
}

// What is not there is what nobody may rely on before Windows 8: more than the type.
TEST(PlatformVariant, IsEmptyOnceInitialised) {
  VARIANT value;
  std::memset(&value, 0xCC, sizeof(value));
  VariantInit(&value);
  EXPECT_EQ(V_VT(&value), VT_EMPTY);
}

TEST(PlatformVariant, IsEmptyOnceCleared) {
  Property object;
  VARIANT values[3] = {text_variant(L"text"), {}, {}};
  V_VT(&values[1]) = VT_DISPATCH;
  V_DISPATCH(&values[1]) = &object;
  object.AddRef();
  for (VARIANT& value : values) {
    EXPECT_EQ(VariantClear(&value), S_OK);
    EXPECT_EQ(V_VT(&value), VT_EMPTY);
  }
  EXPECT_EQ(object.references, 1U);
}

TEST(PlatformVariant, IsCopiedFromEveryKindOfReference) {
  SHORT int16 = -5;
  LONG int32 = 70000;
  double number = 2.5;
  VARIANT_BOOL truth = VARIANT_TRUE;
  const struct {
    VARTYPE type;
    void* place;
    std::size_t size;
  } kinds[] = {{VT_I2, &int16, sizeof(int16)},
               {VT_I4, &int32, sizeof(int32)},
               {VT_R8, &number, sizeof(number)},
               {VT_DATE, &number, sizeof(number)},
               {VT_BOOL, &truth, sizeof(truth)}};
  for (const auto& kind : kinds) {
    VARIANT reference = {};
    V_VT(&reference) = static_cast<VARTYPE>(kind.type | VT_BYREF);
    V_BYREF(&reference) = kind.place;
    VARIANT outer = reference_to(reference);
    for (VARIANT* source : {&reference, &outer}) {
      VARIANT copy = {};
      ASSERT_EQ(VariantCopyInd(&copy, source), S_OK) << kind.type;
      EXPECT_EQ(V_VT(&copy), kind.type);
      EXPECT_EQ(std::memcmp(&V_NONE(&copy), kind.place, kind.size), 0) << kind.type;
    }
  }
}

TEST(PlatformVariant, IsCopiedFromAReferenceAsAnOwnText) {
  VARIANT text = text_variant(L"一个 text");
  VARIANT reference = {};
  V_VT(&reference) = VT_BYREF | VT_BSTR;
  V_BSTRREF(&reference) = &V_BSTR(&text);
  VARIANT outer = reference_to(text);
  for (VARIANT* source : {&reference, &outer}) {
    VARIANT copy = {};
    ASSERT_EQ(VariantCopyInd(&copy, source), S_OK);
    ASSERT_EQ(V_VT(&copy), VT_BSTR);
    EXPECT_NE(V_BSTR(&copy), V_BSTR(&text));
    EXPECT_EQ(content_of(V_BSTR(&copy)), L"一个 text");
    VariantClear(&copy);
  }
  VariantClear(&text);
}

TEST(PlatformVariant, IsCopiedFromAReferenceAsAHeldObject) {
  Property object;
  IDispatch* pointer = &object;
  VARIANT reference = {};
  V_VT(&reference) = VT_BYREF | VT_DISPATCH;
  V_DISPATCHREF(&reference) = &pointer;
  VARIANT copy = {};
  ASSERT_EQ(VariantCopyInd(&copy, &reference), S_OK);
  EXPECT_EQ(V_VT(&copy), VT_DISPATCH);
  EXPECT_EQ(object.references, 2U);
  VariantClear(&copy);
  EXPECT_EQ(object.references, 1U);
}

TEST(PlatformConversion, TakesAnObjectsDefaultProperty) {
  Property object;
  VARIANT value = {};
  V_VT(&value) = VT_DISPATCH;
  V_DISPATCH(&value) = &object;
  VARIANT number = {};
  ASSERT_EQ(VariantChangeTypeEx(&number, &value, LOCALE_INVARIANT, 0, VT_I2), S_OK);
  EXPECT_EQ(V_VT(&number), VT_I2);
  EXPECT_EQ(V_I2(&number), 42);
  EXPECT_EQ(object.references, 1U);
}

TEST(PlatformConversion, FollowsReferencesAndLeavesTheSourceAlone) {
  VARIANT text = text_variant(L"17");
  VARIANT reference = {};
  V_VT(&reference) = VT_BYREF | VT_BSTR;
  V_BSTRREF(&reference) = &V_BSTR(&text);
  for (VARIANT* source : {&text, &reference}) {
    VARIANT number = {};
    ASSERT_EQ(VariantChangeTypeEx(&number, source, LOCALE_INVARIANT, 0, VT_R8), S_OK);
    EXPECT_EQ(V_R8(&number), 17);
  }
  EXPECT_EQ(content_of(V_BSTR(&text)), L"17");
  VariantClear(&text);
}

TEST(PlatformConversion, LeavesItsResultAloneWhereItFails) {
  VARIANT text = text_variant(L"seven");
  VARIANT number = {};
  V_VT(&number) = VT_R8;
  V_R8(&number) = 1.5;
  EXPECT_EQ(VariantChangeTypeEx(&number, &text, LOCALE_INVARIANT, 0, VT_I2), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(V_VT(&number), VT_R8);
  EXPECT_EQ(V_R8(&number), 1.5);
  VariantClear(&text);
}

TEST(PlatformConversion, RefusesWhatIsTooLarge) {
  VARIANT large = {};
  V_VT(&large) = VT_I4;
  V_I4(&large) = 70000;
  VARIANT number = {};
  EXPECT_EQ(VariantChangeTypeEx(&number, &large, LOCALE_INVARIANT, 0, VT_I2), DISP_E_OVERFLOW);
}

TEST(PlatformConversion, RoundsHalvesToEven) {
  for (const auto& [from, to] : {std::pair(2.5, 2), {3.5, 4}, {-2.5, -2}}) {
    VARIANT fraction = {};
    V_VT(&fraction) = VT_R8;
    V_R8(&fraction) = from;
    VARIANT number = {};
    ASSERT_EQ(VariantChangeTypeEx(&number, &fraction, LOCALE_INVARIANT, 0, VT_I2), S_OK);
    EXPECT_EQ(V_I2(&number), to) << from;
  }
}

// The separators are those of the locale that is given, where that is not the user's own.
TEST(PlatformConversion, WritesNumbersByTheLocaleThatIsGiven) {
  VARIANT number = {};
  V_VT(&number) = VT_R8;
  V_R8(&number) = 2.5;
  const LCID german = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT);
  VARIANT text = {};
  ASSERT_EQ(VariantChangeTypeEx(&text, &number, german, 0, VT_BSTR), S_OK);
  EXPECT_EQ(content_of(V_BSTR(&text)), L"2,5");
  VariantClear(&text);
}

// An error object with a description and a source.
ComPtr<IErrorInfo> error_about(const std::wstring& description) {
  ComPtr<ICreateErrorInfo> information;
  EXPECT_EQ(CreateErrorInfo(&information), S_OK);
  std::wstring text = description;
  std::wstring source = L"Source";
  EXPECT_EQ(information->SetDescription(text.data()), S_OK);
  EXPECT_EQ(information->SetSource(source.data()), S_OK);
  EXPECT_EQ(information->SetGUID(IID_IDispatch), S_OK);
  text.assign(text.size(), L'x');  // the object has copies
  source.assign(source.size(), L'x');
  ComPtr<IErrorInfo> error;
  EXPECT_EQ(information.As(&error), S_OK);
  return error;
}

TEST(PlatformError, KeepsCopiesOfItsTexts) {
  const auto error = error_about(L"中文 description");
  BSTR text = nullptr;
  ASSERT_EQ(error->GetDescription(&text), S_OK);
  EXPECT_EQ(content_of(text), L"中文 description");
  SysFreeString(text);
  ASSERT_EQ(error->GetSource(&text), S_OK);
  EXPECT_EQ(content_of(text), L"Source");
  SysFreeString(text);
  GUID id = {};
  ASSERT_EQ(error->GetGUID(&id), S_OK);
  EXPECT_EQ(id, IID_IDispatch);
}

TEST(PlatformError, IsTakenOnce) {
  const auto error = error_about(L"once");
  ASSERT_EQ(SetErrorInfo(0, error.Get()), S_OK);
  ComPtr<IErrorInfo> taken;
  ASSERT_EQ(GetErrorInfo(0, &taken), S_OK);
  EXPECT_EQ(taken.Get(), error.Get());
  ComPtr<IErrorInfo> again;
  EXPECT_EQ(GetErrorInfo(0, &again), S_FALSE);
  EXPECT_EQ(again.Get(), nullptr);
}

TEST(PlatformError, TakesThePlaceOfAnEarlierOne) {
  SetErrorInfo(0, error_about(L"earlier").Get());
  const auto later = error_about(L"later");
  SetErrorInfo(0, later.Get());
  ComPtr<IErrorInfo> taken;
  ASSERT_EQ(GetErrorInfo(0, &taken), S_OK);
  EXPECT_EQ(taken.Get(), later.Get());
}

TEST(PlatformError, IsItsThreadsAlone) {
  SetErrorInfo(0, error_about(L"of this thread").Get());
  HRESULT elsewhere = E_UNEXPECTED;
  std::thread([&] {
    ComPtr<IErrorInfo> taken;
    elsewhere = GetErrorInfo(0, &taken);
  }).join();
  EXPECT_EQ(elsewhere, S_FALSE);
  ComPtr<IErrorInfo> taken;
  EXPECT_EQ(GetErrorInfo(0, &taken), S_OK);
}

// The header of automation's own tells the functions to be in one library, the compiler's import libraries take them
// from another. Both have to have them, and the same ones.
TEST(PlatformError, IsOneInBothLibrariesOfAutomation) {
  using Get = HRESULT(WINAPI*)(ULONG, IErrorInfo**);
  using Set = HRESULT(WINAPI*)(ULONG, IErrorInfo*);
  const auto function_of = [](const wchar_t* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name));
  };
  const auto set = reinterpret_cast<Set>(function_of(L"ole32.dll", "SetErrorInfo"));
  const auto get = reinterpret_cast<Get>(function_of(L"oleaut32.dll", "GetErrorInfo"));
  ASSERT_NE(set, nullptr);
  ASSERT_NE(get, nullptr);
  EXPECT_NE(function_of(L"ole32.dll", "CreateErrorInfo"), nullptr);
  const auto error = error_about(L"by the one");
  set(0, error.Get());
  ComPtr<IErrorInfo> taken;
  ASSERT_EQ(get(0, &taken), S_OK);
  EXPECT_EQ(taken.Get(), error.Get());
}

TEST(PlatformId, IsWrittenInUpperCaseAndBraces) {
  wchar_t text[39] = {};
  const GUID id = {0x6dbcfeeb, 0x0be1, 0x4771, {0xaa, 0x41, 0x83, 0xe9, 0x3b, 0x90, 0xb9, 0xa9}};
  EXPECT_EQ(StringFromGUID2(id, text, 39), 39);
  EXPECT_STREQ(text, L"{6DBCFEEB-0BE1-4771-AA41-83E93B90B9A9}");
}

TEST(PlatformTypeLibrary, ThatIsNotThereIsAnError) {
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadTypeLibEx(L"C:\\no such folder\\no library.dll", REGKIND_NONE, &library), TYPE_E_CANTLOADLIBRARY);
  EXPECT_EQ(library.Get(), nullptr);
}

}  // namespace
}  // namespace corvelle::testing
