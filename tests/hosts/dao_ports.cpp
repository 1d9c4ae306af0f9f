#include "tests/hosts/dao_ports.h"

#include <utility>

namespace corvelle::testing {
namespace {

// What every object of the host has: its model, and a place among the live objects.
struct Part {
  explicit Part(DaoModel& owner) : model(owner), live(owner.journal) {}
  DaoModel& model;
  LiveObject live;
};

struct PortNewField final : Field, Part {
  PortNewField(DaoModel& owner, std::u16string named) : Part(owner), field_name(std::move(named)) {}
  std::u16string name() override { return field_name; }
  std::u16string field_name;
};

struct PortIndexFields final : IndexFields, Part {
  PortIndexFields(DaoModel& owner, IndexModel& of) : Part(owner), index(of) {}
  void append(Field& field) override { model.append_field(index, field.name()); }
  IndexModel& index;
};

struct PortIndex final : Index, Part {
  PortIndex(DaoModel& owner, IndexModel made) : Part(owner), index(std::move(made)) {}
  std::unique_ptr<Field> create_field(std::u16string_view name) override {
    return std::make_unique<PortNewField>(model, model.create_field(name));
  }
  std::unique_ptr<IndexFields> fields() override {
    model.get_index_fields();
    return std::make_unique<PortIndexFields>(model, index);
  }
  IndexModel index;
};

struct PortIndexes final : Indexes, Part {
  PortIndexes(DaoModel& owner, std::size_t of) : Part(owner), table(of) {}
  void append(Index& index) override { model.append_index(table, dynamic_cast<PortIndex&>(index).index); }
  void refresh() override { model.refresh_indexes(); }
  std::size_t table;
};

struct PortTableDef final : TableDef, Part {
  PortTableDef(DaoModel& owner, std::size_t at) : Part(owner), table(at) {}
  std::u16string name() override { return model.table_name(table); }
  std::unique_ptr<Index> create_index(std::u16string_view name) override {
    return std::make_unique<PortIndex>(model, model.create_index(name));
  }
  std::unique_ptr<Indexes> indexes() override {
    model.get_indexes();
    return std::make_unique<PortIndexes>(model, table);
  }
  std::size_t table;
};

struct PortTableWalk final : Walk<TableDef>, Part {
  using Part::Part;
  bool advance() override { return model.next_table_def(next++); }
  std::unique_ptr<TableDef> member() override { return std::make_unique<PortTableDef>(model, next - 1); }
  std::size_t next = 0;
};

struct PortTableDefs final : TableDefs, Part {
  using Part::Part;
  void refresh() override { model.refresh_table_defs(); }
  std::unique_ptr<Walk<TableDef>> walk() override {
    model.walk_table_defs();
    return std::make_unique<PortTableWalk>(model);
  }
  std::unique_ptr<TableDef> item(std::u16string_view name) override {
    return std::make_unique<PortTableDef>(model, model.table_def(name));
  }
};

struct PortField final : Field, Part {
  PortField(DaoModel& owner, std::size_t in, std::size_t at) : Part(owner), table(in), index(at) {}
  std::u16string name() override { return model.field_name(table, index); }
  std::size_t table;
  std::size_t index;
};

struct PortFieldWalk final : Walk<Field>, Part {
  PortFieldWalk(DaoModel& owner, std::size_t of) : Part(owner), table(of) {}
  bool advance() override { return model.next_recordset_field(table, next++); }
  std::unique_ptr<Field> member() override {
    return model.dao_fields ? std::make_unique<PortField>(model, table, next - 1) : nullptr;
  }
  std::size_t table;
  std::size_t next = 0;
};

struct PortAdoRecordset final : AdoRecordset, Part {
  PortAdoRecordset(DaoModel& owner, std::size_t of) : Part(owner), table(of) {}
  std::unique_ptr<Walk<Field>> fields() override {
    model.get_recordset_fields();
    model.walk_recordset_fields();
    return std::make_unique<PortFieldWalk>(model, table);
  }
  std::size_t table;
};

struct PortRecordset final : Recordset, Part {
  PortRecordset(DaoModel& owner, std::size_t of) : Part(owner), table(of) {}
  std::unique_ptr<AdoRecordset> ado_recordset() override {
    return model.ado_recordsets ? std::make_unique<PortAdoRecordset>(model, table) : nullptr;
  }
  std::size_t table;
};

struct PortDatabase final : Database, Part {
  using Part::Part;
  std::unique_ptr<TableDefs> table_defs() override {
    model.get_table_defs();
    return std::make_unique<PortTableDefs>(model);
  }
  std::unique_ptr<Recordset> open_recordset(std::u16string_view name) override {
    return std::make_unique<PortRecordset>(model, model.open_recordset(name));
  }
};

}  // namespace

std::unique_ptr<Database> ports_to(DaoModel& model) { return std::make_unique<PortDatabase>(model); }

}  // namespace corvelle::testing
