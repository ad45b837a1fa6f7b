// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MATCHERS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MATCHERS_H_

#include <gmock/gmock.h>

#include <cstddef>

#include "snmpsubagent/testing/Response.h"

// Matchers of GoogleMock for responses and notifications. Needs GoogleTest,
// which all else of the kit does not.
namespace snmpsubagent::testing {

// EXPECT_THAT(master.Set({{kLimit, 70}, {kPlace, "attic"}}), Succeeded());
inline ::testing::Matcher<const Response&> Succeeded() {
  return ::testing::Field("error", &Response::error, ErrorStatus::NoError);
}

// The varbind that is refused is counted from 1.
//
//   EXPECT_THAT(master.Set({{kLimit, 70}, {kPlace, ""}}),
//               IsRefused(ErrorStatus::WrongLength, 2));
inline ::testing::Matcher<const Response&> IsRefused(ErrorStatus error,
                                                     std::size_t varbind) {
  return ::testing::AllOf(::testing::Field("error", &Response::error, error),
                          ::testing::Field("index", &Response::index, varbind));
}

// The response has succeeded, with what ElementsAre(...) and the like say.
//
//   EXPECT_THAT(master.Get({kLimit}), Has(ElementsAre(Varbind{kLimit, 60})));
template <typename Varbinds>
::testing::Matcher<const Response&> Has(const Varbinds& varbinds) {
  return ::testing::AllOf(
      Succeeded(), ::testing::Field("varbinds", &Response::varbinds, varbinds));
}

// EXPECT_THAT(master.NextNotification(),
//             Tells(kHot, ElementsAre(Varbind{kCelsius, 81})));
template <typename Varbinds>
::testing::Matcher<const Notification&> Tells(const Oid& name,
                                              const Varbinds& varbinds) {
  return ::testing::AllOf(
      ::testing::Field("name", &Notification::name, name),
      ::testing::Field("varbinds", &Notification::varbinds, varbinds));
}

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MATCHERS_H_
