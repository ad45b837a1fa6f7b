// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/ManagerCheck.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "check/Manager.h"

namespace snmpsubagent::check {
namespace {

const Oid kSysUpTime = {1, 3, 6, 1, 2, 1, 1, 3, 0};
const Oid kModuleName = {1, 3, 6, 1, 4, 1, 8072, 1, 2, 1, 1, 4};

constexpr long kMaxRepetitions = 50;

// How long the answer of a host may take that nobody listens at a port.
constexpr int kRefusalTime = 500;  // ms

// Whether the host says that nobody listens at the UDP port. False if it says
// nothing, or the address is of another kind.
bool IsRefused(const std::string& address) {
  const std::size_t colon = address.rfind(':');
  const bool hasPort = colon != std::string::npos && address.find(':') == colon;
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_DGRAM;
  addrinfo* first = nullptr;
  if (getaddrinfo(address.substr(0, colon).c_str(),
                  hasPort ? address.substr(colon + 1).c_str() : "161", &hints,
                  &first) != 0) {
    return false;
  }
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(first,
                                                             freeaddrinfo);
  const int descriptor = socket(first->ai_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  bool refused = false;
  if (connect(descriptor, first->ai_addr, first->ai_addrlen) == 0 &&
      send(descriptor, "", 1, 0) == 1) {
    pollfd wait{descriptor, POLLIN, 0};
    char octet = 0;
    refused = poll(&wait, 1, kRefusalTime) > 0 &&
              recv(descriptor, &octet, 1, MSG_DONTWAIT) < 0 &&
              errno == ECONNREFUSED;
  }
  close(descriptor);
  return refused;
}

// The subtree of an instance of nsModuleTable, whose INDEX is a context, the
// subtree and a priority; empty if it is none.
Oid SubtreeOf(const Oid& instance) {
  std::size_t at = kModuleName.size();
  if (at >= instance.size()) return {};
  at += 1 + instance[at];
  if (at >= instance.size() || at + 1 + instance[at] > instance.size()) {
    return {};
  }
  const auto begin = instance.begin() + static_cast<std::ptrdiff_t>(at) + 1;
  return {begin, begin + static_cast<std::ptrdiff_t>(instance[at])};
}

}  // namespace

std::optional<Diagnosis> ManagerCheck::Reach() const {
  try {
    if (Manager(peer_).Get({kSysUpTime}).answered) return std::nullopt;
  } catch (const CannotCheck& error) {
    return Diagnosis{Cause::ManagerHostUnknown, error.what(),
                     "the host that managers ask"};
  }
  return Unanswered();
}

Diagnosis ManagerCheck::Unanswered() const {
  if (IsRefused(peer_.address)) {
    return {Cause::NoSnmpAgent, "no SNMP agent listens at " + peer_.address,
            "start snmpd, and in " + config_.File() +
                ": agentAddress udp:" + peer_.address};
  }
  const std::string fitting = "rocommunity " + peer_.community + " default";
  const auto line = config_.CommunityLine(peer_.community);
  if (!line) {
    return {
        Cause::CommunityUnknown,
        "the agent at " + peer_.address + " does not answer the community " +
            peer_.community +
            (config_.IsKnown() ? ", which " + config_.File() + " does not have"
                               : ""),
        "in " + config_.File() + ": " + fitting};
  }
  return {Cause::CommunityUnknown,
          "the agent at " + peer_.address + " does not answer the community " +
              peer_.community + " from here: " + line->place + " says '" +
              line->text + "'",
          "in " + line->place + ": another source of requests, " + fitting};
}

void ManagerCheck::AsksFor(const Oid& name) const {
  Manager(peer_).Get({name});
}

bool ManagerCheck::HasObjectsBelow(const Oid& root) const {
  const Response response = Manager(peer_).GetNext({root});
  return response.Succeeded() && !response.varbinds.empty() &&
         !response.varbinds[0].value.IsException() &&
         IsAtOrBelow(response.varbinds[0].name, root);
}

std::string ManagerCheck::OwnerOf(const Oid& root) const {
  Manager manager(peer_);
  std::string below;
  Oid at = kModuleName;
  for (;;) {
    const Response response = manager.GetBulk(at, kMaxRepetitions);
    if (!response.Succeeded() || response.varbinds.empty()) return below;
    for (const Varbind& varbind : response.varbinds) {
      if (varbind.value.IsException() || varbind.name <= at ||
          !IsAtOrBelow(varbind.name, kModuleName)) {
        return below;
      }
      at = varbind.name;
      const Oid subtree = SubtreeOf(at);
      // Addresses in snmpd's memory follow behind a comma.
      const std::string& text = varbind.value.Bytes();
      const std::string name = text.substr(0, text.find(','));
      if (subtree == root) return name;
      const bool isProbe =
          subtree.size() == root.size() + 1 && subtree.back() == kProbeSubtree;
      if (below.empty() && IsAtOrBelow(subtree, root) && !isProbe) below = name;
    }
  }
}

Diagnosis ManagerCheck::ViewHides(const std::string& oid) const {
  const std::string text =
      "the community " + peer_.community + " does not see " + oid;
  const auto line = config_.CommunityLine(peer_.community);
  if (!line) {
    return {Cause::ViewHides, text,
            "in " + config_.File() + ": view NAME included " + oid +
                ", where NAME is the view of the community"};
  }
  const std::vector<std::string>& words = line->words;
  const std::string said = ": " + line->place + " says '" + line->text + "'";
  const std::string view = config_.ViewOf(*line);
  if (!view.empty()) {
    return {Cause::ViewHides, text + said,
            "in " + config_.File() + ": view " + view + " included " + oid};
  }
  if (words.size() > 3 && words[0].compare(0, 7, "com2sec") != 0) {
    return {Cause::ViewHides, text + said,
            "in " + line->place + ": " + words[0] + " " + words[1] + " " +
                words[2]};
  }
  return {Cause::ViewHides, text + said,
          "in " + config_.File() + ": view NAME included " + oid +
              ", where NAME is the view that the community's group may read"};
}

}  // namespace snmpsubagent::check
