// tests/hosts/grid_model.h - a grid that behaves like a flex grid, without its COM object.
//
// The seven members that the operations use, with the errors of a grid that is handed what does not fit it. The tests
// reach it by two faces: grid_ports.h puts the operations' own port before it, grid_host.h the late-bound object.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "tests/hosts/journal.h"

namespace corvelle::testing {

// The HRESULTs of the grid's own errors.
inline constexpr auto kInvalidPropertyValue = static_cast<std::int32_t>(0x800A017Cu);  // 380
inline constexpr auto kSubscriptOutOfRange = static_cast<std::int32_t>(0x800A017Du);   // 381
inline constexpr auto kInvalidRow = static_cast<std::int32_t>(0x800A7539u);            // 30009
inline constexpr auto kInvalidCol = static_cast<std::int32_t>(0x800A753Au);            // 30010

// Each function notes its call and throws the HostFailure that the grid answers with.
class GridModel {
 public:
  std::int32_t rows = 3;
  double cols = 5;
  std::int32_t row = 1;
  std::int32_t col = 0;
  std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> cell_alignments;  // by row and column
  std::map<std::int32_t, std::int32_t> col_alignments;
  std::map<std::pair<std::int32_t, std::int32_t>, std::u16string> texts;  // by row and column; no empty ones
  Journal journal;

  void set_rows(std::int32_t value);
  double get_cols();
  void set_row(std::int32_t value);
  void set_col(std::int32_t value);
  void set_cell_alignment(std::int32_t alignment);
  void set_col_alignment(std::int32_t column, std::int32_t alignment);
  void set_text_matrix(std::int32_t at_row, std::int32_t at_col, std::u16string_view text);

 private:
  bool has_row(std::int32_t value) const { return value >= 0 && value < rows; }
  bool has_col(std::int32_t value) const { return value >= 0 && value < cols; }
};

}  // namespace corvelle::testing
