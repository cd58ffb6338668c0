#!/usr/bin/env bash
# Installs the Debian packages that building, testing and running Velun need,
# when any of them is missing. Needs root (or sudo) only when it installs.
set -euo pipefail

packages=(cmake ninja-build g++ pkg-config ccache
          libsdl1.2-dev libglew-dev libgl-dev libglu1-mesa-dev libgl1-mesa-dri
          libdevil-dev libopenal-dev libsndfile1-dev
          xvfb xauth xdotool sox clang-format
          libgtest-dev libgmock-dev libbenchmark-dev clang libclang-rt-14-dev)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y --no-install-recommends "${missing[@]}"
