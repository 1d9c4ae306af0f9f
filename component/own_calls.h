// component/own_calls.h - operations that call another one through their own object's interface, as a host would.
//
// Each is handed to an operation as the callable that it asks for. A called operation's error ends the caller with
// the same number, description and source.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "component/automation.h"
#include "component/error_report.h"
#include "component/interfaces.h"

namespace corvelle {

// A text of one character in the shape of a BSTR, without an allocation.
class CharacterBstr {
 public:
  explicit CharacterBstr(char16_t character) : units_{static_cast<OLECHAR>(character), L'\0'} {}
  BSTR get() { return units_; }

 private:
  [[maybe_unused]] std::uint32_t byte_count_ = sizeof(OLECHAR);  // in front of the units, as in every BSTR
  OLECHAR units_[2];
};

// is_AlphaNum of `object`, for GetStr, which asks for one character at a time.
class AlphaNumCall {
 public:
  explicit AlphaNumCall(_ClsValidate& object) : object_(object) {}

  Result<bool> operator()(std::u16string_view character) const {
    CharacterBstr text(character.front());
    VARIANT_BOOL result = VARIANT_FALSE;
    const HRESULT called = object_.is_AlphaNum(text.get(), &result);
    if (FAILED(called)) return error_of_call(called);
    return result != VARIANT_FALSE;
  }

 private:
  _ClsValidate& object_;
};

// getStr_Pf of `object`, for GetPath, which asks for one field after the other of one text.
class FieldCall {
 public:
  explicit FieldCall(_ClsValidate& object) : object_(object) {}

  Result<Text> operator()(std::u16string_view text, std::int16_t number, std::u16string_view separator) {
    if (number == 1) {
      text_ = ScopedBstr(text);
      separator_ = ScopedBstr(separator);
    }
    if (text_.is_null() || separator_.is_null()) return out_of_memory();
    ScopedBstr field;
    const HRESULT called = object_.getStr_Pf(text_.get(), number, separator_.get(), field.receive());
    if (FAILED(called)) return error_of_call(called);
    return Text(field.view());
  }

 private:
  _ClsValidate& object_;
  ScopedBstr text_;
  ScopedBstr separator_;
};

}  // namespace corvelle
