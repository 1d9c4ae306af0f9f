// What the tool makes of classes that answer at random, of want of memory, of odd arguments and of a closed pipe.

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/console/tool.h"
#include "tests/support/child_process.h"
#include "tests/support/component_file.h"

namespace corvelle::testing {
namespace {

using ::testing::HasSubstr;

class HostileSurroundings : public CleanMachine {
 protected:
  void SetUp() override {
    CleanMachine::SetUp();
    ASSERT_EQ(ComponentFile(built_dll(kOwnBitness)).register_server(), S_OK);
  }
};

TEST_F(HostileSurroundings, AClassThatAnswersAtRandomIsReported) {
  for (const ClassDescription* description : kClasses) {
    set_default(HKEY_LOCAL_MACHINE, std::wstring(server_key(*description)),
                full_path(CORVELLE_PLANTED_FOLDER L"/random_class.dll"));
  }
  int tried = 0;
  for (int seed = 0; seed < 20; ++seed) {
    SetEnvironmentVariableW(L"CORVELLE_SEED", std::to_wstring(seed).c_str());
    const ToolRun call = run_tool({L"call", L"ClsValidate.Set_String1", L"a", L"b", L"c"});
    EXPECT_LE(call.status, 2u) << "seed " << seed << ": " << call.error;
    EXPECT_FALSE(call.status != 0 && call.error.empty()) << "seed " << seed;
    const ToolRun full = run_tool({L"doctor", L"--full", L"--language", L"en"});
    EXPECT_EQ(full.status, 1u) << "seed " << seed;
    EXPECT_THAT(full.out, HasSubstr(" passed, ")) << "seed " << seed;
    tried += full.out.find("PROBLEM: Created, but it does not answer") != std::string::npos ? 1 : 0;
  }
  SetEnvironmentVariableW(L"CORVELLE_SEED", nullptr);
  EXPECT_GT(tried, 5) << "it was never called";
}

// Half of a character is no text, but it is what was typed, and not the mark that texts in UTF-8 have in its place.
TEST_F(HostileSurroundings, ArgumentsArriveAsTheyWereTyped) {
  const std::wstring half(1, static_cast<wchar_t>(0xD800));
  EXPECT_EQ(run_tool({L"call", L"ClsValidate.getStr_Pf", L"a" + half + L"b\xFFFD", L"1", L"\xFFFD"}).out,
            "a\xEF\xBF\xBD"
            "b\n");
  EXPECT_EQ(run_tool({L"call", L"ClsValidate.getStr_Pf",
                      L"a\xFFFD"
                      L"b" +
                          half,
                      L"1", half})
                .out,
            "a\xEF\xBF\xBD"
            "b\n");
  EXPECT_EQ(run_tool({half}).status, 2u);
  EXPECT_EQ(run_tool({L"call", half}).status, 2u);
}

#ifndef _WIN64  // where the results of one call fill what a process can have
TEST_F(HostileSurroundings, WantOfMemoryIsSaidAndIsAFailure) {
  int failures = 0;
  for (const std::size_t columns : {150'000'000, 200'000'000, 250'000'000, 500'000'000}) {
    const ToolRun run = run_tool({L"call", L"ClsValidate.Set_String1", L"a", std::to_wstring(columns)});
    failures += run.status == 0 ? 0 : 1;
    if (run.status == 0) {
      EXPECT_EQ(run.out.size(), columns + 1) << "with the line's end";
    } else {
      EXPECT_EQ(run.status, 1u) << columns;
      EXPECT_THAT(run.error, HasSubstr("not enough memory")) << columns;
    }
  }
  EXPECT_GT(failures, 0);
}
#endif

TEST_F(HostileSurroundings, AClosedPipeIsNoCrash) {
  SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  ASSERT_TRUE(CreatePipe(&reading, &writing, &inherited, 0));
  CloseHandle(reading);
  STARTUPINFOW startup = {};
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writing;
  startup.hStdError = writing;
  EXPECT_EQ(run_program(built_tool(), L"corvelle list", startup), 0u);
  EXPECT_EQ(run_program(built_tool(), L"corvelle", startup), 2u);
  startup.hStdOutput = startup.hStdError = nullptr;
  EXPECT_EQ(run_program(built_tool(), L"corvelle list", startup), 0u);
  CloseHandle(writing);
}

}  // namespace
}  // namespace corvelle::testing
