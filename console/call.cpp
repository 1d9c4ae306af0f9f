#include "console/call.h"

#include <windows.h>

#include <algorithm>

#include "component/class_description.h"
#include "console/creation.h"
#include "console/late_call.h"
#include "console/list.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

constexpr std::wstring_view kLibraryPrefix = L"Corvelle.";

// The class and the operation that a person wrote, with or without the library in front.
struct OperationName {
  const ClassDescription* of_class = nullptr;
  std::wstring operation;
};

OperationName parsed(std::wstring_view written) {
  if (same_name(written.substr(0, kLibraryPrefix.size()), kLibraryPrefix)) written.remove_prefix(kLibraryPrefix.size());
  const std::size_t point = written.find(L'.');
  if (point == std::wstring_view::npos) return {};
  const auto found = std::find_if(kClasses.begin(), kClasses.end(), [&](const ClassDescription* description) {
    return same_name(description->name, written.substr(0, point));
  });
  return {found != kClasses.end() ? *found : nullptr, std::wstring(written.substr(point + 1))};
}

// Automation's own refusals, which the system has no words for everywhere.
std::wstring refusal(const Answer& answer) {
  const auto wrong = answer.wrong_argument;
  switch (number_of(answer.result)) {
    case 13:
      return (wrong ? L"argument " + std::to_wstring(*wrong + 1) : L"an argument") + L" does not fit its parameter";
    case 438: return L"the class has no such operation";
    case 450: return L"too few or too many arguments";
    default: return system_text(answer.result);
  }
}

// "error 6 (0x800A0006) of Corvelle.ClsValidate: GetByte_Pf: …"
std::wstring error_line(const Answer& answer, const std::wstring& description) {
  const int number = number_of(answer.result);
  std::wstring line = L"error ";
  line +=
      number != 0 ? std::to_wstring(number) + L" (" + hexadecimal(answer.result) + L")" : hexadecimal(answer.result);
  if (!answer.source.empty()) line += L" of " + answer.source;
  return line + L": " + description;
}

ExitStatus report(const Answer& answer, const std::vector<ScopedVariant>& arguments, const std::wstring& signature,
                  const Streams& streams) {
  if (answer.ending == Ending::refused) {
    streams.error.print_line(error_line(answer, refusal(answer)));
    streams.error.print_line(signature.empty() ? L"\"corvelle list\" shows all operations." : L"It is " + signature);
    return ExitStatus::usage;
  }
  if (answer.ending == Ending::error) {
    streams.error.print_line(error_line(answer, answer.description));
    return ExitStatus::failed;
  }
  if (V_VT(&answer.value.get()) != VT_EMPTY) streams.out.print_line(shown(answer.value.get()));
  for (const std::size_t i : answer.changed) {
    streams.out.print_line(L"argument " + std::to_wstring(i + 1) + L" is now: " + shown(arguments[i].get()));
  }
  return ExitStatus::ok;
}

}  // namespace

ExitStatus call_operation(const std::wstring& operation, const std::vector<std::wstring>& arguments,
                          const Streams& streams) {
  const OperationName name = parsed(operation);
  if (name.of_class == nullptr) {
    streams.error.print_line(L"\"" + operation +
                             L"\" names no operation. Write class and operation: ClsValidate.Set_String1");
    return ExitStatus::usage;
  }
  Microsoft::WRL::ComPtr<IDispatch> object;
  if (const HRESULT created = create(*name.of_class, &object); FAILED(created)) {
    streams.error.print_line(std::wstring(name.of_class->prog_id) + L" cannot be created. " + explained(created) +
                             L"\n\"corvelle doctor\" says what is wrong.");
    return ExitStatus::not_created;
  }
  std::vector<ScopedVariant> variables;
  for (const std::wstring& argument : arguments) variables.push_back(text_variable(argument));
  const Answer answer = call(object.Get(), name.operation, variables);
  return report(answer, variables, signature_of(object.Get(), name.operation), streams);
}

}  // namespace corvelle::console
