// A host without a manifest of its own, which makes an activation context from Corvelle.manifest while it runs.

#include <windows.h>

#include <gtest/gtest.h>

#include "tests/component/host.h"
#include "tests/component/registration_free/nothing_registered.h"

namespace corvelle::testing {
namespace {

using ActivationContext = NothingRegistered;

HANDLE context_of(const wchar_t* manifest) {
  ACTCTXW described = {};
  described.cbSize = sizeof(described);
  described.lpSource = manifest;
  return CreateActCtxW(&described);
}

HRESULT found_by_prog_id() {
  CLSID class_id = {};
  return CLSIDFromProgID(L"Corvelle.ClsValidate", &class_id);
}

HRESULT created_by_class_id() {
  ComPtr<IUnknown> object;
  return CoCreateInstance(kClsVexAppId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                          reinterpret_cast<void**>(object.GetAddressOf()));
}

TEST_F(ActivationContext, GivesTheClassesWhileItIsActive) {
  const Apartment apartment;
  EXPECT_EQ(found_by_prog_id(), CO_E_CLASSSTRING);
  EXPECT_EQ(created_by_class_id(), REGDB_E_CLASSNOTREG);

  const HANDLE context = context_of(CORVELLE_MANIFEST);
  ASSERT_NE(context, INVALID_HANDLE_VALUE) << GetLastError();
  ULONG_PTR cookie = 0;
  ASSERT_TRUE(ActivateActCtx(context, &cookie));
  EXPECT_EQ(found_by_prog_id(), S_OK);
  EXPECT_EQ(created_by_class_id(), S_OK);
  const Outcome padded =
      invoke(create(L"Corvelle.ClsValidate").Get(), L"Set_String1", Arguments().text(u"螺栓").int32(6));
  EXPECT_EQ(padded.result, S_OK);
  EXPECT_EQ(shown(value_of(padded.value.get())), "\"螺栓  \" [4 characters]");
  ASSERT_TRUE(DeactivateActCtx(0, cookie));
  ReleaseActCtx(context);

  EXPECT_EQ(found_by_prog_id(), CO_E_CLASSSTRING);
  EXPECT_EQ(created_by_class_id(), REGDB_E_CLASSNOTREG);
}

}  // namespace
}  // namespace corvelle::testing
