// tests/datenum/user_setting.h - what the user changes in the control panel, for the length of a test.
#pragma once

#include <windows.h>

#include <iterator>
#include <string>

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

}  // namespace corvelle::testing
