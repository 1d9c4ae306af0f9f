#include "tests/hosts/dao_ports.h"

#include <utility>

namespace corvelle::testing {
namespace {

// What every object of the host has: its model, the database's first error, and a place among the live objects. What it
// hands out is made anew each time, so that the former one is gone for certain.
struct Part {
  Part(DaoModel& owner, FirstError& kept) : model(owner), errors(kept), live(owner.journal) {}
  DaoModel& model;
  FirstError& errors;
  LiveObject live;
};

struct PortNewField final : Field, Part {
  PortNewField(const Part& index, std::u16string named)
      : Part(index.model, index.errors), field_name(std::move(named)) {}
  Text name() override { return Text(field_name); }
  std::u16string field_name;
};

struct PortIndexFields final : IndexFields, Part {
  PortIndexFields(const Part& owner, IndexModel& of) : Part(owner.model, owner.errors), index(of) {}
  void append(Field& field) override {
    attempt(errors, [&] { model.append_field(index, dynamic_cast<PortNewField&>(field).field_name); });
  }
  IndexModel& index;
};

struct PortIndex final : Index, Part {
  PortIndex(const Part& table, IndexModel made) : Part(table.model, table.errors), index(std::move(made)) {}
  Field& create_field(std::u16string_view name) override {
    new_field = std::make_unique<PortNewField>(*this, attempted(errors, [&] { return model.create_field(name); }));
    return *new_field;
  }
  IndexFields& fields() override {
    attempt(errors, [&] { model.get_index_fields(); });
    return *(index_fields = std::make_unique<PortIndexFields>(*this, index));
  }
  IndexModel index;
  std::unique_ptr<PortNewField> new_field;
  std::unique_ptr<PortIndexFields> index_fields;
};

struct PortIndexes final : Indexes, Part {
  PortIndexes(const Part& owner, std::size_t of) : Part(owner.model, owner.errors), table(of) {}
  void append(Index& index) override {
    attempt(errors, [&] { model.append_index(table, dynamic_cast<PortIndex&>(index).index); });
  }
  void refresh() override {
    attempt(errors, [&] { model.refresh_indexes(); });
  }
  std::size_t table;
};

struct PortTableDef final : TableDef, Part {
  PortTableDef(const Part& owner, std::size_t at) : Part(owner.model, owner.errors), table(at) {}
  Text name() override {
    return Text(attempted(errors, [&] { return model.table_name(table); }));
  }
  Index& create_index(std::u16string_view name) override {
    return *(index = std::make_unique<PortIndex>(*this, attempted(errors, [&] { return model.create_index(name); })));
  }
  Indexes& indexes() override {
    attempt(errors, [&] { model.get_indexes(); });
    return *(all_indexes = std::make_unique<PortIndexes>(*this, table));
  }
  std::size_t table;
  std::unique_ptr<PortIndex> index;
  std::unique_ptr<PortIndexes> all_indexes;
};

struct PortTableWalk final : Walk<TableDef>, Part {
  explicit PortTableWalk(const Part& owner) : Part(owner.model, owner.errors) {}
  bool advance() override {
    return attempted(errors, [&] { return model.next_table_def(next++); });
  }
  TableDef* member() override { return (table = std::make_unique<PortTableDef>(*this, next - 1)).get(); }
  std::size_t next = 0;
  std::unique_ptr<PortTableDef> table;
};

struct PortTableDefs final : TableDefs, Part {
  explicit PortTableDefs(const Part& owner) : Part(owner.model, owner.errors) {}
  void refresh() override {
    attempt(errors, [&] { model.refresh_table_defs(); });
  }
  Walk<TableDef>& walk() override {
    attempt(errors, [&] { model.walk_table_defs(); });
    return *(table_walk = std::make_unique<PortTableWalk>(*this));
  }
  TableDef& item(std::u16string_view name) override {
    return *(table = std::make_unique<PortTableDef>(*this, attempted(errors, [&] { return model.table_def(name); })));
  }
  std::unique_ptr<PortTableWalk> table_walk;
  std::unique_ptr<PortTableDef> table;
};

struct PortField final : Field, Part {
  PortField(const Part& owner, std::size_t in, std::size_t at)
      : Part(owner.model, owner.errors), table(in), index(at) {}
  Text name() override {
    return Text(attempted(errors, [&] { return model.field_name(table, index); }));
  }
  std::size_t table;
  std::size_t index;
};

struct PortFieldWalk final : Walk<Field>, Part {
  PortFieldWalk(const Part& owner, std::size_t of) : Part(owner.model, owner.errors), table(of) {}
  bool advance() override {
    return attempted(errors, [&] { return model.next_recordset_field(table, next++); });
  }
  Field* member() override {
    field = model.dao_fields ? std::make_unique<PortField>(*this, table, next - 1) : nullptr;
    return field.get();
  }
  std::size_t table;
  std::size_t next = 0;
  std::unique_ptr<PortField> field;
};

struct PortAdoRecordset final : AdoRecordset, Part {
  PortAdoRecordset(const Part& owner, std::size_t of) : Part(owner.model, owner.errors), table(of) {}
  Walk<Field>& fields() override {
    attempt(errors, [&] {
      model.get_recordset_fields();
      model.walk_recordset_fields();
    });
    return *(field_walk = std::make_unique<PortFieldWalk>(*this, table));
  }
  std::size_t table;
  std::unique_ptr<PortFieldWalk> field_walk;
};

struct PortRecordset final : Recordset, Part {
  PortRecordset(const Part& owner, std::size_t of) : Part(owner.model, owner.errors), table(of) {}
  AdoRecordset* ado_recordset() override {
    same = model.ado_recordsets ? std::make_unique<PortAdoRecordset>(*this, table) : nullptr;
    return same.get();
  }
  std::size_t table;
  std::unique_ptr<PortAdoRecordset> same;
};

struct PortDatabase final : Database, Part {
  explicit PortDatabase(DaoModel& owner) : Part(owner, Database::errors()) {}
  TableDefs& table_defs() override {
    attempt(Part::errors, [&] { model.get_table_defs(); });
    return *(tables = std::make_unique<PortTableDefs>(*this));
  }
  Recordset& open_recordset(std::u16string_view name) override {
    const std::size_t table = attempted(Part::errors, [&] { return model.open_recordset(name); });
    return *(recordset = std::make_unique<PortRecordset>(*this, table));
  }
  std::unique_ptr<PortTableDefs> tables;
  std::unique_ptr<PortRecordset> recordset;
};

}  // namespace

std::shared_ptr<Database> ports_to(DaoModel& model) { return std::make_shared<PortDatabase>(model); }

}  // namespace corvelle::testing
