#include "sample_grid.h"

namespace {

constexpr long kGeneral = 9;

using Arguments = LateBound::Arguments;

void add_number(LateBound& object, const wchar_t* name, const std::shared_ptr<SampleGrid>& grid,
                long SampleGrid::*number) {
  object.on_get(name, [grid, number](const Arguments&) { return _variant_t((*grid).*number); });
  object.on_put(name, [grid, number](const Arguments& arguments) {
    (*grid).*number = arguments.at(0);
    return _variant_t();
  });
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
  object->on_put(L"CellAlignment", [grid](const Arguments& arguments) {
    grid->cell_alignments[{grid->row, grid->col}] = arguments.at(0);
    return _variant_t();
  });
  object->on_put(L"ColAlignment", [grid](const Arguments& arguments) {
    grid->col_alignments[arguments.at(0)] = arguments.at(1);
    return _variant_t();
  });
  object->on_put(L"TextMatrix", [grid](const Arguments& arguments) {
    const _bstr_t text(arguments.at(2));
    grid->texts[{arguments.at(0), arguments.at(1)}] = std::wstring(text, text.length());
    return _variant_t();
  });
  return object;
}
