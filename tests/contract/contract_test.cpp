// The frozen contract: what the built DLL promises its hosts equals contract.txt.
//
//   contract_tests DLL DATA_ACCESS_STUB CONTRACT [--update | --may-import-less]
//
// --update writes the file anew, on purpose; tests/contract/update does so for both bitnesses.
// --may-import-less is for the DLL of another compiler, whose code may do without some of the imported functions.

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>

#include <algorithm>
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

std::wstring file_path;
std::wstring stub_path;
std::string contract_path;
bool may_import_less = false;

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

const Contract& built() {
  static const Contract contract = contract_of_built_dll();
  return contract;
}

// The names of imported functions are the lines that are set in. Another compiler writes some of the C library's out,
// and calls one that Windows XP has, too.
void erase_other_imports(std::vector<std::string>& expected, std::vector<std::string>& actual) {
  std::erase(actual, "  memset");
  std::erase_if(expected, [&](const std::string& line) {
    return line.starts_with("  ") && std::find(actual.begin(), actual.end(), line) == actual.end();
  });
}

class ContractSection : public ::testing::TestWithParam<const char*> {};

TEST_P(ContractSection, IsUnchanged) {
  const Contract frozen = read_contract();
  ASSERT_TRUE(frozen.contains(GetParam())) << "no such section in the contract";
  auto expected = lines_of(frozen.at(GetParam()));
  auto actual = lines_of(built().at(GetParam()));
  if (may_import_less && GetParam() == std::string_view(kThisImage)) erase_other_imports(expected, actual);
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
TEST(Image, IsSmall) { EXPECT_LT(std::filesystem::file_size(file_path), sizeof(void*) == 4 ? 300'000 : 280'000); }

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
  for (const auto& [name, text] : built()) contract[name] = text;
  write_contract(contract);
  std::cout << "written: " << contract_path << "\n";
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
    std::cerr << "usage: contract_tests DLL DATA_ACCESS_STUB CONTRACT [--update | --may-import-less]\n";
    return 2;
  }
  using namespace corvelle::testing;
  file_path = path_of(arguments[1]);
  stub_path = path_of(arguments[2]);
  contract_path = arguments[3];
  CoInitialize(nullptr);
  const std::string_view option = count == 5 ? arguments[4] : "";
  if (option == "--update") {
    update();
    return 0;
  }
  may_import_less = option == "--may-import-less";
  return RUN_ALL_TESTS();
}
