// component/host_database.h - the host's database behind the operations' port.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string_view>

#include "component/host_object.h"
#include "data/database.h"

namespace corvelle {

// The host's object of that name, each of which holds the parts that it was asked for last.
template <class Port>
class HostPart : public Port {
 public:
  explicit HostPart(const HostCall& call) : object_(call) {}
  void hold(HostObject&& object) { object_ = std::move(object); }
  const HostObject& object() const { return object_; }

 protected:
  ~HostPart() = default;
  HostMember member(std::u16string_view name) const { return {object_, name}; }

 private:
  HostObject object_;
};

class HostField final : public HostPart<Field> {
 public:
  using HostPart::HostPart;
  Text name() override;
};

class HostIndexFields final : public HostPart<IndexFields> {
 public:
  using HostPart::HostPart;
  void append(Field& field) override;
};

class HostIndex final : public HostPart<Index> {
 public:
  explicit HostIndex(const HostCall& call) : HostPart(call), field_(call), fields_(call) {}
  Field& create_field(std::u16string_view name) override;
  IndexFields& fields() override;

 private:
  HostField field_;
  HostIndexFields fields_;
};

class HostIndexes final : public HostPart<Indexes> {
 public:
  using HostPart::HostPart;
  void append(Index& index) override;
  void refresh() override;
};

class HostTableDef final : public HostPart<TableDef> {
 public:
  explicit HostTableDef(const HostCall& call) : HostPart(call), index_(call), indexes_(call) {}
  Text name() override;
  Index& create_index(std::u16string_view name) override;
  Indexes& indexes() override;

 private:
  HostIndex index_;
  HostIndexes indexes_;
};

class HostTableWalk final : public Walk<TableDef> {
 public:
  explicit HostTableWalk(const HostCall& call) : walk_(call), table_(call) {}
  void begin(const HostObject& table_defs) { walk_.begin(table_defs); }
  bool advance() override { return walk_.advance(); }
  TableDef* member() override;

 private:
  HostWalk walk_;
  HostTableDef table_;
};

class HostTableDefs final : public HostPart<TableDefs> {
 public:
  explicit HostTableDefs(const HostCall& call) : HostPart(call), walk_(call), table_(call) {}
  void refresh() override;
  Walk<TableDef>& walk() override;
  TableDef& item(std::u16string_view name) override;

 private:
  HostTableWalk walk_;
  HostTableDef table_;
};

class HostFieldWalk final : public Walk<Field> {
 public:
  explicit HostFieldWalk(const HostCall& call) : walk_(call), field_(call) {}
  void begin(const HostObject& fields) { walk_.begin(fields); }
  bool advance() override { return walk_.advance(); }
  Field* member() override;

 private:
  HostWalk walk_;
  HostField field_;
};

class HostAdoRecordset final : public HostPart<AdoRecordset> {
 public:
  explicit HostAdoRecordset(const HostCall& call) : HostPart(call), walk_(call) {}
  Walk<Field>& fields() override;

 private:
  HostFieldWalk walk_;
};

class HostRecordset final : public HostPart<Recordset> {
 public:
  explicit HostRecordset(const HostCall& call) : HostPart(call), recordset_(call) {}
  AdoRecordset* ado_recordset() override;

 private:
  HostAdoRecordset recordset_;
};

// HostDatabase drives the host's Data Access Objects database by the names of its members, whatever its version and
// whether or not its type library is registered. It holds references to it and to its parts as long as it lives.
//   HostDatabase database(DB, u"IFTable");  // DB may be null: object not set (91) when it is first used
//   IFTable(database, TableName);
class HostDatabase final : public Database {
 public:
  // `operation` is named in the errors; making the object is none, and asks the host's for nothing.
  HostDatabase(IUnknown* DB, std::u16string_view operation) : call_{{operation, u"DB"}, errors()}, database_(DB) {}

  TableDefs& table_defs() override;
  Recordset& open_recordset(std::u16string_view name) override;

 private:
  HostObject database() const { return {database_.Get(), call_}; }

  HostCall call_;
  Microsoft::WRL::ComPtr<IUnknown> database_;
  HostTableDefs table_defs_{call_};
  HostRecordset recordset_{call_};
};

}  // namespace corvelle
