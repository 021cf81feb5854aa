#!/usr/bin/env bash
# Installs, from Debian's packages, whatever the build, the tests and the
# demo need and the machine lacks. Safe to run again: it installs only what
# is missing.
#
#   tools/install-deps.sh [--qt5|--qt6] [--xvfb] [extra packages...]
#
# --qt6 (or KELCORE_QT_MAJOR=6 in the environment) installs Qt 6 instead of
# Qt 5.15; --xvfb adds the virtual X server the tests can run under.
set -euo pipefail

qt_major=${KELCORE_QT_MAJOR:-5}
xvfb=0
extra=()
for arg in "$@"; do
  case "$arg" in
    --qt5) qt_major=5 ;;
    --qt6) qt_major=6 ;;
    --xvfb) xvfb=1 ;;
    *) extra+=("$arg") ;;
  esac
done

packages=(
  cmake make g++ ccache pkg-config
  libboost-dev libgtest-dev libgmock-dev libbenchmark-dev
  fonts-dejavu-core
)
case "$qt_major" in
  # libqt5gui5, a dependency of qtbase5-dev, brings the xcb platform plug-in.
  5) packages+=(qtbase5-dev qttools5-dev qttools5-dev-tools libqt5svg5-dev) ;;
  # Qt 6 splits what Qt 5 keeps in fewer packages: the tools (moc, uic), the
  # Linguist tools, UiTools and the Designer headers (which need the OpenGL
  # modules' CMake files) and the platform plug-ins (xcb) each come on their
  # own.
  6) packages+=(qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools
                qt6-l10n-tools qt6-qpa-plugins libqt6opengl6-dev libgl-dev) ;;
  *) echo "install-deps: unknown Qt major version '$qt_major' (5 or 6)" >&2; exit 2 ;;
esac
if [ "$xvfb" -eq 1 ]; then
  packages+=(xvfb xauth)
fi
packages+=(${extra[@]+"${extra[@]}"})

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
