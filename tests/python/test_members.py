"""Every member of the startup dialog and of its base, used in every state that a script may find it in."""

import pathlib
import warnings

import member_table
import pytest

import quillara

TOLD = member_table.told_outcomes(pathlib.Path(__file__).parents[1] / "automation" / "members.txt")
USES = {f"{name} {member_table.USES[use]}": (name, number, use)
        for name, number, use in member_table.uses_of_members()}
COLUMNS = next(iter(TOLD.values()))


@pytest.fixture(autouse=True)
def quiet():
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", quillara.Message)
        yield


def told(column):
    return {use: outcomes[column] for use, outcomes in TOLD.items() if outcomes.get(column)}


@pytest.mark.parametrize("state", member_table.STATES, ids=lambda state: state.__name__)
def test_each_use_has_its_outcome_in_the_state(state):
    found = {use: member_table.outcome_in(state, number, kind, *member_table.right_values(name, kind))
             for use, (name, number, kind) in USES.items()}
    assert found == told(state.__name__)


def test_objects_are_the_wrong_kind_everywhere():
    found = {use: member_table.outcome_in(member_table.drilled, number, kind, member_table.bare)
             for use, (_, number, kind) in USES.items() if kind == member_table.WRITE}
    assert found == told("wrong kind")


def test_wrong_numbers_of_arguments_are_told_before_all_else():
    for use, (_, number, kind) in USES.items():
        wrong = [(1, 2)] if kind == member_table.WRITE else [(1,), (1, 2)]
        for arguments in wrong:
            found = member_table.outcome_in(member_table.ready, number, kind, *arguments)
            assert found == "count", use


def test_members_that_are_not_there_and_uses_that_they_do_not_have():
    drill = member_table.ready()
    for name, number, kind in USES.values():
        others = {use for other, _, use in USES.values() if other == name}
        for use in member_table.USES:
            if use not in others:
                found = member_table.outcome_in(member_table.ready, number, use, *((1,) if use == 4 else ()))
                assert found == "not found", (name, use)
        for spelled in (name, quillara.snake_case(name)):
            assert spelled in dir(drill)
    assert member_table.outcome_in(member_table.ready, 4711, 2) == "not found"
    drill.close()
