#include "console/registering.h"

#include <windows.h>

#include "component/registration.h"
#include "component/registry.h"
#include "console/entry_point.h"
#include "console/place.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

constexpr Words kRegisteredForAll = {L"Registered for everyone: {}", L"已为所有用户注册：{}"};
constexpr Words kRegisteredForUser = {L"Registered for this user: {}", L"已为当前用户注册：{}"};
constexpr Words kRemovedForAll = {L"No longer registered for everyone: {}", L"已取消所有用户的注册：{}"};
constexpr Words kRemovedForUser = {L"No longer registered for this user: {}", L"已取消当前用户的注册：{}"};
constexpr Words kNoFile = {L"There is no Corvelle.dll beside this program: {}", L"本程序旁边没有 Corvelle.dll：{}"};
constexpr Words kWrongBitness = {
    L"{} is not of this program's bitness, or is damaged. Use the corvelle.exe that came with it.",
    L"{} 与本程序的位数不同，或者已损坏。请使用与它一起提供的 corvelle.exe。"};
constexpr Words kNotLoaded = {L"Windows cannot load the DLL. {}", L"Windows 无法加载该 DLL。{}"};
constexpr Words kNoRights = {
    L"Registering for everyone needs an administrator's rights, here and for taking it back.\n"
    L"Run this again from a command prompt that was started as administrator, or for this user alone: --user",
    L"为所有用户注册或取消注册需要管理员权限。\n"
    L"请在以管理员身份启动的命令提示符中重新运行，或者只为当前用户操作：--user"};
constexpr Words kFailed = {L"The registry refused that. {}", L"注册表拒绝了该操作。{}"};

// The DLL beside this program, loaded.
class LoadedDll {
 public:
  explicit LoadedDll(const std::wstring& path)
      : module_(LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)),
        error_(module_ == nullptr ? GetLastError() : ERROR_SUCCESS) {}
  ~LoadedDll() {
    if (module_ != nullptr) FreeLibrary(module_);
  }
  LoadedDll(const LoadedDll&) = delete;
  LoadedDll& operator=(const LoadedDll&) = delete;

  DWORD error() const { return error_; }

  // Calls an entry point of self-registration.
  HRESULT call(const char* name) const {
    const auto found = entry_point<HRESULT(STDAPICALLTYPE*)()>(module_, name);
    return found != nullptr ? found() : HRESULT_FROM_WIN32(GetLastError());
  }

 private:
  HMODULE module_;
  DWORD error_;
};

// What differs between registering and taking it back.
struct Action {
  const char* entry_point;
  HRESULT (*for_user)(const wchar_t* file);
  Words done_for_all;
  Words done_for_user;
};

std::wstring why_not_loaded(const std::wstring& path, DWORD error, Language language) {
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return kNoFile.in(language, path);
  if (error == ERROR_BAD_EXE_FORMAT) return kWrongBitness.in(language, path);
  return kNotLoaded.in(language, explained(HRESULT_FROM_WIN32(error)));
}

ExitStatus run(const Action& action, Scope scope, Language language, const Streams& streams) {
  const std::wstring path = beside_this_program(L"Corvelle.dll");
  const LoadedDll dll(path);
  if (dll.error() != ERROR_SUCCESS) {
    streams.error.print_line(why_not_loaded(path, dll.error(), language));
    return ExitStatus::failed;
  }
  const HRESULT result = scope == Scope::machine ? dll.call(action.entry_point) : action.for_user(path.c_str());
  if (FAILED(result)) {
    const bool no_rights = result == E_ACCESSDENIED && scope == Scope::machine;
    streams.error.print_line(no_rights ? kNoRights.in(language) : kFailed.in(language, explained(result)));
    return ExitStatus::failed;
  }
  streams.out.print_line((scope == Scope::machine ? action.done_for_all : action.done_for_user).in(language, path));
  return ExitStatus::ok;
}

}  // namespace

ExitStatus register_component(Scope scope, Language language, const Streams& streams) {
  return run({"DllRegisterServer", &register_for_user, kRegisteredForAll, kRegisteredForUser}, scope, language,
             streams);
}

ExitStatus unregister_component(Scope scope, Language language, const Streams& streams) {
  return run({"DllUnregisterServer", &unregister_for_user, kRemovedForAll, kRemovedForUser}, scope, language, streams);
}

}  // namespace corvelle::console
