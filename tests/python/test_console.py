"""The console that a desktop program shows, by its requests and answers."""

import subprocess
import sys

START = "from quillara import _console; _console.serve()"


def answers(*requests):
    run = subprocess.run([sys.executable, "-c", START], input="".join(f"{each}\n" for each in requests),
                         capture_output=True, text=True, timeout=60)
    return run.stdout.split("\n"), run.stderr


def test_lines_and_names():
    lines, errors = answers(">x = 6", ">x * 7", ">def f():", ">    return nosuch", ">", ">f()", "?quillara.opti",
                            "?x.real_", "?quillara.ope", ">input()", ">raise SystemExit")
    assert lines[:7] == ["\x01prompt >>>", "\x01prompt >>>", "42", "\x01prompt >>>", "\x01prompt ...",
                         "\x01prompt ...", "\x01prompt >>>"]
    assert "NameError" in errors
    assert "\x01names " in lines
    assert any(line.startswith("\x01names quillara.open") for line in lines)
    assert "RuntimeError" in errors  # requests aren't for the lines to read
