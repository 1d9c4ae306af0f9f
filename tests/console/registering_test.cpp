// corvelle register and corvelle unregister, for everyone and for one user.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/console/tool.h"
#include "tests/support/registry_snapshot.h"

namespace corvelle::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Registering : public CleanMachine {
 protected:
  static void expect_well(const std::vector<std::wstring>& arguments) {
    const ToolRun run = run_tool(arguments);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.status, 0u);
  }

  // Every entry of the component below one user's or the machine's classes.
  static std::vector<std::wstring> entries(HKEY root) {
    std::vector<std::wstring> keys = {std::wstring(library_key())};
    for (const ClassDescription* description : kClasses) {
      keys.insert(keys.end(), {description->prog_id, std::wstring(class_key(*description)),
                               std::wstring(interface_key(*description))});
    }
    std::vector<std::wstring> lines;
    for (const std::wstring& key : keys) {
      const auto found = registry_snapshot(root, L"Software\\Classes\\" + key);
      lines.insert(lines.end(), found.begin(), found.end());
    }
    return lines;
  }
};

TEST_F(Registering, IsDoneForEveryoneAsByRegsvr32) {
  ASSERT_EQ(regsvr32(kOwnBitness, built_dll(kOwnBitness)), 0u);
  const auto by_system = component_keys();
  remove_component_keys();
  expect_well({L"register"});
  EXPECT_EQ(component_keys(), by_system);
  EXPECT_EQ(create_class(), S_OK);
  expect_well({L"unregister"});
  EXPECT_THAT(component_keys(), IsEmpty());
  EXPECT_EQ(create_class(), REGDB_E_CLASSNOTREG);
}

// The same entries as for everyone. (Not created from here: this Wine passes by classes of a user.)
TEST_F(Registering, IsDoneForOneUser) {
  expect_well({L"register"});
  const auto for_everyone = entries(HKEY_LOCAL_MACHINE);
  ASSERT_THAT(for_everyone, SizeIs(::testing::Gt(28u)));
  expect_well({L"unregister"});
  expect_well({L"register", L"--user"});
  EXPECT_EQ(entries(HKEY_CURRENT_USER), for_everyone);
  EXPECT_THAT(entries(HKEY_LOCAL_MACHINE), IsEmpty());
  expect_well({L"unregister", L"--user"});
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(Registering, LeavesTheOtherScopeAlone) {
  expect_well({L"register"});
  expect_well({L"register", L"--user"});
  const auto of_machine = entries(HKEY_LOCAL_MACHINE);
  expect_well({L"unregister", L"--user"});
  EXPECT_EQ(entries(HKEY_LOCAL_MACHINE), of_machine);
  EXPECT_THAT(entries(HKEY_CURRENT_USER), IsEmpty());
  expect_well({L"register", L"--user"});
  const auto of_user = entries(HKEY_CURRENT_USER);
  expect_well({L"unregister"});
  EXPECT_EQ(entries(HKEY_CURRENT_USER), of_user);
  EXPECT_THAT(entries(HKEY_LOCAL_MACHINE), IsEmpty());
}

TEST_F(Registering, SpeaksBothLanguages) {
  EXPECT_THAT(run_tool({L"register", L"--language", L"en"}).out,
              AllOf(HasSubstr("Registered for everyone: "), HasSubstr("Corvelle.dll\n")));
  EXPECT_THAT(run_tool({L"unregister", L"--language", L"zh"}).out, HasSubstr("已取消所有用户的注册："));
  EXPECT_EQ(run_tool({L"register", L"--language", L"fr"}).status, 2u);
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(Registering, SaysWhatToDoWithoutRights) {
  expect_well({L"register"});
  const auto before = component_keys();
  const WriteProtectedKey key(HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + std::wstring(class_key(kClsValidateClass)),
                              0);
  const ToolRun english = run_tool({L"register", L"--language", L"en"});
  EXPECT_EQ(english.status, 1u);
  EXPECT_THAT(english.error, AllOf(HasSubstr("administrator"), HasSubstr("--user")));
  const ToolRun chinese = run_tool({L"register", L"--language", L"zh"});
  EXPECT_EQ(chinese.status, 1u);
  EXPECT_THAT(chinese.error, AllOf(HasSubstr("管理员"), HasSubstr("--user")));
  EXPECT_EQ(component_keys(), before);
}

TEST_F(Registering, LeavesAUsersClassesAsTheyWereWhereItIsRefused) {
  const std::wstring path = L"Software\\Classes\\Corvelle.ClsVexApp";
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr), 0);
  RegCloseKey(key);
  const auto before = entries(HKEY_CURRENT_USER);
  {
    const WriteProtectedKey refusing(HKEY_CURRENT_USER, path, 0);
    const ToolRun run = run_tool({L"register", L"--user", L"--language", L"en"});
    EXPECT_EQ(run.status, 1u);
    EXPECT_THAT(run.error, HasSubstr("The registry refused that. 0x80070005"));
    EXPECT_EQ(entries(HKEY_CURRENT_USER), before);
  }
}

// The tool in a folder of its own, with another Corvelle.dll or none beside it.
class ToolAlone : public Registering {
 protected:
  void SetUp() override {
    Registering::SetUp();
    copy_.emplace(L"corvelle tool 工具", kOtherBitness);
    tool_ = copy_->path().substr(0, copy_->path().rfind(L'\\')) + L"\\corvelle.exe";
    ASSERT_TRUE(CopyFileW(built_tool().c_str(), tool_.c_str(), FALSE));
  }
  void TearDown() override {
    DeleteFileW(tool_.c_str());
    copy_.reset();
    Registering::TearDown();
  }

  std::optional<CopyOfDll> copy_;
  std::wstring tool_;
};

TEST_F(ToolAlone, RefusesADllOfTheOtherBitness) {
  for (const std::vector<std::wstring>& scope : {std::vector<std::wstring>(), {L"--user"}}) {
    std::vector<std::wstring> arguments = {L"register", L"--language", L"en"};
    arguments.insert(arguments.end(), scope.begin(), scope.end());
    const ToolRun run = run_tool(arguments, tool_);
    EXPECT_EQ(run.status, 1u);
    EXPECT_THAT(run.error, AllOf(HasSubstr("工具\\Corvelle.dll"), HasSubstr("bitness")));
  }
  EXPECT_THAT(component_keys(), IsEmpty());
}

TEST_F(ToolAlone, SaysThatThereIsNoDll) {
  DeleteFileW(copy_->path().c_str());
  const ToolRun run = run_tool({L"register", L"--language", L"en"}, tool_);
  EXPECT_EQ(run.status, 1u);
  EXPECT_THAT(run.error, HasSubstr("no Corvelle.dll beside"));
}

}  // namespace
}  // namespace corvelle::testing
