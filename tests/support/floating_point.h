// tests/support/floating_point.h - calls made with floating-point arithmetic as a host may have set it.
#pragma once

#include <xmmintrin.h>

#include <cstdint>
#include <vector>

namespace corvelle::testing {

// The control words of the x87 unit and of SSE.
struct FloatingPoint {
  std::uint16_t x87;
  std::uint32_t sse;
  bool operator==(const FloatingPoint&) const = default;
};

// What programs begin with.
inline constexpr FloatingPoint kUsualFloatingPoint{0x037F, 0x1F80};
// Every exception is raised, results have 24 bits and are rounded up, and small ones become zero.
inline constexpr FloatingPoint kStrictFloatingPoint{0x0840, 0xC040};

// All exceptions raised or none, results of 24, 53 or 64 bits, rounded in each way, with small ones kept or flushed.
inline std::vector<FloatingPoint> every_floating_point() {
  std::vector<FloatingPoint> all;
  for (const unsigned masks : {0x3Fu, 0u}) {
    for (const unsigned precision : {0u, 2u, 3u}) {
      for (unsigned rounding = 0; rounding < 4; ++rounding) {
        for (const unsigned flush : {0u, 0x8040u}) {
          all.push_back({static_cast<std::uint16_t>(masks | 0x40 | precision << 8 | rounding << 10),
                         masks << 7 | rounding << 13 | flush});
        }
      }
    }
  }
  return all;
}

inline FloatingPoint floating_point_now() {
  FloatingPoint now = {};
  asm volatile("fnstcw %0" : "=m"(now.x87));
  constexpr std::uint32_t kFlags = 0x3F;
  now.sse = _mm_getcsr() & ~kFlags;
  return now;
}

// Sets it for as long as it lives.
class FloatingPointScope {
 public:
  explicit FloatingPointScope(const FloatingPoint& setting) : before_(floating_point_now()) { set(setting); }
  ~FloatingPointScope() { set(before_); }
  FloatingPointScope(const FloatingPointScope&) = delete;
  FloatingPointScope& operator=(const FloatingPointScope&) = delete;

 private:
  // Without what was raised until then, or it would be raised here.
  static void set(const FloatingPoint& setting) {
    asm volatile("fnclex\n\tfldcw %0" : : "m"(setting.x87));
    _mm_setcsr(setting.sse);
  }

  FloatingPoint before_;
};

// Calls `function`, and says whether it left `setting` as it was.
template <class Function>
bool keeps(const FloatingPoint& setting, Function&& function) {
  const FloatingPointScope scope(setting);
  function();
  return floating_point_now() == setting;
}

// Numbers that arithmetic may raise something for, as their bits: reading them as numbers may.
inline constexpr std::uint64_t kTroublesomeNumbers[] = {
    0x7FF8000000000000, 0x7FF0000000000001, 0xFFF8000000000000, 0xFFF0000000000001,  // no numbers, quiet and signalling
    0x7FF0000000000000, 0xFFF0000000000000,                                          // infinite
    0x0000000000000001, 0x800FFFFFFFFFFFFF,                                          // too small to be normal
    0x0000000000000000, 0x8000000000000000,                                          // zero
    0x7FEFFFFFFFFFFFFF, 0xFFEFFFFFFFFFFFFF,                                          // the largest
    0x3FF8000000000000, 0x4004000000000000, 0x400C000000000000, 0x3FDFFFFFFFFFFFFF,  // 1.5, 2.5, 3.5, nearly 0.5
    0x4072C80000000000, 0x40E3881000000000, 0xC0E0000000000000,                      // 300.5, 40000.5, -32768
    0x40E2E7F4A9930BE1, 0xC12410357FFFFFFF, 0x414692417FFFFFFF, 0x4146924200000000,  // dates, the last too large
    0xC124103800000000, 0x41EFFFFFFFC00000, 0x43E0000000000000,
};

}  // namespace corvelle::testing
