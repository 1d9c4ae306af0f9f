// base/text.h - an owned UTF-16 text, the result of every text operation.
#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <string_view>

namespace corvelle {

// Frees what text storage was allocated with; the platform's twin files say how.
struct TextStorageDeleter {
  void operator()(char16_t* storage) const noexcept;
};

// Text owns a text in the platform's own string storage: on Windows a BSTR, which the component hands to its
// caller as it is, so that a result is allocated once; elsewhere plain memory. Any code unit may stand in it, NUL
// too. The empty Text allocates nothing. Where there was no memory for a text, it has failed, and is empty:
//   Text result = Text::of_length(2);
//   if (result.failed()) return result;  // as a Result<Text>: out of memory
//   result.data()[0] = u'a'; result.data()[1] = u'b';
//   result == u"ab"
class Text {
 public:
  Text() noexcept = default;
  // A copy of `content`.
  explicit Text(std::u16string_view content) noexcept;

  // A text of `length` code units, yet to be written.
  static Text of_length(std::size_t length) noexcept;

  Text(Text&& other) noexcept;
  Text& operator=(Text&& other) noexcept;

  // Whether there was no memory for it.
  bool failed() const noexcept { return size_ == kFailed; }

  std::size_t size() const noexcept { return failed() ? 0 : size_; }
  bool empty() const noexcept { return size() == 0; }
  char16_t* data() noexcept { return storage_.get(); }  // null when failed, or empty and never allocated
  const char16_t* data() const noexcept { return storage_.get(); }
  std::u16string_view view() const noexcept { return {storage_.get(), size()}; }
  // NOLINTNEXTLINE(google-explicit-constructor): a Text is a text
  operator std::u16string_view() const noexcept { return view(); }

  // Keeps the first `length` code units, at most size(), and gives the rest of the memory back; data() may change. It
  // may fail, too.
  void keep_first(std::size_t length) noexcept;

  // Hands the storage to the caller, who frees it as the platform says; null for a text that never allocated.
  char16_t* release() noexcept;

  friend bool operator==(const Text& text, std::u16string_view other) noexcept { return text.view() == other; }
  friend bool operator==(const Text& text, const Text& other) noexcept { return text.view() == other.view(); }

 private:
  static constexpr std::size_t kFailed = std::numeric_limits<std::size_t>::max();

  // Of `length` code units in `storage`, which it owns from then on; failed where that is null.
  static Text owning(char16_t* storage, std::size_t length) noexcept;

  std::unique_ptr<char16_t, TextStorageDeleter> storage_;
  std::size_t size_ = 0;
};

// `pieces` one behind the other.
//   joined({{u"ab", u"-", u"c"}}) == u"ab-c"
Text joined(std::span<const std::u16string_view> pieces) noexcept;

}  // namespace corvelle
