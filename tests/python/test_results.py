"""Results of scripts are those of the command line; documents come as frames, pages and pictures."""

import json
import subprocess

import pytest
from conftest import PROGRAM, SURVEY

import quillara


def program_documents(*arguments):
    command = [PROGRAM, "drill", SURVEY, "--format", "json", *arguments]
    return json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)["documents"]


def told(document):
    """A spreadsheet or a chart in the shape of the command line's JSON."""
    if document.Kind == "table":
        rows = [{"name": name, "cells": cells} for name, cells in zip(document.RowNames, document.Values)]
        return [document.title, document.Corner, document.ColumnNames, rows]
    return [document.title, [(series.X, series.Y) for series in document.series]]


def printed(document):
    if document["kind"] == "spreadsheet":
        return ["\n".join(document["title"]), document["corner"], document["columns"], document["rows"]]
    series = [([x for x, _ in each["points"]], [y for _, y in each["points"]]) for each in document["series"]]
    return ["\n".join(document["title"]), series]


SESSIONS = [
    ([], []),
    ([("sex", "Female")], ["--down", "sex=Female"]),
    ([("education", "Vocational training"), ("age", "30<x<=40")],
     ["--down", "education=Vocational training", "--down", "age=30<x<=40"]),
]
RESULTS = ["summary", "descriptives", "frequencies", "histograms"]


def documents_of(drill, member):
    """The command line passes over buttons that make nothing."""
    try:
        return list(getattr(drill, member))
    except quillara.Error as error:
        assert error.text.startswith("Nothing was made") or error.code == 0x80070005
        return []


@pytest.mark.parametrize("steps, options", SESSIONS)
def test_tables_are_those_of_the_command_line(survey, steps, options):
    expected = program_documents("--categorical", "sex,education", "--continuous", "age", *options,
                                 "--show", ",".join(RESULTS))
    with survey.drill(["sex", "education"], ["age"]) as drill:
        for variable, category in steps:
            drill.down(variable, category)
        made = []
        for member in RESULTS:
            made += documents_of(drill, member)
    assert [told(document) for document in made] == [printed(document) for document in expected]
