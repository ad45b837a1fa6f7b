# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Read by ctest after the discovery: the tests run what is built before. Where their
# program is not built, the list is still that of the program before.

list(FILTER discoveredTests INCLUDE REGEX "^system[.]examples[.]")
foreach(test IN LISTS discoveredTests)
  set_tests_properties("${test}" PROPERTIES FIXTURES_REQUIRED example_programs)
endforeach()
