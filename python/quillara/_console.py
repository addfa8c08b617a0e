"""A Python console for a program that shows it: reads requests from standard input, a line each, and answers on standard
output. A request is > and a line of Python, or ? and the beginning of a name that is to be completed. What the lines
print goes to the streams as it is; answers begin with a byte 1: "prompt" and the prompt behind each line, "names" and
the names that complete a beginning, with tabs between. Ctrl-C ends what runs, the end of the input the console."""

import code
import rlcompleter
import sys

ANSWER = "\x01"
MOST_NAMES = 200


def answer(word, text):
    sys.stderr.flush()
    print(f"{ANSWER}{word} {text}", flush=True)


def names_of(completer, text):
    names = []
    while len(names) < MOST_NAMES and (name := completer.complete(text, len(names))) is not None:
        names.append(name)
    return names


def complete(completer, text):
    try:
        names = names_of(completer, text)
    except Exception:  # a property of the object may raise anything
        names = []
    answer("names", "\t".join(dict.fromkeys(names)))


def push(console, line):
    """Whether more lines must follow."""
    try:
        return console.push(line)
    except KeyboardInterrupt:
        console.resetbuffer()
        print("KeyboardInterrupt", file=sys.stderr)
        return False


def serve():
    console = code.InteractiveConsole({"__name__": "__main__", "__doc__": None})
    console.push("import quillara")
    completer = rlcompleter.Completer(console.locals)
    requests = sys.stdin
    sys.stdin = None  # the requests are nothing that a line may read
    answer("prompt", ">>>")
    while True:
        try:
            request = requests.readline()
            if not request:
                return
            line = request[1:].rstrip("\n")
            if request.startswith("?"):
                complete(completer, line)
            else:
                answer("prompt", "..." if push(console, line) else ">>>")
        except KeyboardInterrupt:
            console.resetbuffer()
            answer("prompt", ">>>")
