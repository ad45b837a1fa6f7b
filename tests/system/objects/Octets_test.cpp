// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// OCTET STRINGs and what is made of them, OBJECT IDENTIFIERs, addresses and
// BITS, from every source of a value, as the tools show and write them.
#include <array>
#include <chrono>
#include <cstdint>

#include "EverySource.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::system_clock;

enum class Alarm { Hot = 0, Cold = 7, Open = 8, Last = 31 };

TEST(AText, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::string>({
      {"", "\"\""},
      {"a", "STRING: \"a\"", "s a"},
      {"sixteen letters.", "STRING: \"sixteen letters.\"",
       "s sixteen letters."},
      {std::string("\0\1\x7f\x80\xff", 5), "Hex-STRING: 00 01 7F 80 FF ",
       "x 00017f80ff"},
  });
}

TEST(AByteVector, IsShownAndTakenFromEverySource) {
  CheckWithTools<snmp::Bytes>({
      {{}, "\"\""},
      {{0}, "Hex-STRING: 00 ", "x 00"},
      {{255, 0, 255}, "Hex-STRING: FF 00 FF ", "x ff00ff"},
  });
}

TEST(AnEmptyText, IsTakenFromAManager) {
  Served served;
  snmp::Scalar name(served.module, "1", "full", snmp::ReadWrite());
  served.Start();
  EXPECT_EQ(served.Set({Served::Name("1"), "s", ""}), "None");
  EXPECT_EQ(name.Get(), "");
}

TEST(AMacAddress, IsShownAndTakenFromEverySource) {
  CheckWithTools<std::array<std::uint8_t, 6>>({
      {{}, "Hex-STRING: 00 00 00 00 00 00 ", "x 000000000000"},
      {{0, 0, 0x5e, 0, 0x53, 0xff},
       "Hex-STRING: 00 00 5E 00 53 FF ",
       "x 00005e0053ff"},
  });
}

TEST(ADateAndTime, IsShownAndTakenFromEverySource) {
  CheckWithTools<system_clock::time_point>({
      {system_clock::time_point(),
       "Hex-STRING: 07 B2 01 01 00 00 00 00 2B 00 00 ",
       "x 07b20101000000002b0000"},
      {system_clock::time_point(seconds(951782400 + 86399)) + milliseconds(900),
       "Hex-STRING: 07 D0 02 1D 17 3B 3B 09 2B 00 00 ",
       "x 07d0021d173b3b092b0000"},
      {system_clock::time_point(seconds(4102444799)),
       "Hex-STRING: 08 33 0C 1F 17 3B 3B 00 2B 00 00 ",
       "x 08340101001d3b002b001e"},
  });
}

TEST(AnOid, IsShownAndTakenFromEverySource) {
  CheckWithTools<snmp::Oid>({
      {"0.0", "OID: .0.0", "o 0.0"},
      {"1.3.6.1.4.1.32473.0.2147483647", "OID: .1.3.6.1.4.1.32473.0.2147483647",
       "o 1.3.6.1.4.1.32473.0.2147483647"},
      {"2.39.4294967295", "OID: .2.39.4294967295", "o 2.39.4294967295"},
  });
}

TEST(AnIpAddress, IsShownAndTakenFromEverySource) {
  using snmp::IpAddress;
  CheckWithTools<IpAddress>({
      {IpAddress(0, 0, 0, 0), "IpAddress: 0.0.0.0", "a 0.0.0.0"},
      {IpAddress("192.0.2.254"), "IpAddress: 192.0.2.254", "a 192.0.2.254"},
      {IpAddress(255, 255, 255, 255), "IpAddress: 255.255.255.255",
       "a 255.255.255.255"},
  });
}

TEST(AnInetAddress, IsShownFromEverySourceAndTakenWithoutItsType) {
  using snmp::InetAddress;
  CheckWithTools<InetAddress>({
      {InetAddress(), "\"\""},
      {InetAddress("192.0.2.200"), "Hex-STRING: C0 00 02 C8 "},
      {InetAddress("2001:db8::ff"),
       "Hex-STRING: 20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 FF "},
      {InetAddress("host.example"), "STRING: \"host.example\"",
       "s host.example"},
  });
}

TEST(Bits, AreShownAndTakenFromEverySource) {
  using Alarms = snmp::Bits<Alarm>;
  CheckWithTools<Alarms>({
      {Alarms{}, "\"\""},
      {Alarms{Alarm::Hot, Alarm::Cold}, "Hex-STRING: 81 ", "x 81"},
      {Alarms{Alarm::Open}, "Hex-STRING: 00 80 ", "x 0080"},
      {Alarms{Alarm::Hot, Alarm::Last}, "Hex-STRING: 80 00 00 01 ",
       "x 80000001"},
  });
}

TEST(AnOpaque, IsShownFromEverySource) {
  CheckWithTools<snmp::Opaque>({
      {{std::string("\x04\x01\xff", 3)}, "OPAQUE: 04 01 FF "},
  });
}

}  // namespace
