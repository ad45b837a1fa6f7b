# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# What the install tests share. ctest sets SOURCE_DIR, BUILD_DIR (the library's
# build tree), SCRATCH_DIR, LIBDIR (below a prefix), CMAKE, CXX and LAUNCHER, and
# where Net-SNMP has its libraries and headers: AGENT_LIBDIR, AGENT_INCLUDE_DIR.

here=$SOURCE_DIR/tests/artefacts/install

# Installs a build tree, away from the prefix that it was configured with, and
# moves it, so that nothing can depend on where it was built or laid down.
#
# install_and_move BUILD_DIR PREFIX
install_and_move() {
  rm -rf "$2" "$2.before"
  "$CMAKE" --install "$1" --prefix "$2.before" >/dev/null
  mv "$2.before" "$2"
}

# Builds the consumer with CMake and runs it; true if it prints the expected
# loopback address.
#
# cmake_consumer_prints EXPECTED PREFIX [cmake options...]
cmake_consumer_prints() {
  local expected=$1 prefix=$2 build=$2.consumer
  shift 2
  rm -rf "$build"
  "$CMAKE" -G Ninja -S "$here/consumer" -B "$build" \
    -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_CXX_COMPILER_LAUNCHER="$LAUNCHER" \
    -DCMAKE_PREFIX_PATH="$prefix" "$@"
  "$CMAKE" --build "$build"
  expect "$expected" "$("$build/consumer")"
}

# The same with pkg-config.
#
# pkg_config_consumer_prints EXPECTED PREFIX [compiler options...]
pkg_config_consumer_prints() {
  local expected=$1 prefix=$2 program=$2.consumer-pkg-config flags
  shift 2
  export PKG_CONFIG_PATH=$prefix/$LIBDIR/pkgconfig:$PKG_CONFIG_PATH
  flags=$(pkg-config --cflags --libs snmpsubagent)
  # Unquoted: these are several words.
  "$CXX" -std=c++11 "$here/consumer/main.cpp" -o "$program" "$@" $flags \
    "-Wl,-rpath,$prefix/$LIBDIR:$AGENT_LIBDIR"
  expect "$expected" "$("$program")"
}

# expect EXPECTED ACTUAL
expect() {
  [[ $1 == "$2" ]] || { echo "expected '$1', got '$2'" && return 1; }
}

# The libraries that the file asks the dynamic linker for.
needed_by() { objdump -p "$1" | sed -n 's/^ *NEEDED *//p'; }
