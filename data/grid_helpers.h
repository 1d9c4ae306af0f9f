// data/grid_helpers.h - formatting and clearing a host's flex grid.
//
// Each operation reads the number of columns once and then goes through the columns from 0 on with a signed 16-bit
// counter. Each passes the grid's own errors on, and raises overflow (6) above 32,768 columns before the first column
// is touched, at exactly 32,768 after the last one was. What was assigned before an error stays.
#pragma once

#include <cstdint>

#include "base/errors.h"
#include "data/grid.h"

namespace corvelle {

// Centres the cells of row 0. The current cell is left at row 0 and the last column.
//   of a grid with 2 columns: Row = 0, Col = 0, CellAlignment = 4, Col = 1, CellAlignment = 4
Error SetGrdCenter(Grid& Msfg);

// Sets the alignment of every column to `intAlign`: 0 left top, 1 left centre … 8 right bottom, 9 general.
// `intAlign` is the caller's variable and is read anew for each column: a grid that changes it while a column is
// assigned changes what the next one gets.
Error SetGrdAlign(Grid& Msfg, const std::int16_t& intAlign);

// Gives the grid 200 rows and empties row 1.
// Kept: only row 1 is emptied; rows 2 to 199 keep their text.
Error ClearGrd(Grid& Msfg);

}  // namespace corvelle
