# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Ports for the scripts that start a master agent of their own. To be sourced by
# bash.

# A port of 127.0.0.1 that nobody uses: below those that the programs of the
# tests choose from, and those that the system gives to outgoing connections.
free_port() {
  local port hex
  while true; do
    port=$((2000 + RANDOM % 10000))
    hex=$(printf ':%04X ' "$port")
    if ! grep -qsi "$hex" /proc/net/{tcp,udp}{,6}; then
      echo "$port"
      return
    fi
  done
}
