// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Decoder.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "RandomPdu.h"
#include "support/AgentXReference.h"
#include "support/Samples.h"

namespace snmpsubagent::agentx {
namespace {

constexpr std::uint8_t kLittleEndian = 0;

// Each bit turned, and all of them.
constexpr std::uint8_t kDamages[] = {1, 2, 4, 8, 16, 32, 64, 128, 255};

// `bytes` as the decoder reads them, or nothing.
const Request* DecodedBy(Decoder& decoder, const Bytes& bytes) {
  const std::optional<Header> header = DecodeHeader(bytes.data());
  if (!header || kHeaderSize + header->payloadLength != bytes.size()) {
    return nullptr;
  }
  return decoder.DecodeRequest(*header, bytes.data() + kHeaderSize);
}

bool IsRequest(PduType type) {
  return PduType::Get <= type && type <= PduType::CleanupSet;
}

// The reference's reading, encoded again in one form; empty if it has none.
Bytes ReferenceReading(const Bytes& bytes) {
  try {
    reference::Pdu pdu = Decoded(bytes);
    pdu.header.flags &= kNetworkByteOrder | kNonDefaultContext;
    return reference::Encode(pdu);
  } catch (const reference::Malformed&) {
    return {};
  }
}

// The same of the decoder under test.
Bytes Reading(Decoder& decoder, const Bytes& bytes) {
  const Request* const request = DecodedBy(decoder, bytes);
  if (!request) return {};
  reference::Pdu pdu = ToReference(*request);
  pdu.header.flags &= kNetworkByteOrder | kNonDefaultContext;
  return reference::Encode(pdu);
}

TEST(ADecodedRequest, IsWhatTheReferenceHasWritten) {
  RandomPdu random(4711);
  Decoder decoder;
  for (int round = 0; round < 3000; ++round) {
    const Bytes bytes = reference::Encode(random.Pdu(random.RequestBody()));
    ASSERT_EQ(Reading(decoder, bytes), ReferenceReading(bytes)) << round;
    ASSERT_FALSE(Reading(decoder, bytes).empty());
  }
}

// Header and payload agree on the length, so that the elements are to blame.
TEST(ADecodedRequest, IsReadAsTheReferenceDoesWhenItIsDamaged) {
  RandomPdu random(42);
  Decoder decoder;
  int readable = 0;
  for (int round = 0; round < 3000; ++round) {
    Bytes bytes = reference::Encode(random.Pdu(random.RequestBody()));
    for (std::uint32_t left = 1 + random.Below(3); left > 0; --left) {
      const auto place = random.Below(static_cast<std::uint32_t>(bytes.size()));
      bytes[place] = static_cast<std::uint8_t>(random.Number());
    }
    if (!IsRequest(static_cast<PduType>(bytes[1]))) continue;
    const Bytes reading = Reading(decoder, bytes);
    ASSERT_EQ(reading, ReferenceReading(bytes)) << round;
    if (!reading.empty()) ++readable;
  }
  EXPECT_GT(readable, 200);
}

// One of each type, and in each byte order.
class ARequestOfEachType : public testing::TestWithParam<std::tuple<int, int>> {
 protected:
  Bytes Encoded() const {
    const auto [type, flags] = GetParam();
    reference::Pdu pdu;
    pdu.header.flags = static_cast<std::uint8_t>(flags);
    pdu.context = "a context";
    pdu.body = reference::Samples()[static_cast<std::size_t>(type - 1)];
    return reference::Encode(pdu);
  }
};

TEST_P(ARequestOfEachType, IsReadAsTheReferenceDoesWhereverItIsCutShort) {
  const Bytes whole = Encoded();
  Decoder decoder;
  for (std::size_t size = kHeaderSize; size < whole.size(); size += 4) {
    Bytes cut(whole.begin(), whole.begin() + static_cast<long>(size));
    const auto length = static_cast<std::uint16_t>(size - kHeaderSize);
    const bool bigEndian = (cut[2] & kNetworkByteOrder) != 0;
    cut[bigEndian ? 19 : 16] = static_cast<std::uint8_t>(length);
    cut[bigEndian ? 18 : 17] = static_cast<std::uint8_t>(length >> 8);
    EXPECT_EQ(Reading(decoder, cut), ReferenceReading(cut)) << size;
  }
}

TEST_P(ARequestOfEachType, IsReadAsTheReferenceDoesWhateverOctetIsDamaged) {
  const Bytes whole = Encoded();
  Decoder decoder;
  for (std::size_t place = 0; place < whole.size(); ++place) {
    for (const std::uint8_t value : kDamages) {
      Bytes damaged = whole;
      damaged[place] ^= value;
      if (!IsRequest(static_cast<PduType>(damaged[1]))) continue;
      ASSERT_EQ(Reading(decoder, damaged), ReferenceReading(damaged))
          << place << ' ' << int{value};
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    InBothByteOrders, ARequestOfEachType,
    testing::Combine(testing::Range(static_cast<int>(PduType::Get),
                                    static_cast<int>(PduType::CleanupSet) + 1),
                     testing::Values(kLittleEndian, kNetworkByteOrder)));

TEST(ADecodedOid, HasUpTo128SubIdentifiers) {
  Decoder decoder;
  for (const reference::Oid& begin : {reference::Oid{7}, {1, 3, 6, 1, 4}}) {
    reference::Oid oid = begin;
    oid.resize(128, 9);
    const Bytes longest =
        reference::Encode({{}, {}, reference::Get{{{oid, false, {}}}}});
    EXPECT_TRUE(DecodedBy(decoder, longest));
    oid.push_back(9);
    const Bytes tooLong =
        reference::Encode({{}, {}, reference::Get{{{oid, false, {}}}}});
    EXPECT_FALSE(DecodedBy(decoder, tooLong));
  }
}

TEST(ADecodedInteger, HasItsSignExtended) {
  Decoder decoder;
  const Bytes bytes = reference::Encode(
      {{},
       {},
       reference::TestSet{{{{1, 3}, {reference::Type::kInteger, -2}}}}});
  const Request* const request = DecodedBy(decoder, bytes);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->varbinds->at(0).value.number, ~std::uint64_t{1});
}

TEST(AMessageThatIsNoRequest, IsNotReadAsOne) {
  Decoder decoder;
  const auto samples = reference::Samples();
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const Bytes bytes = reference::Encode({{}, {}, samples[i]});
    EXPECT_EQ(DecodedBy(decoder, bytes) != nullptr,
              IsRequest(static_cast<PduType>(i + 1)))
        << i + 1;
  }
}

TEST(AHeader, IsReadInBothByteOrders) {
  for (const std::uint8_t flags : {kLittleEndian, kNetworkByteOrder}) {
    const Bytes bytes =
        reference::Encode({{1, flags, 0x01020304, 0x05060708, 0x090a0b0c},
                           {},
                           reference::Close{5}});
    const std::optional<Header> header = DecodeHeader(bytes.data());
    ASSERT_TRUE(header);
    EXPECT_EQ(header->type, PduType::Close);
    EXPECT_EQ(header->flags, flags);
    EXPECT_EQ(header->sessionId, 0x01020304U);
    EXPECT_EQ(header->transactionId, 0x05060708U);
    EXPECT_EQ(header->packetId, 0x090a0b0cU);
    EXPECT_EQ(header->payloadLength, 4U);
  }
}

TEST(AHeader, OfAnotherVersionCannotBeTrusted) {
  Bytes bytes = reference::Encode({{}, {}, reference::CommitSet{}});
  for (int version = 0; version < 256; ++version) {
    bytes[0] = static_cast<std::uint8_t>(version);
    EXPECT_EQ(DecodeHeader(bytes.data()).has_value(), version == 1) << version;
  }
}

// A header in network byte order that announces so many octets.
std::optional<Header> HeaderOfLength(std::uint32_t length) {
  Bytes bytes = reference::Encode({{}, {}, reference::CommitSet{}});
  for (int i = 0; i < 4; ++i) {
    bytes[static_cast<std::size_t>(19 - i)] =
        static_cast<std::uint8_t>(length >> (8 * i));
  }
  return DecodeHeader(bytes.data());
}

TEST(AHeader, WhoseLengthIsNoMultipleOfFourCannotBeTrusted) {
  EXPECT_FALSE(HeaderOfLength(1));
  EXPECT_FALSE(HeaderOfLength(2));
  EXPECT_FALSE(HeaderOfLength(3));
  EXPECT_TRUE(HeaderOfLength(4));
}

TEST(AHeader, ThatAnnouncesMoreThanAMessageHasCannotBeTrusted) {
  EXPECT_TRUE(HeaderOfLength(kMaxPayload));
  EXPECT_FALSE(HeaderOfLength(kMaxPayload + 4));
  EXPECT_FALSE(HeaderOfLength(0xfffffffc));
}

TEST(ADecodedResponse, IsWhatTheReferenceHasWritten) {
  RandomPdu random(1);
  Decoder decoder;
  for (int round = 0; round < 1000; ++round) {
    const reference::Response sent{
        random.Number(), static_cast<std::uint16_t>(random.Number()),
        static_cast<std::uint16_t>(random.Number()), random.Varbinds()};
    const Bytes bytes = reference::Encode(random.Pdu(sent));
    const auto response = decoder.DecodeResponse(*DecodeHeader(bytes.data()),
                                                 bytes.data() + kHeaderSize);
    ASSERT_TRUE(response);
    EXPECT_EQ(response->sysUpTime, sent.sysUpTime);
    EXPECT_EQ(static_cast<std::uint16_t>(response->error), sent.error);
    EXPECT_EQ(response->index, sent.index);
  }
}

TEST(ADecodedResponse, IsNoneWhenTheReferenceReadsNone) {
  const Bytes whole = reference::Encode(
      {{}, {}, reference::Response{1, 2, 3, reference::SampleVarbinds()}});
  Decoder decoder;
  for (std::size_t place = kHeaderSize; place < whole.size(); ++place) {
    for (const std::uint8_t value : kDamages) {
      Bytes damaged = whole;
      damaged[place] ^= value;
      const bool read = decoder
                            .DecodeResponse(*DecodeHeader(damaged.data()),
                                            damaged.data() + kHeaderSize)
                            .has_value();
      EXPECT_EQ(read, !ReferenceReading(damaged).empty())
          << place << ' ' << int{value};
    }
  }
}

TEST(ADecodedClose, TellsItsReason) {
  Decoder decoder;
  Bytes bytes = reference::Encode({{}, {}, reference::Close{5}});
  const Header header = *DecodeHeader(bytes.data());
  EXPECT_EQ(decoder.DecodeClose(header, &bytes[kHeaderSize]),
            CloseReason::Shutdown);
  Header shorter = header;
  shorter.payloadLength = 0;
  EXPECT_FALSE(decoder.DecodeClose(shorter, &bytes[kHeaderSize]));
  Header longer = header;
  longer.payloadLength = 8;
  bytes.resize(bytes.size() + 4);
  EXPECT_FALSE(decoder.DecodeClose(longer, &bytes[kHeaderSize]));
}

TEST(AnErrorOfAResponse, HasTheNameOfTheRfc) {
  EXPECT_EQ(ToString(Error::None), "noError");
  EXPECT_EQ(ToString(Error::GenErr), "genErr");
  EXPECT_EQ(ToString(Error::InconsistentName), "inconsistentName");
  EXPECT_EQ(ToString(Error::OpenFailed), "openFailed");
  EXPECT_EQ(ToString(Error::DuplicateRegistration), "duplicateRegistration");
  EXPECT_EQ(ToString(Error::ProcessingError), "processingError");
  EXPECT_EQ(ToString(static_cast<Error>(19)), "error 19");
  EXPECT_EQ(ToString(static_cast<Error>(255)), "error 255");
  EXPECT_EQ(ToString(static_cast<Error>(269)), "error 269");
}

TEST(AReasonOfAClose, HasTheNameOfTheRfc) {
  EXPECT_EQ(ToString(CloseReason::Other), "reasonOther");
  EXPECT_EQ(ToString(CloseReason::ByManager), "reasonByManager");
  EXPECT_EQ(ToString(static_cast<CloseReason>(0)), "reason 0");
  EXPECT_EQ(ToString(static_cast<CloseReason>(7)), "reason 7");
}

}  // namespace
}  // namespace snmpsubagent::agentx
