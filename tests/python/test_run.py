"""Scripts by `quillara run`: their documents, their ends, and the programs around them."""

import json
import os
import re
import signal
import subprocess

import pytest
from conftest import PROGRAM, SURVEY


@pytest.fixture
def script(tmp_path):
    def written(text):
        (tmp_path / "script.py").write_text("import sys, quillara\n" + text)
        return str(tmp_path / "script.py")

    return written


def run(*arguments, **more):
    done = subprocess.run([PROGRAM, "run", *arguments], capture_output=True, text=True, **more)
    return done.returncode, done.stdout, done.stderr


CALL = re.compile("<code>.*</code>")

DRILLED = f"""
drill = quillara.open({SURVEY!r}).select("age > 30").drill("sex education", "age")
drill.down("sex", "Female")
drill.Frequencies
drill.down("education", "Vocational training")
drill.Histograms, drill.Summary
"""
SAME = ["--select", "age > 30", "--categorical", "sex,education", "--continuous", "age"]
STEPS = ["--down", "sex=Female", "--down", "education=Vocational training"]


@pytest.mark.parametrize("form", ["text", "json", "csv", "csv-blocks", "html"])
def test_documents_have_the_shape_of_those_of_drill(script, tmp_path, form):
    both = [PROGRAM, "drill", SURVEY, *SAME, *STEPS, "--show", "frequencies,histograms,summary", "--after", "each",
            "--format", "json"]
    every = json.loads(subprocess.run(both, check=True, capture_output=True).stdout)["documents"]
    status, out, _ = run("--format", form, script(DRILLED))
    assert status == 0
    if form == "json":
        wanted = [each for each in every if (each["command"], each["step"]) in {(9060, 1), (9061, 2), (9058, 2)}]
        assert json.loads(out)["documents"] == wanted
    else:
        assert "Step 1 Down: sex = Female, " in out or form != "text"
        assert ("Selection: age &gt; 30" in out and "<svg" in out and ">Cases</text>" in out) == (form == "html")
    assert run("--quiet", "--format", form, "--output", str(tmp_path / "out"), script(DRILLED)) == (0, "", "")
    assert CALL.sub("", (tmp_path / "out").read_text()) == CALL.sub("", out)


def test_reports_have_titles_and_folders_files(script, tmp_path):
    two = DRILLED.replace("drill = ", "for _ in 1, 2:\n  drill = ").replace("\ndrill.", "\n  drill.")
    report = tmp_path / "report.html"
    assert run("--quiet", "--title", "A <b>", "--output", str(report), script(two))[0] == 0
    assert report.read_text().count("<h1>A &lt;b&gt;</h1>") == 2 and "<code>quillara run --quiet --title" in report.read_text()
    weighted = "quillara.open('survey.sav')\ntable.weight = 'weight'\ntable.drill('', 'age').Descriptives".replace("quillara", "table = quillara")
    told = run("--quiet", "--format", "html", script(weighted.replace("'survey.sav'", repr(SURVEY))))[1]
    assert "<p>Std.Dev. of descriptives: the weighted squares over the number of cases less 1</p>" in told
    folder = tmp_path / "tables"
    assert run("--quiet", "--output", f"{folder}/", script(DRILLED)) == (0, "", "")
    names = {each.name for each in folder.iterdir()}
    assert {"step1-frequencies-01-education-female.csv", "step2-summary-01-female-vocational-training.csv"} < names
    listed = [line.split(",")[:3] for line in (folder / "contents.csv").read_text().splitlines()]
    assert {name for name, *_ in listed[1:]} == names - {"contents.csv"} and listed[1][1:] == ["1", "sex = Female"]
    assert run("--quiet", "--output", str(folder), script(DRILLED))[2].startswith(f"{len(names)} files that were there are")
    assert run("--quiet", "--format", "json", "--output", str(folder), script(two))[0] == 0
    made = {each.name for each in folder.iterdir()} - names
    assert len(made) == 2 * (len(names) - 1) and "analysis2-step2-summary-01-female-vocational-training.json" in made


RUNS = [
    # what the analyses do                                                                 file: command.step of the documents
    ("",                                                                                    []),
    ("quillara.table({'a': ['x', 'y']}, 'one').drill('a')",                                 ["one:"]),
    ("for name in 'one', 'two':\n  with quillara.table({'a': ['x', 'y']}, name).drill('a') as d:\n    d.Frequencies",
     ["one: 9060.0", "two: 9060.0"]),
    ("d = quillara.table({'a': ['x', 'y']}, 'one').drill('a')\nd.Frequencies.Close(); d.PieCharts", ["one: 9119.0"]),
    ("d = quillara.table({'a': ['x', 'y'], 'b': ['u', 'v']}, 'one').drill('a b')\nd.StandAloneResults = 1\nd.Frequencies\n"
     "d.down('a', 'x'); d.up('a'); d.Summary if 0 else d.down('b', 'u')",                  ["one: 9060.3"]),
    ("d = quillara.table({'a': ['x', 'y'], 'b': ['u', 'v']}, 'one').drill('a b')\nd.StandAloneResults = 1\nd.PieCharts[0].Close()\n"
     "d.StandAloneResults = 0\nd.down('a', 'x')\nd.StandAloneResults = 1\nd.Histograms", ["one: 9119.0 9061.1"]),
]


@pytest.mark.parametrize("text, told", RUNS)
def test_documents_are_those_that_stay_open(script, text, told):
    status, out, errors = run("--format", "json", script(text))
    assert (status, errors) == (0, "")
    outputs = json.loads(out)
    outputs = outputs if isinstance(outputs, list) else [outputs]
    assert [f"{each['data']['file']}: " .rstrip() + "".join(
        f" {document['command']}.{document['step']}" for document in each["documents"]) for each in outputs] == told


ENDS = [
    # the script                                               status  standard output  the last line of its errors
    ("print(sys.argv[1:], __name__)",                          0, "['-x', '--y=', '--help'] __main__\n", ""),
    ("sys.exit(7)",                                            7, "", ""),
    ("sys.exit('no more')",                                    1, "", "no more"),
    ("print(1)\nraise KeyError('k')",                          1, "1\n", "KeyError: 'k'"),
    ("raise KeyboardInterrupt",                                130, "", ""),
    ("import os, signal; os.kill(os.getpid(), signal.SIGTERM)", -signal.SIGTERM, "", ""),
    ("x = (",                                                  1, "", "SyntaxError: '(' was never closed"),
    ("import package_beside",                                  0, "beside\n", ""),
    ("quillara.open('nowhere.sav')",                           1, "", None),
]


@pytest.mark.parametrize("text, status, out, error", ENDS)
def test_a_script_ends_as_in_the_interpreter(script, tmp_path, text, status, out, error):
    (tmp_path / "package_beside.py").write_text("print('beside')")
    found, printed, errors = run(script(text), "-x", "--y=", "--help")
    assert (found, printed) == (status, out)
    last = (errors.splitlines() or [""])[-1]
    assert last == error if error is not None else "nowhere.sav" in last
    if "KeyError" in text:
        assert f'File "{tmp_path}/script.py", line 3' in errors and "_run.py" not in errors
        assert run("--format", "json", script(DRILLED + text))[1] == "1\n"  # without documents


INTERRUPTED_STEP = """
import os, signal, threading, time, numpy
cases = numpy.arange(1_000_000)
values = cases * 7919 % 1000003.0
table = quillara.table({"kind": cases % 2.0, "town": cases // 7 % 5.0} | {f"v{i}": values for i in range(25)}, "table")
drill = table.drill("kind town", "3-27")

def step():
    begin = time.process_time()
    drill.DrillDownVariable, drill.DrillDownCategory = "kind", "0"
    drill.DrillDown()
    return time.process_time() - begin

def seen():
    return drill.Summary.Values, drill.Descriptives.Values

def back():
    drill.up("kind")
    return drill.Descriptives.Values

whole = step()
wanted, before, whole = seen(), back(), min(whole, step())
back()
begin, ended = time.process_time(), False

def interrupt():  # in the middle of the pass, which the step all but consists of
    while time.process_time() < begin + whole / 4 and not ended:
        time.sleep(0.0005)
    os.kill(os.getpid(), 0 if ended else signal.SIGINT)

watch = threading.Thread(target=interrupt)
watch.start()
print("begun", flush=True)
try:
    step()
except KeyboardInterrupt:
    if len(sys.argv) == 1:
        raise
    print("at once" if time.process_time() - begin < whole else "at the end of the pass")
ended = True
watch.join()
print(drill.Summary.Values, drill.DrillDownVariable, back() == before, step() > 0 and seen() == wanted)
"""


@pytest.mark.parametrize("arguments, status, out", [
    ([], 130, "begun\n"),
    (["catch"], 0, "begun\nat once\n[['0']] town True True\n"),
])
def test_a_pass_is_interrupted_and_nothing_is_done_by_halves(script, tmp_path, arguments, status, out):
    (tmp_path / "out.json").write_text("before")
    found, printed, errors = run("--format", "json", "--output", str(tmp_path / "out.json"), script(INTERRUPTED_STEP), *arguments)
    assert (found, printed, errors) == (status, out, "")
    assert ((tmp_path / "out.json").read_text() == "before") == (status != 0)
    assert sorted(os.listdir(tmp_path)) == ["out.json", "script.py"]
def test_two_dashes_end_the_options_and_the_rest_is_the_scripts(script, tmp_path):
    script("print(sys.argv)")
    os.rename(tmp_path / "script.py", tmp_path / "-x.py")
    for before, behind in (([], ["--format", "json"]), (["--format", "text"], ["--", "-h", "a b"]), (["--output=out"], ["--"])):
        found, printed, errors = run(*before, "--", "-x.py", *behind, cwd=tmp_path)
        assert (found, printed.splitlines()[0], errors) == (0, str(["-x.py", *behind]), "")
    assert run("--format", cwd=tmp_path)[0] == run("--", cwd=tmp_path)[0] == run("-x.py", cwd=tmp_path)[0] == 2


def test_a_script_that_never_ends_is_interrupted(script):
    running = subprocess.Popen([PROGRAM, "run", script("print('begun', flush=True)\nwhile True: pass")],
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    assert running.stdout.readline() == "begun\n"
    running.send_signal(signal.SIGINT)
    assert (running.communicate(timeout=20)[1], running.returncode) == ("", 130)


@pytest.mark.parametrize("arguments, more, status, error", [
    (["nowhere.py"], {}, 1, "nowhere.py"),
    (["."], {}, 1, "is a folder"),
    ([], {}, 2, "SCRIPT is required"),
    (["--format", "xml", "script.py"], {}, 2, "choose from text, json, csv, csv-blocks, html, xlsx"),
    (["--output", "script.py", "script.py"], {}, 2, "--output"),
    (["script.py"], {"QUILLARA_PYTHON": "/nowhere/python"}, 1, "Python can't be started"),
    (["script.py"], {"QUILLARA_PYTHON": "/bin/cat"}, 1, 'QUILLARA_PYTHON names "/bin/cat", which is no Python 3'),
    ([SURVEY], {}, 1, "is a file of data, not a Python script; quillara drill shows its results"),
    (["--output", "no/folder", "script.py"], {}, 1, "no/folder"),
    (["--output", "./", "--format", "html", "script.py"], {}, 2, "a report is one file, not a folder"),
])
def test_what_stands_in_the_way_is_one_line(script, tmp_path, arguments, more, status, error):
    script("pass")
    found, out, errors = run(*arguments, cwd=tmp_path, env={**os.environ, **more})
    assert (found, out) == (status, "") and error in errors
    assert errors.startswith("quillara: ") and errors.count("\n") == status


def test_the_package_is_missed_in_one_line(script, tmp_path):
    (tmp_path / "bin").mkdir()
    (tmp_path / "lib").mkdir()
    library = os.path.join(os.path.dirname(PROGRAM), "..", "lib")
    os.link(PROGRAM, tmp_path / "bin" / "quillara")
    for name in ("libquillara.so", "libqladrilldown.so"):
        os.link(os.path.join(library, name), tmp_path / "lib" / name)
    done = subprocess.run([tmp_path / "bin" / "quillara", "run", script("")], capture_output=True, text=True,
                          env={**os.environ, "LD_LIBRARY_PATH": str(tmp_path / "lib")})
    assert done.returncode == 1 and "isn't installed beside this program" in done.stderr
