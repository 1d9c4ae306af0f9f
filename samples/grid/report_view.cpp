#include "report_view.h"

#include <utility>

namespace {
constexpr wchar_t kClassName[] = L"SampleReportView";
constexpr int kMargin = 8;
}  // namespace

ReportView::ReportView(HWND parent, std::vector<SpacedLine> lines, HFONT font, int line_height)
    : lines_(std::move(lines)), font_(font), line_height_(line_height) {
  WNDCLASSW kind = {};
  kind.lpfnWndProc = receive;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  kind.lpszClassName = kClassName;
  RegisterClassW(&kind);
  window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, parent, nullptr,
                            kind.hInstance, nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

ReportView::~ReportView() { SetWindowLongPtrW(window_, GWLP_USERDATA, 0); }

LRESULT CALLBACK ReportView::receive(HWND window, UINT message, WPARAM wide, LPARAM low) {
  const auto* view = reinterpret_cast<ReportView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (view == nullptr || message != WM_PAINT) return DefWindowProcW(window, message, wide, low);
  PAINTSTRUCT painting;
  view->paint(BeginPaint(window, &painting));
  EndPaint(window, &painting);
  return 0;
}

void ReportView::paint(HDC context) const {
  const HGDIOBJ former = SelectObject(context, font_);
  int y = kMargin;
  for (const SpacedLine& line : lines_) {
    ExtTextOutW(context, kMargin, y, 0, nullptr, line.text.c_str(), static_cast<UINT>(line.text.size()),
                line.advances.data());
    y += line_height_;
  }
  SelectObject(context, former);
}
