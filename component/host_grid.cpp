#include "component/host_grid.h"

namespace corvelle {

void HostGrid::set_rows(std::int16_t rows) { rows_.put({int16_variant(rows)}); }

double HostGrid::cols() { return cols_.number(); }

void HostGrid::set_row(std::int16_t row) { row_.put({int16_variant(row)}); }

void HostGrid::set_col(std::int16_t col) { col_.put({int16_variant(col)}); }

void HostGrid::set_cell_alignment(std::int16_t alignment) { cell_alignment_.put({int16_variant(alignment)}); }

void HostGrid::set_col_alignment(std::int16_t col, std::int16_t alignment) {
  col_alignment_.put({int16_variant(col), int16_variant(alignment)});
}

void HostGrid::set_text_matrix(std::int16_t row, std::int16_t col, std::u16string_view text) {
  const ScopedBstr value(text);
  text_matrix_.put({int16_variant(row), int16_variant(col), text_variant(value)});
}

}  // namespace corvelle
