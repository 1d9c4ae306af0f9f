// Calls of the registered component: late bound, early bound, and through the platform's own invoker.
//
//   scripts/wine build/win64-tests/component_bench.exe

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include "bench/ratio_table.h"
#include "component/automation.h"
#include "component/identifiers.h"
#include "component/interfaces.h"

namespace corvelle::bench {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DISPID kGetByte = 0x6003001F;

ComPtr<_ClsValidate> create_validate() {
  ComPtr<_ClsValidate> validate;
  CoCreateInstance(kClsValidateId, nullptr, CLSCTX_INPROC_SERVER, kClsValidateInterfaceId,
                   reinterpret_cast<void**>(validate.GetAddressOf()));
  return validate;
}

// The two arguments of GetByte_Pf, last to first.
struct GetByteArguments {
  explicit GetByteArguments(BSTR text) {
    VariantInit(&values[0]);
    VariantInit(&values[1]);
    V_VT(&values[1]) = VT_BSTR;
    V_BSTR(&values[1]) = text;
    V_VT(&values[0]) = VT_I2;
    V_I2(&values[0]) = 0;
  }
  VARIANT values[2];
  DISPPARAMS parameters = {values, nullptr, 2, 0};
};

void compare_bindings(_ClsValidate* validate) {
  const ScopedBstr text(u"中文 abc");
  GetByteArguments arguments(text.get());
  ComPtr<ITypeInfo> type;
  validate->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type);
  const auto early = [&] {
    SHORT width = 0;
    validate->GetByte_Pf(text.get(), 0, &width);
    keep(width);
  };
  const auto late = [&] {
    VARIANT result;
    VariantInit(&result);
    validate->Invoke(kGetByte, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments.parameters, &result, nullptr,
                     nullptr);
    keep(result);
  };
  const auto platform = [&] {
    VARIANT result;
    VariantInit(&result);
    type->Invoke(validate, kGetByte, DISPATCH_METHOD, &arguments.parameters, &result, nullptr, nullptr);
    keep(result);
  };
  print_ratio("Invoke of GetByte_Pf", "its vtable call", late, early);
  print_ratio("Invoke of GetByte_Pf", "ITypeInfo::Invoke", late, platform);
}

void compare_names(_ClsValidate* validate) {
  ComPtr<ITypeInfo> type;
  validate->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type);
  for (const wchar_t* name : {L"sumByte_Pf", L"getdecimalfmt_bus", L"GetComputerNm"}) {
    auto* names = const_cast<wchar_t*>(name);
    DISPID id = 0;
    char label[64];
    std::snprintf(label, sizeof(label), "GetIDsOfNames of %ls", name);
    print_ratio(
        label, "the type library's own",
        [&] { validate->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id); },
        [&] { type->GetIDsOfNames(&names, 1, &id); });
  }
}

void compare_creation() {
  CLSID dictionary_id = {};
  CLSIDFromProgID(L"Scripting.Dictionary", &dictionary_id);
  const auto create = [](REFCLSID id) {
    ComPtr<IDispatch> object;
    CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(object.GetAddressOf()));
  };
  const auto keeps_loaded = create_validate();
  print_ratio(
      "creating and releasing a ClsValidate", "a Scripting.Dictionary", [&] { create(kClsValidateId); },
      [&] { create(dictionary_id); });
}

}  // namespace
}  // namespace corvelle::bench

int main() {
  CoInitialize(nullptr);
  {
    const auto validate = corvelle::bench::create_validate();
    if (!validate) {
      std::fputs("component_bench: Corvelle.ClsValidate cannot be created; register the DLL\n", stderr);
      return 1;
    }
    corvelle::bench::print_head();
    corvelle::bench::compare_bindings(validate.Get());
    corvelle::bench::compare_names(validate.Get());
    corvelle::bench::compare_creation();
  }
  CoUninitialize();
  return 0;
}
