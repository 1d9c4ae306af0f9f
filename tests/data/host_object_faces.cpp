// The adapters before the COM objects of a host: what the shared tests of the operations drive on Windows.
#include <windows.h>

#include "component/host_database.h"
#include "component/host_grid.h"
#include "tests/data/faces.h"
#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {

std::shared_ptr<Database> face_of(DaoModel& model) {
  const auto database = owned(new_dao_database(model));
  return std::make_shared<HostDatabase>(database.Get(), u"test");
}

std::shared_ptr<Grid> face_of(GridModel& model) {
  const auto grid = owned(new_grid(model));
  VARIANT value;
  V_VT(&value) = VT_DISPATCH;
  V_DISPATCH(&value) = grid.Get();
  return std::make_shared<HostGrid>(value, u"test");
}

}  // namespace corvelle::testing
