"""Statistics that the host computes of the cases that remain, as frames of pandas."""

import pandas

from ._frames import cells_of, frame_of_spreadsheet

MEASURES = ("counts", "rows", "columns", "total", "expected")
TIMES = ("date", "datetime", "time")
LOCATIONS = ("Mean", "Minimum", "Lower quartile", "Median", "Upper quartile", "Maximum")


def _moment(value, kind):
    """A statistic of dates or times as what it is one of; other values as they are."""
    if isinstance(value, str) or kind not in TIMES:
        return value
    if pandas.isna(value):
        return pandas.NaT
    seconds = value * 86400 if kind == "date" else value
    if kind == "time":
        return pandas.Timedelta(round(seconds * 1e6), unit="us")
    return pandas.Timestamp(round(seconds * 1e6), unit="us")


def distribution(analysis, variable, kinds):
    """kinds: of the variables by their names."""
    table = analysis.distribution(variable)
    if table is None:
        return None
    frame = frame_of_spreadsheet(*table)
    of_rows = [kinds.get(name) if variable is None else None for name in frame.index]
    if any(kind in TIMES for kind in of_rows):
        for name in frame.columns.intersection(LOCATIONS):
            moments = [_moment(value, kind) for value, kind in zip(frame[name], of_rows)]
            frame[name] = pandas.Series(moments, index=frame.index, dtype=None if len(set(of_rows)) == 1 else object)
    return frame


def differences(analysis):
    table = analysis.differences()
    return None if table is None else frame_of_spreadsheet(*table)


def crosstab(analysis, rows, columns, of, margins):
    tables, cases, left_out, chi_square, freedom, strength, p_value, effective = analysis.cross(rows, columns)
    frame = frame_of_spreadsheet(*tables[MEASURES.index(of)])
    frame.columns = frame_of_spreadsheet(*tables[0]).columns
    frame = frame if margins else frame.iloc[:-1, :-1]
    frame.attrs = {"cases": cases, "left_out": left_out, "chi_square": chi_square, "degrees_of_freedom": freedom,
                   "cramers_v": strength, "p_value": p_value, "effective_cases": effective[0],
                   "effective_p_value": effective[1]}
    return frame


def box(analysis, variable, by, of, picture):
    return frame_of_spreadsheet(*analysis.boxes(variable, by, of, picture))


def _key(variable, category, statistic):
    """A column goes by variable and statistic; percents by variable and category."""
    name = category or " ".join(statistic.split())
    return (variable, name) if variable else (name, "")


def each(analysis, names, kinds):
    """A row for each category, or for each pair of two variables'. kinds: of the variables by their names."""
    tables = analysis.each(names)
    rows, columns = tables[0]
    levels = [rows, *(cells for *_, cells in columns[:len(names) - 1])]
    found = {}
    for _, columns in tables:
        are_percents = any(category for _, category, *_ in columns)
        for variable, category, statistic, whole, cells in columns[len(names) - 1:]:
            if not (are_percents and variable and not category):  # their valid N is left out
                series = pandas.Series(cells_of(cells, whole))
                if kinds.get(variable) in TIMES and " ".join(statistic.split()) in LOCATIONS:
                    series = pandas.Series([_moment(value, kinds[variable]) for value in series])
                found.setdefault(_key(variable, category, statistic), series)
    frame = pandas.DataFrame(found)
    frame.columns = pandas.MultiIndex.from_tuples(list(found))
    index = pandas.MultiIndex.from_arrays(levels, names=names)
    frame.index = index if len(names) > 1 else index.get_level_values(0)
    return frame
