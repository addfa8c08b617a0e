"""How a continuous variable is cut into categories, as people write it."""

import datetime
import re

METHOD = "A method is a text such as 'exact:5', 'step:10@0', 'bounds:30,60' or 'month'"
PERIODS = ("week", "month", "quarter", "year")
EPOCH = datetime.date(1970, 1, 1)
COUNTED = {"exact": ("NoOfExactIntervals", "ValueNoOfExactIntervals"),
           "neat": ("NeatIntervalsAppNo", "ValueNeatIntervalsAppNo")}
PLAIN = {"distinct": "AllDistinctValues", "integer": "IntegerCategories"}
FORMS = {"date": r"\d{4}-\d\d-\d\d", "time": r"\d\d:\d\d(:\d\d)?"}


def members_of(method, table, number):
    """The members that are to be set, with their values."""
    name, colon, rest = method.partition(":")
    kind = table.variables[number - 1].kind
    if name in PLAIN and not colon:
        return [(PLAIN[name], 1)]
    if name in COUNTED:
        by, count = COUNTED[name]
        return [(by, 1), (count, number_of(rest, int, method))]
    if name == "step":
        size, at, start = rest.partition("@")
        length = value_of(size, "time" if kind == "time" else "number", method)
        return steps(length, value_of(start, kind, method) if at else None)
    if name == "bounds":
        return bounds([value_of(bound, kind, method) for bound in rest.split(",")])
    if name in PERIODS and not colon:
        first, last_days = table._held.calendar_cuts(number - 1, name, table.selection)
        return steps(7, first) if name == "week" else bounds(last_days)
    raise ValueError(f"{METHOD}, not {method!r}.")


def steps(size, start):
    fields = [("StartingAtMinimum", 1)] if start is None else [("StartingAtMinimum", 0), ("ValueStartingFrom", start)]
    return [("StepSize", 1), ("ValueStepSize", size), *fields]


def bounds(values):
    return [("UserSpecifiedCategories", 1), ("UserDefinedBoundaries", " ".join(f"{value:.17g}" for value in values))]


def value_of(text, kind, method):
    """A number, or of dates and times a day or a time."""
    if kind in FORMS and re.fullmatch(FORMS[kind], text):
        try:
            if kind == "date":
                return (datetime.date.fromisoformat(text) - EPOCH).days
            time = datetime.time.fromisoformat(text)
            return time.hour * 3600 + time.minute * 60 + time.second
        except ValueError:
            pass
    return number_of(text, float, method)


def number_of(text, kind, method):
    try:
        return kind(text)
    except ValueError:
        raise ValueError(f"{METHOD}, not {method!r}.") from None
