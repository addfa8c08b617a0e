"""Wrong arguments of every call of the package: each is refused in Python's words, or taken for what it is."""

import math
import warnings

import pytest
from conftest import SURVEY

import quillara


class Mute:
    def __str__(self):
        raise RuntimeError("no text")

    __repr__ = __str__


class Unreadable(Mute):
    def __index__(self):
        raise RuntimeError("no number")


ENDLESS = []
ENDLESS.append(ENDLESS)
WRONG = [None, 3, -1, True, math.nan, math.inf, 1j, 2**70, 10**400, -10**5000, "", "-", "|", '"', "a\0b", "\ud800", "\ud83d\ude00",
         b"x", [], [1], [None], ["\ud800"], [[1], ["x"]], {}, {1: 2}, {1}, object(), Mute(), Unreadable(), print, range(3)]
CSV = "a,b\n1,x\n2,y\n"

CALLS = {
    "open": lambda d, value, path: quillara.open(value),
    "open separator": lambda d, value, path: quillara.open(path, separator=value),
    "open decimal": lambda d, value, path: quillara.open(path, decimal=value),
    "open encoding": lambda d, value, path: quillara.open(path, encoding=value),
    "open header": lambda d, value, path: quillara.open(path, header=value),
    "open skip": lambda d, value, path: quillara.open(path, skip=value),
    "open missing": lambda d, value, path: quillara.open(path, missing=value),
    "open dictionary": lambda d, value, path: quillara.open(path, dictionary=value),
    "table": lambda d, value, path: quillara.table(value),
    "column": lambda d, value, path: quillara.table({"a": value}),
    "value": lambda d, value, path: quillara.table({"a": [value]}),
    "value among texts": lambda d, value, path: quillara.table({"a": ["x", value]}),
    "value among numbers": lambda d, value, path: quillara.table({"a": [1.5, value]}),
    "name of a column": lambda d, value, path: quillara.table({value: [1]}),
    "name of a table": lambda d, value, path: quillara.table({"a": [1]}, value),
    "labels": lambda d, value, path: quillara.table({"a": [1]}, labels=value),
    "labels of a column": lambda d, value, path: quillara.table({"a": [1]}, labels={"a": value}),
    "labelled value": lambda d, value, path: quillara.table({"a": [1]}, labels={"a": {value: "x"}}),
    "label": lambda d, value, path: quillara.table({"a": [1]}, labels={"a": {1: value}}),
    "variable of a table": lambda d, value, path: d.table[value],
    "select": lambda d, value, path: d.table.select(value),
    "weight": lambda d, value, path: setattr(d.table, "weight", value),
    "drill": lambda d, value, path: d.table.drill(value).close(),
    "drill a list": lambda d, value, path: d.table.drill("sex", [value]).close(),
    "to_pandas": lambda d, value, path: d.table.to_pandas(value),
    "cases to_pandas": lambda d, value, path: d.cases.to_pandas([value]),
    "down": lambda d, value, path: d.down(value, "Female"),
    "down to": lambda d, value, path: d.down("sex", value),
    "up": lambda d, value, path: d.up(value),
    "place": lambda d, value, path: d.Frequencies[value],
    "place in one": lambda d, value, path: d.Frequencies[0][value],
    "event": lambda d, value, path: d.Summary.on(value, print),
    "listener": lambda d, value, path: d.Frequencies[0].on("Changed", value),
    "snake_case": lambda d, value, path: quillara.snake_case(value),
}
for member in ("Variables", "DrillDownVariable", "DrillUpVariable", "CountMD", "ValueStepSize", "DrillDownCategory",
               "CategorySelections", "UserDefinedBoundaries", "ResultsSaveFileName"):
    CALLS[member] = lambda d, value, path, member=member: setattr(d, member, value)
for member in ("Click", "Command", "DoubleClick", "Select", "Text", "Drag"):
    CALLS[member] = lambda d, value, path, member=member: getattr(d.window, member)(*[value] * {"C": 1, "D": 2, "S": 2, "T": 2}[member[0]])
for member in ("Cell", "Save"):
    CALLS[member] = lambda d, value, path, member=member: getattr(d.Frequencies[0], member)(*[value] * (2 if member == "Cell" else 1))
CALLS["Item"] = lambda d, value, path: d.Frequencies.Item(value)
CALLS["Series"] = lambda d, value, path: d.PieCharts[0].Series(value)
CALLS["Column"] = lambda d, value, path: d.cases.Column(value)
CALLS["Answer"] = lambda d, value, path: d.Application.Answer([("click", value)])
CALLS["Answers"] = lambda d, value, path: d.Application.Answer(value)

FOREIGN = ("C++", "pybind", "incompatible function", "Invoked with", "std::", "Unspecified", "no text", "no number", "NoneType' object")


class Session:
    """A drill that stands again when a call has ended it, and its table."""

    def __init__(self, path):
        self.path, self.table, self.drill = path, quillara.open(SURVEY), None

    def __getattr__(self, name):
        return getattr(self.standing(), name)

    def standing(self):
        try:
            self.drill.Name
        except (AttributeError, quillara.Error):
            self.__dict__["drill"] = self.table.drill("sex education", "age")
        return self.drill

    def __setattr__(self, name, value):
        own = name in ("path", "table", "drill")
        self.__dict__.update({name: value}) if own else setattr(self.standing(), name, value)


@pytest.mark.parametrize("name", CALLS)
def test_wrong_arguments_are_told_in_words_of_python(name, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    (tmp_path / "plain.csv").write_text(CSV)
    session = Session(str(tmp_path / "plain.csv"))
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        for value in WRONG + [ENDLESS]:
            try:
                CALLS[name](session, value, session.path)
            except RecursionError:
                assert value is ENDLESS
            except (quillara.Error, TypeError, ValueError, OverflowError, LookupError) as error:
                text = str(error) if not isinstance(error, KeyError) else ""  # which Python shows as the key
                assert not any(word in text for word in FOREIGN) and len(text) < 700, text
            session.table.select(None)
            session.table.weight = None
            session.table.drill("sex").close()
    session.standing().close()
    quillara.application().ClearAnswers()


@pytest.mark.parametrize("call, kind, text", [
    (lambda t: t.select(3), TypeError, "A selection is a formula such as 'age > 30', or None for all cases, not 3."),
    (lambda t: setattr(t, "weight", 3), TypeError, "A weight is the name of a variable, or None, not 3."),
    (lambda t: t.select("\ud800"), ValueError, "half of a character"),
    (lambda t: t[0], TypeError, "goes by its name, not by 0."),
    (lambda t: t.drill(3), TypeError, "a list of names and numbers, not 3."),
    (lambda t: t.drill([None]), TypeError, "None is neither."),
    (lambda t: t.to_pandas(None), TypeError, "labels is True, False or a list"),
    (lambda t: quillara.open(SURVEY, separator="ab"), ValueError, "separator is one ASCII character, not 'ab'."),
    (lambda t: quillara.open(SURVEY, missing="NA"), TypeError, "missing is a list of texts"),
    (lambda t: quillara.open("a\0b"), ValueError, "no null character"),
    (lambda t: quillara.table({"a": ["\ud800"]}), ValueError, "half of a character"),
    (lambda t: quillara.table({"a": [10**400]}), ValueError, "too large: 1000"),
    (lambda t: quillara.table(3), TypeError, "not of 3."),
    (lambda t: quillara.table({"a": [1]}, labels={"a": {1: Mute()}}), TypeError, "an object of the class Mute"),
])
def test_errors_are_of_the_class_that_python_has_for_them(survey, call, kind, text):
    with pytest.raises(kind) as caught:
        call(survey)
    assert text in str(caught.value)


def test_numbers_and_dates_of_any_type_are_taken(survey):
    import datetime

    import numpy

    days = [datetime.date(2024, 2, day) for day in (1, 28, 29)]
    with quillara.table({"day": days, "at": [datetime.time(9), None, datetime.time(12)]}).drill("day at") as drill:
        for variable, category in (("day", days[2]), (numpy.int64(1), numpy.datetime64(days[2]).item()),
                                   (1, datetime.datetime(2024, 2, 29)), ("at", datetime.time(12)), (2, numpy.float64(43200))):
            drill.down(variable, category)
            assert drill.cases.Cases == 1
            drill.up(variable)
        drill.down("at", math.nan)
        assert drill.cases.to_pandas()["day"][0].date() == days[1]
    with survey.drill([numpy.int64(1)], ("age",)) as drill:
        drill.DrillDownVariable, drill.StepSize, drill.ValueStepSize = "age", 1, 2**70
        assert drill.ValueStepSize == 2**70
