// tests/hosts/grid_ports.h - the operations' own port before a GridModel.
#pragma once

#include <memory>

#include "data/grid.h"
#include "tests/hosts/grid_model.h"

namespace corvelle::testing {

std::shared_ptr<Grid> ports_to(GridModel& model);

}  // namespace corvelle::testing
