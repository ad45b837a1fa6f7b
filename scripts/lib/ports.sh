# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Ports for the scripts that start a master agent of their own. To be sourced by
# bash.

# A port of 127.0.0.1 that nobody uses, outside the range of those that the
# system gives to outgoing connections.
free_port() {
  local port hex
  while true; do
    port=$((12000 + RANDOM % 20000))
    hex=$(printf ':%04X ' "$port")
    if ! grep -qsi "$hex" /proc/net/tcp /proc/net/udp; then
      echo "$port"
      return
    fi
  done
}
