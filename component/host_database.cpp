#include "component/host_database.h"

#include <utility>

namespace corvelle {
namespace {

// What the operations ask objects for, beyond IDispatch.
constexpr GUID kAdoRecordsetId = {0x00000555, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr GUID kFieldId = {0x00000051, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

// Each class below stands for the host's object of that name.
template <class Port>
class HostPart : public Port {
 public:
  explicit HostPart(HostObject object) : object_(std::move(object)) {}
  const HostObject& object() const { return object_; }

 protected:
  HostMember member(std::u16string_view name) const { return {object_, name}; }

 private:
  HostObject object_;
};

class HostField final : public HostPart<Field> {
 public:
  using HostPart::HostPart;
  std::u16string name() override { return member(u"Name").text(); }
};

class HostIndexFields final : public HostPart<IndexFields> {
 public:
  using HostPart::HostPart;
  // Fields that are appended come from the index itself, and so are the host's.
  void append(Field& field) override { member(u"Append").call({static_cast<HostField&>(field).object()}); }
};

class HostIndex final : public HostPart<Index> {
 public:
  using HostPart::HostPart;
  std::unique_ptr<Field> create_field(std::u16string_view name) override {
    const ScopedBstr text(name);
    return std::make_unique<HostField>(member(u"CreateField").object({text}));
  }
  std::unique_ptr<IndexFields> fields() override {
    return std::make_unique<HostIndexFields>(member(u"Fields").object());
  }
};

class HostIndexes final : public HostPart<Indexes> {
 public:
  using HostPart::HostPart;
  // An index that is appended comes from the table definition itself, and so is the host's.
  void append(Index& index) override { member(u"Append").call({static_cast<HostIndex&>(index).object()}); }
  void refresh() override { member(u"Refresh").call(); }
};

class HostTableDef final : public HostPart<TableDef> {
 public:
  using HostPart::HostPart;
  std::u16string name() override { return member(u"Name").text(); }
  std::unique_ptr<Index> create_index(std::u16string_view name) override {
    const ScopedBstr text(name);
    return std::make_unique<HostIndex>(member(u"CreateIndex").object({text}));
  }
  std::unique_ptr<Indexes> indexes() override { return std::make_unique<HostIndexes>(member(u"Indexes").object()); }
};

class TableWalk final : public Walk<TableDef> {
 public:
  explicit TableWalk(const HostObject& table_defs) : walk_(table_defs) {}
  bool advance() override { return walk_.advance(); }
  std::unique_ptr<TableDef> member() override {
    HostObject table = walk_.member();
    return table.is_object() ? std::make_unique<HostTableDef>(std::move(table)) : nullptr;
  }

 private:
  HostWalk walk_;
};

class HostTableDefs final : public HostPart<TableDefs> {
 public:
  using HostPart::HostPart;
  void refresh() override { member(u"Refresh").call(); }
  std::unique_ptr<Walk<TableDef>> walk() override { return std::make_unique<TableWalk>(object()); }
  std::unique_ptr<TableDef> item(std::u16string_view name) override {
    const ScopedBstr text(name);
    return std::make_unique<HostTableDef>(member(u"Item").object({text}));
  }
};

class FieldWalk final : public Walk<Field> {
 public:
  explicit FieldWalk(const HostObject& fields) : walk_(fields) {}
  bool advance() override { return walk_.advance(); }
  std::unique_ptr<Field> member() override {
    auto field = walk_.member().through(kFieldId);
    return field ? std::make_unique<HostField>(*std::move(field)) : nullptr;
  }

 private:
  HostWalk walk_;
};

class HostAdoRecordset final : public HostPart<AdoRecordset> {
 public:
  using HostPart::HostPart;
  std::unique_ptr<Walk<Field>> fields() override { return std::make_unique<FieldWalk>(member(u"Fields").object()); }
};

class HostRecordset final : public HostPart<Recordset> {
 public:
  using HostPart::HostPart;
  std::unique_ptr<AdoRecordset> ado_recordset() override {
    auto recordset = object().through(kAdoRecordsetId);
    return recordset ? std::make_unique<HostAdoRecordset>(*std::move(recordset)) : nullptr;
  }
};

}  // namespace

std::unique_ptr<TableDefs> HostDatabase::table_defs() {
  return std::make_unique<HostTableDefs>(HostMember(database(), u"TableDefs").object());
}

std::unique_ptr<Recordset> HostDatabase::open_recordset(std::u16string_view name) {
  const ScopedBstr text(name);
  return std::make_unique<HostRecordset>(HostMember(database(), u"OpenRecordset").object({text}));
}

}  // namespace corvelle
