// grid_control.h - a small grid control: a window over a SampleGrid, which others drive by the names of its members.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "../cpp/sample_grid.h"

// The window of a grid. Row 0 is its heading; the current cell has a frame; what does not fit is scrolled to.
class GridControl {
 public:
  // A new child window of `parent`, which must outlive this. `shares` are the columns' parts of the width. `font` stays
  // the caller's.
  GridControl(HWND parent, std::shared_ptr<SampleGrid> grid, std::vector<long> shares, HFONT font);
  ~GridControl();
  GridControl(const GridControl&) = delete;
  GridControl& operator=(const GridControl&) = delete;

  HWND window() const { return window_; }
  // The object that drives the grid: Rows, Cols, Row, Col, CellAlignment, ColAlignment, TextMatrix.
  IDispatch* object() const { return V_DISPATCH(&object_); }

 private:
  static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wide, LPARAM low);
  LRESULT handle(UINT message, WPARAM wide, LPARAM low);
  void paint(HDC context, const RECT& client) const;
  // Where a column ends when the window is `width` wide.
  long end_of(long col, long width) const;
  void paint_cell(HDC context, long row, long col, RECT cell) const;
  void show_extent();
  void scroll(int request);
  long rows_shown() const;

  std::shared_ptr<SampleGrid> grid_;
  std::vector<long> shares_;
  HFONT font_;
  _variant_t object_;
  HWND window_ = nullptr;
  long first_row_ = 1;  // the row below the heading
};
