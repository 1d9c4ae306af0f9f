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

// Where the data access library is not registered, hosts see the DLL's second library instead of its first.
TEST(SelfContainedLibrary, SaysTheSameButForTheDatabase) {
  CoInitialize(nullptr);
  const std::string alone = type_library_text(CORVELLE_FOLDER L"/Corvelle.dll\\2");
  {
    const DataAccessLibrary data_access(CORVELLE_FOLDER L"/data_access_stub.tlb");
    const std::string database =
        "<{00000071-0000-0010-8000-00AA006D2EA4} of library {00025E01-0000-0000-C000-000000000046} 4.0>*";
    EXPECT_EQ(alone, replaced(type_library_text(CORVELLE_FOLDER L"/Corvelle.dll"), database, "object"));
  }
  CoUninitialize();
}

}  // namespace
}  // namespace corvelle::testing
