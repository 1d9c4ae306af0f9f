// A host in C: the first and the last member of each interface by its table, one by its DISPID.
#include <stdio.h>
#include <wchar.h>

#include "Corvelle.h"

static int failures;

static void expect(int holds, const char* what) {
  printf("%s: %s\n", holds ? "right" : "WRONG", what);
  if (!holds) ++failures;
}

static void* create(const CLSID* class_id, const IID* interface_id) {
  void* object = NULL;
  expect(CoCreateInstance(class_id, NULL, CLSCTX_INPROC_SERVER, interface_id, &object) == S_OK, "an object");
  return object;
}

static void call_by_dispid(_ClsValidate* validate, BSTR text) {
  VARIANT argument;
  VARIANT result;
  DISPPARAMS parameters = {&argument, NULL, 1, 0};
  VariantInit(&result);
  V_VT(&argument) = VT_BSTR;
  V_BSTR(&argument) = text;
  expect(validate->lpVtbl->Invoke(validate, DISPID_ClsValidate_sumByte_Pf, &IID_NULL, 0, DISPATCH_METHOD, &parameters,
                                  &result, NULL, NULL) == S_OK &&
             V_VT(&result) == VT_R8 && V_R8(&result) == 3,
         "sumByte_Pf by its DISPID");
}

static void call_validate(_ClsValidate* validate) {
  BSTR text = SysAllocString(
      L"\x4E2D"
      L"a");
  BSTR name = NULL;
  double width = 0;
  expect(validate->lpVtbl->sumByte_Pf(validate, text, &width) == S_OK && width == 3, "sumByte_Pf");
  expect(validate->lpVtbl->GetComputerNm(validate, &name) == S_OK && SysStringLen(name) > 0, "GetComputerNm");
  call_by_dispid(validate, text);
  SysFreeString(name);
  SysFreeString(text);
  expect(validate->lpVtbl->Release(validate) == 0, "the last reference");
}

static void call_vex_app(_ClsVexApp* vex_app) {
  BSTR text = SysAllocString(L"kept");
  BSTR name = NULL;
  BSTR kept = NULL;
  VARIANT nothing;
  VariantInit(&nothing);
  expect(vex_app->lpVtbl->GetComputerNm(vex_app, &name) == S_OK && SysStringLen(name) > 0, "GetComputerNm");
  expect(vex_app->lpVtbl->Set_Str(vex_app, text, &nothing) == S_OK, "Set_Str");
  expect(vex_app->lpVtbl->Get_Str(vex_app, &kept) == S_OK && wcscmp(kept, text) == 0, "Get_Str");
  VariantClear(&nothing);
  SysFreeString(kept);
  SysFreeString(name);
  SysFreeString(text);
  expect(vex_app->lpVtbl->Release(vex_app) == 0, "the last reference");
}

int main(void) {
  _ClsValidate* validate = NULL;
  _ClsVexApp* vex_app = NULL;
  CoInitialize(NULL);
  validate = (_ClsValidate*)create(&CLSID_ClsValidate, &IID__ClsValidate);
  vex_app = (_ClsVexApp*)create(&CLSID_ClsVexApp, &IID__ClsVexApp);
  if (validate != NULL) call_validate(validate);
  if (vex_app != NULL) call_vex_app(vex_app);
  CoUninitialize();
  return failures == 0 ? 0 : 1;
}
