// The shipped IDL text says what the DLL's type library says: a compiler makes the same library from it.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/contract/contract_text.h"
#include "tests/support/data_access_library.h"

namespace corvelle::testing {
namespace {

// `text` with every `part` changed to `other`; a part that is nowhere fails the test.
std::string replaced(std::string text, const std::string& part, const std::string& other) {
  EXPECT_NE(text.find(part), std::string::npos) << part;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += other.size()) {
    text.replace(at, part.size(), other);
  }
  return text;
}

TEST(Idl, CompilesToTheTypeLibraryOfTheDll) {
  CoInitialize(nullptr);
  {
    const DataAccessLibrary data_access(CORVELLE_FOLDER L"/data_access_stub.tlb");
    // The one default that the text leaves out for this compiler, and says so.
    const std::string expected = replaced(type_library_text(CORVELLE_FOLDER L"/Corvelle.dll"), " = \"年月日\"", "");
    EXPECT_EQ(type_library_text(CORVELLE_COMPILED_IDL), expected);
  }
  CoUninitialize();
}

}  // namespace
}  // namespace corvelle::testing
