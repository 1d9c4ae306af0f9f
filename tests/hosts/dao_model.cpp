#include "tests/hosts/dao_model.h"

#include <algorithm>

#include "tests/support/utf8.h"

namespace corvelle::testing {
namespace {

[[noreturn]] void refuse(int number, std::u16string description, std::u16string source) {
  throw HostFailure{dao_error(number), std::move(description), std::move(source)};
}

bool same(std::u16string_view left, std::u16string_view right) {
  const auto folded = [](char16_t unit) { return unit >= u'a' && unit <= u'z' ? unit - u'a' + u'A' : +unit; };
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [&](char16_t a, char16_t b) { return folded(a) == folded(b); });
}

bool contains(const std::vector<std::u16string>& names, std::u16string_view wanted) {
  return std::any_of(names.begin(), names.end(), [&](const auto& name) { return same(name, wanted); });
}

std::string call(const char* member, std::u16string_view argument) {
  return std::string(member) + "(" + utf8(argument) + ")";
}

}  // namespace

const TableModel* DaoModel::find_table(std::u16string_view name) const {
  const auto found =
      std::find_if(tables.begin(), tables.end(), [&](const TableModel& table) { return same(table.name, name); });
  return found == tables.end() ? nullptr : &*found;
}

void DaoModel::get_table_defs() {
  journal.note("Database.TableDefs");
  if (closed) refuse(kObjectInvalid, u"Object invalid or no longer set.", u"DAO.Database");
}

void DaoModel::refresh_table_defs() {
  journal.note("TableDefs.Refresh");
  tables.insert(tables.end(), added_elsewhere.begin(), added_elsewhere.end());
  added_elsewhere.clear();
}

void DaoModel::walk_table_defs() { journal.note("TableDefs.each"); }

bool DaoModel::next_table_def(std::size_t index) {
  journal.note("TableDefs.next");
  return index < tables.size();
}

std::size_t DaoModel::table_def(std::u16string_view name) {
  journal.note(call("TableDefs.Item", name));
  const TableModel* table = find_table(name);
  if (table == nullptr) refuse(kItemNotFound, u"Item not found in this collection.", u"DAO.TableDefs");
  return static_cast<std::size_t>(table - tables.data());
}

std::u16string DaoModel::table_name(std::size_t table) {
  journal.note("TableDef.Name");
  return tables.at(table).name;
}

IndexModel DaoModel::create_index(std::u16string_view name) {
  journal.note(call("TableDef.CreateIndex", name));
  return {std::u16string(name), {}};
}

std::u16string DaoModel::create_field(std::u16string_view name) {
  journal.note(call("Index.CreateField", name));
  return std::u16string(name);
}

void DaoModel::get_index_fields() { journal.note("Index.Fields"); }

void DaoModel::append_field(IndexModel& index, std::u16string_view field) {
  journal.note(call("Fields.Append", field));
  if (contains(index.fields, field)) {
    refuse(kAlreadyAppended, u"Can't append. An object with that name already exists in the collection.",
           u"DAO.Fields");
  }
  index.fields.emplace_back(field);
}

void DaoModel::get_indexes() { journal.note("TableDef.Indexes"); }

void DaoModel::append_index(std::size_t table, const IndexModel& index) {
  journal.note(call("Indexes.Append", index.name));
  TableModel& owner = tables.at(table);
  if (read_only) refuse(kReadOnly, u"Can't update. Database or object is read-only.", u"DAO.Indexes");
  if (index.fields.empty()) {
    refuse(kNoFieldDefined, u"No field defined--cannot append TableDef or Index.", u"DAO.Indexes");
  }
  for (const IndexModel& existing : owner.indexes) {
    if (same(existing.name, index.name)) refuse(kIndexExists, u"Index already exists.", u"DAO.Indexes");
  }
  for (const std::u16string& field : index.fields) {
    if (!contains(owner.fields, field)) {
      refuse(kInvalidFieldName, u"Invalid field name '" + field + u"' in definition of index or relationship.",
             u"DAO.Indexes");
    }
  }
  owner.indexes.push_back(index);
}

void DaoModel::refresh_indexes() { journal.note("Indexes.Refresh"); }

std::size_t DaoModel::open_recordset(std::u16string_view name) {
  journal.note(call("Database.OpenRecordset", name));
  const TableModel* table = find_table(name);
  if (table == nullptr) {
    refuse(kNoSuchTable, u"Cannot find the input table or query '" + std::u16string(name) + u"'.", u"DAO.Database");
  }
  return static_cast<std::size_t>(table - tables.data());
}

void DaoModel::get_recordset_fields() { journal.note("Recordset.Fields"); }

void DaoModel::walk_recordset_fields() { journal.note("Fields.each"); }

bool DaoModel::next_recordset_field(std::size_t table, std::size_t index) {
  journal.note("Fields.next");
  return index < tables.at(table).fields.size();
}

std::u16string DaoModel::field_name(std::size_t table, std::size_t index) {
  journal.note("Field.Name");
  return tables.at(table).fields.at(index);
}

}  // namespace corvelle::testing
