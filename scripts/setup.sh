#!/usr/bin/env bash
# Installs the Debian packages of some groups. Safe to repeat; asks for rights only when something is missing.
#   scripts/setup.sh run|fonts|python|test|lint|package|language...
set -euo pipefail

run=(
    g++ cmake ninja-build make
    libreadstat-dev      # statistical data files
    zlib1g-dev libzstd-dev                     # packed text
    libzip-dev libexpat1-dev libsqlite3-dev    # workbooks and databases
    libcli11-dev         # command line
    nlohmann-json3-dev   # JSON
    qt6-base-dev libqt6svg6-dev libqcustomplot-dev fonts-dejavu-core  # charts
)
fonts=(fonts-noto-core fonts-noto-cjk)  # for texts in the world's scripts
python=(python3 libpython3-dev pybind11-dev)  # the package quillara
test=(
    libgtest-dev libgmock-dev libbenchmark-dev python3-pandas python3-scipy python3-pytest python3-openpyxl zstd unixodbc libsqliteodbc
    mingw-w64-tools      # compiles the type library
)
lint=(clang-format clang-tidy)
package=(dpkg-dev file)
language=(qt6-l10n-tools)  # catalogues of texts: scripts/make-language

packages=()
for group in "$@"; do
    declare -n chosen=$group
    packages+=("${chosen[@]}")
done

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
