"""Derived variables against pandas, over real tables."""

import os
import pathlib
import subprocess

import numpy
import pandas
import pytest
from conftest import PROGRAM, failure_of

import quillara

DATA = pathlib.Path(os.environ.get("QUILLARA_TEST_DATA", "none"))
pytestmark = pytest.mark.skipif(not DATA.is_dir(), reason="QUILLARA_TEST_DATA names no folder of tables")


def same_where(condition, one, other, missing):
    """The one where the condition holds, else the other; missing where the condition is."""
    return numpy.where(missing, numpy.nan, numpy.where(condition, one, other))


# A file, a formula, and the same in pandas.
FORMULAS = [
    ("adult.csv", "(capital_gain - capital_loss) / hours_per_week * 1.5",
     lambda f: (f.capital_gain - f.capital_loss) / f.hours_per_week * 1.5),
    ("adult.csv", "log(fnlwgt) + sqrt(age) - exp(-education_num) / abs(age - 40)",
     lambda f: (numpy.log(f.fnlwgt) + numpy.sqrt(f.age) - numpy.exp(-f.education_num)
                / (f.age - 40).abs()).where(f.age != 40)),
    ("adult.csv", "min(age, hours_per_week, 50) + max(education_num, floor(age / 7))",
     lambda f: numpy.minimum(numpy.minimum(f.age, f.hours_per_week), 50)
     + numpy.maximum(f.education_num, numpy.floor(f.age / 7))),
    ("adult.csv", "if(sex = 'female' and age between 25 and 40 or education in ('Masters', \"Doctorate\"), age, 0 - 1)",
     lambda f: f.age.where((f.sex == "Female") & f.age.between(25, 40)
                           | f.education.isin(["Masters", "Doctorate"]), -1)),
    ("adult.csv", "length(lower(education)) + length(upper(race))", lambda f: f.education.str.len() + f.race.str.len()),
    ("adult.csv", "cut(age, 25, 45, 65)",
     lambda f: pandas.cut(f.age, [-numpy.inf, 25, 45, 65, numpy.inf], labels=False) + 1),
    ("penguins.csv", "bill_length_mm / bill_depth_mm", lambda f: f.bill_length_mm / f.bill_depth_mm),
    ("penguins.csv", "if(missing(sex), 9, flipper_length_mm)",
     lambda f: f.flipper_length_mm.where(f.sex.notna(), 9)),
    ("penguins.csv", "if(sex = 'MALE', body_mass_g, missing())",
     lambda f: f.body_mass_g.where(f.sex.str.lower() == "male")),
    ("penguins.csv", "body_mass_g > 4000 or not sex <> 'male'",
     lambda f: same_where((f.body_mass_g > 4000) | (f.sex.str.lower() == "male"), 1, 0,
                          f.body_mass_g.isna() | f.sex.isna())),
]


@pytest.mark.parametrize("file, formula, expected", FORMULAS, ids=[row[1][:40] for row in FORMULAS])
def test_a_formula_gives_what_pandas_gives(file, formula, expected):
    table = quillara.open(DATA / file).compute("result", formula)
    frame = pandas.read_csv(DATA / file)
    with numpy.errstate(all="ignore"):
        reference = pandas.Series(expected(frame), dtype=float)
    assert table["result"].label == formula
    got = table.to_pandas(labels=False)["result"].astype(float)
    numpy.testing.assert_allclose(got, reference, rtol=1e-12)
    if table["result"].labels == {0: "no", 1: "yes"}:
        with table.select("result = 'yes'").drill("result") as drill:
            assert drill.Frequencies.RowNames == ["yes"]


def test_texts_of_formulas_are_texts():
    table = quillara.open(DATA / "penguins.csv").compute("place", "if(island = 'Dream', upper(species), lower(island))")
    frame = pandas.read_csv(DATA / "penguins.csv")
    expected = frame.species.str.upper().where(frame.island == "Dream", frame.island.str.lower())
    assert table.to_pandas()["place"].astype(str).tolist() == expected.tolist()
    assert failure_of(lambda: table.compute("place", "1"))[1] == \
        'The data have a variable "place" already; a derived one takes another name.'


def test_what_a_formula_notices_warns():
    table = quillara.open(DATA / "penguins.csv").compute("x", "sex = 'mALE'")
    with pytest.warns(quillara.Remark, match='"mALE" in these letters'):
        table.drill("x").close()


def test_a_recorded_drill_with_formulas_gives_the_same_again(tmp_path):
    drill = [PROGRAM, "drill", DATA / "penguins.csv", "--compute", "ratio=bill_length_mm / bill_depth_mm", "--compute",
             "long=ratio > 2", "--select", "sex = 'mALE' or ratio > 3",
             "--categorical", "species,long", "--continuous", "ratio", "--down", "long=yes", "--format", "json"]
    script = tmp_path / "again.py"
    first = subprocess.run([*drill, "--record", script], capture_output=True, text=True, check=True)
    again = subprocess.run([PROGRAM, "run", "--format", "json", script], capture_output=True, text=True, check=True)
    assert "table.compute(" in script.read_text() and first.stdout == again.stdout and first.stderr == again.stderr


def test_several_categories_are_one_step():
    table = quillara.open(DATA / "adult.csv")
    name = table.group("education", ["masters", "Doctorate"])
    with table.drill(["sex", name]) as drill:
        drill.down("education", ["Masters", "Doctorate"])
        frame = pandas.read_csv(DATA / "adult.csv")
        assert len(drill.cases) == frame.education.isin(["Masters", "Doctorate"]).sum()
        assert failure_of(lambda: drill.down("sex", ["Male", "Female"]))[1].startswith(
            "Several categories at once are a variable of their own: table.group(")
