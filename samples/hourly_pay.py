"""How much of the gap in pay between women and men is left among those with equal schooling and age?

A frame of pandas goes in: pay by the hour and groups of ages are computed there, the exploration is Quillara's, and the
cases that remain come back to be saved and counted.

    build/release/bin/quillara run samples/hourly_pay.py [FOLDER]
"""

import pathlib
import sys

import pandas

import quillara

SURVEY = pathlib.Path(__file__).with_name("survey.sav")
WEEKS_OF_MONTH = 52 / 12


def workers():
    """Who works, lives alone (the income is that of the household) and told both hours and income."""
    frame = quillara.open(SURVEY).to_pandas()
    frame = frame[(frame["hours"] > 0) & (frame["household_size"] == 1) & frame["income"].notna()].copy()
    frame["hourly_pay"] = (frame["income"] / (frame["hours"] * WEEKS_OF_MONTH)).round(2)
    frame["age_group"] = pandas.cut(frame["age"], [17, 34, 49, 65], labels=["under 35", "35 to 49", "50 to 65"])
    return frame[["sex", "education", "age_group", "hourly_pay", "interview_date", "weight"]]


def pay(drill):
    return drill.Descriptives.to_pandas().loc["hourly_pay", "Mean"]


def gap(drill):
    """How much less women have than men among the cases that remain, in percent of what men have."""
    means = {}
    for sex in ("Female", "Male"):
        drill.down("sex", sex)
        means[sex] = pay(drill)
        drill.up("sex")
    return 100 * (1 - means["Female"] / means["Male"])


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    table = quillara.table(workers(), name="Who works and lives alone")
    table.weight = "weight"
    with table.drill("sex education age_group", "hourly_pay") as drill:
        drill.WeightedMoments = 1
        print(f"All {table.cases}: women have {gap(drill):.1f} % less by the hour")
        drill.down("education", "Vocational training")
        print(f"With vocational training: {gap(drill):.1f} % less")
        for group in table["age_group"].categories:
            drill.down("age_group", group)
            print(f"    {group}: {gap(drill):.1f} % less, {drill.cases.Cases} people")
            drill.up("age_group")
        drill.Histograms["hourly_pay"].save(folder / "hourly-pay.png")
        losses = drill.cases.save(folder / "vocational.sav")
    print(f"Histogram and cases of those with vocational training are in {folder.resolve()}", *(losses or []), sep="\n")


if __name__ == "__main__":
    main()
