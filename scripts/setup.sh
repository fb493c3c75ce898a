#!/usr/bin/env bash
# Installs the Debian packages the project builds, tests and runs with. Idempotent and quiet when
# everything is already there.
set -euo pipefail
PACKAGES=(
  cmake ninja-build ccache g++ clang-format
  qtbase5-dev qtbase5-dev-tools libqt5svg5-dev qt5-image-formats-plugins
  libvtk9-dev libvtk9-qt-dev
  libtbb-dev libfmt-dev nlohmann-json3-dev libhdf5-dev
  libqwt-qt5-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth shared-mime-info
  xdotool x11-apps  # to drive and capture the viewer's window by hand under Xvfb
  breeze-icon-theme
  dpkg-dev libxml2-utils desktop-file-utils man-db libglib2.0-bin  # the Debian package and its checks
)
missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
