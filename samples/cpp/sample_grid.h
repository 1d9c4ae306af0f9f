// sample_grid.h - a grid of the host's own, with the members of a flex grid control that Corvelle drives by name.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "late_bound.h"

// What the grid holds. Alignments are a flex grid's: 0 to 2 left, 3 to 5 centre, 6 to 8 right, 9 general.
struct SampleGrid {
  long rows = 0;
  long cols = 0;
  long row = 0;
  long col = 0;
  std::map<std::pair<long, long>, std::wstring> texts;
  std::map<std::pair<long, long>, long> cell_alignments;
  std::map<long, long> col_alignments;
  std::function<void()> changed;  // called after each assignment, where there is one

  std::wstring text(long at_row, long at_col) const;
  // The cell's own alignment, or else its column's.
  long alignment(long at_row, long at_col) const;
};

// The object of `grid` for those who drive it, with the caller's reference.
LateBound* new_grid(std::shared_ptr<SampleGrid> grid);
