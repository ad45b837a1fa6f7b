# shellcheck shell=bash
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# Makes Debian trees for chroot. To be sourced by bash, after packages.sh.

# The name of this machine's release of Debian, and the mirror from which it
# takes packages.
debian_release() { (. /etc/os-release && echo "$VERSION_CODENAME"); }
debian_mirror() {
  # shellcheck disable=SC2016 # apt-get's own variable.
  apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' \
    "Codename: $(debian_release)" | head -1
}

# Makes a Debian that has nothing but apt and what it needs, for chroot, with
# more options of mmdebstrap if they are given. It finds packages, and
# "localhost". Needs root or sudo.
#
# make_debian_tree SUITE FOLDER [option...]
make_debian_tree() {
  install_packages mmdebstrap
  as_root rm -rf "$2" "$2.new"
  mkdir -p "$(dirname "$2")"
  as_root mmdebstrap --variant=apt --skip=cleanup/apt "${@:3}" \
    --customize-hook='copy-in /etc/hosts /etc/resolv.conf /etc' \
    "$1" "$2.new" "$(debian_mirror)"
  as_root mv "$2.new" "$2"
}
