#include "console/examination.h"

#include <objbase.h>
#include <wrl/client.h>

#include <algorithm>
#include <utility>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "component/registry.h"
#include "console/creation.h"
#include "console/disk_file.h"
#include "console/dll_file.h"
#include "console/entry_point.h"
#include "console/late_call.h"
#include "console/own_tools.h"
#include "console/place.h"
#include "console/registry_text.h"
#include "console/surroundings.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

REGSAM view_of(Bitness bitness) { return bitness == Bitness::k32 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY; }
const ClassesRoot& root_of(Scope scope) { return scope == Scope::user ? kUserClasses : kMachineClasses; }

bool is_64_bit_windows() {
  SYSTEM_INFO system = {};
  GetNativeSystemInfo(&system);
  return system.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL;
}

// What the system calls an open key, whatever way it was opened.
std::wstring name_of(HKEY key) {
  using QueryKey = LONG(NTAPI*)(HANDLE, int, void*, ULONG, ULONG*);
  constexpr int kKeyNameInformation = 3;
  const auto query = entry_point<QueryKey>(GetModuleHandleW(L"ntdll.dll"), "NtQueryKey");
  struct {
    ULONG bytes;
    wchar_t units[2048];
  } name = {};
  ULONG size = 0;
  if (query == nullptr || query(key, kKeyNameInformation, &name, sizeof(name), &size) < 0) return {};
  return {name.units, name.bytes / sizeof(wchar_t)};
}

// Whether programs of both bitnesses find the same key, as under Wine among a user's classes.
bool shared_by_both(Scope scope, const std::wstring& key) {
  std::wstring names[2];
  for (const Bitness bitness : {Bitness::k32, Bitness::k64}) {
    HKEY opened = nullptr;
    const ClassesRoot& root = root_of(scope);
    if (RegOpenKeyExW(root.key, root.path_of(key).c_str(), 0, KEY_QUERY_VALUE | view_of(bitness), &opened) !=
        ERROR_SUCCESS) {
      return false;
    }
    names[bitness == Bitness::k64] = name_of(opened);
    RegCloseKey(opened);
  }
  return !names[0].empty() && names[0] == names[1];
}

// The file that is registered in one place for a class.
std::optional<std::wstring> registered_file(const ClassDescription& description, Bitness bitness, Scope scope) {
  const std::wstring key(server_key(description));
  auto file = registry_text(root_of(scope), key, L"", view_of(bitness));
  if (!file || !is_64_bit_windows() || !shared_by_both(scope, key)) return file;
  const auto of_file = bitness_of(*file);
  return of_file && *of_file != bitness ? std::nullopt : file;
}

// Examines what programs of one bitness see.
class Examination {
 public:
  Examination(Bitness bitness, std::vector<Observation>& observations)
      : bitness_(bitness), observations_(observations) {}

  // Whether anything is registered.
  bool run() {
    const bool by_user = examine_scope(Scope::user);
    const bool by_machine = examine_scope(Scope::machine);
    if (!by_user && !by_machine) return false;
    if (by_user && by_machine) compare_scopes();
    examine_type_library_entry();
    if (!cannot_work_) create(by_machine);
    return true;
  }

 private:
  void note(Finding finding, Scope scope, std::wstring text = {}, HRESULT result = S_OK) {
    observations_.push_back({finding, bitness_, scope, std::move(text), result});
    if (is_problem(finding) && finding != Finding::damaged_type_library) cannot_work_ = true;
  }

  bool examine_scope(Scope scope) {
    std::vector<std::wstring> files;
    for (const ClassDescription* description : kClasses) {
      const auto file = registered_file(*description, bitness_, scope);
      if (file && std::find(files.begin(), files.end(), *file) == files.end()) files.push_back(*file);
    }
    if (files.empty()) return false;
    for (const std::wstring& file : files) {
      note(Finding::registered, scope, file);
      if (is_full_path(file)) examine_file(file, scope);
    }
    for (const ClassDescription* description : kClasses) examine_entries(*description, scope);
    return true;
  }

  void examine_file(const std::wstring& file, Scope scope) {
    const std::wstring path = as_seen_from_here(file, bitness_);
    if (!exists(path)) {
      note(exists(folder_of(path)) ? Finding::missing_file : Finding::stale_path, scope, file);
      return;
    }
    const auto bitness = bitness_of(path);
    if (!bitness || *bitness != bitness_) {
      note(!bitness ? Finding::damaged_file : Finding::wrong_bitness, scope, file);
      return;
    }
    // Through the other name of a system folder, the system's reader finds no file.
    if (path == file && is_library_damaged(path, scope)) note(Finding::damaged_type_library, scope, file);
    const std::wstring ours = beside_this_program(L"Corvelle.dll");
    if (bitness_ == kOwnBitness && exists(ours) && !same_content(path, ours)) {
      note(Finding::differs_from_ours, scope, ours);
    }
  }

  // Of keys that both bitnesses share, Wine has no 32-bit view; of the others, each bitness has its own.
  std::optional<std::wstring> read(Scope scope, const std::wstring& key, const std::wstring& name) const {
    auto found = registry_text(root_of(scope), key, name, view_of(bitness_));
    return found || key.starts_with(L"CLSID\\") ? found : registry_text(root_of(scope), key, name);
  }

  void expect_value(Scope scope, const std::wstring& key, const std::wstring& name, const std::wstring& value) {
    const auto found = read(scope, key, name);
    if (!found || !same_name(*found, value)) note(Finding::incomplete, scope, key);
  }

  void examine_entries(const ClassDescription& description, Scope scope) {
    const auto file = registered_file(description, bitness_, scope);
    if (!file || !is_full_path(*file)) {
      note(Finding::incomplete, scope, std::wstring(server_key(description)));
      return;
    }
    expect_value(scope, std::wstring(server_key(description)), L"ThreadingModel", L"Apartment");
    expect_value(scope, std::wstring(description.prog_id) + L"\\Clsid", L"",
                 std::wstring(text_of_id(description.class_id)));
  }

  void compare_scopes() {
    const auto of_user = registered_file(kClsValidateClass, bitness_, Scope::user);
    const auto of_machine = registered_file(kClsValidateClass, bitness_, Scope::machine);
    if (of_machine && of_user != of_machine) note(Finding::hidden_by_user, Scope::machine, *of_machine);
  }

  void examine_type_library_entry() {
    const std::wstring key(library_file_key(bitness_ == Bitness::k32 ? L"win32" : L"win64"));
    auto scope = Scope::user;
    auto file = read(scope, key, L"");
    if (!file) {
      scope = Scope::machine;
      file = read(scope, key, L"");
    }
    if (!file || !exists(as_seen_from_here(*file, bitness_))) {
      note(Finding::unregistered_type_library, scope, file.value_or(L""));
    }
  }

  void create(bool by_machine) {
    const auto result = tried();
    if (!result) {
      note(Finding::not_tried, Scope::machine);
    } else if (*result == S_OK) {
      note(Finding::works, Scope::machine);
    } else if (!by_machine && (*result == CO_E_CLASSSTRING || *result == REGDB_E_CLASSNOTREG)) {
      note(Finding::passed_by, Scope::user);
    } else if (SUCCEEDED(*result)) {  // the status of a process that ended before it was done
      note(Finding::fails, Scope::machine, {}, E_UNEXPECTED);
    } else if ((*result & kInCall) != 0) {
      note(Finding::fails, Scope::machine, {}, *result & ~kInCall);
    } else {
      note(Finding::cannot_create, Scope::machine, {}, *result);
    }
  }

  // By another process, which may crash: what is registered may be damaged, or be of others.
  std::optional<HRESULT> tried() const {
    const auto tool = own_tool(bitness_);
    return tool ? result_of_tool(*tool, kTryOut) : std::nullopt;
  }

  // None where a user's file is not to be given to the system's reader, which may trust it.
  static bool is_library_damaged(const std::wstring& file, Scope scope) {
    if (scope == Scope::user && is_elevated()) return false;
    const auto read = result_of_tool(own_path(), kReadLibrary + (L" \"" + file + L"\""));
    return read && *read != S_OK;
  }

  Bitness bitness_;
  std::vector<Observation>& observations_;
  bool cannot_work_ = false;
};

struct Trial {
  const ClassDescription* of_class;
  const wchar_t* operation;
  const wchar_t* argument;
  const wchar_t* expected;
};
constexpr Trial kTrials[] = {
    {&kClsValidateClass, L"Get_StrWidth", L"中a", L"3"},
    {&kClsVexAppClass, L"ConversionStr_Short", L"abc", L"ac"},
};

}  // namespace

std::vector<Observation> examine(std::optional<Bitness> only) {
  std::vector<Observation> observations;
  std::vector<Bitness> bitnesses = {Bitness::k32};
  if (is_64_bit_windows()) bitnesses.push_back(Bitness::k64);
  if (only) bitnesses = {*only};
  std::vector<Bitness> unregistered;
  for (const Bitness bitness : bitnesses) {
    if (!Examination(bitness, observations).run()) unregistered.push_back(bitness);
  }
  const bool none = unregistered.size() == bitnesses.size();
  for (const Bitness bitness : unregistered) {
    observations.push_back({none ? Finding::missing : Finding::not_registered, bitness});
  }
  return observations;
}

HRESULT try_out() {
  for (const Trial& trial : kTrials) {
    ComPtr<IDispatch> object;
    if (const HRESULT created = create(*trial.of_class, &object); FAILED(created)) return created;
    std::vector<ScopedVariant> arguments;
    arguments.push_back(text_variable(trial.argument));
    const Answer answer = call(object.Get(), trial.operation, arguments);
    if (answer.ending != Ending::value) return answer.result | kInCall;
    if (shown(answer.value.get()) != trial.expected) return E_UNEXPECTED | kInCall;
  }
  return S_OK;
}

}  // namespace corvelle::console
