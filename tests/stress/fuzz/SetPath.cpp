// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <array>
#include <cstdint>

#include "Input.h"
#include "NetSNMP.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "QuietAgent.h"
#include "Subject.h"
#include "support/CellRequest.h"
#include "support/FakeSubAgent.h"
#include "support/Oid.h"
#include "support/ScopedRegistry.h"
#include "support/Values.h"
#include "support/Varbind.h"

// Writes by managers, of every type and length, in every order of phases, to a
// value of any class: by itself, in a scalar, and in a table cell. A reference
// model predicts what is read afterwards.

namespace {

// What a request is for in a phase that the agent library knows, or does not.
int ModeFrom(Input& input) {
  constexpr std::array<int, 10> kModes{
      MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION, MODE_SET_COMMIT,
      MODE_SET_FREE,     MODE_SET_UNDO,     MODE_GET,        MODE_GETNEXT,
      MODE_GETBULK,      MODE_SET_BEGIN};
  const unsigned int choice = input.Below(kModes.size() + 1);
  return choice < kModes.size() ? kModes[choice]
                                : static_cast<int>(input.U32());
}

bool IsRead(int mode) { return mode == MODE_GET || mode == MODE_GETNEXT; }

struct Written {
  explicit Written(Input& input)
      : type(input.U8()), bytes(input.Bytes(kMost)) {}
  static constexpr std::size_t kMost = 1023;
  unsigned char type;
  std::string bytes;
};

int Expected(const Subject& subject, const Written& written, int mode) {
  switch (mode) {
    case MODE_SET_RESERVE1:
    case MODE_SET_RESERVE2:
      return subject.Validated(written.type, written.bytes);
    case MODE_SET_ACTION:
      return SNMP_ERR_NOERROR;
    case MODE_SET_COMMIT:
      return subject.Committed();
    default:
      return SNMP_ERR_BADVALUE;
  }
}

void WriteValue(Input& input, Subject& subject) {
  const std::unique_ptr<NetSNMPNodeData> value(subject.Value().Clone());
  while (!input.AtEnd()) {
    const Written written(input);
    const Varbind varbind(written.type, written.bytes);
    for (unsigned int phases = 1 + input.Below(5); phases > 0; --phases) {
      const int mode = ModeFrom(input);
      if (IsRead(mode)) break;
      Require(NetSNMP::handle_snmp_request(varbind, value.get(), mode) ==
                  Expected(subject, written, mode),
              "wrong status");
      if (mode == MODE_SET_COMMIT) subject.Commit(written.bytes);
    }
    Require(subject.ReadsFrom(*value), "wrong value after a SET of a value");
  }
}

const Oid kScalarOid = TestOid({1, 0});

void WriteScalar(Input& input, Subject& subject) {
  Oid oid = kScalarOid;
  const NetSNMPDataNode* const node = new NetSNMPDataNode(
      oid.data(), Length(oid), "scalar", subject.Value(), nullptr, "");
  netsnmp_handler_registration* const registration =
      LocalAgent::RegistrationAt(oid);
  Require(registration != nullptr, "scalar not registered");
  while (!input.AtEnd()) {
    const Written written(input);
    CellRequest request(oid);
    request.SetBytes(written.type, written.bytes);
    for (unsigned int phases = 1 + input.Below(5); phases > 0; --phases) {
      const int mode = ModeFrom(input);
      if (IsRead(mode)) break;
      request.Serve(registration, mode);
      // The agent library keeps managers from what they may only read.
      if (mode == MODE_SET_COMMIT && subject.Writable()) {
        subject.Commit(written.bytes);
      }
    }
    Require(subject.ReadsFrom(*node->nodeData_),
            "wrong value after a SET of a scalar");
  }
}

const Oid kTableOid = TestOid({2});

void WriteCell(Input& input, Subject& subject) {
  Oid oid = kTableOid;
  auto* const table = new NetSNMPTableNode(
      oid.data(), Length(oid), "table",
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr),
      nullptr, "");
  oid.push_back(1);
  auto* const store = new NetSNMPTableEntryNode(
      oid.data(), Length(oid), "store", "row", Values(Int(0)), 2, table);
  Require(store->AddRow(Values(Index(Int(5)), subject.Value())), "no row");
  netsnmp_handler_registration* const registration =
      LocalAgent::RegistrationAt(kTableOid);
  Require(registration != nullptr, "table not registered");
  while (!input.AtEnd()) {
    const Written written(input);
    CellRequest request(TestOid({2, 1, 2, 5}));
    request.SetBytes(written.type, written.bytes);
    for (unsigned int phases = 1 + input.Below(5); phases > 0; --phases) {
      const int mode = ModeFrom(input);
      if (IsRead(mode)) break;
      request.Serve(registration, mode);
    }
  }
  // Rows that keep their values are not written by managers.
  if (!subject.InVariable()) {
    Require(subject.ReadsFrom(*store->GetRow("row.5")->at(1)),
            "wrong value after a SET of a cell");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  static const QuietAgent agent;
  Input input(data, size);
  const FakeSubAgent subAgent(true);
  const unsigned int way = input.Below(3);
  // Outlives the nodes, which may point at its variables.
  Subject subject(input);
  const ScopedRegistry registry;
  if (way == 0) {
    WriteValue(input, subject);
  } else if (way == 1) {
    WriteScalar(input, subject);
  } else {
    WriteCell(input, subject);
  }
  return 0;
}
