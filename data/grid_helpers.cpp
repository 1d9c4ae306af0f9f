#include "data/grid_helpers.h"

#include <cmath>

#include "base/counter.h"
#include "base/function_ref.h"
#include "base/usual_floating_point.h"

namespace corvelle {
namespace {

constexpr std::int16_t kCentreCentre = 4;
constexpr std::int16_t kRowsOfAClearedGrid = 200;
constexpr std::int16_t kFirstDataRow = 1;

// One less than the grid's number of columns as a 16-bit integer, halves to the even neighbour.
Result<std::int16_t> last_column(Grid& grid, std::u16string_view operation) {
  constexpr double kFarBeyond = 1e15;  // and still a whole number; not a number becomes -kFarBeyond
  double cols = 0;
  grid.read_cols(cols);
  if (Error error = grid.errors().take()) return error;
  const UsualFloatingPoint usual;
  const double last = std::fmin(std::fmax(std::nearbyint(cols - 1), -kFarBeyond), kFarBeyond);
  return narrow16(static_cast<std::int64_t>(last), {operation, u"Msfg.Cols - 1"});
}

Error for_each_column(Grid& grid, std::u16string_view operation, FunctionRef<void(std::int16_t)> visit) {
  Result<std::int16_t> last = last_column(grid, operation);
  if (last.failed()) return last.take_error();
  for (std::int32_t column = 0; column <= *last && !grid.errors().any(); ++column) {
    visit(static_cast<std::int16_t>(column));
  }
  if (Error error = grid.errors().take()) return error;
  return narrow16(*last + 1, {operation, u"the step past the last column of Msfg"}).take_error();
}

}  // namespace

Error SetGrdCenter(Grid& Msfg) {
  Msfg.set_row(0);
  return for_each_column(Msfg, u"SetGrdCenter", [&](std::int16_t column) {
    Msfg.set_col(column);
    Msfg.set_cell_alignment(kCentreCentre);
  });
}

Error SetGrdAlign(Grid& Msfg, const std::int16_t& intAlign) {
  return for_each_column(Msfg, u"SetGrdAlign", [&](std::int16_t column) { Msfg.set_col_alignment(column, intAlign); });
}

Error ClearGrd(Grid& Msfg) {
  Msfg.set_rows(kRowsOfAClearedGrid);
  return for_each_column(Msfg, u"ClearGrd",
                         [&](std::int16_t column) { Msfg.set_text_matrix(kFirstDataRow, column, u""); });
}

}  // namespace corvelle
