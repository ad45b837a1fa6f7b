# shellcheck shell=bash
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# How the scripts build, and with which Debian packages. To be sourced by bash in
# the root folder.

source scripts/lib/packages.sh

# The libraries that ours needs; what building it needs; what testing it needs.
library_packages=(libsnmp-dev libboost-thread-dev)
build_packages=("${library_packages[@]}" g++ cmake ninja-build pkg-config)
# shellcheck disable=SC2034 # Of the scripts that source this.
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev snmp snmpd
  snmptrapd libsystemd-dev)

# CMake reads these when it configures a folder for the first time.
if command -v ccache >/dev/null; then
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

# Subagents on the node classes connect to a master agent of this machine by this
# name, see "The connection" in docs/limits-and-surprises.md.
require_localhost() {
  getent hosts localhost >/dev/null && return
  echo "error: this machine does not know the name localhost;" \
    "add \"127.0.0.1 localhost\" to /etc/hosts" >&2
  return 1
}

# build DIR TYPE [CMake options...] [-- targets...]
#
# Builds the targets in DIR, or everything if none are named. TYPE is CMake's
# build type.
build() {
  local folder=$1 options=(-DCMAKE_BUILD_TYPE="$2")
  shift 2
  while (($#)) && [[ $1 != -- ]]; do
    options+=("$1")
    shift
  done
  cmake -G Ninja -S . -B "$folder" "${options[@]}" >/dev/null
  # Now $1 is "--", or nothing.
  cmake --build "$folder" ${1:+--target "${@:2}"}
}

# build_tests DIR SANITIZER [CMake options...] [-- targets...]
#
# Does the same with tests and with a sanitizer, or without one if SANITIZER is empty.
# With optimisation, instrumented code takes three times as long to compile.
build_tests() {
  local type=RelWithDebInfo
  if [[ $2 ]]; then type=Debug; fi
  build "$1" "$type" -DBUILD_TESTING=ON -DSNMPSUBAGENT_SANITIZE="$2" "${@:3}"
}

# run_tests SANITIZER COMMAND...
#
# Runs a program built with the sanitizer, or a command that does. The thread
# sanitizer of GCC 12 cannot map its shadow memory when the kernel randomises
# addresses widely.
run_tests() {
  local launcher=()
  if [[ $1 == thread ]] && setarch --addr-no-randomize true 2>/dev/null; then
    launcher=(setarch --addr-no-randomize)
  fi
  "${launcher[@]}" "${@:2}"
}
