# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Included by every project through CMAKE_PROJECT_INCLUDE, as a device's toolchain
# may add its platform library.

include_guard(GLOBAL)

add_library(Device::Platform SHARED IMPORTED GLOBAL)
set_target_properties(Device::Platform PROPERTIES
  IMPORTED_LOCATION "${DEVICE_PLATFORM_FILE}")
