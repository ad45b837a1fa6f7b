// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "LonelySubAgent.h"

#include "CallJournal.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace {

constexpr char kName[] = "lonely-subagent";

}  // namespace

LonelySubAgent::LonelySubAgent()
    : SNMPSubAgent(kName, "127.0.0.1", 0), settings_(kName, "") {
  masterPort_ = port_.Number();
}

LonelySubAgent::~LonelySubAgent() { Stop(); }

bool LonelySubAgent::StartAndLoop() {
  const int waits = CallJournal::Get().Count("select");
  return Start() == 1 &&
         testkit::WaitFor(
             [&] { return CallJournal::Get().Count("select") > waits; },
             testkit::Deadlines::Pass());
}

bool LonelySubAgent::WaitForEnd() const {
  return testkit::WaitFor([] { return !CallJournal::Get().LastThreadExists(); },
                          testkit::Deadlines::Pass());
}
