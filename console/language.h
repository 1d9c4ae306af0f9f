// console/language.h - the two languages that the tool speaks.
#pragma once

#include <windows.h>

#include <string>

namespace corvelle::console {

enum class Language { english, chinese };

// The language of this user's Windows: Chinese where that is Chinese, English elsewhere.
inline Language user_language() {
  return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_CHINESE ? Language::chinese : Language::english;
}

// One text in both languages; {} stands for what is filled in.
struct Words {
  const wchar_t* english;
  const wchar_t* chinese;

  std::wstring in(Language language, const std::wstring& filling = {}) const {
    std::wstring text = language == Language::chinese ? chinese : english;
    const std::size_t place = text.find(L"{}");
    return place == std::wstring::npos ? text : text.replace(place, 2, filling);
  }
};

}  // namespace corvelle::console
