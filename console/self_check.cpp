#include "console/self_check.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <map>
#include <string_view>

#include "component/class_description.h"
#include "console/creation.h"
#include "console/known_grid.h"
#include "console/late_call.h"
#include "console/place.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

using Microsoft::WRL::ComPtr;

constexpr wchar_t kListResource[] = L"KNOWN_CASES";  // as corvelle_console.rc names it

constexpr Words kPassed = {L"ok    {}", L"通过  {}"};
constexpr Words kFailed = {L"FAIL  {}", L"失败  {}"};
constexpr Words kGives = {L" gives \"{}\"", L" 得到 \"{}\""};
constexpr Words kFails = {L" ends in error {}", L" 以错误 {} 结束"};
constexpr Words kInstead = {L"; here it{}", L"；这里却{}"};
constexpr Words kNotCreated = {L" cannot be created: {}", L" 无法创建：{}"};

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator) {
  std::vector<std::wstring> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::wstring_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

// UTF-16 with a byte order mark and the system's line ends.
std::wstring list_text() {
  const HRSRC place = FindResourceW(nullptr, kListResource, reinterpret_cast<LPCWSTR>(RT_RCDATA));
  const auto* units = static_cast<const wchar_t*>(LockResource(LoadResource(nullptr, place)));
  std::wstring text(units + 1, SizeofResource(nullptr, place) / sizeof(wchar_t) - 1);
  text.erase(std::remove(text.begin(), text.end(), L'\r'), text.end());
  return text;
}

std::wstring computer_name() {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  GetComputerNameW(name, &size);
  return name;
}

// What the list cannot know of a machine.
std::wstring filled_in(std::wstring text) {
  wchar_t decimal_point[8] = {};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, decimal_point, 8);
  const std::pair<std::wstring_view, std::wstring> fillings[] = {
      {L"<.>", decimal_point}, {L"<computer name>", computer_name()}, {L"<this file>", own_path()}};
  for (const auto& [mark, filling] : fillings) {
    if (const std::size_t place = text.find(mark); place != std::wstring::npos) {
      text.replace(place, mark.size(), filling);
    }
  }
  return text;
}

ScopedVariant object_variable(ComPtr<IDispatch> object) {
  ScopedVariant variable;
  V_VT(variable.receive()) = VT_DISPATCH;
  V_DISPATCH(variable.receive()) = object.Detach();
  return variable;
}

ScopedVariant variable_of(const std::wstring& argument, const ComPtr<KnownGrid>& grid) {
  constexpr std::wstring_view kNumber = L"<number ";
  ScopedVariant variable;
  if (argument == L"<Nothing>") return object_variable(nullptr);
  if (argument == L"<grid>") return object_variable(grid);
  if (argument.starts_with(kNumber)) {
    V_VT(variable.receive()) = VT_R8;
    V_R8(variable.receive()) = std::stod(argument.substr(kNumber.size()));
    return variable;
  }
  return text_variable(filled_in(argument));
}

// What a call gave, in words: of a grid, what was done to it.
std::wstring result_of(const KnownCase& known, const Answer& answer, const KnownGrid& grid) {
  const bool takes_grid = std::find(known.arguments.begin(), known.arguments.end(), L"<grid>") != known.arguments.end();
  return takes_grid ? grid.notes() : shown(answer.value.get());
}

// Runs cases on one object of each class: what is stored by one operation is there for the next.
class Checker {
 public:
  explicit Checker(Language language) : language_(language) {}

  // How `known` ended, in words; empty where it ended as it must.
  std::wstring deviation(const KnownCase& known) {
    const auto described = std::find_if(kClasses.begin(), kClasses.end(), [&](const ClassDescription* description) {
      return description->name == known.class_name();
    });
    ComPtr<IDispatch>& object = objects_[known.class_name()];
    if (object == nullptr) {
      if (const HRESULT created = create(**described, &object); FAILED(created)) {
        return kNotCreated.in(language_, explained(created));
      }
    }
    ComPtr<KnownGrid> grid;
    grid.Attach(new KnownGrid);
    std::vector<ScopedVariant> variables;
    for (const std::wstring& argument : known.arguments) variables.push_back(variable_of(argument, grid));
    const Answer answer = call(object.Get(), known.member(), variables);
    const bool gave = answer.ending == Ending::value;
    const std::wstring came = gave ? result_of(known, answer, *grid.Get()) : std::to_wstring(number_of(answer.result));
    if (gave != known.fails && came == filled_in(known.expected)) return {};
    return gave ? kGives.in(language_, came) : kFails.in(language_, came) + L" (" + explained(answer.result) + L")";
  }

 private:
  Language language_;
  std::map<std::wstring, ComPtr<IDispatch>> objects_;
};

// "ClsValidate.Set_String1(中文, 10, 1) gives "      中文""
std::wstring in_words(const KnownCase& known, Language language) {
  std::wstring text = known.operation + L"(";
  for (const std::wstring& argument : known.arguments) {
    if (text.back() != L'(') text += L", ";
    text += argument;
  }
  return text + L")" + (known.fails ? kFails : kGives).in(language, known.expected);
}

}  // namespace

std::vector<KnownCase> known_cases() {
  std::vector<KnownCase> cases;
  for (const std::wstring& line : split(list_text(), L'\n')) {
    if (line.empty() || line.front() == L';') continue;
    std::vector<std::wstring> parts = split(line, L'|');
    cases.push_back({parts.at(0), parts.at(1) == L"fails", parts.at(2), {parts.begin() + 3, parts.end()}});
  }
  return cases;
}

bool check_known_cases(Language language, const Streams& streams) {
  Checker checker(language);
  std::size_t passed = 0;
  const std::vector<KnownCase> cases = known_cases();
  for (const KnownCase& known : cases) {
    const std::wstring deviation = checker.deviation(known);
    const std::wstring text = in_words(known, language);
    if (deviation.empty()) ++passed;
    streams.out.print_line(deviation.empty() ? kPassed.in(language, text)
                                             : kFailed.in(language, text) + kInstead.in(language, deviation));
  }
  const std::wstring failed = std::to_wstring(cases.size() - passed);
  streams.out.print_line(language == Language::chinese
                             ? L"通过 " + std::to_wstring(passed) + L" 个，失败 " + failed + L" 个"
                             : std::to_wstring(passed) + L" passed, " + failed + L" failed");
  return passed == cases.size();
}

}  // namespace corvelle::console
