// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_OBJECTSERVICE_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_OBJECTSERVICE_H_

#include <snmpsubagent.h>

#include <atomic>
#include <string>
#include <vector>

#include "CreatedRows.h"
#include "Service.h"
#include "support/Random.h"

// A service on the objects.
class ObjectService : public Service {
 public:
  // `masterPort` is where the master agent takes AgentX sessions.
  explicit ObjectService(int masterPort);

  void Start() override;
  void AwaitLoss() override;
  void AwaitSession() override;
  void Change() override;
  void Set(const testkit::Manager& manager) override;
  void Notify() override;
  bool KeepsNotifications() const override { return true; }
  void RequireServed(const testkit::Manager& manager) const override;
  void RequireNotified(const std::vector<std::string>& received) const override;
  Work Done() const override { return done_; }

 private:
  // All of the scalars that managers write, in one SET.
  void SetRightly(const testkit::Manager& manager);
  // A SET that must change nothing: it is refused in one of its phases.
  void SetWrongly(const testkit::Manager& manager);
  std::vector<std::string> Scalars() const;

  Random random_{2};
  Work done_;
  // The application's variables.
  int number_ = 1;
  std::atomic<unsigned> count_{1};
  int sent_ = 0;

  snmpsubagent::Agent agent_;
  snmpsubagent::Module module_;
  snmpsubagent::Scalar<int> numberObject_;
  snmpsubagent::Scalar<unsigned> countObject_;
  snmpsubagent::Scalar<std::string> text_;
  snmpsubagent::Scalar<int> low_;
  snmpsubagent::Scalar<int> high_;
  snmpsubagent::Scalar<int> valve_;
  snmpsubagent::Scalar<int> sentObject_;
  snmpsubagent::Notification notification_;
  CreatedRows rows_;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_OBJECTSERVICE_H_
