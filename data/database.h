// data/database.h - the host's database, as far as the operations use it.
//
// A port of exactly the members of Data Access Objects that the operations call. The component implements it over
// the object that the host hands in, another host over whatever engine it has.
//
// What a function hands out belongs to what it was asked of, and serves until that function is called again. Where one
// fails, the database keeps the first error, its own one or that an object is missing (91) or lacks the member (438);
// from then on no function does anything, and what it gives is empty, but there. A name that has failed is such an
// error, too.
#pragma once

#include <string_view>

#include "base/text.h"
#include "data/first_error.h"

namespace corvelle {

// A walk over the members of a collection, in the collection's order.
//   while (walk.advance()) use(walk.member());
template <class Member>
class Walk {
 public:
  // Steps to the next member (the first one at first); false behind the last.
  virtual bool advance() = 0;
  // The member stepped to, null where the collection holds something else there.
  virtual Member* member() = 0;

 protected:
  ~Walk() = default;
};

class Field {
 public:
  virtual Text name() = 0;

 protected:
  ~Field() = default;
};

// The fields of an index that is being made.
class IndexFields {
 public:
  virtual void append(Field& field) = 0;

 protected:
  ~IndexFields() = default;
};

class Index {
 public:
  // A new field, not yet one of `fields`; its type, size and attributes are the host's defaults.
  virtual Field& create_field(std::u16string_view name) = 0;
  virtual IndexFields& fields() = 0;

 protected:
  ~Index() = default;
};

class Indexes {
 public:
  virtual void append(Index& index) = 0;
  virtual void refresh() = 0;

 protected:
  ~Indexes() = default;
};

class TableDef {
 public:
  virtual Text name() = 0;
  // A new index, not yet one of `indexes`; everything but its name is the host's default.
  virtual Index& create_index(std::u16string_view name) = 0;
  virtual Indexes& indexes() = 0;

 protected:
  ~TableDef() = default;
};

class TableDefs {
 public:
  virtual void refresh() = 0;
  virtual Walk<TableDef>& walk() = 0;
  // The table definition called `name`, found without regard to case.
  virtual TableDef& item(std::u16string_view name) = 0;

 protected:
  ~TableDefs() = default;
};

// A recordset held through the ADO recordset interface.
class AdoRecordset {
 public:
  virtual Walk<Field>& fields() = 0;

 protected:
  ~AdoRecordset() = default;
};

// A recordset as the database opened it.
class Recordset {
 public:
  // The same recordset through the ADO recordset interface, null where it does not provide that.
  virtual AdoRecordset* ado_recordset() = 0;

 protected:
  ~Recordset() = default;
};

class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  virtual TableDefs& table_defs() = 0;
  // Opens `name` with the host's default type, options and lock mode.
  virtual Recordset& open_recordset(std::u16string_view name) = 0;

  FirstError& errors() noexcept { return errors_; }

 protected:
  ~Database() = default;

 private:
  FirstError errors_;
};

}  // namespace corvelle
