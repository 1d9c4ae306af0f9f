// The class factories and the identity of objects.
#include <gtest/gtest.h>

#include "component/identifiers.h"
#include "tests/component/host.h"
#include "tests/component/process.h"

namespace corvelle::testing {
namespace {

TEST(Creation, ByProgIdGivesBothClasses) {
  const Apartment apartment;
  EXPECT_NE(create(L"Corvelle.ClsValidate").Get(), nullptr);
  EXPECT_NE(create(L"Corvelle.ClsVexApp").Get(), nullptr);
}

TEST(Creation, ProgIdsStandForThePublishedClasses) {
  CLSID class_id = {};
  EXPECT_EQ(CLSIDFromProgID(L"Corvelle.ClsValidate", &class_id), S_OK);
  EXPECT_EQ(class_id, kClsValidateId);
  EXPECT_EQ(CLSIDFromProgID(L"Corvelle.ClsVexApp", &class_id), S_OK);
  EXPECT_EQ(class_id, kClsVexAppId);
}

TEST(Creation, EveryRequestGivesANewObject) {
  const Apartment apartment;
  const auto first = create(L"Corvelle.ClsValidate");
  EXPECT_NE(create(L"Corvelle.ClsValidate").Get(), first.Get());
}

TEST(Creation, AnObjectHasOneIdentity) {
  const Apartment apartment;
  const auto dispatch = create(L"Corvelle.ClsValidate");
  ComPtr<IUnknown> first;
  ComPtr<IUnknown> second;
  ComPtr<ISupportErrorInfo> support;
  ASSERT_EQ(dispatch.As(&first), S_OK);
  ASSERT_EQ(dispatch->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(support.GetAddressOf())), S_OK);
  ASSERT_EQ(support.As(&second), S_OK);
  EXPECT_EQ(first.Get(), second.Get());
}

TEST(Creation, AnObjectHasItsOwnInterfaceOnly) {
  const Apartment apartment;
  const auto validate = create(L"Corvelle.ClsValidate");
  void* other = &other;
  EXPECT_EQ(validate->QueryInterface(kClsVexAppInterfaceId, &other), E_NOINTERFACE);
  EXPECT_EQ(other, nullptr);
  EXPECT_EQ(validate->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(ClassFactory, RefusesAggregation) {
  const Apartment apartment;
  const auto outer = create(L"Corvelle.ClsVexApp");
  void* object = &object;
  EXPECT_EQ(factory_of(kClsValidateId)->CreateInstance(outer.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
}

TEST(ClassFactory, RefusesAnInterfaceThatTheClassLacks) {
  const Apartment apartment;
  void* object = &object;
  EXPECT_EQ(factory_of(kClsValidateId)->CreateInstance(nullptr, IID_IClassFactory, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory_of(kClsValidateId)->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST(ClassFactory, IsNotAvailableForAnotherClass) {
  const Apartment apartment;
  const auto keeps_loaded = create(L"Corvelle.ClsValidate");
  const auto get_class_object = exported<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  void* factory = &factory;
  EXPECT_EQ(get_class_object(kLibraryId, IID_IClassFactory, &factory), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(factory, nullptr);
  EXPECT_EQ(get_class_object(kClsVexAppId, IID_IDispatch, &factory), E_NOINTERFACE);
  EXPECT_EQ(factory, nullptr);
  EXPECT_EQ(get_class_object(kClsVexAppId, IID_IClassFactory, nullptr), E_POINTER);
}

}  // namespace
}  // namespace corvelle::testing
