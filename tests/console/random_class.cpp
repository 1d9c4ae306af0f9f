// A registered class that answers at random, by the seed in the environment: what no operation does to its arguments
// and results, but nothing that would be a crash of its own.

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>
#include <unknwn.h>

#include <cstdlib>
#include <random>

namespace {

std::mt19937& chance() {
  static const char* const seed = std::getenv("CORVELLE_SEED");
  static std::mt19937 random(seed != nullptr ? static_cast<unsigned>(std::atoi(seed)) : 0);
  return random;
}
unsigned up_to(unsigned most) { return chance()() % (most + 1); }

HRESULT STDAPICALLTYPE fill_in_nothing(EXCEPINFO* /*exception*/) { return E_FAIL; }

void assign_anything(VARIANT* variable) {
  VariantClear(variable);
  V_VT(variable) = up_to(1) == 0 ? VT_EMPTY : VT_I4;
  V_I4(variable) = 7;
}

void use_object(IDispatch* object) {
  VARIANT values[3] = {};
  DISPPARAMS parameters = {values, nullptr, up_to(3), 0};
  VARIANT result = {};
  object->Invoke(static_cast<DISPID>(up_to(2) == 0 ? chance()() : up_to(20)), IID_NULL, 0,
                 up_to(1) == 0 ? DISPATCH_PROPERTYPUT : DISPATCH_PROPERTYGET, &parameters, &result, nullptr, nullptr);
}

class RandomClass : public IClassFactory, public IDispatch {
 public:
  virtual ~RandomClass() = default;

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    *result = interface_id == IID_IClassFactory ? static_cast<void*>(static_cast<IClassFactory*>(this))
                                                : static_cast<IDispatch*>(this);
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP CreateInstance(IUnknown* /*outer*/, REFIID interface_id, void** result) override {
    return QueryInterface(interface_id, result);
  }
  STDMETHODIMP LockServer(BOOL /*lock*/) override { return S_OK; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = chance()();
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** result) override {
    *result = nullptr;
    return up_to(1) == 0 ? S_OK : E_FAIL;
  }
  STDMETHODIMP GetIDsOfNames(REFIID /*interface_id*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                             DISPID* ids) override {
    ids[0] = static_cast<DISPID>(chance()());
    return up_to(5) == 0 ? DISP_E_UNKNOWNNAME : S_OK;
  }
  STDMETHODIMP Invoke(DISPID /*id*/, REFIID /*interface_id*/, LCID /*locale*/, WORD /*flags*/, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) override {
    for (UINT i = 0; i < parameters->cArgs; ++i) {
      VARIANT* variable = V_VARIANTREF(&parameters->rgvarg[i]);
      if (V_VT(variable) == VT_DISPATCH && V_DISPATCH(variable) != nullptr) use_object(V_DISPATCH(variable));
      if (up_to(1) == 0) assign_anything(variable);
    }
    V_VT(result) = static_cast<VARTYPE>(chance()());
    *wrong_argument = up_to(1) == 0 ? up_to(5) : chance()();
    exception->wCode = static_cast<WORD>(chance()());
    exception->scode = up_to(1) == 0 ? S_OK : static_cast<SCODE>(chance()());
    exception->pfnDeferredFillIn = up_to(1) == 0 ? nullptr : &fill_in_nothing;
    const HRESULT results[] = {S_OK, S_FALSE, DISP_E_EXCEPTION, DISP_E_TYPEMISMATCH, DISP_E_BADPARAMCOUNT, E_FAIL};
    return results[up_to(5)];
  }
};

}  // namespace

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID /*class_id*/, REFIID interface_id,
                                                                          void** result) {
  static RandomClass random_class;
  return random_class.QueryInterface(interface_id, result);
}
