#!/usr/bin/env bash
# Makes the pictures of docs/images anew, each by a real run of the program: of the sample survey, and of the real data
# in the folder that QUILLARA_TEST_DATA names where it is set (else those pictures stay as they are).
# The pictures of the desktop are made by its tests, where they stand beside the program.
#   scripts/make-images.sh PROGRAM [FOLDER]
set -euo pipefail

program=$(realpath "$1")
cd "$(dirname "$0")/.."
images=${2:-docs/images}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$images"

# picture NAME "SIZES" "THEMES" ARGUMENT...: the one chart of a run, in every size and theme.
picture() {
    local name=$1 sizes=$2 themes=$3 size theme
    shift 3
    for size in $sizes; do
        for theme in $themes; do
            rm -rf "$scratch/plots"
            "$program" drill "$@" --plots "$scratch/plots" --plot-format png --size "$size" --theme "$theme" \
                --output "$scratch/results"
            local made=("$scratch"/plots/*.png)
            [ ${#made[@]} -eq 1 ] || { echo "$name: ${#made[@]} charts in place of one" >&2; exit 1; }
            mv "${made[0]}" "$images/$name-$size-$theme.png"
        done
    done
}

pictures_of_desktop=$(dirname "$program")/desktop-tests
if [ -x "$pictures_of_desktop" ]; then
    mkdir -p "$images/desktop"
    QT_QPA_PLATFORM=offscreen QUILLARA_GUIDE_PICTURES=$(realpath "$images/desktop") \
        "$pictures_of_desktop" --gtest_filter='GuidePictures.*' >"$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
fi

small=320x240 usual=900x600 large=2400x1600
survey=samples/survey.sav
picture survey-histogram-commute "$usual" "light dark" "$survey" --categorical commute --show histograms
picture survey-histogram-interview-date "$usual" light "$survey" --continuous interview_date --show histograms
picture survey-pie-genre "$small $usual" light "$survey" --categorical genre --show pies
picture survey-stacked "$usual" light "$survey" --categorical region,sex,education,employment,commute --show stacked
picture survey-box-quartiles "$usual" light "$survey" --review-continuous age,hours,commute_minutes \
    --show box --box-type median
picture survey-scatter "$usual" light "$survey" --review-continuous age,income,hours --show scatter
picture survey-hist3d-genre-age "$usual" light "$survey" --review-categorical genre --review-continuous age \
    --show hist3d --hist3d genre:age

[ -n "${QUILLARA_TEST_DATA:-}" ] || exit 0
adult=$QUILLARA_TEST_DATA/adult.sav
penguins=$QUILLARA_TEST_DATA/penguins.csv
picture adult-histogram-native-country "$usual" light "$adult" --categorical native_country --show histograms
picture adult-pie-native-country "$small $usual" "light dark" "$adult" --categorical native_country --show pies
picture adult-stacked "$small $usual $large" light "$adult" \
    --categorical sex,race,education,marital_status,workclass --continuous age --show stacked
picture adult-scatter "$usual" "light dark" "$adult" --review-continuous age,fnlwgt,hours_per_week --show scatter
picture adult-hist3d-workclass-marital-status "$small $usual $large" light "$adult" \
    --review-categorical workclass,marital_status --show hist3d --hist3d workclass:marital_status
picture penguins-histogram-body-mass "$small $usual $large" dark "$penguins" --continuous body_mass_g --show histograms
picture penguins-box-means "$small $usual $large" "light dark" "$penguins" \
    --review-continuous bill_length_mm,bill_depth_mm,flipper_length_mm --show box --box-type se
picture penguins-scatter "$small $large" dark "$penguins" \
    --review-continuous bill_length_mm,bill_depth_mm,flipper_length_mm,body_mass_g --show scatter
picture penguins-hist3d-sex-species "$usual" "light dark" "$penguins" --review-categorical sex,species --show hist3d \
    --hist3d sex:species
