// component/host_database.h - the host's database behind the operations' port.
#pragma once

#include <windows.h>

#include <unknwn.h>
#include <wrl/client.h>

#include <memory>
#include <string_view>

#include "component/host_object.h"
#include "data/database.h"

namespace corvelle {

// HostDatabase drives the host's Data Access Objects database by the names of its members, whatever its version and
// whether or not its type library is registered. It holds a reference to it as long as it lives.
//   HostDatabase database(DB, u"IFTable");  // DB may be null: object not set (91) when it is first used
//   IFTable(database, TableName);
class HostDatabase final : public Database {
 public:
  // `operation` is named in the errors; making the object raises none, and asks the host's for nothing.
  HostDatabase(IUnknown* DB, std::u16string_view operation) : database_(DB), where_{operation, u"DB"} {}

  std::unique_ptr<TableDefs> table_defs() override;
  std::unique_ptr<Recordset> open_recordset(std::u16string_view name) override;

 private:
  HostObject database() const { return {database_.Get(), where_}; }

  Microsoft::WRL::ComPtr<IUnknown> database_;
  Argument where_;
};

}  // namespace corvelle
