#!/usr/bin/env bash
# Installs into a folder of its own and works with what stands there: the program with its module and its charts, the
# samples and the Python package. Nothing may be loaded from the build.
#   tests/installation.sh CMAKE BUILD PYTHON
set -euo pipefail

cmake=$1 build=$2 python=$3
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
"$cmake" --install "$build" --prefix "$prefix" >/dev/null

samples=$prefix/share/doc/quillara/samples
alone=(env -i PATH=/usr/bin:/bin HOME="$prefix" QT_QPA_PLATFORM=offscreen LD_DEBUG=files LD_DEBUG_OUTPUT="$prefix/loaded")

# has TEXT FILE...: whether a file has a text; else the test has failed.
has() { grep -q -- "$1" "${@:2}" || { echo "\"$1\" isn't in ${*:2}"; exit 1; }; }

"${alone[@]}" "$prefix/bin/quillara" drill "$samples/survey.sav" --categorical sex --down sex=Female \
    --show histograms,frequencies --continuous age --plots "$prefix/plots" --save "$prefix/women.csv" >"$prefix/text"
has "1077 of 2000 cases" "$prefix/text"
has "<svg" "$prefix"/plots/*.svg
has Female "$prefix/women.csv"

cd "$prefix"
"${alone[@]}" bin/quillara run "$samples/commuting.py" >"$prefix/text"
has "minutes:" "$prefix/text"

packages=("$prefix"/lib/python3*/dist-packages)
"${alone[@]}" PYTHONPATH="${packages[0]}" "$python" -c "
import quillara
with quillara.table({'a': ['x', 'y', 'y']}).drill('a') as drill:
    drill.pie_charts.save('pie.png')
    print(quillara.__file__, drill.Frequencies.Values)" >"$prefix/text"
has "^$prefix/.*2" "$prefix/text"
[ -s pie.png ]

for file in man/man1/quillara-drill.1 applications/quillara.desktop icons/hicolor/scalable/apps/quillara.svg; do
    has . "$prefix/share/$file"
done
for file in README.md docs/python.md samples/first-look.ipynb; do has . "$prefix/share/doc/quillara/$file"; done
has libqladrilldown "$prefix"/loaded*
if grep -l -F "$build" "$prefix"/loaded*; then
    echo "Something was loaded from the build."
    exit 1
fi
echo installed, and runs alone
