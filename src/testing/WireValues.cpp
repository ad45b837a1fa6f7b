// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/WireValues.h"

#include <string>
#include <type_traits>
#include <variant>

namespace snmpsubagent::testing::internal {
namespace {

wire::Value::Content ContentOf(const ValueView& value) {
  switch (value.type) {
    case ValueType::Integer:
      return static_cast<std::int32_t>(value.number);
    case ValueType::Counter32:
    case ValueType::Gauge32:
    case ValueType::TimeTicks:
      return static_cast<std::uint32_t>(value.number);
    case ValueType::Counter64:
      return value.number;
    case ValueType::OctetString:
    case ValueType::IpAddress:
    case ValueType::Opaque:
      return std::string(value.octets);
    case ValueType::ObjectIdentifier:
      return wire::Oid(value.oid.begin(), value.oid.end());
    default:
      return {};
  }
}

// Both have the numbers of RFC 2741.
ValueView ViewOf(const wire::Value& value) {
  ValueView view;
  view.type = static_cast<ValueType>(value.type);
  std::visit(
      [&view](const auto& content) {
        using Content = std::decay_t<decltype(content)>;
        if constexpr (std::is_integral_v<Content>) {
          view.number = static_cast<std::uint64_t>(content);
        } else if constexpr (std::is_same_v<Content, std::string>) {
          view.octets = content;
        } else if constexpr (std::is_same_v<Content, wire::Oid>) {
          view.oid = {content.data(), content.size()};
        }
      },
      value.content);
  return view;
}

}  // namespace

wire::Oid ToWire(const Oid& oid) { return {oid.begin(), oid.end()}; }

wire::Varbind ToWire(const Varbind& varbind) {
  const ValueView value = varbind.value.View();
  return {ToWire(varbind.name),
          {static_cast<wire::Type>(value.type), ContentOf(value)}};
}

Oid FromWire(const wire::Oid& oid) {
  return Oid(OidView(oid.data(), oid.size()));
}

Varbind FromWire(const wire::Varbind& varbind) {
  return {FromWire(varbind.name), Value(ViewOf(varbind.value))};
}

std::vector<Varbind> FromWire(const std::vector<wire::Varbind>& varbinds) {
  std::vector<Varbind> result;
  for (const wire::Varbind& each : varbinds) result.push_back(FromWire(each));
  return result;
}

}  // namespace snmpsubagent::testing::internal
