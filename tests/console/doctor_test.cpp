// corvelle doctor: every finding is provoked for real, and recognised in both languages.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "console/place.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/console/files.h"
#include "tests/console/tool.h"
#include "tests/support/component_file.h"
#include "tests/support/utf8.h"

namespace corvelle::testing {
namespace {

using namespace std::string_view_literals;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

const std::wstring kOwnBits = kOwnBitness == Bitness::k32 ? L"32" : L"64";
const std::wstring kOtherBits = kOwnBitness == Bitness::k32 ? L"64" : L"32";

std::string utf8_of(const std::wstring& text) { return utf8(reinterpret_cast<const char16_t*>(text.c_str())); }

// Overwrites `found` by as many bytes of `wanted`, everywhere in the file.
void patch(const std::wstring& path, std::string_view found, std::string_view wanted) {
  std::string bytes = content_of(path);
  std::size_t times = 0;
  for (std::size_t place = bytes.find(found); place != std::string::npos; place = bytes.find(found, place + 1)) {
    bytes.replace(place, wanted.size(), wanted);
    ++times;
  }
  ASSERT_GT(times, 0u);
  write(path, bytes);
}

// The operation that the doctor tries has another name in this file.
void break_calls(const std::wstring& path) { patch(path, "G\0e\0t\0_\0S\0t\0r\0W\0i\0d\0t\0h\0"sv, "X\0e\0t\0_\0"sv); }

// Every run of the tool takes its time, so the 32-bit tests listen to Chinese and the 64-bit ones to English; in the
// long form of the tests, both listen to both.
bool listens_to(const std::wstring& language) {
  return std::getenv("CORVELLE_SOAK") != nullptr || (language == L"zh") == (kOwnBitness == Bitness::k32);
}

std::string_view bytes_of(const GUID& id) { return {reinterpret_cast<const char*>(&id), sizeof(id)}; }

class Doctor : public CleanMachine {
 protected:
  // As regsvr32 does, but without the time that it takes where it is not needed.
  static void add(const std::wstring& dll, Bitness bitness) {
    if (bitness == kOwnBitness) {
      ASSERT_EQ(ComponentFile(dll).register_server(), S_OK);
    } else {
      ASSERT_EQ(regsvr32(bitness, dll), 0u);
    }
  }
  static void add_built(Bitness bitness = kOwnBitness) { add(built_dll(bitness), bitness); }
  void add_copy(Bitness bitness = kOwnBitness) {
    copy_.emplace(L"corvelle doctor 诊断", bitness);
    add(copy_->path(), bitness);
  }

  static ToolRun doctor(std::vector<std::wstring> options) {
    options.insert(options.begin(), L"doctor");
    return run_tool(options);
  }

  // The problem is named, with an advice.
  void expect_problem(const std::string& english, const std::string& chinese,
                      const std::vector<std::wstring>& options = {L"--bitness", kOwnBits}) const {
    expect_said(L"en", options, 1u, AllOf(HasSubstr("PROBLEM: " + english), HasSubstr("    What to do: ")));
    expect_said(L"zh", options, 1u, AllOf(HasSubstr("问题：" + chinese), HasSubstr("    办法：")));
  }
  void expect_remark(const std::string& english, const std::string& chinese,
                     const std::vector<std::wstring>& options) const {
    expect_said(L"en", options, 0u, AllOf(HasSubstr("\n  " + english), HasSubstr("No problem was found.")));
    expect_said(L"zh", options, 0u, AllOf(HasSubstr("\n  " + chinese), HasSubstr("没有发现问题。")));
  }

  std::string copy_path() const { return utf8_of(copy_->path()); }

  std::optional<CopyOfDll> copy_;

 private:
  static void expect_said(const std::wstring& language, std::vector<std::wstring> options, DWORD status,
                          const ::testing::Matcher<std::string>& wanted) {
    if (!listens_to(language)) return;
    options.insert(options.end(), {L"--language", language});
    const ToolRun run = doctor(options);
    EXPECT_EQ(run.status, status) << run.out;
    EXPECT_THAT(run.out, wanted);
    EXPECT_EQ(run.error, "");
  }
};

TEST_F(Doctor, FindsNothingRegistered) {
  expect_problem("The component is not registered.", "组件没有注册。", {});
  expect_problem("The component is not registered.", "组件没有注册。");
}

TEST_F(Doctor, FindsItWell) {
  add_built();
  const std::string path = utf8_of(built_dll(kOwnBitness));
  expect_remark("Registered for everyone: " + path + "\n  Works", "已为所有用户注册：" + path + "\n  正常",
                {L"--bitness", kOwnBits});
}

TEST_F(Doctor, FindsOneBitnessRegisteredAndDemandsBothOnlyWhereAsked) {
  add_built();
  expect_remark("Not registered. Programs of this bitness", "没有注册。这一位数的程序", {});
  expect_problem("The component is not registered.", "组件没有注册。", {L"--bitness", kOtherBits});
}

TEST_F(Doctor, TriesTheOtherBitnessByItsOwnTool) {
  add_built(kOtherBitness);
  expect_remark("Works", "正常", {L"--bitness", kOtherBits});
}

// A tool that came alone.
TEST_F(Doctor, SaysThatItCouldNotTryTheOtherBitness) {
  add_copy(kOtherBitness);
  const std::wstring alone = console::folder_of(copy_->path()) + L"corvelle alone.exe";
  ASSERT_TRUE(CopyFileW(built_tool().c_str(), alone.c_str(), FALSE));
  const ToolRun run = run_tool({L"doctor", L"--bitness", kOtherBits, L"--language", L"en"}, alone);
  EXPECT_EQ(run.status, 0u);
  EXPECT_THAT(run.out, HasSubstr("\n  Not tried"));
  DeleteFileW(alone.c_str());
}

TEST_F(Doctor, FindsAStalePath) {
  add_copy();
  const std::string path = copy_path();
  copy_.reset();
  expect_problem("The registered path is out of date, its folder is gone: " + path,
                 "注册的路径已经过时，文件夹不存在：" + path);
}

TEST_F(Doctor, FindsAMissingFile) {
  add_copy();
  DeleteFileW(copy_->path().c_str());
  expect_problem("The registered file is missing: " + copy_path(), "注册的文件不存在：" + copy_path());
}

TEST_F(Doctor, FindsADamagedFile) {
  add_copy();
  write(copy_->path(), content_of(copy_->path()).substr(0, 100));
  expect_problem("The registered file is no DLL", "注册的文件不是 DLL");
}

TEST_F(Doctor, FindsTheWrongBitness) {
  add_copy();
  write(copy_->path(), content_of(built_dll(kOtherBitness)));
  expect_problem("The registered file is of the other bitness: " + copy_path(), "注册的文件位数不符：" + copy_path());
}

TEST_F(Doctor, FindsMissingEntries) {
  add_built();
  const std::wstring key = L"Corvelle.ClsVexApp\\Clsid";
  ASSERT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str()), ERROR_SUCCESS);
  expect_problem("The registration is incomplete, this entry is missing or wrong: " + utf8_of(key),
                 "注册不完整，这一项缺失或有误：" + utf8_of(key));
}

TEST_F(Doctor, FindsAWrongThreadingModel) {
  add_built();
  HKEY key = nullptr;
  const std::wstring path = std::wstring(server_key(kClsVexAppClass));
  ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_SET_VALUE, &key), ERROR_SUCCESS);
  RegDeleteValueW(key, L"ThreadingModel");
  RegCloseKey(key);
  expect_problem("The registration is incomplete, this entry is missing or wrong: " + utf8_of(path),
                 "注册不完整，这一项缺失或有误：" + utf8_of(path));
}

// The other bitness has a key of its own; this one's must not stand in for it.
TEST_F(Doctor, FindsAMissingThreadingModelOfTheOtherBitness) {
  constexpr REGSAM kOtherView = kOtherBitness == Bitness::k32 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  add_built();
  add_built(kOtherBitness);
  HKEY key = nullptr;
  const std::wstring path = std::wstring(server_key(kClsVexAppClass));
  ASSERT_EQ(
      RegOpenKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str(), 0, KEY_SET_VALUE | kOtherView, &key),
      ERROR_SUCCESS);
  ASSERT_EQ(RegDeleteValueW(key, L"ThreadingModel"), ERROR_SUCCESS);
  RegCloseKey(key);
  expect_problem("The registration is incomplete, this entry is missing or wrong: " + utf8_of(path),
                 "注册不完整，这一项缺失或有误：" + utf8_of(path), {L"--bitness", kOtherBits});
}

TEST_F(Doctor, FindsADamagedTypeLibraryThatScriptsCanDoWithout) {
  add_copy();
  patch(copy_->path(), "MSFT\2\0\1\0"sv, "XXXX"sv);
  expect_problem("The type library within the file is damaged.", "文件中的类型库已损坏。");
  const ToolRun run = doctor({L"--language", L"en"});
  EXPECT_THAT(run.out, AllOf(HasSubstr("\n  Works"), HasSubstr("another version than the one beside")));
}

TEST_F(Doctor, FindsAnUnregisteredTypeLibrary) {
  add_built();
  const std::wstring path = L"Software\\Classes\\" + std::wstring(library_file_key());
  ASSERT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, path.c_str()), ERROR_SUCCESS);
  expect_problem("The type library is not registered", "类型库没有注册");
}

TEST_F(Doctor, FindsAClassThatCannotBeCreated) {
  add_copy();
  patch(copy_->path(), bytes_of(kClsValidateId), bytes_of(GUID_NULL));
  expect_problem("Registered, but it cannot be created. 0x80040111", "已注册，但无法创建。0x80040111");
}

TEST_F(Doctor, FindsACallThatFails) {
  add_copy();
  break_calls(copy_->path());
  expect_problem("Created, but it does not answer as it must. 0x80020006", "能够创建，但回答不正确。0x80020006");
  const ToolRun full = doctor({L"--full", L"--language", L"en"});
  EXPECT_EQ(full.status, 1u);
  EXPECT_THAT(full.out, HasSubstr("\nFAIL  ClsValidate.Get_StrWidth(中a) gives \"3\"; here it ends in error 438"));
  EXPECT_THAT(full.out, HasSubstr("\n38 passed, 1 failed\n"));
}

TEST_F(Doctor, FindsACallThatFailsInTheOtherBitness) {
  add_copy(kOtherBitness);
  break_calls(copy_->path());
  expect_problem("Created, but it does not answer as it must. 0x80020006", "能够创建，但回答不正确。0x80020006",
                 {L"--bitness", kOtherBits});
}

// This Wine creates no classes of a user, as Windows creates none in programs that run as administrator.
TEST_F(Doctor, FindsARegistrationForTheUserPassedBy) {
  ASSERT_EQ(run_tool({L"register", L"--user"}).status, 0u);
  expect_problem("Registered for this user only", "只为当前用户注册");
}

TEST_F(Doctor, FindsAnotherFileForEveryoneBehindTheUsers) {
  add_copy();
  ASSERT_EQ(run_tool({L"register", L"--user"}).status, 0u);
  expect_remark("Another file is registered for everyone, which this user's registration hides: " + copy_path(),
                "为所有用户注册的是另一个文件，被当前用户的注册遮住了：" + copy_path(), {L"--bitness", kOwnBits});
}

// Programs of each bitness call another folder system32.
TEST_F(Doctor, FindsTheSystemFolderOfTheOtherBitness) {
  wchar_t windows[MAX_PATH] = {};
  GetWindowsDirectoryW(windows, MAX_PATH);
  const std::wstring from_here =
      std::wstring(windows) + (kOtherBitness == Bitness::k64 ? L"\\sysnative" : L"\\syswow64") + L"\\CorvelleTest.dll";
  const std::wstring registered = std::wstring(windows) + L"\\system32\\CorvelleTest.dll";
  ASSERT_TRUE(CopyFileW(built_dll(kOtherBitness).c_str(), from_here.c_str(), FALSE));
  ASSERT_EQ(regsvr32(kOtherBitness, registered), 0u);
  expect_remark("Registered for everyone: " + utf8_of(registered) + "\n  Works",
                "已为所有用户注册：" + utf8_of(registered) + "\n  正常", {L"--bitness", kOtherBits});
  DeleteFileW(from_here.c_str());
}

TEST_F(Doctor, ShowsARegisteredPathOnOneLine) {
  add_built();
  for (const ClassDescription* description : kClasses) {
    set_default(HKEY_LOCAL_MACHINE, std::wstring(server_key(*description)),
                L"C:\\a\x1B[2J\r\nNo problem was found.\x9B\x7F");
  }
  const ToolRun run = doctor({L"--language", L"en"});
  EXPECT_EQ(run.status, 1u);
  EXPECT_THAT(run.out, HasSubstr("a\uFFFD[2J\uFFFD\uFFFDNo problem was found.\uFFFD\uFFFD\n"));
}

TEST_F(Doctor, RefusesWhatItDoesNotKnow) {
  EXPECT_EQ(doctor({L"--bitness", L"16"}).status, 2u);
  EXPECT_EQ(doctor({L"--language", L"fr"}).status, 2u);
}

TEST_F(Doctor, RunsOneCaseOfEveryOperation) {
  add_built();
  const ToolRun run = doctor({L"--full", L"--bitness", kOwnBits, L"--language", L"en"});
  EXPECT_EQ(run.status, 0u);
  std::size_t place = 0;
  for (const ClassDescription* description : kClasses) {
    for (const Operation& operation : description->operations) {
      const std::string name = utf8_of(description->name) + "." + utf8(operation.name);
      const std::size_t found = run.out.find("\nok    " + name + "(", place);
      ASSERT_NE(found, std::string::npos) << name << " is not there, or not in its place";
      place = found + 1;
    }
  }
  EXPECT_THAT(run.out, HasSubstr("\n39 passed, 0 failed\n"));
}

TEST_F(Doctor, RunsNoCaseOfAnUnregisteredComponent) {
  const ToolRun run = doctor({L"--full", L"--language", L"en"});
  EXPECT_EQ(run.status, 1u);
  EXPECT_THAT(run.out, AllOf(HasSubstr("\n0 passed, 39 failed\n"), Not(HasSubstr("\nok "))));
}

}  // namespace
}  // namespace corvelle::testing
