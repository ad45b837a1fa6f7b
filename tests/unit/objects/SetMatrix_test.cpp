// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs of one varbind over every type: what is refused, with the error of RFC
// 3416, section 4.2.5, and what is taken and comes back as it was set.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using wire::Type;

enum class Mode : std::int8_t { Off = 1, Heat = 2, Cool = 4 };
enum class Alarm { Hot, Cold, Open, Far = 9 };

// One writable object of every kind.
struct Objects {
  explicit Objects(snmp::Module& module) : m(module) {}

  snmp::Module& m;
  using RW = snmp::ReadWrite;
  snmp::Scalar<int> integer{m, "1", 1, RW()};
  snmp::Scalar<int> ranged{m, "2", 10, RW().Range(-1, -1).Range(10, 3600)};
  snmp::Scalar<std::int8_t> small{m, "3", std::int8_t{1}, RW()};
  snmp::Scalar<std::uint8_t> smallUnsigned{m, "4", std::uint8_t{1}, RW()};
  snmp::Scalar<unsigned> gauge{m, "5", 1U, RW()};
  snmp::Scalar<unsigned> rangedGauge{
      m, "6", 5U, RW().Range(0, 9).Range(4294967295, 4294967295)};
  snmp::Scalar<bool> truth{m, "7", true, RW()};
  snmp::Scalar<Mode> mode{m, "8", Mode::Off,
                          RW().Values(Mode::Off, Mode::Heat, Mode::Cool)};
  snmp::Scalar<snmp::TimeTicks> ticks{m, "9", snmp::TimeTicks(1), RW()};
  snmp::Scalar<std::string> text{m, "10", "text", RW()};
  snmp::Scalar<std::string> sized{m, "11", "text", RW().Size(0, 0).Size(3, 5)};
  snmp::Scalar<snmp::Bytes> bytes{m, "12", snmp::Bytes{1, 2}, RW()};
  snmp::Scalar<std::array<std::uint8_t, 6>> mac{
      m, "13", std::array<std::uint8_t, 6>{1, 2, 3, 4, 5, 6}, RW()};
  snmp::Scalar<std::chrono::system_clock::time_point> date{
      m, "14", std::chrono::system_clock::time_point(), RW()};
  snmp::Scalar<snmp::Bits<Alarm>> bits{m, "15", snmp::Bits<Alarm>{Alarm::Hot},
                                       RW()};
  snmp::Scalar<snmp::Bits<Alarm>> namedBits{
      m, "16", snmp::Bits<Alarm>{Alarm::Hot},
      RW().NamedBits(Alarm::Hot, Alarm::Cold, Alarm::Far)};
  snmp::Scalar<snmp::Oid> oid{m, "17", snmp::Oid("1.3"), RW()};
  snmp::Scalar<snmp::IpAddress> ip{m, "18", snmp::IpAddress(192, 0, 2, 1),
                                   RW()};
  snmp::Scalar<snmp::InetAddress> inet{m, "19", snmp::InetAddress("192.0.2.1"),
                                       RW()};
  snmp::Scalar<snmp::Opaque> opaque{m, "20", snmp::Opaque{"abc"}, RW()};
  snmp::Scalar<snmp::Opaque> sizedOpaque{m, "21", snmp::Opaque{"abc"},
                                         RW().Size(3)};
  snmp::Scalar<float> single{m, "22", 1.5F, RW()};
  snmp::Scalar<double> twice{m, "23", 1.5, RW()};
  snmp::Scalar<snmp::TestAndIncr> spin{m, "24", snmp::TestAndIncr{7}, RW()};
  snmp::Scalar<int> readOnly{m, "25", 1};
  snmp::Scalar<snmp::Counter32> counter{m, "26", snmp::Counter32{1}};
  snmp::Scalar<snmp::Counter64> bigCounter{m, "27", snmp::Counter64{1}};
  snmp::Scalar<int> told{m, "28", [] { return 1; }};
  snmp::Scalar<int> absent{
      m, "29", snmp::GetSet([] { return std::optional<int>(); }, [](int) {}),
      RW()};
  snmp::Scalar<std::uint16_t> medium{m, "30", std::uint16_t{1}, RW()};
  snmp::Scalar<std::int16_t> mediumSigned{m, "31", std::int16_t{1}, RW()};
};

// A value of each type that a varbind can have.
const std::vector<wire::Value>& EachType() {
  static const std::vector<wire::Value> values{
      {Type::kInteger, std::int32_t{1}},
      {Type::kOctetString, std::string("text")},
      {Type::kNull, {}},
      {Type::kObjectId, wire::Oid{1, 3, 6}},
      {Type::kIpAddress, std::string("\xc0\0\2\1", 4)},
      {Type::kCounter32, std::uint32_t{1}},
      {Type::kGauge32, std::uint32_t{1}},
      {Type::kTimeTicks, std::uint32_t{1}},
      {Type::kOpaque, std::string("abc")},
      {Type::kCounter64, std::uint64_t{1}},
      {Type::kNoSuchObject, {}},
      {Type::kNoSuchInstance, {}},
      {Type::kEndOfMibView, {}}};
  return values;
}

struct Kind {
  const char* oid;
  Type type;
};

const std::vector<Kind>& Writable() {
  static const std::vector<Kind> kinds{
      {"1", Type::kInteger},      {"2", Type::kInteger},
      {"3", Type::kInteger},      {"4", Type::kGauge32},
      {"5", Type::kGauge32},      {"6", Type::kGauge32},
      {"7", Type::kInteger},      {"8", Type::kInteger},
      {"9", Type::kTimeTicks},    {"10", Type::kOctetString},
      {"11", Type::kOctetString}, {"12", Type::kOctetString},
      {"13", Type::kOctetString}, {"14", Type::kOctetString},
      {"15", Type::kOctetString}, {"16", Type::kOctetString},
      {"17", Type::kObjectId},    {"18", Type::kIpAddress},
      {"19", Type::kOctetString}, {"20", Type::kOpaque},
      {"21", Type::kOpaque},      {"22", Type::kOpaque},
      {"23", Type::kOpaque},      {"24", Type::kInteger},
      {"29", Type::kInteger},     {"30", Type::kGauge32},
      {"31", Type::kInteger}};
  return kinds;
}

class ASet : public testing::Test {
 protected:
  void SetUp() override { device.Connect(); }

  Device device;
  snmp::Module module{device.agent, kBase};
  Objects objects{module};
};

// 27 objects by 12 types: before all else that may be wrong with them.
TEST_F(ASet, OfAnotherTypeIsWrongType) {
  const std::string before = device.Walk("0");
  int refused = 0;
  for (const Kind& kind : Writable()) {
    for (const wire::Value& value : EachType()) {
      if (value.type == kind.type) continue;
      for (const char* instance : {".0", ".1", ""}) {
        EXPECT_EQ(device.Set({{kind.oid + std::string(instance), value}}),
                  "wrongType 1")
            << kind.oid << instance << " as type "
            << static_cast<int>(value.type);
      }
      ++refused;
    }
  }
  EXPECT_EQ(refused, 27 * 12);
  EXPECT_EQ(device.Walk("0"), before);
}

TEST_F(ASet, OfWhatNobodyWritesIsNotWritable) {
  const std::string before = device.Walk("0");
  for (const char* oid : {"25.0", "25.1", "25", "26.0", "27.0", "28.0", "0.0",
                          "99.0", "99", ".1.3.6.1.2.1.1.1.0", "."}) {
    for (const wire::Value& value : EachType()) {
      EXPECT_EQ(device.Set({{oid, value}}), "notWritable 1") << oid;
    }
  }
  EXPECT_EQ(device.Walk("0"), before);
}

std::string Float(const std::string& bits) { return "\x9f\x78\4" + bits; }
std::string Double(const std::string& bits) { return "\x9f\x79\x8" + bits; }

std::string Date(int year, int month, int day, int hour, int minute, int second,
                 int tenth, const std::string& zone = "") {
  std::string octets;
  for (const int field :
       {year >> 8, year & 255, month, day, hour, minute, second, tenth}) {
    octets.push_back(static_cast<char>(field));
  }
  return octets + zone;
}

wire::Value OpaqueOf(std::string octets) {
  return {Type::kOpaque, std::move(octets)};
}
wire::Value Address(std::string octets) {
  return {Type::kIpAddress, std::move(octets)};
}
const std::string kZone("+\1\x1e", 3);

struct Refused {
  const char* oid;
  wire::Value value;
  const char* error;
};

TEST_F(ASet, OfAValueThatDoesNotFitIsRefusedWithItsError) {
  const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  const std::vector<Refused> table{
      {"2.0", Int(-2), "wrongValue"},
      {"2.0", Int(0), "wrongValue"},
      {"2.0", Int(9), "wrongValue"},
      {"2.0", Int(3601), "wrongValue"},
      {"2.0", Int(lowest), "wrongValue"},
      {"2.0", Int(highest), "wrongValue"},
      {"3.0", Int(-129), "wrongValue"},
      {"3.0", Int(128), "wrongValue"},
      {"3.0", Int(257), "wrongValue"},
      {"3.0", Int(lowest), "wrongValue"},
      {"4.0", Gauge(256), "wrongValue"},
      {"4.0", Gauge(4294967295), "wrongValue"},
      {"6.0", Gauge(10), "wrongValue"},
      {"6.0", Gauge(4294967294), "wrongValue"},
      {"6.0", Gauge(2147483648), "wrongValue"},
      {"7.0", Int(0), "wrongValue"},
      {"7.0", Int(3), "wrongValue"},
      {"7.0", Int(-1), "wrongValue"},
      {"7.0", Int(257), "wrongValue"},
      {"8.0", Int(0), "wrongValue"},
      {"8.0", Int(3), "wrongValue"},
      {"8.0", Int(5), "wrongValue"},
      {"8.0", Int(258), "wrongValue"},
      {"8.0", Int(-1), "wrongValue"},
      {"11.0", Octets("a"), "wrongLength"},
      {"11.0", Octets("ab"), "wrongLength"},
      {"11.0", Octets("abcdef"), "wrongLength"},
      {"11.0", Octets(std::string(70000, 'x')), "wrongLength"},
      {"13.0", Octets(""), "wrongLength"},
      {"13.0", Octets("12345"), "wrongLength"},
      {"13.0", Octets("1234567"), "wrongLength"},
      {"14.0", Octets(""), "wrongLength"},
      {"14.0", Octets("2026-11-22"), "wrongLength"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 0, 0, "+")), "wrongLength"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 0, 0, kZone + "0")),
       "wrongLength"},
      {"14.0", Octets(Date(2026, 0, 1, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 13, 1, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 0, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 32, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 4, 31, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 2, 29, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2100, 2, 29, 0, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 24, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 60, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 61, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 0, 10)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 255, 0, 0, 0)), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 0, 0, {'*', 0, 0})), "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 0, 0, {'+', 14, 0})),
       "wrongValue"},
      {"14.0", Octets(Date(2026, 1, 1, 0, 0, 0, 0, {'-', 0, 60})),
       "wrongValue"},
      {"16.0", Octets("\x20"), "wrongValue"},
      {"16.0", Octets("\xc1"), "wrongValue"},
      {"16.0", Octets(std::string("\xc0\x80", 2)), "wrongValue"},
      {"16.0", Octets(std::string("\0\0\1", 3)), "wrongValue"},
      {"18.0", Address(""), "wrongLength"},
      {"18.0", Address("abc"), "wrongLength"},
      {"18.0", Address("abcde"), "wrongLength"},
      {"18.0", Address(std::string(16, '\0')), "wrongLength"},
      {"19.0", Octets(std::string(256, 'x')), "wrongLength"},
      {"21.0", OpaqueOf("ab"), "wrongLength"},
      {"21.0", OpaqueOf("abcd"), "wrongLength"},
      {"22.0", OpaqueOf(""), "wrongLength"},
      {"22.0", OpaqueOf(Float("abc")), "wrongLength"},
      {"22.0", OpaqueOf(Float("abcde")), "wrongLength"},
      {"22.0", OpaqueOf(Double("12345678")), "wrongLength"},
      {"22.0", OpaqueOf("\x9f\x79\4abcd"), "wrongEncoding"},
      {"22.0", OpaqueOf("\x9e\x78\4abcd"), "wrongEncoding"},
      {"22.0", OpaqueOf("\x9f\x78\5abcd"), "wrongEncoding"},
      {"23.0", OpaqueOf(Float("abcd")), "wrongLength"},
      {"23.0",
       OpaqueOf("\x9f\x78\x8"
                "abcdefgh"),
       "wrongEncoding"},
      {"23.0",
       OpaqueOf("\x9f\x79\4"
                "abcdefgh"),
       "wrongEncoding"},
      {"24.0", Int(-1), "wrongValue"},
      {"24.0", Int(lowest), "wrongValue"},
      {"24.0", Int(6), "inconsistentValue"},
      {"24.0", Int(8), "inconsistentValue"},
      {"24.0", Int(0), "inconsistentValue"},
      {"29.0", Int(1), "inconsistentName"},
      {"30.0", Gauge(65536), "wrongValue"},
      {"31.0", Int(32768), "wrongValue"},
      {"31.0", Int(-32769), "wrongValue"},
      // What is wrong with the value comes before what is wrong with the name.
      {"2.1", Int(9), "wrongValue"},
      {"11.1", Octets("a"), "wrongLength"},
      {"22.1", OpaqueOf("\x9f\x79\4abcd"), "wrongEncoding"},
      {"13.0.0", Octets("x"), "wrongLength"},
      {"1", Int(1), "noCreation"},
      {"1.1", Int(1), "noCreation"},
      {"1.0.0", Int(1), "noCreation"},
      {"1.0.1", Int(1), "noCreation"},
      {"1.4294967295", Int(1), "noCreation"},
      {"5.1", Gauge(1), "noCreation"},
      {"9.1", Ticks(1), "noCreation"},
      {"10.1", Octets("a"), "noCreation"},
      {"17.1", ObjectId(".1.3"), "noCreation"},
      {"18.1", Address("abcd"), "noCreation"},
      {"20.1", OpaqueOf("a"), "noCreation"},
      {"24.1", Int(7), "noCreation"},
      {"29.1", Int(7), "noCreation"}};
  const std::string before = device.Walk("0");
  for (const Refused& refused : table) {
    EXPECT_EQ(device.Set({{refused.oid, refused.value}}),
              refused.error + std::string(" 1"))
        << refused.oid;
    // Whatever stands before it in the PDU, and behind.
    EXPECT_EQ(device.Set({{"1.0", Int(77)},
                          {refused.oid, refused.value},
                          {"10.0", Octets("not to be seen")}}),
              refused.error + std::string(" 2"))
        << refused.oid;
  }
  EXPECT_EQ(device.Walk("0"), before);
}

TEST_F(ASet, ComesBackAsItWasSet) {
  const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  std::string allOctets;
  for (int octet = 0; octet < 256; ++octet) {
    allOctets.push_back(static_cast<char>(octet));
  }
  wire::Oid longOid(128, 4294967295);
  longOid[0] = 2;
  const std::vector<Assignment> table{
      {"1.0", Int(lowest)},
      {"1.0", Int(-1)},
      {"1.0", Int(highest)},
      {"2.0", Int(-1)},
      {"2.0", Int(10)},
      {"2.0", Int(3600)},
      {"3.0", Int(-128)},
      {"3.0", Int(127)},
      {"4.0", Gauge(255)},
      {"4.0", Gauge(0)},
      {"5.0", Gauge(4294967295)},
      {"5.0", Gauge(2147483648)},
      {"5.0", Gauge(0)},
      {"6.0", Gauge(0)},
      {"6.0", Gauge(9)},
      {"6.0", Gauge(4294967295)},
      {"7.0", Int(2)},
      {"7.0", Int(1)},
      {"8.0", Int(4)},
      {"9.0", Ticks(4294967295)},
      {"9.0", Ticks(0)},
      {"10.0", Octets("")},
      {"10.0", Octets(allOctets)},
      {"10.0", Octets(std::string(1, '\0'))},
      {"10.0", Octets(std::string(65536, 'x'))},
      {"11.0", Octets("")},
      {"11.0", Octets("abc")},
      {"11.0", Octets("abcde")},
      {"12.0", Octets(allOctets)},
      {"12.0", Octets("")},
      {"13.0", Octets(std::string("\0\xff\0\xff\0\xff", 6))},
      {"15.0", Octets("")},
      {"15.0", Octets(std::string("\xff\xff\0", 3))},
      {"16.0", Octets("")},
      {"16.0", Octets(std::string("\xc0\x40", 2))},
      {"16.0", Octets(std::string("\x80\0\0\0", 4))},
      {"17.0", ObjectId(".1.3.6.1.4294967295.0.1")},
      {"17.0", ObjectId(".0.0")},
      {"17.0", {Type::kObjectId, longOid}},
      {"18.0", Address(std::string("\0\0\0\0", 4))},
      {"18.0", Address("\xff\xfe\xfd\xfc")},
      {"19.0", Octets("")},
      {"19.0", Octets(std::string(255, '\xff'))},
      {"20.0", OpaqueOf("")},
      {"20.0", OpaqueOf(allOctets)},
      {"21.0", OpaqueOf(std::string("\0\0\0", 3))},
      {"22.0", OpaqueOf(Float(std::string("\x3f\x80\0\0", 4)))},
      {"22.0", OpaqueOf(Float(std::string("\x7f\x80\0\0", 4)))},
      {"22.0", OpaqueOf(Float(std::string("\x80\0\0\0", 4)))},
      {"23.0",
       OpaqueOf(Double(std::string("\xff\xef\xff\xff\xff\xff\xff\xff", 8)))},
      {"23.0", OpaqueOf(Double(std::string("\0\0\0\0\0\0\0\1", 8)))},
      {"30.0", Gauge(65535)},
      {"31.0", Int(-32768)}};
  for (const Assignment& assignment : table) {
    EXPECT_EQ(device.Set({assignment}), "noError") << assignment.oid;
    const wire::Response response =
        device.Master().Ask(wire::Get{{{Id(assignment.oid), false, {}}}});
    ASSERT_EQ(response.varbinds.size(), 1U);
    EXPECT_TRUE(response.varbinds[0].value == assignment.value)
        << assignment.oid << " " << Text(response, false);
  }
}

TEST_F(ASet, OfADateIsAMoment) {
  using namespace std::chrono;
  const auto set = [&](const std::string& octets) {
    EXPECT_EQ(device.Set({{"14.0", Octets(octets)}}), "noError");
    return objects.date.Get();
  };
  const auto noon = system_clock::from_time_t(1772366400);  // 2026-03-01 12:00
  EXPECT_EQ(set(Date(2026, 3, 1, 12, 0, 0, 0)), noon);
  EXPECT_EQ(set(Date(2026, 3, 1, 12, 0, 0, 9)), noon + milliseconds(900));
  EXPECT_EQ(set(Date(2026, 3, 1, 13, 30, 0, 0, {'+', 1, 30})), noon);
  EXPECT_EQ(set(Date(2026, 2, 28, 22, 1, 0, 0, {'-', 13, 59})), noon);
  EXPECT_EQ(set(Date(2024, 2, 29, 23, 59, 60, 0)),
            system_clock::from_time_t(1709251200));  // 2024-03-01 00:00
  EXPECT_EQ(device.Get("14.0"),
            "OCTET STRING \"\\7\\232\\3\\1\\0\\0\\0\\0+\\0\\0\"");
  set(Date(1969, 12, 31, 23, 59, 59, 5));
  EXPECT_EQ(device.Get("14.0"),
            "OCTET STRING \"\\7\\177\\12\\31\\23;;\\5+\\0\\0\"");
}

TEST_F(ASet, OfADateThatATimePointCannotTellIsRefused) {
  for (const int year : {0, 1677, 2262, 65535}) {
    EXPECT_EQ(device.Set({{"14.0", Octets(Date(year, 1, 1, 0, 0, 0, 0))}}),
              "wrongValue 1")
        << year;
  }
  const std::string first = Date(1678, 1, 1, 0, 0, 0, 0, {'+', 0, 0});
  EXPECT_EQ(device.Set({{"14.0", Octets(first)}}), "noError");
  const std::string last = Date(2261, 12, 31, 23, 59, 60, 9, {'-', 13, 59});
  EXPECT_EQ(device.Set({{"14.0", Octets(last)}}), "noError");
  EXPECT_EQ(device.Get("14.0"),
            "OCTET STRING \"\\8\\214\\1\\1\\13;\\0\\9+\\0\\0\"");
}

TEST_F(ASet, OfATestAndIncrTakesItsValueAndCountsOn) {
  EXPECT_EQ(device.Set({{"24.0", Int(7)}}), "noError");
  EXPECT_EQ(device.Get("24.0"), "INTEGER 8");
  EXPECT_EQ(device.Set({{"24.0", Int(7)}}), "inconsistentValue 1");
  objects.spin.Set({std::numeric_limits<std::int32_t>::max()});
  EXPECT_EQ(device.Set({{"24.0", Int(2147483647)}}), "noError");
  EXPECT_EQ(device.Get("24.0"), "INTEGER 0");
}

TEST_F(ASet, OfNothingDoesNothing) { EXPECT_EQ(device.Set({}), "noError"); }

TEST_F(ASet, KeepsToTheConstraintsThatItsObjectWasBuiltWith) {
  auto access = snmp::ReadWrite().Range(0, 100);
  const snmp::Scalar first(module, "50", 5, access);
  const snmp::Scalar second(module, "51", 5, access.Range(200, 300));
  auto copy = access;
  const snmp::Scalar third(module, "52", 5, copy.Range(400, 500));
  EXPECT_EQ(device.Set({{"50.0", Int(250)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"51.0", Int(250)}}), "noError");
  EXPECT_EQ(device.Set({{"51.0", Int(450)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"52.0", Int(450)}}), "noError");
}

TEST_F(ASet, OfAnEnumerationIsTakenWhateverIsBelowIt) {
  enum class Wide : std::uint64_t { One = 1, Two = 2, Three = 3 };
  enum class Signed : std::int64_t { Less = -1, More = 1 };
  snmp::Scalar wide(module, "50", Wide::One,
                    snmp::ReadWrite().Values(Wide::One, Wide::Two));
  snmp::Scalar signedOne(module, "51", Signed::More,
                         snmp::ReadWrite().Values(Signed::Less, Signed::More));
  EXPECT_EQ(device.Set({{"50.0", Int(2)}}), "noError");
  EXPECT_EQ(wide.Get(), Wide::Two);
  EXPECT_EQ(device.Set({{"50.0", Int(3)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"50.0", Int(-1)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"51.0", Int(-1)}}), "noError");
  EXPECT_EQ(signedOne.Get(), Signed::Less);
}

TEST_F(ASet, OfATruthValueIsOneOfTheValuesThatItMayHave) {
  const snmp::Scalar either(module, "50", true,
                            snmp::ReadWrite().Values(true, false));
  const snmp::Scalar onlyOn(module, "51", true, snmp::ReadWrite().Values(true));
  EXPECT_EQ(device.Set({{"50.0", Int(2)}}), "noError");
  EXPECT_EQ(device.Set({{"50.0", Int(0)}}), "wrongValue 1");
  EXPECT_EQ(device.Set({{"51.0", Int(2)}}), "wrongValue 1");
}

}  // namespace
