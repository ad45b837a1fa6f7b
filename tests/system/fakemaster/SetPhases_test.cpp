// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The phases of a SET (RFC 2741, section 7.2.4), in and out of order.
#include "FakeMasterTest.h"

namespace agentx = testkit::agentx;

using testkit::agentx::CleanupSet;
using testkit::agentx::CommitSet;
using testkit::agentx::TestSet;
using testkit::agentx::Type;
using testkit::agentx::UndoSet;
using testkit::agentx::Varbind;

namespace {

// Errors of a response (RFC 2741, section 6.2.16).
constexpr int kNoError = 0;
constexpr int kBadValue = 3;
constexpr int kNotWritable = 17;
constexpr int kProcessingError = 268;

constexpr int kBefore = 7;

Varbind Level(int number) {
  return {Device::Scalar(), {Type::kInteger, std::int32_t{number}}};
}

class ASet : public FakeMasterTest {
 protected:
  ASet() { Connect(); }

  // The error that the phase of the SET is answered with.
  int Put(const agentx::Body& phase) { return Put(phase, set_); }
  int Put(const agentx::Body& phase, std::uint32_t set) {
    return session_->Ask(phase, set).error;
  }

  void ExpectLevel(int number) {
    EXPECT_EQ(session_->Ask(agentx::Get{{{Device::Scalar(), true, {}}}})
                  .varbinds.front(),
              Level(number));
  }

  // One more SET works.
  void ExpectToBeWritable() {
    EXPECT_EQ(session_->Set({Level(77)}).error, kNoError);
    ExpectLevel(77);
  }

  const std::uint32_t set_ = 1000;
  const std::uint32_t otherSet_ = 2000;
};

TEST_F(ASet, IsWrittenByCleanup) {
  EXPECT_EQ(Put(TestSet{{Level(8)}}), kNoError);
  ExpectLevel(kBefore);
  EXPECT_EQ(Put(CommitSet{}), kNoError);
  ExpectLevel(kBefore);
  EXPECT_EQ(Put(CleanupSet{}), kNoError);
  ExpectLevel(8);
}

TEST_F(ASet, ThatIsRefusedChangesNothing) {
  EXPECT_EQ(Put(TestSet{{{Device::Scalar(), {Type::kOctetString, "8"}}}}),
            kBadValue);
  Put(CleanupSet{});
  ExpectLevel(kBefore);
  ExpectToBeWritable();
}

TEST_F(ASet, OfSeveralObjectsIsRefusedForOneOfThem) {
  const Varbind event = device_.Objects()[1];
  const agentx::Response answer =
      session_->Ask(TestSet{{Level(8), event}}, set_);
  EXPECT_EQ(answer.error, kNotWritable);
  EXPECT_EQ(answer.index, 2);
  Put(CleanupSet{});
  ExpectLevel(kBefore);
}

// A scalar has nothing to undo, and handles these phases like any unknown one.
TEST_F(ASet, ThatIsCleanedUpUncommittedChangesNothing) {
  Put(TestSet{{Level(8)}});
  EXPECT_EQ(Put(CleanupSet{}), kBadValue);
  ExpectLevel(kBefore);
  ExpectToBeWritable();
}

TEST_F(ASet, ThatIsUndoneChangesNothing) {
  Put(TestSet{{Level(8)}});
  Put(CommitSet{});
  EXPECT_EQ(Put(UndoSet{}), kBadValue);
  ExpectLevel(kBefore);
  ExpectToBeWritable();
}

TEST_F(ASet, ThatWasNeverTestedIsRefusedInEveryPhase) {
  EXPECT_EQ(Put(CommitSet{}), kProcessingError);
  EXPECT_EQ(Put(UndoSet{}), kProcessingError);
  EXPECT_EQ(Put(CleanupSet{}), kProcessingError);
  ExpectLevel(kBefore);
  ExpectToBeWritable();
}

TEST_F(ASet, IsCommittedOnce) {
  Put(TestSet{{Level(8)}});
  Put(CommitSet{});
  EXPECT_EQ(Put(CommitSet{}), kProcessingError);
  EXPECT_EQ(Put(CleanupSet{}), kNoError);
  ExpectLevel(8);
}

TEST_F(ASet, IsCleanedUpOnce) {
  Put(TestSet{{Level(8)}});
  Put(CommitSet{});
  Put(CleanupSet{});
  EXPECT_EQ(Put(CleanupSet{}), kProcessingError);
  ExpectLevel(8);
  ExpectToBeWritable();
}

TEST_F(ASet, MayRunBesideAnother) {
  Put(TestSet{{Level(8)}});
  Put(TestSet{{Level(9)}}, otherSet_);
  Put(CommitSet{}, otherSet_);
  Put(CommitSet{});
  EXPECT_EQ(Put(CleanupSet{}, otherSet_), kNoError);
  ExpectLevel(9);
  EXPECT_EQ(Put(CleanupSet{}), kNoError);
  ExpectLevel(8);
}

TEST_F(ASet, LeavesReadsBetweenItsPhasesAsTheyWere) {
  Put(TestSet{{Level(8)}});
  EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
  Put(CommitSet{});
  EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
  Put(CleanupSet{});
  EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
}

}  // namespace
