// base/usual_floating_point.h - floating-point arithmetic as it usually is, whatever the host has set.
#pragma once

#ifdef _WIN32
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
  // In assembler, since the runtime's fesetenv leaves MXCSR as it is, and the compiler moves arithmetic past
  // intrinsics.
  UsualFloatingPoint() {
    constexpr std::uint16_t kX87 = 0x027F;  // 53 bits, as Windows starts its threads
    constexpr std::uint32_t kSse = 0x1F80;
    asm volatile("stmxcsr %1\n\tfnstenv %0\n\tfldcw %2\n\tldmxcsr %3"
                 : "=m"(x87_), "=m"(sse_)
                 : "m"(kX87), "m"(kSse)
                 : "memory");
  }
  ~UsualFloatingPoint() { asm volatile("fldenv %0\n\tldmxcsr %1" : : "m"(x87_), "m"(sse_) : "memory"); }

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
