"""qorin.pyi, installed beside the module, names what the module has: no
more, no less, down to each class's members and each function's arguments."""
import ast
import pathlib
import re

import qorin


def stub():
    return ast.parse(pathlib.Path(qorin.__file__).with_name("qorin.pyi").read_text(encoding="utf-8"))


def public(names):
    return {n for n in names if not n.startswith("_")}


def test_stub_names_every_function_and_class_member():
    tree = stub()
    functions = {node.name: node for node in tree.body if isinstance(node, ast.FunctionDef)}
    classes = {node.name: node for node in tree.body if isinstance(node, ast.ClassDef)}
    assert public(dir(qorin)) == set(functions) | set(classes)
    for name, node in classes.items():
        members = {item.name for item in node.body if isinstance(item, ast.FunctionDef)}
        assert public(dir(getattr(qorin, name))) == public(members), name
    for name, node in functions.items():
        # pybind11 writes the signature as the docstring's first line.
        signature = getattr(qorin, name).__doc__.splitlines()[0]
        arguments = re.findall(r"(\w+): ", signature[signature.index("(") + 1:signature.rindex(")")])
        assert arguments == [a.arg for a in node.args.args], name
