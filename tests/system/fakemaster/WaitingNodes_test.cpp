// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Nodes that are changed while the subagent waits for the response to their
// registration.
#include <functional>
#include <future>

#include "WithdrawalTest.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"

namespace agentx = testkit::agentx;

using support::AddIntScalar;
using testkit::agentx::Type;

namespace {

// The agent library serves requests while a node waits for the master agent.
class ANodeThatWaits : public WithdrawalTest {
 protected:
  ANodeThatWaits() {
    AsApplication(2, [] {
      AddIntScalar(3, "other", 1);
      AddTableAndStore("table", "row");
    });
  }

  static void AddTableAndStore(const char* name, const char* rows) {
    support::AddStore(3, rows, 1, 2, support::AddTable(3, name));
  }

  // Runs `action`, which waits for the master agent, and `meanwhile` in a
  // callback during that wait.
  void Do(const std::function<void()>& action,
          const std::function<void()>& meanwhile) {
    auto done = std::async(std::launch::async, action);
    DoBeforeAnswer(session_->Next(), meanwhile);
    done.get();
    // Deferred work is done after the next response.
    Get(Scalar(2));
  }

  void DoBeforeAnswer(const agentx::Pdu& asked,
                      const std::function<void()>& action) {
    OnUse(action);
    EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
    session_->Grant(asked);
  }

  void ExpectToBeWithdrawn(const Oid& oid) {
    EXPECT_TRUE(stillKnown);
    session_->ServeUntil([&] { return !IsRegistered(oid); });
    EXPECT_EQ(Get(oid).value.type, Type::kNoSuchObject);
    EXPECT_FALSE(IsKnownToAgentLibrary(oid));
  }
};

TEST_F(ANodeThatWaits, MayBeDeletedWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 1); }, [] { Delete("late"); });
  ExpectToBeWithdrawn(Scalar(4));
}

TEST_F(ANodeThatWaits, MayBeReplacedWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 1); }, [] { AddIntScalar(4, "late", 5); });
  ExpectToBeServed(Integer(Scalar(4), 5));
}

TEST_F(ANodeThatWaits, MayBeRegisteredAnewWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 5); }, NetSNMPNode::ReregisterMibs);
  ExpectToBeServed(Integer(Scalar(4), 5));
  ExpectToBeServed(Integer(Scalar(2), 8));
}

TEST_F(ANodeThatWaits, MayBeRegisteredTwiceWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 5); }, NetSNMPNode::RegisterMibs);
  ExpectToBeServed(Integer(Scalar(4), 5));
  EXPECT_EQ(std::count(session_->Registered().begin(),
                       session_->Registered().end(), Scalar(4)),
            1);
}

TEST_F(ANodeThatWaits, MayBeATableThatIsDeletedWhileItIsRegistered) {
  AsApplication(1, [] { delete Node("table"); });
  Do([] { AddTableAndStore("late", "row"); }, [] { Delete("late"); });
  ExpectToBeWithdrawn(Table());
}

TEST_F(ANodeThatWaits, MayBeADataSetThatIsDeletedWhileItIsRegistered) {
  AsApplication(1, [] { delete Node("table"); });
  Do([] { support::AddDataSetTable(3, "late", Values(Unsigned(0), Int(0))); },
     [] { Delete("late"); });
  EXPECT_TRUE(stillKnown);
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchInstance);
}

TEST_F(ANodeThatWaits, MayBeReplacedWhileItIsDeleted) {
  Do([] { Delete("other"); }, [] { AddIntScalar(3, "other", 5); });
  ExpectToBeServed(Integer(Scalar(3), 5));
}

TEST_F(ANodeThatWaits, MayBeATableThatIsReplacedWhileItIsDeleted) {
  Do([] { Delete("table"); }, [] { AddTableAndStore("table", "others"); });
  EXPECT_TRUE(IsRegistered(Table()));
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchInstance);
}

TEST_F(ANodeThatWaits, MayBeDeletedWhileItIsUnregistered) {
  for (const char* name : {"other", "table"}) {
    Do([name] { Node(name)->UnregisterNode(); }, [name] { Delete(name); });
  }
  EXPECT_EQ(Get(Scalar(3)).value.type, Type::kNoSuchObject);
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchObject);
}

TEST_F(ANodeThatWaits, MayBeDeletedWhileItIsRegisteredAfterALoss) {
  session_.reset();
  session_ = master_.Accept();
  agentx::Pdu asked = session_->Next();
  const auto isOthers = [&] {
    const auto* const registration = std::get_if<agentx::Register>(&asked.body);
    return registration != nullptr && registration->subtree == Scalar(3);
  };
  for (; !isOthers(); asked = session_->Next()) session_->Grant(asked);
  DoBeforeAnswer(asked, [] { Delete("other"); });
  ExpectToBeWithdrawn(Scalar(3));
}

}  // namespace
