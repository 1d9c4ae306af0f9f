// tests/hosts/grid_host.h - the COM object of a host's flex grid before a GridModel.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>

#include "tests/hosts/grid_model.h"
#include "tests/hosts/late_bound.h"

namespace corvelle::testing {

// A new grid object of `model`, with the caller's reference. Its members take numbers as 16-bit integers only. `Cols`
// answers with the model's number of columns, or with what `cols` fills in, after the call was noted.
LateBound* new_grid(GridModel& model, std::function<void(VARIANT& value)> cols = nullptr);

}  // namespace corvelle::testing
