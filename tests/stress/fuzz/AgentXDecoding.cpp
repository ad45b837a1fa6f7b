// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A message as bytes: what the decoder makes of them is what the tests' own
// codec makes of them, another reading of RFC 2741.
#include <algorithm>
#include <cstdint>

#include "Input.h"
#include "agentx/Decoder.h"
#include "support/AgentXReference.h"

namespace snmpsubagent::agentx {
namespace {

bool IsRequest(PduType type) {
  return PduType::Get <= type && type <= PduType::CleanupSet;
}

// The bytes with a header that fits their number, so that what is read is their
// content. Of odd sizes the last bytes go.
Bytes Framed(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, data + std::min<std::size_t>(size / 4 * 4, 4096));
  if (bytes.size() < kHeaderSize) bytes.resize(kHeaderSize);
  const std::size_t length = bytes.size() - kHeaderSize;
  const bool bigEndian = (bytes[2] & kNetworkByteOrder) != 0;
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[bigEndian ? 19 - i : 16 + i] =
        static_cast<std::uint8_t>(length >> (8 * i));
  }
  bytes[0] = 1;
  return bytes;
}

// The message as the reference reads it, encoded again; empty if it does not.
Bytes ReferenceReading(const Bytes& bytes) {
  try {
    return reference::Encode(Decoded(bytes));
  } catch (const reference::Malformed&) {
    return {};
  }
}

void CompareRequest(Decoder& decoder, const Header& header,
                    const Bytes& bytes) {
  const Bytes expected = ReferenceReading(bytes);
  const Request* const request =
      decoder.DecodeRequest(header, bytes.data() + kHeaderSize);
  Require((request != nullptr) == !expected.empty(),
          "a request is read by one of the two only");
  if (request) {
    Require(reference::Encode(ToReference(*request)) == expected,
            "a request is read as another");
  }
}

void CompareResponse(Decoder& decoder, const Header& header,
                     const Bytes& bytes) {
  const auto response =
      decoder.DecodeResponse(header, bytes.data() + kHeaderSize);
  const bool expected = !ReferenceReading(bytes).empty();
  Require(response.has_value() == expected,
          "a response is read by one of the two only");
  if (!response) return;
  const auto body = std::get<reference::Response>(Decoded(bytes).body);
  Require(response->sysUpTime == body.sysUpTime &&
              static_cast<std::uint16_t>(response->error) == body.error &&
              response->index == body.index,
          "a response is read as another");
}

void CompareClose(Decoder& decoder, const Header& header, const Bytes& bytes) {
  const auto reason = decoder.DecodeClose(header, bytes.data() + kHeaderSize);
  Require(reason.has_value() == !ReferenceReading(bytes).empty(),
          "a close is read by one of the two only");
}

void Compare(const Bytes& bytes) {
  // It is used for one message after the other, as in a session.
  static Decoder decoder;
  const auto header = DecodeHeader(bytes.data());
  Require(header.has_value(), "a sound header is not trusted");
  if (IsRequest(header->type)) {
    CompareRequest(decoder, *header, bytes);
  } else if (header->type == PduType::Response) {
    CompareResponse(decoder, *header, bytes);
  } else if (header->type == PduType::Close) {
    CompareClose(decoder, *header, bytes);
  } else {
    Require(!decoder.DecodeRequest(*header, bytes.data() + kHeaderSize),
            "what is no request is read as one");
  }
}

}  // namespace
}  // namespace snmpsubagent::agentx

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  using namespace snmpsubagent::agentx;
  Compare(Framed(data, size));
  return 0;
}
