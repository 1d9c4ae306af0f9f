#include "data/schema_helpers.h"

#include <algorithm>
#include <initializer_list>
#include <string>

#include "base/errors.h"
#include "base/slice.h"
#include "base/upper_case.h"

namespace corvelle {
namespace {

bool same_name(std::u16string_view left, std::u16string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return a == b || upper_case(a) == upper_case(b); });
}

// Runs one statement of an operation that carries on after errors; one that fails gives nothing. Running out of
// memory is an error like the others here: as published, none reaches the caller.
template <class Statement>
auto resumed(Statement statement) -> decltype(statement()) {
  try {
    return statement();
  } catch (...) {
    return decltype(statement())();
  }
}

void add_index(Database& database, const std::u16string& table_name, const std::u16string& index_name,
               std::initializer_list<std::u16string> field_names) {
  const auto table = resumed([&] { return database.table_defs()->item(table_name); });
  if (!table) return;
  if (const auto index = resumed([&] { return table->create_index(index_name); })) {
    for (const std::u16string& field_name : field_names) {
      resumed([&] {
        const auto field = index->create_field(field_name);
        index->fields()->append(*field);
      });
    }
    resumed([&] { table->indexes()->append(*index); });
  }
  resumed([&] { table->indexes()->refresh(); });
}

// A collection that gives member after member would hold its own host for ever.
void check_step(std::int32_t step, std::u16string_view operation) {
  constexpr std::int32_t kMostMembers = 1 << 20;  // a database of the desktop has 32,768 objects at most
  if (step > kMostMembers) {
    raise(ErrorNumber::overflow, {operation, u"DB"},
          u"has a collection of more than " + decimal_text(kMostMembers) + u" members");
  }
}

}  // namespace

// The texts are the caller's, whose database may change or free them at the first thing that it is asked for; every
// operation here works on its own.

bool IFTable(Database& DB, std::u16string_view TableName) {
  const std::u16string wanted(trimmed(TableName));
  DB.table_defs()->refresh();
  const auto tables = DB.table_defs()->walk();
  for (std::int32_t step = 1; tables->advance(); ++step) {
    check_step(step, u"IFTable");
    const auto table = tables->member();
    if (!table) raise(ErrorNumber::type_mismatch, {u"IFTable", u"DB"}, u"lists a table definition that is none");
    if (same_name(trimmed(table->name()), wanted)) return true;
  }
  return false;
}

bool IFField(Database& DB, std::u16string_view TableName, std::u16string_view FieldName, std::int16_t Flag) {
  const std::u16string opened_name = (Flag == 1 ? u"a_s" : u"") + std::u16string(TableName);
  const std::u16string wanted(trimmed(FieldName));
  DB.table_defs()->refresh();
  const auto recordset = DB.open_recordset(opened_name)->ado_recordset();
  if (!recordset) {
    raise(ErrorNumber::type_mismatch, {u"IFField", u"DB"},
          u"opens " + in_quotes(opened_name) + u" as a recordset without the ADO recordset interface");
  }
  bool found = false;
  const auto fields = recordset->fields();
  for (std::int32_t step = 1; fields->advance(); ++step) {
    check_step(step, u"IFField");
    const auto field = fields->member();
    if (!field) {
      raise(ErrorNumber::type_mismatch, {u"IFField", u"DB"},
            u"lists a field of " + in_quotes(opened_name) + u" that is none of Data Access Objects");
    }
    // Kept: the walk goes on after a match, so that a later field's error still reaches the caller.
    if (same_name(field->name(), wanted)) found = true;
  }
  return found;
}

void CreateIndex(Database& DB, std::u16string_view sTn, std::u16string_view sInN, std::u16string_view sF1) {
  resumed([&] { add_index(DB, std::u16string(sTn), std::u16string(sInN), {std::u16string(sF1)}); });
}

void CreateIndex2(Database& DB, std::u16string_view sTn, std::u16string_view sInN, std::u16string_view sF1,
                  std::u16string_view sF2) {
  resumed(
      [&] { add_index(DB, std::u16string(sTn), std::u16string(sInN), {std::u16string(sF1), std::u16string(sF2)}); });
}

}  // namespace corvelle
