"""Missing values that a file tells apart."""

import json
import subprocess

import openpyxl
import pytest
from conftest import PROGRAM, SURVEY, failure_of

import quillara


def test_variables_have_them(survey):
    assert survey["satisfaction"].missing_values == {8.0: "Refused", 9.0: "No answer"}
    assert survey["sex"].missing_values == {}


def test_some_are_taken_as_values(survey):
    for given, left, count in (([9], {8.0: "Refused"}, 1), (["Refused"], {9.0: "No answer"}, 1), (True, {}, 2)):
        table = quillara.open(SURVEY, valid={"satisfaction": given})
        assert table["satisfaction"].missing_values == left
        assert len(table["satisfaction"].labels) == len(survey["satisfaction"].labels) + count
        valid = table.to_pandas(labels=False)["satisfaction"]
        assert (valid.count() > survey.to_pandas(labels=False)["satisfaction"].count()) and set(valid.dropna()) > {1, 2}


def test_subsets_keep_them(survey, tmp_path):
    table = quillara.open(SURVEY).select("missing(satisfaction, 9, 'Refused')")
    with table.drill("satisfaction sex") as drill:
        drill.down("sex", "Female")
        assert "\nMissing: Refused " in str(drill.frequencies[0])
        for ending in ("sav", "zsav", "qtable"):
            drill.cases.save(tmp_path / f"left.{ending}")
            left = quillara.open(tmp_path / f"left.{ending}", valid={"satisfaction": True})
            assert set(left.to_pandas(labels=False)["satisfaction"]) == {8.0, 9.0}


def test_workbooks_tell_them(survey, tmp_path):
    """Below a table of results; data have empty cells in their place, and a line says so."""
    def run(*arguments):
        return subprocess.run([PROGRAM, *arguments], cwd=tmp_path, check=True, capture_output=True)
    printed = run("drill", SURVEY, "--categorical", "satisfaction", "--show", "frequencies", "--quiet").stdout.decode().splitlines()
    run("drill", SURVEY, "--categorical", "satisfaction", "--show", "frequencies", "--output", "r.xlsx", "--quiet")
    *_, last = openpyxl.load_workbook(tmp_path / "r.xlsx")["frequencies satisfaction"].iter_rows(values_only=True)
    assert last[0] == printed[-1] and last[0].startswith("Missing: Refused ") and not any(last[1:])
    assert ('The missing values of "satisfaction" (8 "Refused", 9 "No answer") become blank fields in this format; '
            "sav and qtable keep them.") in run("convert", SURVEY, "copy.xlsx").stderr.decode().splitlines()
    written = [row[0] for row in openpyxl.load_workbook(tmp_path / "copy.xlsx").active.iter_rows(
        min_col=survey.names.index("satisfaction") + 1, max_col=survey.names.index("satisfaction") + 1, values_only=True)][1:]
    back = quillara.open(tmp_path / "copy.xlsx")
    assert written.count(None) == back.to_pandas()["satisfaction"].isna().sum() == survey.to_pandas()["satisfaction"].isna().sum() > 0
    assert back["satisfaction"].missing_values == {}


@pytest.mark.parametrize("valid, error", [({"satisfaction": 9}, TypeError), ({"satisfaction": []}, ValueError), (9, TypeError),
                                          ({"satisfaction": "9"}, TypeError)])
def test_what_valid_takes(valid, error):
    with pytest.raises(error, match="valid is given as"):
        quillara.open(SURVEY, valid=valid)


def test_what_is_not_there():
    text = failure_of(lambda: quillara.open(SURVEY, valid={"satisfaction": [7]}))[1]
    assert text == 'The variable "satisfaction" has no missing value "7"; it has 8 "Refused", 9 "No answer".'


def test_a_recorded_drill_takes_the_same_as_values(tmp_path):
    drill = ["drill", SURVEY, "--valid", "satisfaction=9", "--valid", "satisfaction=Refused", "--categorical", "satisfaction", "--show",
             "frequencies", "--format", "json", "--record", "r.py"]
    ran = [json.loads(subprocess.run([PROGRAM, *call], cwd=tmp_path, check=True, capture_output=True).stdout)["documents"]
           for call in (drill, ["run", "--format", "json", "r.py"])]
    assert ran[0] == ran[1] and ran[0][0]["rows"][-1]["name"] == "No answer"
    assert 'valid={"satisfaction": ["9", "Refused"]}' in (tmp_path / "r.py").read_text()
