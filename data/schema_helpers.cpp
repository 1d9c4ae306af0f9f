#include "data/schema_helpers.h"

#include <algorithm>
#include <initializer_list>

#include "base/errors.h"
#include "base/slice.h"
#include "base/upper_case.h"

namespace corvelle {
namespace {

bool same_name(std::u16string_view left, std::u16string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return a == b || upper_case(a) == upper_case(b); });
}

// Adds an index as a statement after the other, each abandoned where it fails: as published, no error reaches the
// caller, want of memory neither.
void add_index(Database& database, const Text& table_name, const Text& index_name,
               std::initializer_list<Text> field_names) {
  const auto has_failed = [](const Text& name) { return name.failed(); };
  if (has_failed(table_name) || has_failed(index_name) || std::ranges::any_of(field_names, has_failed)) return;
  FirstError& errors = database.errors();
  TableDef& table = database.table_defs().item(table_name);
  if (errors.forget()) return;
  Index& index = table.create_index(index_name);
  if (!errors.forget()) {
    for (const Text& field_name : field_names) {
      Field& field = index.create_field(field_name);
      index.fields().append(field);
      errors.forget();
    }
    table.indexes().append(index);
    errors.forget();
  }
  table.indexes().refresh();
  errors.forget();
}

// The name of a table definition or a field. Want of memory for it is an error like others.
template <class Named>
Text name_of(Named& named, FirstError& errors) {
  Text name = named.name();
  if (name.failed()) errors.keep(out_of_memory());
  return name;
}

// A collection that gives member after member would hold its own host for ever.
Error too_many(std::int32_t members, std::u16string_view operation) {
  constexpr std::int32_t kMostMembers = 1 << 20;  // a database of the desktop has 32,768 objects at most
  if (members <= kMostMembers) return {};
  return Error(ErrorNumber::overflow, {operation, u"DB"},
               {u"has a collection of more than ", decimal_text(kMostMembers), u" members"});
}

}  // namespace

// The texts are the caller's, whose database may change or free them at the first thing that it is asked for; every
// operation here works on its own.
Result<bool> IFTable(Database& DB, std::u16string_view TableName) {
  const Text wanted(trimmed(TableName));
  if (wanted.failed()) return out_of_memory();
  DB.table_defs().refresh();
  Walk<TableDef>& tables = DB.table_defs().walk();
  bool found = false;
  for (std::int32_t step = 1; !found && tables.advance(); ++step) {
    if (Error error = too_many(step, u"IFTable")) return error;
    TableDef* table = tables.member();
    if (Error error = DB.errors().take()) return error;
    if (table == nullptr) {
      return Error(ErrorNumber::type_mismatch, {u"IFTable", u"DB"}, {u"lists a table definition that is none"});
    }
    found = same_name(trimmed(name_of(*table, DB.errors())), wanted);
  }
  if (Error error = DB.errors().take()) return error;
  return found;
}

Result<bool> IFField(Database& DB, std::u16string_view TableName, std::u16string_view FieldName, std::int16_t Flag) {
  const Text opened_name = joined({{Flag == 1 ? u"a_s" : u"", TableName}});
  const Text wanted(trimmed(FieldName));
  if (opened_name.failed() || wanted.failed()) return out_of_memory();
  DB.table_defs().refresh();
  AdoRecordset* recordset = DB.open_recordset(opened_name).ado_recordset();
  if (Error error = DB.errors().take()) return error;
  if (recordset == nullptr) {
    return Error(ErrorNumber::type_mismatch, {u"IFField", u"DB"},
                 {u"opens ", in_quotes(opened_name), u" as a recordset without the ADO recordset interface"});
  }
  bool found = false;
  Walk<Field>& fields = recordset->fields();
  for (std::int32_t step = 1; fields.advance(); ++step) {
    if (Error error = too_many(step, u"IFField")) return error;
    Field* field = fields.member();
    if (Error error = DB.errors().take()) return error;
    if (field == nullptr) {
      return Error(ErrorNumber::type_mismatch, {u"IFField", u"DB"},
                   {u"lists a field of ", in_quotes(opened_name), u" that is none of Data Access Objects"});
    }
    // Kept: the walk goes on after a match, so that a later field's error still reaches the caller.
    if (same_name(name_of(*field, DB.errors()), wanted)) found = true;
  }
  if (Error error = DB.errors().take()) return error;
  return found;
}

void CreateIndex(Database& DB, std::u16string_view sTn, std::u16string_view sInN, std::u16string_view sF1) {
  add_index(DB, Text(sTn), Text(sInN), {Text(sF1)});
}

void CreateIndex2(Database& DB, std::u16string_view sTn, std::u16string_view sInN, std::u16string_view sF1,
                  std::u16string_view sF2) {
  add_index(DB, Text(sTn), Text(sInN), {Text(sF1), Text(sF2)});
}

}  // namespace corvelle
