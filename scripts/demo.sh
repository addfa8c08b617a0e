#!/usr/bin/env bash
# A real exploration of the sample survey: three steps down, one of them undone, with the tables of the cases that
# remain, a report of every step with its charts beside it, and the cases that remain as a data file; then a script that
# asks the survey a question, where the Python package has been built beside the program.
#   scripts/demo.sh PROGRAM [REPORT]
set -euo pipefail

program=$1
samples=$(dirname "$0")/../samples
report=${2:-$(dirname "$program")/../survey-report.html}
subset=$(dirname "$report")/survey-subset.sav

session=(
    drill "$samples/survey.sav"
    --categorical region,sex,education,employment,commute,satisfaction
    --continuous age,income,hours,commute_minutes
    --down "employment=Employed full-time"
    --down "region=Western Coast"
    --down "income=#2"
    --up region
)

"$program" "${session[@]}"
"$program" "${session[@]}" --after each --format html --output "$report" \
    --review-categorical genre --review-continuous age,income,hours \
    --show summary,frequencies,histograms,stacked,descriptives,review-frequencies,review-pies,box,scatter,hist3d \
    --box-type median --save "$subset" --save-variables all
echo
echo "Every step of this session stands in $(realpath "$report"),"
echo "the cases that remain in $(realpath "$subset")"

package=$(dirname "$program")/../lib/python
if [ -d "$package/quillara" ]; then
    echo
    echo "The same survey in Python, by samples/commuting.py:"
    echo
    "$program" run "$samples/commuting.py"
fi
