// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Probes.h"

#include <algorithm>
#include <limits>
#include <set>

namespace snmpsubagent::check {
namespace {

// Longer octets are not tried: not every transport takes them.
constexpr std::int64_t kMostOctets = 1024;
// As long as an octet string gets whose size is not limited.
constexpr std::int64_t kLongOctets = 255;

constexpr std::int64_t kTestAndIncrLimit = 2147483647;

// Their values say what to do, or depend on each other.
bool HasRulesOfItsOwn(const Syntax& syntax) {
  static const std::set<std::string> kConventions = {
      "RowStatus", "EntryStatus", "StorageType", "TestAndIncr"};
  return kConventions.count(syntax.convention) != 0;
}

// Octets of this length that are a value, as far as a convention is known to
// have rules for it.
std::string OctetsOf(const Syntax& syntax, std::int64_t length) {
  const auto size = static_cast<std::size_t>(length);
  if (syntax.convention == "DateAndTime") {
    std::string moment("\x07\xea\x01\x02\x03\x04\x05\x06+\x00\x00", 11);
    moment.resize(size);
    return moment;
  }
  // Text is not what an octet string without a convention is limited to.
  std::string octets(size, 'x');
  if (syntax.convention.empty() && size > 1) {
    octets[0] = '\0';
    octets[1] = '\xff';
  }
  return octets;
}

std::string BitsOf(const Syntax& syntax) {
  std::string octets;
  for (const NamedNumber& name : syntax.names) {
    const auto octet = static_cast<std::size_t>(name.number) / 8;
    if (octets.size() <= octet) octets.resize(octet + 1);
    octets[octet] = static_cast<char>(octets[octet] | 0x80 >> name.number % 8);
  }
  return octets;
}

// The lowest and the highest of each range, or of the named numbers.
std::set<std::int64_t> EndsOf(const Syntax& syntax) {
  if (!syntax.names.empty()) {
    return {syntax.names.front().number, syntax.names.back().number};
  }
  std::set<std::int64_t> ends;
  for (const Range& range : syntax.Allowed()) {
    ends.insert(range.low);
    ends.insert(range.high);
  }
  return ends;
}

// The next numbers outside the ranges, between `lowest` and `highest`.
std::set<std::int64_t> OutsideOf(const Syntax& syntax, std::int64_t lowest,
                                 std::int64_t highest) {
  std::set<std::int64_t> outside;
  for (const Range& range : syntax.Allowed()) {
    for (const std::int64_t number : {range.low - 1, range.high + 1}) {
      const bool allowed =
          std::any_of(syntax.ranges.begin(), syntax.ranges.end(),
                      [number](const Range& other) {
                        return number >= other.low && number <= other.high;
                      });
      if (!allowed && number >= lowest && number <= highest) {
        outside.insert(number);
      }
    }
  }
  return outside;
}

class Good {
 public:
  Good(const MibObject& object, const Value& present)
      : syntax_(object.syntax), present_(present) {}

  std::vector<Probe> All() {
    AddPresent();
    if (HasRulesOfItsOwn(syntax_)) return probes_;
    if (syntax_.IsNumber()) {
      for (const std::int64_t number : EndsOf(syntax_)) {
        Add(Value::OfNumber(syntax_.AsnType(), number));
      }
    } else if (syntax_.base == Base::OctetString) {
      AddOctets();
    } else if (syntax_.base == Base::Bits) {
      Add(Value::OfOctets(ASN_OCTET_STR, ""));
      Add(Value::OfOctets(ASN_OCTET_STR, BitsOf(syntax_)));
    } else if (syntax_.base == Base::ObjectIdentifier) {
      Add(Value::OfOid({0, 0}));
      Add(Value::OfOid({1, 3, 6, 1, 4, 1, 32473, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    } else if (syntax_.base == Base::IpAddress) {
      Add(Value::OfOctets(ASN_IPADDRESS, std::string(4, '\0')));
      Add(Value::OfOctets(ASN_IPADDRESS, "\xc0\x02\xff\xfe"));
    }
    return probes_;
  }

 private:
  void AddPresent() {
    Value stored = present_;
    if (syntax_.convention == "TestAndIncr") {
      const std::int64_t number = present_.Number();
      stored = Value::OfNumber(ASN_INTEGER,
                               number == kTestAndIncrLimit ? 0 : number + 1);
    }
    probes_.push_back({"the value that it has", present_, {}, stored});
  }

  void Add(const Value& value) {
    probes_.push_back({ToText(value), value, {}, value});
  }

  void AddOctets() {
    for (std::int64_t length : EndsOf(syntax_)) {
      if (length > kMostOctets) length = kLongOctets;
      Add(Value::OfOctets(ASN_OCTET_STR, OctetsOf(syntax_, length)));
    }
  }

  const Syntax& syntax_;
  const Value& present_;
  std::vector<Probe> probes_;
};

class Refused {
 public:
  Refused(const MibObject& object, const Value& present)
      : object_(object), syntax_(object.syntax), present_(present) {}

  std::vector<Probe> All() {
    if (!object_.Writable()) {
      Add("it is read-only", present_, {SNMP_ERR_NOTWRITABLE});
      return probes_;
    }
    Add("the type is wrong",
        syntax_.AsnType() == ASN_OCTET_STR
            ? Value::OfNumber(ASN_INTEGER, 1)
            : Value::OfOctets(ASN_OCTET_STR, "x"),
        {SNMP_ERR_WRONGTYPE});
    if (!syntax_.names.empty()) {
      AddUnnamed();
    } else if (syntax_.IsNumber()) {
      AddNumbers();
    } else if (syntax_.base == Base::OctetString) {
      AddOctets();
    }
    return probes_;
  }

 private:
  void AddUnnamed() {
    const int unnamed = syntax_.names.back().number + 1;
    if (syntax_.base == Base::Bits) {
      std::string octets(static_cast<std::size_t>(unnamed / 8) + 1, '\0');
      octets.back() = static_cast<char>(0x80 >> unnamed % 8);
      // In one octet more than its names take, it is a wrong length as well.
      std::vector<long> errors = {SNMP_ERR_WRONGVALUE};
      if (unnamed % 8 == 0) errors.push_back(SNMP_ERR_WRONGLENGTH);
      Add("the bit has no name", Value::OfOctets(ASN_OCTET_STR, octets),
          errors);
    } else {
      Add("the number is not enumerated",
          Value::OfNumber(syntax_.AsnType(), unnamed), {SNMP_ERR_WRONGVALUE});
    }
  }

  void AddNumbers() {
    using Integer32 = std::numeric_limits<std::int32_t>;
    const bool isSigned = syntax_.base == Base::Integer;
    const std::int64_t lowest = isSigned ? Integer32::min() : 0;
    const std::int64_t highest = isSigned ? Integer32::max() : 0xffffffff;
    for (const std::int64_t number : OutsideOf(syntax_, lowest, highest)) {
      Add("it is out of range", Value::OfNumber(syntax_.AsnType(), number),
          {SNMP_ERR_WRONGVALUE});
    }
    if (syntax_.convention == "TestAndIncr") {
      Add("it is another number than there is",
          Value::OfNumber(ASN_INTEGER, present_.Number() == 0 ? 1 : 0),
          {SNMP_ERR_INCONSISTENTVALUE});
    }
  }

  void AddOctets() {
    for (const std::int64_t length : OutsideOf(syntax_, 0, kMostOctets)) {
      Add("the length is wrong",
          Value::OfOctets(ASN_OCTET_STR, OctetsOf(syntax_, length)),
          {SNMP_ERR_WRONGLENGTH});
    }
  }

  void Add(const std::string& why, const Value& value,
           const std::vector<long>& errors) {
    probes_.push_back({why, value, errors, {}});
  }

  const MibObject& object_;
  const Syntax& syntax_;
  const Value& present_;
  std::vector<Probe> probes_;
};

std::int64_t AnyNumber(const Syntax& syntax, int seed) {
  if (!syntax.names.empty()) {
    const auto has = [&syntax](int number) {
      return std::any_of(
          syntax.names.begin(), syntax.names.end(),
          [number](const NamedNumber& name) { return name.number == number; });
    };
    if (syntax.convention == "InetAddressType" && has(1)) return 1;  // ipv4
    if (syntax.convention == "StorageType" && has(2)) return 2;      // volatile
    return syntax.names[static_cast<std::size_t>(seed) % syntax.names.size()]
        .number;
  }
  const Range range = syntax.Allowed().front();
  const std::int64_t first = std::max<std::int64_t>(range.low, 1);
  if (first > range.high) return range.low;
  return first + seed % (range.high - first + 1);
}

std::string AnyOctets(const Syntax& syntax, int seed) {
  const Range range = syntax.Allowed().front();
  // An InetAddress is one of the type that AnyNumber() names.
  const std::int64_t wanted = syntax.convention == "InetAddress" ? 4 : 3;
  const std::int64_t size = std::clamp(wanted, range.low, range.high);
  std::string octets = OctetsOf(syntax, size);
  if (syntax.convention == "DateAndTime") return octets;
  for (std::size_t i = octets.size(); i-- > 0 && seed > 0; seed /= 26) {
    octets[i] = static_cast<char>('a' + seed % 26);
  }
  return octets;
}

}  // namespace

std::vector<Probe> GoodProbes(const MibObject& object, const Value& present) {
  return Good(object, present).All();
}

std::vector<Probe> RefusedProbes(const MibObject& object,
                                 const Value& present) {
  return Refused(object, present).All();
}

Value AnyValue(const Syntax& syntax, int seed) {
  const auto low = static_cast<unsigned char>(seed % 250 + 1);
  switch (syntax.base) {
    case Base::ObjectIdentifier:
      return Value::OfOid({1, 3, 6, 1, 4, 1, 32473, low});
    case Base::IpAddress:
      return Value::OfOctets(ASN_IPADDRESS, std::string("\xc0\x00\x02", 3) +
                                                static_cast<char>(low));
    case Base::Bits:
      return Value::OfOctets(ASN_OCTET_STR, BitsOf(syntax));
    case Base::OctetString:
    case Base::Opaque:
    case Base::Unknown:
      return Value::OfOctets(syntax.AsnType(), AnyOctets(syntax, seed));
    default:
      return Value::OfNumber(syntax.AsnType(), AnyNumber(syntax, seed));
  }
}

}  // namespace snmpsubagent::check
