"""Scripts that `quillara drill --record` writes: their runs give the documents of the drill."""

import json
import pathlib
import subprocess

import pytest
from conftest import PROGRAM, SURVEY

SAMPLES = pathlib.Path(SURVEY).parent
NAMED = ["--categorical", "sex,education,region", "--continuous", "age,income,interview_date"]
REVIEWS = ["--review-categorical", "commute,genre", "--review-continuous", "hours,income"]

DRILLS = [
    # the data and the options of a drill
    [SURVEY],
    [SURVEY, "--weight", "weight", "--weighted-moments", "--down", "sex=Female", "--after", "each"],
    [SURVEY, *NAMED, "--select", 'age > 30 and sex = "Female"', "--down", "education=#1", "--down", "age=40", "--up",
     "education", "--show", "summary,histograms,pies,stacked,descriptives", "--after", "each"],
    [SURVEY, *NAMED, "--categorize", "age=bounds:25,45.123456789", "--categorize", "income=step:500.5@100",
     "--categorize", "interview_date=exact:4", "--down", "age=30", "--down", "interview_date=#2", "--down", "income=#0"],
    [SURVEY, *NAMED, *REVIEWS, "--casewise", "--review-casewise", "--no-count-missing", "--down", "region=#2", "--show",
     "review-frequencies,review-descriptives,review-histograms,review-pies,review-stacked,scatter,hist3d", "--box-type",
     "median,1.96se", "--hist3d", "commute:hours,income"],
    [SURVEY, *NAMED, *REVIEWS, "--down", "sex=Female", "--after", "each", "--show", "hist3d"],
    [SURVEY, *NAMED, "--select", "age > 1000", "--show", "descriptives,frequencies,histograms"],
    [SURVEY, *REVIEWS, "--no-count-missing", "--show", "review-frequencies,box", "--box-type", "sd"],
    [str(SAMPLES / "survey.csv"), "--dictionary", str(SAMPLES / "survey-dictionary.csv"), "--separator", ",", "--decimal",
     ".", "--encoding", "UTF-8", "--missing", "none,-", "--categorical", "sex", "--continuous", "age", "--down", "sex=#1"],
    [SURVEY, *NAMED, *REVIEWS, "--weight", "weight", "--down", "sex=Female", "--each", "education", "--categorize", "age=neat:4"],
    [SURVEY, *NAMED, "--categorize", "age=bounds:30.123456789,60", "--each", "sex", "--each", "age", "--crosstab", "region:age",
     "--show", "frequencies,distribution,what-differs", "--no-count-missing"],
    [SURVEY, *NAMED, "--categorize", "interview_date=month", "--crosstab", "sex:interview_date,income", "--down", "sex=Female", "--down",
     "age=#1", "--show", "what-differs,histograms,distribution", "--after", "all"],
    [str(SAMPLES / "survey.csv"), "--no-header", "--categorical", "Var3,Var1", "--down", "Var3=#0"],
]


def run(*arguments):
    done = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True)
    return done.returncode, done.stdout, done.stderr


@pytest.mark.parametrize("options", DRILLS, ids=str)
def test_the_script_of_a_drill_gives_its_documents(tmp_path, options):
    script = str(tmp_path / "drill.py")
    status, drilled, said = run("drill", *options, "--format", "json", "--record", script)
    assert status == 0 and drilled.count('"title"') > 0
    status, replayed, _ = run("run", "--format", "json", script)
    drilled, replayed = json.loads(drilled), json.loads(replayed)
    cases = [[step["subset"]["cases"] for step in each["steps"]] for each in (replayed, drilled)]
    assert (status, replayed["documents"], cases[0]) == (0, drilled["documents"], cases[1])


def test_a_categorization_of_the_variable_that_is_drilled_next_is_part_of_its_step(tmp_path):
    script = tmp_path / "drill.py"
    assert run("drill", *DRILLS[3], "--record", str(script))[0] == 0
    lines = script.read_text()
    assert lines.index("drill.ValueNoOfExactIntervals = 4") < lines.index("drill.UserSpecifiedCategories = 1") == \
        lines.index("drill.UserSpecifiedCategories = 1\ndrill.Application.Answer")  # its digits are more than members take
    assert run("drill", SURVEY, *NAMED, "--categorize", "age=exact:3", "--down", "age=#1", "--record", str(script))[0] == 0
    assert "9053" not in script.read_text() and ("drill.DrillDownVariable = \"age\"\ndrill.NoOfExactIntervals = 1\n"
                                                 "drill.ValueNoOfExactIntervals = 3\n") in script.read_text()


def test_paths_of_a_recorded_script_are_meant_from_the_folder_in_which_it_runs(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "data").mkdir()
    (tmp_path / "data" / "survey.sav").write_bytes(pathlib.Path(SURVEY).read_bytes())
    drilled = run("drill", "data/survey.sav", "--categorical", "sex", "--format", "json", "--record", "data/drill.py")[1]
    assert run("run", "--format", "json", "data/drill.py")[:2] == (0, drilled)
    monkeypatch.chdir(tmp_path / "data")
    status, _, said = run("run", "--format", "json", "drill.py")
    assert status == 1 and "data/survey.sav" in said.splitlines()[-1]


@pytest.mark.parametrize("more, status, error", [
    (["--record", SURVEY],                                 2, "names the data file"),
    (["--record", "x.py", "--output", "./x.py"],           2, "--record and --output both name"),
    (["--record", "x.sav", "--save", "x.sav"],             2, "--record and --save both name"),
    (["--record", "no/folder/x.py"],                       1, "no/folder"),
    (["--record", "p/step0-histogram-01-a.svg", "--plots", "p", "--show", "histograms"], 2, "the file of --record"),
])
def test_a_script_that_cant_be_written_is_one_line(tmp_path, monkeypatch, more, status, error):
    monkeypatch.chdir(tmp_path)
    found, out, errors = run("drill", SURVEY, "--quiet", "--categorical", "sex", *more)
    assert (found, out) == (status, "") and error in errors
    assert errors.startswith("quillara: ") and errors.count("\n") == status
