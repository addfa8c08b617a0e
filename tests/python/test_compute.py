"""Derived variables against pandas, over real tables."""

import os
import pathlib
import subprocess

import numpy
import pandas
import pytest
from conftest import PROGRAM, SURVEY, failure_of

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


def test_what_a_formula_notices_warns_at_once_and_not_again(recwarn):
    table = quillara.open(DATA / "penguins.csv")
    for formula, text, code in (("sex = 'mALE'", '"mALE" in these letters', "text-other-case"),
                                ("species = 'Gento'", 'is "Gento". Near to it: "Gentoo".', "text-not-found")):
        with pytest.warns(quillara.Remark) as caught:
            table.compute(f"x{code}", formula).select(formula)
        assert [(text in str(each.message), each.message.code) for each in caught] == [(True, code)] * 2
    recwarn.clear()
    table.drill("species").close()
    assert len(recwarn) == 0


def test_a_recorded_drill_with_formulas_gives_the_same_again(tmp_path):
    drill = [PROGRAM, "drill", DATA / "penguins.csv", "--compute", "ratio=bill_length_mm / bill_depth_mm", "--compute",
             "long=ratio > 2", "--select", "sex = 'mALE' or ratio > 3",
             "--categorical", "species,long", "--continuous", "ratio", "--down", "long=yes", "--format", "json"]
    script = tmp_path / "again.py"
    first = subprocess.run([*drill, "--record", script], capture_output=True, text=True, check=True)
    again = subprocess.run([PROGRAM, "run", "--format", "json", script], capture_output=True, text=True, check=True)
    assert "table.compute(" in script.read_text() and first.stdout == again.stdout and first.stderr == again.stderr


def test_several_categories_are_one_step():
    frame = pandas.read_csv(DATA / "adult.csv")
    study = frame.education.isin(["Masters", "Doctorate"])
    with quillara.open(DATA / "adult.csv").drill("sex education", "age") as drill:
        drill.ReviewVariables = "race | fnlwgt"
        drill.categorize("age", "bounds:30.123456789,60")
        drill.down("sex", "Female")
        drill.down("age", 45)
        drill.down("education", ["masters", "Doctorate"])
        rest = (frame.sex == "Female") & frame.age.between(31, 60)
        assert [each.variable for each in drill.subset.steps] == ["sex", "age", "education_group"]
        assert drill.subset.cases == (rest & study).sum() and len(drill.ReviewFrequencies) == 2
        tidy = drill.to_frame()
        assert set(zip(tidy["step"], tidy["cases"])) == {(3, drill.subset.cases)} and tidy["cases"].dtype == "int64"
        drill.up("education")
        assert drill.subset.cases == rest.sum()
        drill.down("education", ["Masters"])
        assert drill.subset.cases == (rest & (frame.education == "Masters")).sum()
        assert "is continuous" in failure_of(lambda: drill.down("age", [20, 30]))[1]
        assert "no category" in failure_of(lambda: drill.down("sex", ["Male", "none"]))[1]
        with pytest.raises(ValueError, match="one at least"):
            drill.down("sex", [])


def test_several_categories_give_the_documents_of_the_command_line(tmp_path):
    script = tmp_path / "several.py"
    lines = ("table.weight = 'weight'", "drill = table.drill('sex education region', 'age income')",
             "drill.ReviewVariables = 'commute | hours'", "drill.DrillDownVariable, drill.StepSize, drill.ValueStepSize = 'age', 1, 7",
             "drill.down('sex', 'Female')", "drill.down('age', '#3')",
             "drill.down('education', ['Vocational training', 'No certificate'])",
             "drill.Frequencies, drill.ReviewFrequencies, drill.Descriptives, drill.Summary")
    script.write_text(f"import quillara\ntable = quillara.open({SURVEY!r})\n" + "\n".join(lines))
    drill = ["--weight", "weight", "--categorical", "sex,education,region", "--continuous", "age,income", "--review-categorical",
             "commute", "--review-continuous", "hours", "--categorize", "age=step:7", "--down", "sex=Female", "--down", "age=#3",
             "--down", "education=Vocational training|No certificate", "--show", "frequencies,review-frequencies,descriptives,summary"]
    told = [subprocess.run([PROGRAM, *call, "--quiet", "--format", "json"], capture_output=True, text=True, check=True).stdout
            for call in (["drill", SURVEY, *drill],)]
    told.append(subprocess.run([PROGRAM, "run", "--quiet", "--format", "json", script], capture_output=True, text=True, check=True).stdout)
    assert told[0] == told[1]


def test_texts_among_the_continuous_variables_are_refused():
    table = quillara.open(DATA / "penguins.csv")
    assert failure_of(lambda: table.drill("sex", "island"))[1] == (
        'The variable "island" holds texts (3 different ones), which have no mean and no intervals; '
        "name it among the categorical variables, the first list.")
