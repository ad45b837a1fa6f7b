# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# For the device's layer, in recipes-support/snmpsubagent. SRC_URI is the source
# archive that scripts/package writes to build/package.
SUMMARY = "Publishes a service's management data over SNMP"
DESCRIPTION = "A C++ library with which a service becomes an AgentX subagent \
of the device's SNMP agent."
SECTION = "libs"

# To be filled in when the owner has chosen a licence: an SPDX name, and
# LIC_FILES_CHKSUM with the file that has its text.
LICENSE = "CLOSED"

# Releases behind 5.0 unpack into UNPACKDIR: there S begins with that.
SRC_URI = "file://${BPN}_${PV}.tar.xz"
S = "${WORKDIR}/source"

inherit cmake pkgconfig

# Without it there are the objects alone.
PACKAGECONFIG ??= "node-classes"
PACKAGECONFIG[node-classes] = "\
    -DSNMPSUBAGENT_NODE_CLASSES=ON, -DSNMPSUBAGENT_NODE_CLASSES=OFF, boost net-snmp"

# A device links its own platform library instead of the host's:
#   EXTRA_OECMAKE += "-DSNMPSUBAGENT_PLATFORM_LIBRARY=${STAGING_LIBDIR}/libdevice.so"
# in a .bbappend, with the library in DEPENDS. Then there is no package with the
# host's platform library.
EXTRA_OECMAKE = "-DBUILD_TESTING=OFF -DCMAKE_SKIP_INSTALL_RPATH=ON"

PACKAGES =+ "${PN}-objects ${PN}-platform"
SUMMARY:${PN}-objects = "Objects library of ${PN}, which needs no Net-SNMP"
FILES:${PN}-objects = "${libdir}/libsnmpsubagent-objects.so.*"
SUMMARY:${PN}-platform = "Host platform library of ${PN}"
FILES:${PN}-platform = "${libdir}/libsnmpsubagent-platform.so.*"
FILES:${PN} = "${libdir}/libsnmpsubagent.so.*"
# Nothing but the node classes' library, on which ${PN}-dev depends in any case.
ALLOW_EMPTY:${PN} = "1"
FILES:${PN}-dev += "${bindir}/snmpsubagent-check ${libdir}/cmake \
    ${datadir}/snmp/mib2c-data"

# The master agent. The library runs without one, which may be elsewhere.
RRECOMMENDS:${PN} = "net-snmp-server-snmpd"
RRECOMMENDS:${PN}-objects = "net-snmp-server-snmpd"
