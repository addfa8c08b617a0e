"""Callables that listen to the events of documents."""

import gc
import weakref

import pytest
from conftest import failure_of

import quillara

BUSY, CLOSED, UNKNOWN = 0x8001010A, 0x800401FD, 0x80020006


@pytest.fixture
def drill():
    with quillara.table({"a": ["x", "y", "x"], "b": [1.0, 2.0, 3.0]}).drill("a", "b") as begun:
        begun.StandAloneResults = 1
        yield begun


def test_documents_tell_that_they_change_and_close(drill):
    graph, heard = drill.PieCharts[0], []
    graph.on("Changed", lambda document: heard.append(("first", document.series[0].Y)))
    second = graph.on("Changed", lambda document: heard.append(("second", document == graph)))
    graph.on("Closing", lambda document: heard.append("closing"))
    graph.on("ClosingWithChoice", lambda document, choice: heard.append(choice))
    drill.PieCharts
    second.off()
    second.off()
    drill.CountMD = 0
    drill.PieCharts
    graph.Close()
    graph.Close()
    drill.PieCharts
    assert heard == [("first", [2, 1]), ("second", True), ("first", [2, 1]), "closing"]
    assert failure_of(lambda: graph.on("Opening", print))[0] == UNKNOWN
    with pytest.raises(TypeError):
        graph.on("Changed", 3)


def test_what_a_listener_raises_is_reported_and_changes_nothing(drill, monkeypatch):
    reported, heard = [], []
    monkeypatch.setattr("sys.unraisablehook", lambda told: reported.append(told.exc_type))
    graph = drill.PieCharts[0]
    graph.on("Changed", lambda document: 1 / 0)
    graph.on("Changed", lambda document, more: None)  # gets too few arguments
    graph.on("Changed", heard.append)
    assert drill.PieCharts and heard == [graph] and reported == [ZeroDivisionError, TypeError]


def test_ctrl_c_in_a_listener_reaches_the_script(drill):
    def listener(document):
        raise KeyboardInterrupt

    graph = drill.PieCharts[0]
    graph.on("Changed", listener)
    with pytest.raises(KeyboardInterrupt):
        drill.PieCharts
    graph.Close()
    assert drill.PieCharts


def test_a_listener_reads_but_does_not_press(drill):
    seen = []

    def listener(document):
        seen.append(drill.DrillDownVariable)
        seen.append([failure_of(call)[0] for call in (
            lambda: drill.Frequencies, lambda: drill.window.click(9060), lambda: setattr(drill, "CountMD", 0),
            lambda: drill.down("a", "x"), lambda: setattr(drill, "DrillDownVariable", "b"))])

    drill.DrillDownVariable = "a"
    drill.PieCharts[0].on("Changed", listener)
    drill.PieCharts
    assert seen == ["a", [BUSY] * 4 + [0x80020009]] and drill.DrillDownVariable == "a"


CLOSERS = {
    "its document": lambda drill, document: document.Close(),
    "all documents": lambda drill, document: [each.Close() for each in drill.analysis.Outputs],
    "the window": lambda drill, document: drill.window.close(),  # refused
    "the analysis": lambda drill, document: drill.close(),
}


@pytest.mark.parametrize("press", [
    lambda drill: drill.PieCharts, lambda drill: drill.down("b", 1), lambda drill: drill.window.click(9119),
])
@pytest.mark.parametrize("what", CLOSERS)
def test_a_listener_closes_things_inside_their_own_command(drill, what, press, monkeypatch):
    monkeypatch.setattr("sys.unraisablehook", lambda told: None)
    documents, heard = list(drill.PieCharts) + list(drill.Frequencies), []
    for document in documents:
        document.on("Changed", lambda document: (heard.append(document), CLOSERS[what](drill, document)))
        document.on("Closing", heard.append)
    try:
        press(drill)
    except quillara.Error as error:
        assert what == "the analysis" and error.code == CLOSED
    assert heard and (failure_of(lambda: documents[0].title)[0] == CLOSED if "document" in what else documents[0].title)
    if what == "the analysis":
        assert failure_of(lambda: drill.Variables)[0] == CLOSED and len(quillara.application().Analyses) == 0
    else:
        assert drill.Frequencies


def test_a_document_and_its_listeners_go_together(drill):
    class Heard:
        def __call__(self, document):
            pass

    heard = Heard()
    gone = weakref.ref(heard)
    drill.StandAloneResults = 0
    graph = drill.PieCharts[0]
    graph.on("Closing", heard)
    del heard
    gc.collect()
    assert gone() is not None
    drill.Frequencies  # the last document that went its way is another one now
    del graph
    gc.collect()
    assert gone() is None
