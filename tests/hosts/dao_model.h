// tests/hosts/dao_model.h - a database that behaves like one of Data Access Objects, without its COM objects.
//
// The schema, the rules and the error numbers, once. The tests reach it by two faces: dao_ports.h puts the operations'
// own port before it, dao_host.h the late-bound COM objects of a host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/hosts/journal.h"

namespace corvelle::testing {

// The HRESULT of the error that Data Access Objects numbers so.
constexpr std::int32_t dao_error(int number) {
  return static_cast<std::int32_t>(0x800A0000u + static_cast<std::uint32_t>(number));
}
inline constexpr int kReadOnly = 3027;
inline constexpr int kNoSuchTable = 3078;
inline constexpr int kNoFieldDefined = 3264;
inline constexpr int kItemNotFound = 3265;
inline constexpr int kIndexExists = 3284;
inline constexpr int kAlreadyAppended = 3367;
inline constexpr int kInvalidFieldName = 3409;
inline constexpr int kObjectInvalid = 3420;

struct IndexModel {
  std::u16string name;
  std::vector<std::u16string> fields;

  friend bool operator==(const IndexModel&, const IndexModel&) = default;
};

struct TableModel {
  std::u16string name;
  std::vector<std::u16string> fields;
  std::vector<IndexModel> indexes;
};

// What the objects of the database do. Each function notes its call and throws the HostFailure that the object
// answers with. Names are found without regard to case.
class DaoModel {
 public:
  std::vector<TableModel> tables = {{u"MSysObjects", {u"Id", u"Name"}, {}},  // a system table
                                    {u"CUSTOMERS", {u"Code", u"City"}, {}},
                                    {u"Orders", {u"Day", u"City", u" Total"}, {{u"ByCity", {u"City"}}}},
                                    {u"a_sOrders", {u"Sum"}, {}},
                                    {u" Prices", {u"Price"}, {}},  // a linked table; its name begins with a space
                                    {u"订单", {u"日期"}, {}}};
  std::vector<TableModel> added_elsewhere;  // seen after a refresh
  bool closed = false;
  bool read_only = false;
  bool ado_recordsets = false;  // whether its recordsets provide the ADO recordset interface
  bool dao_fields = true;       // whether the fields of its recordsets are those of Data Access Objects
  Journal journal;

  void get_table_defs();
  void refresh_table_defs();
  void walk_table_defs();
  bool next_table_def(std::size_t index);  // whether there is one
  std::size_t table_def(std::u16string_view name);
  std::u16string table_name(std::size_t table);

  IndexModel create_index(std::u16string_view name);
  std::u16string create_field(std::u16string_view name);
  void get_index_fields();
  void append_field(IndexModel& index, std::u16string_view field);
  void get_indexes();
  void append_index(std::size_t table, const IndexModel& index);
  void refresh_indexes();

  std::size_t open_recordset(std::u16string_view name);  // gives the table
  void get_recordset_fields();
  void walk_recordset_fields();
  bool next_recordset_field(std::size_t table, std::size_t index);
  std::u16string field_name(std::size_t table, std::size_t index);

 private:
  const TableModel* find_table(std::u16string_view name) const;
};

}  // namespace corvelle::testing
