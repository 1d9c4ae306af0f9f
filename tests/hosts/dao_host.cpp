#include "tests/hosts/dao_host.h"

#include <memory>
#include <utility>

namespace corvelle::testing {
namespace {

constexpr IID kDatabaseId = {0x00000071, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr IID kFieldId = {0x00000051, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr IID kAdoRecordsetId = {0x00000555, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

// An index or a field that was created and belongs to nothing yet.
class NewIndex final : public LateBound {
 public:
  NewIndex(DaoModel& model, IndexModel made) : LateBound(model.journal), index(std::make_shared<IndexModel>(made)) {}
  std::shared_ptr<IndexModel> index;
};

class NewField final : public LateBound {
 public:
  NewField(DaoModel& model, std::u16string named) : LateBound(model.journal), name(std::move(named)) {}
  std::u16string name;
};

// The object of ours behind an argument; another's, or none, is refused as the library refuses it.
template <class Object>
Object& own(const MemberCall& call) {
  auto* object = dynamic_cast<Object*>(call.object(0));
  if (object == nullptr) throw HostFailure{dao_error(3001), u"Invalid argument.", u"DAO"};
  return *object;
}

void set_object(VARIANT& item, IDispatch* object) {
  V_VT(&item) = VT_DISPATCH;
  V_DISPATCH(&item) = object;
}

// An object with nothing but a name: what a host sees of a field of an index that is in place.
LateBound* new_named(DaoModel& model, const std::u16string& name) {
  auto* object = new LateBound(model.journal);
  object->add(L"Name", DISPATCH_PROPERTYGET, [name](MemberCall& call) { call.give(name); });
  return object;
}

// Lets a host walk `collection`: `item_at` makes the item of an index, null behind the last.
void let_walk(DaoModel& model, LateBound& collection, std::function<LateBound*(std::size_t index)> item_at) {
  const auto walk = [&model, item_at = std::move(item_at)](MemberCall& call) {
    call.give_unknown(new_enumerator(model.journal, [item_at, next = std::size_t{0}](VARIANT& item) mutable {
      LateBound* made = item_at(next++);
      if (made != nullptr) set_object(item, made);
      return made != nullptr;
    }));
  };
  collection.add(L"_NewEnum", DISPATCH_METHOD | DISPATCH_PROPERTYGET, walk, DISPID_NEWENUM);
}

// An index that is in place, as a host that looks at the schema sees it.
LateBound* new_index_in_place(DaoModel& model, const IndexModel& index) {
  LateBound* object = new_named(model, index.name);
  object->add(L"Fields", DISPATCH_PROPERTYGET, [&model, names = index.fields](MemberCall& call) {
    auto* fields = new LateBound(model.journal);
    let_walk(model, *fields, [&model, names](std::size_t place) {
      return place < names.size() ? new_named(model, names[place]) : nullptr;
    });
    call.give_object(fields);
  });
  return object;
}

LateBound* new_index_fields(DaoModel& model, std::shared_ptr<IndexModel> index) {
  auto* fields = new LateBound(model.journal);
  fields->add(L"Append", DISPATCH_METHOD, [&model, index = std::move(index)](MemberCall& call) {
    model.append_field(*index, own<NewField>(call).name);
  });
  return fields;
}

LateBound* new_index(DaoModel& model, IndexModel made) {
  auto* object = new NewIndex(model, std::move(made));
  object->add(L"CreateField", DISPATCH_METHOD,
              [&model](MemberCall& call) { call.give_object(new NewField(model, model.create_field(call.text(0)))); });
  object->add(L"Fields", DISPATCH_PROPERTYGET, [&model, index = object->index](MemberCall& call) {
    model.get_index_fields();
    call.give_object(new_index_fields(model, index));
  });
  return object;
}

LateBound* new_indexes(DaoModel& model, std::size_t table) {
  auto* indexes = new LateBound(model.journal);
  indexes->add(L"Append", DISPATCH_METHOD,
               [&model, table](MemberCall& call) { model.append_index(table, *own<NewIndex>(call).index); });
  indexes->add(L"Refresh", DISPATCH_METHOD, [&model](MemberCall&) { model.refresh_indexes(); });
  let_walk(model, *indexes, [&model, table](std::size_t place) {
    const std::vector<IndexModel>& all = model.tables.at(table).indexes;
    return place < all.size() ? new_index_in_place(model, all[place]) : nullptr;
  });
  return indexes;
}

LateBound* new_table_def(DaoModel& model, std::size_t table) {
  auto* table_def = new LateBound(model.journal);
  table_def->add(L"Name", DISPATCH_PROPERTYGET,
                 [&model, table](MemberCall& call) { call.give(model.table_name(table)); });
  table_def->add(L"CreateIndex", DISPATCH_METHOD,
                 [&model](MemberCall& call) { call.give_object(new_index(model, model.create_index(call.text(0)))); });
  table_def->add(L"Indexes", DISPATCH_PROPERTYGET, [&model, table](MemberCall& call) {
    model.get_indexes();
    call.give_object(new_indexes(model, table));
  });
  return table_def;
}

LateBound* new_table_defs(DaoModel& model) {
  auto* table_defs = new LateBound(model.journal);
  table_defs->add(L"Refresh", DISPATCH_METHOD, [&model](MemberCall&) { model.refresh_table_defs(); });
  table_defs->add(
      L"Item", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
      [&model](MemberCall& call) { call.give_object(new_table_def(model, model.table_def(call.text(0)))); },
      DISPID_VALUE);
  table_defs->add(
      L"_NewEnum", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
      [&model](MemberCall& call) {
        model.walk_table_defs();
        call.give_unknown(new_enumerator(model.journal, [&model, next = std::size_t{0}](VARIANT& item) mutable {
          if (!model.next_table_def(next)) return false;
          set_object(item, new_table_def(model, next++));
          return true;
        }));
      },
      DISPID_NEWENUM);
  return table_defs;
}

LateBound* new_recordset_field(DaoModel& model, std::size_t table, std::size_t index) {
  auto* field = new LateBound(model.journal);
  if (model.dao_fields) field->provide(kFieldId);
  field->add(L"Name", DISPATCH_PROPERTYGET,
             [&model, table, index](MemberCall& call) { call.give(model.field_name(table, index)); });
  return field;
}

LateBound* new_recordset_fields(DaoModel& model, std::size_t table) {
  auto* fields = new LateBound(model.journal);
  fields->add(
      L"_NewEnum", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
      [&model, table](MemberCall& call) {
        model.walk_recordset_fields();
        call.give_unknown(new_enumerator(model.journal, [&model, table, next = std::size_t{0}](VARIANT& item) mutable {
          if (!model.next_recordset_field(table, next)) return false;
          set_object(item, new_recordset_field(model, table, next++));
          return true;
        }));
      },
      DISPID_NEWENUM);
  return fields;
}

LateBound* new_recordset(DaoModel& model, std::size_t table) {
  auto* recordset = new LateBound(model.journal);
  if (model.ado_recordsets) recordset->provide(kAdoRecordsetId);
  recordset->add(L"Fields", DISPATCH_PROPERTYGET, [&model, table](MemberCall& call) {
    model.get_recordset_fields();
    call.give_object(new_recordset_fields(model, table));
  });
  recordset->add(L"Close", DISPATCH_METHOD, [&model](MemberCall&) { model.journal.note("Recordset.Close"); });
  return recordset;
}

}  // namespace

LateBound* new_dao_database(DaoModel& model) {
  auto* database = new LateBound(model.journal);
  database->provide(kDatabaseId);
  database->add(L"TableDefs", DISPATCH_PROPERTYGET, [&model](MemberCall& call) {
    model.get_table_defs();
    call.give_object(new_table_defs(model));
  });
  database->add(L"OpenRecordset", DISPATCH_METHOD, [&model](MemberCall& call) {
    call.give_object(new_recordset(model, model.open_recordset(call.text(0))));
  });
  return database;
}

}  // namespace corvelle::testing
