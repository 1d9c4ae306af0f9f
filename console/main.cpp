// console/main.cpp - corvelle.exe: the component from a command prompt. The sub-commands are functions of their own;
// here is what a person may type.

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <exception>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "console/call.h"
#include "console/doctor.h"
#include "console/examination.h"
#include "console/language.h"
#include "console/list.h"
#include "console/output.h"
#include "console/own_tools.h"
#include "console/registering.h"
#include "console/surroundings.h"
#include "console/texts.h"
#include "console/type_library.h"

namespace corvelle::console {
namespace {

constexpr char kDescription[] = "Calls, lists, registers and examines the automation component Corvelle.";
constexpr char kStatuses[] =
    "Exit status: 0 all went well, 1 the operation or command failed, 2 it was called wrongly and did not run,\n"
    "3 the component cannot be created.";
constexpr char kCallDescription[] =
    "Call an operation, late bound as from a script: corvelle call ClsValidate.Set_String1 TEXT 10 1\n"
    "Arguments are converted to what the operation declares; those that may be left out are, from the end.\n"
    "Everything behind the operation's name is an argument, also what begins with a hyphen.";

using Arguments = std::vector<std::wstring>;

// Behind the program's own name.
Arguments command_line() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  Arguments result;
  for (int i = 1; arguments != nullptr && i < count; ++i) result.emplace_back(arguments[i]);
  LocalFree(arguments);
  return result;
}

// Of what a person may type, what was.
struct Choices {
  bool for_user = false;
  bool full = false;
  std::string bitness;
  std::string language;

  Scope scope() const { return for_user ? Scope::user : Scope::machine; }
  Language spoken() const {
    if (language.empty()) return user_language();
    return language == "zh" ? Language::chinese : Language::english;
  }
  std::optional<Bitness> examined() const {
    if (bitness.empty()) return {};
    return bitness == "32" ? Bitness::k32 : Bitness::k64;
  }
};

CLI::App* add_command(CLI::App& app, const char* name, const char* description) {
  CLI::App* command = app.add_subcommand(name, description);
  command->footer(kStatuses);
  return command;
}

void add_language(CLI::App* command, Choices& choices) {
  command->add_option("--language", choices.language, "the language to speak, zh or en (default: that of Windows)")
      ->check(CLI::IsMember({"zh", "en"}));
}

CLI::App* add_registering(CLI::App& app, const char* name, const char* description, Choices& choices) {
  CLI::App* command = add_command(app, name, description);
  command->add_flag("--user", choices.for_user, "for this user only; needs no administrator's rights");
  add_language(command, choices);
  return command;
}

CLI::App* add_doctor(CLI::App& app, Choices& choices) {
  CLI::App* command = add_command(app, "doctor",
                                  "Say what is wrong with the component on this machine, for programs of both "
                                  "bitnesses, and what to do about it. Status 0 says that nothing is.");
  command->add_flag("--full", choices.full, "run one known case of every operation, too");
  command->add_option("--bitness", choices.bitness, "only what programs of this bitness see, where it has to work")
      ->check(CLI::IsMember({"32", "64"}));
  add_language(command, choices);
  return command;
}

// Takes the words as they were typed: what is no text, a lone half of a character say, the parser's UTF-8 has lost.
ExitStatus run_call(const CLI::App& command, const Arguments& typed, const Streams& streams) {
  const Arguments words(typed.end() - static_cast<std::ptrdiff_t>(command.remaining_size()), typed.end());
  if (words.empty()) {
    streams.error.print_line(L"Which operation? corvelle call ClsValidate.Set_String1 TEXT 10 1");
    return ExitStatus::usage;
  }
  return call_operation(words.front(), {words.begin() + 1, words.end()}, streams);
}

ExitStatus run(const Arguments& typed, const Streams& streams) {
  CLI::App app(kDescription, "corvelle");
  app.footer(kStatuses);
  app.require_subcommand(1);
  Choices choices;
  CLI::App* call = add_command(app, "call", kCallDescription)->prefix_command();
  CLI::App* list = add_command(app, "list", "List every operation with its parameters, from the type library.");
  CLI::App* add = add_registering(app, "register", "Register the Corvelle.dll beside this program.", choices);
  CLI::App* remove = add_registering(app, "unregister", "Take the registration of that DLL back.", choices);
  CLI::App* doctor = add_doctor(app, choices);
  std::vector<std::string> arguments;  // as the parser wants them: in UTF-8, the last one first
  for (auto argument = typed.rbegin(); argument != typed.rend(); ++argument) arguments.push_back(utf8(*argument));
  try {
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    std::ostringstream out;
    std::ostringstream wrong;
    const int status = app.exit(error, out, wrong);
    streams.out.print(wide(out.str()));
    streams.error.print(wide(wrong.str()));
    return status == 0 ? ExitStatus::ok : ExitStatus::usage;
  }
  if (call->parsed()) return run_call(*call, typed, streams);
  if (list->parsed()) return list_operations(streams);
  if (doctor->parsed()) return examine_machine(choices.examined(), choices.full, choices.spoken(), streams);
  if (add->parsed()) return register_component(choices.scope(), choices.spoken(), streams);
  return remove->parsed() ? unregister_component(choices.scope(), choices.spoken(), streams) : ExitStatus::usage;
}

// What the doctor has another run of the tool do, which ends with the result; none for what a person typed.
std::optional<HRESULT> done_for_doctor(const Arguments& typed) {
  const bool reads = typed.size() == 2 && typed[0] == kReadLibrary;
  if (!reads && typed != Arguments{kTryOut}) return {};
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX | SEM_NOGPFAULTERRORBOX);  // a crash is an answer, too
  return reads ? read_library(typed[1]) : try_out();
}

// Of an exception that nobody catches, want of memory mostly. There may be none left to say so in.
[[noreturn]] void end_badly() {
  constexpr char kText[] = "corvelle had to end: there is not enough memory, or something unforeseen happened.\r\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), kText, sizeof(kText) - 1, &written, nullptr);
  std::_Exit(static_cast<int>(ExitStatus::failed));
}

}  // namespace
}  // namespace corvelle::console

int main() {
  using namespace corvelle::console;
  std::set_terminate(end_badly);
  take_modules_from_system_only();
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);  // no box that waits for somebody
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const Arguments typed = command_line();
  const auto result = done_for_doctor(typed);
  const int status = result ? static_cast<int>(*result) : static_cast<int>(run(typed, Streams()));
  CoUninitialize();
  return status;
}
