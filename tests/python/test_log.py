"""The log of programs: a line of each member that fails, in the user's state folder."""

import os
import pathlib
import re
import subprocess

import pytest
from conftest import PROGRAM, SURVEY

FAILING = """
import quillara
drill = quillara.table({"a": ["x", "y"]}).drill("a")
for _ in range(2):
    try:
        drill.ReviewFrequencies
    except quillara.Error as error:
        print(error.text)
"""

DISABLED = "This control is disabled now. Why: there are no variables for review; ReviewVariables chooses some.\n"


def run(folder, script):
    environment = {**os.environ, "XDG_STATE_HOME": str(folder)}
    done = subprocess.run([PROGRAM, "run", script], env=environment, capture_output=True, text=True)
    return done.returncode, done.stdout, done.stderr


@pytest.fixture
def script(tmp_path):
    (tmp_path / "failing.py").write_text(FAILING)
    return tmp_path / "failing.py"


def test_failing_members_leave_a_line_each(tmp_path, script):
    assert run(tmp_path / "new" / "state", script) == (0, DISABLED * 2, "")
    lines = (tmp_path / "new" / "state" / "quillara" / "log").read_text().splitlines()
    assert len(lines) == 2 and re.fullmatch(
        r"[-0-9]+ [:0-9]+\t\d+\t\d+\t1\tException in automation method \[CDefineTask::get_ReviewFrequencies\]: "
        r"This control is disabled now\.", lines[0])


@pytest.mark.parametrize("state", ["/dev/null/state", "not/absolute", "a file", "a folder in place of the log"])
def test_a_log_that_cannot_be_written_is_harmless(tmp_path, script, state):
    (tmp_path / "a file").write_text("")
    (tmp_path / "a folder in place of the log" / "quillara" / "log").mkdir(parents=True)
    (tmp_path / "home").write_text("")
    folder = tmp_path / state if state.startswith("a f") else state
    environment = {**os.environ, "XDG_STATE_HOME": str(folder), "HOME": str(tmp_path / "home")}
    done = subprocess.run([PROGRAM, "run", script], env=environment, capture_output=True, text=True)
    assert (done.returncode, done.stdout, done.stderr) == (0, DISABLED * 2, "")


def test_programs_without_failing_members_leave_no_log(tmp_path):
    subprocess.run([PROGRAM, "drill", SURVEY, "--categorical", "sex", "--show", "review-frequencies,frequencies"], check=True,
                   env={**os.environ, "XDG_STATE_HOME": str(tmp_path)}, capture_output=True)
    assert not pathlib.Path(tmp_path / "quillara" / "log").exists()
