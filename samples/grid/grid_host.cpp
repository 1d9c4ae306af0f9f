// grid_host.cpp - a host with a window: a grid of the stock list, which the component centres, aligns and clears.
//
//   grid_host STOCK.CSV [FONT FACE]                          shows the window; its menu has the three operations
//   grid_host STOCK.CSV FONT FACE REPORT.TXT FOLDER          writes pictures of it, and of the report, to FOLDER
//
// FONT is a font file with the face FACE, for machines that have none for Chinese text; a dash takes what there is.

#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "../cpp/component.h"
#include "../cpp/sample_grid.h"
#include "../cpp/text_files.h"
#include "Corvelle.h"
#include "grid_control.h"
#include "picture.h"
#include "report_view.h"

namespace {

using Microsoft::WRL::ComPtr;

constexpr wchar_t kClassName[] = L"SampleGridHost";
constexpr DWORD kPictureStyle = WS_CAPTION | WS_THICKFRAME;  // nothing to click on
constexpr int kFontHeight = 17;
constexpr SIZE kGridWindow = {760, 340};
constexpr SIZE kReportWindow = {1100, 560};
constexpr int kColumnWidth = 9;  // of a display column in the report's window
constexpr int kLineHeight = 21;
constexpr long kGridCols = 6;
constexpr SHORT kRightCentre = 7;

enum Command : WORD { kCentre = 1, kAlign, kClear };

LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wide, LPARAM low);

// The host's window, around one child.
class HostWindow {
 public:
  HostWindow(const wchar_t* title, SIZE size, DWORD style) {
    WNDCLASSW kind = {};
    kind.lpfnWndProc = receive;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
    kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    kind.lpszClassName = kClassName;
    RegisterClassW(&kind);
    window_ = CreateWindowExW(0, kClassName, title, style, 20, 20, size.cx, size.cy, nullptr, nullptr, kind.hInstance,
                              nullptr);
    if (window_ == nullptr) throw CallFailed(HRESULT_FROM_WIN32(GetLastError()), L"cannot make a window");
  }
  ~HostWindow() { DestroyWindow(window_); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  HWND window() const { return window_; }

  void show(HWND child) const {
    RECT client = {};
    GetClientRect(window_, &client);
    MoveWindow(child, 0, 0, client.right, client.bottom, TRUE);
    ShowWindow(window_, SW_SHOWNORMAL);
    SetForegroundWindow(window_);
    settle();
  }

  // Handles all that waits, and has everything painted.
  void settle() const {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
  }

 private:
  HWND window_ = nullptr;
};

// A font, from a file where that is wanted.
class Font {
 public:
  Font(std::wstring file, const std::wstring& face) : file_(std::move(file)) {
    if (file_ != L"-" && AddFontResourceExW(file_.c_str(), FR_PRIVATE, nullptr) == 0) {
      throw CallFailed(E_FAIL, L"no font in " + file_);
    }
    handle_ = CreateFontW(-kFontHeight, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                          CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, face == L"-" ? L"" : face.c_str());
  }
  ~Font() {
    DeleteObject(handle_);
    if (file_ != L"-") RemoveFontResourceExW(file_.c_str(), FR_PRIVATE, nullptr);
  }
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;

  HFONT handle() const { return handle_; }

 private:
  std::wstring file_;
  HFONT handle_ = nullptr;
};

// The stock list in a grid, and the component at work on it.
class StockGrid {
 public:
  StockGrid(HWND parent, const Lines& stock, const Font& font)
      : control_(parent, filled(stock), {2, 5, 3, 2, 3, 3}, font.handle()) {}

  HWND window() const { return control_.window(); }

  void apply(int command) {
    SHORT alignment = kRightCentre;
    _variant_t nothing;
    const _variant_t grid(control_.object());
    if (command == kCentre) check(validate_->SetGrdCenter(grid, &nothing));
    if (command == kAlign) check(validate_->SetGrdAlign(grid, &alignment, &nothing));
    if (command == kClear) check(validate_->ClearGrd(grid));
  }

 private:
  std::shared_ptr<SampleGrid> filled(const Lines& stock) {
    auto grid = std::make_shared<SampleGrid>();
    grid->rows = static_cast<long>(stock.size());
    grid->cols = kGridCols;
    for (long row = 0; row < grid->rows; ++row) {
      for (long col = 0; col < kGridCols; ++col) {
        grid->texts[{row, col}] =
            text_from(*validate_.Get(), &_ClsValidate::getStr_Pf, bstr(stock[static_cast<size_t>(row)]),
                      static_cast<SHORT>(col + 1), bstr(L","));
      }
    }
    return grid;
  }

  ComPtr<_ClsValidate> validate_ = created<_ClsValidate>(CLSID_ClsValidate, IID__ClsValidate);
  GridControl control_;
};

LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wide, LPARAM low) {
  auto* grid = reinterpret_cast<StockGrid*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_COMMAND && grid != nullptr) {
    try {
      grid->apply(LOWORD(wide));
    } catch (const CallFailed& failure) {
      MessageBoxW(window, failure.description.c_str(), L"Corvelle", MB_OK | MB_ICONERROR);
    }
    return 0;
  }
  if (message == WM_SIZE && grid != nullptr) MoveWindow(grid->window(), 0, 0, LOWORD(low), HIWORD(low), TRUE);
  if (message == WM_CLOSE) PostQuitMessage(0);
  return message == WM_CLOSE ? 0 : DefWindowProcW(window, message, wide, low);
}

HMENU new_menu() {
  const HMENU operations = CreatePopupMenu();
  AppendMenuW(operations, MF_STRING, kCentre, L"SetGrdCenter");
  AppendMenuW(operations, MF_STRING, kAlign, L"SetGrdAlign 7");
  AppendMenuW(operations, MF_STRING, kClear, L"ClearGrd");
  const HMENU menu = CreateMenu();
  AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(operations), L"Grid");
  return menu;
}

void run_window(const Lines& stock, const Font& font) {
  const HostWindow host(L"Corvelle sample: a grid", kGridWindow, WS_OVERLAPPEDWINDOW);
  SetMenu(host.window(), new_menu());
  StockGrid grid(host.window(), stock, font);
  SetWindowLongPtrW(host.window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&grid));
  host.show(grid.window());
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  SetWindowLongPtrW(host.window(), GWLP_USERDATA, 0);
}

// ---- Pictures ----

void picture_grids(const Lines& stock, const Font& font, const std::wstring& folder) {
  const HostWindow host(L"Corvelle sample: a grid", kGridWindow, kPictureStyle);
  StockGrid grid(host.window(), stock, font);
  host.show(grid.window());
  save_picture(host.window(), folder + L"\\grid-before.png");
  grid.apply(kCentre);
  grid.apply(kAlign);
  host.settle();
  save_picture(host.window(), folder + L"\\grid-aligned.png");
  grid.apply(kClear);
  host.settle();
  save_picture(host.window(), folder + L"\\grid-cleared.png");
}

// Each character as wide as the component says.
std::vector<SpacedLine> spaced(const Lines& lines) {
  const auto validate = created<_ClsValidate>(CLSID_ClsValidate, IID__ClsValidate);
  std::vector<SpacedLine> result;
  for (const std::wstring& line : lines) {
    SpacedLine drawn = {line, {}};
    for (const wchar_t character : line) {
      const _bstr_t text = bstr(std::wstring(1, character));
      drawn.advances.push_back(kColumnWidth *
                               value_from<SHORT>(*validate.Get(), &_ClsValidate::GetByte_Pf, text, SHORT{0}));
    }
    result.push_back(drawn);
  }
  return result;
}

void picture_report(const Lines& report, const Font& font, const std::wstring& folder) {
  const HostWindow host(L"Corvelle sample: the stock report", kReportWindow, kPictureStyle);
  const ReportView view(host.window(), spaced(report), font.handle(), kLineHeight);
  host.show(view.window());
  save_picture(host.window(), folder + L"\\report.png");
}

void run(int count, wchar_t** arguments) {
  const Lines stock = ansi_lines(arguments[1]);
  const Font font(count > 3 ? arguments[2] : L"-", count > 3 ? arguments[3] : L"-");
  if (count == 6) {
    picture_grids(stock, font, arguments[5]);
    picture_report(unicode_lines(arguments[4]), font, arguments[5]);
  } else {
    run_window(stock, font);
  }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 2 && count != 4 && count != 6) {
    std::fputs("usage: grid_host STOCK.CSV [FONT FACE [REPORT.TXT FOLDER]]\n", stderr);
    return 2;
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int status = 0;
  try {
    run(count, arguments);
  } catch (const CallFailed& failure) {
    std::fwprintf(stderr, L"grid_host: %08lX %ls\n", static_cast<unsigned long>(failure.result),
                  failure.description.c_str());
    status = 1;
  }
  CoUninitialize();
  return status;
}
