"""How calls fail, and what outlives what."""

import gc
import threading
import warnings

import pytest
from conftest import SURVEY, failure_of

import quillara

CLOSED, DISABLED, FAILED, INVALID, MISMATCH, COUNT = (
    0x800401FD, 0x80070005, 0x80004005, 0x80070057, 0x80020005, 0x8002000E)


@pytest.mark.parametrize("call, code, member, text", [
    (lambda d: d.ReviewFrequencies, DISABLED, "ReviewFrequencies", "This control is disabled now."),
    (lambda d: setattr(d, "ResultsOption", 3), 0x80004001, "ResultsOption", "no results dialog"),
    (lambda d: setattr(d, "value_no_of_exact_intervals", "many"), MISMATCH, "ValueNoOfExactIntervals",
     "mismatch: it takes a whole number, not 'many'."),
    (lambda d: setattr(d, "variables", "sex nowhere"), INVALID, "Variables", "nowhere"),
    (lambda d: setattr(d, "DrillDownVariable", "zzz"), FAILED, "DrillDownVariable", "drilled down on now, not 'zzz'."),
    (lambda d: setattr(d, "DrillUpVariable", "zzz"), FAILED, "DrillUpVariable", "a step was taken on, not 'zzz'."),
    (lambda d: setattr(d, "DrillDownVariable", 40_000), FAILED, "DrillDownVariable", "not 40000."),
    (lambda d: setattr(d, "DrillDownVariable", "|"), FAILED, "DrillDownVariable", "not '|'."),
    (lambda d: d.DrillDownCategory, FAILED, "DrillDownCategory", "No category is chosen"),
    (lambda d: setattr(d, "DrillDownCategory", "x"), FAILED, "DrillDownCategory", "has no category 'x'"),
    (lambda d: setattr(d, "DrillDownCategory", "1 x"), FAILED, "DrillDownCategory", "'1 x'; a category goes by its name"),
    (lambda d: d.UserDefinedBoundaries, FAILED, "UserDefinedBoundaries", "user-specified"),
    (lambda d: setattr(d, "UserDefinedBoundaries", "1 x"), FAILED, "UserDefinedBoundaries", "numbers with blanks between"),
    (lambda d: d.drill_down(1), COUNT, "DrillDown", "1 instead of 0"),
    (lambda d: d.frequencies[0].Cell(9, 9), 0x8002000B, "Cell", "nothing at 9, 9"),
    (lambda d: d.frequencies[0].save("table.svg"), INVALID, "Save", ".csv"),
    (lambda d: d.frequencies.Item("none"), 0x8002000B, "Item", ""),
    (lambda d: d.down("sex", "Neither"), FAILED, "down", "Female"),
    (lambda d: d.down("region", 1), INVALID, "down", "region"),
    (lambda d: d.up("sex"), INVALID, "up", 'no step on the variable "sex"'),
    (lambda d: d.down("nowhere", 1), INVALID, "down", "nowhere"),
])
def test_members_fail_with_code_text_and_member(drill, call, code, member, text):
    told_code, told_text, told_member = failure_of(lambda: call(drill))
    assert (told_code, told_member) == (code, member) and text in told_text and told_text
    assert drill.Variables == "sex education | age"


def test_what_is_no_member_is_a_mistake_of_the_script(drill):
    for attribute in ("Sumary", "drill_down_variabel"):
        with pytest.raises(AttributeError):
            setattr(drill, attribute, 1)
        with pytest.raises(AttributeError):
            getattr(drill, attribute)
    with pytest.raises(AttributeError):
        drill.Summary = 1
    with pytest.raises(TypeError):
        drill.DrillDownVariable = {}
    with pytest.raises(IndexError):
        drill.Frequencies[7]


def test_files_and_formulas_fail_alike(survey, tmp_path):
    assert failure_of(lambda: quillara.open(tmp_path / "none.sav"))[::2] == (FAILED, "open")
    (tmp_path / "cut.sav").write_bytes(open(SURVEY, "rb").read(3000))
    assert failure_of(lambda: quillara.open(tmp_path / "cut.sav"))[0] == FAILED
    assert failure_of(lambda: survey.select("age >"))[::2] == (INVALID, "select")
    assert failure_of(lambda: setattr(survey, "weight", "commute"))[::2] == (FAILED, "weight")
    assert failure_of(lambda: survey.drill("nowhere"))[::2] == (INVALID, "Variables")
    for lists in (("sex", "sex"), ("age SEX Sex",), ("1-3", [2])):
        assert "is given twice." in failure_of(lambda: survey.drill(*lists))[1]
    assert (survey.selection, survey.weight) == ("", None)
    assert len(quillara.application().Analyses) == 0


def test_references_are_safe_past_the_end(survey):
    drill = quillara.open(SURVEY).drill("sex", "age")
    tables, graph, cases = drill.Frequencies, drill.PieCharts[0], drill.cases
    analysis, application, window = drill.analysis, drill.Application, graph.Window
    drill.close()
    drill.close()
    for call in (lambda: drill.Summary, lambda: drill.Variables, lambda: drill.down("sex", "Male"), drill.OK, lambda: drill.up("sex"),
                 lambda: drill.analysis, lambda: analysis.Outputs, lambda: setattr(drill, "CountMD", 1)):
        assert failure_of(call)[0] == CLOSED
    assert drill.Application == application and list(application.Analyses) == []
    assert tables[0].to_pandas()["Count"].sum() == 2000 and "<svg" in graph._repr_svg_()
    assert cases.to_pandas().shape == (2000, 2) and window.State in (1, 2)
    cases.Close()
    assert failure_of(lambda: cases.Cases)[0] == CLOSED and failure_of(cases.to_pandas)[0] == CLOSED
    graph.Close()
    graph.Close()
    for call in (graph.Activate, lambda: graph.Name, lambda: str(graph), graph._repr_svg_, lambda: graph.series, lambda: window.State,
                 lambda: graph.on("Changed", print), lambda: graph.variables):
        assert failure_of(call)[:2] == (CLOSED, "It has been closed and can't be used any more.")
    assert "closed" in repr(graph) and "closed" in repr(cases)
    del drill, analysis
    gc.collect()
    assert tables[1].title.startswith("Frequency table of age")


def test_a_dropped_drill_closes_and_a_dialog_can_be_cancelled(survey):
    drill = survey.drill("sex")
    dialog = quillara.application().Analyses[0].Dialog
    assert dialog is drill
    del drill, dialog
    gc.collect()
    assert len(quillara.application().Analyses) == 0
    with survey.drill("sex") as drill:
        drill.Cancel()
        assert failure_of(lambda: drill.Summary)[0] == CLOSED


def test_two_analyses_do_not_disturb_each_other(survey):
    with survey.drill("sex", "age") as one, survey.drill("education sex") as other:
        one.down("sex", "Female")
        other.down("education", "Vocational training")
        assert [d.Summary.Values for d in (one, other)] == [[["Female"]], [["Vocational training"]]]
        assert other.Frequencies[0].Values[0][0] == 337
        other.close()
        one.up("sex")
        assert one.Frequencies[0].Values[0][0] == 1077


def test_steps_are_taken_and_undone_in_any_order(survey):
    with survey.drill("sex education commute", "age") as drill:
        for _ in range(2):
            drill.down("education", "Vocational training")
            for travel in ("Car", "Bus"):
                drill.down("commute", travel)
                drill.down("sex", "Female")
                drill.up("commute")
                drill.up("sex")
            assert drill.Summary.Values == [["Vocational training"]]
            drill.up("education")
        assert failure_of(lambda: drill.up("education"))[0] == INVALID


class Raised(Exception):
    pass


def raising(*_):
    raise Raised


PRESSES = [
    # what a script does wrong in the midst of a command                       in which
    ([[("select", 9102, "nobody"), ("click", 1)]],                             lambda d: d.window.click(9056)),
    ([[("select", 9102, 0), ("click", 9999)]],                                 lambda d: d.window.click(9056)),
    ([[("select", 9089, 1), ("click", 9091), ("drag", 9089, 0, 7)]],           lambda d: d.window.click(9055)),
    ([[("click", 11), ("text", 12, "age > 30"), ("click", 77)]],               lambda d: d.window.click(201)),
    ([[("select", 10, 0), ("double_click", 10, 99)]],                          lambda d: d.window.click(9050)),
    ([[("pick", 1, 0)], [("pick", 99, 0)]],                                    lambda d: d.window.click(9103)),
    ([],                                                                       lambda d: d.down("education", "None such")),
    ([],                                                                       lambda d: setattr(d, "Variables", "sex nowhere")),
]


@pytest.mark.parametrize("answers, press", PRESSES)
def test_a_script_that_fails_in_the_midst_of_a_command_leaves_all_whole(survey, answers, press):
    with survey.drill("sex education", "age") as drill, survey.drill("sex") as other:
        drill.StandAloneResults = 1
        tables = list(drill.Frequencies)
        drill.DrillDownVariable = "sex"
        for answer in answers:
            drill.Application.Answer(answer)
        with pytest.raises((quillara.Error, Raised)):
            press(drill)
        drill.Application.ClearAnswers()
        steps = len(answers) > 1  # the first pick was good
        assert not steps or drill.Summary.Rows == 1
        if steps:
            drill.up(drill.Summary.RowNames[0])
        assert failure_of(lambda: drill.Summary)[0] == DISABLED and drill.Variables == "sex education | age"
        drill.down("education", "Vocational training")
        drill.DrillDownVariable = "sex"
        drill.DrillDownCategory = "Female"
        drill.DrillDown()
        with survey.drill("sex education", "age") as clean:
            clean.down("education", "Vocational training")
            clean.down("sex", "Female")
            assert tables[0].Values == clean.Frequencies[0].Values and drill.Summary.Rows == 2
        other.down("sex", "Male")
        assert other.Summary.Values == [["Male"]] and len(quillara.application().Analyses) == 2


def test_a_listener_that_raises_in_a_step_leaves_the_step_whole(survey, monkeypatch):
    reported = []
    monkeypatch.setattr("sys.unraisablehook", lambda told: reported.append(told.exc_type))
    with survey.drill("sex education") as drill:
        drill.StandAloneResults = 1
        tables = list(drill.Frequencies)
        for table in tables:
            table.on("Changed", raising)
        drill.down("sex", "Female")
        assert reported == [Raised] * len(reported) and reported and drill.Summary.Values == [["Female"]]
        drill.up("sex")
        assert drill.Frequencies[0].Values[0][0] == 1077


def test_messages_are_warnings_but_for_what_a_failure_says():
    with quillara.table({"b": ["x", "y", "y"], "a": [None, 1.0, 2.0]}).drill("b", "a") as drill:
        drill.StandAloneResults, drill.CountMD = 1, 0
        drill.Histograms
        with pytest.warns(quillara.Message, match="Nothing to plot") as warned:
            drill.down("b", "x")  # the histogram that stands alone can't be brought up to date
        assert warned[0].filename == __file__
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            assert "Nothing to plot" in failure_of(lambda: drill.Histograms)[1]
    assert "Nothing to plot...." in quillara.application().Messages


def test_other_threads_run_during_a_call_and_calls_take_turns(survey):
    counts = []

    def work():
        with survey.drill("sex education", "age") as drill:
            drill.down("education", "Vocational training")
            counts.append(drill.Frequencies[0].Values[0][0])

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert len(counts) == 4 and len(set(counts)) == 1
