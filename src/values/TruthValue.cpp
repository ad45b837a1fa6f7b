// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "values/TruthValue.h"

namespace {

// Correct both as an int and as the low 32 bits of a long, which come first on
// a little-endian machine and last on a big-endian one.
struct alignas(long) Constant {
  explicit constexpr Constant(int number)
      : first(number),
        second(__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__ ? number : 0) {}
  int first;
  int second;
};
static_assert(sizeof(Constant) >= sizeof(long), "read as a long");

constexpr Constant kTrueConstant(truth_value::kTrue);
constexpr Constant kFalseConstant(truth_value::kFalse);

}  // namespace

const unsigned char* truth_value::Bytes(bool value) {
  return reinterpret_cast<const unsigned char*>(value ? &kTrueConstant
                                                      : &kFalseConstant);
}
