#!/usr/bin/env bash
# Installs, from Debian's packages, whatever the build, the tests and the
# demo need and the machine lacks. Safe to run again: it installs only what
# is missing. Extra package names may be given as arguments.
set -euo pipefail

packages=(
  cmake make g++ ccache pkg-config
  qtbase5-dev qttools5-dev qttools5-dev-tools libqt5svg5-dev
  libboost-dev libgtest-dev libgmock-dev libbenchmark-dev
  fonts-dejavu-core
  "$@"
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: everything is installed"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -q
$sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
