# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Read by ctest after the discovery: the tests run what is built before.

foreach(test IN LISTS discoveredTests)
  set_tests_properties("${test}" PROPERTIES FIXTURES_REQUIRED example_programs)
endforeach()
