// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>
#include <snmpsubagent/Syntax.h>

#include <chrono>
#include <ctime>
#include <string>

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;
using std::chrono::system_clock;

std::string Octets(int year, int month, int day, int hour, int minute,
                   int second, int tenth = 0) {
  std::string octets;
  for (const int field : {year >> 8, year & 0xff, month, day, hour, minute,
                          second, tenth, int{'+'}, 0, 0}) {
    octets.push_back(static_cast<char>(field));
  }
  return octets;
}

system_clock::time_point Moment(std::chrono::seconds sinceEpoch) {
  return system_clock::time_point(sinceEpoch);
}

// Also where the C library's calendar ends earlier.
TEST(ADateAndTime, IsShownAndTakenAsLongAsATimePointLasts) {
  const struct {
    std::chrono::seconds sinceEpoch;
    std::string octets;
  } kMoments[] = {{-9214560000s, Octets(1678, 1, 1, 0, 0, 0)},
                  {-2203977600s, Octets(1900, 2, 28, 0, 0, 0)},
                  {-2203891200s, Octets(1900, 3, 1, 0, 0, 0)},
                  {-1s, Octets(1969, 12, 31, 23, 59, 59)},
                  {0s, Octets(1970, 1, 1, 0, 0, 0)},
                  {951868799s, Octets(2000, 2, 29, 23, 59, 59)},
                  {2147483647s, Octets(2038, 1, 19, 3, 14, 7)},
                  {2147483648s, Octets(2038, 1, 19, 3, 14, 8)},
                  {4107542400s, Octets(2100, 3, 1, 0, 0, 0)},
                  {9214646399s, Octets(2261, 12, 31, 23, 59, 59)}};
  for (const auto& [sinceEpoch, octets] : kMoments) {
    EXPECT_EQ(snmp::detail::WriteDateAndTime(Moment(sinceEpoch)), octets)
        << sinceEpoch.count();
    system_clock::time_point taken;
    EXPECT_EQ(snmp::detail::ReadDateAndTime(octets, taken),
              snmp::SetError::None);
    EXPECT_EQ(taken, Moment(sinceEpoch));
  }
}

TEST(ADateAndTime, ShowsTheTenthThatHasBegun) {
  EXPECT_EQ(snmp::detail::WriteDateAndTime(Moment(0s) + 999ms),
            Octets(1970, 1, 1, 0, 0, 0, 9));
  EXPECT_EQ(snmp::detail::WriteDateAndTime(Moment(0s) - 1ns),
            Octets(1969, 12, 31, 23, 59, 59, 9));
}

TEST(ADateAndTime, IsShownAlsoAtTheEndsOfTime) {
  EXPECT_EQ(snmp::detail::WriteDateAndTime(system_clock::time_point::min()),
            Octets(1677, 9, 21, 0, 12, 43, 1));
  EXPECT_EQ(snmp::detail::WriteDateAndTime(system_clock::time_point::max()),
            Octets(2262, 4, 11, 23, 47, 16, 8));
}

TEST(ADateAndTime, HasTheCalendarOfTheCLibrary) {
  for (std::time_t noon = 12 * 3600; noon < 2147400000; noon += 24 * 3600) {
    std::tm day{};
    gmtime_r(&noon, &day);
    ASSERT_EQ(
        snmp::detail::WriteDateAndTime(system_clock::from_time_t(noon)),
        Octets(day.tm_year + 1900, day.tm_mon + 1, day.tm_mday, 12, 0, 0));
  }
}

}  // namespace
