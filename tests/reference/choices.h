// tests/reference/choices.h - where the generators of arguments take their decisions from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace corvelle::testing {

// A row of decisions, drawn by chance or read from a fuzzer's bytes. The same generators serve both.
class Choices {
 public:
  Choices() = default;
  Choices(const Choices&) = delete;
  Choices& operator=(const Choices&) = delete;
  virtual ~Choices() = default;

  // A number from 0 to `bound` - 1.
  virtual std::uint32_t below(std::uint32_t bound) = 0;

  // Yes, once in `n` times. Where a fuzzer's bytes have run out: no.
  bool once_in(std::uint32_t n) { return below(n) == n - 1; }

  std::int64_t between(std::int64_t first, std::int64_t last) {
    return first + below(static_cast<std::uint32_t>(last - first + 1));
  }

  template <class Items>
  const auto& one_of(const Items& items) {
    return items[below(static_cast<std::uint32_t>(std::size(items)))];
  }
};

// Decisions by chance, the same ones for the same seed on every platform (SplitMix64).
class RandomChoices final : public Choices {
 public:
  explicit RandomChoices(std::uint64_t seed) : state_(seed) {}

  std::uint32_t below(std::uint32_t bound) override {
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    mixed ^= mixed >> 31;
    return static_cast<std::uint32_t>((mixed >> 32) * bound >> 32);
  }

 private:
  std::uint64_t state_;
};

// The number that an environment variable has, as the seed of a run and its length.
inline std::uint64_t number_from_environment(const char* name, std::uint64_t otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

// Decisions spelled out by bytes: one for a bound up to 256, two up to 65,536, else four; 0 when none are left.
class ByteChoices final : public Choices {
 public:
  explicit ByteChoices(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::uint32_t below(std::uint32_t bound) override {
    std::uint32_t number = next();
    if (bound > 0x100) number = number * 0x100 + next();
    if (bound > 0x10000) number = (number * 0x100 + next()) * 0x100 + next();
    return number % bound;
  }

 private:
  std::uint8_t next() {
    if (bytes_.empty()) return 0;
    const std::uint8_t byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }

  std::span<const std::uint8_t> bytes_;
};

}  // namespace corvelle::testing
