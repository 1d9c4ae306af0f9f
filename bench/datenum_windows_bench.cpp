// Number texts and dates, next to the platform's own formatting and conversion.
//
//   scripts/wine build/win64-tests/datenum_windows_bench.exe
#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <cwchar>
#include <iterator>
#include <string>

#include "bench/ratio_table.h"
#include "datenum/date_text.h"
#include "datenum/decimal_format.h"

namespace corvelle::bench {
namespace {

void compare_decimals(const std::string& text) {
  const std::u16string number(text.begin(), text.end());
  VARIANT value;
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(reinterpret_cast<const OLECHAR*>(number.c_str()));
  wchar_t pattern[] = L"#######0.0000";
  print_ratio(("GetDecimalFmt_4 \"" + text + "\"").c_str(), "VarFormat", [&] { keep(GetDecimalFmt_4(number)); },
              [&] {
                BSTR result = nullptr;
                VarFormat(&value, pattern, 1, 1, 0, &result);
                keep(result);
                SysFreeString(result);
              });
  VariantClear(&value);
}

// The platform's splitting of a date, `print` for the text, and a BSTR of it, as the host gets one.
template <class Print>
void compare_dates(const char* peer, Print&& print) {
  double date = 38719.6458;
  print_ratio(
      "dateToStr_Pf", peer,
      [&] {
        keep(date);
        keep(dateToStr_Pf(date));
      },
      [&] {
        keep(date);
        SYSTEMTIME split;
        VariantTimeToSystemTime(date, &split);
        wchar_t digits[16];
        print(split, digits, std::size(digits));
        const BSTR result = SysAllocString(digits);
        keep(result);
        SysFreeString(result);
      });
}

void compare_dates() {
  constexpr const wchar_t* kPattern = L"%d%02d%02d";
  compare_dates("VariantTimeToSystemTime, std::swprintf, SysAllocString",
                [](const SYSTEMTIME& split, wchar_t* digits, std::size_t size) {
                  std::swprintf(digits, size, kPattern, split.wYear, split.wMonth, split.wDay);
                });
  compare_dates("VariantTimeToSystemTime, the system's _snwprintf, SysAllocString",
                [](const SYSTEMTIME& split, wchar_t* digits, std::size_t size) {
                  _snwprintf(digits, size, kPattern, split.wYear, split.wMonth, split.wDay);
                });
  print_ratio(
      "dateToStr_Pf", "its BSTR alone", [] { keep(dateToStr_Pf(38719)); },
      [] {
        const BSTR result = SysAllocStringLen(nullptr, 8);
        keep(result);
        SysFreeString(result);
      });
}

}  // namespace
}  // namespace corvelle::bench

int main() {
  corvelle::bench::print_head();
  for (const char* text : {"7", "2.5", "3.14159", "-0.03125", "1,234.5", "123456789012.12345", "12345.678e-2", "abc"}) {
    corvelle::bench::compare_decimals(text);
  }
  corvelle::bench::compare_dates();
}
