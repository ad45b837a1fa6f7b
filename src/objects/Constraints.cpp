// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "snmpsubagent/Access.h"

namespace snmpsubagent::detail {
namespace {

using Bounds = Constraints::Bounds;

bool IsWithin(const std::vector<Bounds>& bounds, std::int64_t number) {
  return bounds.empty() ||
         std::any_of(bounds.begin(), bounds.end(), [&](const Bounds& b) {
           return b.first <= number && number <= b.second;
         });
}

void Append(std::vector<Bounds>& bounds, std::int64_t lowest,
            std::int64_t highest) {
  if (lowest > highest) {
    throw std::invalid_argument("a range from " + std::to_string(lowest) +
                                " to " + std::to_string(highest) +
                                ": the lowest comes first");
  }
  bounds.emplace_back(lowest, highest);
}

// Whether `octets` has a one where `allowed` has none.
bool HasOtherBits(std::string_view octets, std::string_view allowed) {
  for (std::size_t i = 0; i < octets.size(); ++i) {
    const unsigned mask =
        i < allowed.size() ? static_cast<unsigned char>(allowed[i]) : 0U;
    if ((static_cast<unsigned char>(octets[i]) & ~mask) != 0) return true;
  }
  return false;
}

bool IsOctets(ValueType type) {
  return type == ValueType::OctetString || type == ValueType::Opaque;
}

bool IsNumber(ValueType type) {
  return type == ValueType::Integer || type == ValueType::Gauge32 ||
         type == ValueType::TimeTicks || type == ValueType::Counter32 ||
         type == ValueType::Counter64;
}

// The numbers that a type has; of 64 bits, those that a range can name.
Bounds NumbersOf(ValueType type) {
  switch (type) {
    case ValueType::Integer:
      return {std::numeric_limits<std::int32_t>::min(),
              std::numeric_limits<std::int32_t>::max()};
    case ValueType::Counter64:
      return {0, std::numeric_limits<std::int64_t>::max()};
    default:
      return {0, std::numeric_limits<std::uint32_t>::max()};
  }
}

}  // namespace

void Constraints::AddRange(std::int64_t lowest, std::int64_t highest) {
  Append(ranges_, lowest, highest);
}

void Constraints::AddSize(std::size_t shortest, std::size_t longest) {
  Append(sizes_, static_cast<std::int64_t>(shortest),
         static_cast<std::int64_t>(longest));
}

void Constraints::AddBit(std::size_t place) {
  if (bits_.size() <= place / 8) bits_.resize(place / 8 + 1, '\0');
  bits_[place / 8] = static_cast<char>(
      static_cast<unsigned char>(bits_[place / 8]) | (0x80u >> (place % 8)));
}

SetError Constraints::Check(const ValueView& value) const {
  if (IsOctets(value.type)) {
    if (!IsWithin(sizes_, static_cast<std::int64_t>(value.octets.size()))) {
      return SetError::WrongLength;
    }
    return HasBits() && HasOtherBits(value.octets, bits_) ? SetError::WrongValue
                                                          : SetError::None;
  }
  return IsWithin(ranges_, static_cast<std::int64_t>(value.number))
             ? SetError::None
             : SetError::WrongValue;
}

void Constraints::RequireFor(ValueType type, OidView object) const {
  if (!ranges_.empty() && !IsNumber(type)) {
    throw std::invalid_argument(ToString(object) +
                                ": Range() and Values() are for numbers");
  }
  RequireWithin(NumbersOf(type), object);
  if ((!sizes_.empty() || HasBits()) && !IsOctets(type)) {
    throw std::invalid_argument(ToString(object) +
                                ": Size() and NamedBits() are for octets");
  }
}

void Constraints::RequireWithin(const Bounds& numbers, OidView object) const {
  for (const Bounds& range : ranges_) {
    if (numbers.first <= range.first && range.second <= numbers.second) {
      continue;
    }
    throw std::invalid_argument(
        ToString(object) + ": the range from " + std::to_string(range.first) +
        " to " + std::to_string(range.second) + " is beyond the type's, " +
        std::to_string(numbers.first) + " to " +
        std::to_string(numbers.second));
  }
}

void ThrowLacksValues(OidView object) {
  throw std::invalid_argument(
      ToString(object) +
      ": an enumeration that managers write needs its Values()");
}

}  // namespace snmpsubagent::detail
