# shellcheck shell=bash
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# What the checks of the exported and imported symbols share: `library` is the file
# that they look at.
set -euo pipefail
export LC_ALL=C

exported() { symbols --dynamic --defined-only; }

# Demangled names, as written in the headers.
symbols() {
  nm --demangle --format=just-symbols "$@" "$library" |
    sed 's/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >/std::string/g' |
    sort -u
}

# The libraries that it asks the dynamic linker for. Not counted: the dynamic
# linker itself, which thread-local data refer to.
needed_libraries() {
  objdump -p "$library" | sed -n 's/^ *NEEDED *\(.*\)\.so.*/\1/p' |
    without 'ld-linux.*' | sort
}

# The lines of the input that do not match as a whole.
without() { sed -E "\\~^($1)\$~d"; }

# The lines of the input that the file lacks.
absent_from() { sort | comm -23 - "$1"; }

alternatives() { local IFS='|' && echo "$*"; }

# Fails if there is any input.
fail_with() {
  local lines
  lines=$(cat)
  [[ -z $lines ]] || { printf '%s:\n%s\n' "$1" "$lines" && return 1; }
}
