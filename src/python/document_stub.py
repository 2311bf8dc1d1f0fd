"""Writes a stub with the descriptions that the module itself has: document_stub.py STUB RESULT"""

import ast
import inspect
import sys

import bitlux


def description(thing, name, indent):
    """The text without the line of the signature, indented; empty for none."""
    text = inspect.getdoc(thing) or ""
    if text.startswith(name + "("):
        text = text.partition("\n")[2].strip()
    return f"\n{' ' * indent}".join(text.split("\n"))


def docstring(thing, name, indent):
    text = description(thing, name, indent)
    return [ast.Expr(ast.Constant(text))] if text else []


def document(node):
    """Describes a class and its members."""
    real = getattr(bitlux, node.name)
    body = docstring(real, node.name, 4)
    for part in node.body:
        body.append(part)
        if isinstance(part, ast.FunctionDef):
            part.body = docstring(vars(real).get(part.name), part.name, 8) or part.body
        elif isinstance(part, ast.AnnAssign) and part.target.id in vars(real):
            body += docstring(vars(real)[part.target.id], part.target.id, 4)
    node.body = [part for part in body if not is_ellipsis(part)] or node.body


def is_ellipsis(part):
    return isinstance(part, ast.Expr) and part.value.value is Ellipsis


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        stub = ast.parse(file.read())
    for node in stub.body:
        if isinstance(node, ast.ClassDef):
            document(node)
    stub.body.insert(0, ast.Expr(ast.Constant(inspect.getdoc(bitlux))))
    with open(sys.argv[2], "w", encoding="utf-8") as file:
        file.write(ast.unparse(ast.fix_missing_locations(stub)) + "\n")


if __name__ == "__main__":
    main()
