#!/usr/bin/env bash
# Installs the Debian packages that building, testing and formatting need. Safe to repeat; asks for rights only when
# something is missing.
set -euo pipefail

packages=(
    g++ cmake ninja-build make
    libreadstat-dev      # statistical data files
    libmuparser-dev      # case selection formulas
    libcli11-dev         # command line
    nlohmann-json3-dev   # JSON
    qt6-base-dev libqt6svg6-dev libqcustomplot-dev fonts-dejavu-core  # charts
    fonts-noto-core fonts-noto-cjk                                    # charts: texts in the world's scripts
    libgtest-dev libgmock-dev libbenchmark-dev
    clang-format clang-tidy
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [ "$status" = "install ok installed" ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing: ${missing[*]}"
rights=()
[ "$(id -u)" -eq 0 ] || rights=(sudo)
"${rights[@]}" apt-get update -qq
"${rights[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
