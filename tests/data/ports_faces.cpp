#include "tests/data/faces.h"
#include "tests/hosts/dao_ports.h"
#include "tests/hosts/grid_ports.h"

namespace corvelle::testing {

std::shared_ptr<Database> face_of(DaoModel& model) { return ports_to(model); }
std::shared_ptr<Grid> face_of(GridModel& model) { return ports_to(model); }

}  // namespace corvelle::testing
