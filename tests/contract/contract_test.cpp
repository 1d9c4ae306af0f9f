// The frozen contract: what the built DLL promises its hosts equals contract.txt.
//
//   contract_tests DLL DATA_ACCESS_STUB CONTRACT [--update]
//
// --update writes the file anew, on purpose; tests/contract/update does so for both bitnesses.

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/contract/contract_text.h"
#include "tests/support/child_process.h"
#include "tests/support/data_access_library.h"

namespace corvelle::testing {
namespace {

constexpr const char* kThisImage = sizeof(void*) == 8 ? "64-bit image" : "32-bit image";
constexpr const char* kOtherImage = sizeof(void*) == 8 ? "32-bit image" : "64-bit image";

// The contract's sections by name; in the file each follows a line "[name]".
using Contract = std::map<std::string, std::string>;

// The image's section is frozen as GCC 12 makes it. The runtime of GCC 14 imports the first of these otherwise, which
// Windows XP has, and the second in addition, which it has not: they serve C++ exceptions and the guard of one static.
#if __GNUC__ >= 14
constexpr bool kFrozenByThisCompiler = false;
constexpr std::uintmax_t kMostBytes = 480'000;
const std::set<std::string> kImportsOfRuntime = {"CreateSemaphoreW", "ReleaseSemaphore",    "TryEnterCriticalSection",
                                                 "getenv",           "WaitForSingleObject", "strchr",
                                                 "strtoul"};
const std::set<std::string> kNotInWindowsXp = {"GetThreadId", "InitializeConditionVariable", "SleepConditionVariableCS",
                                               "WakeAllConditionVariable", "WakeConditionVariable"};
#else
constexpr bool kFrozenByThisCompiler = true;
constexpr std::uintmax_t kMostBytes = 430'000;
const std::set<std::string> kImportsOfRuntime;
const std::set<std::string> kNotInWindowsXp;
#endif

std::wstring file_path;
std::wstring stub_path;
std::string contract_path;

Contract contract_of_built_dll() {
  const DataAccessLibrary data_access(stub_path);
  return {{"type library", type_library_text(file_path)},
          {"exports", export_text(file_path)},
          {"version resource", version_text(file_path)},
          {"registration", registration_text(file_path)},
          {kThisImage, image_text(file_path)}};
}

Contract read_contract() {
  std::ifstream file(contract_path);
  Contract contract;
  std::string* section = nullptr;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.front() == '[') {
      section = &contract[line.substr(1, line.size() - 2)];
    } else if (section != nullptr) {
      *section += line + "\n";
    }
  }
  return contract;
}

void write_contract(const Contract& contract) {
  std::ofstream file(contract_path, std::ios::binary);
  file << "What hosts of the component rely on. A test compares the built DLLs with this file; it changes only on\n"
          "purpose, by tests/contract/update. Every imported function exists in Windows XP.\n";
  for (const auto& [name, text] : contract) file << "[" << name << "]\n" << text;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// The lines but for the imports that the compiler's runtime may have otherwise. Imported functions are set in.
std::vector<std::string> comparable(std::vector<std::string> lines) {
  std::erase_if(lines, [](const std::string& line) {
    return line.starts_with("  ") &&
           (kImportsOfRuntime.contains(line.substr(2)) || kNotInWindowsXp.contains(line.substr(2)));
  });
  return lines;
}

const Contract& built() {
  static const Contract contract = contract_of_built_dll();
  return contract;
}

class ContractSection : public ::testing::TestWithParam<const char*> {};

TEST_P(ContractSection, IsUnchanged) {
  const Contract frozen = read_contract();
  ASSERT_TRUE(frozen.contains(GetParam())) << "no such section in the contract";
  const auto expected = comparable(lines_of(frozen.at(GetParam())));
  const auto actual = comparable(lines_of(built().at(GetParam())));
  EXPECT_TRUE(expected == actual) << "frozen (-) and built (+) differ; if that is meant, run tests/contract/update\n"
                                  << ::testing::internal::edit_distance::CreateUnifiedDiff(expected, actual);
}

INSTANTIATE_TEST_SUITE_P(Contract, ContractSection,
                         ::testing::Values("type library", "exports", "version resource", "registration", kThisImage),
                         [](const auto& section) {
                           std::string name = section.param;
                           std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
                           return name;
                         });

// A section that no bitness compares would freeze nothing.
TEST(Contract, HasNoUnknownSection) {
  for (const auto& [name, text] : read_contract()) {
    EXPECT_TRUE(name == kOtherImage || built().contains(name)) << name;
  }
}

// Hosts carry the file with their own set-up, and old systems have no other libraries.
TEST(Image, IsSmall) { EXPECT_LT(std::filesystem::file_size(file_path), kMostBytes); }

// What need not be excused any more is excused no more.
TEST(Image, ImportsWhatIsExcused) {
  const auto lines = lines_of(image_text(file_path));
  for (const std::string& function : kNotInWindowsXp) EXPECT_THAT(lines, ::testing::Contains("  " + function));
}

TEST(Image, ImportsTheSystemsOwnLibrariesAlone) {
  const std::set<std::string> allowed = {"advapi32.dll", "kernel32.dll", "msvcrt.dll",
                                         "ole32.dll",    "oleaut32.dll", "user32.dll"};
  constexpr std::string_view kImport = "import ";
  std::size_t imported = 0;
  for (const std::string& line : lines_of(image_text(file_path))) {
    if (!line.starts_with(kImport)) continue;
    EXPECT_TRUE(allowed.contains(line.substr(kImport.size()))) << line;
    ++imported;
  }
  EXPECT_GT(imported, 0U);
}

void update() {
  Contract contract = read_contract();
  for (const auto& [name, text] : built()) {
    if (kFrozenByThisCompiler || name != kThisImage) contract[name] = text;
  }
  write_contract(contract);
  std::cout << "written: " << contract_path
            << (kFrozenByThisCompiler ? "\n" : ", but for the image, which GCC 12 writes\n");
}

std::wstring path_of(const char* argument) {
  std::wstring wide(MAX_PATH, L'\0');
  wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, argument, -1, wide.data(), MAX_PATH)));
  return full_path(wide);
}

}  // namespace
}  // namespace corvelle::testing

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  if (count < 4) {
    std::cerr << "usage: contract_tests DLL DATA_ACCESS_STUB CONTRACT [--update]\n";
    return 2;
  }
  using namespace corvelle::testing;
  file_path = path_of(arguments[1]);
  stub_path = path_of(arguments[2]);
  contract_path = arguments[3];
  CoInitialize(nullptr);
  if (count == 5 && std::string(arguments[4]) == "--update") {
    update();
    return 0;
  }
  return RUN_ALL_TESTS();
}
