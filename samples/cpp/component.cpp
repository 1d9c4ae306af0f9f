#include "component.h"

void check(HRESULT result) {
  if (SUCCEEDED(result)) return;
  Microsoft::WRL::ComPtr<IErrorInfo> information;
  BSTR description = nullptr;
  if (GetErrorInfo(0, &information) == S_OK) information->GetDescription(&description);
  const _bstr_t owned(description, false);
  throw CallFailed(result, owned.length() == 0 ? L"" : std::wstring(description, owned.length()));
}
