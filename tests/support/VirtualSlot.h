// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_VIRTUALSLOT_H_
#define SNMPSUBAGENT_TESTS_VIRTUALSLOT_H_

#include <cstddef>
#include <cstring>

// The slot of a virtual operation in the virtual table of its class, counted
// from 0; -1 for an operation that is not virtual. A virtual destructor takes
// two slots.
//
// The Itanium C++ ABI stores the byte offset of the slot in the first word of a
// pointer to member, and marks it as virtual in the lowest bit of that word. On
// ARM, where the address of a function may be odd, the second word has the
// mark.
template <typename Operation>
std::ptrdiff_t VirtualSlot(Operation operation) {
  std::ptrdiff_t words[2];
  static_assert(sizeof operation == sizeof words, "not the Itanium C++ ABI");
  std::memcpy(words, &operation, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
  constexpr int kMarked = 1;
#else
  constexpr int kMarked = 0;
#endif
  if ((words[kMarked] & 1) == 0) return -1;
  constexpr std::ptrdiff_t kSlotSize = sizeof(void*);
  return words[0] / kSlotSize;
}

#endif  // SNMPSUBAGENT_TESTS_VIRTUALSLOT_H_
