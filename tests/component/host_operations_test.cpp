// The operations on a host's database and grid, through both bindings. How each algorithm goes about its work is the
// business of tests/data/; here the registered component meets COM objects like a host's.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/error_report.h"
#include "tests/component/host.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

using ::testing::ElementsAre;

class HostOperations : public ::testing::Test {
 protected:
  ::Database* early(const ComPtr<LateBound>& database) const { return reinterpret_cast<::Database*>(database.Get()); }

  Outcome late(const wchar_t* operation, const Arguments& arguments) {
    return invoke(validate_.Get(), operation, arguments);
  }

  Apartment apartment_;
  ComPtr<_ClsValidate> validate_ = create_validate();
};

class DatabaseOperations : public HostOperations {
 protected:
  // Every reference must be back, whatever the outcome; the test itself holds the database.
  void TearDown() override {
    EXPECT_EQ(database_->references(), 1u);
    EXPECT_EQ(model_.journal.live_objects(), 1);
  }

  DaoModel model_;
  ComPtr<LateBound> database_ = owned(new_dao_database(model_));
};

TEST_F(DatabaseOperations, FindTables) {
  VARIANT_BOOL found = VARIANT_FALSE;
  EXPECT_EQ(validate_->IFTable(early(database_), ScopedBstr(u"  customers ").get(), &found), S_OK);
  EXPECT_EQ(found, VARIANT_TRUE);
  EXPECT_EQ(validate_->IFTable(early(database_), ScopedBstr(u"suppliers").get(), &found), S_OK);
  EXPECT_EQ(found, VARIANT_FALSE);
  const Outcome outcome = late(L"IFTable", Arguments().borrowed(object_variant(database_.Get())).text(u"  customers "));
  EXPECT_EQ(outcome.result, S_OK);
  EXPECT_EQ(shown(value_of(outcome.value.get())), "True");
}

TEST_F(DatabaseOperations, TakeTheDatabaseByReference) {
  ScopedVariant variable;
  V_VT(&variable.get()) = VT_DISPATCH;
  V_DISPATCH(&variable.get()) = database_.Get();
  database_->AddRef();
  const Outcome outcome = late(L"IFTable", Arguments().borrowed(reference_to(variable.receive())).text(u"customers"));
  EXPECT_EQ(outcome.result, S_OK);
  EXPECT_EQ(shown(value_of(outcome.value.get())), "True");
  VariantClear(variable.receive());
}

TEST_F(DatabaseOperations, TestFieldsOfAdoRecordsetsOnly) {
  VARIANT_BOOL found = VARIANT_FALSE;
  const ScopedBstr orders(u"Orders");
  const ScopedBstr city(u"city");
  EXPECT_EQ(validate_->IFField(early(database_), orders.get(), city.get(), 0, &found),
            hresult_of(ErrorNumber::type_mismatch));
  const Outcome mismatch =
      late(L"IFField", Arguments().borrowed(object_variant(database_.Get())).text(u"Orders").text(u"city"));
  EXPECT_EQ(mismatch.scode, hresult_of(ErrorNumber::type_mismatch));
  EXPECT_THAT(utf8(mismatch.description), ::testing::HasSubstr("IFField"));
  model_.ado_recordsets = true;
  EXPECT_EQ(validate_->IFField(early(database_), orders.get(), city.get(), 0, &found), S_OK);
  EXPECT_EQ(found, VARIANT_TRUE);
  const Outcome prefixed =
      late(L"IFField", Arguments().borrowed(object_variant(database_.Get())).text(u"Orders").text(u"sum").int16(1));
  EXPECT_EQ(prefixed.result, S_OK);
  EXPECT_EQ(shown(value_of(prefixed.value.get())), "True");
}

TEST_F(DatabaseOperations, PassOnTheDatabasesOwnError) {
  const Outcome outcome =
      late(L"IFField", Arguments().borrowed(object_variant(database_.Get())).text(u"suppliers").text(u"city"));
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.scode, dao_error(kNoSuchTable));
  EXPECT_FALSE(outcome.description.empty());
  EXPECT_NE(outcome.source, u"Corvelle.ClsValidate");
  model_.closed = true;
  VARIANT_BOOL found = VARIANT_TRUE;
  EXPECT_EQ(validate_->IFTable(early(database_), ScopedBstr(u"customers").get(), &found), dao_error(kObjectInvalid));
  EXPECT_EQ(found, VARIANT_FALSE);
  EXPECT_NE(error_description(), std::nullopt);
}

TEST_F(DatabaseOperations, RefuseNoDatabaseAndOtherObjects) {
  VARIANT_BOOL found = VARIANT_TRUE;
  EXPECT_EQ(validate_->IFTable(nullptr, ScopedBstr(u"customers").get(), &found),
            hresult_of(ErrorNumber::object_not_set));
  const Outcome nothing = late(L"IFTable", Arguments().borrowed(object_variant(nullptr)).text(u"customers"));
  EXPECT_EQ(nothing.scode, hresult_of(ErrorNumber::object_not_set));
  EXPECT_EQ(late(L"IFTable", Arguments().borrowed(object_variant(validate_.Get())).text(u"customers")).result,
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(late(L"IFTable", Arguments().int16(7).text(u"customers")).result, DISP_E_TYPEMISMATCH);
}

TEST_F(DatabaseOperations, AddIndexes) {
  EXPECT_EQ(validate_->CreateIndex(early(database_), ScopedBstr(u"customers").get(), ScopedBstr(u"ByCode").get(),
                                   ScopedBstr(u"Code").get()),
            S_OK);
  const Outcome two_fields = late(L"CreateIndex2", Arguments()
                                                       .borrowed(object_variant(database_.Get()))
                                                       .text(u"customers")
                                                       .text(u"ByBoth")
                                                       .text(u"Code")
                                                       .text(u"City"));
  EXPECT_EQ(two_fields.result, S_OK);
  EXPECT_EQ(V_VT(&two_fields.value.get()), VT_EMPTY);
  EXPECT_THAT(model_.tables[1].indexes,
              ElementsAre(IndexModel{u"ByCode", {u"Code"}}, IndexModel{u"ByBoth", {u"Code", u"City"}}));
}

TEST_F(DatabaseOperations, SwallowEveryFailureOfAnIndex) {
  const ScopedBstr table(u"customers");
  const ScopedBstr code(u"Code");
  const ScopedBstr city(u"City");
  validate_->CreateIndex2(early(database_), table.get(), ScopedBstr(u"First").get(), code.get(), city.get());
  const std::size_t calls = model_.journal.calls().size();
  ASSERT_GT(calls, 5u);
  for (std::size_t failing = 1; failing <= calls; ++failing) {
    SCOPED_TRACE("call " + std::to_string(failing) + " fails");
    model_.journal.start_anew();
    model_.journal.fail_call(failing, HostFailure(dao_error(kReadOnly), u"as planned", u"DAO.Test"));
    const ScopedBstr name(ShortText<40>().append(u"Index").append(decimal_text(static_cast<std::int64_t>(failing))));
    EXPECT_EQ(validate_->CreateIndex2(early(database_), table.get(), name.get(), code.get(), city.get()), S_OK);
    EXPECT_EQ(error_description(), std::nullopt);
  }
}

class GridOperations : public HostOperations {
 protected:
  void TearDown() override { EXPECT_EQ(grid_->references(), 1u); }

  VARIANT grid() const { return object_variant(grid_.Get()); }

  GridModel model_;
  ComPtr<LateBound> grid_ = owned(new_grid(model_));
};

TEST_F(GridOperations, CentreTheFirstRow) {
  ScopedVariant result;
  EXPECT_EQ(validate_->SetGrdCenter(grid(), result.receive()), S_OK);
  EXPECT_EQ(V_VT(&result.get()), VT_EMPTY);
  EXPECT_EQ(model_.cell_alignments.size(), 5u);
  EXPECT_EQ((model_.cell_alignments[{0, 4}]), 4);
  EXPECT_EQ(model_.row, 0);
  EXPECT_EQ(model_.col, 4);
}

TEST_F(GridOperations, AlignEveryColumn) {
  const Outcome outcome = late(L"SetGrdAlign", Arguments().borrowed(grid()));
  EXPECT_EQ(outcome.result, S_OK);
  EXPECT_EQ(V_VT(&outcome.value.get()), VT_EMPTY);
  EXPECT_THAT(model_.col_alignments, ElementsAre(::testing::Pair(0, 1), ::testing::Pair(1, 1), ::testing::Pair(2, 1),
                                                 ::testing::Pair(3, 1), ::testing::Pair(4, 1)));
  EXPECT_EQ(late(L"SetGrdAlign", Arguments().borrowed(grid()).int16(7)).result, S_OK);
  EXPECT_EQ(model_.col_alignments[4], 7);
  EXPECT_EQ(late(L"SetGrdAlign", Arguments().borrowed(grid()).missing()).result, S_OK);
  EXPECT_EQ(model_.col_alignments[4], 1);
}

// A grid that changes the caller's variable while its columns are aligned.
class ChangingGrid : public GridOperations {
 protected:
  void set_variable_at_each_alignment(SHORT* variable) {
    model_.journal.on_call = [variable](const std::string& call) {
      if (call.find("ColAlignment") != std::string::npos) ++*variable;
    };
  }
  void expect_rising_alignments() {
    EXPECT_THAT(model_.col_alignments, ElementsAre(::testing::Pair(0, 2), ::testing::Pair(1, 3), ::testing::Pair(2, 4),
                                                   ::testing::Pair(3, 5), ::testing::Pair(4, 6)));
  }
};

TEST_F(ChangingGrid, IsSeenThroughAPointer) {
  SHORT alignment = 2;
  set_variable_at_each_alignment(&alignment);
  ScopedVariant result;
  EXPECT_EQ(validate_->SetGrdAlign(grid(), &alignment, result.receive()), S_OK);
  expect_rising_alignments();
  EXPECT_EQ(alignment, 7) << "changed by the grid, not by the operation";
}

TEST_F(ChangingGrid, IsSeenThroughATypedReference) {
  SHORT alignment = 2;
  set_variable_at_each_alignment(&alignment);
  EXPECT_EQ(late(L"SetGrdAlign", Arguments().borrowed(grid()).borrowed(reference_to(&alignment))).result, S_OK);
  expect_rising_alignments();
}

TEST_F(ChangingGrid, IsSeenThroughAVariantReference) {
  ScopedVariant variable;
  V_VT(&variable.get()) = VT_I2;
  V_I2(&variable.get()) = 2;
  set_variable_at_each_alignment(&V_I2(&variable.get()));
  EXPECT_EQ(late(L"SetGrdAlign", Arguments().borrowed(grid()).borrowed(reference_to(variable.receive()))).result, S_OK);
  expect_rising_alignments();
}

TEST_F(GridOperations, ClearTheFirstDataRow) {
  model_.rows = 300;
  for (int row = 0; row < 300; ++row) model_.texts[{row, 2}] = u"x";
  EXPECT_EQ(late(L"ClearGrd", Arguments().borrowed(grid())).result, S_OK);
  EXPECT_EQ(model_.rows, 200);
  EXPECT_EQ(model_.texts.count({1, 2}), 0u);
  EXPECT_EQ(model_.texts.count({0, 2}), 1u);
  EXPECT_EQ(model_.texts.count({199, 2}), 1u);
}

TEST_F(GridOperations, TakeAGridByReference) {
  ScopedVariant variable;
  V_VT(&variable.get()) = VT_DISPATCH;
  V_DISPATCH(&variable.get()) = grid_.Get();
  grid_->AddRef();
  EXPECT_EQ(late(L"SetGrdCenter", Arguments().borrowed(reference_to(variable.receive()))).result, S_OK);
  EXPECT_EQ(model_.cell_alignments.size(), 5u);
  VariantClear(variable.receive());
}

TEST_F(GridOperations, RequireAnObject) {
  EXPECT_EQ(late(L"SetGrdCenter", Arguments().empty()).scode, hresult_of(ErrorNumber::object_required));
  EXPECT_EQ(late(L"ClearGrd", Arguments().int16(3)).scode, hresult_of(ErrorNumber::object_required));
  EXPECT_EQ(late(L"SetGrdAlign", Arguments().text(u"grid")).scode, hresult_of(ErrorNumber::object_required));
  const Outcome wrong = late(L"SetGrdCenter", Arguments().borrowed(object_variant(validate_.Get())));
  EXPECT_EQ(wrong.scode, hresult_of(ErrorNumber::no_such_member));
  EXPECT_THAT(utf8(wrong.description), ::testing::HasSubstr("SetGrdCenter: Msfg"));
  VARIANT empty;
  VariantInit(&empty);
  ScopedVariant result;
  EXPECT_EQ(validate_->SetGrdCenter(empty, result.receive()), hresult_of(ErrorNumber::object_required));
  EXPECT_EQ(validate_->SetGrdAlign(grid(), nullptr, result.receive()), E_POINTER);
}

TEST_F(GridOperations, PassOnTheGridsOwnError) {
  const Outcome outcome = late(L"SetGrdAlign", Arguments().borrowed(grid()).int16(99));
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.scode, kInvalidPropertyValue);
  model_.cols = 32768 + 1;
  EXPECT_EQ(late(L"SetGrdAlign", Arguments().borrowed(grid())).scode, hresult_of(ErrorNumber::overflow));
}

TEST_F(HostOperations, NameTheComputer) {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  ASSERT_NE(GetComputerNameW(name, &size), FALSE);
  ScopedBstr early_bound;
  EXPECT_EQ(validate_->GetComputerNm(early_bound.receive()), S_OK);
  EXPECT_EQ(early_bound.view(), as_text(name));
  const auto vex_app = create(L"Corvelle.ClsVexApp");
  const Outcome late_bound = invoke(vex_app.Get(), L"GetComputerNm", Arguments());
  EXPECT_EQ(text_of(V_BSTR(&late_bound.value.get())), as_text(name));
}

TEST_F(HostOperations, FindFiles) {
  wchar_t folder[MAX_PATH] = {};
  wchar_t file[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  ASSERT_NE(GetTempFileNameW(folder, L"cor", 0, file), 0u);
  VARIANT_BOOL found = VARIANT_FALSE;
  const std::u16string padded = u"  " + std::u16string(as_text(file)) + u"  ";
  EXPECT_EQ(validate_->File_Find(ScopedBstr(padded).get(), &found), S_OK);
  EXPECT_EQ(found, VARIANT_TRUE);
  const Outcome of_folder = late(L"File_Find", Arguments().text(as_text(folder)));
  EXPECT_EQ(shown(value_of(of_folder.value.get())), "False");
  const Outcome of_nothing = late(L"File_Find", Arguments().text(u"   "));
  EXPECT_EQ(shown(value_of(of_nothing.value.get())), "False");
  DeleteFileW(file);
  EXPECT_EQ(validate_->File_Find(ScopedBstr(padded).get(), &found), S_OK);
  EXPECT_EQ(found, VARIANT_FALSE);
}

TEST_F(HostOperations, PassOnTheSystemsErrorOfASearch) {
  constexpr std::u16string_view kMalformed = u"C:\\no such?\\orders.mdb";
  constexpr HRESULT kInvalidName = static_cast<HRESULT>(0x8007007B);
  VARIANT_BOOL found = VARIANT_TRUE;
  EXPECT_EQ(validate_->File_Find(ScopedBstr(kMalformed).get(), &found), kInvalidName);
  const auto description = error_description();
  ASSERT_TRUE(description.has_value());
  EXPECT_TRUE(description->starts_with(u"File_Find: FilePath \"" + std::u16string(kMalformed) + u"\": "));
  const Outcome outcome = late(L"File_Find", Arguments().text(kMalformed));
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.scode, kInvalidName);
  EXPECT_EQ(outcome.description, *description);
  EXPECT_EQ(outcome.source, u"Corvelle.ClsValidate");
}

}  // namespace
}  // namespace corvelle::testing
