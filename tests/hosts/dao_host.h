// tests/hosts/dao_host.h - the COM objects of a host's database before a DaoModel.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include "tests/hosts/dao_model.h"
#include "tests/hosts/late_bound.h"

namespace corvelle::testing {

// A new database object of `model`, with the caller's reference. It provides IDispatch and, by the same pointer, the
// published interface Database, whose members are reached by name only. Every object that it hands out is made for
// that answer, so that the journal's live objects show each reference somebody still holds.
LateBound* new_dao_database(DaoModel& model);

}  // namespace corvelle::testing
