#!/bin/sh
# Installs the Debian packages named in packages.txt; does nothing when all of them are there.
set -eu
packages=$(grep -v '^#' "$(dirname "$0")/packages.txt")
missing=
for package in $packages; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
done
[ -z "$missing" ] && exit 0
export DEBIAN_FRONTEND=noninteractive
apt-get update
# shellcheck disable=SC2086  # the list is meant to be split
apt-get install -y --no-install-recommends $missing
