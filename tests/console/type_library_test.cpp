// A type library whose answers are at random wrong, and one whose bytes are.

#include "console/type_library.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "component/registration_keys.h"
#include "tests/component/registration/machine.h"
#include "tests/console/clean_machine.h"
#include "tests/console/files.h"
#include "tests/console/tool.h"
#include "tests/support/component_file.h"
#include "tests/support/temporary_folder.h"

namespace corvelle::testing {
namespace {

using console::DescribedOperation;
using console::operations_of;

// Memory for parameters, behind which nothing can be read.
class ParameterSpace {
 public:
  ParameterSpace()
      : pages_(static_cast<BYTE*>(VirtualAlloc(nullptr, 2 * kPage, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE))) {
    DWORD before = 0;
    VirtualProtect(pages_ + kPage, kPage, PAGE_NOACCESS, &before);
  }
  ~ParameterSpace() { VirtualFree(pages_, 0, MEM_RELEASE); }
  ParameterSpace(const ParameterSpace&) = delete;
  ParameterSpace& operator=(const ParameterSpace&) = delete;

  ELEMDESC* last(std::size_t count) const { return reinterpret_cast<ELEMDESC*>(pages_ + kPage) - count; }

 private:
  static constexpr std::size_t kPage = 4096;
  BYTE* pages_;
};

// Type information that gives at random what a damaged library might: every count, null, types that lead to
// themselves, names that are missing, functions that never end.
class DamagedType : public ITypeInfo {
 public:
  DamagedType(unsigned seed, unsigned damages_in_100) : random_(seed), damages_in_100_(damages_in_100) {
    functions_ = seed % 50 == 0 ? UINT_MAX : random_() % 5;
    loop_.vt = VT_PTR;
    loop_.lptdesc = &loop_;
    nowhere_.vt = VT_PTR;
    nowhere_.lptdesc = nullptr;
    text_.vt = VT_BSTR;
  }
  virtual ~DamagedType() = default;

  int held() const { return held_; }

  STDMETHODIMP GetFuncDesc(UINT index, FUNCDESC** description) override {
    if (index >= functions_) return TYPE_E_ELEMENTNOTFOUND;
    *description = nullptr;
    if (strikes()) return S_OK;
    ++held_;
    *description = &function_;
    function_ = {};
    constexpr std::array<SHORT, 6> kCounts = {6, 7, -1, SHRT_MIN, SHRT_MAX, 1000};
    const SHORT sound = static_cast<SHORT>(random_() % (kMaxParameters + 1));
    function_.memid = static_cast<MEMBERID>(random_() % 5 == 0 ? random_() : 0x60030000u + index);
    function_.cParams = strikes() ? kCounts[random_() % kCounts.size()] : sound;
    function_.lprgelemdescParam = strikes() ? nullptr : space_.last(static_cast<std::size_t>(sound));
    function_.elemdescFunc.tdesc = any_type();
    for (SHORT i = 0; i < sound; ++i) space_.last(static_cast<std::size_t>(sound))[i] = any_parameter();
    return S_OK;
  }
  STDMETHODIMP_(void) ReleaseFuncDesc(FUNCDESC* /*description*/) override { --held_; }
  STDMETHODIMP GetNames(MEMBERID /*member*/, BSTR* names, UINT most, UINT* count) override {
    if (strikes()) return E_FAIL;
    const UINT given = strikes() ? random_() % (most + 1) : most;
    for (UINT i = 0; i < given; ++i) names[i] = strikes() ? nullptr : SysAllocString(L"Name");
    *count = strikes() ? random_() : given;
    return S_OK;
  }

  STDMETHODIMP QueryInterface(REFIID /*interface_id*/, void** result) override {
    *result = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeAttr(TYPEATTR** /*attributes*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeComp(ITypeComp** /*compiler*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetVarDesc(UINT /*index*/, VARDESC** /*description*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetRefTypeOfImplType(UINT /*index*/, HREFTYPE* /*type*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetImplTypeFlags(UINT /*index*/, INT* /*flags*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(LPOLESTR* /*names*/, UINT /*count*/, MEMBERID* /*ids*/) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(PVOID /*instance*/, MEMBERID /*member*/, WORD /*flags*/, DISPPARAMS* /*parameters*/,
                      VARIANT* /*result*/, EXCEPINFO* /*exception*/, UINT* /*wrong_argument*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetDocumentation(MEMBERID /*member*/, BSTR* /*name*/, BSTR* /*text*/, DWORD* /*context*/,
                                BSTR* /*file*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetDllEntry(MEMBERID /*member*/, INVOKEKIND /*kind*/, BSTR* /*dll*/, BSTR* /*name*/,
                           WORD* /*ordinal*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetRefTypeInfo(HREFTYPE /*type*/, ITypeInfo** /*result*/) override { return E_NOTIMPL; }
  STDMETHODIMP AddressOfMember(MEMBERID /*member*/, INVOKEKIND /*kind*/, PVOID* /*address*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP CreateInstance(IUnknown* /*outer*/, REFIID /*interface_id*/, PVOID* /*result*/) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetMops(MEMBERID /*member*/, BSTR* /*text*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainingTypeLib(ITypeLib** /*library*/, UINT* /*index*/) override { return E_NOTIMPL; }
  STDMETHODIMP_(void) ReleaseTypeAttr(TYPEATTR* /*attributes*/) override {}
  STDMETHODIMP_(void) ReleaseVarDesc(VARDESC* /*description*/) override {}

 private:
  bool strikes() { return random_() % 100 < damages_in_100_; }

  TYPEDESC any_type() {
    if (strikes()) return random_() % 2 == 0 ? loop_ : nowhere_;
    TYPEDESC type = {};
    constexpr std::array<VARTYPE, 8> kTypes = {VT_I2,      VT_I4,   VT_BSTR,        VT_DATE,
                                               VT_VARIANT, VT_VOID, VT_USERDEFINED, VT_PTR};
    type.vt = strikes() ? static_cast<VARTYPE>(random_()) : kTypes[random_() % kTypes.size()];
    type.lptdesc = &text_;
    return type;
  }
  ELEMDESC any_parameter() {
    ELEMDESC parameter = {};
    parameter.tdesc = any_type();
    parameter.paramdesc.wParamFlags = static_cast<USHORT>(random_() % 64);
    parameter.paramdesc.pparamdescex = strikes() ? nullptr : &default_;
    default_ = {};
    V_VT(&default_.varDefaultValue) = strikes() ? static_cast<VARTYPE>(random_()) : static_cast<VARTYPE>(VT_I4);
    return parameter;
  }

  std::mt19937 random_;
  unsigned damages_in_100_;
  UINT functions_;
  int held_ = 0;
  FUNCDESC function_ = {};
  PARAMDESCEX default_ = {};
  TYPEDESC loop_ = {};
  TYPEDESC nowhere_ = {};
  TYPEDESC text_ = {};
  ParameterSpace space_;
};

TEST(TypeLibrary, OfAnyAnswersIsDescribedOrDamaged) {
  std::map<HRESULT, int> results;
  std::size_t described = 0;
  for (unsigned seed = 0; seed < 20'000; ++seed) {
    DamagedType type(seed, seed % 30);
    std::vector<DescribedOperation> operations;
    ++results[operations_of(&type, &operations)];
    described += operations.size();
    ASSERT_EQ(type.held(), 0) << "a description was not given back, seed " << seed;
    for (const DescribedOperation& operation : operations) {
      ASSERT_EQ(operation.name, L"Name");
      ASSERT_EQ(operation.signature.find(L"Name("), 0u);
      ASSERT_GE(operation.member, 0x60030000);
    }
  }
  EXPECT_EQ(results.size(), 2u) << "whole or damaged, and nothing else";
  EXPECT_GT(results[S_OK], 1000);
  EXPECT_GT(results[TYPE_E_INVDATAREAD], 1000);
  EXPECT_GT(described, 1000u);
}

class DamagedLibrary : public CleanMachine {
 protected:
  static constexpr std::string_view kStart = std::string_view("MSFT\2\0\1\0", 8);
};

// The system's own reader may be lost in it, and take its process along; the doctor goes on.
TEST_F(DamagedLibrary, IsAFindingOfTheDoctorWhateverItsBytes) {
  std::mt19937 random(20060630);
  const TemporaryFolder folder;
  const std::wstring dll = (folder.path() / "Corvelle.dll").wstring();
  const std::string built = content_of(built_dll(kOwnBitness));
  const std::size_t start = built.find(kStart);
  ASSERT_NE(start, std::string::npos);
  write(dll, built);
  ASSERT_EQ(ComponentFile(dll).register_server(), S_OK);
  int damaged = 0;
  for (int round = 0; round < 16; ++round) {
    std::string bytes = built;
    const std::size_t from = start + 8 + random() % 6000;
    const std::size_t count = 1 + random() % 256;
    for (std::size_t i = 0; i < count; ++i) bytes[from + i] = static_cast<char>(random());
    write(dll, bytes);
    const ToolRun run = run_tool({L"doctor", L"--language", L"en"});
    EXPECT_THAT(run.out, ::testing::HasSubstr("\n  Works")) << "round " << round;
    const bool found = run.out.find("PROBLEM: The type library within the file is damaged") != std::string::npos;
    EXPECT_EQ(run.status, found ? 1u : 0u) << "round " << round;
    damaged += found ? 1 : 0;
  }
  EXPECT_GT(damaged, 3);
}

// Where an operation's name is another, scripts work and hosts that bind early do not.
TEST_F(DamagedLibrary, WithoutAnOperationIsAFinding) {
  const TemporaryFolder folder;
  const std::wstring dll = (folder.path() / "Corvelle.dll").wstring();
  std::string bytes = content_of(built_dll(kOwnBitness));
  const std::size_t name = bytes.find("sumByte_Pf", bytes.find(kStart));
  ASSERT_NE(name, std::string::npos);
  bytes[name] = 'r';
  write(dll, bytes);
  ASSERT_EQ(ComponentFile(dll).register_server(), S_OK);
  EXPECT_THAT(run_tool({L"doctor", L"--language", L"en"}).out,
              ::testing::HasSubstr("PROBLEM: The type library within the file is damaged"));
}

}  // namespace
}  // namespace corvelle::testing
