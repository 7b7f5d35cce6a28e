#!/usr/bin/env bash
# Installs the packages of packages.txt that are missing: those of the given uses, by default "build".
# Needs no network and no rights when all are there.
set -euo pipefail

list=$(dirname "${BASH_SOURCE[0]}")/../packages.txt
missing=()
for use in "${@:-build}"; do
  while read -r package; do
    dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
  done < <(awk -v use="$use" '!/^#/ && $2 == use { print $1 }' "$list")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
  command -v sudo >/dev/null || { echo "Please install as root: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}" >&2
"${as_root[@]}" apt-get update -qq >&2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
