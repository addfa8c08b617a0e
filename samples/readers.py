"""Do people who take the train read more, or do they only have more schooling?

Takes the mean number of books for every means of travel within every level of schooling, and shows it as a table of
pandas; then the favourite kinds of book of those who read most, as a picture.

    build/release/bin/quillara run samples/readers.py [PICTURE.svg]
"""

import pathlib
import sys
import warnings

import pandas

import quillara

SURVEY = pathlib.Path(__file__).with_name("survey.sav")
warnings.simplefilter("ignore", quillara.Remark)  # readers are counted as they are, without the weight of the file


def books_by_travel_and_schooling(table):
    found = []
    with table.drill("commute education", "books_read") as drill:
        for schooling in table["education"].categories:
            drill.down("education", schooling)
            means_of_travel = drill.Frequencies["commute"].to_pandas()
            for travel in means_of_travel.index.drop("Missing"):  # only what occurs here can be drilled down on
                drill.down("commute", travel)
                mean = drill.Descriptives.to_pandas().loc["books_read", "Mean"]
                found.append((schooling, travel, means_of_travel.loc[travel, "Count"], mean))
                drill.up("commute")
            drill.up("education")
    frame = pandas.DataFrame(found, columns=["schooling", "travel", "cases", "books"])
    frame = frame[frame["cases"] >= 10]  # fewer tell little
    return frame.pivot(index="schooling", columns="travel", values="books").reindex(table["education"].categories)


def genres_of_those_who_read_most(table, picture):
    with table.drill("genre sex", "books_read") as drill:
        drill.DrillDownVariable = "books_read"
        drill.UserSpecifiedCategories = 1
        drill.UserDefinedBoundaries = "20"
        drill.down("books_read", 21)  # the interval behind 20
        genres = drill.Frequencies["genre"].to_pandas()
        drill.PieCharts["genre"].save(picture)
        readers = drill.cases.to_pandas()
    print(genres[["Count", "Percent(%)"]])
    print(f"{len(readers)} people, {(readers['sex'] == 'Female').mean():.0%} of them women")


def main():
    picture = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "genres.svg")
    table = quillara.open(SURVEY)
    print("Books read in a year, by schooling and means of travel")
    print(books_by_travel_and_schooling(table).round(1).to_string(na_rep=""))
    print("\nThose who read more than 20")
    genres_of_those_who_read_most(table, picture)
    print(f"Their favourite kinds stand in {picture}")


if __name__ == "__main__":
    main()
