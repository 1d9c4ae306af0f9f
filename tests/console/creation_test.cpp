// By whose registration the tool creates its classes and reads the type library, with and without rights.

#include "console/creation.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>

#include "component/registration_keys.h"
#include "console/surroundings.h"
#include "console/type_library.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/support/component_file.h"
#include "tests/support/loaded_image.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;

// What the system says of this program, and how often it was asked for what registrations lead to.
struct Answers {
  BOOL opens_token = TRUE;
  BOOL knows_elevation = TRUE;
  DWORD elevated = 0;
  BOOL is_administrator = FALSE;
  int creations = 0;
  int libraries = 0;
};
Answers answers;

BOOL WINAPI open_token(HANDLE /*process*/, DWORD /*access*/, PHANDLE token) {
  *token = nullptr;
  return answers.opens_token;
}

BOOL WINAPI token_information(HANDLE /*token*/, TOKEN_INFORMATION_CLASS /*wanted*/, LPVOID information, DWORD /*size*/,
                              PDWORD /*needed*/) {
  static_cast<TOKEN_ELEVATION*>(information)->TokenIsElevated = answers.elevated;
  return answers.knows_elevation;
}

BOOL WINAPI token_membership(HANDLE /*token*/, PSID /*group*/, PBOOL is_member) {
  *is_member = answers.is_administrator;
  return TRUE;
}

HRESULT STDAPICALLTYPE create_instance(REFCLSID /*class_id*/, LPUNKNOWN /*outer*/, DWORD /*context*/,
                                       REFIID /*interface_id*/, LPVOID* result) {
  ++answers.creations;
  *result = nullptr;
  return E_ABORT;
}

HRESULT STDAPICALLTYPE load_registered(REFGUID /*id*/, WORD /*major*/, WORD /*minor*/, LCID /*locale*/,
                                       ITypeLib** result) {
  ++answers.libraries;
  *result = nullptr;
  return E_ABORT;
}

template <class Function>
void* address_of(Function* function) {
  return reinterpret_cast<void*>(function);
}

class Creation : public CleanMachine {
 protected:
  void SetUp() override {
    CleanMachine::SetUp();
    answers = {};
    for (const ReplacedImport* import : {&open_, &information_, &membership_, &instance_, &library_}) {
      ASSERT_TRUE(import->found());
    }
  }
  static HRESULT created() {
    ComPtr<IDispatch> object;
    const HRESULT result = console::create(kClsValidateClass, &object);
    EXPECT_EQ(SUCCEEDED(result), object != nullptr);
    return result;
  }
  static HRESULT loaded() {
    ComPtr<ITypeLib> library;
    return console::load_registered_library(&library);
  }
  static void register_for_machine() { ASSERT_EQ(ComponentFile(built_dll(kOwnBitness)).register_server(), S_OK); }

 private:
  const HMODULE own_ = GetModuleHandleW(nullptr);
  const ReplacedImport open_{own_, "OpenProcessToken", address_of(open_token)};
  const ReplacedImport information_{own_, "GetTokenInformation", address_of(token_information)};
  const ReplacedImport membership_{own_, "CheckTokenMembership", address_of(token_membership)};
  const ReplacedImport instance_{own_, "CoCreateInstance", address_of(create_instance)};
  const ReplacedImport library_{own_, "LoadRegTypeLib", address_of(load_registered)};
};

TEST_F(Creation, IsElevatedByItsTokenAndBeforeVistaByItsGroup) {
  EXPECT_FALSE(console::is_elevated());
  answers = {.elevated = 1};
  EXPECT_TRUE(console::is_elevated());
  answers = {.knows_elevation = FALSE};
  EXPECT_FALSE(console::is_elevated());
  answers = {.knows_elevation = FALSE, .is_administrator = TRUE};
  EXPECT_TRUE(console::is_elevated());
  answers = {.is_administrator = TRUE};
  EXPECT_FALSE(console::is_elevated()) << "an administrator's ordinary program";
  answers = {.opens_token = FALSE};
  EXPECT_TRUE(console::is_elevated()) << "not known";
}

TEST_F(Creation, IsTheSystemsWithoutRights) {
  register_for_machine();
  EXPECT_EQ(created(), E_ABORT);
  EXPECT_EQ(loaded(), E_ABORT);
  EXPECT_EQ(answers.creations, 1);
  EXPECT_EQ(answers.libraries, 1);
}

TEST_F(Creation, IsByTheMachinesRegistrationAloneWithRights) {
  register_for_machine();
  answers.elevated = 1;
  EXPECT_EQ(created(), S_OK);
  EXPECT_EQ(loaded(), S_OK);
  remove_component_keys();
  EXPECT_EQ(created(), CO_E_CLASSSTRING);
  EXPECT_EQ(loaded(), TYPE_E_LIBNOTREGISTERED);
  EXPECT_EQ(answers.creations, 0);
  EXPECT_EQ(answers.libraries, 0);
}

// A file in the current folder, a device, a class of another.
TEST_F(Creation, TakesNoRegistrationThatLeadsNowhere) {
  answers.elevated = 1;
  const auto set = [](const std::wstring& key, const std::wstring& value) {
    set_default(HKEY_LOCAL_MACHINE, key, value);
  };
  register_for_machine();
  for (const wchar_t* file : {L"Corvelle.dll", L"\\\\.\\pipe\\corvelle", L"script:somewhere", L""}) {
    set(std::wstring(server_key(kClsValidateClass)), file);
    set(std::wstring(library_file_key()), file);
    EXPECT_EQ(created(), CO_E_DLLNOTFOUND);
    EXPECT_EQ(loaded(), TYPE_E_CANTLOADLIBRARY);
  }
  set(std::wstring(server_key(kClsValidateClass)), L"C:\\windows\\system32\\kernel32.dll");
  EXPECT_EQ(created(), CO_E_ERRORINDLL);
  set(L"Corvelle.ClsValidate\\Clsid", std::wstring(text_of_id(kClsVexAppId)));
  EXPECT_EQ(created(), CO_E_CLASSSTRING);
}

}  // namespace
}  // namespace corvelle::testing
