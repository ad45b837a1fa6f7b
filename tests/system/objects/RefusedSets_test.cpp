// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs that snmpset puts and that are refused, each with the error that RFC
// 3416, 4.2.5, asks for and the varbind that it is for. Nothing is changed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "Served.h"

namespace {

using snmp::ReadWrite;
using snmp::SetError;

enum class Mode : std::int32_t { Off = 1, Heat = 2, Cool = 4 };
enum class Alarm { Hot = 0, Cold = 1, Open = 9 };

// An object of each kind, by the number that ends its OID.
struct Objects {
  explicit Objects(snmp::Module& module)
      : integer(module, "1", 60, ReadWrite().Range(0, 90)),
        twoRanges(module, "2", 10, ReadWrite().Range(-1, -1).Range(10, 3600)),
        small(module, "3", std::int8_t{1}, ReadWrite()),
        gauge(module, "4", 7U, ReadWrite().Range(5, 4'000'000'000)),
        ticks(module, "5", snmp::TimeTicks(1), ReadWrite()),
        mode(module, "6", Mode::Off,
             ReadWrite().Values(Mode::Off, Mode::Heat, Mode::Cool)),
        flag(module, "7", true, ReadWrite()),
        text(module, "8", "ab", ReadWrite().Size(2, 4).Size(8)),
        mac(module, "9", std::array<std::uint8_t, 6>{}, ReadWrite()),
        date(module, "10", std::chrono::system_clock::time_point(),
             ReadWrite()),
        oid(module, "11", snmp::Oid("1.3.6"), ReadWrite()),
        address(module, "12", snmp::IpAddress(192, 0, 2, 1), ReadWrite()),
        alarms(module, "13", snmp::Bits<Alarm>(),
               ReadWrite().NamedBits(Alarm::Hot, Alarm::Cold, Alarm::Open)),
        number(module, "14", 1.5F, ReadWrite()),
        readOnly(module, "15", 1),
        counter(module, "16", snmp::Counter32{1}),
        counter64(module, "17", snmp::Counter64{1}),
        told(module, "18", [] { return 1; }),
        serial(module, "19", snmp::TestAndIncr{4}, ReadWrite()),
        absent(module, "20",
               snmp::GetSet([] { return std::optional<int>(); },
                            [](int) { return true; }),
               ReadWrite()),
        checked(module, "21", 2, ReadWrite()),
        applied(module, "22", 2, ReadWrite()),
        throwing(module, "23", 2, ReadWrite()),
        refusing(module, "24",
                 snmp::GetSet([] { return 1; }, [](int) { return false; }),
                 ReadWrite()) {
    checked.Check([](int after) {
      return after % 2 == 0 ? SetError::None : static_cast<SetError>(after);
    });
    applied.Apply([](int after) { return after % 2 == 0; });
    throwing.Check([](int) -> SetError { throw std::runtime_error("thrown"); });
  }

  snmp::Scalar<int> integer, twoRanges;
  snmp::Scalar<std::int8_t> small;
  snmp::Scalar<unsigned> gauge;
  snmp::Scalar<snmp::TimeTicks> ticks;
  snmp::Scalar<Mode> mode;
  snmp::Scalar<bool> flag;
  snmp::Scalar<std::string> text;
  snmp::Scalar<std::array<std::uint8_t, 6>> mac;
  snmp::Scalar<std::chrono::system_clock::time_point> date;
  snmp::Scalar<snmp::Oid> oid;
  snmp::Scalar<snmp::IpAddress> address;
  snmp::Scalar<snmp::Bits<Alarm>> alarms;
  snmp::Scalar<float> number;
  snmp::Scalar<int> readOnly;
  snmp::Scalar<snmp::Counter32> counter;
  snmp::Scalar<snmp::Counter64> counter64;
  snmp::Scalar<int> told;
  snmp::Scalar<snmp::TestAndIncr> serial;
  snmp::Scalar<int> absent, checked, applied, throwing, refusing;
};

// What snmpset is told behind the module's OID, and what it says.
struct Row {
  std::string instance;
  std::string type;
  std::string value;
  std::string error;
};

const std::vector<Row>& Rows() {
  static const std::vector<Row> rows{
      // An Integer32 of 0 to 90: types, then the range.
      {"1.0", "u", "5", "wrongType"},
      {"1.0", "t", "5", "wrongType"},
      {"1.0", "s", "5", "wrongType"},
      {"1.0", "x", "05", "wrongType"},
      {"1.0", "o", "1.3.6", "wrongType"},
      {"1.0", "a", "192.0.2.5", "wrongType"},
      {"1.0", "U", "5", "wrongType"},
      {"1.0", "F", "5", "wrongType"},
      {"1.0", "i", "-1", "wrongValue"},
      {"1.0", "i", "91", "wrongValue"},
      {"1.0", "i", "2147483647", "wrongValue"},
      {"1.0", "i", "-2147483648", "wrongValue"},
      // Instances that there can never be.
      {"1.1", "i", "5", "noCreation"},
      {"1.0.0", "i", "5", "noCreation"},
      {"1", "i", "5", "noCreation"},
      {"1.1", "s", "5", "wrongType"},
      {"1.1", "i", "91", "wrongValue"},
      {"99.0", "i", "5", "notWritable"},
      {"1.4294967295", "i", "5", "noCreation"},
      // Several ranges.
      {"2.0", "i", "0", "wrongValue"},
      {"2.0", "i", "-2", "wrongValue"},
      {"2.0", "i", "9", "wrongValue"},
      {"2.0", "i", "3601", "wrongValue"},
      // What the C++ type does not hold.
      {"3.0", "i", "128", "wrongValue"},
      {"3.0", "i", "-129", "wrongValue"},
      {"3.0", "u", "1", "wrongType"},
      // An Unsigned32 from 5 to 4,000,000,000.
      {"4.0", "i", "7", "wrongType"},
      {"4.0", "u", "4", "wrongValue"},
      {"4.0", "u", "4000000001", "wrongValue"},
      {"4.0", "s", "7", "wrongType"},
      // TimeTicks.
      {"5.0", "u", "7", "wrongType"},
      {"5.0", "i", "7", "wrongType"},
      // An enumeration.
      {"6.0", "i", "0", "wrongValue"},
      {"6.0", "i", "3", "wrongValue"},
      {"6.0", "i", "5", "wrongValue"},
      {"6.0", "u", "1", "wrongType"},
      // A TruthValue.
      {"7.0", "i", "0", "wrongValue"},
      {"7.0", "i", "3", "wrongValue"},
      {"7.0", "u", "1", "wrongType"},
      // An OCTET STRING of 2 to 4 or of 8 octets.
      {"8.0", "s", "", "wrongLength"},
      {"8.0", "s", "a", "wrongLength"},
      {"8.0", "s", "abcde", "wrongLength"},
      {"8.0", "x", "00010203040506", "wrongLength"},
      {"8.0", "s", "abcdefghi", "wrongLength"},
      {"8.0", "i", "5", "wrongType"},
      // A MacAddress.
      {"9.0", "x", "0001020304", "wrongLength"},
      {"9.0", "x", "00010203040506", "wrongLength"},
      {"9.0", "a", "192.0.2.5", "wrongType"},
      // A DateAndTime.
      {"10.0", "x", "07d001010000", "wrongLength"},
      {"10.0", "x", "07d0010100000000002b00", "wrongValue"},
      {"10.0", "x", "07d00d0100000000", "wrongValue"},
      {"10.0", "x", "07cd021d00000000", "wrongValue"},
      {"10.0", "x", "07d0010118000000", "wrongValue"},
      {"10.0", "x", "07d00101003c0000", "wrongValue"},
      {"10.0", "x", "07d0010100000a0a", "wrongValue"},
      {"10.0", "x", "07d001010000000020000000", "wrongLength"},
      // An OBJECT IDENTIFIER, an IpAddress.
      {"11.0", "s", "1.3.6", "wrongType"},
      {"11.0", "i", "1", "wrongType"},
      {"12.0", "x", "c0000205", "wrongType"},
      {"12.0", "u", "5", "wrongType"},
      // BITS with the names 0, 1 and 9.
      {"13.0", "x", "20", "wrongValue"},
      {"13.0", "x", "0080", "wrongValue"},
      {"13.0", "x", "000001", "wrongValue"},
      {"13.0", "i", "1", "wrongType"},
      // A float within an Opaque.
      {"14.0", "D", "1.5", "wrongLength"},
      {"14.0", "s", "1.5", "wrongType"},
      // What managers do not write.
      {"15.0", "i", "1", "notWritable"},
      {"15.0", "s", "1", "notWritable"},
      {"15.1", "i", "1", "notWritable"},
      {"16.0", "u", "1", "notWritable"},
      {"17.0", "U", "1", "notWritable"},
      {"18.0", "i", "1", "notWritable"},
      // A TestAndIncr of 4.
      {"19.0", "i", "3", "inconsistentValue"},
      {"19.0", "i", "-1", "wrongValue"},
      // An instance that there is not now.
      {"20.0", "i", "1", "inconsistentName"},
      {"20.0", "s", "1", "wrongType"},
      // What the application says.
      {"21.0", "i", "5", "genErr"},
      {"21.0", "i", "7", "wrongType"},
      {"21.0", "i", "9", "wrongEncoding"},
      {"21.0", "i", "11", "noCreation"},
      {"21.0", "i", "13", "resourceUnavailable"},
      {"22.0", "i", "1", "commitFailed"},
      {"23.0", "i", "1", "genErr"},
      {"24.0", "i", "1", "commitFailed"},
  };
  return rows;
}

class ARefusedSet : public testing::Test {
 protected:
  ARefusedSet() { served_.Start(); }

  static std::string Whole(const std::string& instance) {
    return "." + std::string(Served::kSubtree) + "." + instance;
  }
  std::vector<std::string> Walk() const {
    return served_.master.Manager().Objects(
        Whole("").substr(0, Whole("").size() - 1));
  }

  Served served_;
  Objects objects_{served_.module};
};

TEST_F(ARefusedSet, HasTheErrorThatItDeservesAndChangesNothing) {
  const std::vector<std::string> before = Walk();
  for (const Row& row : Rows()) {
    const std::string name = Whole(row.instance);
    EXPECT_EQ(served_.Set({name, row.type, row.value}), row.error + " " + name)
        << row.type << " " << row.value;
  }
  EXPECT_EQ(Walk(), before);
}

TEST_F(ARefusedSet, NamesTheVarbindThatIsRefusedAndChangesNoneOfTheOthers) {
  const std::vector<std::string> good{Whole("1.0"), "i", "90",
                                      Whole("8.0"), "s", "good",
                                      Whole("7.0"), "i", "2"};
  const std::vector<std::string> before = Walk();
  for (const Row& row :
       {Row{"3.0", "i", "128", "wrongValue"}, Row{"4.0", "i", "7", "wrongType"},
        Row{"8.1", "s", "abc", "noCreation"},
        Row{"15.0", "i", "7", "notWritable"},
        Row{"22.0", "i", "1", "commitFailed"},
        Row{"23.0", "i", "1", "genErr"}}) {
    for (std::size_t place = 0; place <= good.size(); place += 3) {
      std::vector<std::string> words = good;
      words.insert(words.begin() + static_cast<std::ptrdiff_t>(place),
                   {Whole(row.instance), row.type, row.value});
      EXPECT_EQ(served_.Set(words), row.error + " " + Whole(row.instance))
          << "behind " << place / 3 << " others";
    }
  }
  EXPECT_EQ(Walk(), before);
}

TEST_F(ARefusedSet, NamesTheFirstOfTwoThatAreRefused) {
  EXPECT_EQ(served_.Set({Whole("1.0"), "i", "90", Whole("8.0"), "s", "a",
                         Whole("3.0"), "i", "128"}),
            "wrongLength " + Whole("8.0"));
}

TEST_F(ARefusedSet, WantsTwoValuesOfOneObject) {
  EXPECT_EQ(served_.Set({Whole("1.0"), "i", "80", Whole("1.0"), "i", "81"}),
            "inconsistentValue " + Whole("1.0"));
  EXPECT_EQ(served_.Set({Whole("1.0"), "i", "80", Whole("1.0"), "i", "80"}),
            "None");
  EXPECT_EQ(objects_.integer.Get(), 80);
}

}  // namespace
