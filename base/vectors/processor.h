// base/vectors/processor.h - which vector instructions the processor and the system have beyond the 16-byte ones that
// every supported system has.
#pragma once

namespace corvelle {

// Shuffles of bytes.
inline bool has_ssse3() { return __builtin_cpu_supports("ssse3") != 0; }

// Vectors of 32 bytes, and the bit counts that came with them.
inline bool has_avx2() {
  return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi") != 0 &&
         __builtin_cpu_supports("popcnt") != 0;
}

}  // namespace corvelle
