// A module that somebody put where another was looked for. It leaves a file beside itself when it is loaded or run.

#include <windows.h>

#include <string>

namespace {

struct Mark {
  Mark() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(this), &module);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(module, path, MAX_PATH);
    CloseHandle(
        CreateFileW((std::wstring(path) + L".ran").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  }
};
const Mark mark;

}  // namespace

#ifdef CORVELLE_PLANTED_PROGRAM
int main() { return 0; }
#else
extern "C" __declspec(dllexport) HRESULT planted_function() { return E_FAIL; }
#endif
