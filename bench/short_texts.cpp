#include "bench/short_texts.h"

#include "base/text.h"
#include "bench/ratio_table.h"
#include "bench/texts.h"
#include "text/classification.h"
#include "text/display_width.h"
#include "text/fields.h"
#include "text/replacement.h"
#include "text/substrings.h"

namespace short_texts::corvelle {
namespace {

using namespace ::corvelle;
using namespace ::corvelle::bench;

Result<Text> slashes(std::u16string_view text) { return Replace_Str(text, u"-", u"/"); }
Result<Text> up_to_comma(std::u16string_view text) { return Get_Str(text, u","); }
Result<Text> in_brackets(std::u16string_view text) { return getString_P(text, u"[", u"]"); }
Result<Text> second_field(std::u16string_view text) { return getStr_Pf(text, 2, u" "); }
Result<Text> to_20_columns(std::u16string_view text) { return Set_String1(text, 20, 0); }
Result<Text> first_20_columns(std::u16string_view text) { return Get_String(text, 1, 20); }

template <auto operation>
void call(const std::u16string& text) {
  for (int i = 0; i < kCalls; ++i) {
    std::u16string_view view = text;
    keep(view);
    keep(operation(view));
  }
}

}  // namespace

std::vector<Operation> operations() {
  return {{"sumByte_Pf, goods", kGoods, call<sumByte_Pf>},
          {"sumByte_Pf, ASCII", kWords, call<sumByte_Pf>},
          {"Center", kGoods, call<Center>},
          {"getNum", u"12 boxes, 144 pcs; ", call<getNum>},
          {"CharChange, goods", kGoods, call<CharChange>},
          {"CharChange, ASCII", kWords, call<CharChange>},
          {"Replace_Str", kDates, call<slashes>},
          {"ConversionStr_Long", kWords, call<ConversionStr_Long>},
          {"getStr_Pf, second field", u"10 bolt 20 ", call<second_field>, true},
          {"Get_Str", u"10 bolt, 20 nuts, ", call<up_to_comma>},
          {"getString_P", u"[bolt], ", call<in_brackets>},
          {"Set_String1 to 20 columns", kGoods, call<to_20_columns>},
          {"Get_String of 20 columns", kGoods, call<first_20_columns>}};
}

}  // namespace short_texts::corvelle
