// stock_label.cpp - labels of goods whose columns line up, by the operations as a C++ library.
//
//   cmake -S samples/native -B build/stock_label -DCMAKE_PREFIX_PATH=FOLDER
//   cmake --build build/stock_label && build/stock_label/stock_label
//
// FOLDER is where `cmake --install` put the library.

#include <corvelle/datenum/date_text.h>
#include <corvelle/datenum/decimal_format.h>
#include <corvelle/exceptions/or_throw.h>
#include <corvelle/text/display_width.h>
#include <corvelle/text/fields.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

namespace {

constexpr std::int16_t kRightAligned = 1;

// The operations' texts are UTF-16; a path converts them to what the console takes.
std::string shown(std::u16string_view text) { return std::filesystem::path(text).string(); }

// One row of the stock list: code, name, price and day, each ended by a comma. What fails in it is thrown.
void print_label(std::u16string_view row) {
  using corvelle::or_throw;
  const corvelle::Text name = or_throw(corvelle::getStr_Pf(row, 2, u","));
  const corvelle::Text given_price = or_throw(corvelle::getStr_Pf(row, 3, u","));
  const corvelle::Text price = or_throw(corvelle::GetDecimalFmt_Bus(given_price, 2));
  const corvelle::Text day = or_throw(corvelle::strDateFmt_Pf(or_throw(corvelle::getStr_Pf(row, 4, u","))));
  std::cout << '|' << shown(or_throw(corvelle::Set_String1(name, 16, 0))) << '|'
            << shown(or_throw(corvelle::Set_String1(price, 9, kRightAligned))) << '|' << shown(day) << "| "
            << or_throw(corvelle::GetByte_Pf(name, 0)) << " columns\n";
}

}  // namespace

int main() {
  // Without exceptions: an operation gives a value or an error.
  constexpr std::u16string_view kShortRow = u"A007,弹簧垫圈,";  // a row without price and day
  const corvelle::Result<corvelle::Text> price = corvelle::getStr_Pf(kShortRow, 3, u",");
  if (price.failed()) std::cout << "no price: " << shown(price.error().description()) << '\n';

  try {
    print_label(u"A001,六角螺栓M8x30,0.355,20060102,");
    print_label(u"A006,Hex key 10\",46.8,20060214,");
    print_label(kShortRow);
  } catch (const corvelle::Exception& exception) {
    std::cout << "no label: " << exception.what() << '\n';
    return 0;
  }
  return 1;
}
