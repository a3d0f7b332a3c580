#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests and the benchmarks
# need, when any of them is missing.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git
  clang libclang-rt-14-dev
  rapidjson-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libpng-dev libjpeg62-turbo-dev libtiff-dev libgif-dev libopenjp2-7-dev
  libfreetype-dev libfontconfig-dev fonts-dejavu-core
  libcairo2-dev libb64-dev
  locales
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$package")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update
$sudo apt-get install -y --no-install-recommends "${missing[@]}"
