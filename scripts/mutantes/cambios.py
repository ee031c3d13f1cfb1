"""The changes a mutation run tries in one source file, and the file that holds them all.

Every change sits behind a switch that is asked while the program runs, so that one build serves all of them:
`a < b` becomes `(mutante(7) ? (a <= b) : (a < b))`. At most one change is switched on, hence the changed
branch is plain source and only the other one holds further switches.
"""
import re
from dataclasses import dataclass, field

from clang.cindex import Config, CursorKind as K, Index, TranslationUnit, TypeKind as T

Config.set_library_file("libclang-14.so.1")

COMPARED = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}
COMPUTED = {"+": "-", "-": "+", "*": "+", "/": "*", "%": "*", "+=": "-=", "-=": "+=", "*=": "+="}
NUMBERS = {T.INT, T.UINT, T.LONG, T.ULONG, T.LONGLONG, T.ULONGLONG, T.SHORT, T.USHORT, T.DOUBLE, T.FLOAT,
           T.CHAR_S, T.SCHAR, T.UCHAR}
WRITING = ("=", "+=", "-=", "*=", "/=")
# A comparison inside a statement in SQL; the first that is there is changed.
IN_SQL = [("<>", ">"), ("<=", "<"), (">=", ">"), (" is not null", " is null"), (" not exists", " exists"),
          ("sum(", "max("), ("Sum(", "max("), (" desc", "")]
NOT_CHANGED = {K.STATIC_ASSERT, K.ENUM_DECL, K.TEMPLATE_TYPE_PARAMETER, K.TEMPLATE_NON_TYPE_PARAMETER}


@dataclass
class Change:
    """What stands between two offsets is replaced; a statement goes when there is no replacement."""
    start: int
    end: int
    text: str | None
    where: str  # the function or variable it is in
    constant: bool = False  # inside a constexpr function
    number: int = 0


@dataclass
class Node:
    start: int
    end: int
    changes: list[Change]
    inner: list["Node"] = field(default_factory=list)


class File:
    """One source file and its changes."""

    def __init__(self, root, path):
        self.root, self.path = root, path
        self.source = (root / path).read_bytes()
        self.changes: list[Change] = []
        # constexpr variables: the word's range, what replaces it, the end of the variable
        self.constants: dict[str, tuple[int, int, str, int]] = {}
        unit = parse(root, path)
        self.macros = [(c.extent.start.offset, c.extent.end.offset) for c in unit.cursor.get_children()
                       if c.kind == K.MACRO_INSTANTIATION and self.own(c)]
        self.macros += [(c.extent.start.offset, c.extent.end.offset) for c in unit.cursor.get_children()
                        if c.kind == K.MACRO_DEFINITION and self.own(c)]
        for cursor in unit.cursor.get_children():
            if self.own(cursor):
                self.visit(cursor, None, "", False)
        self.every = list(self.changes)  # also those that do not compile

    def own(self, cursor):
        file = cursor.extent.start.file
        return file is not None and file.name == str(self.root / self.path)

    def text(self, start, end):
        return self.source[start:end].decode()

    def of(self, cursor):
        return self.text(cursor.extent.start.offset, cursor.extent.end.offset)

    def add(self, cursor, text, where, constant, statement=False):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        if any(a <= start < b or start <= a < end for a, b in self.macros) or start >= end:
            return
        if statement:
            end = self.source.find(b";", end) + 1
        change = Change(start, end, text, where, constant)
        if all((c.start, c.end, c.text) != (start, end, text) for c in self.changes):
            self.changes.append(change)

    def visit(self, c, parent, where, constant):
        if c.kind in NOT_CHANGED or not self.own(c):
            return
        kids = [k for k in c.get_children() if self.own(k)]
        if c.kind in (K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION,
                      K.FUNCTION_TEMPLATE):
            where = c.spelling
            head = self.text(c.extent.start.offset, max(c.location.offset, c.extent.start.offset))
            constant = "constexpr" in head
        elif c.kind == K.VAR_DECL:
            where = where or c.spelling
            self.note_constant(c, parent)
        for find in (self.operators, self.literals, self.neighbours, self.conditions, self.statements):
            find(c, kids, parent, where, constant)
        if c.kind == K.CASE_STMT:
            kids = kids[1:]
        for kid in kids:
            self.visit(kid, c, where, constant)

    def note_constant(self, c, parent):
        start = c.extent.start.offset
        head = self.text(start, c.location.offset)
        at = head.find("constexpr")
        if at >= 0:
            outside = parent is None or parent.kind == K.NAMESPACE
            word = "static" if outside and "static" not in head and "inline" not in head else ""
            self.constants[c.spelling] = (start + at, start + at + len("constexpr"), word, c.extent.end.offset)

    def operators(self, c, kids, parent, where, constant):
        if any(k.spelling == "operator<=>" for k in kids):
            return  # the compiler's reading of a comparison that is met again below
        if c.kind in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR) and len(kids) == 2:
            left, right = kids
            op = self.text(left.extent.end.offset, right.extent.start.offset).strip()
        elif c.kind == K.CALL_EXPR and c.spelling.startswith("operator") and len(kids) == 3:
            left, right = kids[0], kids[2]
            op = self.of(kids[1])
        elif c.kind == K.UNARY_OPERATOR and len(kids) == 1:
            op = self.of(c)[:1]
            if self.of(c)[:2] == "!=":
                return
            if op == "!" or op == "-" and c.type.get_canonical().kind in NUMBERS:
                self.add(c, as_bool(self.of(kids[0])) if op == "!" else self.of(kids[0]), where, constant)
            return
        else:
            return
        a, b = self.of(left), self.of(right)
        if op in ("&&", "||"):
            self.add(c, as_bool(a), where, constant)
            self.add(c, as_bool(b), where, constant)
        elif op in COMPARED and not (op in ("==", "!=") and self.decides(parent)):
            self.add(c, f"{a} {COMPARED[op]} {b}", where, constant)
        elif op in COMPUTED and all(k.type.get_canonical().kind in NUMBERS for k in (left, right)):
            self.add(c, f"{a} {COMPUTED[op]} {b}", where, constant)

    def decides(self, parent):
        """Whether what stands here is tried as true and as false, or as left out, by its parent."""
        if parent is None or parent.kind != K.BINARY_OPERATOR:
            return parent is not None and parent.kind in (K.IF_STMT, K.CONDITIONAL_OPERATOR)
        left, right = parent.get_children()
        between = self.text(left.extent.end.offset, right.extent.start.offset)
        return between.strip() in ("&&", "||")

    def literals(self, c, kids, parent, where, constant):
        text = self.of(c)
        if c.kind == K.INTEGER_LITERAL and (m := re.fullmatch(r"(\d[\d']*)([uUlLzZ]*)", text)):
            self.add(c, str(int(m[1].replace("'", "")) + 1) + m[2], where, constant)
        elif c.kind == K.FLOATING_LITERAL and re.fullmatch(r"[\d.]+", text):
            self.add(c, str(float(text) + 1), where, constant)
        elif c.kind == K.CHARACTER_LITERAL and text.startswith("'"):
            self.add(c, f"static_cast<char>({text} + 1)", where, constant)
        elif c.kind == K.CXX_BOOL_LITERAL_EXPR:
            self.add(c, "false" if text == "true" else "true", where, constant)
        elif c.kind == K.STRING_LITERAL and text.startswith('"'):
            self.add(c, '""' if text != '""' else '"?"', where, constant)
            for old, new in IN_SQL:
                if old in text and " " in text:
                    self.add(c, text.replace(old, new, 1), where, constant)
                    break
        elif c.kind == K.DECL_REF_EXPR and c.referenced is not None \
                and c.referenced.kind == K.ENUM_CONSTANT_DECL and (parent is None or parent.kind != K.CASE_STMT):
            names = [e.spelling for e in c.referenced.semantic_parent.get_children()
                     if e.kind == K.ENUM_CONSTANT_DECL]
            other = names[(names.index(c.spelling) + 1) % len(names)]
            if other != c.spelling and text.endswith(c.spelling):
                self.add(c, text[:-len(c.spelling)] + other, where, constant)

    def neighbours(self, c, kids, parent, where, constant):
        """One of a list of things of one kind is taken twice, another not at all."""
        if c.kind == K.INIT_LIST_EXPR and len(kids) > 2 and all(
                k.kind in (K.UNARY_OPERATOR, K.MEMBER_REF_EXPR) and k.type == kids[0].type for k in kids):
            for kid, other in zip(kids, kids[1:] + kids[:1]):
                self.add(kid, self.of(other), where, constant)

    def conditions(self, c, kids, parent, where, constant):
        if c.kind == K.IF_STMT:
            condition = next((k for k in kids if k.kind.is_expression()), None)
            if kids[0].kind == K.VAR_DECL:  # `if (const auto x = f())`: the branch goes instead
                if kids[-1].kind == K.RETURN_STMT:
                    self.add(kids[-1], None, where, constant, statement=True)
                return
            if condition is not None:
                self.add(condition, "true", where, constant)
                self.add(condition, "false", where, constant)
        elif c.kind == K.CONDITIONAL_OPERATOR:
            self.add(kids[0], "true", where, constant)
            self.add(kids[0], "false", where, constant)
        elif c.kind == K.WHILE_STMT and kids[0].kind.is_expression():
            self.add(kids[0], "false", where, constant)
        elif c.kind == K.RETURN_STMT and kids and kids[0].type.get_canonical().kind == T.BOOL:
            value = kids[0]
            while value.kind == K.UNEXPOSED_EXPR and len(inner := list(value.get_children())) == 1:
                value = inner[0]
            if value.kind in (K.CALL_EXPR, K.DECL_REF_EXPR, K.MEMBER_REF_EXPR) \
                    and not any(o in value.spelling for o in ("==", "<", ">")):
                self.add(kids[0], f"!static_cast<bool>({self.of(kids[0])})", where, constant)

    def statements(self, c, kids, parent, where, constant):
        if parent is None:
            return
        place = parent.kind == K.COMPOUND_STMT or (
            parent.kind in (K.IF_STMT, K.FOR_STMT, K.WHILE_STMT, K.CXX_FOR_RANGE_STMT)
            and self.source[:c.extent.start.offset].rstrip()[-1:] in b");e{"
            and self.source[c.extent.end.offset:].lstrip()[:1] == b";")
        if not place or parent.kind == K.FOR_STMT and c != list(parent.get_children())[-1]:
            return
        if parent.kind == K.IF_STMT and c == next(parent.get_children()):
            return
        if c.kind in (K.BREAK_STMT, K.CONTINUE_STMT) or c.kind.is_expression():
            self.add(c, None, where, constant, statement=True)

    def written(self, dropped=()):
        """The file with its changes, and for each range of the new text the changes behind it."""
        live = [c for c in self.changes if c.number not in dropped]
        edits = {}
        for start, end, word, until in self.constants.values():
            if any(start < c.start < until for c in live):
                edits[start] = (end, word)
        out, ranges = [], []
        size = 0

        def put(text):
            nonlocal size
            out.append(text)
            size += len(text.encode())

        def plain(start, end):
            at = start
            for edit in sorted(e for e in edits if start <= e < end):
                put(self.text(at, edit))
                put(edits[edit][1])
                at = edits[edit][0]
            put(self.text(at, end))

        def inside(start, end, nodes):
            at = start
            for node in nodes:
                plain(at, node.start)
                whole(node)
                at = node.end
            plain(at, end)

        def whole(node):
            begin = size
            gone = [c for c in node.changes if c.text is None]
            if gone:
                put("{ if (!" + asked(gone[0]) + ") { ")
                inside(node.start, node.end, node.inner)
                put(" } }")
            else:
                put("(")
                for c in node.changes:
                    put(f"{asked(c)} ? ({c.text}) : ")
                booleans = any("static_cast<bool>" in c.text or c.text in ("true", "false")
                               for c in node.changes)
                put("static_cast<bool>(" if booleans else "(")
                inside(node.start, node.end, node.inner)
                put("))")
            ranges.append((begin, size, [c.number for c in node.changes]))

        put(f'#include "mutante.h"\n#line 1 "{self.path}"\n'.split("#line")[0])
        inside(0, len(self.source), nested(live))
        return "".join(out), ranges


def asked(change):
    return f"{'mutante_c' if change.constant else 'mutante'}({change.number})"


def as_bool(text):
    return f"static_cast<bool>({text})"


def parse(root, path, text=None):
    unsaved = [(str(root / path), text)] if text is not None else None
    args = ["-std=c++20", f"-I{root}/src", f"-I{root}/scripts/mutantes", "-w", "-Wno-c++11-narrowing"]
    return Index.create().parse(str(root / path), args, unsaved,
                                TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)


def nested(changes):
    """The changes by range, ranges inside ranges."""
    by_range = {}
    for c in changes:
        by_range.setdefault((c.start, -c.end), []).append(c)
    top, open_ = [], []
    for (start, end), here in sorted(by_range.items()):
        node = Node(start, -end, here)
        while open_ and open_[-1].end <= start:
            open_.pop()
        (open_[-1].inner if open_ else top).append(node)
        open_.append(node)
    return top


def compiling(file):
    """The file's text with every change the compiler accepts; the others are dropped."""
    dropped = set()
    while True:
        text, ranges = file.written(dropped)
        unit = parse(file.root, file.path, text)  # its diagnostics live as long as it does
        errors = [d for d in unit.diagnostics if d.severity >= 3]
        if not errors:
            file.changes = [c for c in file.changes if c.number not in dropped]
            return text
        found = set()
        for e in errors:
            found |= blamed(file, text, ranges, e)
        if not found - dropped:
            raise SystemExit(f"{file.path}: {errors[0]}")
        dropped |= found


def blamed(file, text, ranges, error):
    for place in [error, *error.children]:
        if place.location.file is None or not place.location.file.name.endswith(str(file.path)):
            continue
        around = [r for r in ranges if r[0] <= place.location.offset < r[1]]
        if around:
            return set(min(around, key=lambda r: r[1] - r[0])[2])
    return {c.number for name, (start, _, _, until) in file.constants.items()
            if re.search(rf"\b{name}\b", error.spelling + line_of(text, error)) for c in file.changes
            if start < c.start < until}


def line_of(text, error):
    lines = text.split("\n")
    return lines[error.location.line - 1] if 0 < error.location.line <= len(lines) else ""
