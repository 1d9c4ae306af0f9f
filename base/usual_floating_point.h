// base/usual_floating_point.h - floating-point arithmetic as it usually is, whatever the host has set.
#pragma once

#ifdef _WIN32
#include <xmmintrin.h>

#include <cstdint>
#else
#include <cfenv>
#endif

namespace corvelle {

// For as long as it lives nothing raises, results are rounded to the nearest, and small ones are not flushed to zero.
// Then all is as the host had it, what had happened before included. No code of a host's may run meanwhile.
class UsualFloatingPoint {
 public:
  UsualFloatingPoint(const UsualFloatingPoint&) = delete;
  UsualFloatingPoint& operator=(const UsualFloatingPoint&) = delete;

#ifdef _WIN32
  // In assembler, since the runtime's fesetenv leaves MXCSR as it is.
  UsualFloatingPoint() : sse_(_mm_getcsr()) {
    constexpr std::uint16_t kX87 = 0x027F;  // 53 bits, as Windows starts its threads
    asm volatile("fnstenv %0\n\tfldcw %1" : "=m"(x87_) : "m"(kX87) : "memory");
    _mm_setcsr(0x1F80);
  }
  ~UsualFloatingPoint() {
    _mm_setcsr(sse_);
    asm volatile("fldenv %0" : : "m"(x87_) : "memory");
  }

 private:
  std::uint32_t x87_[7];
  std::uint32_t sse_;
#else
  UsualFloatingPoint() {
    std::fegetenv(&before_);
    std::fesetenv(FE_DFL_ENV);
  }
  ~UsualFloatingPoint() { std::fesetenv(&before_); }

 private:
  std::fenv_t before_;
#endif
};

}  // namespace corvelle
