#include "sample_grid.h"

namespace {

constexpr long kGeneral = 9;

using Arguments = LateBound::Arguments;

// A property that is assigned: `assign` does it, and the grid is told.
template <class Assign>
void add_assigned(LateBound& object, const wchar_t* name, const std::shared_ptr<SampleGrid>& grid, Assign assign) {
  object.on_put(name, [grid, assign](const Arguments& arguments) {
    assign(*grid, arguments);
    if (grid->changed) grid->changed();
    return _variant_t();
  });
}

void add_number(LateBound& object, const wchar_t* name, const std::shared_ptr<SampleGrid>& grid,
                long SampleGrid::* number) {
  object.on_get(name, [grid, number](const Arguments&) { return _variant_t((*grid).*number); });
  add_assigned(object, name, grid,
               [number](SampleGrid& assigned, const Arguments& arguments) { assigned.*number = arguments.at(0); });
}

}  // namespace

std::wstring SampleGrid::text(long at_row, long at_col) const {
  const auto found = texts.find({at_row, at_col});
  return found == texts.end() ? L"" : found->second;
}

long SampleGrid::alignment(long at_row, long at_col) const {
  const auto cell = cell_alignments.find({at_row, at_col});
  if (cell != cell_alignments.end()) return cell->second;
  const auto column = col_alignments.find(at_col);
  return column == col_alignments.end() ? kGeneral : column->second;
}

LateBound* new_grid(std::shared_ptr<SampleGrid> grid) {
  auto* object = new LateBound;
  add_number(*object, L"Rows", grid, &SampleGrid::rows);
  add_number(*object, L"Cols", grid, &SampleGrid::cols);
  add_number(*object, L"Row", grid, &SampleGrid::row);
  add_number(*object, L"Col", grid, &SampleGrid::col);
  add_assigned(*object, L"CellAlignment", grid, [](SampleGrid& assigned, const Arguments& arguments) {
    assigned.cell_alignments[{assigned.row, assigned.col}] = arguments.at(0);
  });
  add_assigned(*object, L"ColAlignment", grid, [](SampleGrid& assigned, const Arguments& arguments) {
    assigned.col_alignments[arguments.at(0)] = arguments.at(1);
  });
  add_assigned(*object, L"TextMatrix", grid, [](SampleGrid& assigned, const Arguments& arguments) {
    const _bstr_t text(arguments.at(2));
    assigned.texts[{arguments.at(0), arguments.at(1)}] = std::wstring(text, text.length());
  });
  return object;
}
