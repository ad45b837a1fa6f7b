// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>

#include <chrono>

#include "RandomPdu.h"
#include "agentx/OwnMessages.h"
#include "agentx/ResponseWriter.h"
#include "agentx/VarbindWriter.h"
#include "support/AgentXReference.h"

namespace snmpsubagent::agentx {
namespace {

using std::chrono::seconds;

OidView ViewOf(const reference::Oid& oid) { return {oid.data(), oid.size()}; }

// Writes what the reference would, with the writer under test.
void Write(VarbindWriter& writer, const reference::Varbind& varbind) {
  const auto& [type, content] = varbind.value;
  const auto valueType = static_cast<ValueType>(type);
  writer.Name(ViewOf(varbind.name));
  if (const auto* const integer = std::get_if<std::int32_t>(&content)) {
    writer.Integer(*integer);
  } else if (const auto* const number = std::get_if<std::uint32_t>(&content)) {
    writer.Unsigned(valueType, *number);
  } else if (const auto* const counter = std::get_if<std::uint64_t>(&content)) {
    writer.Counter64(*counter);
  } else if (const auto* const octets = std::get_if<std::string>(&content)) {
    writer.Octets(valueType, *octets);
  } else if (const auto* const oid = std::get_if<reference::Oid>(&content)) {
    writer.ObjectIdentifier(ViewOf(*oid));
  } else {
    writer.Empty(valueType);
  }
}

TEST(AWrittenResponse, IsReadByTheReferenceAsItWasMeant) {
  RandomPdu random(7);
  Bytes out;
  for (int round = 0; round < 3000; ++round) {
    const auto varbinds = random.Varbinds();
    Header request;
    request.type = PduType::GetNext;
    request.flags = kNetworkByteOrder | kNonDefaultContext;
    request.sessionId = random.Number();
    request.transactionId = random.Number();
    request.packetId = random.Number();
    out.clear();
    ResponseWriter response(out, request);
    for (const auto& varbind : varbinds) Write(response.Varbinds(), varbind);
    response.Finish();

    const reference::Pdu pdu = Decoded(out);
    EXPECT_EQ(pdu.header.sessionId, request.sessionId);
    EXPECT_EQ(pdu.header.transactionId, request.transactionId);
    EXPECT_EQ(pdu.header.packetId, request.packetId);
    const auto& read = std::get<reference::Response>(pdu.body);
    EXPECT_EQ(read.error, 0);
    EXPECT_EQ(read.index, 0);
    ASSERT_TRUE(read.varbinds == varbinds) << round;
  }
}

TEST(AWrittenResponse, IsInTheByteOrderOfThisMachine) {
  Bytes out;
  ResponseWriter(out, Header()).Finish();
  const std::uint16_t one = 1;
  const bool littleEndian = reinterpret_cast<const char*>(&one)[0] == 1;
  EXPECT_EQ(out[2], littleEndian ? 0 : kNetworkByteOrder);
}

TEST(AWrittenResponse, StandsBehindWhatThereIsAlready) {
  Bytes out{1, 2, 3};
  ResponseWriter response(out, Header());
  response.Varbinds().Name(Oid("1.3"));
  response.Varbinds().Integer(5);
  response.Finish();
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 3), (Bytes{1, 2, 3}));
  const reference::Pdu pdu = Decoded({out.begin() + 3, out.end()});
  EXPECT_EQ(std::get<reference::Response>(pdu.body).varbinds.size(), 1U);
}

TEST(AWrittenResponse, LosesItsVarbindsWhenItRefuses) {
  Bytes out{1, 2, 3, 4};
  ResponseWriter response(out, Header());
  response.Varbinds().Name(Oid("1.3.6"));
  response.Varbinds().Octets(ValueType::OctetString, "text");
  response.Refuse(Error::GenErr, 2);
  response.Finish();
  const reference::Pdu pdu = Decoded({out.begin() + 4, out.end()});
  const auto& read = std::get<reference::Response>(pdu.body);
  EXPECT_EQ(read.error, 5);
  EXPECT_EQ(read.index, 2);
  EXPECT_TRUE(read.varbinds.empty());
}

TEST(AWrittenResponse, LeavesNothingUnlessItIsFinished) {
  Bytes out{1, 2, 3, 4};
  {
    ResponseWriter response(out, Header());
    response.Varbinds().Name(Oid("1.3.6"));
  }
  EXPECT_EQ(out, (Bytes{1, 2, 3, 4}));
}

TEST(AVarbindWriter, RemovesWhatWasWrittenBehindAPlace) {
  Bytes out;
  VarbindWriter writer(out);
  writer.Name(Oid("1.3"));
  writer.Integer(1);
  const std::size_t place = writer.Place();
  const Bytes first = out;
  writer.Name(Oid("1.4"));
  writer.Rewind(place);
  EXPECT_EQ(out, first);
  writer.Name(Oid("1.5"));
  writer.Empty(ValueType::NoSuchObject);
  Bytes message;
  WriteNotify(message, Header(), "", out);
  const auto read = std::get<reference::Notify>(Decoded(message).body);
  ASSERT_EQ(read.varbinds.size(), 2U);
  EXPECT_EQ(read.varbinds[1].name, (reference::Oid{1, 5}));
}

Header HeaderWithIds() {
  Header header;
  header.sessionId = 3;
  header.transactionId = 4;
  header.packetId = 5;
  return header;
}

// What `write` has written, read by the reference.
template <typename Body, typename WriteMessage>
Body ReadBack(const WriteMessage& write, const char* context = nullptr) {
  Bytes out;
  write(out, HeaderWithIds());
  const reference::Pdu pdu = Decoded(out);
  EXPECT_EQ(pdu.header.sessionId, 3U);
  EXPECT_EQ(pdu.header.transactionId, 4U);
  EXPECT_EQ(pdu.header.packetId, 5U);
  EXPECT_EQ(pdu.context.has_value(), context != nullptr);
  EXPECT_EQ(pdu.context.value_or(""), context ? context : "");
  return std::get<Body>(pdu.body);
}

TEST(AWrittenOpen, HasTimeoutIdAndDescription) {
  const auto open = ReadBack<reference::Open>([](Bytes& out, Header header) {
    WriteOpen(out, header, seconds(7), Oid("1.3.6.1.4.1.32473"), "thermometer");
  });
  EXPECT_EQ(open.timeout, 7);
  EXPECT_EQ(open.id, (reference::Oid{1, 3, 6, 1, 4, 1, 32473}));
  EXPECT_EQ(open.description, "thermometer");
}

TEST(AWrittenOpen, HasUpTo255OctetsOfItsDescription) {
  const auto open = ReadBack<reference::Open>([](Bytes& out, Header header) {
    WriteOpen(out, header, seconds(7), {}, std::string(256, 'x'));
  });
  EXPECT_EQ(open.description, std::string(255, 'x'));
}

TEST(ATimeout, IsOneOctet) {
  EXPECT_EQ(TimeoutOctet(seconds(-1)), 0);
  EXPECT_EQ(TimeoutOctet(seconds(0)), 0);
  EXPECT_EQ(TimeoutOctet(seconds(255)), 255);
  EXPECT_EQ(TimeoutOctet(seconds(256)), 255);
}

TEST(AWrittenClose, HasItsReason) {
  const auto close = ReadBack<reference::Close>([](Bytes& out, Header header) {
    WriteClose(out, header, CloseReason::Shutdown);
  });
  EXPECT_EQ(close.reason, 5);
}

TEST(AWrittenRegister, HasTimeoutPriorityAndSubtree) {
  const Registration registration{"1.3.6.1.2.1", "", 99, seconds(12)};
  const auto read =
      ReadBack<reference::Register>([&](Bytes& out, Header header) {
        WriteRegister(out, header, registration);
      });
  EXPECT_EQ(read.timeout, 12);
  EXPECT_EQ(read.priority, 99);
  EXPECT_EQ(read.rangeSubid, 0);
  EXPECT_EQ(read.subtree, (reference::Oid{1, 3, 6, 1, 2, 1}));
}

TEST(AWrittenUnregister, NamesPriorityAndSubtreeInItsContext) {
  const Registration registration{"1.3.6.1.2.1", "rack", 99, seconds(12)};
  const auto read = ReadBack<reference::Unregister>(
      [&](Bytes& out, Header header) {
        WriteUnregister(out, header, registration);
      },
      "rack");
  EXPECT_EQ(read.priority, 99);
  EXPECT_EQ(read.rangeSubid, 0);
  EXPECT_EQ(read.subtree, (reference::Oid{1, 3, 6, 1, 2, 1}));
}

TEST(WrittenAgentCaps, AreAddedAndRemovedInTheirContext) {
  const AgentCaps caps{"1.3.6.1.4.1.32473.9", "what it can do", "rack"};
  const auto added = ReadBack<reference::AddAgentCaps>(
      [&](Bytes& out, Header header) { WriteAddAgentCaps(out, header, caps); },
      "rack");
  EXPECT_EQ(added.id, (reference::Oid{1, 3, 6, 1, 4, 1, 32473, 9}));
  EXPECT_EQ(added.description, "what it can do");
  const auto removed = ReadBack<reference::RemoveAgentCaps>(
      [&](Bytes& out, Header header) {
        WriteRemoveAgentCaps(out, header, caps);
      },
      "rack");
  EXPECT_EQ(removed.id, added.id);
}

TEST(AWrittenNotify, HasItsVarbindsInItsContext) {
  RandomPdu random(9);
  for (int round = 0; round < 1000; ++round) {
    const auto varbinds = random.Varbinds();
    Bytes payload;
    VarbindWriter writer(payload);
    for (const auto& varbind : varbinds) Write(writer, varbind);
    const auto read = ReadBack<reference::Notify>(
        [&](Bytes& out, Header header) {
          WriteNotify(out, header, "rack", payload);
        },
        "rack");
    ASSERT_TRUE(read.varbinds == varbinds) << round;
  }
}

TEST(AWrittenPing, IsAHeader) {
  ReadBack<reference::Ping>(
      [](Bytes& out, Header header) { WritePing(out, header); });
}

}  // namespace
}  // namespace snmpsubagent::agentx
