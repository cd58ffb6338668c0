#!/usr/bin/env bash
# Installs the Debian packages that building, testing and running Velun need,
# when any of them is missing. Needs root (or sudo) only when it installs.
set -euo pipefail

packages=(
  # the build: compiler, generator, pkg-config (sndfile), ccache (used when present)
  cmake ninja-build g++ pkg-config ccache
  # the library's back ends: SDL 1.2, GL/GLU/GLEW, DevIL, OpenAL and libsndfile
  libsdl1.2-dev libgl-dev libopengl-dev libglu1-mesa-dev libglew-dev
  libdevil-dev libopenal-dev libsndfile1-dev
  # tests: GoogleTest and GoogleMock, Mesa under Xvfb (xvfb-run needs xauth), xdotool
  # types into a real window, sox writes the sound tests' files
  libgtest-dev libgmock-dev xvfb xauth libgl1-mesa-dri xdotool sox
  # benchmarks
  libbenchmark-dev
  # CI: the format check and the fuzz targets (clang with its fuzzer runtime)
  clang-format clang libclang-rt-14-dev
)

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
