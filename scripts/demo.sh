#!/usr/bin/env bash
# A real exploration of the sample survey: three steps down, one of them undone, with the tables of the cases that
# remain, and a report of every step with its charts beside it.
#   scripts/demo.sh PROGRAM [REPORT]
set -euo pipefail

program=$1
samples=$(dirname "$0")/../samples
report=${2:-$(dirname "$program")/../survey-report.html}

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
    --show summary,frequencies,histograms,stacked,descriptives,review-frequencies,review-pies,box,scatter \
    --box-type median --hist3d genre:age
echo
echo "Every step of this session stands in $(realpath "$report")"
