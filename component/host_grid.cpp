#include "component/host_grid.h"

namespace corvelle {

void HostGrid::set_rows(std::int16_t rows) { rows_.put({rows}); }

void HostGrid::read_cols(double& cols) { cols_.read_number(cols); }

void HostGrid::set_row(std::int16_t row) { row_.put({row}); }

void HostGrid::set_col(std::int16_t col) { col_.put({col}); }

void HostGrid::set_cell_alignment(std::int16_t alignment) { cell_alignment_.put({alignment}); }

void HostGrid::set_col_alignment(std::int16_t col, std::int16_t alignment) { col_alignment_.put({col, alignment}); }

void HostGrid::set_text_matrix(std::int16_t row, std::int16_t col, std::u16string_view text) {
  if (text_.is_null() || text_.view() != text) text_ = ScopedBstr(text);
  text_matrix_.put({row, col, text_});
}

}  // namespace corvelle
