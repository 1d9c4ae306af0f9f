// stock_label.cpp - labels of goods whose columns line up, by the operations as a C++ library.
//
//   cmake -S samples/native -B build/stock_label -DCMAKE_PREFIX_PATH=FOLDER
//   cmake --build build/stock_label && build/stock_label/stock_label
//
// FOLDER is where `cmake --install` put the library.

#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

#include "base/errors.h"
#include "datenum/date_text.h"
#include "datenum/decimal_format.h"
#include "text/display_width.h"
#include "text/fields.h"

namespace {

constexpr std::int16_t kRightAligned = 1;

// The operations' texts are UTF-16; a path converts them to what the console takes.
std::string shown(std::u16string_view text) { return std::filesystem::path(text).string(); }

// One row of the stock list: code, name, price and day, each ended by a comma.
void print_label(std::u16string_view row) {
  const corvelle::Text name = corvelle::getStr_Pf(row, 2, u",");
  const corvelle::Text price = corvelle::GetDecimalFmt_Bus(corvelle::getStr_Pf(row, 3, u","), 2);
  const corvelle::Text day = corvelle::strDateFmt_Pf(corvelle::getStr_Pf(row, 4, u","));
  std::cout << '|' << shown(corvelle::Set_String1(name, 16, 0)) << '|'
            << shown(corvelle::Set_String1(price, 9, kRightAligned)) << '|' << shown(day) << "| "
            << corvelle::GetByte_Pf(name, 0) << " columns\n";
}

}  // namespace

int main() {
  print_label(u"A001,六角螺栓M8x30,0.355,20060102,");
  print_label(u"A006,Hex key 10\",46.8,20060214,");
  try {
    print_label(u"A007,弹簧垫圈,");  // a row without price and day
  } catch (const corvelle::RuntimeError& error) {
    std::cout << "error " << static_cast<int>(error.number()) << ": " << shown(error.description()) << '\n';
    return 0;
  }
  return 1;
}
