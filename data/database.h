// data/database.h - the host's database, as far as the operations use it.
//
// A port of exactly the members of Data Access Objects that the operations call. The component implements it over
// the object that the host hands in, another host over whatever engine it has. What a function hands out is owned
// by the caller and lets go of the host's object when it is destroyed. Every function may throw: HostError with the
// object's own error, RuntimeError where the object is missing (91) or lacks the member (438).
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace corvelle {

// A walk over the members of a collection, in the collection's order.
//   while (walk->advance()) use(walk->member());
template <class Member>
class Walk {
 public:
  virtual ~Walk() = default;
  // Steps to the next member (the first one at first); false behind the last.
  virtual bool advance() = 0;
  // The member stepped to, null where the collection holds something else there.
  virtual std::unique_ptr<Member> member() = 0;
};

class Field {
 public:
  virtual ~Field() = default;
  virtual std::u16string name() = 0;
};

// The fields of an index that is being made.
class IndexFields {
 public:
  virtual ~IndexFields() = default;
  virtual void append(Field& field) = 0;
};

class Index {
 public:
  virtual ~Index() = default;
  // A new field, not yet one of `fields`; its type, size and attributes are the host's defaults.
  virtual std::unique_ptr<Field> create_field(std::u16string_view name) = 0;
  virtual std::unique_ptr<IndexFields> fields() = 0;
};

class Indexes {
 public:
  virtual ~Indexes() = default;
  virtual void append(Index& index) = 0;
  virtual void refresh() = 0;
};

class TableDef {
 public:
  virtual ~TableDef() = default;
  virtual std::u16string name() = 0;
  // A new index, not yet one of `indexes`; everything but its name is the host's default.
  virtual std::unique_ptr<Index> create_index(std::u16string_view name) = 0;
  virtual std::unique_ptr<Indexes> indexes() = 0;
};

class TableDefs {
 public:
  virtual ~TableDefs() = default;
  virtual void refresh() = 0;
  virtual std::unique_ptr<Walk<TableDef>> walk() = 0;
  // The table definition called `name`, found without regard to case.
  virtual std::unique_ptr<TableDef> item(std::u16string_view name) = 0;
};

// A recordset held through the ADO recordset interface.
class AdoRecordset {
 public:
  virtual ~AdoRecordset() = default;
  virtual std::unique_ptr<Walk<Field>> fields() = 0;
};

// A recordset as the database opened it.
class Recordset {
 public:
  virtual ~Recordset() = default;
  // The same recordset through the ADO recordset interface, null where it does not provide that.
  virtual std::unique_ptr<AdoRecordset> ado_recordset() = 0;
};

class Database {
 public:
  virtual ~Database() = default;
  virtual std::unique_ptr<TableDefs> table_defs() = 0;
  // Opens `name` with the host's default type, options and lock mode.
  virtual std::unique_ptr<Recordset> open_recordset(std::u16string_view name) = 0;
};

}  // namespace corvelle
