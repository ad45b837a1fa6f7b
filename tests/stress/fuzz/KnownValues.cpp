// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "KnownValues.h"

#include <array>
#include <cmath>
#include <cstring>
#include <string>

namespace known {
namespace {

std::int32_t Integer(const wire::Value& value) {
  return std::get<std::int32_t>(value.content);
}
const std::string& Text(const wire::Value& value) {
  return std::get<std::string>(value.content);
}
int Octet(const std::string& octets, std::size_t place) {
  return static_cast<unsigned char>(octets[place]);
}

Error ValueIf(bool holds) { return holds ? kNone : kWrongValue; }
Error LengthIf(bool holds) { return holds ? kNone : kWrongLength; }

// ---- DateAndTime (RFC 2579).

// Days from 1970-01-01, by counting.
std::int64_t Days(int year, int month, int day) {
  const std::int64_t y = month > 2 ? year : year - 1;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t ofEra = y - era * 400;
  const std::int64_t ofYear = (153 * ((month + 9) % 12) + 2) / 5 + day - 1;
  return era * 146097 + ofEra * 365 + ofEra / 4 - ofEra / 100 + ofYear - 719468;
}

Error CheckMoment(const std::string& t) {
  if (t.size() != 8 && t.size() != 11) return kWrongLength;
  const int year = Octet(t, 0) * 256 + Octet(t, 1);
  const int month = Octet(t, 2);
  const int day = Octet(t, 3);
  if (month < 1 || month > 12 || day < 1) return kWrongValue;
  const auto next =
      month == 12 ? Days(year + 1, 1, 1) : Days(year, month + 1, 1);
  if (Days(year, month, day) >= next) return kWrongValue;
  if (Octet(t, 4) > 23 || Octet(t, 5) > 59 || Octet(t, 6) > 60 ||
      Octet(t, 7) > 9) {
    return kWrongValue;
  }
  if (t.size() == 11 &&
      ((t[8] != '+' && t[8] != '-') || Octet(t, 9) > 13 || Octet(t, 10) > 59)) {
    return kWrongValue;
  }
  // What a std::chrono::system_clock of nanoseconds can tell.
  return ValueIf(year >= 1678 && year <= 2261);
}

// In UTC.
std::string Normal(const std::string& t) {
  std::int64_t seconds =
      Days(Octet(t, 0) * 256 + Octet(t, 1), Octet(t, 2), Octet(t, 3)) * 86400 +
      Octet(t, 4) * 3600 + Octet(t, 5) * 60 + Octet(t, 6);
  if (t.size() == 11) {
    const int east = Octet(t, 9) * 3600 + Octet(t, 10) * 60;
    seconds -= t[8] == '+' ? east : -east;
  }
  const std::int64_t ofDay = ((seconds % 86400) + 86400) % 86400;
  const std::int64_t day = (seconds - ofDay) / 86400;
  int year = 1600;
  while (Days(year + 1, 1, 1) <= day) ++year;
  int month = 1;
  while (month < 12 && Days(year, month + 1, 1) <= day) ++month;
  std::string normal;
  for (const std::int64_t field :
       {std::int64_t{year / 256}, std::int64_t{year % 256}, std::int64_t{month},
        day - Days(year, month, 1) + 1, ofDay / 3600, ofDay / 60 % 60,
        ofDay % 60, std::int64_t{Octet(t, 7)}, std::int64_t{'+'},
        std::int64_t{0}, std::int64_t{0}}) {
    normal.push_back(static_cast<char>(field));
  }
  return normal;
}

// ---- Octets.

Error CheckFlags(const std::string& octets) {
  for (std::size_t i = 0; i < octets.size(); ++i) {
    const int named = i == 0 ? 0xc0 : i == 1 ? 0x40 : 0;
    if ((Octet(octets, i) & ~named) != 0) return kWrongValue;
  }
  return kNone;
}

Error CheckFloat(const std::string& octets, char tag, std::size_t size) {
  if (octets.size() != 3 + size) return kWrongLength;
  return octets[0] == '\x9f' && octets[1] == tag &&
                 octets[2] == static_cast<char>(size)
             ? kNone
             : kWrongEncoding;
}

template <typename Number, typename Bits>
Number FloatOf(const std::string& octets) {
  static_assert(sizeof(Number) == sizeof(Bits));
  Bits bits = 0;
  for (std::size_t i = 3; i < octets.size(); ++i) {
    bits = static_cast<Bits>(bits << 8 | static_cast<Bits>(Octet(octets, i)));
  }
  Number number;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}
template <typename Number, typename Bits>
bool AreSameFloats(const std::string& a, const std::string& b) {
  const auto x = FloatOf<Number, Bits>(a);
  const auto y = FloatOf<Number, Bits>(b);
  return x == y || (std::isnan(x) && std::isnan(y));
}

std::string Trimmed(const std::string& octets) {
  return octets.substr(0, octets.find_last_not_of('\0') + 1);
}

Error CheckNumber(Kind kind, const wire::Value& sent) {
  const std::int32_t number = Integer(sent);
  switch (kind) {
    case Kind::Percent:
      return ValueIf(number >= -10 && number <= 90);
    case Kind::Tiny:
      return ValueIf(number >= -128 && number <= 127);
    case Kind::Mode:
      return ValueIf(number == 1 || number == 3 || number == 7);
    case Kind::Truth:
      return ValueIf(number == 1 || number == 2);
    case Kind::Lock:
      return ValueIf(number >= 0);
    case Kind::Storage:
      return ValueIf(number >= 1 && number <= 3);
    default:
      return ValueIf(number >= 1 && number <= 6 && number != 3);
  }
}

Error CheckOctets(Kind kind, const std::string& octets) {
  const std::size_t size = octets.size();
  switch (kind) {
    case Kind::Label:
      return LengthIf((size >= 1 && size <= 8) || size == 12);
    case Kind::Mac:
      return LengthIf(size == 6);
    case Kind::Moment:
      return CheckMoment(octets);
    case Kind::Flags:
      return CheckFlags(octets);
    case Kind::Ip:
      return LengthIf(size == 4);
    case Kind::Inet:
      return LengthIf(size <= 255);
    case Kind::Blob:
      return LengthIf(size <= 5);
    case Kind::Float:
      return CheckFloat(octets, '\x78', 4);
    case Kind::Double:
      return CheckFloat(octets, '\x79', 8);
    default:
      return kNone;
  }
}

// ---- Values of any kind.

std::uint32_t SomeNumber(Input& input) {
  constexpr std::array<std::uint32_t, 14> kOdd{
      0,     1,     90,    91,         128,        4294967286, 4294967285,
      32767, 65535, 65536, 2147483647, 2147483648, 4000000001, 4294967295};
  return input.Below(2) == 0   ? kOdd[input.Below(kOdd.size())]
         : input.Below(2) == 0 ? input.U8()
                               : input.U32();
}

// What most of the objects take.
std::string SomeOctets(Input& input, Kind kind) {
  std::string octets = input.Bytes(16);
  if (input.Below(4) == 0) return octets;
  switch (kind) {
    case Kind::Mac:
      octets.resize(6);
      break;
    case Kind::Ip:
      octets.resize(4);
      break;
    case Kind::Moment:
      octets = {'\x07',
                static_cast<char>(input.U8()),
                static_cast<char>(input.Below(14)),
                static_cast<char>(input.Below(33)),
                static_cast<char>(input.Below(25)),
                static_cast<char>(input.Below(61)),
                static_cast<char>(input.Below(62)),
                static_cast<char>(input.Below(11))};
      if (input.Below(2) == 0) {
        octets += {input.Below(2) == 0 ? '+' : '-',
                   static_cast<char>(input.Below(15)),
                   static_cast<char>(input.Below(61))};
      }
      break;
    case Kind::Flags:
      octets = {static_cast<char>(input.Below(4) << 6),
                static_cast<char>(input.Below(2) << 6)};
      break;
    case Kind::Float:
      octets.resize(4);
      octets.insert(0, "\x9f\x78\x04");
      break;
    case Kind::Double:
      octets.resize(8);
      octets.insert(0, "\x9f\x79\x08");
      break;
    default:
      break;
  }
  return octets;
}

}  // namespace

wire::Type TypeOf(Kind kind) {
  switch (kind) {
    case Kind::Port:
    case Kind::Gauge:
      return wire::Type::kGauge32;
    case Kind::Label:
    case Kind::Octets:
    case Kind::Mac:
    case Kind::Moment:
    case Kind::Flags:
    case Kind::Inet:
      return wire::Type::kOctetString;
    case Kind::Id:
      return wire::Type::kObjectId;
    case Kind::Ip:
      return wire::Type::kIpAddress;
    case Kind::Blob:
    case Kind::Float:
    case Kind::Double:
      return wire::Type::kOpaque;
    case Kind::Ticks:
      return wire::Type::kTimeTicks;
    default:
      return wire::Type::kInteger;
  }
}

Error Check(Kind kind, const wire::Value& sent) {
  if (sent.type != TypeOf(kind)) return kWrongType;
  switch (sent.type) {
    case wire::Type::kInteger:
      return CheckNumber(kind, sent);
    case wire::Type::kGauge32: {
      const auto number = std::get<std::uint32_t>(sent.content);
      return ValueIf(kind == Kind::Port
                         ? number <= 65535
                         : number == 0 ||
                               (number >= 5 && number <= 4000000000));
    }
    case wire::Type::kObjectId:
    case wire::Type::kTimeTicks:
      return kNone;
    default:
      return CheckOctets(kind, Text(sent));
  }
}

Error MakeNew(Kind kind, const wire::Value& sent, wire::Value& present) {
  if (kind == Kind::Lock) {
    const std::int32_t number = Integer(sent);
    if (number != Integer(present)) return kInconsistentValue;
    present.content = number == 2147483647 ? 0 : number + 1;
    return kNone;
  }
  present = sent;
  if (kind == Kind::Moment) present.content = Normal(Text(sent));
  return kNone;
}

bool AreSame(Kind kind, const wire::Value& a, const wire::Value& b) {
  switch (kind) {
    case Kind::Float:
      return AreSameFloats<float, std::uint32_t>(Text(a), Text(b));
    case Kind::Double:
      return AreSameFloats<double, std::uint64_t>(Text(a), Text(b));
    case Kind::Flags:
      return Trimmed(Text(a)) == Trimmed(Text(b));
    default:
      return a == b;
  }
}

wire::Value SomeValue(Input& input, Kind kind) {
  const auto other = static_cast<Kind>(
      input.Below(16) == 0 ? input.Below(static_cast<unsigned int>(Kind::Count))
                           : static_cast<unsigned int>(kind));
  wire::Value value{TypeOf(other), {}};
  switch (value.type) {
    case wire::Type::kInteger:
      value.content = static_cast<std::int32_t>(
          input.Below(4) == 0 ? SomeNumber(input) : input.Below(8));
      break;
    case wire::Type::kGauge32:
    case wire::Type::kTimeTicks:
      value.content = SomeNumber(input);
      break;
    case wire::Type::kObjectId: {
      wire::Oid oid;
      for (unsigned int i = input.Below(6); i > 0; --i) {
        oid.push_back(input.U8());
      }
      value.content = oid;
      break;
    }
    default:
      value.content = SomeOctets(input, other);
  }
  if (input.Below(32) == 0) value = {wire::Type::kNull, {}};
  return value;
}

}  // namespace known
