"""Do people from villages need longer to get to work because they live in villages, or because of how they travel?

Compares the minutes of cities, towns and villages, over all means of travel and by car alone, and looks at how content
those are whose way is long. Needs nothing but the package:

    build/release/bin/quillara run samples/commuting.py [SURVEY.sav]
"""

import pathlib
import sys
import warnings

import quillara

SURVEY = pathlib.Path(__file__).with_name("survey.sav")
warnings.simplefilter("ignore", quillara.Remark)  # values are meant to name intervals here


def mean_and_cases(drill):
    """Of the one continuous variable, among the cases that remain."""
    table = drill.Descriptives
    row = dict(zip(map(str.strip, table.ColumnNames), table.Values[0]))
    return row["Mean"], row["Weighted cases"]


def minutes_by_settlement(drill, settlements):
    print(f"{'Minutes to work':16}{'everybody':>18}{'by car':>18}")
    for settlement in settlements:
        drill.down("settlement", settlement)
        everybody = mean_and_cases(drill)
        drill.down("commute", "Car")
        by_car = mean_and_cases(drill)
        drill.up("settlement")  # steps can be undone in any order
        drill.up("commute")
        print(f"{settlement:16}" + "".join(f"{mean:8.1f} of {cases:5.0f}  " for mean, cases in (everybody, by_car)))


def satisfaction_of_long_ways(drill):
    # Cut the minutes where the question lies: up to half an hour, up to an hour, more.
    drill.DrillDownVariable = "commute_minutes"
    drill.UserSpecifiedCategories = 1
    drill.UserDefinedBoundaries = "30 60"
    for minutes in (15, 45, 90):  # a value says which interval is meant
        drill.down("commute_minutes", minutes)
        interval = drill.Summary.Values[0][0]
        answers = drill.Frequencies["satisfaction"]
        counts = {name: row[0] for name, row in zip(answers.RowNames, answers.Values)}
        content = counts["Rather satisfied"] + counts["Very satisfied"]
        print(f"{interval + ' minutes:':18}{100 * content / sum(counts.values()):5.1f} % are satisfied")
        drill.up("commute_minutes")


def main():
    table = quillara.open(sys.argv[1] if len(sys.argv) > 1 else SURVEY)
    table.weight = "weight"  # makes up for who was hard to reach
    table.select("hours > 0")  # who works
    with table.drill("settlement commute satisfaction", "commute_minutes") as drill:
        drill.WeightedMoments = 1
        drill.CountMD = 0  # only the answers have rows in frequency tables
        minutes_by_settlement(drill, table["settlement"].categories)
        print()
        satisfaction_of_long_ways(drill)


if __name__ == "__main__":
    main()
