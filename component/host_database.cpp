#include "component/host_database.h"

#include <utility>

namespace corvelle {
namespace {

// What the operations ask objects for, beyond IDispatch.
constexpr GUID kAdoRecordsetId = {0x00000555, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr GUID kFieldId = {0x00000051, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

}  // namespace

Text HostField::name() { return member(u"Name").text(); }

// Fields that are appended come from the index itself, and so are the host's.
void HostIndexFields::append(Field& field) { member(u"Append").call({static_cast<HostField&>(field).object()}); }

Field& HostIndex::create_field(std::u16string_view name) {
  const ScopedBstr text(name);
  field_.hold(member(u"CreateField").object({text}));
  return field_;
}

IndexFields& HostIndex::fields() {
  fields_.hold(member(u"Fields").object());
  return fields_;
}

// An index that is appended comes from the table definition itself, and so is the host's.
void HostIndexes::append(Index& index) { member(u"Append").call({static_cast<HostIndex&>(index).object()}); }

void HostIndexes::refresh() { member(u"Refresh").call(); }

Text HostTableDef::name() { return member(u"Name").text(); }

Index& HostTableDef::create_index(std::u16string_view name) {
  const ScopedBstr text(name);
  index_.hold(member(u"CreateIndex").object({text}));
  return index_;
}

Indexes& HostTableDef::indexes() {
  indexes_.hold(member(u"Indexes").object());
  return indexes_;
}

TableDef* HostTableWalk::member() {
  table_.hold(walk_.member());
  return table_.object().is_object() ? &table_ : nullptr;
}

void HostTableDefs::refresh() { member(u"Refresh").call(); }

Walk<TableDef>& HostTableDefs::walk() {
  walk_.begin(object());
  return walk_;
}

TableDef& HostTableDefs::item(std::u16string_view name) {
  const ScopedBstr text(name);
  table_.hold(member(u"Item").object({text}));
  return table_;
}

Field* HostFieldWalk::member() {
  auto field = walk_.member().through(kFieldId);
  if (!field) return nullptr;
  field_.hold(*std::move(field));
  return &field_;
}

Walk<Field>& HostAdoRecordset::fields() {
  const HostObject fields = member(u"Fields").object();
  walk_.begin(fields);
  return walk_;
}

AdoRecordset* HostRecordset::ado_recordset() {
  auto recordset = object().through(kAdoRecordsetId);
  if (!recordset) return nullptr;
  recordset_.hold(*std::move(recordset));
  return &recordset_;
}

TableDefs& HostDatabase::table_defs() {
  table_defs_.hold(HostMember(database(), u"TableDefs").object());
  return table_defs_;
}

Recordset& HostDatabase::open_recordset(std::u16string_view name) {
  const ScopedBstr text(name);
  recordset_.hold(HostMember(database(), u"OpenRecordset").object({text}));
  return recordset_;
}

}  // namespace corvelle
