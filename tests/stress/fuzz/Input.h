// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_INPUT_H_
#define SNMPSUBAGENT_TESTS_FUZZ_INPUT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// The bytes of one fuzzing run, taken as decisions from the front. Behind their
// end every decision is 0, so that each input means something.
class Input {
 public:
  // `data` is borrowed.
  Input(const std::uint8_t* data, std::size_t size)
      : next_(data), end_(data + size) {}

  bool AtEnd() const { return next_ == end_; }

  std::uint8_t U8() { return AtEnd() ? std::uint8_t{0} : *next_++; }

  std::uint16_t U16() {
    const unsigned int high = U8();
    return static_cast<std::uint16_t>(high << 8 | U8());
  }

  std::uint32_t U32() {
    const std::uint32_t high = U16();
    return high << 16 | U16();
  }

  std::uint64_t U64() {
    const std::uint64_t high = U32();
    return high << 32 | U32();
  }

  // 0 to `count` - 1; `count` is at most 256.
  unsigned int Below(unsigned int count) { return U8() % count; }

  // Up to `most` bytes.
  std::string Bytes(std::size_t most) {
    const std::size_t quarter = U8();
    const std::size_t wanted = std::min(most, quarter * 4 + U8() % 4);
    const std::string bytes(
        next_,
        next_ + std::min(wanted, static_cast<std::size_t>(end_ - next_)));
    next_ += bytes.size();
    return bytes;
  }

 private:
  const std::uint8_t* next_;
  const std::uint8_t* end_;
};

// Ends the process, with `what`, unless `holds`: a finding.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

#endif  // SNMPSUBAGENT_TESTS_FUZZ_INPUT_H_
