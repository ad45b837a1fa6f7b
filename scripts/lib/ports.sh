# shellcheck shell=bash
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Finds ports for private master agents. To be sourced by bash.

# An unused port of 127.0.0.1, outside the range of the test programs and of the
# system's outgoing connections.
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
