"""Tables from frames and columns, and back."""

import datetime

import numpy
import pandas
import pytest
from conftest import failure_of

import quillara

FRAME = pandas.DataFrame({
    "size": pandas.Categorical(["small", "large", None, "small"], categories=["small", "medium", "large"]),
    "number": [1.5, numpy.nan, 3.0, -1e300],
    "whole": pandas.array([1, None, 3, 4], dtype="Int64"),
    "text": ["b", "a", None, "ä: 2"],
    "day": pandas.to_datetime(["2024-02-29", None, "1969-12-31 06:30:00.25", "1812-06-24"]),
    "time": pandas.to_timedelta(["01:02:03", "00:00:00.5", None, "23:59:59"]),
    "yes": [True, False, True, True],
})


def test_frames_come_back_as_they_went_in():
    table = quillara.table(FRAME)
    kinds = ["number", "number", "number", "text", "date", "time", "number"]
    assert (table.cases, [variable.kind for variable in table.variables]) == (4, kinds)
    assert table["size"].labels == {1: "small", 2: "medium", 3: "large"} and table["text"].labels == {}
    back = table.to_pandas()
    expected = FRAME.assign(whole=[1.0, numpy.nan, 3.0, 4.0],
                            yes=pandas.Categorical(["True", "False", "True", "True"], categories=["False", "True"]))
    pandas.testing.assert_frame_equal(back, expected)
    pandas.testing.assert_frame_equal(quillara.table(back).to_pandas(), expected)


def test_plain_columns_need_no_pandas():
    table = quillara.table({
        "n": [1, None, 2.5], "t": ["x", None, "y"], "b": [True, None, False],
        "d": [datetime.date(2024, 2, 29), None, datetime.datetime(2024, 3, 1, 12)],
        "c": [datetime.time(1, 2, 3), datetime.timedelta(seconds=5), None],
    }, name="plain")
    assert [variable.kind for variable in table.variables] == ["number", "text", "number", "date", "time"]
    frame = table.to_pandas()
    assert frame["d"].astype(str).tolist() == ["2024-02-29 00:00:00", "NaT", "2024-03-01 12:00:00"]
    assert frame["c"].dt.total_seconds().tolist()[:2] == [3723, 5] and frame.isna().sum().tolist() == [1] * 5
    with table.drill("t") as drill:
        assert drill.Frequencies.RowNames == ["x", "y", "Missing"]


@pytest.mark.parametrize("columns, text", [
    ({"a": [1, "x"]}, "several kinds"),
    ({"a": [1, 2], "b": [1]}, "another length"),
    ([1, 2], "dict of columns"),
    ({1: [1], "1": [2]}, "Two columns"),
    ({"a": pandas.Series(pandas.to_datetime(["2024-01-01"])).dt.tz_localize("UTC")}, "time zone"),
    ({"a": [1j]}, "kinds"),
])
def test_columns_that_no_table_holds_are_refused(columns, text):
    code, told, member = failure_of(lambda: quillara.table(columns))
    assert text in told and member == "table"


def test_names_of_cases_are_the_index_and_labels_of_one_text_differ(survey):
    frame = pandas.DataFrame({"a": [1.0, 2.0]}, index=["first", "second"])
    pandas.testing.assert_frame_equal(quillara.table(frame).to_pandas(), frame)
    twice = quillara.table({"c": pandas.Series(pandas.Categorical([1.0, 1]))})
    assert twice["c"].labels == {1: "1.0"}


def test_the_survey_as_a_frame(survey):
    frame = survey.to_pandas()
    assert frame.shape == (2000, 18) and survey.declared_weight == "weight" and survey.weight is None
    assert frame["sex"].value_counts().to_dict() == {"Female": 1077, "Male": 923}
    assert list(frame["education"].cat.categories) == list(survey["education"].labels.values())
    assert frame["income"].isna().sum() == 64 and frame["interview_date"].min() == pandas.Timestamp("2024-02-01")
    assert frame["interview_start"].max() == pandas.Timedelta("20:30:00")
    assert frame["commute"].isna().sum() == 728


def test_selection_weight_and_remaining_cases(survey):
    frame = survey.to_pandas()
    try:
        survey.weight = "weight"
        assert survey.select('age > 40 and sex = "Male"') is survey
        with survey.drill("region", "age") as drill:
            drill.WeightedMoments = 1
            drill.down("region", "Central Plain")
            left = drill.cases.to_pandas()
            descriptives = drill.Descriptives.to_pandas()
    finally:
        survey.select(None).weight = None
    chosen = frame[(frame["age"] > 40) & (frame["sex"] == "Male") & (frame["region"] == "Central Plain")]
    assert left["age"].tolist() == chosen["age"].tolist() and len(left)
    mean = numpy.average(chosen["age"], weights=chosen["weight"])
    assert descriptives.iloc[0, 0] == pytest.approx(mean, rel=1e-12)
