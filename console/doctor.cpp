#include "console/doctor.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "console/self_check.h"
#include "console/texts.h"

namespace corvelle::console {
namespace {

// What a finding is called, and what to do about it.
struct Wording {
  Finding finding;
  Words says;
  Words advice;
};

constexpr Words kNone = {L"", L""};
constexpr Words kRegisterAgain = {
    L"Register it again: run \"corvelle register\" of that bitness as administrator, or \"corvelle register --user\".",
    L"重新注册：以管理员身份运行该位数的 \"corvelle register\"，或者运行 \"corvelle register --user\"。"};
constexpr Words kPutBack = {
    L"Put the file back, or register the DLL where it is now: \"corvelle register\" of that bitness, as administrator.",
    L"放回该文件，或者在 DLL 现在的位置重新注册：以管理员身份运行该位数的 \"corvelle register\"。"};
constexpr Words kNewCopy = {L"Replace the file by an undamaged copy of the same bitness, then register it.",
                            L"用同一位数的完好副本替换该文件，然后注册。"};

constexpr Wording kWordings[] = {
    {Finding::works,
     {L"Works: both classes were created and answered.", L"正常：两个类都能创建，并且回答正确。"},
     kNone},
    {Finding::not_tried,
     {L"Not tried: this program comes without the corvelle.exe of that bitness. Run its own \"corvelle doctor\".",
      L"未试用：本程序没有附带那一位数的 corvelle.exe。请运行那一位数的 \"corvelle doctor\"。"},
     kNone},
    {Finding::not_registered,
     {L"Not registered. Programs of this bitness cannot use it; that is all right where there are none.",
      L"没有注册。这一位数的程序不能使用；如果没有这样的程序，就不必处理。"},
     kNone},
    {Finding::hidden_by_user,
     {L"Another file is registered for everyone, which this user's registration hides: {}",
      L"为所有用户注册的是另一个文件，被当前用户的注册遮住了：{}"},
     kNone},
    {Finding::differs_from_ours,
     {L"It is another version than the one beside this program: {}", L"它与本程序旁边的文件版本不同：{}"},
     kNone},
    {Finding::missing, {L"The component is not registered.", L"组件没有注册。"}, kRegisterAgain},
    {Finding::stale_path,
     {L"The registered path is out of date, its folder is gone: {}", L"注册的路径已经过时，文件夹不存在：{}"},
     kPutBack},
    {Finding::missing_file, {L"The registered file is missing: {}", L"注册的文件不存在：{}"}, kPutBack},
    {Finding::damaged_file,
     {L"The registered file is no DLL, it is damaged or cut off: {}", L"注册的文件不是 DLL，已损坏或不完整：{}"},
     kNewCopy},
    {Finding::wrong_bitness,
     {L"The registered file is of the other bitness: {}", L"注册的文件位数不符：{}"},
     {L"Register the DLL of this bitness in its place; the one for 32-bit programs is in win32, the other in win64.",
      L"改为注册这一位数的 DLL：32 位程序用 win32 中的，64 位程序用 win64 中的。"}},
    {Finding::incomplete,
     {L"The registration is incomplete, this entry is missing or wrong: {}", L"注册不完整，这一项缺失或有误：{}"},
     kRegisterAgain},
    {Finding::damaged_type_library,
     {L"The type library within the file is damaged. Scripts work, hosts that bind early do not: {}",
      L"文件中的类型库已损坏。脚本可用，早期绑定的程序不可用：{}"},
     kNewCopy},
    {Finding::unregistered_type_library,
     {L"The type library is not registered, or its file is missing. Scripts work, hosts that bind early do not. {}",
      L"类型库没有注册，或者文件不存在。脚本可用，早期绑定的程序不可用。{}"},
     kRegisterAgain},
    {Finding::passed_by,
     {L"Registered for this user only, and this program does not use that: it runs as administrator, or under Wine.",
      L"只为当前用户注册，而本程序不使用这种注册：它以管理员身份运行，或者在 Wine 中运行。"},
     {L"Where such programs shall use it, register it for everyone: \"corvelle register\", as administrator.",
      L"如果这样的程序要使用它，请为所有用户注册：以管理员身份运行 \"corvelle register\"。"}},
    {Finding::cannot_create,
     {L"Registered, but it cannot be created. {}", L"已注册，但无法创建。{}"},
     {L"Another program may block the DLL, or what it needs is missing. Replace the file by an undamaged copy.",
      L"可能有其他程序拦截了该 DLL，或者缺少它需要的文件。请用完好的副本替换该文件。"}},
    {Finding::fails,
     {L"Created, but it does not answer as it must. {}", L"能够创建，但回答不正确。{}"},
     {L"The file is of another version or damaged. Replace it by an undamaged copy; \"doctor --full\" shows more.",
      L"文件是其他版本或已损坏。请用完好的副本替换；\"doctor --full\" 显示更多。"}},
};

constexpr Words kProblem = {L"  PROBLEM: {}", L"  问题：{}"};
constexpr Words kAdvice = {L"    What to do: {}", L"    办法：{}"};
constexpr Words kForUser = {L"  Registered for this user: {}", L"  已为当前用户注册：{}"};
constexpr Words kForAll = {L"  Registered for everyone: {}", L"  已为所有用户注册：{}"};
constexpr Words kPrograms32 = {L"32-bit programs", L"32 位程序"};
constexpr Words kPrograms64 = {L"64-bit programs", L"64 位程序"};
constexpr Words kHealthy = {L"No problem was found.", L"没有发现问题。"};
constexpr Words kUnhealthy = {L"Problems found: {}", L"发现的问题：{}"};
constexpr Words kFull = {L"One known case of every operation", L"每个操作的一个已知案例"};

// Whoever registered a path must not speak in the doctor's name, on a line of his own.
std::wstring in_words(const Observation& observation, Language language) {
  const std::wstring text = on_one_line(observation.text);
  if (observation.finding == Finding::registered) {
    return (observation.scope == Scope::user ? kForUser : kForAll).in(language, text);
  }
  const auto* wording = std::find_if(std::begin(kWordings), std::end(kWordings), [&](const Wording& candidate) {
    return candidate.finding == observation.finding;
  });
  const std::wstring filling = FAILED(observation.result) ? explained(observation.result) : text;
  const std::wstring says = wording->says.in(language, filling);
  if (!is_problem(observation.finding)) return L"  " + says;
  return kProblem.in(language, says) + L"\n" + kAdvice.in(language, wording->advice.in(language));
}

void print_section(const std::vector<Observation>& observations, Bitness bitness, Language language,
                   const Streams& streams) {
  bool titled = false;
  for (const Observation& observation : observations) {
    if (observation.bitness != bitness) continue;
    if (!titled) streams.out.print_line((bitness == Bitness::k32 ? kPrograms32 : kPrograms64).in(language));
    titled = true;
    streams.out.print_line(in_words(observation, language));
  }
}

}  // namespace

ExitStatus examine_machine(std::optional<Bitness> only, bool full, Language language, const Streams& streams) {
  const std::vector<Observation> observations = examine(only);
  print_section(observations, Bitness::k32, language, streams);
  print_section(observations, Bitness::k64, language, streams);
  const auto problems = std::count_if(observations.begin(), observations.end(),
                                      [](const Observation& observation) { return is_problem(observation.finding); });
  streams.out.print_line(problems == 0 ? kHealthy.in(language) : kUnhealthy.in(language, std::to_wstring(problems)));
  bool healthy = problems == 0;
  if (full) {
    streams.out.print_line(L"\n" + kFull.in(language));
    healthy = check_known_cases(language, streams) && healthy;
  }
  return healthy ? ExitStatus::ok : ExitStatus::failed;
}

}  // namespace corvelle::console
