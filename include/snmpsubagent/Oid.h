// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_OID_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_OID_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "snmpsubagent/Export.h"

namespace snmpsubagent {

// One number of an OID (RFC 2578, 3.5): 0 to 4294967295.
using SubIdentifier = std::uint32_t;

// Sub-identifiers that somebody else owns, as std::string_view is to text.
// Valid as long as the owner keeps them where they are.
class OidView {
 public:
  constexpr OidView() = default;
  constexpr OidView(const SubIdentifier* first, std::size_t size)
      : first_(first), size_(size) {}

  constexpr const SubIdentifier* data() const { return first_; }
  constexpr std::size_t size() const { return size_; }
  constexpr bool empty() const { return size_ == 0; }
  constexpr const SubIdentifier* begin() const { return first_; }
  constexpr const SubIdentifier* end() const { return first_ + size_; }
  // Requires: `place` < size().
  constexpr SubIdentifier operator[](std::size_t place) const {
    return first_[place];
  }

  // The first `count`, and what follows them; all, and nothing, if there are
  // fewer.
  constexpr OidView First(std::size_t count) const {
    return {first_, count < size_ ? count : size_};
  }
  constexpr OidView After(std::size_t count) const {
    return count < size_ ? OidView(first_ + count, size_ - count)
                         : OidView(end(), 0);
  }

  // Whether it begins with all of `prefix`; it may be no longer than that.
  bool StartsWith(OidView prefix) const {
    return size_ >= prefix.size_ && Compare(First(prefix.size_), prefix) == 0;
  }

  // Less than, equal to or greater than 0, in the order in which a GETNEXT
  // walks (lexicographic, RFC 2578 3.5).
  friend int Compare(OidView a, OidView b) {
    const std::size_t common = a.size_ < b.size_ ? a.size_ : b.size_;
    for (std::size_t i = 0; i < common; ++i) {
      if (a.first_[i] != b.first_[i]) return a.first_[i] < b.first_[i] ? -1 : 1;
    }
    return a.size_ == b.size_ ? 0 : a.size_ < b.size_ ? -1 : 1;
  }
  friend bool operator==(OidView a, OidView b) { return Compare(a, b) == 0; }
  friend bool operator!=(OidView a, OidView b) { return Compare(a, b) != 0; }
  friend bool operator<(OidView a, OidView b) { return Compare(a, b) < 0; }
  friend bool operator>(OidView a, OidView b) { return Compare(a, b) > 0; }
  friend bool operator<=(OidView a, OidView b) { return Compare(a, b) <= 0; }
  friend bool operator>=(OidView a, OidView b) { return Compare(a, b) >= 0; }

 private:
  const SubIdentifier* first_ = nullptr;
  std::size_t size_ = 0;
};

// An OBJECT IDENTIFIER: the name of an object, or a value of that type.
//
// Threads: as a std::string.
class SNMPSUBAGENT_OBJECTS_EXPORT Oid {
 public:
  // An OID has at most so many sub-identifiers (RFC 2578, 3.5).
  static constexpr std::size_t kMaxSize = 128;

  // Without sub-identifiers, which AgentX calls the null OID.
  Oid() = default;

  // From numbers with dots between, such as "1.3.6.1.2.1" or ".1.3.6.1.2.1".
  // Throws std::invalid_argument for anything else, for a number of more than
  // 32 bits and for more than kMaxSize numbers; "" is the null OID.
  Oid(const char* text) : Oid(std::string_view(text)) {}
  Oid(const std::string& text) : Oid(std::string_view(text)) {}
  explicit Oid(std::string_view text);

  // Throw std::invalid_argument for more than kMaxSize sub-identifiers.
  Oid(std::initializer_list<SubIdentifier> subIdentifiers);
  explicit Oid(OidView view);

  operator OidView() const { return {ids_.data(), ids_.size()}; }
  OidView View() const { return *this; }

  std::size_t size() const { return ids_.size(); }
  bool empty() const { return ids_.empty(); }
  SubIdentifier operator[](std::size_t place) const { return ids_[place]; }
  std::vector<SubIdentifier>::const_iterator begin() const {
    return ids_.begin();
  }
  std::vector<SubIdentifier>::const_iterator end() const { return ids_.end(); }

  // This OID with the other's sub-identifiers behind its own. Throws
  // std::invalid_argument if they are more than kMaxSize.
  Oid operator+(OidView behind) const;

 private:
  std::vector<SubIdentifier> ids_;
};

// The numbers with dots between: "1.3.6.1.2.1"; "" for none.
SNMPSUBAGENT_OBJECTS_EXPORT std::string ToString(OidView oid);

inline bool operator==(const Oid& a, const Oid& b) {
  return a.View() == b.View();
}
inline bool operator!=(const Oid& a, const Oid& b) {
  return a.View() != b.View();
}
inline bool operator<(const Oid& a, const Oid& b) {
  return a.View() < b.View();
}

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_OID_H_
