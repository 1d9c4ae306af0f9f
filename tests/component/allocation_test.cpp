// How often an operation asks for memory. Each is called late bound, which goes through its vtable member.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <vector>

#include "component/class_description.h"
#include "tests/component/component_memory.h"
#include "tests/component/host.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

// One call of an operation, and how many allocations it may take.
struct Call {
  std::u16string_view operation;
  std::function<void(Arguments&)> arguments;
  int allocations;
};

class Allocations : public ::testing::Test {
 protected:
  void expect_counts(const ClassDescription& description, IDispatch* object, const std::vector<Call>& calls) {
    const ComponentMemory memory;
    std::map<std::u16string_view, int> called;
    for (const Call& call : calls) {
      ++called[call.operation];
      expect_count(memory, description, object, call);
    }
    for (const Operation& operation : description.operations) {
      EXPECT_GT(called[operation.name], 0) << utf8(operation.name) << " is not counted";
    }
  }

  Apartment apartment_;
  DaoModel database_model_;
  GridModel grid_model_;
  ComPtr<LateBound> database_ = owned(new_dao_database(database_model_));
  ComPtr<LateBound> grid_ = owned(new_grid(grid_model_));

 private:
  // The second call counts: what a thread or the process sets up once is set up by the first.
  void expect_count(const ComponentMemory& memory, const ClassDescription& description, IDispatch* object,
                    const Call& call) {
    SCOPED_TRACE(utf8(call.operation));
    for (const Operation& operation : description.operations) {
      if (operation.name != call.operation) continue;
      Arguments first;
      call.arguments(first);
      EXPECT_EQ(invoke(object, operation.dispid, first).result, S_OK);
      Arguments second;
      call.arguments(second);
      const int before = memory.allocations();
      const Outcome outcome = invoke(object, operation.dispid, second);
      EXPECT_EQ(memory.allocations() - before, call.allocations);
      EXPECT_EQ(outcome.result, S_OK);
      return;
    }
    ADD_FAILURE() << "no such operation";
  }
};

TEST_F(Allocations, OfClsValidate) {
  database_model_.ado_recordsets = true;
  const auto text = [](const char16_t* content) { return [content](Arguments& list) { list.text(content); }; };
  const auto texts = [](const char16_t* first, const char16_t* second) {
    return [=](Arguments& list) { list.text(first).text(second); };
  };
  const auto grid = [this](Arguments& list) { list.borrowed(object_variant(grid_.Get())); };
  const auto number = [](const char16_t* content, SHORT place, const char16_t* separator) {
    return [=](Arguments& list) { list.text(content).int16(place).text(separator); };
  };
  // Texts too long for a string that keeps short ones in itself.
  const char16_t* const kGoods = u"六角螺栓 M8×40 镀锌 二百件、十箱";
  expect_counts(
      kClsValidateClass, create(L"Corvelle.ClsValidate").Get(),
      {
          {u"sumByte_Pf", text(kGoods), 0},
          {u"GetByte_Pf", [=](Arguments& list) { list.text(kGoods).int16(0); }, 0},
          {u"is_AlphaNum", text(u"abcdefghijklmnopqrstuvwxyz"), 0},
          {u"Is_HuanZi", text(kGoods), 0},
          {u"getDays_Pf", [](Arguments& list) { list.int16(2024).int16(2); }, 0},
          {u"getDays_Pf", [](Arguments&) {}, 0},
          {u"getStr_Pf", number(u"1001,六角螺栓,200,镀锌,", 2, u","), 1},
          {u"getStrDo_Pf", number(u"1001,六角螺栓,200,镀锌,", 2, u","), 1},
          {u"getStrDo_Pf", number(u"1001,六角螺栓,200,镀锌,", 9, u","), 1},
          {u"Center", text(kGoods), 1},
          {u"GetStr", text(kGoods), 1},
          {u"getNum", text(kGoods), 1},
          {u"Get_Str", texts(kGoods, u"、"), 1},
          {u"CharChange", text(kGoods), 1},
          {u"getString_P", [=](Arguments& list) { list.text(kGoods).text(u"M").text(u"、"); }, 1},
          {u"Get_String", [=](Arguments& list) { list.text(kGoods).int32(2).int32(12); }, 1},
          {u"Set_String1", [=](Arguments& list) { list.text(kGoods).int32(60).int16(0); }, 1},
          {u"Set_String1", [=](Arguments& list) { list.text(kGoods).int32(10); }, 1},
          {u"dateToStr_Pf", [](Arguments& list) { list.date(38719.5); }, 1},
          {u"strDateFmt_Pf", texts(u"20060102", u"//"), 1},
          {u"strDateFmt_Pf", text(u"20060102"), 1},
          {u"GetDecimalFmt", text(u"1234.5"), 1},
          {u"GetDecimalFmt_4", text(u"1234.567891"), 1},
          {u"GetDecimalFmt_4", text(u"六角螺栓"), 1},
          {u"GetDecimalFmt_8", text(u"-1,234.5"), 1},
          {u"GetDecimalFmt_Bus", [](Arguments& list) { list.text(u"12345.678e-2").int16(3); }, 1},
          {u"Get_String_PY", text(kGoods), 1},
          {u"Get_StrWidth", text(kGoods), 1},
          {u"GetComputerNm", [](Arguments&) {}, 1},
          // Two for each field, which GetPath asks the object itself for.
          {u"GetPath", text(u"D:\\仓库\\报表\\2024\\库存.mdb"), 12},
          // The names of a file for the system; a text for what the host is told, for what it answers, and for each
          // name that it might change meanwhile.
          {u"File_Find", text(u"c:\\windows\\system32\\kernel32.dll"), 4},
          {u"IFTable", [this](Arguments& list) { list.borrowed(object_variant(database_.Get())).text(u"customers"); },
           3},
          {u"IFField",
           [this](Arguments& list) { list.borrowed(object_variant(database_.Get())).text(u"customers").text(u"city"); },
           5},
          {u"SetGrdCenter", grid, 0},
          {u"SetGrdAlign", grid, 0},
          {u"ClearGrd", grid, 1},
          {u"CreateIndex",
           [this](Arguments& list) {
             database_model_.tables[1].indexes.clear();
             list.borrowed(object_variant(database_.Get())).text(u"customers").text(u"ByCode").text(u"Code");
           },
           6},
          {u"CreateIndex2",
           [this](Arguments& list) {
             database_model_.tables[1].indexes.clear();
             list.borrowed(object_variant(database_.Get())).text(u"customers").text(u"By").text(u"Code").text(u"City");
           },
           8},
      });
}

TEST_F(Allocations, OfClsVexApp) {
  const auto text = [](const char16_t* content) { return [content](Arguments& list) { list.text(content); }; };
  expect_counts(kClsVexAppClass, create(L"Corvelle.ClsVexApp").Get(),
                {
                    {u"GetComputerNm", [](Arguments&) {}, 1},
                    {u"Replace_Str", [](Arguments& list) { list.text(u"2024-02-29").text(u"-").text(u"/"); }, 1},
                    {u"Replace_Str", [](Arguments& list) { list.text(u"a--b--c").text(u"--").text(u"一二三"); }, 1},
                    {u"ConversionStr_Long", text(u"六角螺栓 M8×40 镀锌 二百件、十箱"), 1},
                    {u"ConversionStr_Short", text(u"六角螺栓 M8×40 镀锌 二百件、十箱"), 1},
                    {u"Set_Str", text(u"六角螺栓 M8×40"), 1},  // what the slot keeps
                    {u"Get_Str", [](Arguments&) {}, 1},
                });
}

}  // namespace
}  // namespace corvelle::testing
