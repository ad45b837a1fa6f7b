// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/MasterAddress.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/un.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

using snmpsubagent::detail::MasterAddress;

std::string Refused(const std::string& text) {
  try {
    const MasterAddress address(text);
    return "accepted";
  } catch (const std::invalid_argument& exception) {
    return exception.what();
  }
}

// The only address that is known, as "family host port".
std::string Known(const std::string& text) {
  const auto endpoints = MasterAddress(text).Known();
  if (endpoints.size() != 1) return std::to_string(endpoints.size());
  const sockaddr_storage& storage = endpoints[0].address;
  char host[INET6_ADDRSTRLEN] = "";
  if (storage.ss_family == AF_UNIX) {
    sockaddr_un address;
    std::memcpy(&address, &storage, sizeof address);
    return std::string("unix ") + address.sun_path;
  }
  if (storage.ss_family == AF_INET) {
    sockaddr_in address;
    std::memcpy(&address, &storage, sizeof address);
    inet_ntop(AF_INET, &address.sin_addr, host, sizeof host);
    return std::string(host) + " " + std::to_string(ntohs(address.sin_port));
  }
  sockaddr_in6 address;
  std::memcpy(&address, &storage, sizeof address);
  inet_ntop(AF_INET6, &address.sin6_addr, host, sizeof host);
  return std::string(host) + " " + std::to_string(ntohs(address.sin6_port));
}

TEST(AMasterAddress, IsAPathOrHostAndPort) {
  EXPECT_EQ(Known("unix:/var/agentx/master"), "unix /var/agentx/master");
  EXPECT_EQ(Known("tcp:127.0.0.1:705"), "127.0.0.1 705");
  EXPECT_EQ(Known("tcp6:[::1]:705"), "::1 705");
  EXPECT_EQ(Known("tcp6:2001:db8::5:65535"), "2001:db8::5 65535");
}

TEST(AMasterAddress, OfANameIsNotKnownAtOnce) {
  EXPECT_TRUE(MasterAddress("tcp:localhost:705").Known().empty());
}

TEST(AMasterAddress, OfANameThatThereIsNotSaysSo) {
  std::string reason;
  EXPECT_TRUE(
      MasterAddress("tcp:no-such-name.invalid:705").LookUp(reason).empty());
  EXPECT_THAT(reason, testing::AllOf(
                          testing::StartsWith(
                              "no connection to tcp:no-such-name.invalid:705: "
                              "the name no-such-name.invalid is not known"),
                          testing::EndsWith("add the name to /etc/hosts")));
}

TEST(AMasterAddress, OfAnyOtherFormIsRefusedWithTheFormsThatThereAre) {
  for (const char* text :
       {"", "unix:", "/var/agentx/master", "tcp:", "tcp:127.0.0.1",
        "tcp:127.0.0.1:", "tcp:127.0.0.1:0", "tcp:127.0.0.1:65536",
        "tcp:127.0.0.1:-5", "tcp:127.0.0.1:70a", "tcp::705", "tcp6:[]:705",
        "tcp:::1:705", "tcp:[::1]:705", "udp:127.0.0.1:705"}) {
    EXPECT_THAT(Refused(text),
                testing::AllOf(testing::HasSubstr(text),
                               testing::HasSubstr("tcp6:[address]:port")))
        << text;
  }
}

TEST(AMasterAddress, IsNoPathThatIsTooLongForASocket) {
  const std::size_t room = sizeof(sockaddr_un::sun_path);
  EXPECT_EQ(Known("unix:/" + std::string(room - 2, 'x')).size(), room + 4);
  EXPECT_NE(Refused("unix:/" + std::string(room - 1, 'x')), "accepted");
}

}  // namespace
