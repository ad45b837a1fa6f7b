// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Oid.h"

#include <charconv>
#include <stdexcept>

namespace snmpsubagent {
namespace {

[[noreturn]] void Refuse(std::string_view text, const char* why) {
  throw std::invalid_argument("\"" + std::string(text) +
                              "\" is no OID: " + why);
}

void RequireSize(std::size_t size) {
  if (size <= Oid::kMaxSize) return;
  throw std::invalid_argument("an OID of " + std::to_string(size) +
                              " sub-identifiers; 128 is the most");
}

// Takes the number from the front of `rest`, which is the end of `text`.
SubIdentifier TakeNumber(std::string_view& rest, std::string_view text) {
  SubIdentifier number = 0;
  const char* const end = rest.data() + rest.size();
  const auto [behind, error] = std::from_chars(rest.data(), end, number);
  if (error == std::errc::result_out_of_range) {
    Refuse(text, "a sub-identifier has more than 32 bits");
  }
  if (error != std::errc()) Refuse(text, "it is not numbers with dots between");
  rest.remove_prefix(static_cast<std::size_t>(behind - rest.data()));
  return number;
}

}  // namespace

Oid::Oid(std::string_view text) {
  if (text.empty()) return;
  std::string_view rest = text;
  if (rest.front() == '.') rest.remove_prefix(1);
  ids_.push_back(TakeNumber(rest, text));
  while (!rest.empty()) {
    if (rest.front() != '.')
      Refuse(text, "it is not numbers with dots between");
    rest.remove_prefix(1);
    ids_.push_back(TakeNumber(rest, text));
    if (ids_.size() > kMaxSize) Refuse(text, "it has more than 128 numbers");
  }
}

Oid::Oid(std::initializer_list<SubIdentifier> subIdentifiers)
    : ids_(subIdentifiers) {
  RequireSize(ids_.size());
}

Oid::Oid(OidView view) {
  RequireSize(view.size());
  ids_.assign(view.begin(), view.end());
}

Oid Oid::operator+(OidView behind) const {
  RequireSize(size() + behind.size());
  Oid sum;
  sum.ids_.reserve(size() + behind.size());
  sum.ids_ = ids_;
  sum.ids_.insert(sum.ids_.end(), behind.begin(), behind.end());
  return sum;
}

std::string ToString(OidView oid) {
  std::string text;
  for (const SubIdentifier id : oid) {
    if (!text.empty()) text += '.';
    text += std::to_string(id);
  }
  return text;
}

}  // namespace snmpsubagent
