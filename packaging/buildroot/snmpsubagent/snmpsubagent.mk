################################################################################
#
# snmpsubagent
#
################################################################################
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# For a BR2_EXTERNAL tree. Copy the source archive that scripts/package writes to
# build/package beside this file.

SNMPSUBAGENT_VERSION = 0.1.0
SNMPSUBAGENT_SOURCE = snmpsubagent_$(SNMPSUBAGENT_VERSION).tar.xz
SNMPSUBAGENT_SITE_METHOD = file
SNMPSUBAGENT_SITE = $(SNMPSUBAGENT_PKGDIR)
SNMPSUBAGENT_INSTALL_STAGING = YES
SNMPSUBAGENT_SUPPORTS_IN_SOURCE_BUILD = NO

# To be filled in when the owner has chosen a licence: its SPDX name, and
# SNMPSUBAGENT_LICENSE_FILES with the file that has its text.
SNMPSUBAGENT_LICENSE = PROPRIETARY
SNMPSUBAGENT_REDISTRIBUTE = NO

# A device links its own platform library instead of the host's with
# -DSNMPSUBAGENT_PLATFORM_LIBRARY=$(STAGING_DIR)/usr/lib/libdevice.so
SNMPSUBAGENT_CONF_OPTS = -DBUILD_TESTING=OFF -DSNMPSUBAGENT_TOOLS=OFF \
	-DCMAKE_SKIP_INSTALL_RPATH=ON

ifeq ($(BR2_PACKAGE_SNMPSUBAGENT_NODE_CLASSES),y)
SNMPSUBAGENT_DEPENDENCIES = boost netsnmp
else
SNMPSUBAGENT_CONF_OPTS += -DSNMPSUBAGENT_NODE_CLASSES=OFF
endif

$(eval $(cmake-package))
