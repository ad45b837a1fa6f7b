// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cstdint>

#include "Application.h"
#include "FuzzedMaster.h"
#include "FuzzedPdu.h"
#include "Input.h"
#include "NetSNMP.h"
#include "VirtualTime.h"

namespace agentx = testkit::agentx;

// Whole AgentX sessions with a master agent that may do anything: send proper
// messages in any order, damaged ones and no messages at all, send any response
// or none, and disconnect. After each session the subagent must reconnect and
// serve all its objects.

namespace {

FuzzedMaster& Master() {
  static FuzzedMaster& master = *new FuzzedMaster;
  return master;
}

Application& TheApplication() {
  static Application& application = [&]() -> Application& {
    VirtualTime::WorkInSelect([] { Master().Work(); });
    auto& started = *new Application(Master().Port());
    snmp_disable_log();
    netsnmp_register_loghandler(NETSNMP_LOGHANDLER_NONE, LOG_DEBUG);
    return started;
  }();
  return application;
}

std::uint32_t NextPacketId() {
  static std::uint32_t last = 0;
  return ++last;
}

// Passes until `done` holds.
template <typename Condition>
void PassUntil(const Condition& done, const char* otherwise) {
  // A new attempt to connect is made every third pass.
  for (int passes = 0; !done(); ++passes) {
    Require(passes < 100, otherwise);
    TheApplication().Pass();
  }
}

void ScriptAnswer(Input& input) {
  const unsigned int choice = input.Below(6);
  const std::uint8_t error = input.U8();
  const std::string bytes = input.Bytes(200);
  Master().AnswerNext([=](agentx::Pdu grant) -> agentx::Bytes {
    switch (choice) {
      case 0:
        return {};  // silence
      case 1:
        std::get<agentx::Response>(grant.body).error = error;
        break;
      case 2:
        grant.header.sessionId = error;
        break;
      case 3:
        grant.header.packetId += error;
        break;
      case 4:
        Master().Disconnect(error % 2 == 0);
        return {};
      default: {
        Input damage(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                     bytes.size());
        return FuzzedPdu::Damaged(damage, agentx::Encode(grant));
      }
    }
    return agentx::Encode(grant);
  });
}

// Sends the bytes one message after the other, each when the former is done.
// Net-SNMP 5.9 does not survive the phases of a SET when they arrive together.
void Send(const agentx::Bytes& bytes) {
  for (const agentx::Bytes& piece : Master().Split(bytes)) {
    Master().Send(piece);
    TheApplication().Settle();
  }
}

void Converse(Input& input) {
  const FuzzedPdu messages(TheApplication().Names());
  while (!input.AtEnd()) {
    const unsigned int choice = input.Below(16);
    if (choice < 8) {
      Send(messages.Next(input, NextPacketId()));
    } else if (choice == 8) {
      const std::string bytes = input.Bytes(1000);
      Send({bytes.begin(), bytes.end()});
    } else if (choice == 9) {
      ScriptAnswer(input);
    } else if (choice == 10) {
      Master().Disconnect(input.Below(2) == 0);
    } else if (choice < 14) {
      TheApplication().Act(input);
    } else {
      // Time goes by.
      for (unsigned int i = input.Below(8); i > 0; --i) TheApplication().Pass();
    }
    TheApplication().Settle();
  }
}

void RequireService() {
  const std::uint32_t packetId = NextPacketId();
  agentx::Get get;
  for (const agentx::Oid& name : TheApplication().Names()) {
    get.ranges.push_back({name, false, {}});
  }
  Master().Send(agentx::Encode({{1, agentx::kNetworkByteOrder,
                                 FuzzedMaster::kSessionId, packetId, packetId},
                                {},
                                get}));
  PassUntil([&] { return Master().ResponseTo(packetId) != nullptr; },
            "does not answer");
  const agentx::Response& response = *Master().ResponseTo(packetId);
  Require(response.error == 0, "answers with an error");
  const auto& values = TheApplication().Values();
  Require(response.varbinds.size() == values.size(), "answers too little");
  for (std::size_t i = 0; i < values.size(); ++i) {
    Require(response.varbinds[i].value == values[i], "answers wrong");
  }
}

void Reconnect() {
  Master().Forget();
  Master().Disconnect(false);
  PassUntil([] { return !TheApplication().Connected(); },
            "does not find the connection lost");
  PassUntil([] { return TheApplication().Connected(); },
            "does not connect again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  Input input(data, size);
  PassUntil([] { return TheApplication().Connected(); }, "does not connect");
  Converse(input);
  Reconnect();
  TheApplication().Restore();
  // A table with its rows is one registration.
  Require(Master().Registrations() >= TheApplication().Names().size() - 2,
          "does not register everything again");
  RequireService();
  Master().Forget();
  return 0;
}
