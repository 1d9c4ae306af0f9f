// console/texts.h - texts on their way between the command line, automation and the console.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace corvelle::console {

// UTF-16 as UTF-8 and back; a lone surrogate becomes U+FFFD.
std::string utf8(std::wstring_view text);
std::wstring wide(std::string_view text);

// Whether two names are the same, whatever the case of their letters.
bool same_name(std::wstring_view left, std::wstring_view right);

// `text` with U+FFFD for line ends and whatever else controls a console.
std::wstring on_one_line(std::wstring text);

// "0x80040154", as people look it up.
std::wstring hexadecimal(HRESULT result);

// The system's own words for `result`, in the user's language; empty where it has none.
std::wstring system_text(HRESULT result);

// "0x80040154: Class not registered"
std::wstring explained(HRESULT result);

}  // namespace corvelle::console
