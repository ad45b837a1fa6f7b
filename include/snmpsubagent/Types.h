// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TYPES_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TYPES_H_

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/detail/Clock.h"

// The types of SMIv2 (RFC 2578) and of its textual conventions (RFC 2579) for
// which C++ has none of its own:
//
//   SMIv2                           C++
//   Integer32, INTEGER              int, std::int32_t and the shorter ones
//   an enumeration                  enum class
//   Unsigned32, Gauge32             unsigned, std::uint32_t, the shorter ones
//   Counter32, Counter64            Counter32, Counter64
//   TimeTicks, TimeStamp            TimeTicks, TimeStamp
//   TruthValue                      bool
//   OCTET STRING, DisplayString     std::string, Bytes
//   ... of fixed size, MacAddress   std::array<std::uint8_t, N>
//   DateAndTime                     std::chrono::system_clock::time_point
//   BITS                            Bits<an enum class>
//   OBJECT IDENTIFIER               Oid
//   IpAddress                       IpAddress
//   NetworkAddress (SMIv1)          NetworkAddress
//   InetAddress                     InetAddress
//   Opaque                          Opaque; float and double inside of it
//   TestAndIncr                     TestAndIncr
namespace snmpsubagent {

// A number that counts up and wraps to 0 after the highest.
struct Counter32 {
  std::uint32_t value = 0;
  Counter32& operator++() { return ++value, *this; }
  Counter32& operator+=(std::uint32_t more) { return value += more, *this; }
};
struct Counter64 {
  std::uint64_t value = 0;
  Counter64& operator++() { return ++value, *this; }
  Counter64& operator+=(std::uint64_t more) { return value += more, *this; }
};
inline bool operator==(Counter32 a, Counter32 b) { return a.value == b.value; }
inline bool operator==(Counter64 a, Counter64 b) { return a.value == b.value; }

// A time span in hundredths of a second; it wraps after 497 days.
struct TimeTicks {
  std::uint32_t value = 0;
  TimeTicks() = default;
  explicit TimeTicks(std::uint32_t hundredths) : value(hundredths) {}
  template <typename Rep, typename Period>
  TimeTicks(std::chrono::duration<Rep, Period> time)
      : value(static_cast<std::uint32_t>(
            std::chrono::duration_cast<
                std::chrono::duration<std::int64_t, std::centi>>(time)
                .count())) {}
};
inline bool operator==(TimeTicks a, TimeTicks b) { return a.value == b.value; }

// A moment, which managers see as the master agent's sysUpTime at that moment;
// 0, as long as nothing has happened, for a moment that never was or was before
// the master agent started.
struct TimeStamp {
  std::chrono::steady_clock::time_point moment;
  static TimeStamp Now() { return {detail::Now()}; }
};
inline bool operator==(TimeStamp a, TimeStamp b) {
  return a.moment == b.moment;
}

// Octets of any value and number; for text, a std::string.
using Bytes = std::vector<std::uint8_t>;

// An IPv4 address, as its octets.
struct SNMPSUBAGENT_OBJECTS_EXPORT IpAddress {
  std::array<std::uint8_t, 4> octets{};
  IpAddress() = default;
  IpAddress(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d)
      : octets{a, b, c, d} {}
  // From "192.0.2.1". Throws std::invalid_argument for anything else.
  explicit IpAddress(std::string_view text);
};
inline bool operator==(const IpAddress& a, const IpAddress& b) {
  return a.octets == b.octets;
}
inline bool operator<(const IpAddress& a, const IpAddress& b) {
  return a.octets < b.octets;
}

// An IpAddress in the modules of SMIv1. As an index it has its kind in front
// (RFC 1212, 4.1.6), which is always 1.
struct NetworkAddress {
  IpAddress address;
  NetworkAddress() = default;
  NetworkAddress(const IpAddress& a) : address(a) {}  // NOLINT: implicit
};
inline bool operator==(const NetworkAddress& a, const NetworkAddress& b) {
  return a.address == b.address;
}

// RFC 4001.
enum class InetAddressType : std::int32_t {
  Unknown = 0,
  Ipv4 = 1,
  Ipv6 = 2,
  Ipv4z = 3,
  Ipv6z = 4,
  Dns = 16
};

// An address and what kind it is. As a scalar it is the OCTET STRING of the
// address; its InetAddressType is an object of its own.
struct SNMPSUBAGENT_OBJECTS_EXPORT InetAddress {
  InetAddressType type = InetAddressType::Unknown;
  std::string octets;
  InetAddress() = default;
  InetAddress(InetAddressType kind, std::string address)
      : type(kind), octets(std::move(address)) {}
  // From "192.0.2.1" or "2001:db8::1"; anything else is taken for a name.
  explicit InetAddress(std::string_view text);
};
inline bool operator==(const InetAddress& a, const InetAddress& b) {
  return a.type == b.type && a.octets == b.octets;
}
inline bool operator<(const InetAddress& a, const InetAddress& b) {
  return a.type != b.type ? a.type < b.type : a.octets < b.octets;
}

// Named bits. The values of the enumeration are the places of the bits, which
// count from the most significant of the first octet (RFC 2578, 7.1.4).
//
//   enum class Alarm { Hot, Cold, Open };
//   snmp::Bits<Alarm> alarms{Alarm::Hot, Alarm::Open};
template <typename Enum>
class Bits {
 public:
  Bits() = default;
  Bits(std::initializer_list<Enum> names) {
    for (Enum name : names) Set(name);
  }

  bool Has(Enum name) const {
    const auto place = static_cast<std::size_t>(name);
    return place / 8 < octets_.size() &&
           (static_cast<std::uint8_t>(octets_[place / 8]) & Mask(place)) != 0;
  }
  Bits& Set(Enum name, bool on = true) {
    const auto place = static_cast<std::size_t>(name);
    if (place / 8 >= octets_.size()) {
      if (!on) return *this;
      octets_.resize(place / 8 + 1, '\0');
    }
    const auto octet = static_cast<std::uint8_t>(octets_[place / 8]);
    octets_[place / 8] = static_cast<char>(
        on ? octet | Mask(place) : octet & ~static_cast<unsigned>(Mask(place)));
    return *this;
  }

  // As they are sent; octets at the end without a bit that is set may be
  // missing.
  const std::string& Octets() const { return octets_; }
  static Bits FromOctets(std::string_view octets) {
    Bits bits;
    bits.octets_ = octets;
    return bits;
  }

  friend bool operator==(const Bits& a, const Bits& b) {
    return a.Trimmed() == b.Trimmed();
  }
  friend bool operator<(const Bits& a, const Bits& b) {
    return a.octets_ < b.octets_;
  }

 private:
  static std::uint8_t Mask(std::size_t place) {
    return static_cast<std::uint8_t>(0x80u >> (place % 8));
  }
  std::string_view Trimmed() const {
    const std::size_t last = octets_.find_last_not_of('\0');
    return last == std::string::npos
               ? std::string_view()
               : std::string_view(octets_).substr(0, last + 1);
  }

  std::string octets_;
};

// Whatever the octets say (RFC 2578, 7.1.9); for old modules only.
struct Opaque {
  std::string octets;
};
inline bool operator==(const Opaque& a, const Opaque& b) {
  return a.octets == b.octets;
}

// A number that a manager changes only by writing its present value, which
// makes it one higher (RFC 2579): of two managers that read it, one succeeds.
struct TestAndIncr {
  std::int32_t value = 0;
};
inline bool operator==(TestAndIncr a, TestAndIncr b) {
  return a.value == b.value;
}

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TYPES_H_
