// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/MessageStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace snmpsubagent::agentx {
namespace {

using Bytes = std::vector<std::uint8_t>;

// A Ping with that packet id and a payload of so many bytes, all of them the
// id.
Bytes Ping(std::uint8_t id, std::size_t payload) {
  Bytes bytes{1, 13, kNetworkByteOrder, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, id};
  for (const int shift : {24, 16, 8, 0}) {
    bytes.push_back(static_cast<std::uint8_t>(payload >> shift));
  }
  bytes.insert(bytes.end(), payload, id);
  return bytes;
}

Bytes Joined(const std::vector<Bytes>& parts) {
  Bytes all;
  for (const Bytes& part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

// Packet ids and sizes of the messages that there are now, as "1:8 ".
std::string Taken(MessageStream& stream) {
  std::string text;
  while (const auto message = stream.Next()) {
    const std::uint32_t id = message->header.packetId;
    const std::size_t size = message->header.payloadLength;
    const bool isSound =
        std::all_of(message->payload, message->payload + size,
                    [&](std::uint8_t byte) { return byte == id; });
    text += std::to_string(id) + ":" + std::to_string(size) +
            (isSound ? " " : "? ");
  }
  return text;
}

TEST(AMessageStream, GivesTheMessagesThatArriveTogether) {
  const Bytes all = Joined({Ping(1, 8), Ping(2, 0), Ping(3, 400)});
  MessageStream stream;
  stream.Add(all.data(), all.size());
  EXPECT_EQ(Taken(stream), "1:8 2:0 3:400 ");
}

TEST(AMessageStream, GivesTheSameMessagesHoweverTheyArrive) {
  const Bytes all = Joined({Ping(1, 8), Ping(2, 0), Ping(3, 100)});
  for (std::size_t piece = 1; piece <= all.size(); ++piece) {
    MessageStream stream;
    std::string text;
    for (std::size_t from = 0; from < all.size(); from += piece) {
      const Bytes bytes(all.begin() + static_cast<std::ptrdiff_t>(from),
                        all.begin() + static_cast<std::ptrdiff_t>(
                                          std::min(all.size(), from + piece)));
      stream.Add(bytes.data(), bytes.size());
      text += Taken(stream);
    }
    EXPECT_EQ(text, "1:8 2:0 3:100 ") << "in pieces of " << piece;
  }
}

TEST(AMessageStream, IsBrokenBehindAHeaderOfAnotherVersion) {
  Bytes odd = Ping(2, 0);
  odd[0] = 2;
  const Bytes all = Joined({Ping(1, 0), odd, Ping(3, 0)});
  MessageStream stream;
  stream.Add(all.data(), all.size());
  EXPECT_EQ(Taken(stream), "1:0 ");
  EXPECT_TRUE(stream.Broken());
}

TEST(AMessageStream, BeginsAnewWithoutWhatWasLeft) {
  const Bytes first = Ping(1, 8);
  MessageStream stream;
  stream.Add(first.data(), first.size() - 1);
  EXPECT_EQ(Taken(stream), "");
  stream.Reset();
  const Bytes second = Ping(2, 4);
  stream.Add(second.data(), second.size());
  EXPECT_EQ(Taken(stream), "2:4 ");
}

}  // namespace
}  // namespace snmpsubagent::agentx
