// Hosts that set floating-point arithmetic in a way of their own: each result is the same, through both bindings, and
// the control words are as they were. Where the host has a number raise an exception, none gets out.
#include "tests/support/floating_point.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <optional>

#include "tests/cases/classification_cases.h"
#include "tests/cases/date_cases.h"
#include "tests/cases/decimal_cases.h"
#include "tests/cases/fields_cases.h"
#include "tests/cases/pinyin_cases.h"
#include "tests/cases/replacement_cases.h"
#include "tests/cases/substrings_cases.h"
#include "tests/cases/text_slot_cases.h"
#include "tests/cases/width_cases.h"
#include "tests/component/published_call.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

// What a call ends in: its HRESULT, and its result for a person to read.
using Ending = std::pair<HRESULT, std::string>;

class FloatingPointCalls : public ::testing::Test {
 protected:
  static Ending ending_of(const Published& called, const Arguments& arguments, Binding binding,
                          const FloatingPoint& setting) {
    if (binding == Binding::late) {
      std::optional<Outcome> outcome;
      EXPECT_TRUE(
          keeps(setting, [&] { outcome.emplace(invoke(called.object.Get(), called.operation->dispid, arguments)); }));
      const HRESULT result = outcome->result == DISP_E_EXCEPTION ? outcome->scode : outcome->result;
      return {result, shown(value_of(outcome->value.get()))};
    }
    VtableCall call(called, arguments);
    HRESULT result = E_UNEXPECTED;
    EXPECT_TRUE(keeps(setting, [&] { result = call.run(); }));
    return {result, shown(value_of(call.result()))};
  }

  void expect_the_same(std::u16string_view operation, const Arguments& arguments,
                       std::initializer_list<Binding> bindings = {Binding::late, Binding::early}) {
    const Published called = objects_.find(operation);
    ASSERT_NE(called.operation, nullptr);
    for (const Binding binding : bindings) {
      const Ending expected = ending_of(called, arguments, binding, kUsualFloatingPoint);
      for (const FloatingPoint& setting : settings_) {
        EXPECT_EQ(ending_of(called, arguments, binding, setting), expected)
            << utf8(operation) << (binding == Binding::late ? " late bound, x87 " : " early bound, x87 ") << std::hex
            << setting.x87 << ", SSE " << setting.sse;
      }
    }
  }

  void expect_the_same(std::span<const OperationCase> cases) {
    for (const OperationCase& row : cases) {
      SCOPED_TRACE(row.reason);
      Arguments arguments;
      append(row.arguments, *objects_.find(row.operation).operation, arguments);
      expect_the_same(row.operation, arguments);
    }
  }

 private:
  Apartment apartment_;
  PublishedObjects objects_;
  std::vector<FloatingPoint> settings_ = every_floating_point();
};

// A number by its bits, since passing it on as a number may change it, or raise.
VARIANT number_of(std::uint64_t bits, VARTYPE type) {
  VARIANT number;
  VariantInit(&number);
  V_VT(&number) = type;
  std::memcpy(&V_R8(&number), &bits, sizeof bits);
  return number;
}

TEST_F(FloatingPointCalls, GiveTheSameTexts) {
  expect_the_same(width_cases());
  expect_the_same(fields_cases());
  expect_the_same(substrings_cases());
  expect_the_same(replacement_cases());
  expect_the_same(pinyin_cases());
  expect_the_same(text_slot_cases());
  expect_the_same(classification_cases());
}

TEST_F(FloatingPointCalls, GiveTheSameNumbersAndDates) {
  expect_the_same(decimal_cases());
  expect_the_same(date_cases());
  for (const std::uint64_t bits : kTroublesomeNumbers) {
    SCOPED_TRACE(::testing::Message() << std::hex << bits);
    expect_the_same(u"dateToStr_Pf", Arguments().borrowed(number_of(bits, VT_DATE)));
  }
}

// By the platform's own conversions, which take floating-point arithmetic as they find it.
TEST_F(FloatingPointCalls, ConvertTheSame) {
  const auto expect_late = [&](std::u16string_view operation, const Arguments& arguments) {
    expect_the_same(operation, arguments, {Binding::late});
  };
  for (const std::uint64_t bits : kTroublesomeNumbers) {
    SCOPED_TRACE(::testing::Message() << std::hex << bits);
    for (const VARTYPE type : {VT_R8, VT_DATE}) {
      expect_late(u"Center", Arguments().borrowed(number_of(bits, type)));
      expect_late(u"GetByte_Pf", Arguments().text(u"ab").borrowed(number_of(bits, type)));
    }
    expect_late(u"dateToStr_Pf", Arguments().borrowed(number_of(bits, VT_R8)));
  }
  for (const char16_t* text : {u"0.1", u"1e300", u"-2.5", u"32767.5", u"1e-320", u"2024-02-29", u"x"}) {
    expect_late(u"GetByte_Pf", Arguments().text(u"ab").text(text));
    expect_late(u"Get_String", Arguments().text(u"abc").text(text).text(text));
    expect_late(u"dateToStr_Pf", Arguments().text(text));
  }
}

TEST_F(FloatingPointCalls, TouchTheSameColumns) {
  for (const std::uint64_t bits : kTroublesomeNumbers) {
    SCOPED_TRACE(::testing::Message() << std::hex << bits);
    GridModel model;
    model.cols = 40000;
    model.rows = 300;
    const ComPtr<LateBound> grid = owned(new_grid(model, [&](VARIANT& cols) { cols = number_of(bits, VT_R8); }));
    SHORT alignment = 4;
    for (const char16_t* operation : {u"SetGrdCenter", u"SetGrdAlign", u"ClearGrd"}) {
      Arguments arguments;
      arguments.borrowed(object_variant(grid.Get()));
      if (operation == std::u16string_view(u"SetGrdAlign")) arguments.borrowed(reference_to(&alignment));
      expect_the_same(operation, arguments);
    }
  }
}

TEST_F(FloatingPointCalls, DoTheSameElsewhere) {
  DaoModel model;
  const ComPtr<LateBound> database = owned(new_dao_database(model));
  const VARIANT db = object_variant(database.Get());
  expect_the_same(u"IFTable", Arguments().borrowed(db).text(u"customers"));
  expect_the_same(u"IFTable", Arguments().borrowed(db).text(u"suppliers"));
  expect_the_same(u"IFField", Arguments().borrowed(db).text(u"Orders").text(u"city").int16(0));
  expect_the_same(u"CreateIndex", Arguments().borrowed(db).text(u"Orders").text(u"ByCity").text(u"city"));
  expect_the_same(u"CreateIndex2", Arguments().borrowed(db).text(u"Orders").text(u"By2").text(u"city").text(u"id"));
  expect_the_same(u"File_Find", Arguments().text(u"C:\\windows\\*"));
  expect_the_same(u"GetComputerNm", Arguments());
  expect_the_same(u"ClsVexApp.GetComputerNm", Arguments());
}

}  // namespace
}  // namespace corvelle::testing
