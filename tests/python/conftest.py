import os
import pathlib
import tempfile

import pytest

import quillara

SURVEY = str(pathlib.Path(__file__).parents[2] / "samples" / "survey.sav")
PROGRAM = os.environ["QUILLARA_PROGRAM"]
STATE = tempfile.TemporaryDirectory()
os.environ["XDG_STATE_HOME"] = STATE.name  # the log of failing members


@pytest.fixture(scope="session")
def survey():
    return quillara.open(SURVEY)


@pytest.fixture
def drill(survey):
    with survey.drill("sex education", "age") as begun:
        yield begun


def failure_of(call):
    """(code, text, member) of the failure that a call ends in."""
    with pytest.raises(quillara.Error) as caught:
        call()
    return caught.value.code, caught.value.text, caught.value.member
