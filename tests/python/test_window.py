"""What a person does in the windows of an analysis, said by a script."""

import pytest
from conftest import failure_of

import quillara

INVALID, CLOSED = 0x80070057, 0x800401FD


@pytest.fixture
def drill():
    table = quillara.table({"sex": ["f", "m", "m", "f", "m"], "school": ["low", "mid", "mid", "mid", "high"],
                            "age": [20.0, 30, 40, 50, 60]})
    with table.drill("sex school", "age") as begun:
        begun.DrillDownVariable = "sex"
        yield begun


@pytest.fixture(autouse=True)
def no_answers_stay_behind():
    yield
    quillara.application().ClearAnswers()


def state(drill):
    """The current variable, the open ones in their order, the steps with the newest first, the cases."""
    def read(member):
        try:
            return getattr(drill, member)
        except quillara.Error:
            return []

    still = [document.Name.split()[-1] for document in read("Frequencies")]
    steps = [f"{name}={cells[0]}" for document in read("Summary")
             for name, cells in zip(document.RowNames, document.Values)]
    return f"{read('DrillDownVariable')}: {' '.join(still)} | {' '.join(steps)} ({drill.cases.Cases})"


def subset(drill):
    """The steps in force and the cases as the host counts them."""
    left = drill.subset
    assert (left.weight, {step.kind for step in left.steps} - {"down"}) == (None, set())
    return f"| {' '.join(f'{step.variable}={step.category}' for step in reversed(left.steps))} ({left.cases})"


WORK = [
    # calls in the window, with the answers that each asks                       state
    ([("select", 9053, "age"), ("click", 9065), ("text", 9070, 5)],              "age: sex school age |  (5)"),
    ([("select", 9053, 1), ("click", 9056, [("double_click", 9102, 1)])],        "sex: sex age | school=low (1)"),
    ([("click", 9056, [("select", 9102, "m"), ("click", 1)])],                   "school: school age | sex=m (3)"),
    ([("click", 9056, [("close",)])],                                            "sex: sex school age |  (5)"),
    ([("drag", 9053, 2, 0)],                                                     "age: age sex school |  (5)"),
    ([("click", 9055, [("select", 9089, 2), ("click", 9091), ("select", 9089, 0), ("click", 9091),
                       ("select", 9089, 0), ("click", 9091), ("click", 1)])],    "sex: age sex school |  (5)"),
    ([("click", 9103, [("pick", 1, 0)], [("pick", 0, 0)])],                      "age: age | school=high sex=m (1)"),
    ([("click", 9056, [("double_click", 9102, 1)]), ("select", 9054, 0),
      ("click", 9103, [("pick", -1, 1)], [("leave",)])],                         "school: sex school age |  (5)"),
    ([("select", 9053, "age"), ("click", 9069), ("click", 9077, [("text", 9093, "30 1e2"), ("click", 1)]),
      ("click", 9056, [("select", 9102, "30<x<=100"), ("click", 1)])],           "sex: sex school | age=30<x<=100 (3)"),
    ([("click", 201, [("click", 11), ("text", 12, "age > 30"), ("click", 1)])],  "sex: sex school age |  (3)"),
]


@pytest.mark.parametrize("calls, wanted", WORK)
def test_the_window_is_worked_in_as_a_person_does(drill, calls, wanted):
    for name, *arguments in calls:
        answers = [argument for argument in arguments if isinstance(argument, list)]
        for answer in answers:
            drill.Application.Answer(answer)
        getattr(drill.window, name)(*arguments[:len(arguments) - len(answers)])
    assert state(drill) == wanted
    assert wanted.endswith(subset(drill))


REFUSED = [
    (lambda window: window.click(9999), INVALID, "isn't there"),
    (lambda window: window.click(9121), INVALID, "can't be seen"),
    (lambda window: window.click(9057), INVALID, "is disabled"),
    (lambda window: window.text(9053, "x"), INVALID, "isn't of the kind"),
    (lambda window: window.select(9053, "x"), INVALID, 'no row "x"'),
    (lambda window: window.select(9053, 9), INVALID, "no row 9"),
    (lambda window: window.drag(9053, 0, 9), INVALID, "no place 9"),
    (lambda window: window.text(9070, "x"), INVALID, "x"),
    (lambda window: window.click("9053"), INVALID, "has other arguments"),
    (lambda window: window.click(), 0x8002000E, ""),
]


@pytest.mark.parametrize("call, code, text", REFUSED)
def test_what_no_person_can_do_is_refused(drill, call, code, text):
    failure = failure_of(lambda: call(drill.window))
    assert failure[0] == code and text in failure[1]


@pytest.mark.parametrize("answer, text", [
    ([("pick", 77, 0)], "no bar 77"),
    ([("pick", 0, 1)], "no option 1"),
    ([("click", 9102)], None),  # waits for a dialog
])
def test_brushing_takes_picks_only(drill, answer, text):
    drill.Application.Answer(answer)
    if text is None:
        drill.window.click(9103)
    else:
        assert text in failure_of(lambda: drill.window.click(9103))[1]
    assert failure_of(lambda: drill.Summary)[0] == 0x80070005


def test_a_dialog_without_an_answer_is_told_of(drill):
    with pytest.warns(quillara.Message, match="Select category"):
        drill.window.click(9056)
    drill.Application.Answer([("pick", 0, 0)])
    assert "picked" in failure_of(lambda: drill.window.click(9056))[1]


@pytest.mark.parametrize("calls", [1, "x", [1], ["click"], [[1, 2]], [[]], [["click", [9056]]]])
def test_what_is_no_answer_is_refused_as_a_call_is(drill, calls):
    assert failure_of(lambda: drill.Application.Answer(calls))[0] == INVALID


def test_the_window_closes(drill):
    window = drill.window
    window.close()
    assert failure_of(lambda: window.click(9058))[0] == CLOSED
    assert failure_of(lambda: drill.window)[0] == CLOSED
