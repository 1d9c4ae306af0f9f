// base/function_ref.h - a callable handed in for the length of one call.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace corvelle {

template <class Signature>
class FunctionRef;

// FunctionRef refers to a callable without owning or copying it; it must not outlive the callable.
//   bool any(FunctionRef<bool(char16_t)> accepts);
//   any([&](char16_t c) { return c == wanted; });
template <class Result, class... Arguments>
class FunctionRef<Result(Arguments...)> {
 public:
  // NOLINTBEGIN(google-explicit-constructor, bugprone-forwarding-reference-overload): callers pass lambdas, and the
  // constraint leaves copies alone
  template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef> &&
             std::is_invocable_r_v<Result, Callable&, Arguments...>)
  FunctionRef(Callable&& callable) noexcept
      : callable_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
        call_([](void* target, Arguments... arguments) -> Result {
          return (*static_cast<std::remove_reference_t<Callable>*>(target))(std::forward<Arguments>(arguments)...);
        }) {}
  // NOLINTEND(google-explicit-constructor, bugprone-forwarding-reference-overload)

  Result operator()(Arguments... arguments) const { return call_(callable_, std::forward<Arguments>(arguments)...); }

 private:
  void* callable_;
  Result (*call_)(void*, Arguments...);
};

}  // namespace corvelle
