"""Columns of Python as those of a table: (name, kind, values or texts, labels, keeper).

A column that has a keeper is used where it stands: whatever the keeper is, the values don't change while it lives."""

import array
import datetime
import math

from . import _arguments
from ._arguments import shown

EPOCH = datetime.date(1970, 1, 1)
TRUTH = {0.0: "False", 1.0: "True"}
ZONE = 'The column "{}" has a time zone, for which a table has no room.'
MOST_EXACT = 2**53  # whole numbers up to this are all doubles


def _is_missing(value):
    try:
        return value is None or bool(value != value)
    except Exception:  # of objects that can't be compared
        return False


def _days(value):
    return (datetime.date(value.year, value.month, value.day) - EPOCH).days


def _moment(value):
    """Whole seconds and the part of one behind them, each exact, so that the sum is the nearest double."""
    if not isinstance(value, datetime.datetime):
        return _days(value) * 86400
    return _days(value) * 86400 + value.hour * 3600 + value.minute * 60 + value.second + value.microsecond / 1e6


def _is_day(value):
    return not isinstance(value, datetime.datetime) or value.time() == datetime.time()


def _seconds(value):
    if isinstance(value, datetime.timedelta):
        return value.total_seconds()
    return value.hour * 3600 + value.minute * 60 + value.second + value.microsecond / 1e6


# The first kind that all values of a plain column are of.
PLAIN_KINDS = [
    ("text", str, None, {}),
    ("number", bool, float, TRUTH),
    ("date", datetime.date, _days, {}),
    ("time", (datetime.time, datetime.timedelta), _seconds, {}),
]


def _plain_column(name, values):
    values = [None if _is_missing(value) else value for value in values]
    present = [value for value in values if value is not None]
    if any(getattr(value, "tzinfo", None) is not None for value in present):
        raise TypeError(ZONE.format(name))
    for kind, types, convert, labels in PLAIN_KINDS:
        if kind == "date" and not all(map(_is_day, present)):
            kind, convert = "datetime", _moment
        if present and all(isinstance(value, types) for value in present):
            if convert is None:
                return name, kind, values, labels, None
            return name, kind, _doubles(values, convert), labels, None
    try:
        return name, "number", _doubles(values, _number), {}, None
    except OverflowError:
        raise ValueError(f'The column "{name}" has a whole number that is too large: {shown(max(present, key=abs))}.') from None
    except Exception:
        raise _unfit(name, present) from None


def _number(value):
    if isinstance(value, (str, bytes, bytearray)):
        raise TypeError
    return float(value)


def _unfit(name, present):
    def kind(value):
        return float if isinstance(value, (int, float)) else type(value)

    first = present[0]
    other = next((value for value in present if kind(value) is not kind(first)), None)
    if other is None:
        return TypeError(f'The column "{name}" has values of a kind that a table has no room for: {shown(first)}.')
    return TypeError(f'The column "{name}" has values of several kinds: {shown(first)} and {shown(other)}.')


def refuse_texts(name, values):
    """Raises what is wrong with a column of texts that the extension couldn't take."""
    for value in values:
        if value is not None and (flaw := _arguments.flaw_of(value)):
            raise ValueError(f'The column "{name}" has a text that can\'t be used: {shown(value)} {flaw}.')


def _doubles(values, convert):
    return array.array("d", (math.nan if value is None else convert(value) for value in values))


def _category_column(name, series):
    """Codes of pandas count from 0, and -1 is missing."""
    import numpy

    codes = series.cat.codes.to_numpy().astype(float) + 1
    codes[codes == 0] = numpy.nan
    labels = {float(place): _arguments.text_of(category, f'A category of the column "{name}" is named by a text')
              for place, category in enumerate(series.cat.categories, 1)}
    return name, "number", codes, labels, None


def _time_column(name, series, kind, unit):
    """Dates in days, times in seconds; NaT is missing."""
    import numpy

    if getattr(series.dt, "tz", None) is not None:
        raise TypeError(ZONE.format(name))
    values = series.to_numpy()
    numbers = (values - values.dtype.type(0, "ns")) / numpy.timedelta64(1, unit)
    if kind == "date" and numpy.any(numbers % 1 > 0):
        kind, numbers = "datetime", _moments(values)
    return name, kind, numpy.ascontiguousarray(numbers, dtype=float), {}, None


def _moments(values):
    """Seconds since 1970, put together as in _moment."""
    import numpy

    unit, steps = numpy.datetime_data(values.dtype)
    parts = {"s": 1, "ms": 10**3, "us": 10**6, "ns": 10**9}[unit] // steps
    whole, part = numpy.divmod(values.view("int64"), parts)
    return numpy.where(numpy.isnat(values), numpy.nan, whole + part / parts)


def _copies_on_write(pandas):
    if int(pandas.__version__.split(".")[0]) >= 3:
        return True
    try:
        return pandas.get_option("mode.copy_on_write") is True
    except KeyError:  # of an option that this version doesn't have
        return False


def _is_constant(array):
    """Whether nobody can write to an array, nor to what it is a view of."""
    while hasattr(array, "flags"):
        if array.flags.writeable:
            return False
        if array.base is None:
            return True
        array = array.base
    try:
        return memoryview(array).readonly
    except TypeError:
        return False


def _number_column(name, series):
    """Doubles that can't change behind the table's back are used where they stand: those of constant arrays, and under
    pandas' copy-on-write those of a second series, which makes whoever writes to the first take a copy."""
    import numpy
    import pandas

    if series.dtype != numpy.float64:
        values = series.to_numpy(dtype=float, na_value=numpy.nan)
        return name, "number", numpy.ascontiguousarray(values), {}, None
    keeper = series.copy(deep=False)
    values = numpy.ascontiguousarray(keeper.to_numpy())
    is_kept = _copies_on_write(pandas) or _is_constant(values)
    return name, "number", values, {}, keeper if is_kept else None


def _series_column(name, series):
    import numpy
    import pandas

    types = pandas.api.types
    if isinstance(series.dtype, pandas.CategoricalDtype):
        return _category_column(name, series)
    if types.is_datetime64_any_dtype(series.dtype):
        return _time_column(name, series, "date", "D")
    if types.is_timedelta64_dtype(series.dtype):
        return _time_column(name, series, "time", "s")
    if types.is_complex_dtype(series.dtype):
        raise TypeError(f'The column "{name}" has complex numbers, for which a table has no room.')
    if types.is_numeric_dtype(series.dtype) and not types.is_bool_dtype(series.dtype):
        return _number_column(name, series)
    return _plain_column(name, series.astype(object).where(series.notna(), None).tolist())


def _column(name, values):
    if isinstance(values, (dict, set, frozenset)):
        raise TypeError(f'The column "{name}" has no order: {shown(values)}; a column is a list of values.')
    if isinstance(values, (str, bytes)) or not hasattr(values, "__iter__"):
        raise TypeError(f'The column "{name}" is a single value, {shown(values)}; a column is a list of values.')
    if type(values).__module__.startswith(("pandas.", "numpy")):
        import pandas

        if getattr(values, "ndim", 1) != 1:
            raise TypeError(f'The column "{name}" has more than one dimension.')
        return _series_column(name, pandas.Series(values))
    return _plain_column(name, list(values))


def _case_names(frame):
    """Texts in the index of a frame name its cases."""
    names = list(getattr(frame, "index", []))
    return names if names and all(isinstance(name, str) for name in names) else []


def _is_rounded(values):
    """Whether a column has whole numbers with more digits than a double."""
    if getattr(getattr(values, "dtype", None), "kind", "O") in "iu":
        return len(values) > 0 and not (-MOST_EXACT <= values.min() and values.max() <= MOST_EXACT)
    return any(isinstance(value, int) and abs(value) > MOST_EXACT for value in values)


def _name_of(name):
    return _arguments.text_of(name, "A column is named by a text")


def columns_of(columns):
    """The columns of a frame or a dict, the names of the cases, and those of columns that are rounded."""
    if hasattr(columns, "to_frame"):  # a series
        columns = columns.to_frame()
    made = [_column(_name_of(name), values) for name, values in columns.items()]
    rounded = [str(name) for (name, values), (_, kind, *_) in zip(columns.items(), made)
               if kind == "number" and _is_rounded(values)]
    return made, _case_names(columns), rounded
