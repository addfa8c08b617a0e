"""The sample scripts and the notebook, as people run them."""

import ast
import json
import pathlib
import subprocess
import sys

import numpy
import pytest
from conftest import SURVEY

import quillara

SAMPLES = pathlib.Path(SURVEY).parent


def lines_of(script, folder, *arguments):
    command = [sys.executable, "-W", "error", "-W", "ignore:The step ", str(SAMPLES / script), *map(str, arguments)]
    done = subprocess.run(command, cwd=folder, capture_output=True, text=True)
    assert done.returncode == 0 and done.stderr == "", done.stderr
    return done.stdout.splitlines()


@pytest.fixture(scope="module")
def people():
    return quillara.open(SURVEY).to_pandas()


def test_minutes_and_satisfaction_are_those_of_the_cases(people, tmp_path):
    lines = lines_of("commuting.py", tmp_path)
    workers = people[people["hours"] > 0]
    drivers = workers[(workers["commute"] == "Car") & (workers["settlement"] == "Village")]
    mean = numpy.average(drivers["commute_minutes"], weights=drivers["weight"])
    assert lines[3].split()[0] == "Village" and lines[3].split()[4] == f"{mean:.1f}"
    far = workers[(workers["commute_minutes"] > 60) & workers["satisfaction"].notna()]
    content = far[far["satisfaction"].isin(["Rather satisfied", "Very satisfied"])]
    share = f"{100 * content['weight'].sum() / far['weight'].sum():.1f}"
    assert lines[-1].split() == ["60<x", "minutes:", share, "%", "are", "satisfied"]


def test_books_are_those_of_the_cases_and_the_picture_is_there(people, tmp_path):
    lines = lines_of("readers.py", tmp_path, tmp_path / "genres.svg")
    chosen = people[(people["education"] == "Vocational training") & (people["commute"] == "Train")]
    assert lines[6].split()[:2] == ["Vocational", "training"] and lines[6].split()[-1] == f"{chosen['books_read'].mean():.1f}"
    assert f"{(people['books_read'] > 20).sum()} people, " in "\n".join(lines)
    assert (tmp_path / "genres.svg").read_text().startswith("<?xml")


def test_a_frame_is_explored_and_its_remaining_cases_are_saved(people, tmp_path):
    lines = lines_of("hourly_pay.py", tmp_path)
    alone = people[(people["hours"] > 0) & (people["household_size"] == 1) & people["income"].notna()]
    trained = alone[alone["education"] == "Vocational training"]
    assert lines[0].startswith(f"All {len(alone)}: women have ") and len(lines) == 6
    saved = quillara.open(tmp_path / "vocational.sav").to_pandas()
    assert len(saved) == len(trained) and set(saved["education"]) == {"Vocational training"}
    assert (tmp_path / "hourly-pay.png").read_bytes().startswith(b"\x89PNG")


def shown(value):
    """What a notebook shows of the last value of a cell."""
    for form in ("_repr_html_", "_repr_svg_"):
        if hasattr(value, form):
            return getattr(value, form)()
    return repr(value)


def run_cell(source, names):
    *statements, last = ast.parse(source).body
    ends_with_value = isinstance(last, ast.Expr)
    exec(compile(ast.Module(statements + ([] if ends_with_value else [last]), []), "cell", "exec"), names)
    return shown(eval(compile(ast.Expression(last.value), "cell", "eval"), names)) if ends_with_value else ""


def test_the_notebook_runs_and_shows_its_results(monkeypatch):
    monkeypatch.chdir(SAMPLES)
    notebook = json.loads((SAMPLES / "first-look.ipynb").read_text(encoding="utf-8"))
    names = {}
    shows = [run_cell("".join(cell["source"]), names) for cell in notebook["cells"] if cell["cell_type"] == "code"]
    for text, found in zip(["Day of the interview", "Very satisfied", "commute = Train", "<svg", "Summary",
                            "commute_minutes", "Percent"], shows):
        assert text in found
    assert names["low"]["Count"].sum() == (names["left"]["class"] == "low").sum() > 0
