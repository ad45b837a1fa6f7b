// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// DateAndTime (RFC 2579). The calendar is worked out here: the C library's ends
// in 2038 where time_t has 32 bits.
#include <chrono>
#include <ratio>

#include "snmpsubagent/Syntax.h"

namespace snmpsubagent::detail {
namespace {

using std::chrono::floor;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::system_clock;
using Days = std::chrono::duration<int, std::ratio<24L * 3600>>;

struct Date {
  int year;
  int month;
  int day;
};

bool IsLeap(int year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysIn(int month, int year) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30,
                                  31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeap(year) ? 29 : kDays[month - 1];
}

// The days of all years from 1 on before this one.
constexpr int DaysBefore(int year) {
  const int last = year - 1;
  return 365 * last + last / 4 - last / 100 + last / 400;
}

constexpr int kEpoch = DaysBefore(1970);

Days SinceEpoch(const Date& date) {
  int days = DaysBefore(date.year) - kEpoch + date.day - 1;
  for (int month = 1; month < date.month; ++month) {
    days += DaysIn(month, date.year);
  }
  return Days(days);
}

Date DateOf(Days sinceEpoch) {
  int days = sinceEpoch.count() + kEpoch;
  Date date{1 + days / 366, 1, 1};  // that year, or one soon after
  while (DaysBefore(date.year + 1) <= days) ++date.year;
  days -= DaysBefore(date.year);
  while (days >= DaysIn(date.month, date.year)) {
    days -= DaysIn(date.month, date.year);
    ++date.month;
  }
  date.day += days;
  return date;
}

// In a year of which a time_point of nanoseconds knows each moment, also in
// another time zone.
bool IsDate(const Date& date) {
  return date.year >= 1678 && date.year <= 2261 && date.month >= 1 &&
         date.month <= 12 && date.day >= 1 &&
         date.day <= DaysIn(date.month, date.year);
}

int At(std::string_view octets, std::size_t place) {
  return static_cast<unsigned char>(octets[place]);
}

}  // namespace

// Year (2 octets), month, day, hour, minute, second, tenth; and the distance
// from UTC: "+" or "-", hours, minutes.
std::string WriteDateAndTime(system_clock::time_point value) {
  const auto sinceEpoch = floor<milliseconds>(value.time_since_epoch());
  const auto midnight = floor<Days>(sinceEpoch);
  const Date date = DateOf(midnight);
  const milliseconds time = sinceEpoch - midnight;
  std::string octets;
  for (const auto field :
       {date.year >> 8, date.year & 0xff, date.month, date.day,
        static_cast<int>(time / hours(1)),
        static_cast<int>(time % hours(1) / minutes(1)),
        static_cast<int>(time % minutes(1) / seconds(1)),
        static_cast<int>(time % seconds(1) / milliseconds(100)), int{'+'}, 0,
        0}) {
    octets.push_back(static_cast<char>(field));
  }
  return octets;
}

SetError ReadDateAndTime(std::string_view octets,
                         system_clock::time_point& value) {
  if (octets.size() != 8 && octets.size() != 11) return SetError::WrongLength;
  const Date date{At(octets, 0) << 8 | At(octets, 1), At(octets, 2),
                  At(octets, 3)};
  const int hour = At(octets, 4);
  const int minute = At(octets, 5);
  const int second = At(octets, 6);  // 60 in a leap second
  const int tenth = At(octets, 7);
  if (!IsDate(date) || hour > 23 || minute > 59 || second > 60 || tenth > 9) {
    return SetError::WrongValue;
  }
  minutes east{0};
  if (octets.size() == 11) {
    const int sign = At(octets, 8);
    if ((sign != '+' && sign != '-') || At(octets, 9) > 13 ||
        At(octets, 10) > 59) {
      return SetError::WrongValue;
    }
    east = minutes(60 * At(octets, 9) + At(octets, 10));
    if (sign == '-') east = -east;
  }
  value = system_clock::time_point(SinceEpoch(date)) + hours(hour) +
          minutes(minute) - east + seconds(second) + milliseconds(100 * tenth);
  return SetError::None;
}

}  // namespace snmpsubagent::detail
