// tests/cases/text_slot_cases.h - Set_Str and Get_Str of ClsVexApp, for every runner, in this order on one thread.
#pragma once

#include <string>
#include <vector>

#include "tests/support/operation_case.h"

namespace corvelle::testing {

inline std::vector<OperationCase> text_slot_cases() {
  using namespace std::string_view_literals;
  const auto long_text = text(std::u16string(100000, u'中'));
  return {
      {"a text is stored", u"ClsVexApp.Set_Str", {text(u"A-01")}, nothing()},
      {"and read back", u"ClsVexApp.Get_Str", {}, text(u"A-01")},
      {"reading does not empty the slot", u"ClsVexApp.Get_Str", {}, text(u"A-01")},
      {"a text is replaced by a longer one", u"ClsVexApp.Set_Str", {text(u"单号 2024-0001")}, nothing()},
      {"of which nothing is cut", u"ClsVexApp.Get_Str", {}, text(u"单号 2024-0001")},
      {"NUL, spaces and lone surrogates are stored", u"ClsVexApp.Set_Str", {text(u" \0\xD800 "sv)}, nothing()},
      {"as they are", u"ClsVexApp.Get_Str", {}, text(u" \0\xD800 "sv)},
      {"no counter bounds the length", u"ClsVexApp.Set_Str", {long_text}, nothing()},
      {"of what is read back", u"ClsVexApp.Get_Str", {}, long_text},
      {"the empty text is a text", u"ClsVexApp.Set_Str", {text(u"")}, nothing()},
      {"that replaces another", u"ClsVexApp.Get_Str", {}, text(u"")},
  };
}

}  // namespace corvelle::testing
