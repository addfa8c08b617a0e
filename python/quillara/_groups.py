"""Statistics that the host computes of the cases that remain, as frames of pandas."""

import warnings

import pandas

from ._errors import Remark
from ._frames import frame_of_spreadsheet

MEASURES = ("counts", "rows", "columns", "total", "expected")
GROUP_NUMBERS = ["Valid N", "Mean", "Std.Dev.", "Lower quartile", "Median", "Upper quartile"]


def distributions(analysis):
    """The frames by the name of their variable; that of the continuous ones goes by None."""
    frames = [frame_of_spreadsheet(*table) for table in analysis.distributions()]
    return {None if frame.index.name == "Variable" and "Skewness" in frame else frame.index.name: frame for frame in frames}


def differences(analysis):
    table = analysis.differences()
    return None if table is None else frame_of_spreadsheet(*table)


def crosstab(analysis, rows, columns, of, margins):
    tables, cases, left_out, chi_square, freedom, strength = analysis.cross(rows, columns)
    frame = frame_of_spreadsheet(*tables[MEASURES.index(of)])
    frame.columns = frame_of_spreadsheet(*tables[0]).columns
    frame = frame if margins else frame.iloc[:-1, :-1]
    frame.attrs = {"cases": cases, "left_out": left_out, "chi_square": chi_square, "degrees_of_freedom": freedom,
                   "cramers_v": strength}
    return frame


def box(analysis, variable, by, of, picture):
    return frame_of_spreadsheet(*analysis.boxes(variable, by, of, picture))


def _facts(analysis, whole, by):
    """One row: what is told of the cases that remain."""
    cases, weight = analysis.counted()
    facts = {("N", ""): int(cases), ("Percent", ""): weight / whole * 100}
    for name, frame in distributions(analysis).items():
        if name is None:
            facts |= {(variable, number): row[number] for variable, row in frame.iterrows() if variable not in by
                      for number in GROUP_NUMBERS}
        elif name not in by:
            facts |= {(name, category): percent for category, percent in frame["Percent of valid"].items()
                      if not pandas.isna(percent)}
    return facts


def _in_order(keys):
    """Columns of a variable side by side, in the order in which they came."""
    places = {}
    for variable, _ in keys:
        places.setdefault(variable, len(places))
    return sorted(dict.fromkeys(keys), key=lambda key: places[key[0]])


def each(drill, analysis, numbers, names):
    """A row for each category, or for each pair of two variables'."""
    _, whole = analysis.counted()
    found = []

    def walk(path):
        number = numbers[len(path)]
        row, rows = 0, 1
        while row < rows:
            taken = drill._down_row(number, row)
            if taken is None:
                warnings.warn(Remark(f'The variable "{names[len(path)]}" has no category with cases where the steps before '
                                     "have led; that is passed over.", "group-without-categories"), stacklevel=4)
                return
            category, rows = taken
            try:
                if analysis.counted()[0] == 0:
                    warnings.warn(Remark(f'No case is left where {names[len(path)]} = {category}; that is passed over.',
                                         "group-without-cases"), stacklevel=4)
                elif len(path) + 1 < len(numbers):
                    walk((*path, category))
                else:
                    found.append(((*path, category), _facts(analysis, whole, names)))
            finally:
                drill.up(number)
            row += 1

    walk(())
    index = pandas.MultiIndex.from_tuples([path for path, _ in found], names=names)
    columns = _in_order([key for _, facts in found for key in facts])
    frame = pandas.DataFrame([[facts.get(key) for key in columns] for _, facts in found],
                             index=index if len(names) > 1 else index.get_level_values(0),
                             columns=pandas.MultiIndex.from_tuples(columns))
    shares = [key for key in columns if key[1] and key[1] not in GROUP_NUMBERS]
    frame[shares] = frame[shares].fillna(0.0)
    return frame
