// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Decoder.h"

namespace snmpsubagent::agentx {
namespace {

constexpr std::uint8_t kVersion = 1;

bool IsBigEndian(std::uint8_t flags) {
  return (flags & kNetworkByteOrder) != 0;
}

void TakeContent(ElementReader& reader, ValueView& value) {
  switch (value.type) {
    case ValueType::Integer:
      value.number = static_cast<std::uint64_t>(
          static_cast<std::int32_t>(reader.Number<std::uint32_t>()));
      return;
    case ValueType::Counter32:
    case ValueType::Gauge32:
    case ValueType::TimeTicks:
      value.number = reader.Number<std::uint32_t>();
      return;
    case ValueType::Counter64:
      value.number = reader.Number<std::uint64_t>();
      return;
    case ValueType::OctetString:
    case ValueType::IpAddress:
    case ValueType::Opaque:
      value.octets = reader.OctetString();
      return;
    case ValueType::ObjectIdentifier:
      value.oid = reader.ObjectIdentifier();
      return;
    case ValueType::Null:
    case ValueType::NoSuchObject:
    case ValueType::NoSuchInstance:
    case ValueType::EndOfMibView:
      return;
  }
  reader.Fail();
}

void TakeVarbind(ElementReader& reader, Varbind& varbind) {
  varbind.value.type = static_cast<ValueType>(reader.Number<std::uint16_t>());
  reader.Skip(2);
  varbind.name = reader.ObjectIdentifier();
  TakeContent(reader, varbind.value);
}

}  // namespace

std::optional<Header> DecodeHeader(const std::uint8_t* bytes) {
  ElementReader reader(bytes, kHeaderSize, IsBigEndian(bytes[2]), nullptr);
  const std::uint8_t version = reader.Octet();
  Header header;
  header.type = static_cast<PduType>(reader.Octet());
  header.flags = reader.Octet();
  reader.Skip(1);
  header.sessionId = reader.Number<std::uint32_t>();
  header.transactionId = reader.Number<std::uint32_t>();
  header.packetId = reader.Number<std::uint32_t>();
  header.payloadLength = reader.Number<std::uint32_t>();
  if (version != kVersion) return {};
  if (header.payloadLength % 4 != 0) return {};
  if (header.payloadLength > kMaxPayload) return {};
  return header;
}

ElementReader Decoder::ReaderOf(const Header& header,
                                const std::uint8_t* payload) {
  const std::size_t room = ElementReader::RoomFor(header.payloadLength);
  if (ids_.size() < room) ids_.resize(room);
  return {payload, header.payloadLength, IsBigEndian(header.flags),
          ids_.data()};
}

void Decoder::TakeRanges(ElementReader& reader) {
  ranges_.clear();
  while (!reader.AtEnd()) {
    SearchRange& range = ranges_.emplace_back();
    range.start = reader.ObjectIdentifier(range.include);
    range.end = reader.ObjectIdentifier();
  }
  request_.ranges = &ranges_;
}

void Decoder::TakeVarbinds(ElementReader& reader) {
  varbinds_.clear();
  while (!reader.AtEnd()) TakeVarbind(reader, varbinds_.emplace_back());
  request_.varbinds = &varbinds_;
}

void Decoder::TakeContext(ElementReader& reader) {
  const bool given = (request_.header.flags & kNonDefaultContext) != 0;
  if (given) request_.context = reader.OctetString();
}

void Decoder::TakeBody(ElementReader& reader) {
  switch (request_.header.type) {
    case PduType::Get:
    case PduType::GetNext:
      TakeContext(reader);
      return TakeRanges(reader);
    case PduType::GetBulk:
      TakeContext(reader);
      request_.nonRepeaters = reader.Number<std::uint16_t>();
      request_.maxRepetitions = reader.Number<std::uint16_t>();
      return TakeRanges(reader);
    case PduType::TestSet:
      TakeContext(reader);
      return TakeVarbinds(reader);
    case PduType::CommitSet:
    case PduType::UndoSet:
    case PduType::CleanupSet:
      return;
    default:
      return reader.Fail();
  }
}

const Request* Decoder::DecodeRequest(const Header& header,
                                      const std::uint8_t* payload) {
  request_ = Request();
  request_.header = header;
  ElementReader reader = ReaderOf(header, payload);
  TakeBody(reader);
  return reader.Failed() || !reader.AtEnd() ? nullptr : &request_;
}

std::optional<Response> Decoder::DecodeResponse(const Header& header,
                                                const std::uint8_t* payload) {
  ElementReader reader = ReaderOf(header, payload);
  Response response;
  response.sysUpTime = reader.Number<std::uint32_t>();
  response.error = static_cast<Error>(reader.Number<std::uint16_t>());
  response.index = reader.Number<std::uint16_t>();
  TakeVarbinds(reader);
  if (reader.Failed()) return {};
  return response;
}

std::optional<CloseReason> Decoder::DecodeClose(const Header& header,
                                                const std::uint8_t* payload) {
  ElementReader reader = ReaderOf(header, payload);
  const auto reason = static_cast<CloseReason>(reader.Octet());
  reader.Skip(3);
  if (reader.Failed() || !reader.AtEnd()) return {};
  return reason;
}

}  // namespace snmpsubagent::agentx
