// tests/hosts/dao_ports.h - the operations' own port before a DaoModel.
#pragma once

#include <memory>

#include "data/database.h"
#include "tests/hosts/dao_model.h"

namespace corvelle::testing {

// The database of `model`; everything that it hands out counts among the journal's live objects.
std::shared_ptr<Database> ports_to(DaoModel& model);

}  // namespace corvelle::testing
