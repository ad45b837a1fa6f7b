// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <tuple>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "support/Scalars.h"
#include "support/Session.h"

using support::AddIntScalar;
using support::AddScalar;
using support::ScalarOid;
using support::ScalarsOid;
using support::Session;
using testing::HasSubstr;
using testing::TestParamInfo;
using testing::Values;
using testkit::CommandResult;

namespace {

// The application's variables.
struct Variables {
  int number = -42;
  unsigned int count = 4000000000;
  std::string text = "fan tray";
  char characters[32] = "rev B";
  bool flag = true;
  unsigned char bytes[4] = {0xde, 0xad, 0xbe, 0xef};
};

// A type of value and what a manager sees of it, as the tools print it.
struct ValueKind {
  std::string name;
  std::unique_ptr<NetSNMPNodeData> (*make)(Variables& variables,
                                           eNodeAccessMode mode, bool local);
  // Whether the application's variable is as at the start, and as written.
  bool (*isInitial)(const Variables& variables);
  bool (*isWritten)(const Variables& variables);
  std::string initial;
  std::string typeLetter;
  std::string newValue;
  std::string written;
};

std::ostream& operator<<(std::ostream& stream, const ValueKind& kind) {
  return stream << kind.name;
}

const ValueKind kInt = {
    "Int",
    [](Variables& v, eNodeAccessMode mode,
       bool local) -> std::unique_ptr<NetSNMPNodeData> {
      return std::make_unique<NetSNMPIntNodeData>(&v.number, mode, local);
    },
    [](const Variables& v) { return v.number == -42; },
    [](const Variables& v) { return v.number == -2147483647; },
    "INTEGER: -42",
    "i",
    "-2147483647",
    "INTEGER: -2147483647"};

const ValueKind kUnsignedInt = {
    "UnsignedInt",
    [](Variables& v, eNodeAccessMode mode,
       bool local) -> std::unique_ptr<NetSNMPNodeData> {
      return std::make_unique<NetSNMPUnsignedIntNodeData>(&v.count, mode,
                                                          local);
    },
    [](const Variables& v) { return v.count == 4000000000; },
    [](const Variables& v) { return v.count == 4294967295; },
    "Gauge32: 4000000000",
    "u",
    "4294967295",
    "Gauge32: 4294967295"};

const ValueKind kString = {
    "String",
    [](Variables& v, eNodeAccessMode mode,
       bool local) -> std::unique_ptr<NetSNMPNodeData> {
      return std::make_unique<NetSNMPStringNodeData>(&v.text, mode, local);
    },
    [](const Variables& v) { return v.text == "fan tray"; },
    [](const Variables& v) { return v.text == "power supply"; },
    "STRING: \"fan tray\"",
    "s",
    "power supply",
    "STRING: \"power supply\""};

const ValueKind kChar = {
    "Char",
    [](Variables& v, eNodeAccessMode mode,
       bool local) -> std::unique_ptr<NetSNMPNodeData> {
      return std::make_unique<NetSNMPCharNodeData>(v.characters, mode, local);
    },
    [](const Variables& v) { return std::string(v.characters) == "rev B"; },
    [](const Variables& v) { return std::string(v.characters) == "rev C.2"; },
    "STRING: \"rev B\"",
    "s",
    "rev C.2",
    "STRING: \"rev C.2\""};

const ValueKind kBool = {"Bool",
                         [](Variables& v, eNodeAccessMode mode,
                            bool local) -> std::unique_ptr<NetSNMPNodeData> {
                           return std::make_unique<NetSNMPBoolNodeData>(
                               &v.flag, mode, local);
                         },
                         [](const Variables& v) { return v.flag; },
                         [](const Variables& v) { return !v.flag; },
                         "INTEGER: 1",
                         "i",
                         "2",
                         "INTEGER: 2"};

bool BytesAreUnchanged(const Variables& v) {
  return v.bytes[0] == 0xde && v.bytes[1] == 0xad && v.bytes[2] == 0xbe &&
         v.bytes[3] == 0xef;
}

// A SET of a byte buffer succeeds and changes nothing.
const ValueKind kByte = {"Byte",
                         [](Variables& v, eNodeAccessMode mode,
                            bool local) -> std::unique_ptr<NetSNMPNodeData> {
                           return std::make_unique<NetSNMPByteNodeData>(
                               v.bytes, sizeof(v.bytes), mode, local);
                         },
                         BytesAreUnchanged,
                         BytesAreUnchanged,
                         "Hex-STRING: DE AD BE EF",
                         "x",
                         "01020304",
                         "Hex-STRING: DE AD BE EF"};

const eNodeAccessMode kAccessModes[] = {eNodeAccessDefault, eNodeAccessReadOnly,
                                        eNodeAccessReadWrite,
                                        eNodeAccessWriteOnly};

// Four scalars of one type, one for each access mode, and one after them.
class AServedValue
    : public testing::TestWithParam<std::tuple<ValueKind, bool>> {
 protected:
  AServedValue() {
    session_.Connect();
    for (eNodeAccessMode mode : kAccessModes) {
      AddScalar(Number(mode), Name(mode),
                *Kind().make(variables_[mode], mode, IsLocal()));
    }
    AddIntScalar(Number(eNodeAccessWriteOnly) + 1, "last", 12345);
  }

  static const ValueKind& Kind() { return std::get<0>(GetParam()); }
  static bool IsLocal() { return std::get<1>(GetParam()); }
  static unsigned long Number(eNodeAccessMode mode) { return 1UL + mode; }
  static std::string Oid(eNodeAccessMode mode) {
    return ScalarOid(Number(mode));
  }
  static std::string Name(eNodeAccessMode mode) {
    return "mode" + std::to_string(mode);
  }

  CommandResult Set(eNodeAccessMode mode) {
    return session_.Set({Oid(mode), Kind().typeLetter, Kind().newValue});
  }

  // The bytes of the value, whether or not a manager may read them.
  static std::string BytesOf(eNodeAccessMode mode) {
    const NetSNMPAgentGuard guard;
    const NetSNMPNodeData* value = NetSNMPDataNode::GetNodeData(Name(mode));
    return std::string(reinterpret_cast<const char*>(value->NodeByteValue()),
                       value->NodeValueSize());
  }

  bool VariableIsInitial(eNodeAccessMode mode) const {
    const NetSNMPAgentGuard guard;
    return Kind().isInitial(variables_[mode]);
  }

  bool VariableIsWritten(eNodeAccessMode mode) const {
    const NetSNMPAgentGuard guard;
    return Kind().isWritten(variables_[mode]);
  }

  Variables variables_[4];
  Session session_;
};

TEST_P(AServedValue, IsReadByGetUnlessItIsWriteOnly) {
  for (eNodeAccessMode mode :
       {eNodeAccessDefault, eNodeAccessReadOnly, eNodeAccessReadWrite}) {
    const CommandResult result = session_.Manager().Get(Oid(mode));
    EXPECT_TRUE(result.Succeeded()) << result;
    EXPECT_THAT(result.out, HasSubstr(Oid(mode) + " = " + Kind().initial));
  }
  EXPECT_THAT(session_.Manager().Get(Oid(eNodeAccessWriteOnly)).out,
              HasSubstr("No Such"));
}

TEST_P(AServedValue, IsFoundByGetNextUnlessItIsWriteOnly) {
  std::string previous = ScalarsOid();
  for (eNodeAccessMode mode :
       {eNodeAccessDefault, eNodeAccessReadOnly, eNodeAccessReadWrite}) {
    EXPECT_THAT(session_.Manager().GetNext(previous).out,
                HasSubstr(Oid(mode) + " = " + Kind().initial));
    previous = Oid(mode);
  }
  EXPECT_THAT(session_.Manager().GetNext(previous).out,
              HasSubstr(" = INTEGER: 12345"));
}

TEST_P(AServedValue, IsWrittenBySetIfItIsWritable) {
  for (eNodeAccessMode mode : {eNodeAccessReadWrite, eNodeAccessWriteOnly}) {
    SCOPED_TRACE(mode);
    const CommandResult result = Set(mode);
    EXPECT_TRUE(result.Succeeded()) << result;
    EXPECT_TRUE(IsLocal() ? VariableIsInitial(mode) : VariableIsWritten(mode));
  }
  EXPECT_THAT(session_.Manager().Get(Oid(eNodeAccessReadWrite)).out,
              HasSubstr(" = " + Kind().written));
  EXPECT_EQ(BytesOf(eNodeAccessWriteOnly), BytesOf(eNodeAccessReadWrite));
}

TEST_P(AServedValue, RefusesASetIfItIsNotWritable) {
  for (eNodeAccessMode mode : {eNodeAccessDefault, eNodeAccessReadOnly}) {
    const CommandResult result = Set(mode);
    EXPECT_FALSE(result.Succeeded());
    EXPECT_THAT(result.error, HasSubstr("notWritable"));
    EXPECT_TRUE(VariableIsInitial(mode));
    EXPECT_THAT(session_.Manager().Get(Oid(mode)).out,
                HasSubstr(" = " + Kind().initial));
  }
}

INSTANTIATE_TEST_SUITE_P(
    OfEachType, AServedValue,
    testing::Combine(Values(kInt, kUnsignedInt, kString, kChar, kBool, kByte),
                     testing::Bool()),
    [](const TestParamInfo<std::tuple<ValueKind, bool>>& info) {
      return std::get<0>(info.param).name +
             (std::get<1>(info.param) ? "CopiedByTheValue"
                                      : "OverTheApplicationsVariable");
    });

}  // namespace
