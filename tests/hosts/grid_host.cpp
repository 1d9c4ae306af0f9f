#include "tests/hosts/grid_host.h"

#include <utility>

namespace corvelle::testing {

LateBound* new_grid(GridModel& model, std::function<void(VARIANT& value)> cols) {
  auto* grid = new LateBound(model.journal);
  const auto add_property = [&](const wchar_t* name, void (GridModel::*assign)(std::int32_t)) {
    grid->add(name, DISPATCH_PROPERTYPUT, [&model, assign](MemberCall& call) { (model.*assign)(call.int16(0)); });
  };
  add_property(L"Rows", &GridModel::set_rows);
  add_property(L"Row", &GridModel::set_row);
  add_property(L"Col", &GridModel::set_col);
  add_property(L"CellAlignment", &GridModel::set_cell_alignment);
  grid->add(L"Cols", DISPATCH_PROPERTYGET, [&model, cols = std::move(cols)](MemberCall& call) {
    const double number = model.get_cols();
    if (cols) {
      cols(*call.result());
    } else if (number == static_cast<std::int32_t>(number)) {
      call.give(static_cast<std::int32_t>(number));
    } else {
      V_VT(call.result()) = VT_R8;
      V_R8(call.result()) = number;
    }
  });
  grid->add(L"ColAlignment", DISPATCH_PROPERTYPUT,
            [&model](MemberCall& call) { model.set_col_alignment(call.int16(0), call.int16(1)); });
  grid->add(L"TextMatrix", DISPATCH_PROPERTYPUT,
            [&model](MemberCall& call) { model.set_text_matrix(call.int16(0), call.int16(1), call.text(2)); });
  return grid;
}

}  // namespace corvelle::testing
