// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAKEMASTER_WITHDRAWALTEST_H_
#define SNMPSUBAGENT_TESTS_FAKEMASTER_WITHDRAWALTEST_H_

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

#include "FakeMasterTest.h"
#include "NetSNMPDataNode.h"
#include "testkit/agentx/Pdu.h"

// Nodes that the application deletes while the agent library uses them. The
// device has one more scalar, number 2, "called", which is writable; tests may
// add a table.
class WithdrawalTest : public FakeMasterTest {
 protected:
  using Oid = testkit::agentx::Oid;
  using Varbind = testkit::agentx::Varbind;

  static constexpr int kNoError = 0;
  static constexpr std::uint32_t kSet = 1000;  // the packet id of a SET

  WithdrawalTest();
  ~WithdrawalTest() override { OnUse(nullptr); }

  static Oid Scalar(std::uint32_t number);
  static Oid Table();
  static Oid Cell(std::uint32_t index);
  static Varbind Integer(const Oid& name, int number);
  static NetSNMPNode* Node(const std::string& name);

  // The subtrees of the device and the scalar under test.
  static std::size_t RegisteredAtFirst();

  // Deletes a node, and notes whether the agent library still has its
  // registration then.
  static void Delete(const char* name);

  // Whether the agent library has a registration at `oid`.
  static bool IsKnownToAgentLibrary(const Oid& oid);

  // Makes the application call `action` when the node under test is used, once.
  static void OnUse(std::function<void()> action);

  // The callback of a node under test.
  static void OnWrite(NetSNMPDataNode* node);

  // Runs `action` on a thread of the application, and grants so many
  // registrations.
  void AsApplication(std::size_t registrations,
                     const std::function<void()>& action);

  bool IsRegistered(const Oid& oid) const;

  // Deferred withdrawals are made before the last response is sent.
  void ExpectWithdrawnInTime(const Oid& oid);

  Varbind Get(const Oid& oid);

  // Waits until `object` is served with its value.
  void ExpectToBeServed(const Varbind& object);

  // Adds a table with two cells whose use is noticed.
  void ServeTable();

  // Whether the agent library still had the registrations of all nodes that
  // Delete() deleted.
  static std::atomic<bool> stillKnown;

  // Shared by callbacks and the test, which must not wait for the library's
  // lock: the subagent may hold it and wait for its master agent.
  static std::atomic<int> written;  // by the last SET of the scalar under test
  static std::atomic<int> writes;   // to cells

  static int level;
  int other_ = 0;

 private:
  static void CallOnce();

  static std::mutex mutex_;
  static std::function<void()> onUse_;  // guarded by `mutex_`
};

#endif  // SNMPSUBAGENT_TESTS_FAKEMASTER_WITHDRAWALTEST_H_
