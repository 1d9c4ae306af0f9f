#include "grid_control.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr wchar_t kClassName[] = L"SampleGridControl";
constexpr int kRowHeight = 26;
constexpr int kMargin = 6;
constexpr COLORREF kHeadingColour = RGB(226, 230, 236);
constexpr COLORREF kLineColour = RGB(176, 182, 190);
constexpr COLORREF kFrameColour = RGB(32, 96, 192);

void fill(HDC context, const RECT& area, COLORREF colour) {
  const HBRUSH brush = CreateSolidBrush(colour);
  FillRect(context, &area, brush);
  DeleteObject(brush);
}

void frame(HDC context, const RECT& area, COLORREF colour) {
  const HBRUSH brush = CreateSolidBrush(colour);
  FrameRect(context, &area, brush);
  DeleteObject(brush);
}

// A flex grid's alignments are left, centre and right, three of each: top, middle and bottom. 9 is its own choice.
UINT drawing_flags(long alignment) {
  constexpr UINT kAcross[] = {DT_LEFT, DT_CENTER, DT_RIGHT};
  constexpr UINT kDown[] = {DT_TOP, DT_VCENTER, DT_BOTTOM};
  const UINT placed =
      alignment < 0 || alignment > 8 ? DT_LEFT | DT_VCENTER : kAcross[alignment / 3] | kDown[alignment % 3];
  return placed | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
}

}  // namespace

GridControl::GridControl(HWND parent, std::shared_ptr<SampleGrid> grid, std::vector<long> shares, HFONT font)
    : grid_(std::move(grid)), shares_(std::move(shares)), font_(font), object_(given(new_grid(grid_))) {
  WNDCLASSW kind = {};
  kind.lpfnWndProc = receive;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
  kind.lpszClassName = kClassName;
  RegisterClassW(&kind);
  window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL, 0, 0, 0, 0, parent,
                            nullptr, kind.hInstance, nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  grid_->changed = [this] {
    show_extent();
    InvalidateRect(window_, nullptr, FALSE);
  };
}

GridControl::~GridControl() {
  grid_->changed = nullptr;
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
}

LRESULT CALLBACK GridControl::receive(HWND window, UINT message, WPARAM wide, LPARAM low) {
  auto* control = reinterpret_cast<GridControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return control == nullptr ? DefWindowProcW(window, message, wide, low) : control->handle(message, wide, low);
}

LRESULT GridControl::handle(UINT message, WPARAM wide, LPARAM low) {
  switch (message) {
    case WM_PAINT: {
      PAINTSTRUCT painting;
      const HDC context = BeginPaint(window_, &painting);
      RECT client = {};
      GetClientRect(window_, &client);
      paint(context, client);
      EndPaint(window_, &painting);
      return 0;
    }
    case WM_SIZE: show_extent(); return 0;
    case WM_VSCROLL: scroll(LOWORD(wide)); return 0;
    default: return DefWindowProcW(window_, message, wide, low);
  }
}

void GridControl::paint(HDC context, const RECT& client) const {
  const HGDIOBJ former = SelectObject(context, font_);
  SetBkMode(context, TRANSPARENT);
  fill(context, client, RGB(255, 255, 255));
  for (long line = 0; line * kRowHeight < client.bottom; ++line) {
    const long row = line == 0 ? 0 : first_row_ + line - 1;
    if (row >= grid_->rows) break;
    for (long col = 0; col < grid_->cols; ++col) {
      const RECT cell = {end_of(col - 1, client.right), line * kRowHeight, end_of(col, client.right) + 1,
                         (line + 1) * kRowHeight + 1};
      paint_cell(context, row, col, cell);
    }
  }
  SelectObject(context, former);
}

long GridControl::end_of(long col, long width) const {
  const auto end = shares_.begin() + std::min<std::ptrdiff_t>(col + 1, static_cast<std::ptrdiff_t>(shares_.size()));
  return width * std::accumulate(shares_.begin(), end, 0L) / std::accumulate(shares_.begin(), shares_.end(), 0L);
}

void GridControl::paint_cell(HDC context, long row, long col, RECT cell) const {
  if (row == 0) fill(context, cell, kHeadingColour);
  frame(context, cell, kLineColour);
  if (row == grid_->row && col == grid_->col) {
    RECT current = cell;
    InflateRect(&current, -1, -1);
    frame(context, current, kFrameColour);
  }
  InflateRect(&cell, -kMargin, -2);
  const std::wstring text = grid_->text(row, col);
  DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &cell, drawing_flags(grid_->alignment(row, col)));
}

long GridControl::rows_shown() const {
  RECT client = {};
  GetClientRect(window_, &client);
  return std::max(1L, client.bottom / kRowHeight - 1);
}

// Tells the scroll bar how much there is and how much of it is seen.
void GridControl::show_extent() {
  SCROLLINFO extent = {};
  extent.cbSize = sizeof extent;
  extent.fMask = SIF_ALL | SIF_DISABLENOSCROLL;
  extent.nMin = 1;
  extent.nMax = static_cast<int>(std::max(1L, grid_->rows - 1));
  extent.nPage = static_cast<UINT>(rows_shown());
  extent.nPos = static_cast<int>(first_row_);
  SetScrollInfo(window_, SB_VERT, &extent, TRUE);
}

void GridControl::scroll(int request) {
  SCROLLINFO place = {};
  place.cbSize = sizeof place;
  place.fMask = SIF_TRACKPOS;
  GetScrollInfo(window_, SB_VERT, &place);
  long row = first_row_;
  switch (request) {
    case SB_LINEUP: --row; break;
    case SB_LINEDOWN: ++row; break;
    case SB_PAGEUP: row -= rows_shown(); break;
    case SB_PAGEDOWN: row += rows_shown(); break;
    case SB_THUMBTRACK: row = place.nTrackPos; break;
    default: return;
  }
  first_row_ = std::clamp(row, 1L, std::max(1L, grid_->rows - rows_shown()));
  show_extent();
  InvalidateRect(window_, nullptr, FALSE);
}
