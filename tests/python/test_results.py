"""Results of scripts are those of the command line; documents come as frames, pages and pictures."""

import json
import re
import subprocess

import pytest
from conftest import PROGRAM, SURVEY

import quillara


def program_documents(*arguments):
    command = [PROGRAM, "drill", SURVEY, "--format", "json", *arguments]
    return json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)["documents"]


def told(document):
    """A spreadsheet or a chart in the shape of the command line's JSON."""
    if document.Kind == "table":
        rows = [{"name": name, "cells": cells} for name, cells in zip(document.RowNames, document.Values)]
        return [document.title, document.Corner, document.ColumnNames, rows]
    return [document.title, [(series.X, series.Y) for series in document.series]]


def printed(document):
    if document["kind"] == "spreadsheet":
        return ["\n".join(document["title"]), document["corner"], document["columns"], document["rows"]]
    series = [([x for x, _ in each["points"]], [y for _, y in each["points"]]) for each in document["series"]]
    return ["\n".join(document["title"]), series]


SESSIONS = [
    ([], []),
    ([("sex", "Female")], ["--down", "sex=Female"]),
    ([("education", "Vocational training"), ("age", "30<x<=40")],
     ["--down", "education=Vocational training", "--down", "age=30<x<=40"]),
]
RESULTS = ["summary", "descriptives", "frequencies", "histograms"]


def documents_of(drill, member):
    """The command line passes over buttons that make nothing."""
    try:
        return list(getattr(drill, member))
    except quillara.Error as error:
        assert error.text.startswith("Nothing was made") or error.code == 0x80070005
        return []


@pytest.mark.parametrize("steps, options", SESSIONS)
def test_tables_are_those_of_the_command_line(survey, steps, options):
    expected = program_documents("--categorical", "sex,education", "--continuous", "age", *options,
                                 "--show", ",".join(RESULTS))
    with survey.drill(["sex", "education"], ["age"]) as drill:
        for variable, category in steps:
            drill.down(variable, category)
        made = []
        for member in RESULTS:
            made += documents_of(drill, member)
        frame = drill.to_frame()
    assert [told(document) for document in made] == [printed(document) for document in expected]
    assert [(each.result, each.variable) for each in made] == [(each["result"], each["variable"]) for each in expected]
    assert frame["document"].nunique() == len(made) and frame["value"].dtype == float
    bars = made[-1]
    counts = frame[(frame["result"] == "histograms") & (frame["variable"] == bars.variable)]
    assert (counts["statistic"] == "Count").all() and tuple(counts["value"]) == tuple(bars.series[0].Y)


def test_documents_and_collections_are_used_alike(drill, tmp_path):
    tables = drill.Frequencies
    assert len(tables) == 3 and tables[-1] == tables[2] and len(tables[:2]) == 2
    assert tables[tables[1].Name] == tables[1] and [each.Kind for each in tables] == ["table"] * 3
    assert tables["age"] == tables[2] and tables["age"].variables == ["age"] and tables["age"]["age"] == tables["age"]
    drill.down("sex", "Male")
    only = drill.Summary
    assert len(only) == 1 and only[0] is only and list(only) == [only] and only[only.Name] is only
    assert drill.StackedPlots.variables == ["education", "age"]
    for documents in (only, tables):
        with pytest.raises(KeyError):
            documents["nowhere"]
    frame = tables[0].to_pandas()
    assert frame.loc["Female"].tolist() == pytest.approx([1077, 1077, 53.85, 53.85])
    assert [str(each) for each in frame.dtypes] == ["int64", "int64", "float64", "float64"]
    assert "<table" in tables[0]._repr_html_() and "1077" in tables[0]._repr_html_()
    assert "<caption>survey.sav, 923 of 2000 cases</caption>" in drill._repr_html_()
    assert "<th>Step 1</th><td>sex = Male</td>" in drill._repr_html_()
    assert str(tables[0]).startswith("Frequency table of sex") and "\nFemale   1077" in str(tables[0])
    assert str(tables).count("Frequency table") == 3 and tables._repr_html_().count("<table") == 3
    assert drill.pie_charts._repr_html_().count("<svg") == 2 and "<p>" in drill.Application.Analyses._repr_html_()
    tables[0].save(tmp_path / "table.csv")
    assert "Female,1077" in (tmp_path / "table.csv").read_text()


def test_graphs_are_saved_as_pictures(drill, tmp_path):
    graph = drill.pie_charts[0]
    assert graph.series[0].Labels == ["Female", "Male"] and graph.series[0].Y == [1077, 923]
    for end, begin in ((".svg", b"<?xml"), (".png", b"\x89PNG"), (".pdf", b"%PDF"), (".csv", b"")):
        graph.save(tmp_path / ("pie" + end))
        assert (tmp_path / ("pie" + end)).read_bytes().startswith(begin)
    assert graph._repr_svg_().encode() == (tmp_path / "pie.svg").read_bytes()


def test_members_are_told_of_without_being_used(drill):
    import rlcompleter

    completer = rlcompleter.Completer({"drill": drill})
    names = [completer.complete("drill.Drill", place) for place in range(7)]
    assert "drill.DrillDownVariable" in names and "drill.DrillDown()" in names
    assert {"RVCasewiseDeletionOfMD", "review_3d_histograms", "plot_mean_sd196_times_sd", "ok"} <= set(dir(drill))
    assert re.match("Summary of drill-down operations. .*gives the document.*0x80070005: no step", type(drill).Summary.__doc__)
    assert len(drill.analysis.Outputs) == 0


@pytest.mark.parametrize("member", ["CountMD", "count_md", "CasewiseDeletionOfMD", "AllDistinctValues"])
def test_members_are_read_and_written(drill, member):
    drill.DrillDownVariable = "age"
    setattr(drill, member, 1)
    assert getattr(drill, member) == 1


def test_intervals_are_cut_as_asked(drill):
    drill.DrillDownVariable = "age"
    drill.StepSize = 1
    drill.ValueStepSize = 50
    drill.StartingAtMinimum = 0
    drill.ValueStartingFrom = 0.0
    drill.down("age", 20)
    assert 18 <= drill.cases.to_pandas()["age"].max() <= 50
    drill.up("age")
    drill.DrillDownVariable = 4
    drill.UserSpecifiedCategories = 1
    drill.UserDefinedBoundaries = "30 60"
    drill.down("age", 45)
    assert drill.cases.to_pandas()["age"].between(31, 60).all() and len(drill.cases) == 1180


@pytest.mark.parametrize("variable, method", [
    ("age", "distinct"), ("hours", "integer"), ("age", "exact:4"), ("age", "neat:4"), ("age", "step:20"),
    ("age", "step:20@10"), ("age", "bounds:30,60.5"), ("interview_date", "week"), ("interview_date", "month"),
    ("interview_date", "quarter"), ("interview_date", "year"), ("interview_date", "step:30@2024-01-31"),
    ("interview_date", "bounds:2024-02-29,2024-04-01"), ("interview_start", "bounds:12:00,15:30:30"),
    ("interview_start", "step:01:30@09:00"),
])
def test_variables_are_cut_as_by_the_command_line(variable, method):
    lists = ["--continuous", variable, "--categorize", f"{variable}={method}", "--show", "frequencies"]
    with quillara.open(SURVEY).drill(continuous=[variable]) as drill:
        drill.categorize(variable, method)
        assert [told(drill.Frequencies[variable])] == [printed(document) for document in program_documents(*lists)]


@pytest.mark.parametrize("variable, method", [("age", "month"), ("age", "equal:3"), ("age", "bounds:2024-01-01"),
                                              ("age", "exact:x"), ("interview_date", "bounds:2024-02-30")])
def test_methods_that_cannot_be_used_are_refused(variable, method):
    with quillara.open(SURVEY).drill(continuous=[variable]) as drill, pytest.raises((ValueError, quillara.Error)):
        drill.categorize(variable, method)


def test_the_subset_goes_with_the_steps_and_their_weight():
    table = quillara.open(SURVEY)
    table.weight = "weight"
    with table.drill("sex region", "age") as drill:
        seen = [drill.subset]
        for step in (lambda: drill.down("sex", "Female"), lambda: drill.down("region", "#0"), lambda: drill.up("sex")):
            step()
            seen.append(drill.subset)
        drill.Variables = "sex"
        seen.append(drill.subset)
    command = [PROGRAM, "drill", SURVEY, "--format", "json", "--weight", "weight", "--categorical", "sex,region",
               "--down", "sex=Female", "--down", "region=#0", "--up", "sex", "--quiet"]
    steps = json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)["steps"]
    assert [{**left._asdict(), "steps": [step._asdict() for step in left.steps]} for left in seen[:-1]] == [
        step["subset"] for step in steps]
    assert seen[-1] == seen[0]


def test_a_remark_is_a_warning_of_its_own():
    with quillara.open(SURVEY).drill("sex") as drill, pytest.warns(quillara.Remark, match="isn't in force") as warned:
        drill.Frequencies
        drill.Frequencies
    assert [(each.message.code, each.category) for each in warned] == [("weight-unused", quillara.Remark)]


def test_steps_on_dates_are_told_as_dates():
    with quillara.open(SURVEY).drill(continuous=["interview_date"]) as drill:
        drill.categorize("interview_date", "month")
        drill.down("interview_date", "2024-03-15")
        assert [step.category for step in drill.subset.steps] == ["2024-03"]


def test_statistics_of_dates_are_dates():
    pandas = pytest.importorskip("pandas")
    with quillara.open(SURVEY).drill("sex", ["interview_date", "interview_start", "age"]) as drill:
        told = drill.distribution()
        assert isinstance(told.loc["interview_date", "Mean"], pandas.Timestamp)
        assert isinstance(told.loc["interview_start", "Median"], pandas.Timedelta)
        assert isinstance(told.loc["age", "Mean"], float)
        by_sex = drill.each("sex")
        assert by_sex["interview_date", "Mean"].dtype.kind == "M" and by_sex["interview_start", "Median"].dtype.kind == "m"
        assert told.loc["interview_date", "Minimum"] <= by_sex["interview_date", "Mean"].min()


DRILL_RESULTS = "Summary", "Frequencies", "Descriptives", "Histograms", "PieCharts", "StackedPlots", "Save"
STEP, OPEN, NUMBER, REVIEW = "no step is in force", "a drill variable without a step", "a continuous drill variable", "no variables for review"
REFUSED = [
    # variables, review variables   results, and why they can't be given
    ("", "",                        {"Frequencies Histograms PieCharts StackedPlots": OPEN, "Descriptives": NUMBER, "Summary": STEP,
                                     "Save": "no drill variables",
                                     "ReviewFrequencies ReviewHistograms ReviewPieCharts Review3DHistograms": REVIEW,
                                     "ReviewDescriptives ReviewBoxWhisker ReviewScatterplot": "continuous variables? for review"}),
    ("a", "b",                      {"Descriptives": NUMBER, "Summary": STEP, "ReviewScatterplot": "two continuous variables for review",
                                     "ReviewDescriptives ReviewBoxWhisker": "a continuous variable for review"}),
    ("a=x", "| n",                  {"Frequencies Histograms PieCharts StackedPlots": OPEN, "Descriptives": NUMBER,
                                     "ReviewScatterplot": "two continuous variables for review"}),
    ("| n", "| n m",                {"Summary": STEP}),
]


@pytest.mark.parametrize(("variables", "reviews", "refused"), REFUSED, ids=[f"{first}; {second}" for first, second, _ in REFUSED])
def test_a_result_that_cannot_be_given_says_why(variables, reviews, refused):
    table = quillara.table({"a": ["x", "y", "x"], "b": ["u", "u", "v"], "n": [1.0, 2, 3], "m": [4.0, 3, 5]})
    name, _, category = variables.partition("=")
    whys = {member: why for members, why in refused.items() for member in members.split()}
    with table.drill(name) as drill:
        if reviews:
            drill.ReviewVariables = reviews
        if category:
            drill.down(name, category)
        for member in [each for each in dir(type(drill)) if each.startswith("Review") or each in DRILL_RESULTS]:
            if member in whys:
                with pytest.raises(quillara.Error, match=f"^{member}: .*{whys[member]}"):
                    getattr(drill, member)
            elif member not in ("ReviewVariables", "Review3DHistograms"):
                assert getattr(drill, member) is not None
