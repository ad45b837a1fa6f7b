// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/IndexDecoder.h"

#include <algorithm>
#include <stdexcept>

namespace snmpsubagent::check {
namespace {

constexpr oid kLargest = 0xffffffff;
// The one kind of a NetworkAddress.
constexpr oid kInternet = 1;

struct Malformed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Takes sub-identifiers from the front.
class Identifier {
 public:
  explicit Identifier(const Oid& ids) : ids_(ids) {}

  std::size_t Left() const { return ids_.size() - next_; }

  oid Next() {
    if (Left() == 0) throw Malformed("the identifier ends too early");
    return ids_[next_++];
  }

  Oid Take(std::size_t number) {
    if (number > Left()) throw Malformed("the identifier ends too early");
    const auto begin = ids_.begin() + static_cast<std::ptrdiff_t>(next_);
    next_ += number;
    return {begin, begin + static_cast<std::ptrdiff_t>(number)};
  }

 private:
  const Oid& ids_;
  std::size_t next_ = 0;
};

std::string Octets(const Oid& ids) {
  std::string octets;
  for (const oid id : ids) {
    if (id > 255) throw Malformed(std::to_string(id) + " is no octet");
    octets += static_cast<char>(id);
  }
  return octets;
}

Value NumberOf(const Index& index, Identifier& identifier) {
  const oid id = identifier.Next();
  if (id > kLargest) throw Malformed(std::to_string(id) + " has over 32 bits");
  return Value::OfNumber(index.syntax.AsnType(), static_cast<std::int64_t>(id));
}

// The rest of the identifier if the index is IMPLIED.
Oid TakeCounted(const Index& index, Identifier& identifier) {
  return identifier.Take(index.implied ? identifier.Left() : identifier.Next());
}

Value Decode(const Index& index, Identifier& identifier) {
  const Syntax& syntax = index.syntax;
  if (syntax.IsNumber()) return NumberOf(index, identifier);
  if (syntax.hasKind && identifier.Next() != kInternet) {
    throw Malformed("the address is of no known kind");
  }
  if (syntax.base == Base::IpAddress) {
    return Value::OfOctets(ASN_IPADDRESS, Octets(identifier.Take(4)));
  }
  if (syntax.base == Base::ObjectIdentifier) {
    return Value::OfOid(TakeCounted(index, identifier));
  }
  const std::optional<std::size_t> length = syntax.FixedLength();
  return Value::OfOctets(syntax.AsnType(),
                         Octets(length ? identifier.Take(*length)
                                       : TakeCounted(index, identifier)));
}

void Append(Oid& identifier, const std::string& octets) {
  for (const unsigned char octet : octets) identifier.push_back(octet);
}

void Encode(const Index& index, const Value& value, Oid& identifier) {
  const Syntax& syntax = index.syntax;
  const bool counted = !index.implied && !syntax.FixedLength();
  if (syntax.IsNumber()) {
    identifier.push_back(static_cast<oid>(value.Number()));
  } else if (syntax.base == Base::IpAddress) {
    if (syntax.hasKind) identifier.push_back(kInternet);
    Append(identifier, value.Bytes());
  } else if (syntax.base == Base::ObjectIdentifier) {
    const Oid id = value.ObjectId();
    if (counted) identifier.push_back(id.size());
    identifier = identifier + id;
  } else {
    if (counted) identifier.push_back(value.Bytes().size());
    Append(identifier, value.Bytes());
  }
}

}  // namespace

DecodedIndex DecodeIndex(const MibTable& table, const Oid& ids) {
  DecodedIndex decoded;
  Identifier identifier(ids);
  const std::string* name = nullptr;
  try {
    for (const Index& index : table.indexes) {
      name = &index.name;
      const Value value = Decode(index, identifier);
      if (const auto mismatch = index.syntax.Check(value)) {
        throw Malformed(mismatch->text);
      }
      decoded.values.push_back(value);
    }
    name = nullptr;
    if (identifier.Left() > 0) {
      throw Malformed(std::to_string(identifier.Left()) +
                      " sub-identifiers are left over");
    }
  } catch (const Malformed& error) {
    decoded.error = (name ? *name + ": " : "") + error.what();
  }
  return decoded;
}

Oid EncodeIndex(const MibTable& table, const std::vector<Value>& values) {
  Oid identifier;
  for (std::size_t i = 0; i < table.indexes.size(); ++i) {
    Encode(table.indexes[i], values.at(i), identifier);
  }
  return identifier;
}

}  // namespace snmpsubagent::check
