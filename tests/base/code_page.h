// tests/base/code_page.h - code page 936 as someone else implements it: the system's conversion on Windows, iconv
// elsewhere.
#pragma once

#include <cstdint>
#include <string>

namespace corvelle::testing {

class CodePage {
 public:
#ifdef _WIN32
  // The table was written from this conversion.
  static constexpr std::int32_t kDifferences = 0;
  static constexpr std::int32_t kDecodingDifferences = 0;
#else
  // glibc's GBK is another edition of the code page: it puts the euro sign and some symbols elsewhere, lacks the
  // user-defined area and never writes a look-alike. Nor does it decode the byte FF, the last of 128 codes up to
  // 32,767.
  static constexpr std::int32_t kDifferences = 2562;
  static constexpr std::int32_t kDecodingDifferences = 128;
#endif

  CodePage();
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;
  ~CodePage();

  // The ANSI character code of `character`; that of '?' where it has none.
  std::int16_t code_of(char16_t character) const;

  // The characters that the one or two bytes of `code` stand for, '?' for a byte that stands for none.
  std::u16string decoded(std::int32_t code) const;

 private:
  void* to_bytes_ = nullptr;
  void* to_units_ = nullptr;
};

}  // namespace corvelle::testing
