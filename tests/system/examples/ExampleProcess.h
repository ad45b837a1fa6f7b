// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_EXAMPLEPROCESS_H_
#define SNMPSUBAGENT_TESTS_EXAMPLEPROCESS_H_

#include <string>

#include "testkit/ChildProcess.h"
#include "testkit/FileDescriptor.h"
#include "testkit/MasterAgent.h"
#include "testkit/ScratchDirectory.h"

// An example at work with a master agent of its own.
class ExampleProcess {
 public:
  // Starts the example of that name. `masterConfiguration` is added to that of
  // the master agent.
  explicit ExampleProcess(const std::string& name,
                          const std::string& masterConfiguration = "");

  // Waits until a GET of `oid` answers what contains `value`; returns whether
  // it came to.
  bool Shows(const std::string& oid, const std::string& value) const;

  // Waits until it has written that text.
  bool Says(const std::string& text) const;

  const testkit::Manager& Manager() const { return master_.Manager(); }

  // Ends it with SIGTERM; returns its exit code, 137 if it had to be killed.
  int End();

 private:
  std::string Output() const;

  testkit::ScratchDirectory directory_;
  testkit::MasterAgent master_;
  testkit::FileDescriptor output_;
  testkit::ChildProcess process_;
};

#endif  // SNMPSUBAGENT_TESTS_EXAMPLEPROCESS_H_
