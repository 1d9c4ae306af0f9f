// data/grid.h - the host's flex grid, as far as the operations use it.
#pragma once

#include <cstdint>
#include <string_view>

#include "data/first_error.h"

namespace corvelle {

// The seven members of a flex grid that the operations use; rows and columns count from 0. The component implements
// it over the host's object by late binding. What fails is kept as the grid's first error, its own one or that there
// is no object (91, 424) or that it lacks the member (438); from then on no function does anything.
class Grid {
 public:
  Grid() = default;
  Grid(const Grid&) = delete;
  Grid& operator=(const Grid&) = delete;
  FirstError& errors() noexcept { return errors_; }
  virtual void set_rows(std::int16_t rows) = 0;
  // The number of columns, as a number of any kind: a grid may well answer with a fraction or a text. It is no result,
  // since 32-bit code gives those in a register that raises what the host has not masked.
  virtual void read_cols(double& cols) = 0;
  virtual void set_row(std::int16_t row) = 0;
  virtual void set_col(std::int16_t col) = 0;
  virtual void set_cell_alignment(std::int16_t alignment) = 0;
  virtual void set_col_alignment(std::int16_t col, std::int16_t alignment) = 0;
  virtual void set_text_matrix(std::int16_t row, std::int16_t col, std::u16string_view text) = 0;

 protected:
  ~Grid() = default;

 private:
  FirstError errors_;
};

}  // namespace corvelle
