"""Finds the places of a C++ file that can be changed, on its syntax tree."""

import dataclasses
import re

from clang.cindex import CursorKind, Index, TokenKind

# What an operator becomes.
_OPERATORS = {
    "==": ["!="],
    "!=": ["=="],
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "%": ["/"],
    "&": ["|"],
    "|": ["&"],
    "+=": ["="],
    "-=": ["="],
    "|=": ["="],
    "++": ["--"],
    "--": ["++"],
}
_PREFIX_OPERATORS = {"!": [""], "-": [""], "++": ["--"], "--": ["++"]}

# Where a token that is spelt like an operator is one. (An overloaded operator
# is a reference to its function.)
_OPERATIONS = {
    CursorKind.BINARY_OPERATOR,
    CursorKind.COMPOUND_ASSIGNMENT_OPERATOR,
}

_FUNCTIONS = {
    CursorKind.FUNCTION_DECL,
    CursorKind.FUNCTION_TEMPLATE,
    CursorKind.CXX_METHOD,
    CursorKind.CONSTRUCTOR,
    CursorKind.DESTRUCTOR,
    CursorKind.CONVERSION_FUNCTION,
}

_BODIED = _FUNCTIONS | {CursorKind.LAMBDA_EXPR}

_CONDITIONAL = {
    CursorKind.IF_STMT,
    CursorKind.WHILE_STMT,
    CursorKind.DO_STMT,
    CursorKind.FOR_STMT,
    CursorKind.CONDITIONAL_OPERATOR,
}

# Operators whose changes negate the condition that they make.
_NEGATED = {"==", "!=", "<", "<=", ">", ">=", "!"}

_LOOPS = {
    CursorKind.WHILE_STMT,
    CursorKind.DO_STMT,
    CursorKind.FOR_STMT,
    CursorKind.CXX_FOR_RANGE_STMT,
}


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One change: the bytes [start, end) of the file become `new`."""
    file: str  # below the library's folder
    start: int
    end: int
    new: bytes
    what: str  # as it is printed
    line: int
    column: int
    function: str  # the one that it stands in, "" outside of functions
    text: str  # its line
    count: int  # the how many-th of the same change in the same line

    @property
    def key(self):
        """Names it without the place, which moves."""
        return (self.file, self.function, self.text, self.what, self.count)

    def apply(self, source):
        return source[:self.start] + self.new + source[self.end:]


class _Finder:
    def __init__(self, file, path, arguments):
        self._file = file
        self._path = path
        with open(path, "rb") as source:
            self._source = source.read()
        self._changes = {}  # (start, end, new) -> (what, function)
        unit = Index.create().parse(path, args=arguments)
        errors = [str(d) for d in unit.diagnostics if d.severity >= 3]
        if errors:
            raise SystemExit("\n".join(errors))
        self._functions = []  # (start, end, name), outer ones first
        for cursor in unit.cursor.get_children():
            if self._is_here(cursor):
                self._walk(cursor, None, None)
        for token in unit.get_tokens(extent=unit.cursor.extent):
            self._token(token)

    def mutants(self):
        lines = self._source.decode().split("\n")
        seen = {}
        found = []
        for (start, end, new), what in sorted(self._changes.items()):
            before = self._source[:start].decode()
            line = before.count("\n") + 1
            column = len(before) - before.rfind("\n")
            text = lines[line - 1].strip()
            function = ""
            for begin, stop, name in self._functions:
                if begin <= start < stop:
                    function = name
            key = (function, text, what)
            seen[key] = seen.get(key, 0) + 1
            found.append(
                Mutant(self._file, start, end, new.encode(), what, line,
                       column, function, text, seen[key]))
        return found

    def _is_here(self, cursor):
        file = cursor.location.file
        return file is not None and file.name == self._path

    def _text(self, cursor):
        extent = cursor.extent
        return self._source[extent.start.offset:extent.end.offset].decode()

    def _change(self, start, end, new, what):
        if self._source[start:end] != new.encode():
            self._changes.setdefault((start, end, new), what)

    def _replace(self, cursor, new, what):
        extent = cursor.extent
        self._change(extent.start.offset, extent.end.offset, new, what)

    # Tokens: operators and constants.

    def _token(self, token):
        cursor = token.cursor
        if cursor.kind.is_preprocessing():
            return
        olds = token.spelling
        news = []
        if token.kind == TokenKind.PUNCTUATION:
            if cursor.kind == CursorKind.UNARY_OPERATOR:
                news = _PREFIX_OPERATORS.get(olds, [])
            elif cursor.kind in _OPERATIONS or (
                    cursor.kind == CursorKind.DECL_REF_EXPR
                    and cursor.spelling == "operator" + olds):
                news = _OPERATORS.get(olds, [])
        elif cursor.kind == CursorKind.INTEGER_LITERAL:
            news = [_incremented(olds)]
        elif cursor.kind == CursorKind.CHARACTER_LITERAL:
            news = [_other_character(olds)]
        elif (cursor.kind == CursorKind.STRING_LITERAL
              and token.kind == TokenKind.LITERAL):
            news = [olds[:-1] + '?"']
        elif cursor.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            news = ["false" if olds == "true" else "true"]
        start = token.extent.start.offset
        for new in news:
            what = f"{olds} -> {new}" if new else f"{olds} removed"
            self._change(start, start + len(olds.encode()), new, what)

    # The tree: conditions, statements, cases, arguments.

    def _walk(self, cursor, parent, function):
        if cursor.kind in _FUNCTIONS:
            function = cursor
            extent = cursor.extent
            self._functions.append(
                (extent.start.offset, extent.end.offset, cursor.spelling))
        children = list(cursor.get_children())
        if cursor.kind in _CONDITIONAL:
            self._condition(cursor, children)
        if cursor.kind == CursorKind.CASE_STMT:
            self._case(cursor, children)
        if cursor.kind == CursorKind.CALL_EXPR:
            self._arguments(cursor)
        for position, child in enumerate(children):
            if _is_statement(cursor, position, len(children)):
                self._statement(child, cursor, parent, function)
            self._walk(child, cursor, function)

    def _condition(self, cursor, children):
        if cursor.kind == CursorKind.DO_STMT:
            condition = children[-1]
        elif cursor.kind == CursorKind.FOR_STMT:
            condition = children[1]
        else:
            condition = children[0]
        if cursor.kind == CursorKind.CONDITIONAL_OPERATOR:
            yes, no = children[1], children[2]
            start, end = yes.extent.start.offset, no.extent.end.offset
            between = self._source[yes.extent.end.offset:no.extent.start.
                                   offset].decode()
            self._change(start, end,
                         self._text(no) + between + self._text(yes),
                         "? : swapped")
            return
        if (condition.kind not in (CursorKind.DECL_STMT, CursorKind.VAR_DECL)
                and self._operator(condition) not in _NEGATED):
            text = self._text(condition)
            self._replace(condition, f"!({text})",
                          f"condition {_short(text)} negated")

    def _operator(self, expression):
        """The operator of an operation."""
        operands = list(expression.get_children())
        if expression.kind == CursorKind.UNEXPOSED_EXPR and len(operands) == 1:
            return self._operator(operands[0])
        if expression.kind == CursorKind.UNARY_OPERATOR:
            return self._text(expression)[0]
        if (len(operands) == 2
                and expression.kind == CursorKind.BINARY_OPERATOR):
            return self._source[operands[0].extent.end.offset:operands[1].
                                extent.start.offset].decode().strip()
        return expression.spelling.removeprefix("operator")

    def _case(self, cursor, children):
        start = cursor.extent.start.offset
        end = children[1].extent.start.offset
        label = self._text(children[0])
        self._change(start, end, "", f"case {label} removed")

    def _arguments(self, cursor):
        if cursor.spelling.startswith("operator"):
            return
        arguments = [a for a in cursor.get_arguments()
                     if a is not None and self._text(a)]
        for first, second in zip(arguments, arguments[1:]):
            start = first.extent.start.offset
            end = second.extent.end.offset
            between = self._source[first.extent.end.offset:second.extent.start.
                                   offset].decode()
            one, two = self._text(first), self._text(second)
            self._change(start, end, two + between + one,
                         f"arguments {_short(one)} and {_short(two)} swapped")

    def _statement(self, statement, parent, grandparent, function):
        text = self._text(statement)
        kind = statement.kind
        if kind in (CursorKind.COMPOUND_STMT, CursorKind.CASE_STMT,
                    CursorKind.DEFAULT_STMT, CursorKind.NULL_STMT):
            return
        if kind == CursorKind.RETURN_STMT:
            # A function that should return something must not end.
            if grandparent is not None and grandparent.kind in _BODIED:
                return
        elif kind == CursorKind.DECL_STMT:
            if not self._declares_unused(statement, function):
                return
        self._replace(statement, ";" if not text.endswith("}") else "",
                      f"{_short(text)} removed")

    def _declares_unused(self, statement, function):
        names = [c.spelling for c in statement.get_children()]
        body = self._text(function) if function is not None else ""
        return all(
            len(re.findall(rf"\b{re.escape(name)}\b", body)) == 1
            for name in names)


def _is_statement(parent, position, count):
    """Whether a child stands where a statement does."""
    kind = parent.kind
    if kind == CursorKind.COMPOUND_STMT:
        return True
    if kind == CursorKind.CASE_STMT or kind == CursorKind.DEFAULT_STMT:
        return position == count - 1
    if kind in _LOOPS:
        return position == (0 if kind == CursorKind.DO_STMT else count - 1)
    return False


def _incremented(literal):
    digits, suffix = re.fullmatch(r"(0[xX][0-9a-fA-F]+|\d+)(.*)",
                                  literal).groups()
    base = 16 if digits[:2] in ("0x", "0X") else 10
    value = int(digits, base) + 1
    return (f"0x{value:X}" if base == 16 else str(value)) + suffix


def _other_character(literal):
    if literal[1] == "\\":
        return "'?'"
    return "'" + chr(ord(literal[1]) + 1).replace("\\", "\\\\").replace(
        "'", "\\'") + "'"


def _short(text):
    text = " ".join(text.split())
    return f"`{text}`" if len(text) <= 40 else f"`{text[:37]}...`"


def find(file, path, arguments):
    """The mutants of `path`, in the order of their places."""
    return _Finder(file, path, arguments).mutants()
