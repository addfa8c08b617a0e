"""Tables from frames and columns, and back."""

import datetime
import gc
import struct
import weakref

import numpy
import pandas
import pytest
from arrow import Consumer
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
    kinds = ["number", "number", "number", "text", "datetime", "time", "number"]
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
    assert [variable.kind for variable in table.variables] == ["number", "text", "number", "datetime", "time"]
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
    ({"a": [1j]}, "no room for: 1j"),
    ({"a": ["x", "\ud800"]}, '"a" has a text that can\'t be used: '),
    ({"a": [1, 10**400]}, '"a" has a whole number that is too large: 1000'),
    ({"a": [1.5, "2"]}, "several kinds: 1.5 and '2'"),
    ({"a": {1: 2}}, '"a" has no order'),
    ({"a\0b": [1]}, "has a null character"),
    ({"a": numpy.array([1j])}, '"a" has complex numbers'),
    ({"a": [datetime.datetime(2024, 1, 1, tzinfo=datetime.timezone.utc)]}, '"a" has a time zone'),
    ({"a": 3}, '"a" is a single value'),
    ({"a": "text"}, '"a" is a single value'),
    ({"a": numpy.ones((2, 2))}, '"a" has more than one dimension'),
    ({"a": [1], "labels": {"a": ["one"]}}, "Labels are given as"),
    ({"a": [1], "labels": {"a": {"x": "one"}}}, "Labels are given as"),
    ({"a": [1, 2], "labels": {"b": {1: "one"}}}, 'labels of "b"'),
    ({"a": ["x"], "labels": {"a": {1: "one"}}}, "only numbers"),
])
def test_columns_that_no_table_holds_are_refused(columns, text):
    labels = columns.pop("labels", None) if isinstance(columns, dict) else None
    code, told, member = failure_of(lambda: quillara.table(columns, labels=labels))
    assert text in told and member == "table"


def place_of(table):
    """Where the values of the first column stand."""
    taken = Consumer(table)
    place = taken.array.children[0].contents.buffers[1]
    taken.release()
    return place


def locked(values):
    array = numpy.array(values)
    array.setflags(write=False)
    return array


WRITEABLE = numpy.array([0.1, 0.2, 0.3, 0.4])
VIEW = WRITEABLE[:]
VIEW.setflags(write=False)


@pytest.mark.parametrize("array, stays", [
    (locked([0.1, 0.2, 0.3]), True),
    (locked([0.1, 0.2, 0.3])[1:], True),
    (numpy.frombuffer(struct.pack("2d", 0.1, 0.2)), True),
    (pandas.Series(locked([0.1, 0.2])), True),
    (WRITEABLE, False),
    (VIEW, False),
    (numpy.frombuffer(bytearray(16)), False),
    (locked([0.1, 0.2, 0.3])[::2], False),
    (locked([0.1, numpy.nan]), False),
])
def test_doubles_that_cannot_change_stay_where_they_are(array, stays):
    table = quillara.table({"x": array})
    assert (place_of(table) == numpy.asarray(array).ctypes.data) == stays
    before = table.to_pandas()
    WRITEABLE[:] = WRITEABLE + 1
    pandas.testing.assert_frame_equal(table.to_pandas(), before)


def test_frames_that_copy_on_write_are_not_copied():
    with pandas.option_context("mode.copy_on_write", True):
        frame = pandas.DataFrame({"x": [0.1, 0.2, 0.3], "y": [1.5, 2.5, 3.5], "gap": [numpy.nan, 1, 2]})
        place = frame["x"].to_numpy().ctypes.data
        table = quillara.table(frame)
        assert place_of(table) == place
        before = table.to_pandas()
        frame.loc[0, "x"] = 99
        frame["y"] += 1
        assert frame["x"].to_numpy().ctypes.data != place
        pandas.testing.assert_frame_equal(table.to_pandas(), before)
        kept = weakref.ref(frame)
        with table.drill("", "x") as drill:
            del frame, table
            gc.collect()
            assert kept() is None and drill.Descriptives.Values[0][0] == pytest.approx(0.2)


def test_frames_that_write_in_place_are_copied():
    frame = pandas.DataFrame({"x": [0.1, 0.2, 0.3]})
    table = quillara.table(frame)
    frame.loc[0, "x"] = 99
    assert table.to_pandas()["x"].tolist() == [0.1, 0.2, 0.3]


def test_names_of_cases_are_the_index_and_labels_of_one_text_differ(survey):
    frame = pandas.DataFrame({"a": [1.0, 2.0]}, index=["first", "second"])
    pandas.testing.assert_frame_equal(quillara.table(frame).to_pandas(), frame)
    twice = quillara.table({"c": pandas.Series(pandas.Categorical([1.0, 1]))})
    assert twice["c"].labels == {1: "1.0"}


CODES = {"q": [3, 1, 7, None, 3], "years": [12.5, 0, 0, 3, 1]}
LABELS = {"q": {1: "low", 7: "high", 9: "never asked"}, "years": {0: "none"}}
NAMED = {
    "q": pandas.Categorical(["3", "low", "high", None, "3"], categories=["low", "3", "high", "never asked"]),
    "years": pandas.Categorical(["12.5", "none", "none", "3", "1"], categories=["none", "1", "3", "12.5"]),
}


@pytest.mark.parametrize("labels, named", [(True, ["q", "years"]), (False, []), (["q"], ["q"]), ("years", ["years"])])
def test_values_without_a_label_go_by_their_number(labels, named):
    table = quillara.table(CODES, labels=LABELS)
    expected = pandas.DataFrame(CODES, dtype=float).assign(**{name: NAMED[name] for name in named})
    pandas.testing.assert_frame_equal(table.to_pandas(labels), expected)
    with table.drill("q", "years") as drill:
        pandas.testing.assert_frame_equal(drill.cases.to_pandas(labels), expected)


def test_delimited_text_is_read_as_asked(tmp_path):
    path = tmp_path / "plain.txt"
    path.write_bytes("M\xfcller|1,5|none\nMaier|-|2\n".encode("latin-1"))
    table = quillara.open(path, separator="|", decimal=",", header=False, encoding="latin1", missing=["-", "none"])
    assert table.to_pandas().values.tolist()[0][:2] == ["Müller", 1.5] and table.to_pandas().isna().sum().sum() == 2
    assert failure_of(lambda: quillara.open(path, encoding="none such"))[::2] == (0x80070057, "open")


def test_rows_of_dates_are_named_as_people_read_them(survey):
    with survey.drill("interview_date") as drill:
        assert drill.Frequencies.to_pandas().index[0] == "2024-02-01"


def test_labels_that_read_alike_differ_in_a_frame():
    table = quillara.table({"a": [1, 2, 3, 4]}, labels={"a": {1: "x", 2: "x", 4: "x (1)", 7: ""}})
    assert table.to_pandas()["a"].tolist() == ["x (1) (1)", "x (2)", "3", "x (1) (4)"]
    with pytest.raises(KeyError):
        table.to_pandas(["b"])
    assert list(table) == ["a"] and "a" in table and "b" not in table


def test_days_beyond_those_of_pandas_stay_days():
    days = [datetime.date(1582, 10, 15), None, datetime.date(9999, 12, 31)]
    frame = quillara.table({"d": days}).to_pandas()
    assert [day and day.date() for day in frame["d"]] == days
    assert quillara.table(frame).to_pandas().equals(frame)


def test_the_survey_as_a_frame(survey):
    frame = survey.to_pandas()
    assert frame.shape == (2000, 18) and survey.declared_weight == "weight" and survey.weight is None
    assert frame["sex"].value_counts().to_dict() == {"Female": 1077, "Male": 923}
    assert list(frame["education"].cat.categories) == list(survey["education"].labels.values())
    assert survey["sex"].categories == ["Female", "Male"] and survey["settlement"].categories == ["City", "Town", "Village"]
    assert survey["age"].categories == [] and survey["region"].categories == list(frame["region"].cat.categories)
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


MOMENTS = ["2024-02-29 23:59:59.123456", None, "1969-12-31 06:30:00.25", "2024-03-01", "1700-01-01 00:00:01"]


@pytest.mark.parametrize("format", ["sav", "zsav", "dta", "csv", "xlsx", "qtable"])
def test_dates_with_times_go_through_files(tmp_path, format):
    path = tmp_path / f"t.{format}"
    # Days before 1900 stand as texts in a sheet.
    moments = pandas.to_datetime(pandas.Series(MOMENTS[:4] if format == "xlsx" else MOMENTS))
    with quillara.table({"t": moments, "x": list(range(len(moments)))}).drill("x", "t") as drill:
        losses = drill.cases.save(path)
    back = quillara.open(path)
    precise = format in ("dta", "csv", "qtable")
    assert back["t"].kind == "datetime" and bool(losses) == (not precise)
    frame = back.to_pandas()
    assert ((frame["t"] - moments).abs().dropna() <= pandas.Timedelta("0us" if precise else "1ms")).all()
    assert frame["t"].isna().tolist() == moments.isna().tolist()
    theirs = {"dta": lambda: pandas.read_stata(path)["t"], "xlsx": lambda: pandas.read_excel(path)["t"],
              "csv": lambda: pandas.read_csv(path, parse_dates=["t"])["t"]}.get(format)
    if theirs:
        assert ((theirs() - moments).abs().dropna() <= pandas.Timedelta("1ms")).all()


def test_dates_with_times_are_stepped_on_and_come_by_pandas(tmp_path):
    moments = pandas.to_datetime(pandas.Series(MOMENTS[:4]))
    path = tmp_path / "t.dta"
    pandas.DataFrame({"t": moments.dt.floor("ms")}).to_stata(path, convert_dates={"t": "tc"}, write_index=False)
    assert quillara.open(path).to_pandas()["t"].equals(moments.dt.floor("ms"))
    moments[2] = pandas.Timestamp("2024-03-02 06:30:00.25")
    table = quillara.table({"t": moments, "day": moments.dt.normalize()})
    assert [variable.kind for variable in table.variables] == ["datetime", "date"]
    with table.drill(continuous=["t"]) as drill:
        drill.categorize("t", "day")
        for category in (datetime.datetime(2024, 3, 1), datetime.date(2024, 3, 1), "2024-03-01 12:00", moments[3]):
            drill.down("t", category)
            assert [step.category for step in drill.subset.steps] == ["2024-03-01"]
            assert drill.cases.to_pandas()["t"].tolist() == [moments[3]]
            drill.up("t")
        drill.down("t", datetime.datetime(2024, 2, 29, 12))
        assert [step.category for step in drill.subset.steps] == ["2024-02-29"]
