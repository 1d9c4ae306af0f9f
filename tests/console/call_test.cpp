// corvelle call and corvelle list, on the registered component.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/class_description.h"
#include "tests/component/registration/machine.h"
#include "tests/console/tool.h"
#include "tests/support/component_file.h"
#include "tests/support/utf8.h"

namespace corvelle::testing {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class Registered : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    remove_component_keys();
    ASSERT_EQ(ComponentFile(built_dll(kOwnBitness)).register_server(), S_OK);
  }
  static void TearDownTestSuite() { remove_component_keys(); }
};

class Calls : public Registered {
 protected:
  // What the tool prints for a call that goes well.
  static std::string called(std::vector<std::wstring> words) {
    words.insert(words.begin(), L"call");
    const ToolRun run = run_tool(words);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.status, 0u);
    return run.out;
  }
  static ToolRun failed(std::vector<std::wstring> words, DWORD status) {
    words.insert(words.begin(), L"call");
    ToolRun run = run_tool(words);
    EXPECT_EQ(run.status, status) << run.error;
    EXPECT_EQ(run.out, "");
    return run;
  }
};

TEST_F(Calls, ShowsChineseTextInAPipeAsUtf8) {
  EXPECT_EQ(called({L"ClsValidate.Set_String1", L"中文", L"10", L"1"}), "      中文\n");
}

TEST_F(Calls, ConvertsArgumentsToWhatTheOperationDeclares) {
  EXPECT_EQ(called({L"ClsValidate.GetByte_Pf", L"123", L"0"}), "3\n");
  EXPECT_EQ(called({L"ClsValidate.sumByte_Pf", L"中a"}), "3\n");
  EXPECT_EQ(called({L"ClsValidate.dateToStr_Pf", L"2006-01-02"}), "20060102\n");
  EXPECT_EQ(called({L"ClsValidate.is_AlphaNum", L"abc"}), "True\n");
  EXPECT_EQ(called({L"ClsValidate.is_AlphaNum", L"a b"}), "False\n");
}

TEST_F(Calls, LeavesOutWhatIsNotGiven) {
  EXPECT_EQ(called({L"ClsValidate.Set_String1", L"ab", L"5"}), "ab   \n");
  EXPECT_EQ(called({L"ClsValidate.strDateFmt_Pf", L"20060102"}), "2006年01月02日\n");
  EXPECT_EQ(called({L"ClsValidate.getDays_Pf", L"2000", L"2"}), "29\n");
}

TEST_F(Calls, TakesEveryArgumentAsItIs) {
  EXPECT_EQ(called({L"ClsValidate.getNum", L"-12.5"}), "125\n");
  EXPECT_EQ(called({L"ClsValidate.Center", L"--help me"}), "--helpme\n");
  EXPECT_EQ(called({L"ClsValidate.Center", L"--"}), "--\n");
  EXPECT_EQ(called({L"ClsValidate.Center", L"[a, b]"}), "[a,b]\n");
  EXPECT_EQ(called({L"ClsValidate.Center", L"*.h \"*\" \\"}), "*.h\"*\"\\\n");
  EXPECT_EQ(called({L"ClsValidate.Center", L""}), "\n");
}

TEST_F(Calls, FindsClassAndOperationWhateverTheCase) {
  EXPECT_EQ(called({L"corvelle.clsvalidate.CENTER", L"a b"}), "ab\n");
  EXPECT_EQ(called({L"ClsVexApp.Set_Str", L"a"}), "") << "it answers nothing";
}

TEST_F(Calls, ShowsAnErrorWithNumberSourceAndText) {
  const ToolRun run = failed({L"ClsValidate.getStr_Pf", L"甲,乙,", L"5", L","}, 1);
  EXPECT_THAT(run.error, StartsWith("error 5 (0x800A0005) of Corvelle.ClsValidate: getStr_Pf: Num is 5"));
}

TEST_F(Calls, ShowsACallThatDoesNotFitWithTheSignature) {
  const std::string signature = "It is getStr_Pf(Str As String, Num As Integer, sFlag As String) As String\n";
  EXPECT_EQ(failed({L"ClsValidate.getStr_Pf", L"a,", L"first", L","}, 2).error,
            "error 13 (0x80020005): argument 2 does not fit its parameter\n" + signature);
  EXPECT_EQ(failed({L"ClsValidate.getstr_pf", L"a,"}, 2).error,
            "error 450 (0x8002000E): too few or too many arguments\n" + signature);
  EXPECT_THAT(failed({L"ClsValidate.getString", L"a,"}, 2).error, StartsWith("error 438 (0x80020006)"));
}

TEST_F(Calls, SaysHowItIsCalled) {
  EXPECT_THAT(failed({}, 2).error, HasSubstr("ClsValidate.Set_String1"));
  EXPECT_THAT(failed({L"Set_String1", L"a", L"1"}, 2).error, HasSubstr("ClsValidate.Set_String1"));
  EXPECT_THAT(failed({L"ClsOther.Set_String1", L"a", L"1"}, 2).error, HasSubstr("names no operation"));
  EXPECT_EQ(run_tool({}).status, 2u);
  EXPECT_EQ(run_tool({L"cal"}).status, 2u);
  EXPECT_THAT(run_tool({L"--help"}).out, HasSubstr("Exit status"));
}

// Every operation of the table with its names and defaults, and nothing else.
TEST_F(Registered, AreAllListed) {
  const std::string listed = run_tool({L"list"}).out;
  std::size_t from = 0;
  for (const ClassDescription* description : kClasses) {
    for (const Operation& operation : description->operations) {
      from = listed.find("\n  " + utf8(operation.name) + "(", from);
      ASSERT_NE(from, std::string::npos) << utf8(operation.name) << " is not there, or not in its place";
      const std::string line = listed.substr(from + 1, listed.find('\n', from + 1) - from - 1);
      std::size_t place = 0;
      for (const Parameter& parameter : operation.parameters()) {
        place = line.find(utf8(parameter.name) + " As ", place);
        ASSERT_NE(place, std::string::npos) << line;
      }
      EXPECT_EQ(std::count(line.begin(), line.end(), '['), operation.parameter_count - operation.required_count);
      EXPECT_THAT(listed.substr(from), HasSubstr(std::string(operation.help)));
    }
  }
  EXPECT_EQ(std::count(listed.begin(), listed.end(), '('), 39);
}

TEST_F(Registered, AreListedWithTypesAndDefaults) {
  const std::string listed = run_tool({L"list"}).out;
  EXPECT_THAT(listed, StartsWith("Corvelle.ClsValidate\n  sumByte_Pf(vStr As String) As Double\n      Display width"));
  EXPECT_THAT(listed,
              HasSubstr("\n  Set_String1(strName As String, lngLen As Long, [Flag As Integer = 0]) As String\n"));
  EXPECT_THAT(listed,
              HasSubstr("\n  strDateFmt_Pf(strDay As String, [ByRef strFmt As String = \"年月日\"]) As String\n"));
  EXPECT_THAT(listed, HasSubstr("\n  IFTable(DB As Database, TableName As String) As Boolean\n"));
  EXPECT_THAT(listed, HasSubstr("\n  dateToStr_Pf(vDate As Date) As String\n"));
  EXPECT_THAT(listed, HasSubstr("\n  ClearGrd(Msfg As Variant)\n"));
  EXPECT_THAT(listed, EndsWith("\n  Get_Str() As String\n      The text in the thread's text slot.\n"));
}

TEST(NotRegistered, IsSaidByAStatusOfItsOwn) {
  remove_component_keys();
  const ToolRun run = run_tool({L"call", L"ClsValidate.Center", L"a"});
  EXPECT_EQ(run.status, 3u);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.error, StartsWith("Corvelle.ClsValidate cannot be created. 0x800401F3"));
  EXPECT_THAT(run.error, HasSubstr("corvelle doctor"));
}

TEST(NotRegistered, IsListedFromTheFileBesideTheTool) {
  remove_component_keys();
  const ToolRun run = run_tool({L"list"});
  EXPECT_EQ(run.status, 0u);
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '('), 39);
}

}  // namespace
}  // namespace corvelle::testing
