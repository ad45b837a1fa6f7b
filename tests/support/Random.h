// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_RANDOM_H_
#define SNMPSUBAGENT_TESTS_RANDOM_H_

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>

// Random decisions, the same for the same seed on every machine.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  // A number below `limit`, which is not 0.
  std::uint32_t Below(std::size_t limit) {
    return static_cast<std::uint32_t>(engine_() % limit);
  }

  // A number from `first` to `last`.
  int Between(int first, int last) {
    return first +
           static_cast<int>(Below(static_cast<std::size_t>(last - first) + 1));
  }

  // True once in `times` on average.
  bool OneIn(std::size_t times) { return Below(times) == 0; }

  template <typename T>
  T OneOf(std::initializer_list<T> choices) {
    return *std::next(choices.begin(), Below(choices.size()));
  }

  // An element of a container that is not empty.
  template <typename Container>
  auto& Element(Container& container) {
    return *std::next(container.begin(), Below(container.size()));
  }

 private:
  std::mt19937 engine_;
};

#endif  // SNMPSUBAGENT_TESTS_RANDOM_H_
