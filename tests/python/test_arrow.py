"""Tables out and in by Arrow's C data interface."""

import ctypes
import datetime
import gc
import os
import struct
import warnings

import pandas
import pytest
from arrow import STREAM, Array, Column, Consumer, Producer, Stream, api, numbers, texts
from conftest import failure_of

import quillara

DAY = datetime.date
TABLE = {
    "q": [3, 1, None, 7], "n": [1.5, None, -1e300, 0], "t": ["b", None, "ä: 2", ""], "b": [True, None, False, True],
    "day": [DAY(2024, 2, 29), DAY(1582, 10, 15), None, DAY(1970, 1, 1)],
    "moment": [datetime.datetime(2024, 2, 29, 12), None, DAY(1969, 12, 31), DAY(1812, 6, 24)],
    "time": [datetime.time(1, 2, 3), None, datetime.time(0), datetime.time(23, 59, 59)],
    "long": [datetime.timedelta(hours=30), None, datetime.timedelta(0), datetime.timedelta(seconds=-1)],
}
LABELS = {"q": {1: "low", 7: "high", 9: "never asked"}}
OUT = [
    ("q", "i", ["3", "low", None, "high"]), ("n", "g", [1.5, None, -1e300, 0]), ("t", "u", ["b", None, "ä: 2", ""]),
    ("b", "i", ["True", None, "False", "True"]), ("day", "tdD", [19782, -141427, None, 0]),
    ("moment", "tsu:", [1709208000000000, None, -86400000000, -57534 * 86400000000]),
    ("time", "ttu", [3723000000, None, 0, 86399000000]), ("long", "tDu", [108000000000, None, 0, -1000000]),
]


def test_tables_go_out_with_labels_days_and_gaps():
    taken = Consumer(quillara.table(TABLE, labels=LABELS))
    gc.collect()  # the table has gone, its columns not
    assert taken.columns == OUT
    assert taken.entries == {"q": ["low", "3", "high", "never asked"], "b": ["False", "True"]}
    end = Array()
    assert taken.stream.get_next(taken.stream, end) == 0 and not end.release
    taken.release()


def test_what_goes_out_comes_in_again(survey):
    for table in (survey, quillara.table(TABLE, labels=LABELS)):
        frame = table.to_pandas()
        through = quillara.table(ThroughCapsule(table)).to_pandas()
        pandas.testing.assert_frame_equal(through, frame)
    named = quillara.table(pandas.DataFrame({"case": [1.0, 2]}, index=["a", "b"]))
    assert [column[::2] for column in Consumer(named).columns] == [("case_", ["a", "b"]), ("case", [1, 2])]


class ThroughCapsule:
    """Something that no table knows."""

    def __init__(self, source):
        self.source = source

    def __arrow_c_stream__(self, requested_schema=None):
        return self.source.__arrow_c_stream__()


def test_results_and_remaining_cases_go_out(drill):
    drill.down("sex", "Male")
    columns = Consumer(drill.Frequencies[0]).columns
    assert columns[0][:2] == ("row", "u") and columns[1][:2] == ("Count", "l") and columns[3][0] == "Percent(%)"
    assert columns[0][2][0] == "No certificate" and sum(columns[1][2]) == 923
    assert Consumer(drill.Summary).columns == [("Variable", "u", ["sex"]), ("Category", "u", ["Male"])]
    sex, education, age = Consumer(drill.cases).columns
    assert set(sex[2]) == {"Male"} and len(age[2]) == 923
    left = quillara.table(drill.cases)
    assert left["sex"].labels == {"F": "Female", "M": "Male"} and left.cases == 923
    with left.drill("education") as further:
        assert sum(further.Frequencies.to_pandas()["Count"]) == 923


VIEWS = b"".join([struct.pack("<i12s", 4, b"four"), struct.pack("<i4sii", 15, b"fift", 1, 2), bytes(16)])


@pytest.mark.parametrize("column, kind, values", [
    (Column("n", [], 2, 2), "number", [None, None]),
    (Column("b", [None, b"\x05"], 3), "number", ["True", "False", "True"]),
    (numbers("c", "b", [-1, None]), "number", [-1, None]),
    (numbers("C", "B", [255]), "number", [255]),
    (numbers("s", "h", [-300]), "number", [-300]),
    (numbers("S", "H", [65535]), "number", [65535]),
    (numbers("i", "i", [-70000]), "number", [-70000]),
    (numbers("I", "I", [2**32 - 1]), "number", [2**32 - 1]),
    (numbers("l", "q", [-2**53, 2**53]), "number", [-2**53, 2**53]),
    (numbers("L", "Q", [2**53]), "number", [2**53]),
    (numbers("f", "f", [0.5]), "number", [0.5]),
    (numbers("g", "d", [0.1, None]), "number", [0.1, None]),
    (numbers("g", "d", [1, 2, 3, None, 5, 6, 7, 8, None, 10], offset=2), "number", [3, None, 5, 6, 7, 8, None, 10]),
    (Column("d:19,3", [None, struct.pack("<4q", 12345, 0, -1, -1)], 2), "number", [12.345, -0.001]),
    (numbers("d:9,1,64", "q", [-25]), "number", [-2.5]),
    (numbers("d:4,0,32", "i", [7]), "number", [7]),
    (numbers("tdD", "i", [19782]), "date", ["2024-02-29"]),
    (numbers("tdm", "q", [19782 * 86400000]), "date", ["2024-02-29"]),
    (numbers("tss:", "q", [-86400]), "date", ["1969-12-31"]),
    (numbers("tsm:", "q", [43200000]), "datetime", ["1970-01-01 12:00:00"]),
    (numbers("tsu:", "q", [1709164800000000]), "date", ["2024-02-29"]),
    (numbers("tsn:", "q", [1709164800123456000]), "datetime", ["2024-02-29 00:00:00.123456"]),
    (numbers("tts", "i", [3723]), "time", ["0 days 01:02:03"]),
    (numbers("ttm", "i", [500]), "time", ["0 days 00:00:00.500000"]),
    (numbers("ttn", "q", [1000]), "time", ["0 days 00:00:00.000001"]),
    (numbers("tDs", "q", [-60]), "time", ["-1 days +23:59:00"]),
    (texts(["b", None, "ä", ""]), "text", ["b", None, "ä", ""]),
    (texts(["b", "a"], "U", "q"), "text", ["b", "a"]),
    (Column("vu", [None, VIEWS, b"", b"--fifteen letters"], 3), "text", ["four", "fifteen letters", ""]),
    (numbers("C", "B", [1, None, 0, 2], dictionary=texts(["z", "a", "z"])), "number", ["a", None, "z", "z"]),
    (numbers("l", "q", [1, 0], dictionary=numbers("l", "q", [10, None])), "number", [None, 10]),
])
def test_each_kind_of_column_comes_in(column, kind, values):
    source = Producer([column])
    table = quillara.table(source)
    assert (table.names, table["x"].kind) == (["x"], kind)
    back = table.to_pandas()["x"]
    del table
    assert source.open == 0
    told = [None if value is None or value != value or value is pandas.NaT else value for value in back]
    assert told == values or back.astype(str).tolist() == values


def test_chunks_are_joined_and_their_dictionaries_too():
    chunks = [[numbers("i", "i", [0, 1], dictionary=texts(["z", "a"])), texts(["1", None], name="y")],
              [numbers("i", "i", [1, 0, None], dictionary=texts(["b", "a"])), texts(["2", "1", "0"], name="y")]]
    source = Producer(*chunks)
    table = quillara.table(source, name="joined", labels={})
    assert source.open == 0 and repr(table) == "<quillara.Table: joined, 5 cases, 2 variables>"
    assert table["x"].labels == {1: "z", 2: "a", 3: "b"}
    assert [list(map(str, column)) for _, column in table.to_pandas().items()] == [
        ["z", "a", "a", "b", "nan"], ["1", "None", "2", "1", "0"]]


def place_of(table):
    """Where the values of the first column stand."""
    taken = Consumer(table)
    place = taken.array.children[0].contents.buffers[1]
    taken.release()
    return place


def test_doubles_of_one_chunk_stay_where_they_are():
    source = Producer([numbers("g", "d", [0.1, 0.2, 0.3, 0.4], offset=1), texts(["a", "b", "c"], name="t")])
    table = quillara.table(source)
    chunk = next(array for array in source.kept if isinstance(array, Array) and array.n_buffers == 2)
    assert source.open == 1 and place_of(table) == chunk.buffers[1] + 8
    with table.drill("t", "x") as drill:
        del table
        gc.collect()
        assert drill.Descriptives.Values[0][:3] == pytest.approx([0.3, 0.1, 0.2]) and source.open == 1
    del drill
    gc.collect()
    assert source.open == 0
    more = Producer([numbers("g", "d", [0.1])], [numbers("g", "d", [0.2])])
    assert quillara.table(more).to_pandas()["x"].tolist() == [0.1, 0.2] and more.open == 0


def test_labels_go_with_columns_and_rounding_is_told():
    table = quillara.table(Producer([numbers("i", "i", [1, 2])]), labels={"x": {1: "one"}})
    assert table.to_pandas()["x"].tolist() == ["one", "2"]
    for source in (Producer([numbers("l", "q", [2**53 + 1])]), {"x": [2**53 + 1]}, {"x": pandas.Series([-2**53 - 1])}):
        with pytest.warns(quillara.Message, match='"x" have more digits') as warned:
            quillara.table(source)
        assert warned[0].filename == __file__


@pytest.mark.parametrize("source, text", [
    (Producer([numbers("i", "i", [1]), Column("+l", [None, bytes(8)], 1, name="lists")]), 'The column "lists"'),
    (Producer([Column("z", [None, bytes(8), b""], 1)]), 'Arrow\'s "z"'),
    (Producer([numbers("tsu:UTC", "q", [1])]), 'The column "x" has a time zone'),
    (Producer([numbers("d:40,2,256", "q", [1])]), 'The column "x"'),
    (Producer([numbers("i", "i", [3], dictionary=texts(["a"]))]), "behind the end of its dictionary"),
    (Producer([numbers("i", "i", [1]), numbers("i", "i", [2])]), 'Two columns are called "x"'),
    (Producer([numbers("i", "i", [1])], wrong=numbers("i", "i", [1])), "one column"),
    (Producer([numbers("i", "i", [1])], [], wrong=None), "another number"),
    (Producer([numbers("i", "i", [1])], failure=b"the disk is gone"), "the disk is gone"),
])
def test_streams_that_no_table_holds_leave_nothing_behind(source, text):
    code, told, member = failure_of(lambda: quillara.table(source))
    assert text in told and member == "table" and source.open == 0


def test_a_stream_is_taken_once_and_capsules_of_others_are_refused():
    class Taken:
        def __init__(self, capsule):
            self.capsule = capsule

        def __arrow_c_stream__(self, requested_schema=None):
            return self.capsule

    capsule = quillara.table({"a": [1]}).__arrow_c_stream__()
    assert quillara.table(Taken(capsule)).cases == 1
    assert "taken already" in failure_of(lambda: quillara.table(Taken(capsule)))[1]
    for other in (api.PyCapsule_New(ctypes.addressof(Stream()), b"something", None), 7):
        assert failure_of(lambda: quillara.table(Taken(other)))[2] == "table"


def resident():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def test_nothing_leaks_and_columns_of_doubles_are_not_copied():
    table = quillara.table({"a": [i / 7 for i in range(200_000)], "t": ["x", "y"] * 100_000})
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        for round in range(30):
            table.__arrow_c_stream__()  # nobody takes it
            Stream.from_address(api.PyCapsule_GetPointer(table.__arrow_c_stream__(), STREAM))
            quillara.table(ThroughCapsule(table))
            begin = resident() if round == 5 else begin if round > 5 else 0
    assert resident() - begin < 3_000_000
    one, other = Consumer(table), Consumer(table)
    places = [taken.array.children[0].contents.buffers[1] for taken in (one, other)]
    assert places[0] == places[1]
    one.release(), other.release()
