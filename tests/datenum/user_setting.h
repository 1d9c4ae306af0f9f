// tests/datenum/user_setting.h - what the user changes in the control panel, for the length of a test.
#pragma once

#include <windows.h>

#include <iterator>
#include <list>
#include <string>

#include "datenum/number_symbols.h"

namespace corvelle::testing {

// Sets one entry of the user's locale for the whole machine, and puts it back.
//   UserSetting semicolon(LOCALE_SDECIMAL, L";");
class UserSetting {
 public:
  UserSetting(LCTYPE type, const std::wstring& value) : type_(type) {
    wchar_t before[80] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, before, static_cast<int>(std::size(before)));
    before_ = before;
    SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value.c_str());
  }
  UserSetting(const UserSetting&) = delete;
  UserSetting& operator=(const UserSetting&) = delete;
  ~UserSetting() { SetLocaleInfoW(LOCALE_USER_DEFAULT, type_, before_.c_str()); }

 private:
  LCTYPE type_;
  std::wstring before_;
};

// Sets all symbols that number texts are read by, and puts them back.
class UserSymbolsSetting {
 public:
  explicit UserSymbolsSetting(const NumberSymbols& symbols) {
    constexpr LCTYPE kTypes[] = {LOCALE_SDECIMAL,  LOCALE_STHOUSAND,      LOCALE_SNEGATIVESIGN,  LOCALE_SPOSITIVESIGN,
                                 LOCALE_SCURRENCY, LOCALE_SMONDECIMALSEP, LOCALE_SMONTHOUSANDSEP};
    for (std::size_t i = 0; i < kSymbolCount; ++i) {
      const std::u16string_view text = symbols[static_cast<Symbol>(i)].view();
      settings_.emplace_back(kTypes[i], std::wstring(text.begin(), text.end()));
    }
  }

 private:
  std::list<UserSetting> settings_;
};

}  // namespace corvelle::testing
