"""Tables and results as frames of pandas, which is imported with this."""

import numpy
import pandas


def _with_distinct_names(labels):
    """Categories must differ: labels that don't have their values behind them."""
    texts = [label for _, label in labels]
    return [f"{label} ({value:g})" if texts.count(label) > 1 else label for value, label in labels]


def _categories(values, labels):
    """A column of categories, or nothing when a value has no label."""
    known = numpy.array([value for value, _ in labels])
    present = ~numpy.isnan(values)
    places = numpy.searchsorted(known, values)
    places[~present] = 0
    if not numpy.array_equal(known[numpy.minimum(places, len(known) - 1)][present], values[present]):
        return None
    codes = numpy.where(present, places, -1)
    return pandas.Categorical.from_codes(codes, _with_distinct_names(labels), ordered=False)


def _texts(values, labels):
    texts = numpy.array([None] + [text for _, text in labels], dtype=object)
    return texts[numpy.nan_to_num(values).astype(int)]


def _times(values, unit, kind):
    """To the microsecond, which doubles of our days still tell apart."""
    present = ~numpy.isnan(values)
    microseconds = numpy.round(numpy.where(present, values, 0) * unit).astype("int64")
    times = (microseconds * 1000).astype(kind)
    times[~present] = numpy.array("NaT", dtype=kind)
    return times


def _column(held, index):
    _, _, kind, labels, has_own_labels = held.describe(index)
    values = numpy.array(held.column(index), dtype=float)
    if kind == "date":
        return _times(values, 86400e6, "datetime64[ns]")
    if kind == "time":
        return _times(values, 1e6, "timedelta64[ns]")
    if kind == "text" and not has_own_labels:
        return _texts(values, labels)
    categories = _categories(values, labels) if labels else None
    return values if categories is None else categories


def frame_of_table(held):
    columns = {held.describe(index)[0]: _column(held, index) for index in range(len(held))}
    index = pandas.Index(held.case_names) if held.case_names else pandas.RangeIndex(held.cases)
    return pandas.DataFrame(columns, index=index)


def _cells(cells, whole):
    if any(isinstance(cell, str) for cell in cells):
        return pandas.array(cells, dtype=object)
    has_gaps = any(cell is None for cell in cells)
    return pandas.array(cells, dtype="Int64" if has_gaps else "int64") if whole else pandas.array(cells, dtype="float64")


def frame_of_spreadsheet(corner, columns, rows):
    names = [" ".join(name.split()) for name, _, _ in columns]
    series = [pandas.Series(_cells(cells, whole)) for _, whole, cells in columns]
    frame = pandas.concat(series, axis=1) if series else pandas.DataFrame(index=range(len(rows)))
    frame.columns = names
    frame.index = pandas.Index(rows, name=corner or None)
    return frame
