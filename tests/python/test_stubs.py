"""The stubs are Python and name what there is, no more and no less."""

import ast
import inspect
import pathlib

import member_table
import pytest

import quillara

STUBS = ast.parse(pathlib.Path(quillara.__file__).with_suffix(".pyi").read_text(encoding="utf-8"))
CLASSES = [each for each in STUBS.body if isinstance(each, ast.ClassDef)]
KNOWN = {name for each in ast.walk(STUBS) for name in
         ([each.name] if isinstance(each, (ast.ClassDef, ast.alias)) else [each.id] if isinstance(each, ast.Name) and isinstance(each.ctx, ast.Store) else [])}


@pytest.fixture(scope="module", autouse=True)
def learned():
    drill = member_table.drilled()
    yield [drill, drill.Frequencies, drill.Summary, drill.PieCharts[0].Series(1), drill.cases, drill.Summary.Window, drill.analysis,
           drill.window, drill.Application]
    drill.close()


@pytest.mark.parametrize("stub", CLASSES, ids=lambda stub: stub.name)
def test_a_class_has_what_its_stub_names(stub):
    own = getattr(quillara, stub.name)
    named = {each.name if isinstance(each, ast.FunctionDef) else each.target.id for each in stub.body
             if isinstance(each, (ast.FunctionDef, ast.AnnAssign))}
    assert [name for name in named if not hasattr(own, name) and name not in own.__init__.__code__.co_names] == []
    there = {name for name in dir(own) if not name.startswith("_")} - {name for base in own.__mro__[1:] for name in dir(base)}
    assert there - named == set()


def test_what_the_stubs_speak_of_is_known():
    spoken = {each.id for each in ast.walk(STUBS) if isinstance(each, ast.Name)} - {
        each.value.id for member in ast.walk(STUBS) for each in getattr(member, "decorator_list", []) if isinstance(each, ast.Attribute)}
    assert spoken - KNOWN - set(dir(__builtins__) if not isinstance(__builtins__, dict) else __builtins__) == set()
    assert {each.name for each in STUBS.body if isinstance(each, (ast.ClassDef, ast.FunctionDef))} == set(dir(quillara))


def test_each_public_call_tells_what_it_does():
    for name in dir(quillara):
        told = getattr(quillara, name)
        assert inspect.getdoc(told), name
        for member, value in vars(told).items() if inspect.isclass(told) else ():
            assert member.startswith("_") or type(value).__name__ == "member_descriptor" or inspect.getdoc(value), (name, member)
