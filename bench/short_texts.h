// bench/short_texts.h - the operations that use vector code, on short texts, as they are and by scalar code alone.
//
// short_texts.cpp, the operations and what they stand on are compiled twice for that, with the same options and each
// time with another name for their namespace: once with base/vectors/, once with by_unit.cpp and by_unit_width.cpp in
// place of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace short_texts {

struct Operation {
  const char* name;
  std::u16string_view sample;                // of which its text is made
  void (*call)(const std::u16string& text);  // calls it kCalls times
  bool needs_more = false;                   // than one character
};

inline constexpr int kCalls = 64;

namespace corvelle_now {
std::vector<Operation> operations();
}
namespace corvelle_by_unit {
std::vector<Operation> operations();
}

}  // namespace short_texts
