// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_EVENTFULVALUE_H_
#define SNMPSUBAGENT_TESTS_EVENTFULVALUE_H_

#include <functional>
#include <utility>

#include "NetSNMPIntNodeData.h"

// A writable number that calls functions of the test when it is read and after
// it was written.
class EventfulValue : public NetSNMPIntNodeData {
 public:
  using Event = std::function<void(const NetSNMPNodeData& value)>;

  EventfulValue(int number, Event onRead, Event onWrite = DoNothing)
      : NetSNMPIntNodeData(&number, eNodeAccessReadWrite, true),
        onRead_(std::move(onRead)),
        onWrite_(std::move(onWrite)) {}
  NetSNMPNodeData* Clone() const override { return new EventfulValue(*this); }

  const unsigned char* NodeByteValue() const override {
    onRead_(*this);
    return NetSNMPIntNodeData::NodeByteValue();
  }
  void NodeDataValue(int value, bool notify) override {
    NetSNMPIntNodeData::NodeDataValue(value, notify);
    onWrite_(*this);
  }

  static void DoNothing(const NetSNMPNodeData&) {}

 private:
  Event onRead_;
  Event onWrite_;
};

#endif  // SNMPSUBAGENT_TESTS_EVENTFULVALUE_H_
