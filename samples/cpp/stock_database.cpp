#include "stock_database.h"

#include <algorithm>
#include <utility>

namespace {

constexpr IID kDatabaseId = {0x00000071, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

using TablesPointer = std::shared_ptr<StockTables>;
using IndexPointer = std::shared_ptr<StockIndex>;

[[noreturn]] void refuse(int number, const wchar_t* text) {
  throw Refusal{static_cast<HRESULT>(0x800A0000u + static_cast<unsigned>(number)), text};
}

std::wstring text(const _variant_t& value) {
  const _bstr_t held(value);
  return {static_cast<const wchar_t*>(held), held.length()};
}

bool same(const std::wstring& left, const std::wstring& right) { return lstrcmpiW(left.c_str(), right.c_str()) == 0; }

// An index that was made and belongs to no table yet, and a field made for it.
class NewIndex final : public LateBound {
 public:
  explicit NewIndex(IndexPointer made) : index(std::move(made)) {}
  const IndexPointer index;
};
class NewField final : public LateBound {
 public:
  explicit NewField(std::wstring named) : name(std::move(named)) {}
  const std::wstring name;
};

// The object of ours in an argument.
template <class Object>
Object& own(const _variant_t& value) {
  auto* object = V_VT(&value) == VT_DISPATCH ? dynamic_cast<Object*>(V_DISPATCH(&value)) : nullptr;
  if (object == nullptr) refuse(3001, L"Invalid argument.");
  return *object;
}

LateBound* new_index_fields(const IndexPointer& index) {
  auto* fields = new LateBound;
  fields->on_get(L"Append", [index](const LateBound::Arguments& arguments) {
    const std::wstring& name = own<NewField>(arguments.at(0)).name;
    for (const std::wstring& field : index->fields) {
      if (same(field, name)) refuse(3367, L"Cannot append. An object with that name already exists in the collection.");
    }
    index->fields.push_back(name);
    return _variant_t();
  });
  return fields;
}

LateBound* new_index(const std::wstring& name) {
  const auto index = std::make_shared<StockIndex>(StockIndex{name, {}});
  auto* object = new NewIndex(index);
  object->on_get(L"CreateField",
                 [](const LateBound::Arguments& arguments) { return given(new NewField(text(arguments.at(0)))); });
  object->on_get(L"Fields", [index](const LateBound::Arguments&) { return given(new_index_fields(index)); });
  return object;
}

void append_index(StockTable& table, const StockIndex& index) {
  for (const StockIndex& existing : table.indexes) {
    if (same(existing.name, index.name)) refuse(3284, L"Index already exists.");
  }
  for (const std::wstring& field : index.fields) {
    const bool known = std::any_of(table.fields.begin(), table.fields.end(),
                                   [&](const std::wstring& name) { return same(name, field); });
    if (!known) refuse(3409, L"Invalid field name in definition of index or relationship.");
  }
  table.indexes.push_back(index);
}

LateBound* new_indexes(const TablesPointer& tables, std::size_t table) {
  auto* indexes = new LateBound;
  indexes->on_get(L"Append", [tables, table](const LateBound::Arguments& arguments) {
    append_index(tables->at(table), *own<NewIndex>(arguments.at(0)).index);
    return _variant_t();
  });
  indexes->on_get(L"Refresh", [](const LateBound::Arguments&) { return _variant_t(); });
  return indexes;
}

LateBound* new_table_def(const TablesPointer& tables, std::size_t table) {
  auto* table_def = new LateBound;
  table_def->on_get(
      L"Name", [tables, table](const LateBound::Arguments&) { return _variant_t(tables->at(table).name.c_str()); });
  table_def->on_get(L"CreateIndex",
                    [](const LateBound::Arguments& arguments) { return given(new_index(text(arguments.at(0)))); });
  table_def->on_get(L"Indexes",
                    [tables, table](const LateBound::Arguments&) { return given(new_indexes(tables, table)); });
  return table_def;
}

std::size_t place_of(const StockTables& tables, const std::wstring& name, int error, const wchar_t* message) {
  const auto found =
      std::find_if(tables.begin(), tables.end(), [&](const StockTable& table) { return same(table.name, name); });
  if (found == tables.end()) refuse(error, message);
  return static_cast<std::size_t>(found - tables.begin());
}

LateBound* new_table_defs(const TablesPointer& tables) {
  auto* table_defs = new LateBound;
  table_defs->on_get(L"Refresh", [](const LateBound::Arguments&) { return _variant_t(); });
  table_defs->on_get(
      L"Item",
      [tables](const LateBound::Arguments& arguments) {
        const std::wstring name = text(arguments.at(0));
        return given(new_table_def(tables, place_of(*tables, name, 3265, L"Item not found in this collection.")));
      },
      DISPID_VALUE);
  table_defs->on_get(
      L"_NewEnum",
      [tables](const LateBound::Arguments&) {
        const auto item = [tables](std::size_t table) { return given(new_table_def(tables, table)); };
        return _variant_t(new_enumerator(tables->size(), item), false);
      },
      DISPID_NEWENUM);
  return table_defs;
}

}  // namespace

LateBound* new_database(std::shared_ptr<StockTables> tables) {
  auto* database = new LateBound(kDatabaseId);
  database->on_get(L"TableDefs", [tables](const LateBound::Arguments&) { return given(new_table_defs(tables)); });
  database->on_get(L"OpenRecordset", [tables](const LateBound::Arguments& arguments) {
    place_of(*tables, text(arguments.at(0)), 3078, L"The database cannot find the input table or query.");
    return given(new LateBound);  // a recordset; nobody here reads from one
  });
  return database;
}
