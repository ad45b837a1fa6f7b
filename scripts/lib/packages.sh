# shellcheck shell=bash
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Installs Debian packages. To be sourced by bash.

# Installs those of the given packages that are missing. Needs root or sudo only if
# there are any.
install_packages() {
  local missing=() package
  for package in "$@"; do
    package_installed "$package" || missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  echo "Installing ${missing[*]}" >&2
  if ! command -v apt-get >/dev/null; then
    echo "error: no apt-get here; install what matches these Debian packages" \
      "by hand" >&2
    return 1
  fi
  as_root apt-get update </dev/null &&
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y \
      --no-install-recommends "${missing[@]}" </dev/null
}

package_installed() {
  # One line per architecture; "not-installed" if dpkg only knows the package.
  dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null |
    grep -x installed >/dev/null
}

# Runs a command as root. sudo may ask for a password on a terminal only.
as_root() {
  if ((EUID == 0)); then
    "$@"
  elif ! command -v sudo >/dev/null; then
    echo "error: installing packages needs root or sudo" >&2
    return 1
  elif [[ -t 2 && -z ${CI:-} ]]; then
    sudo "$@"
  else
    sudo -n "$@"
  fi
}
