// A host that carries Corvelle.manifest, with Corvelle.dll and Corvelle.X.manifest beside it.

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/component/host.h"
#include "tests/component/registration_free/nothing_registered.h"

namespace corvelle::testing {
namespace {

using EmbeddedManifest = NothingRegistered;

std::wstring file_of(HMODULE module) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(module, path.data(), MAX_PATH));
  return path;
}

// The identifier that a ProgID stands for is one that the system made up for the manifest.
TEST_F(EmbeddedManifest, GivesBothClassesByProgId) {
  const Apartment apartment;
  for (const ClassDescription* description : kClasses) EXPECT_NE(create(description->prog_id).Get(), nullptr);
}

TEST_F(EmbeddedManifest, GivesBothClassesByClassId) {
  const Apartment apartment;
  for (const ClassDescription* description : kClasses) {
    ComPtr<IUnknown> object;
    EXPECT_EQ(CoCreateInstance(description->class_id, nullptr, CLSCTX_INPROC_SERVER, description->interface_id,
                               reinterpret_cast<void**>(object.GetAddressOf())),
              S_OK);
  }
}

TEST_F(EmbeddedManifest, LoadsTheDllBesideTheHost) {
  const Apartment apartment;
  const auto validate = create(L"Corvelle.ClsValidate");
  const std::wstring host = file_of(nullptr);
  EXPECT_EQ(file_of(GetModuleHandleW(L"Corvelle.dll")), host.substr(0, host.rfind(L'\\')) + L"\\Corvelle.dll");
}

TEST_F(EmbeddedManifest, LateBoundCallsAnswer) {
  const Apartment apartment;
  const Outcome width = invoke(create(L"Corvelle.ClsValidate").Get(), L"GetByte_Pf", Arguments().text(u"中a").int16(0));
  EXPECT_EQ(width.result, S_OK);
  EXPECT_EQ(shown(value_of(width.value.get())), "3");
}

TEST_F(EmbeddedManifest, ErrorsArriveWithTheirTexts) {
  const Apartment apartment;
  const Outcome failed = invoke(create(L"Corvelle.ClsValidate").Get(), L"GetByte_Pf",
                                Arguments().text(std::u16string(32767, u'a')).int16(0));
  EXPECT_EQ(failed.result, DISP_E_EXCEPTION);
  EXPECT_EQ(failed.scode, static_cast<HRESULT>(0x800A0006));
  EXPECT_EQ(failed.source, u"Corvelle.ClsValidate");
}

TEST_F(EmbeddedManifest, EarlyBoundCallsAnswer) {
  const Apartment apartment;
  const ScopedBstr text(u"中a");
  SHORT width = 0;
  EXPECT_EQ(create_validate()->GetByte_Pf(text.get(), 0, &width), S_OK);
  EXPECT_EQ(width, 3);
  ScopedVariant nothing;
  ScopedBstr kept;
  const auto application = create_vex_app();
  EXPECT_EQ(application->Set_Str(text.get(), nothing.receive()), S_OK);
  EXPECT_EQ(application->Get_Str(kept.receive()), S_OK);
  EXPECT_EQ(kept.view(), u"中a");
}

TEST_F(EmbeddedManifest, ObjectsDescribeThemselves) {
  const Apartment apartment;
  ComPtr<ITypeInfo> type;
  EXPECT_EQ(create(L"Corvelle.ClsValidate")->GetTypeInfo(0, LOCALE_NEUTRAL, &type), S_OK);
}

}  // namespace
}  // namespace corvelle::testing
