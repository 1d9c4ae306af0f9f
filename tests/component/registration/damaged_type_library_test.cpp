// The component without its type library: calls work, descriptions are an error.

#include <windows.h>

#include <gtest/gtest.h>
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "component/automation.h"
#include "component/class_description.h"
#include "component/interfaces.h"
#include "tests/support/component_file.h"

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;
using namespace std::string_view_literals;

struct Damage {
  const char* name;
  std::string_view found;   // the first place in the DLL that holds these bytes …
  std::size_t behind;       // … and so many bytes behind its start …
  std::string_view wanted;  // … is overwritten with these
};

constexpr std::string_view kLibraryStart = "MSFT\2\0\1\0"sv;
constexpr std::string_view kResourceType = "T\0Y\0P\0E\0L\0I\0B\0"sv;

constexpr std::size_t kDirectory = 84;  // behind the library's header

const std::string kZeros(64, '\0');
const std::string kGarbage(64, '\x5A');

// What the system's reader notices. Where it trusts the bytes it is lost, with any library.
const Damage kDamages[] = {
    {"Missing", kResourceType, 0, "X\0Y\0P\0E\0L\0I\0B\0"sv},
    {"OfAnUnknownFormat", kLibraryStart, 0, "XXXX"sv},
    {"FullOfZeros", kLibraryStart, 0, kZeros},
    {"FullOfGarbage", kLibraryStart, 0, kGarbage},
    {"WithAGarbledDirectory", kLibraryStart, kDirectory, kGarbage},
};

void write_damaged_copy(const Damage& damage, const char* path) {
  std::ifstream source(CORVELLE_DLL, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(source), {});
  const std::size_t place = bytes.find(damage.found);
  ASSERT_NE(place, std::string::npos);
  bytes.replace(place + damage.behind, damage.wanted.size(), damage.wanted);
  std::ofstream(path, std::ios::binary) << bytes;
}

class DamagedTypeLibrary : public ::testing::TestWithParam<Damage> {
 protected:
  void SetUp() override {
    CoInitialize(nullptr);
    write_damaged_copy(GetParam(), "damaged.dll");
  }
  void TearDown() override {
    DeleteFileW(L"damaged.dll");
    CoUninitialize();
  }
};

TEST_P(DamagedTypeLibrary, LeavesCallsWorking) {
  const ComponentFile file(L"damaged.dll");
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(file.class_object(kClsValidateId, IID_PPV_ARGS(&factory)), S_OK);
  ComPtr<_ClsValidate> object;
  ASSERT_EQ(factory->CreateInstance(nullptr, kClsValidateInterfaceId, reinterpret_cast<void**>(object.GetAddressOf())),
            S_OK);

  const ScopedBstr text(u"中a");
  SHORT width = 0;
  EXPECT_EQ(object->GetByte_Pf(text.get(), 0, &width), S_OK);
  EXPECT_EQ(width, 3);

  wchar_t name[] = L"getbyte_pf";
  wchar_t* names = name;
  DISPID dispid = 0;
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, 0, &dispid), S_OK);
  EXPECT_EQ(dispid, 0x6003001F);
  VARIANT arguments[2];
  V_VT(&arguments[1]) = VT_BSTR;
  V_BSTR(&arguments[1]) = text.get();
  V_VT(&arguments[0]) = VT_I2;
  V_I2(&arguments[0]) = 0;
  DISPPARAMS parameters = {arguments, nullptr, 2, 0};
  ScopedVariant result;
  EXPECT_EQ(object->Invoke(dispid, IID_NULL, 0, DISPATCH_METHOD, &parameters, result.receive(), nullptr, nullptr),
            S_OK);
  EXPECT_EQ(V_VT(&result.get()), VT_I2);
  EXPECT_EQ(V_I2(&result.get()), 3);

  ComPtr<ITypeInfo> type;
  EXPECT_EQ(object->GetTypeInfo(0, 0, &type), TYPE_E_CANTLOADLIBRARY);
  EXPECT_EQ(type, nullptr);
  ComPtr<IProvideClassInfo> provider;
  ASSERT_EQ(object.As(&provider), S_OK);
  EXPECT_EQ(provider->GetClassInfo(&type), TYPE_E_CANTLOADLIBRARY);
  EXPECT_EQ(type, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Library, DamagedTypeLibrary, ::testing::ValuesIn(kDamages),
                         [](const auto& damage) { return std::string(damage.param.name); });

}  // namespace
}  // namespace corvelle::testing
