// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ExampleProcess.h"

#include <fcntl.h>
#include <signal.h>

#include <fstream>
#include <sstream>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using testkit::Deadlines;
using testkit::WaitFor;

ExampleProcess::ExampleProcess(const std::string& name,
                               const std::string& masterConfiguration)
    : master_(masterConfiguration),
      output_(open((directory_.Path() / "output").c_str(),
                   O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)),
      process_({EXAMPLE_PROGRAMS "/" + name + "/" + name, "127.0.0.1",
                std::to_string(master_.AgentXPort())},
               {{"MIBS", ""},
                {"SNMPCONFPATH", directory_.Path()},
                {"SNMP_PERSISTENT_DIR", directory_.Path()}},
               {output_.Number(), output_.Number()}) {}

bool ExampleProcess::Shows(const std::string& oid,
                           const std::string& value) const {
  return WaitFor(
      [&] { return Manager().Get(oid).out.find(value) != std::string::npos; },
      Deadlines::Session());
}

bool ExampleProcess::Says(const std::string& text) const {
  return WaitFor([&] { return Output().find(text) != std::string::npos; },
                 Deadlines::Session());
}

int ExampleProcess::End() {
  process_.Signal(SIGTERM);
  if (!process_.Wait(Deadlines::Stop())) process_.Kill();
  return *process_.Wait({});
}

std::string ExampleProcess::Output() const {
  std::ostringstream text;
  text << std::ifstream(directory_.Path() / "output").rdbuf();
  return text.str();
}
