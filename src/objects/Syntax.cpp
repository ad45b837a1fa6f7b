// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Syntax.h"

#include <cstring>
#include <ctime>

namespace snmpsubagent::detail {
namespace {

using std::chrono::system_clock;

// The tag of an Opaque's content, and those of the numbers in it, by which
// managers know them (they come from an Internet draft that never became an
// RFC).
constexpr char kOpaqueTag = '\x9f';
constexpr char kFloatTag = '\x78';
constexpr char kDoubleTag = '\x79';

template <typename Bits, typename Number>
std::string WriteNumber(Number value, char tag) {
  static_assert(sizeof(Bits) == sizeof(Number));
  Bits bits;
  std::memcpy(&bits, &value, sizeof bits);
  std::string octets{kOpaqueTag, tag, static_cast<char>(sizeof bits)};
  for (std::size_t i = sizeof bits; i-- > 0;) {
    octets.push_back(static_cast<char>((bits >> (8 * i)) & 0xff));
  }
  return octets;
}

template <typename Bits, typename Number>
SetError ReadNumber(std::string_view octets, char tag, Number& value) {
  const std::string head{kOpaqueTag, tag, static_cast<char>(sizeof(Bits))};
  if (octets.size() != head.size() + sizeof(Bits)) return SetError::WrongLength;
  if (octets.substr(0, head.size()) != head) return SetError::WrongEncoding;
  Bits bits = 0;
  for (const char octet : octets.substr(head.size())) {
    bits = static_cast<Bits>(bits << 8 | static_cast<unsigned char>(octet));
  }
  std::memcpy(&value, &bits, sizeof bits);
  return SetError::None;
}

int At(std::string_view octets, std::size_t place) {
  return static_cast<unsigned char>(octets[place]);
}

int DaysIn(int month, int year) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30,
                                  31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : kDays[month - 1];
}

// The years of which a time_point of nanoseconds knows each moment, also in
// another time zone.
bool IsYear(int year) { return year >= 1678 && year <= 2261; }

bool IsDate(const std::tm& t) {
  return IsYear(t.tm_year + 1900) && t.tm_mon >= 0 && t.tm_mon < 12 &&
         t.tm_mday >= 1 &&
         t.tm_mday <= DaysIn(t.tm_mon + 1, t.tm_year + 1900) &&
         t.tm_hour < 24 && t.tm_min < 60 && t.tm_sec <= 60;
}

}  // namespace

// Year (2 octets), month, day, hour, minute, second, tenth; and the distance
// from UTC: "+" or "-", hours, minutes.
std::string WriteDateAndTime(system_clock::time_point value) {
  const auto whole = std::chrono::floor<std::chrono::seconds>(value);
  const std::time_t seconds = system_clock::to_time_t(whole);
  std::tm t{};
  gmtime_r(&seconds, &t);
  const int year = t.tm_year + 1900;
  const auto tenths =
      std::chrono::duration_cast<std::chrono::milliseconds>(value - whole)
          .count() /
      100;
  std::string octets;
  for (const int field :
       {year >> 8, year & 0xff, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min,
        t.tm_sec, static_cast<int>(tenths), int{'+'}, 0, 0}) {
    octets.push_back(static_cast<char>(field));
  }
  return octets;
}

SetError ReadDateAndTime(std::string_view octets,
                         system_clock::time_point& value) {
  if (octets.size() != 8 && octets.size() != 11) return SetError::WrongLength;
  std::tm t{};
  t.tm_year = (At(octets, 0) << 8 | At(octets, 1)) - 1900;
  t.tm_mon = At(octets, 2) - 1;
  t.tm_mday = At(octets, 3);
  t.tm_hour = At(octets, 4);
  t.tm_min = At(octets, 5);
  t.tm_sec = At(octets, 6);
  const int tenths = At(octets, 7);
  if (!IsDate(t) || tenths > 9) return SetError::WrongValue;
  std::chrono::minutes east{0};
  if (octets.size() == 11) {
    const int sign = At(octets, 8);
    if ((sign != '+' && sign != '-') || At(octets, 9) > 13 ||
        At(octets, 10) > 59) {
      return SetError::WrongValue;
    }
    east = std::chrono::minutes(60 * At(octets, 9) + At(octets, 10));
    if (sign == '-') east = -east;
  }
  value = system_clock::from_time_t(timegm(&t)) +
          std::chrono::milliseconds(100 * tenths) - east;
  return SetError::None;
}

std::string WriteOpaqueFloat(float value) {
  return WriteNumber<std::uint32_t>(value, kFloatTag);
}
std::string WriteOpaqueDouble(double value) {
  return WriteNumber<std::uint64_t>(value, kDoubleTag);
}
SetError ReadOpaqueFloat(std::string_view octets, float& value) {
  return ReadNumber<std::uint32_t>(octets, kFloatTag, value);
}
SetError ReadOpaqueDouble(std::string_view octets, double& value) {
  return ReadNumber<std::uint64_t>(octets, kDoubleTag, value);
}

}  // namespace snmpsubagent::detail
