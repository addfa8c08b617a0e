"""Categorizations in a word, what becomes of them, and names that categories share."""

import warnings

import pytest
from conftest import SURVEY, failure_of

import quillara


def rows(drill, variable):
    return drill.Frequencies[variable].RowNames


@pytest.fixture
def three(survey):
    with survey.drill("sex", "age income interview_date") as begun:
        yield begun


CUT = ["x<=30", "30<x<=60", "60<x"]


def test_a_categorization_is_kept_whichever_variable_is_drilled(three, survey):
    three.categorize("age", "bounds:30,60")
    three.categorize("income", "exact:4")
    three.down("sex", "Female")
    assert rows(three, "age") == CUT and len([name for name in rows(three, "income") if name != "Missing"]) == 4
    three.down("age", 45)
    three.up("age")
    assert rows(three, "age") == CUT
    three.categorize(survey.names.index("income") + 1, "integer")  # a variable by its number
    three.DrillDownVariable = "age"  # current by its name
    three.categorize("age", "bounds:50")
    assert rows(three, "age") == ["x<=50", "50<x"]


def test_members_that_are_written_are_kept_by_a_step_on_another_variable(three):
    three.DrillDownVariable = "age"
    three.UserSpecifiedCategories = 1
    three.UserDefinedBoundaries = "30 60"
    told = failure_of(lambda: three.UserDefinedBoundaries)[1]
    assert "once a step or a result has used them" in told
    three.down("sex", "Female")
    assert rows(three, "age") == CUT


def test_dates_are_cut_by_the_calendar_as_the_command_line_does(three):
    three.categorize("interview_date", "year")
    assert rows(three, "interview_date") == ["x<=20088"]
    three.categorize("interview_date", "bounds:2000-01-01")
    assert rows(three, "interview_date") == ["x<=10957", "10957<x"]


@pytest.mark.parametrize("variable, method, text", [
    ("age", "exakt:3", "Unknown method"),
    ("age", "exact:1", "from 2 to 999"),
    ("age", "month", "holds no dates"),
    ("sex", "exact:3", "holds texts"),
    ("region", "exact:3", "no drill variable"),
    ("nowhere", "exact:3", "no variable \"nowhere\""),
])
def test_what_cant_be_categorized_is_refused_and_changes_nothing(three, variable, method, text):
    before = rows(three, "age")
    code, told, member = failure_of(lambda: three.categorize(variable, method))
    assert member == "categorize" and text in told and rows(three, "age") == before


def test_steps_of_nothing_are_remarked(three):
    with pytest.warns(quillara.Remark, match='Steps of 0 make no intervals of the variable "income"') as remarks:
        three.categorize("income", "step:0")
    assert remarks[0].message.code == "no-step" and remarks[0].filename == __file__


def test_a_name_that_categories_share_is_remarked():
    labels = {"a": {1: "x", 2: "x", 3: "y"}}
    with quillara.table({"a": [1, 2, 2, 3]}, labels=labels).drill("a") as drill:
        with pytest.warns(quillara.Message, match='2 categories of "a" are called "x"') as remarks:
            drill.down("a", "X")
        assert remarks[0].message.code == "equal-names" and '"#1"' in str(remarks[0].message) and remarks[0].filename == __file__
        drill.up("a")
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            drill.down("a", "#1")
            assert drill.cases.Cases == 2
            drill.up("a")
            drill.down("a", "y")


def test_failures_say_what_was_called_and_what_to_do(survey):
    drill = survey.drill("sex", "age")
    drill.down("sex", "Female")
    assert 'drill.up("sex")' in failure_of(lambda: drill.down("sex", 1))[1]
    assert "ReviewVariables" in failure_of(lambda: drill.ReviewFrequencies)[1]
    assert "double_click (2)" in failure_of(lambda: drill.Application.Answer([("clik", 1)]))[1]
    with pytest.raises(KeyError, match="there is: .*'age'"):
        drill.Frequencies["agee"]
    assert "down on sex" in repr(drill) and "<td>age</td>" in drill.cases._repr_html_()
    drill.close()
    assert failure_of(lambda: drill.down("sex", 1))[2] == "down" and failure_of(lambda: drill.cases)[2] == "cases"
    assert repr(drill) == "<quillara.Drill: closed>"


def test_data_hint_at_what_is_meant():
    assert quillara.open(SURVEY)["sex"].labels == {"F": "Female", "M": "Male"}
    assert "['my group']" in failure_of(lambda: quillara.table({"my group": [1, 2]}).drill("my group"))[1]
    with pytest.warns(quillara.Message, match="separator: this has no effect"):
        quillara.open(SURVEY, separator=";")


def test_numbers_with_too_many_values_for_categories_are_remarked(recwarn):
    for values, codes in ((2047, []), (3000, ["too-many-categories"])):
        recwarn.clear()
        with quillara.table({"n": [float(place) for place in range(values)]}).drill("n") as drill:
            counts = drill.Frequencies.RowNames
            assert (len(counts) < values) == bool(codes)
        assert [each.message.code for each in recwarn] == codes
        recwarn.clear()
        with quillara.table({"n": [float(place) for place in range(values)]}).drill(continuous="n") as drill:
            drill.categorize("n", "distinct")
        assert [each.message.code for each in recwarn] == codes
