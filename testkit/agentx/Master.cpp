// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Master.h"

#include "testkit/Deadlines.h"

namespace testkit::agentx {
namespace {

// The subtree, itself included.
SearchRange RangeOf(const Oid& subtree) {
  SearchRange range{subtree, true, subtree};
  ++range.end.back();
  return range;
}

// What follows an object in the range.
SearchRange Behind(const Oid& object, const SearchRange& range) {
  return {object, false, range.end};
}

}  // namespace

void Master::Listen() { listener_ = std::make_unique<Listener>(Port()); }

Master::Session Master::Accept() {
  // Different in every byte, so that no byte order hides.
  lastId_ += 0x01020304;
  return std::make_unique<MasterSession>(
      listener_->Accept(Deadlines::Session()),
      std::chrono::duration_cast<std::chrono::seconds>(Deadlines::Session()),
      lastId_);
}

Master::Session Master::AcceptServing(std::size_t subtrees) {
  for (;;) {
    Session session = Accept();
    try {
      session->ServeUntil(
          [&] { return session->Registered().size() == subtrees; });
      return session;
    } catch (const NoSubAgent&) {
      // Given up by the subagent. Accept() finds out if there is no other.
    }
  }
}

std::vector<Varbind> Walk(MasterSession& session,
                          const std::vector<Oid>& subtrees) {
  std::vector<Varbind> objects;
  for (const Oid& subtree : subtrees) {
    SearchRange range = RangeOf(subtree);
    for (;;) {
      const Response answer = session.Ask(GetNext{{range}});
      if (answer.error != 0 || answer.varbinds.size() != 1) return {};
      const Varbind& found = answer.varbinds.front();
      if (found.value.type == Type::kEndOfMibView) break;
      objects.push_back(found);
      range = Behind(found.name, range);
    }
  }
  return objects;
}

}  // namespace testkit::agentx
