// Modules and programs that somebody planted: in the current folder, and where a user's registration leads to.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "component/class_description.h"
#include "component/registration_keys.h"
#include "console/place.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/console/files.h"
#include "tests/console/tool.h"
#include "tests/support/child_process.h"
#include "tests/support/component_file.h"
#include "tests/support/loaded_image.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using console::folder_of;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using ::testing::IsSupersetOf;

const std::wstring kPlantedDll = full_path(CORVELLE_PLANTED_FOLDER L"/planted.dll");
const std::wstring kPlantedProgram = full_path(CORVELLE_PLANTED_FOLDER L"/planted_program.exe");
const std::wstring kNeedsPlanted = full_path(CORVELLE_PLANTED_FOLDER L"/needs_planted.dll");

std::string lower(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char unit) { return std::tolower(unit); });
  return name;
}

// What the file itself imports.
std::set<std::string> imported_by(const std::wstring& path) {
  const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
  if (module == nullptr) throw std::runtime_error("cannot map a module");
  std::set<std::string> names;
  for (const Import& import : LoadedImage(module).imports()) names.insert(lower(import.library));
  FreeLibrary(module);
  return names;
}

// Every name of a module or program among the characters. What stands before a name may be glued to it, so all its ends
// count.
void add_names(const std::string& characters, std::set<std::string>& names) {
  const std::set<std::string> endings = {".dll", ".exe", ".drv", ".tlb"};
  std::string name;
  for (const char unit : characters) {
    if (std::isalnum(static_cast<unsigned char>(unit)) != 0 || unit == '.' || unit == '_' || unit == '-') {
      name += unit;
      continue;
    }
    name = lower(name);
    if (name.size() > 4 && endings.contains(name.substr(name.size() - 4))) {
      for (std::size_t start = 0; start + 4 < name.size(); ++start) names.insert(name.substr(start));
    }
    name.clear();
  }
}

// What the file may load when it runs: every such name in its bytes, in ASCII or UTF-16.
std::set<std::string> named_in(const std::wstring& path) {
  const std::string bytes = content_of(path);
  std::set<std::string> names;
  add_names(bytes, names);
  for (std::size_t first = 0; first < 2; ++first) {
    std::string characters;
    for (std::size_t i = first; i + 1 < bytes.size(); i += 2) characters += bytes[i + 1] == '\0' ? bytes[i] : '\0';
    add_names(characters, names);
  }
  return names;
}

class Planted : public CleanMachine {
 protected:
  void SetUp() override {
    CleanMachine::SetUp();
    GetCurrentDirectoryW(MAX_PATH, before_);
  }
  void TearDown() override {
    SetCurrentDirectoryW(before_);
    CleanMachine::TearDown();
  }

  // Puts the planted module, or program, in the folder, by that name.
  void plant(const std::filesystem::path& name) const {
    const std::filesystem::path file = folder_.path() / name;
    std::filesystem::create_directories(file.parent_path());
    const bool program = file.extension() == ".exe";
    ASSERT_TRUE(CopyFileW((program ? kPlantedProgram : kPlantedDll).c_str(), file.c_str(), FALSE)) << file;
  }

  // What ran of all that is planted, which it forgets.
  std::vector<std::string> ran() const {
    std::vector<std::filesystem::path> marks;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path())) {
      if (entry.path().extension() == ".ran") marks.push_back(entry.path());
    }
    std::vector<std::string> names;
    for (const std::filesystem::path& mark : marks) {
      names.push_back(mark.filename().string());
      std::filesystem::remove(mark);
    }
    return names;
  }

  void expect_none_runs(const std::vector<std::wstring>& arguments) const {
    run_tool(arguments);
    std::string words;
    for (const std::wstring& argument : arguments) words += std::string(argument.begin(), argument.end()) + " ";
    EXPECT_THAT(ran(), IsEmpty()) << words;
  }
  void expect_none_runs_by_any_command() const {
    expect_none_runs({L"--help"});
    expect_none_runs({L"list"});
    expect_none_runs({L"call", L"ClsValidate.Center", L"a"});
    expect_none_runs({L"call", L"ClsValidate.No_such", L"a"});
    for (const wchar_t* bitness : {L"32", L"64"}) expect_none_runs({L"doctor", L"--bitness", bitness});
    expect_none_runs({L"doctor", L"--full"});
  }

  // A module that is loaded, and a program that is run, leaves its mark.
  void expect_marks() const {
    plant("control.dll");
    plant("control.exe");
    const std::wstring folder = folder_.path().wstring() + L"\\";
    ComponentFile((folder + L"control.dll").c_str());
    run_program(folder + L"control.exe", L"control.exe");
    EXPECT_THAT(ran(), ::testing::UnorderedElementsAre("control.dll.ran", "control.exe.ran"));
  }

  const TemporaryFolder folder_;

 private:
  wchar_t before_[MAX_PATH] = {};
};

TEST_F(Planted, InTheCurrentFolderIsNeverRun) {
  std::set<std::string> names = {"corvelle.dll", "corvelle.exe", "regsvr32.exe", "cmd.exe", "uxtheme.dll"};
  for (const std::wstring& file : {built_tool(), built_dll(kOwnBitness)}) {
    names.merge(imported_by(file));
    names.merge(named_in(file));
  }
  ASSERT_THAT(names, IsSupersetOf({"kernel32.dll", "ole32.dll", "oleaut32.dll", "ntdll.dll"}));
  for (const std::string& name : names) plant(name);
  for (const char* tool : {"win32/corvelle.exe", "win64/corvelle.exe"}) plant(tool);
  expect_marks();

  SetCurrentDirectoryW(folder_.path().c_str());
  expect_none_runs_by_any_command();
  expect_none_runs({L"register"});
  expect_none_runs_by_any_command();
  expect_none_runs({L"unregister"});
  expect_none_runs({L"register", L"--user"});
  expect_none_runs_by_any_command();
  expect_none_runs({L"unregister", L"--user"});
}

// The program's own folder is looked at before the system's, but for modules that every Windows since XP takes from the
// system whatever there is elsewhere: its list KnownDLLs, and what those need.
TEST_F(Planted, BesideTheProgramIsNoneThatItImports) {
  const std::set<std::string> known = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                                       "oleaut32.dll", "shell32.dll",  "user32.dll"};
  EXPECT_THAT(imported_by(built_tool()), IsSubsetOf(known));
  EXPECT_THAT(imported_by(built_dll(kOwnBitness)), IsSubsetOf(known));
}

// What a registered DLL needs is looked for after the system's folders in the current one, where this is not forbidden.
TEST_F(Planted, ForARegisteredDllThatNeedsItIsNotRun) {
  ASSERT_EQ(ComponentFile(built_dll(kOwnBitness)).register_server(), S_OK);
  const TemporaryFolder elsewhere;
  const std::wstring dll = (elsewhere.path() / "needs.dll").wstring();
  ASSERT_TRUE(CopyFileW(kNeedsPlanted.c_str(), dll.c_str(), FALSE));
  set_default(HKEY_LOCAL_MACHINE, std::wstring(server_key(kClsValidateClass)), dll);
  plant("planted.dll");
  SetCurrentDirectoryW(folder_.path().c_str());
  ComponentFile{dll};
  ASSERT_THAT(ran(), Contains("planted.dll.ran")) << "this system looks nowhere else";
  expect_none_runs({L"call", L"ClsValidate.Center", L"a"});
  expect_none_runs({L"doctor", L"--full"});
}

// What is planted where a user may write, and that user's registration of it.
class PlantedByUser : public Planted, public ::testing::WithParamInterface<Bitness> {
 protected:
  void SetUp() override {
    Planted::SetUp();
    const std::wstring built = folder_of(built_dll(GetParam()));
    const std::wstring here = folder_.path().wstring() + L"\\";
    for (const wchar_t* name : {L"Corvelle.dll", L"corvelle.exe"}) {
      ASSERT_TRUE(CopyFileW((built + name).c_str(), (here + name).c_str(), FALSE));
    }
    ASSERT_EQ(run_tool({L"register", L"--user"}, here + L"corvelle.exe").status, 0u);
    plant("corvelle.exe");
  }
  static std::wstring bits() { return GetParam() == Bitness::k32 ? L"32" : L"64"; }
};

TEST_P(PlantedByUser, BesideTheDllIsNotRun) {
  expect_marks();
  const ToolRun run = run_tool({L"doctor", L"--bitness", bits(), L"--language", L"en"});
  EXPECT_THAT(run.out, HasSubstr("Registered for this user: "));
  EXPECT_THAT(run.out, ::testing::Not(HasSubstr("Works")));
  EXPECT_THAT(ran(), IsEmpty());
  expect_none_runs_by_any_command();
}

TEST_P(PlantedByUser, InPlaceOfTheDllIsNotRun) {
  std::filesystem::remove(folder_.path() / "Corvelle.dll");
  plant("Corvelle.dll");
  expect_none_runs_by_any_command();
}

INSTANTIATE_TEST_SUITE_P(Bitness, PlantedByUser, ::testing::Values(Bitness::k32, Bitness::k64),
                         [](const auto& bitness) { return bitness.param == Bitness::k32 ? "32" : "64"; });

}  // namespace
}  // namespace corvelle::testing
