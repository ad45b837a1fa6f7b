// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Codec.h"

#include <gtest/gtest.h>

#include <random>

#include "support/Samples.h"

namespace testkit::agentx {
namespace {

constexpr std::uint8_t kLittleEndian = 0;

Bytes Encoded(Body body, std::uint8_t flags) {
  return Encode({{1, flags, 0x01020304, 5, 6}, {}, std::move(body)});
}

Pdu Decoded(const Bytes& bytes) { return Decode(bytes.data(), bytes.size()); }

// What follows the header.
Bytes Payload(const Bytes& message) {
  return {message.begin() + kHeaderSize, message.end()};
}

TEST(AnAgentXMessage, BeginsWithItsHeaderInNetworkByteOrder) {
  EXPECT_EQ(
      Encoded(Ping{}, kNetworkByteOrder),
      (Bytes{1, 13, 0x10, 0, 1, 2, 3, 4, 0, 0, 0, 5, 0, 0, 0, 6, 0, 0, 0, 0}));
}

TEST(AnAgentXMessage, BeginsWithItsHeaderInLittleEndianByteOrder) {
  EXPECT_EQ(Encoded(Close{5}, kLittleEndian),
            (Bytes{1, 2, 0, 0, 4, 3, 2, 1, 5, 0, 0, 0,
                   6, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0}));
}

TEST(AnAgentXMessage, CarriesItsContextBehindTheHeader) {
  const Bytes bytes = Encode({{}, "ab", Ping{}});
  EXPECT_EQ(bytes[2], kNetworkByteOrder | kNonDefaultContext);
  EXPECT_EQ(Payload(bytes), (Bytes{0, 0, 0, 2, 'a', 'b', 0, 0}));
  EXPECT_EQ(Decoded(bytes).context, "ab");
}

TEST(AnAgentXMessage, ThatHasNoContextLeavesItOut) {
  const Bytes bytes = Encode({{}, "ab", CommitSet{}});
  EXPECT_EQ(bytes[2], kNetworkByteOrder);
  EXPECT_EQ(bytes.size(), kHeaderSize);
}

TEST(AnObjectIdentifier, BelowInternetIsShortened) {
  EXPECT_EQ(Payload(Encoded(RemoveAgentCaps{{1, 3, 6, 1, 2, 1, 259}},
                            kNetworkByteOrder)),
            (Bytes{2, 2, 0, 0, 0, 0, 0, 1, 0, 0, 1, 3}));
}

TEST(AnObjectIdentifier, ElsewhereIsWrittenInFull) {
  EXPECT_EQ(
      Payload(Encoded(RemoveAgentCaps{{1, 3, 6, 1}}, kLittleEndian)),
      (Bytes{4, 0, 0, 0, 1, 0, 0, 0, 3, 0, 0, 0, 6, 0, 0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(Encoded(RemoveAgentCaps{{1, 3, 6, 1, 256}}, 0).size(),
            kHeaderSize + 4 + 5 * 4);
  EXPECT_EQ(Encoded(RemoveAgentCaps{{1, 3, 6, 1, 0}}, 0).size(),
            kHeaderSize + 4 + 5 * 4);
}

TEST(AnObjectIdentifier, IsFourZeroBytesWhenNull) {
  EXPECT_EQ(Payload(Encoded(RemoveAgentCaps{}, kNetworkByteOrder)),
            (Bytes{0, 0, 0, 0}));
}

TEST(AnObjectIdentifier, OfMoreThan128PartsIsMalformed) {
  const Oid longest(128, 7);
  EXPECT_EQ(std::get<RemoveAgentCaps>(
                Decoded(Encoded(RemoveAgentCaps{longest}, 0)).body)
                .id,
            longest);
  const Oid tooLong(129, 7);
  EXPECT_THROW(Decoded(Encoded(RemoveAgentCaps{tooLong}, 0)), Malformed);
  EXPECT_THROW(Encoded(RemoveAgentCaps{Oid(256, 7)}, 0), std::length_error);
}

TEST(ASearchRange, MarksWhetherItsStartIsIncluded) {
  const Get get{{{{1, 3}, true, {1, 4}}}};
  EXPECT_EQ(Payload(Encoded(get, kNetworkByteOrder)),
            (Bytes{2, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 3,
                   2, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 4}));
}

TEST(AnEncodedVarbind, IsPaddedToFourBytes) {
  const Notify notify{{{{}, {Type::kOctetString, std::string("abcde")}}}};
  EXPECT_EQ(Payload(Encoded(notify, kNetworkByteOrder)),
            (Bytes{0, 4, 0,   0,   0,   0,   0,   0, 0, 0,
                   0, 5, 'a', 'b', 'c', 'd', 'e', 0, 0, 0}));
}

TEST(AnEncodedVarbind, OfAnUnknownTypeIsMalformed) {
  Bytes bytes =
      Encoded(Notify{{{{1, 3}, {Type::kNull, {}}}}}, kNetworkByteOrder);
  bytes[kHeaderSize + 1] = 7;
  EXPECT_THROW(Decoded(bytes), Malformed);
}

TEST(AnEncodedVarbind, WhoseContentIsNotOfItsTypeCannotBeWritten) {
  const Notify notify{{{{1, 3}, {Type::kInteger, std::string("1")}}}};
  EXPECT_THROW(Encoded(notify, 0), std::bad_variant_access);
}

TEST(ARegisterMessage, NamesAnUpperBoundOnlyForARange) {
  const Register plain{3, 127, 0, {1, 3}, 9};
  EXPECT_EQ(Payload(Encoded(plain, kNetworkByteOrder)),
            (Bytes{3, 127, 0, 0, 2, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 3}));
  const Register range{3, 127, 2, {1, 3}, 9};
  EXPECT_EQ(
      Payload(Encoded(range, kNetworkByteOrder)),
      (Bytes{3, 127, 2, 0, 2, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 3, 0, 0, 0, 9}));
}

// A message that is decoded and encoded again is the same, so nothing of it was
// lost or invented.
class EveryAgentXMessage
    : public testing::TestWithParam<std::tuple<std::uint8_t, std::size_t>> {
 protected:
  Bytes Message() const {
    const auto& [flags, sample] = GetParam();
    return Encoded(Samples()[sample], flags);
  }
};

TEST_P(EveryAgentXMessage, SurvivesDecoding) {
  const Pdu decoded = Decoded(Message());
  EXPECT_EQ(decoded.body.index(), std::get<std::size_t>(GetParam()));
  EXPECT_EQ(decoded.header.sessionId, 0x01020304U);
  EXPECT_EQ(decoded.header.transactionId, 5U);
  EXPECT_EQ(decoded.header.packetId, 6U);
  EXPECT_EQ(Encode(decoded), Message());
}

TEST_P(EveryAgentXMessage, TellsItsSizeInTheHeader) {
  EXPECT_EQ(MessageSize(Message().data()), Message().size());
}

// The header's size is made to agree, so that only the elements are short.
TEST_P(EveryAgentXMessage, IsMalformedOrAnotherWhenCutShort) {
  const Bytes whole = Message();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    Bytes cut(whole.begin(), whole.begin() + static_cast<long>(size));
    EXPECT_THROW(Decoded(cut), Malformed) << size;
    if (size < kHeaderSize) continue;
    const bool bigEndian = (cut[2] & kNetworkByteOrder) != 0;
    cut[bigEndian ? 19 : 16] = static_cast<std::uint8_t>(size - kHeaderSize);
    cut[bigEndian ? 18 : 17] =
        static_cast<std::uint8_t>((size - kHeaderSize) >> 8);
    try {
      EXPECT_EQ(Encode(Decoded(cut)), cut) << size;
    } catch (const Malformed&) {
    }
  }
}

TEST_P(EveryAgentXMessage, IsMalformedWithMoreBytesThanItsHeaderSays) {
  Bytes longer = Message();
  longer.resize(longer.size() + 4);
  EXPECT_THROW(Decoded(longer), Malformed);
}

// Damaged bytes are either still a message or recognised as none; reading
// beyond them would show under the sanitizers.
TEST_P(EveryAgentXMessage, IsDecodedSafelyWhenDamaged) {
  std::mt19937 random(4711);
  for (int round = 0; round < 100; ++round) {
    Bytes damaged = Message();
    for (int flips = 0; flips < 3; ++flips) {
      damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
    }
    try {
      Encode(Decoded(damaged));
    } catch (const Malformed&) {
    }
  }
}

std::string SampleName(
    const testing::TestParamInfo<EveryAgentXMessage::ParamType>& info) {
  const auto& [flags, sample] = info.param;
  return (flags == kLittleEndian ? "LittleEndian" : "BigEndian") +
         std::to_string(sample + 1);
}

INSTANTIATE_TEST_SUITE_P(
    InBothByteOrders, EveryAgentXMessage,
    testing::Combine(testing::Values(kLittleEndian, kNetworkByteOrder),
                     testing::Range<std::size_t>(0, std::variant_size_v<Body>)),
    SampleName);

TEST(AnUnknownAgentXMessage, IsMalformed) {
  Bytes bytes = Encoded(Ping{}, kNetworkByteOrder);
  for (const std::uint8_t type : {0, 19, 255}) {
    bytes[1] = type;
    EXPECT_THROW(Decoded(bytes), Malformed);
  }
}

TEST(AnAgentXMessageOfAnotherVersion, IsMalformed) {
  Bytes bytes = Encoded(Ping{}, kNetworkByteOrder);
  bytes[0] = 2;
  EXPECT_THROW(Decoded(bytes), Malformed);
}

TEST(AnOctetString, ThatClaimsMoreThanThereIsIsMalformed) {
  Bytes bytes = Encoded(AddAgentCaps{{1, 3}, "text"}, kNetworkByteOrder);
  const std::size_t length = kHeaderSize + 12;
  for (std::size_t i = 0; i < 4; ++i) bytes[length + i] = 0xff;
  EXPECT_THROW(Decoded(bytes), Malformed);
}

}  // namespace
}  // namespace testkit::agentx
