"""Tables and results as frames of pandas, which is imported with this."""

import numpy
import pandas

from . import _quillara
from ._arguments import texts as names_in


def _categorical(names, places):
    codes = numpy.frombuffer(places, dtype="int32")
    return pandas.Categorical.from_codes(codes, names, ordered=False)


def _texts(values, texts):
    places = numpy.array([None, *texts], dtype=object)
    return places[numpy.nan_to_num(values).astype(int)]


def _times(values, unit, kind):
    """To the microsecond, which doubles of our days still tell apart. Where pandas has no room for a time, in years
    before 1678 or after 2261, the column has those of datetime."""
    present = ~numpy.isnan(values)
    microseconds = numpy.round(numpy.where(present, values, 0) * unit).astype("int64")
    times = microseconds.astype(f"{kind}[us]")
    times[~present] = numpy.array("NaT", dtype=times.dtype)
    has_room = numpy.abs(microseconds).max(initial=0) < pandas.Timestamp.max.value // 1000
    return times.astype(f"{kind}[ns]") if has_room else times.astype(object)


def _column(held, index, wants_labels):
    name, _, kind, *_ = held.describe(index)
    categories = held.categories(index) if wants_labels(name) else None
    if categories is not None:
        return _categorical(*categories)
    values = numpy.asarray(held.column(index))
    if kind == "date":
        return _times(values, 86400e6, "datetime64")
    if kind == "datetime":
        return _times(values, 1e6, "datetime64")
    if kind == "time":
        return _times(values, 1e6, "timedelta64")
    return _texts(values, held.texts(index)) if kind == "text" else values


def _labels_wanted(labels, names):
    """labels: of all variables, of none, or of those that a list names."""
    if isinstance(labels, bool):
        return lambda _: labels
    wanted = [labels] if isinstance(labels, str) else names_in(labels, "labels is True, False or a list of names of variables")
    for name in wanted:
        if name not in names:
            raise KeyError(name)
    return wanted.__contains__


def frame_of_table(held, labels=True):
    names = [held.describe(index)[0] for index in range(len(held))]
    wants_labels = _labels_wanted(labels, names)
    columns = {name: _column(held, index, wants_labels) for index, name in enumerate(names)}
    index = pandas.Index(held.case_names) if held.case_names else pandas.RangeIndex(held.cases)
    return pandas.DataFrame(columns, index=index)


def cells_of(cells, whole):
    if any(isinstance(cell, str) for cell in cells):
        return pandas.array(cells, dtype=object)
    has_gaps = any(cell is None for cell in cells)
    return pandas.array(cells, dtype="Int64" if has_gaps else "int64") if whole else pandas.array(cells, dtype="float64")


def frame_of_documents(documents, sizes):
    """All that documents hold, a number a row; values are numbers unless one of them is a text. sizes: the cases behind
    each step, None where they aren't known. How a document takes the weight stands there only where one is in force."""
    columns = ["step", "cases", "document", "result", "variable", "category", "statistic", "weights", "value"]
    rows = []
    for document in documents:
        step = _quillara.step_of(document._face)
        cases = sizes[step] if step < len(sizes) else None
        rows += [(step, cases, document.Name, *row) for row in _quillara.tidy_rows(document._face)]
    frame = pandas.DataFrame(rows, columns=columns).astype({"step": "int64"})
    frame["cases"] = pandas.array(frame["cases"], dtype="Int64" if frame["cases"].isna().any() else "int64")
    if not frame["weights"].any():
        del frame["weights"]
    has_texts = any(isinstance(value, str) for value in frame["value"])
    return frame if has_texts else frame.astype({"value": "float64"})


def frame_of_spreadsheet(corner, columns, rows):
    names = [" ".join(name.split()) for name, _, _ in columns]
    series = [pandas.Series(cells_of(cells, whole)) for _, whole, cells in columns]
    frame = pandas.concat(series, axis=1) if series else pandas.DataFrame(index=range(len(rows)))
    frame.columns = names
    frame.index = pandas.Index(rows, name=corner or None)
    return frame
