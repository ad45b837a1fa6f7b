# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Included by each project that CMAKE_PROJECT_INCLUDE tells to, as a device's
# toolchain would bring its platform library along.

include_guard(GLOBAL)

add_library(Device::Platform SHARED IMPORTED GLOBAL)
set_target_properties(Device::Platform PROPERTIES
  IMPORTED_LOCATION "${DEVICE_PLATFORM_FILE}")
