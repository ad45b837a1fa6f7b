// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_BUSYOBJECTS_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_BUSYOBJECTS_H_

#include <snmpsubagent.h>

#include <atomic>
#include <deque>
#include <string>

#include "BusyApplication.h"
#include "testkit/MasterAgent.h"

// One on the objects.
class BusyObjects : public BusyApplication {
 public:
  // `master` outlives it.
  explicit BusyObjects(const testkit::MasterAgent& master);

  void Start() override;
  void AddApplication(Workers& workers) override;
  void AddManagers(Workers& workers) override;
  void MasterIsGone() override;
  void AwaitSession() override;
  // And that each notification has had one outcome.
  void RequireServed() override;

 private:
  struct Row {
    int number = 0;
    std::string text = "made by a manager";
  };

  void SetValues(const std::string& text);
  void ChangeRows(unsigned unit);
  void BuildAndDestroy(const std::string& oid);
  // The value or the error that a manager waits for, if one does.
  void AnswerOne();
  void Send();

  const testkit::MasterAgent& master_;
  std::atomic<int> sent_{0};
  std::atomic<int> outcomes_{0};
  // Under the agent's lock.
  int number_ = 1;
  std::deque<snmpsubagent::Later<snmpsubagent::SetError>> applies_;
  std::deque<snmpsubagent::Later<int>> reads_;

  snmpsubagent::Agent agent_;
  snmpsubagent::Module module_;
  snmpsubagent::Scalar<int> numberObject_;
  snmpsubagent::Scalar<std::string> text_;
  snmpsubagent::Scalar<int> slow_;
  snmpsubagent::Scalar<int> slowlyRead_;
  snmpsubagent::Table<unsigned, Row> rows_;
  snmpsubagent::Notification notification_;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_BUSYOBJECTS_H_
