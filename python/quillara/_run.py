"""Runs a script for `quillara run`: its arguments are a format or nothing, a file, a folder or nothing, "quiet" or
nothing; the title of a report or nothing, when and by which call it is made; the script, and what the script gets. The
exit status is that of the script; 1 after an exception, 130 after Ctrl-C."""

import os
import sys
import types
import warnings


def say(text):
    print(f"quillara: {text}", file=sys.stderr)


def package():
    """The package, whichever folder is searched first; the folder of this file is on the path instead of a script's."""
    home = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    sys.path[0] = home
    try:
        import quillara
    except ImportError as error:
        say(f"The Python package can't be loaded by {sys.executable}: {error}")
        sys.exit(1)
    del sys.path[0]
    if home not in sys.path:
        sys.path.append(home)  # for processes that the script forks; scripts come first
    show_messages(quillara.Message)
    return quillara._quillara


def show_messages(category):
    """Messages of the analyses stand on standard error as those of a drill do: every one, each in a line."""
    shown = warnings.showwarning

    def show_warning(message, kind, *place):
        if issubclass(kind, category):
            print(" ".join(str(message).split()), file=sys.stderr, flush=True)
        else:
            shown(message, kind, *place)

    warnings.showwarning = show_warning
    warnings.filterwarnings("always", category=category)


def hush():
    """No remark of the host is told."""
    from quillara import Remark

    warnings.simplefilter("ignore", Remark)


def run(script, arguments):
    """Runs it as the interpreter does: in a fresh __main__, with its folder first on the path. Gives its exit status."""
    sys.argv = [script, *arguments]
    sys.path.insert(0, os.path.dirname(os.path.abspath(script)))
    main = types.ModuleType("__main__")
    main.__file__ = script
    main.__builtins__ = __builtins__
    sys.modules["__main__"] = main
    try:
        with open(script, "rb") as source:
            code = compile(source.read(), script, "exec")
    except OSError as error:
        say(f"The script can't be read: {error}")
        return 1
    except (SyntaxError, ValueError) as error:
        sys.excepthook(type(error), error.with_traceback(None), None)
        return 1
    return status_of(lambda: exec(code, main.__dict__))


def status_of(work):
    try:
        work()
        return 0
    except SystemExit as end:
        if end.code is None or isinstance(end.code, int):
            return (end.code or 0) & 0xFF
        print(end.code, file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        return 130
    except BaseException as error:
        trace = error.__traceback__.tb_next.tb_next  # behind the lines of this file
        sys.excepthook(type(error), error.with_traceback(trace), trace)
        return 1


def write_folder(host, form, folder, script):
    replaced = host.write_folder(form, folder, script)
    if replaced:
        print(replaced, file=sys.stderr)


def show(host, form, file, report, script):
    """Prints or writes what the analyses have made, behind all that the script has printed. Gives the exit status."""
    try:
        if file and host.names_folder(file):
            write_folder(host, form, file, script)
        elif file:
            host.write_outputs(form, file, *report)
        else:
            text = host.outputs(form, *report)
            sys.stdout.flush()
            sys.stdout.buffer.write(text)
            sys.stdout.buffer.flush()
        return 0
    except KeyboardInterrupt:
        return 130
    except OSError as error:
        say(f"Standard output can't be written: {error.strerror}.")
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())  # what is left isn't tried again at the end
    except Exception as error:
        say(getattr(error, "text", error))
    return 1


def main():
    form, file, quiet, *report, script = sys.argv[1:8]
    arguments = sys.argv[8:]
    host = package()
    if quiet:
        hush()
    if form:
        host.keep_outputs()
    status = run(script, arguments)
    if form and status == 0:
        status = show(host, form, file, report, script)
    sys.exit(status)


if __name__ == "__main__":
    main()
