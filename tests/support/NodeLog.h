// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_NODELOG_H_
#define SNMPSUBAGENT_TESTS_NODELOG_H_

#include <string>
#include <utility>
#include <vector>

#include "NetSNMPNode.h"

// Takes the log lines of all nodes while it lives; one at a time.
class NodeLog {
 public:
  static constexpr unsigned int kLevel = 6;

  NodeLog() {
    Taken().clear();
    NetSNMPNode::NodeMsgLogger_ = Take;
    NetSNMPNode::NodeMsgLogType_ = kLevel;
  }
  ~NodeLog() {
    NetSNMPNode::NodeMsgLogger_ = nullptr;
    NetSNMPNode::NodeMsgLogType_ = 0;
  }
  NodeLog(const NodeLog&) = delete;
  NodeLog& operator=(const NodeLog&) = delete;

  // The lines since the last call.
  std::vector<std::string> Lines() { return std::exchange(Taken(), {}); }

  // The level of the last line.
  static unsigned int& Level() {
    static unsigned int level = 0;
    return level;
  }

 private:
  static std::vector<std::string>& Taken() {
    static std::vector<std::string> lines;
    return lines;
  }
  static void Take(unsigned int level, const std::string& text) {
    Level() = level;
    Taken().push_back(text);
  }
};

#endif  // SNMPSUBAGENT_TESTS_NODELOG_H_
