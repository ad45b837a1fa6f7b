// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_EXPECTATIONS_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_EXPECTATIONS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "testkit/Manager.h"

// What does not hold is thrown as std::runtime_error.

void Require(bool holds, const std::string& what);

// Requires that a walk of the subtree shows these lines, by GETNEXT and by
// GETBULK.
void RequireWalked(const testkit::Manager& manager, const std::string& subtree,
                   const std::vector<std::string>& lines);

// Requires that a walk by GETNEXT comes to show these lines. A session that is
// up may still be about to register everything.
void AwaitWalked(const testkit::Manager& manager, const std::string& subtree,
                 const std::vector<std::string>& lines);

// Requires that of the notifications received those with this name are as many,
// and that their only varbind is `object` with the numbers from 1 on.
void RequireNumbered(const std::vector<std::string>& received,
                     const std::string& name, const std::string& object,
                     std::size_t count);

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_EXPECTATIONS_H_
