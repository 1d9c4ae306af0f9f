// report_view.h - lines of text in a window, each character in its display columns.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

// A line as it is drawn: its characters, and how far it goes from each to the next.
struct SpacedLine {
  std::wstring text;
  std::vector<int> advances;
};

// A child window that shows the first of `lines`, as many as it has place for.
class ReportView {
 public:
  // `parent` must outlive this. `font` stays the caller's.
  ReportView(HWND parent, std::vector<SpacedLine> lines, HFONT font, int line_height);
  ~ReportView();
  ReportView(const ReportView&) = delete;
  ReportView& operator=(const ReportView&) = delete;

  HWND window() const { return window_; }

 private:
  static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wide, LPARAM low);
  void paint(HDC context) const;

  std::vector<SpacedLine> lines_;
  HFONT font_;
  int line_height_;
  HWND window_ = nullptr;
};
