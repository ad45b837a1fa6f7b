// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef EVENTLOG_H_
#define EVENTLOG_H_

#include <string>

class NetSNMPDataSetTableNode;

// thermalEventTable: the last events.
class EventLog {
 public:
  // Builds the table's node, which the registry owns.
  EventLog();

  // Adds an event at the end; removes the oldest one when the table is full.
  // Has no effect before the node's first registration, which creates the
  // dataset.
  void Add(const std::string& text);

 private:
  NetSNMPDataSetTableNode* table_;  // the registry's
  unsigned int count_ = 0;          // of all events so far
};

#endif  // EVENTLOG_H_
