"""Runs the recorded scripts of a folder, each in a process of its own, and compares the documents that they give with
those of their sessions. Run by `quillara run` with the folder and how many there are."""

import json
import os
import shutil
import sys

import quillara

FOLDER, COUNT = sys.argv[1:]
HOST = quillara._quillara
KEPT = os.environ.get("QUILLARA_KEPT_SCRIPTS")  # a folder for scripts that don't give what they should
PROCESSES = os.cpu_count() or 1


def text_of(number, end):
    with open(os.path.join(FOLDER, f"{number}.{end}"), "rb") as file:
        return file.read()


def documents_of(outputs):
    """The runs without what only one of the sides notes beside the documents."""
    runs = json.loads(outputs)
    return [[run["data"], run["documents"]] for run in (runs if isinstance(runs, list) else [runs])]


def replay(number):
    """What is wrong with a script; nothing when it gives the documents."""
    try:
        exec(compile(text_of(number, "py"), f"{number}.py", "exec"), {"__name__": "__main__"})
    except BaseException as error:
        within = error.__traceback__.tb_next
        return f"line {within.tb_lineno if within else '?'}: {error}"
    found, wanted = HOST.outputs("json"), text_of(number, "json")
    if documents_of(found) == documents_of(wanted):
        return ""
    with open(os.path.join(FOLDER, f"{number}.found.json"), "wb") as file:
        file.write(found)
    return "other documents"


def keep(number):
    for file in os.listdir(FOLDER):
        if file.startswith(f"{number}.") or file.endswith(".csv"):
            shutil.copy(os.path.join(FOLDER, file), KEPT)


def replay_every(first):
    """The scripts from `first` on, one for each process that there is at a time."""
    wrong = 0
    for number in range(first, int(COUNT) + 1, PROCESSES):
        child = os.fork()
        if child == 0:
            HOST.keep_outputs()
            outcome = replay(number)
            if outcome:
                print(f"{number}: {outcome}\n", flush=True)
                if KEPT:
                    keep(number)
            os._exit(1 if outcome else 0)
        status = os.waitpid(child, 0)[1]
        if os.WIFSIGNALED(status):
            print(f"{number}: ended by signal {os.WTERMSIG(status)}\n", flush=True)
            if KEPT:
                keep(number)
        wrong += status != 0
    return min(wrong, 255)


workers = []
for place in range(1, PROCESSES + 1):
    worker = os.fork()
    if worker == 0:
        os._exit(replay_every(place))
    workers.append(worker)
wrong = sum(os.waitstatus_to_exitcode(os.waitpid(worker, 0)[1]) for worker in workers)
print(f"{COUNT} scripts, {wrong} of them wrong")
sys.exit(1 if wrong else 0)
