// tests/data/faces.h - how a test program reaches the model of a host object; each program links its own.
#pragma once

#include <memory>

#include "data/database.h"
#include "data/grid.h"
#include "tests/hosts/dao_model.h"
#include "tests/hosts/grid_model.h"

namespace corvelle::testing {

std::shared_ptr<Database> face_of(DaoModel& model);
std::shared_ptr<Grid> face_of(GridModel& model);

}  // namespace corvelle::testing
